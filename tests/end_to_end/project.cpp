#include "tests/end_to_end/project.h"

#include <gtest/gtest.h>

#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

namespace {

namespace fs = std::filesystem;

constexpr char kHeader[] = "struct Pool { int size; };\n";

constexpr char kSource[] =
    "#include \"pool.h\"\n"
    "\n"
    "int unused() { return 1; }\n"
    "\n"
    "int take(Pool& pool) {\n"
    "  int count = pool.size;\n"
    "  return count + 7;\n"
    "}\n"
    "int other;\n";

bool IsOfTheTest(const std::string& name) { return name.rfind("test_", 0) == 0; }

}  // namespace

const char kWanted[] = "int take ( ) { return 7 ; }";
const char kSmallest[] = "int take() { return 7; }\n";

std::string CrashOn(const std::string& words, const std::string& function,
                    const std::string& more) {
  return "rule\nnoarg -E\nwords " + words + '\n' + more +
         "err {file}:7:3: internal compiler error: in " + function + ", at pool.cc:70\nexit 1\n";
}

Project::Project() {
  fs::create_directories(Folder() / "test_tmp");
  fs::create_directories(Folder() / "test_bin");
  AddCompiler("fake_g++");
  Write("pool.h", kHeader);
  Write("pool.cpp", kSource);
  SetRules(CrashOn(kWanted, "take_pool"));
}

void Project::Write(const std::string& name, const std::string& text) {
  fs::create_directories((Folder() / name).parent_path());
  work.Write(name, text);
  if (!IsOfTheTest(name)) given[name] = text;
}

void Project::WriteScript(const std::string& name, const std::string& forShell,
                          const std::string& forInterpreter) {
  if (kIsWindows) return Write(name + ".bat", forInterpreter);
  Write(name, forShell);
  fs::permissions(Folder() / name, fs::perms::owner_all, fs::perm_options::add);
}

void Project::AddCompiler(const std::string& name, const std::string& program) {
  AddProgram(Folder() / "test_bin", name, TestProgramFolder() / program);
}

Project::Texts Project::AllTexts() const {
  Texts texts;
  for (const auto& entry : fs::recursive_directory_iterator(Folder())) {
    const std::string name = entry.path().lexically_relative(Folder()).generic_string();
    if (!IsOfTheTest(name) && entry.is_regular_file()) texts[name] = Read(name);
  }
  return texts;
}

Outcome Project::Run(const std::string& tool, const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment, const std::string& folder) {
  const std::string temporary = (Folder() / "test_tmp").string();
  Start start;
  start.program = ToolName(tool);
  start.processFile = (Folder() / "test_pid").string();
  start.environment = {"PATH=" + (Folder() / "test_bin").string(), "TMPDIR=" + temporary,
                       "TMP=" + temporary, "FAKE_GCC=" + (Folder() / "test_rules").string()};
  start.environment.insert(start.environment.end(), environment.begin(), environment.end());
  Outcome outcome;
  outcome.status = RunTool(Folder() / folder, arguments, start);
  outcome.out = work.Read(folder + "/test_out");
  outcome.err = work.Read(folder + "/test_err");
  EXPECT_EQ(Count(outcome.err, "Sanitizer"), 0U) << outcome.err;
  EXPECT_EQ(Count(outcome.err, "\x1b"), 0U) << "no terminal: " << outcome.err;
  ExpectNothingLeft();
  return outcome;
}

Outcome Project::Reduce(std::vector<std::string> arguments,
                        const std::vector<std::string>& environment) {
  arguments.insert(arguments.begin(), "-j1");
  for (const char* word : {"fake_g++", "-O2", "-c", "pool.cpp"}) arguments.emplace_back(word);
  return Snipwell(arguments, environment);
}

void Project::ExpectNothingLeft() const {
  const Texts texts = AllTexts();
  for (const auto& [name, text] : given) {
    const auto found = texts.find(name);
    EXPECT_TRUE(found != texts.end() && found->second == text) << name << " has changed";
  }
  for (const auto& entry : fs::recursive_directory_iterator(Folder() / "test_tmp")) {
    ADD_FAILURE() << entry.path() << " is left";
  }
  EXPECT_EQ(ProcessesOf(Folder()), "");
}

std::string Project::Added() const {
  std::string added;
  for (const auto& [name, text] : AllTexts()) {
    if (given.count(name) == 0 && !IsOfTheTest(fs::path(name).filename().string())) {
      added += (added.empty() ? "" : " ") + name;
    }
  }
  return added;
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) ++count;
  return count;
}

}  // namespace snipwell::testing
