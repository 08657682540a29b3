// A compiler that does what a rules file tells it: "fake_compiler.rules" in the current directory,
// as `Obey` understands it. Without a rule for it, it succeeds silently. The file to compile is the
// last argument. Each run leaves its arguments, one a line, in "runs/N.args" and the text of that
// file in "runs/N.text".

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/arguments.h"
#include "tests/end_to_end/fake_rules.h"

namespace {

using snipwell::testing::Compilation;

Compilation Record(const std::vector<std::string>& arguments) {
  Compilation made;
  made.arguments = arguments;
  made.file = made.arguments.back();
  made.text = snipwell::testing::ReadAll(made.file);
  std::filesystem::create_directory("runs");
  const auto name = [&made](const char* kind) { return "runs/" + std::to_string(made.run) + kind; };
  while (std::filesystem::exists(name(".args"))) ++made.run;
  std::ofstream list(name(".args"), std::ios::binary);
  for (const std::string& argument : arguments) list << argument << '\n';
  std::ofstream(name(".text"), std::ios::binary) << made.text;
  return made;
}

}  // namespace

int main(int argc, char** argv) {
  const Compilation made = Record(snipwell::platform::Arguments(argc, argv).Words());
  return snipwell::testing::Obey("fake_compiler.rules", made).value_or(EXIT_SUCCESS);
}
