#include "snip_cc/invocation.h"

#include <algorithm>
#include <system_error>

#include "compile/compiler_name.h"
#include "platform/machine.h"

namespace snipwell::snip_cc {

namespace {

namespace fs = std::filesystem;

bool StartsWithAny(const std::string& argument, std::initializer_list<const char*> starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](const char* start) { return argument.rfind(start, 0) == 0; });
}

bool HasArgument(const Options& options, std::initializer_list<const char*> starts) {
  return std::any_of(options.arguments.begin(), options.arguments.end(),
                     [&](const std::string& argument) { return StartsWithAny(argument, starts); });
}

bool IsClang(const std::string& compiler) {
  const auto names = [](const std::string& program) {
    const CompilerStyle style = StyleOf(program);
    return style == CompilerStyle::Clang || style == CompilerStyle::ClangCl;
  };
  return names(compiler) || names(platform::ProgramFile(compiler).string());
}

}  // namespace

std::vector<std::string> CompilerCommand(const Options& options, const fs::path& folder) {
  std::vector<std::string> command = {options.compiler};
  if (IsClang(options.compiler)) command.emplace_back("-fno-crash-diagnostics");
  const std::string output = (folder / "output").string();
  if (options.speaksCl) {
    if (!HasArgument(options, {"/Fo", "-Fo", "-o", "/Zs"})) command.push_back("/Fo" + output);
  } else if (!HasArgument(options, {"-o", "-fsyntax-only"})) {
    command.insert(command.end(), {"-o", output});
  }
  command.insert(command.end(), options.arguments.begin(), options.arguments.end());
  return command;
}

std::string SourceName(const std::string& file) {
  const fs::path path(file);
  std::string name = path.filename().string();
  const std::size_t kind = name.rfind(".fut.");
  if (kind != std::string::npos) return name.replace(kind, 5, ".");
  // A name without any "." has become the candidate's by three letters at its end.
  if (name.size() > 3 && name.compare(name.size() - 3, 3, "fut") == 0 &&
      name.find('.') == std::string::npos) {
    const std::string original = name.substr(0, name.size() - 3);
    std::error_code error;
    if (fs::exists(path.parent_path() / original, error)) return original;
  }
  return name;
}

}  // namespace snipwell::snip_cc
