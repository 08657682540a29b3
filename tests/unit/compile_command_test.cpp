#include "compile/compile_command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "compile/compilation_database.h"
#include "compile/response_files.h"
#include "compile/test_command.h"
#include "platform/shell.h"
#include "taken_apart.h"
#include "temp_folder.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

Words AtBlanks(const std::string& text) { return SplitWords(text, Quoting::Gnu); }

/// A complaint's first words are expected where there is no "|".
void ExpectTaken(const Words& words, const std::string& expected, const TempFolder& folder) {
  const std::string taken = TakenApart(words, folder.NameOf(""));
  const bool isWhole = expected.find('|') != std::string::npos;
  EXPECT_EQ(isWhole ? taken : taken.substr(0, expected.size()), expected) << Joined(words);
}

}  // namespace

TEST(TakeCommandApart, UnderstandsCommandsAsBuildProgramsWriteThem) {
  const TempFolder folder;
  folder.Write("gnu.rsp", "-DA=1 '-DB=x y' -o out.o @more.rsp");
  folder.Write("more.rsp", "-O2\n-c \"my src/pool.cpp\"\n");
  folder.Write("cl.rsp", R"(/DA=1 /IC:\inc\ "/DB=x y" /Foout.obj /c C:\src\pool.cpp)");
  folder.Write("loop.rsp", "-O2 @loop.rsp");
  const struct {
    const char* words;
    const char* taken;
  } rows[] = {
      // By hand.
      {"g++ -std=c++20 -O2 -Iinclude -DNDEBUG -c src/pool.cpp -o build/pool.o",
       "g++ | -std=c++20 -O2 -Iinclude -DNDEBUG | -c src/pool.cpp"},
      {"g++ x.cpp", "g++ | | -c x.cpp"},
      {"gcc -g3 -o x x.c -lm -lpthread -Wl,-rpath,/lib -L /opt/lib", "gcc | -g3 | -c x.c"},
      {"clang -fsyntax-only -c x.c", "clang | | -fsyntax-only x.c"},
      {"gcc -E -dD x.c", "gcc | | -c x.c"},
      {"gcc -S -O1 -c -masm=intel -ox.s x.c", "gcc | -O1 -masm=intel | -S x.c"},
      {"gcc -xc++ -O2 in.txt", "gcc | -O2 | -c c++ in.txt"},
      {"gcc -x c++ a.o -x none", "gcc | | -c c++ a.o"},
      {"g++ -x none x.c y.o z.a", "g++ | | -c x.c"},
      {"gcc -D X -U Y -include x.h -isystem /i x.c",
       "gcc | -D X -U Y -include x.h -isystem /i | -c x.c"},
      {"g++ -fno-exceptions pool.C -save-temps=obj -fdump-tree-all-details -dumpbase pool",
       "g++ | -fno-exceptions | -c pool.C"},
      {"clang++ -x c++-cpp-output -O3 pool.txt -v", "clang++ | -O3 | -c c++-cpp-output pool.txt"},
      {"gcc-12 -c -- x.c", "gcc-12 | | -c x.c"},
      {"cc -fdiagnostics-color=always -fplugin=p.so -aux-info x.X -time x.i",
       "cc | -fplugin=p.so | -c x.i"},
      // CMake: Make, Ninja, its helpers.
      {"/usr/bin/c++ -DQT_CORE_LIB -I/src -isystem /usr/include/qt5 -g -fPIC -std=gnu++17 -MD -MT "
       "CMakeFiles/x.dir/a.cpp.o -MF CMakeFiles/x.dir/a.cpp.o.d -o CMakeFiles/x.dir/a.cpp.o -c "
       "/s/a.cpp",
       "/usr/bin/c++ | -DQT_CORE_LIB -I/src -isystem /usr/include/qt5 -g -fPIC -std=gnu++17 | -c "
       "/s/a.cpp"},
      {"/usr/bin/cmake -E __run_co_compile --launcher=ccache --tidy=tidy --source=a.cpp -- "
       "/usr/bin/g++ -O2 -c a.cpp",
       "/usr/bin/g++ | -O2 | -c a.cpp"},
      {"cmake -E env LANG=C A=b -- clang++-14 --serialize-diagnostics a.dia -c a.cpp",
       "LANG=C A=b clang++-14 | | -c a.cpp"},
      {"g++ -Winvalid-pch -include /b/cmake_pch.hxx -c a.cpp",
       "g++ | -Winvalid-pch -include /b/cmake_pch.hxx | -c a.cpp"},
      {"clang++ -Xclang -include-pch -Xclang /b/cmake_pch.hxx.pch -c a.cpp",
       "A precompiled header is used or made (-Xclang)"},
      {"g++ -std=gnu++20 -fmodules-ts -fmodule-mapper=a.modmap -MD -fdeps-format=p1689r5 -x c++ -c "
       "a.cpp",
       "C++ modules are used or made (-fmodules-ts)"},
      {"cmake --build .", "cmake is no compiler"},
      // Autotools.
      {"/bin/bash ../libtool --tag=CXX --mode=compile g++ -DHAVE_CONFIG_H -I. -g -O2 -MT p.lo -MD "
       "-MP "
       "-MF .deps/p.Tpo -c -o p.lo p.cpp",
       "g++ | -DHAVE_CONFIG_H -I. -g -O2 | -c p.cpp"},
      {"libtool --mode=link gcc -O2 -o libx.la a.lo b.lo -rpath /usr/lib",
       "The command compiles no C or C++ source but takes a.lo, b.lo:"},
      {"gcc -DLOCALEDIR=\\\"/usr\\\" -c -o a.o a.c", "gcc | -DLOCALEDIR=\"/usr\" | -c a.c"},
      // Meson.
      {"ccache c++ -Ilib/p -I../lib -fdiagnostics-color=always -D_FILE_OFFSET_BITS=64 -Wall "
       "-Werror -O0 "
       "-MD -MQ lib/a.o -MF lib/a.o.d -o lib/a.o -c ../lib/a.cc",
       "c++ | -Ilib/p -I../lib -D_FILE_OFFSET_BITS=64 -Wall -Werror -O0 | -c ../lib/a.cc"},
      {"clang -fcolor-diagnostics -flto=thin -pthread --coverage -c a.c",
       "clang | -flto=thin -pthread --coverage | -c a.c"},
      // Bazel.
      {"/usr/bin/gcc -U_FORTIFY_SOURCE -fstack-protector -MD -MF bazel-out/k8/x.pic.d "
       "-frandom-seed=bazel-out/k8/x.pic.o -fPIC -iquote . -iquote external/g "
       "-D__DATE__=\"redacted\" -c lib/x.cc -o bazel-out/k8/x.pic.o",
       "/usr/bin/gcc | -U_FORTIFY_SOURCE -fstack-protector -frandom-seed=bazel-out/k8/x.pic.o "
       "-fPIC "
       "-iquote . -iquote external/g -D__DATE__=redacted | -c lib/x.cc"},
      // The Linux kernel.
      {"gcc -Wp,-MMD,kernel/.fork.o.d -nostdinc -I./include -include ./include/linux/kconfig.h "
       "-D__KERNEL__ -mno-sse --param=allow-store-data-races=0 --param ssp-buffer-size=4 "
       "-DKBUILD_MODNAME='\"fork\"' -c -o kernel/fork.o kernel/fork.c",
       "gcc | -nostdinc -I./include -include ./include/linux/kconfig.h -D__KERNEL__ -mno-sse "
       "--param=allow-store-data-races=0 --param ssp-buffer-size=4 -DKBUILD_MODNAME=\"fork\" "
       "| -c kernel/fork.c"},
      {"gcc -Wp,-MD,a.d -Wp,-D_FORTIFY_SOURCE=2 -Wa,--noexecstack -c boot.S",
       "The command compiles no C"},
      // Qt and Xcode.
      {"g++ -c -pipe -O2 -D_REENTRANT -I. -I/usr/lib/qt/mkspecs/linux-g++ -o main.o main.cpp",
       "g++ | -pipe -O2 -D_REENTRANT -I. -I/usr/lib/qt/mkspecs/linux-g++ | -c main.cpp"},
      {"xcrun -sdk macosx clang -x c++ -target arm64-apple-macos11 -fmessage-length=0 "
       "-index-store-path /i -MMD -MT dependencies -isysroot /sdk -F/fw -framework Metal -c a.cpp",
       "clang | -target arm64-apple-macos11 -isysroot /sdk -F/fw | -c c++ a.cpp"},
      {"clang -arch x86_64 -fmodules -c a.c", "C++ modules are used or made (-fmodules)"},
      // cl and clang-cl, by CMake and Visual Studio.
      {"cl.exe /nologo /TP -DWIN32 -ID:\\\\x\\\\inc /DWIN32 /EHsc /MDd /Zi /showIncludes "
       "/FoCMakeFiles\\\\x.dir\\\\a.cpp.obj /FdCMakeFiles\\\\x.dir\\\\ /FS -c D:\\\\x\\\\a.cpp",
       "cl.exe | /nologo -DWIN32 -ID:\\x\\inc /DWIN32 /EHsc /MDd /Zi | /c c++ D:\\x\\a.cpp"},
      {"cl /c /I inc /D A /W4 /WX- /Od /Gm- /std:c++20 /Fax.asm /FAcs /Fo\"out/\" /Tc a.inc",
       "cl | /I inc /D A /W4 /WX- /Od /Gm- /std:c++20 | /c c a.inc"},
      {"cl /Zs /Yu\"stdafx.h\" a.cpp", "A precompiled header is used or made (/Yustdafx.h)"},
      {"cl /std:c++20 /interface a.cpp", "C++ modules are used or made (/interface)"},
      {"cl /EHsc a.CPP user32.lib /Fea.exe /link /SUBSYSTEM:CONSOLE b.cpp",
       "cl | /EHsc | /c a.CPP"},
      {"cl /nologo /MP4 /TP a.obj b.obj", "The command compiles no C"},
      {"clang-cl /nologo -TP -imsvc /sdk/inc /clang:-MD /clang:-MF /clang:a.d -openmp -m32 "
       "-Xclang -fexceptions -fcolor-diagnostics /Foa.obj -c -- /Users/me/a.cpp",
       "clang-cl | /nologo -imsvc /sdk/inc -openmp -m32 -Xclang -fexceptions | /c c++ "
       "/Users/me/a.cpp"},
      {"clang-cl-14 /O2 /UNDEBUG /FIx.h /Users/me/a.c",
       "clang-cl-14 | /O2 /UNDEBUG /FIx.h | /c /Users/me/a.c"},
      {"clang --driver-mode=cl /O2 /Fo:a.obj a.c", "clang | --driver-mode=cl /O2 | /c a.c"},
      {"clang-cl /Zs /home/x/a.cpp -Xclang -verify",
       "clang-cl | -Xclang -verify | /Zs /home/x/a.cpp"},
      // What starts compilers.
      {"ccache distcc g++ -c a.cpp", "g++ | | -c a.cpp"},
      {"CCACHE_DISABLE=1 nice -n 19 ionice -c 3 icecc /opt/x86_64-linux-gnu-g++ -c a.cpp",
       "CCACHE_DISABLE=1 /opt/x86_64-linux-gnu-g++ | | -c a.cpp"},
      {"/usr/bin/env -u CPATH LC_ALL=C X= sccache cl.exe /c a.c", "LC_ALL=C X= cl.exe | | /c a.c"},
      {"time -f %e timeout -k 5 60 g++ -c a.cpp", "g++ | | -c a.cpp"},
      {"scan-build -o /tmp/x bear -- clang -c a.c", "clang | | -c a.c"},
      {"pump distcc /usr/bin/distcc gcc -c a.c", "gcc | | -c a.c"},
      {"taskset 0x3 rewrapper --cfg=x.cfg -exec_root=/b ../clang++ -MF a.d -c a.cc",
       "../clang++ | | -c a.cc"},
      {"ccache", "No compiler is named"},
      {"", "No compiler is named"},
      // Response files.
      {"g++ @gnu.rsp", "g++ | -DA=1 -DB=x y -O2 | -c my src/pool.cpp"},
      {"cl /nologo @cl.rsp", "cl | /nologo /DA=1 /IC:\\inc\\ /DB=x y | /c C:\\src\\pool.cpp"},
      {"g++ -c a.cpp @loop.rsp", "The response file "},
      {"g++ -c a.cpp @gone.rsp", "The response file gone.rsp cannot be read"},
      // clang -cc1.
      {"/l/clang -cc1 -triple x86_64-pc-linux-gnu -emit-obj -main-file-name a.cpp -target-cpu "
       "x86-64 "
       "-mllvm -x=y -coverage-notes-file /c.gcno -internal-isystem /i -fvisibility hidden "
       "-fexceptions -split-dwarf-output a.dwo -o a.o -x c++ a-12ab.cpp",
       "/l/clang -cc1 | -triple x86_64-pc-linux-gnu -main-file-name a.cpp -target-cpu x86-64 "
       "-mllvm -x=y "
       "-internal-isystem /i -fvisibility hidden -fexceptions | -emit-obj c++ a-12ab.cpp"},
      {"clang -cc1 a.c", "clang -cc1 | | -fsyntax-only a.c"},
      {"clang -Xclang -load -Xclang p.so -Xclang -dependency-file -Xclang a.d -c a.c",
       "clang | -Xclang -load -Xclang p.so | -c a.c"},
      // What cannot be taken.
      {"make -j8", "make is no compiler"},
      {"/usr/bin/ld -o x a.o", "/usr/bin/ld is no compiler"},
      {"g++ -O2", "The command names no source"},
      {"g++ a.o b.o c.a d.so -o x",
       "The command compiles no C or C++ source but takes a.o, b.o, c.a, ...:"},
      {"g++ a.cpp b.cpp c.o -o x",
       "The command compiles 2 sources (a.cpp, b.cpp): compile one source"},
      {"gcc -x c - -c", "The source is read from standard input"},
      {"g++ -O2 a.hpp", "a.hpp would become a precompiled header"},
      {"g++ -x c++-header a.h", "a.h would become a precompiled header"},
      {"clang++ -include-pch a.pch a.cpp", "A precompiled header is used or made (-include-pch)"},
      {"g++ a.cpp a.h.gch", "A precompiled header is used or made (a.h.gch)"},
      {"clang++ --precompile a.cppm", "C++ modules are used or made (a.cppm)"},
      {"clang++ -fmodule-file=m=m.pcm a.cpp",
       "C++ modules are used or made (-fmodule-file=m=m.pcm)"},
      {"gcc -x fortran a.c", "The command compiles no C or C++ source"},
      {"gcc a.c -o", "-o at the end lacks its value"},
  };
  for (const auto& row : rows) ExpectTaken(AtBlanks(row.words), row.taken, folder);
}

TEST(TakeCommandApart, UnderstandsCommandsAsTheyAreOnWindows) {
  const TempFolder folder;
  folder.Write("a.rsp", "\xFF\xFE/\0D\0A\0=\0\"\0b\0 \0c\0\"\0\r\0\n\0x\0.\0c\0"s);
  folder.Write("b.rsp", R"(-DA=b\\c -ID:\\inc x.c)");
  const struct {
    const char* words;
    const char* taken;
  } rows[] = {
      // By hand, in the order of cl's documentation.
      {"cl x.cpp", "cl | | /c x.cpp"},
      {"CL /c /O2 /EHsc /FoC:\\obj\\ x.c", "CL | /O2 /EHsc | /c x.c"},
      {"cl /nologo- -O1 -Fo: x.obj -Fd: x.pdb /Fe: x.exe -c x.cpp", "cl | /nologo- -O1 | /c x.cpp"},
      {"cl /Fi: x.i /P /EP /Fa: x.asm /Fm: x.map /FR: x.sbr /FA x.cpp", "cl | | /c x.cpp"},
      {"cl /MP /c x.cpp", "cl | | /c x.cpp"},
      {"cl /MP x.cpp /F 4096 /F4096", "cl | /F4096 | /c x.cpp"},
      {"cl /D X /DY#2 /U Z /UW /u /FI y.h /FIz.h /I i /Ij /X x.cpp",
       "cl | /D X /DY#2 /U Z /UW /u /FI y.h /FIz.h /I i /Ij /X | /c x.cpp"},
      {"cl /external:I e /external:If /external:W0 /external:env:INC /AI m x.cpp",
       "cl | /external:I e /external:If /external:W0 /external:env:INC /AI m | /c x.cpp"},
      {"cl /Zi /FS /Gm /Gm- /Fdx.pdb /ZI /Z7 x.cpp", "cl | /Zi /Gm- /ZI /Z7 | /c x.cpp"},
      {"cl /showIncludes:user /sourceDependencies d.json /sourceDependencies:directives e.json "
       "/sourceDependenciesf.json /sourceDependencies- x.cpp",
       "cl | | /c x.cpp"},
      {"cl /std:c++20 /Zc:__cplusplus /permissive- /utf-8 /await /bigobj /arch:AVX2 /Tpx.inc",
       "cl | /std:c++20 /Zc:__cplusplus /permissive- /utf-8 /await /bigobj /arch:AVX2 | /c c++ "
       "x.inc"},
      {"cl /Tp x.inc", "cl | | /c c++ x.inc"},
      {"cl /TC x.cpp", "cl | | /c c x.cpp"},
      {"cl /TP x.h", "cl | | /c c++ x.h"},
      {"cl x.h", "x.h would become a precompiled header: compile it with /TP before it"},
      {"cl /analyze:log x.xml /analyze:stacksize 999 /analyze /analyze:autolog- x.cpp",
       "cl | /analyze:stacksize 999 /analyze | /c x.cpp"},
      {"cl x.cpp /link /OUT:y.exe z.cpp", "cl | | /c x.cpp"},
      {"cl x.cpp y.cpp", "The command compiles 2 sources (x.cpp, y.cpp): compile one source"},
      {"cl x.obj y.lib /link",
       "The command compiles no C or C++ source but takes x.obj, y.lib: "
       "compile one source: add /c"},
      {"cl /nologo", "The command names no source: add /c and"},
      {"cl /I", "/I at the end lacks its value"},
      {"cl x.ixx", "C++ modules are used or made (x.ixx)"},
      {"cl /ifcOutput x.ifc x.cpp", "C++ modules are used or made (/ifcOutput)"},
      {"cl /headerUnit:quote x.h=x.ifc x.cpp", "C++ modules are used or made (/headerUnit:quote)"},
      {"cl /Ycx.h /Fpx.pch x.cpp", "A precompiled header is used or made (/Ycx.h): switch them"},
      {"cl /Yux.h /Fpx.pch /FIx.h x.cpp -Y-", "cl | /FIx.h | /c x.cpp"},
      // CMake with Ninja and NMake, MSBuild.
      {"C:\\PROGRA~1\\MIB055~1\\2022\\bin\\Hostx64\\x64\\cl.exe  /nologo /TP -DX=\\\"a\\\" "
       "-external:IC:\\e -external:W0 /DWIN32 /Ob0 -std:c++17 -MDd -Zi /showIncludes "
       "/FoCMakeFiles\\x.dir\\a.cpp.obj /FdCMakeFiles\\x.dir\\ /FS -c C:\\s\\a.cpp",
       "C:\\PROGRA~1\\MIB055~1\\2022\\bin\\Hostx64\\x64\\cl.exe | /nologo -DX=\"a\" "
       "-external:IC:\\e -external:W0 /DWIN32 /Ob0 -std:c++17 -MDd -Zi | /c c++ C:\\s\\a.cpp"},
      {"cmake.exe -E cmake_cl_compile_depends --dep-file=a.d --working-dir=C:\\b -- cl /c a.c",
       "cl | | /c a.c"},
      {"\"C:\\Program Files\\VC\\CL.exe\" /c /Zi /nologo /W3 /WX- /diagnostics:column /Od /D _MBCS "
       "/D \"CMAKE_INTDIR=\\\"Debug\\\"\" /Gm- /RTC1 /MDd /GS /Fo\"x.dir\\Debug\\\\\" "
       "/Fd\"x.dir\\vc143.pdb\" /external:W3 /Gd /TP /errorReport:queue C:\\s\\a.cpp",
       "C:\\Program Files\\VC\\CL.exe | /Zi /nologo /W3 /WX- /Od /D _MBCS /D "
       "CMAKE_INTDIR=\"Debug\" /Gm- /RTC1 /MDd /GS /external:W3 /Gd | /c c++ C:\\s\\a.cpp"},
      {"cl /nologo @a.rsp", "cl | /nologo /DA=b c | /c x.c"},
      {"MSBuild.exe x.sln", "MSBuild.exe is no compiler"},
      {"LINK /OUT:x.exe a.obj", "LINK is no compiler"},
      // clang and gcc.
      {"\"C:\\Program Files\\LLVM\\bin\\Clang-CL.exe\" -m64 --target=x86_64-pc-windows-msvc -imsvc "
       "C:\\sdk -Wall /clang:-O3 /EHsc -o a.obj /c /openmp -resource-dir C:\\r -- a.CPP",
       "C:\\Program Files\\LLVM\\bin\\Clang-CL.exe | -m64 --target=x86_64-pc-windows-msvc -imsvc "
       "C:\\sdk -Wall /clang:-O3 /EHsc /openmp -resource-dir C:\\r | /c a.CPP"},
      {"clang-cl /MP8 /Zi /Brepro a.c", "clang-cl | /Zi /Brepro | /c a.c"},
      {"clang.exe -O2 @b.rsp", "clang.exe | -O2 -DA=b\\c -ID:\\inc | -c x.c"},
      {"clang-cl @b.rsp", "clang-cl | -DA=b\\\\c -ID:\\\\inc | /c x.c"},
      {"clang-cl --rsp-quoting=posix @b.rsp",
       "clang-cl | --rsp-quoting=posix -DA=b\\c -ID:\\inc | /c x.c"},
      {"C:\\mingw64\\bin\\x86_64-w64-mingw32-g++.exe -O2 -Wl,--out-implib,x.a -mwindows "
       "-c C:\\s\\a.c -o a.o",
       "C:\\mingw64\\bin\\x86_64-w64-mingw32-g++.exe | -O2 -mwindows | -c C:\\s\\a.c"},
      {"G++.EXE x.C", "G++.EXE | | -c x.C"},
      {"C:\\l\\clang-cl.exe -cc1 -triple x86_64-pc-windows-msvc -emit-obj -o a.obj -x c++ "
       "C:\\a.cpp",
       "C:\\l\\clang-cl.exe -cc1 | -triple x86_64-pc-windows-msvc | -emit-obj c++ C:\\a.cpp"},
      // What starts compilers.
      {"C:\\tools\\ccache.exe C:\\bin\\cl.exe /c a.c", "C:\\bin\\cl.exe | | /c a.c"},
      {"SCCACHE.EXE buildcache cl.exe /c a.c", "cl.exe | | /c a.c"},
      {"CMD /d /c cl /c a.c", "cl | | /c a.c"},
      {"C:\\WINDOWS\\system32\\cmd.exe /C \"cl /IC:\\i /c \"\"my a.c\"\"\"",
       "cl | /IC:\\i | /c my a.c"},
      {"cmd /c \"C:\\Program Files\\cl.exe\" /c a.c", "C:\\Program Files\\cl.exe | | /c a.c"},
      {"cmd /c \"cd /D C:\\b && cl /c a.c\"", "cd is no compiler"},
      {"sh -ec \"A=1 ccache g++ -c 'a b.c'\"", "A=1 g++ | | -c a b.c"},
      {"cmd /c", "No compiler is named"},
      {"clcache icecc cl /c a.c", "cl | | /c a.c"},
  };
  for (const auto& row : rows)
    ExpectTaken(SplitWords(row.words, Quoting::Windows), row.taken, folder);
}

TEST(CompileWords, CompileAnySourceAsTheCommandDoesItsOwn) {
  const struct {
    const char* words;
    const char* compile;
    const char* preprocess;
    const char* preprocessed;  // the compilation of the preprocessed source
  } rows[] = {
      {"g++ -O2 -Ii -DA -include a.h -Wall -c a.cpp -o a.o",
       "g++ -O2 -Ii -DA -include a.h -Wall -c -o O S",
       "g++ -O2 -Ii -DA -include a.h -Wall -E -w -o O S",
       "g++ -O2 -Wall -c -o O -x c++-cpp-output S"},
      {"gcc -x c++ -S a.c", "gcc -S -o O -x c++ S", "gcc -E -w -o O -x c++ S",
       "gcc -S -o O -x c++-cpp-output S"},
      {"clang -stdlib=x -g a.c", "clang -fno-crash-diagnostics -stdlib=x -g -c -o O S",
       "clang -fno-crash-diagnostics -stdlib=x -g -E -w -o O S",
       "clang -fno-crash-diagnostics -g -c -o O -x cpp-output S"},
      {"clang -fsyntax-only a.c", "clang -fno-crash-diagnostics -fsyntax-only S",
       "clang -fno-crash-diagnostics -E -w -o O S",
       "clang -fno-crash-diagnostics -fsyntax-only -x cpp-output S"},
      {"clang -cc1 -triple t -emit-obj -I i -o a.o -x c a.c",
       "clang -cc1 -triple t -I i -emit-obj -o O -x c S",
       "clang -cc1 -triple t -I i -E -w -o O -x c S",
       "clang -cc1 -triple t -emit-obj -o O -x cpp-output S"},
      {"cl /Zi /Ii /TP a.c", "cl /Zi /Ii /c /FoO /FdO.pdb /TpS", "cl /Zi /Ii /P /w /FiO /TpS",
       "cl /Zi /c /FoO /FdO.pdb /TpS"},
      {"clang-cl /Zs /Zi -D A a.c", "clang-cl -fno-crash-diagnostics /Zi -D A /Zs S",
       "clang-cl -fno-crash-diagnostics /Zi -D A /P /w /FiO S",
       "clang-cl -fno-crash-diagnostics /Zi /Zs /TcS"},
  };
  for (const auto& row : rows) {
    const CompileCommand command = TakeCommandApart(AtBlanks(row.words), "").command;
    EXPECT_EQ(Joined(CompileWords(command, "S", "O")), row.compile);
    EXPECT_EQ(Joined(PreprocessWords(command, "S", "O", true)), row.preprocess);
    EXPECT_EQ(PreprocessWords(command, "S", "O", false).size(),
              AtBlanks(row.preprocess).size() + 1);
    EXPECT_EQ(Joined(CompileWords(ForPreprocessed(command), "S", "O")), row.preprocessed);
  }
}

// Who puts a source of its own behind the words takes the last away.
TEST(CompileWords, EndWithTheSource) {
  const struct {
    const char* words;
    const char* compile;  // without a source
  } rows[] = {
      {"gcc -x c a.cpp", "gcc -c -o O -x c|"},
      {"cl /TC a.cpp", "cl /c /FoO /TC|"},
      {"clang-cl /Tpa.c", "clang-cl -fno-crash-diagnostics /c /FoO /TP|"},
      {"clang-cl a.c", "clang-cl -fno-crash-diagnostics /c /FoO --|"},
      {"cl a.c", "cl /c /FoO|"},
  };
  for (const auto& row : rows) {
    Words words = CompileWords(TakeCommandApart(AtBlanks(row.words), "").command, "", "O");
    EXPECT_EQ(words.back(), "");
    words.pop_back();
    EXPECT_EQ(Joined(words) + '|', row.compile);
  }
}

TEST(CompileWords, KeepSourcesFromLookingLikeOptions) {
  const CompileCommand command = TakeCommandApart({"clang-cl", "/Zi", "a.c"}, "").command;
  EXPECT_EQ(Joined(CompileWords(command, "C:/b.c", "")),
            "clang-cl -fno-crash-diagnostics /Zi /c C:/b.c");
  EXPECT_EQ(Joined(CompileWords(command, "/s/b.c", "")),
            "clang-cl -fno-crash-diagnostics /Zi /c -- /s/b.c");
  EXPECT_EQ(Joined(IncludeWords(command, "/s")), "/I /s");
  EXPECT_EQ(Joined(IncludeWords(TakeCommandApart({"gcc", "a.c"}, "").command, "/s")), "-iquote /s");
}

// Every short command of these words: it is taken or refused for good, and what is put together
// again is taken as the same.
TEST(CompileWords, AreTakenApartAsTheCommandTheyWereMadeOf) {
  const Words alphabet = {"-x",       "c++", "a.c", "-o",  "-S",  "-fsyntax-only", "-Xclang",
                          "-include", "-D",  "--",  "/TP", "/Tc", "/clang:-MF",    "-"};
  const std::size_t size = alphabet.size();
  for (const char* compiler : {"gcc", "clang++", "clang -cc1", "cl", "clang-cl"}) {
    for (std::size_t number = 0; number < size * size * size * size; ++number) {
      Words words = AtBlanks(compiler);
      for (std::size_t rest = number; rest != 0; rest /= size) {
        words.push_back(alphabet[rest % size]);
      }
      const CommandOrComplaint taken = TakeCommandApart(words, "");
      if (!taken.complaint.empty()) continue;
      const CompileCommand& command = taken.command;
      ASSERT_FALSE(command.source.empty()) << Joined(words);
      const CompileCommand again =
          TakeCommandApart(CompileWords(command, command.source, "out"), "").command;
      ASSERT_EQ(again.arguments, command.arguments) << Joined(words);
      ASSERT_EQ(again.source + again.language + again.action + (again.isCpp ? "+" : ""),
                command.source + command.language + command.action + (command.isCpp ? "+" : ""))
          << Joined(words);
      ASSERT_EQ(WithOptions(command, Options(command)).arguments, command.arguments);
    }
  }
}

TEST(SplitWords, FollowsTheRulesOfWhoeverWroteTheText) {
  const struct {
    const char* text;
    Words gnu, windows, shell;
  } rows[] = {
      {"", {}, {}, {}},
      {" a\t b\r\nc ", {"a", "b", "c"}, {"a", "b", "c"}, {"a", "b", "c"}},
      {"'a b' \"c d\"e", {"a b", "c de"}, {"'a", "b'", "c de"}, {"a b", "c de"}},
      {"\"\" a", {"", "a"}, {"", "a"}, {"", "a"}},
      {R"(a\ b\\ "\x\"")", {"a b\\", "x\""}, {"a\\", R"(b\\)", R"(\x")"}, {"a b\\", R"(\x")"}},
      {R"('\a')", {"a"}, {R"('\a')"}, {R"(\a)"}},
      {R"("a""b" "c\\" d\\"e f")",
       {"ab", "c\\", "d\\e f"},
       {"a\"b", "c\\", "d\\e f"},
       {"ab", "c\\", "d\\e f"}},
      {"a\\\nb", {"a\nb"}, {"a\\", "b"}, {"ab"}},
      {"\"a b\\", {"a b\\"}, {"a b\\"}, {"a b\\"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SplitWords(row.text, Quoting::Gnu), row.gnu) << row.text;
    EXPECT_EQ(SplitWords(row.text, Quoting::Windows), row.windows) << row.text;
    EXPECT_EQ(SplitWords(row.text, Quoting::Shell), row.shell) << row.text;
  }
}

// The words but the shell's own are one command line.
TEST(TestWords, FindAndStartTheScriptFromAnyFolder) {
  const TempFolder folder;
  const CurrentFolder current(folder);
  for (const char* name : {"a.bat", "b.PS1", "c.sh"}) folder.Write(name, "");
  const std::string here = std::filesystem::current_path().string();
  const struct {
    const char* command;
    const char* windowsStart;
    const char* end;
  } rows[] = {
      {"./a.bat 1 \"2 3\"", "", "a.bat 1 \"2 3\""},
      {"./b.PS1 -X", "powershell -NoProfile -ExecutionPolicy Bypass -File ", "b.PS1 -X"},
      {"./c.sh", "sh ", "c.sh"},
  };
  for (const auto& row : rows) {
    const std::string command = TestWords(row.command).back();
    const std::string start = (platform::kShellIsPosix ? "" : row.windowsStart) + here;
    EXPECT_EQ(command.substr(0, start.size()), start);
    const std::string end = row.end;
    EXPECT_EQ(command.substr(command.size() - std::min(command.size(), end.size())), end);
  }
  EXPECT_EQ(TestWords("grep -q 'x  y' p.cpp").back(), "grep -q 'x  y' p.cpp");
}

TEST(ResponseFiles, AreReadInAnyEncodingOfUnicode) {
  const TempFolder folder;
  const auto read = [&](const std::string& bytes) {
    folder.Write("r", bytes);
    return Joined(ReadResponseFiles({"@r"}, folder.NameOf(""), Quoting::Windows).words);
  };
  EXPECT_EQ(read("\xEF\xBB\xBFx \xC3\xA4"), "x \xC3\xA4");
  EXPECT_EQ(read("\xFF\xFEx\0 \0\xE4\0\xAC\x20\x3D\xD8\x00\xDE"s),
            "x \xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(read("\xFE\xFF\0x\0 \0\xE4\x20\xAC\xD8\x3D\xDE\x00"s),
            "x \xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(read("\xFF\xFE\x3D\xD8x\0y"s), "x");
  folder.Write("s", "@s2 @s2");
  folder.Write("s2", "@s3 @s3 @s3 @s3 @s3 @s3 @s3 @s3 @s3 @s3");
  folder.Write("s3", "@s4 @s4 @s4 @s4 @s4 @s4 @s4 @s4 @s4 @s4");
  folder.Write("s4", "@s5 @s5 @s5 @s5 @s5 @s5 @s5 @s5 @s5 @s5");
  folder.Write("s5", "-O2");
  EXPECT_EQ(ReadResponseFiles({"@s"}, folder.NameOf(""), Quoting::Gnu).complaint.substr(0, 14),
            "Too many respo");
}

// As CMake writes it there, and as others do. The slashes of what is looked up lean either way.
TEST(CompilationDatabase, KnowsPathsOfWindowsOnEverySystem) {
  const TempFolder folder;
  folder.Write("compile_commands.json", R"([
{"directory": "C:/Work/b", "file": "C:\\Work\\src\\Pool.cpp", "command":
 "C:\\PROGRA~1\\VC\\cl.exe  /nologo /TP -DX=\\\"a\\\" \"-DY=a b\" -IC:\\i\\ /FoPool.obj -c C:\\Work\\src\\Pool.cpp"},
{"directory": "C:\\Work\\b", "file": "..\\src/Main.cpp", "arguments": ["cl", "-DX=\"a\\b\"", "C:\\x y"]},
{"directory": "\\\\server\\b", "file": "main.cpp", "command": "cl \"a b\\\\\" c"},
{"directory": "D:/b", "file": "\\main.cpp", "command": "cl @CMakeFiles\\x.rsp"}])");
  const struct {
    const char* source;
    const char* found;  // "folder: word|word", or the complaint's start
  } rows[] = {
      {"c:\\work\\SRC\\pool.cpp",
       "C:/Work/b: C:\\PROGRA~1\\VC\\cl.exe|/nologo|/TP|-DX=\"a\"|-DY=a b|-IC:\\i\\|/FoPool.obj|-c|"
       "C:\\Work\\src\\Pool.cpp"},
      {"C:/Work/src/Main.cpp", "C:\\Work\\b: cl|-DX=\"a\\b\"|C:\\x y"},
      {"C:\\Work\\b\\..\\src\\.\\Main.cpp", "C:\\Work\\b: cl|-DX=\"a\\b\"|C:\\x y"},
      {"Src\\main.CPP", "C:\\Work\\b: cl|-DX=\"a\\b\"|C:\\x y"},
      {"\\\\SERVER\\b\\main.cpp", "\\\\server\\b: cl|a b\\|c"},
      {"d:/main.cpp", "D:/b: cl|@CMakeFiles\\x.rsp"},
      {"main.cpp", "Several sources end in main.cpp (C:\\Work\\b/..\\src/Main.cpp, "},
      {"src\\pol.cpp", "src\\pol.cpp is not among the 4 sources of "},
  };
  for (const auto& row : rows) {
    const CommandWords command = FindInDatabase(folder.NameOf(""), row.source);
    const std::string expected = row.found;
    const std::string found = Told(command);
    EXPECT_EQ(command.complaint.empty() ? found : found.substr(0, expected.size()), expected);
  }
}

}  // namespace snipwell
