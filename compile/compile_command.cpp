#include "compile/compile_command.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "compile/launchers.h"
#include "compile/option_groups.h"
#include "compile/response_files.h"
#include "compile/source_kind.h"

namespace snipwell {

namespace {

/// A file among the arguments, with the language that was in force there, or none.
struct File {
  std::string name;
  std::string language;
};

const std::string kDriverMode = "--driver-mode=";

std::string Listed(const std::vector<std::string>& names) {
  constexpr std::size_t kMost = 3;
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i) {
    list += (i == 0 ? "" : ", ") + names[i];
  }
  return names.size() > kMost ? list + ", ..." : list;
}

/// How an action is given to the compiler.
std::string PlainAction(const std::string& word, bool clStyle) {
  if (clStyle && word != "-fsyntax-only") return "/" + word.substr(1);
  if (word == "--compile") return "-c";
  return word == "--assemble" ? "-S" : word;
}

/// True when a compiler told to do both does `action` only.
bool IsOutdone(const std::string& action, const std::string& before) {
  if (action == "-c" || action == "/c") return !before.empty();
  return action == "-S" && before == "-fsyntax-only";
}

/// Walks through the words once, and then looks at what it has found.
class Taking {
 public:
  explicit Taking(const std::string& folder) { Command().folder = folder; }

  CommandOrComplaint Take(const std::vector<std::string>& words) {
    std::vector<std::string> arguments = TakeStart(words);
    if (HasComplaint()) return std::move(result);
    arguments = TakeResponseFiles(arguments);
    TakeArguments(arguments);
    TakeFiles();
    if (Command().action.empty()) Command().action = DefaultAction();
    return std::move(result);
  }

 private:
  CompileCommand& Command() { return result.command; }
  bool HasComplaint() const { return !result.complaint.empty(); }

  void Complain(const std::string& sentence) {
    if (!HasComplaint()) result.complaint = sentence;
  }

  bool IsClStyle() { return snipwell::IsClStyle(Command().style); }

  std::string DefaultAction() {
    if (Command().frontEnd) return "-fsyntax-only";
    return IsClStyle() ? "/c" : "-c";
  }

  /// Returns the words behind the compiler.
  std::vector<std::string> TakeStart(const std::vector<std::string>& words) {
    PlainCommand plain = FindCompiler(words);
    if (plain.words.empty()) {
      Complain("No compiler is named: give its whole command, as in g++ -O2 -c x.cpp");
      return {};
    }
    Command().environment = std::move(plain.environment);
    Command().compiler = plain.words.front();
    if (IsNoCompiler(Command().compiler)) {
      Complain(Command().compiler + " is no compiler: let it show the commands that it runs" +
               " (make VERBOSE=1, ninja -v, msbuild -v:n) and give the one that fails.");
    }
    return {plain.words.begin() + 1, plain.words.end()};
  }

  std::vector<std::string> TakeResponseFiles(const std::vector<std::string>& arguments) {
    TakeStyle(arguments);
    CommandWords read = ReadResponseFiles(arguments, Command().folder, QuotingIn(arguments));
    if (!read.complaint.empty()) Complain(read.complaint);
    return std::move(read.words);
  }

  /// Of response files; clang lets one choose.
  Quoting QuotingIn(const std::vector<std::string>& arguments) {
    Quoting quoting = IsClStyle() ? Quoting::Windows : Quoting::Gnu;
    for (const std::string& argument : arguments) {
      if (argument == "--rsp-quoting=windows") quoting = Quoting::Windows;
      if (argument == "--rsp-quoting=posix") quoting = Quoting::Gnu;
    }
    return quoting;
  }

  void TakeStyle(const std::vector<std::string>& arguments) {
    Command().style = StyleOf(Command().compiler);
    driverIsCpp = IsCppDriver(Command().compiler);
    for (const std::string& argument : arguments) {
      if (argument.compare(0, kDriverMode.size(), kDriverMode) != 0) continue;
      const std::string mode = argument.substr(kDriverMode.size());
      Command().style = mode == "cl" ? CompilerStyle::ClangCl : CompilerStyle::Clang;
      driverIsCpp = mode == "g++";
    }
  }

  void TakeArguments(std::vector<std::string>& arguments) {
    Command().frontEnd = !arguments.empty() && arguments[0] == "-cc1";
    if (Command().frontEnd) {
      arguments.erase(arguments.begin());
      Command().style = CompilerStyle::Clang;
      driverIsCpp = false;
    }
    for (const std::string& word : arguments) {
      precompiles = precompiles && !(IsClStyle() && (word == "/Y-" || word == "-Y-"));
    }
    for (const OptionGroup& group : GroupOptions(arguments, Command().style, Command().frontEnd)) {
      if (group.role == OptionRole::LinkerRest) break;
      TakeGroup(group);
    }
  }

  void TakeGroup(const OptionGroup& group) {
    if (group.lacksValue) Complain(group.words[0] + " at the end lacks its value: complete it.");
    if (group.isFile) return files.push_back({group.words[0], language});
    switch (group.role) {
      case OptionRole::Compile:
      case OptionRole::Wrapper:
      case OptionRole::Preprocess: return Keep(group);
      case OptionRole::Action: return TakeAction(group);
      case OptionRole::Language: return TakeLanguage(group);
      case OptionRole::Source: return TakeSource(group);
      case OptionRole::PrecompiledHeader:
        return precompiles ? RefusePrecompiledHeader(group.words[0]) : void();
      case OptionRole::Module: return RefuseModule(group.words[0]);
      case OptionRole::Drop:
      case OptionRole::LinkerRest: return;
    }
  }

  void Keep(const OptionGroup& group) {
    std::vector<std::string>& arguments = Command().arguments;
    arguments.insert(arguments.end(), group.words.begin(), group.words.end());
  }

  void TakeAction(const OptionGroup& group) {
    const std::string action = PlainAction(group.words[0], IsClStyle());
    if (!IsOutdone(action, Command().action)) Command().action = action;
  }

  void TakeLanguage(const OptionGroup& group) {
    if (IsClStyle()) {
      clLanguage = group.words[0].substr(1) == "TC" ? "c" : "c++";
    } else {
      language = group.value == "none" ? "" : group.value;
    }
  }

  void TakeSource(const OptionGroup& group) {
    const std::string& word = group.words[0];
    files.push_back({group.value, word.compare(1, 2, "Tc") == 0 ? "c" : "c++"});
  }

  void RefusePrecompiledHeader(const std::string& what) {
    Complain("A precompiled header is used or made (" + what +
             "): switch them off in the build (CMake: -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON)" +
             " and give the command that it runs then" +
             (IsClStyle() ? ", or add /Y- to this one." : "."));
  }

  void RefuseModule(const std::string& what) {
    Complain("C++ modules are used or made (" + what +
             "): switch them off in the build (CMake: -DCMAKE_CXX_SCAN_FOR_MODULES=OFF), or" +
             " give the command of a preprocessed source.");
  }

  void TakeFiles() {
    for (File& file : files) {
      if (file.name == "-") {
        Complain("The source is read from standard input: write it into a file and name that" +
                 std::string(" instead of -."));
      } else if (file.name[0] == '@') {
        Complain(
            "The response file " + file.name.substr(1) +
            " cannot be read: let the build keep it (ninja -d keeprsp), or write out its words.");
      }
      TakeFile(file);
    }
    CheckSources();
  }

  SourceType TypeOf(const File& file) {
    if (file.name.empty()) return SourceType();
    return file.language.empty() ? TypeBySuffix(file.name, IsClStyle())
                                 : TypeByLanguage(file.language);
  }

  void TakeFile(File& file) {
    SourceType type = TypeOf(file);
    if (type.kind != SourceKind::None && file.language.empty() && !clLanguage.empty()) {
      file.language = clLanguage;
      type = TypeOf(file);
    }
    switch (type.kind) {
      case SourceKind::None: return others.push_back(file.name);
      case SourceKind::C: return TakeOneSource(file, driverIsCpp && file.language.empty());
      case SourceKind::Cpp: return TakeOneSource(file, true);
      case SourceKind::Header:
        return Complain(file.name + " would become a precompiled header: compile it with " +
                        (IsClStyle()   ? "/TP"
                         : driverIsCpp ? "-x c++"
                                       : "-x c") +
                        " before it, or name a source.");
      case SourceKind::PrecompiledHeader: return RefusePrecompiledHeader(file.name);
      case SourceKind::Module: return RefuseModule(file.name);
    }
  }

  void TakeOneSource(const File& file, bool isCpp) {
    sources.push_back(file.name);
    // Behind "--" a name may look like an option.
    Command().source = (file.name[0] == '-' ? "./" : "") + file.name;
    Command().language = file.language;
    Command().isCpp = isCpp;
  }

  void CheckSources() {
    if (sources.size() > 1) {
      Complain("The command compiles " + std::to_string(sources.size()) + " sources (" +
               Listed(sources) + "): compile one source: leave in the one that fails.");
    } else if (sources.empty() && !others.empty()) {
      Complain("The command compiles no C or C++ source but takes " + Listed(others) +
               ": compile one source: add " + DefaultAction() + " and name the one that fails.");
    } else if (sources.empty()) {
      Complain("The command names no source: add " + DefaultAction() + " and the one that fails.");
    }
  }

  CommandOrComplaint result;
  bool driverIsCpp = false;
  bool precompiles = true;  // no "/Y-" is there, which makes cl overlook its other options for that
  std::string language;     // by "-x", for the files that follow
  std::string clLanguage;   // by "/TP" or "/TC", for all files
  std::vector<File> files;
  std::vector<std::string> sources;
  std::vector<std::string> others;
};

}  // namespace

CommandOrComplaint TakeCommandApart(const std::vector<std::string>& words,
                                    const std::string& folder) {
  return Taking(folder).Take(words);
}

}  // namespace snipwell
