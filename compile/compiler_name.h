#pragma once

#include <string>

namespace snipwell {

/// Which command line a compiler understands.
enum class CompilerStyle { Gcc, Clang, Cl, ClangCl };

/// What the name of a compiler tells, whatever its folder, target prefix and version, and whether
/// its letters are small. Of "cc" and "c++", which may be any compiler, it tells what all POSIX
/// compilers understand: `Gcc`.
CompilerStyle StyleOf(const std::string& compiler);

/// True for the command line of cl, which clang-cl understands too.
inline bool IsClStyle(CompilerStyle style) {
  return style == CompilerStyle::Cl || style == CompilerStyle::ClangCl;
}

/// True for a driver that compiles even "x.c" as C++.
bool IsCppDriver(const std::string& compiler);

/// True for "make", "ninja", "ld" and others that are often given instead of a compiler.
bool IsNoCompiler(const std::string& program);

/// The last part of a path, without ".exe", in small letters when it has that. The separators are
/// those of every system.
std::string ProgramName(const std::string& path);

}  // namespace snipwell
