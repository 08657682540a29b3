#include "compile/launchers.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>
#include <utility>

#include "compile/compiler_name.h"
#include "compile/word_splitting.h"
#include "text/small_letters.h"

namespace snipwell {

namespace {

/// Whether a whole command may stand in one word behind the options.
enum class Shell {
  None,
  Posix,    // behind "-c", or options such as "-ec"
  Windows,  // behind "/c"; its options begin with slashes
};

/// A program that starts the one named behind its options.
struct Launcher {
  std::string_view name;
  std::string_view valueOptions = "";  // those with a value in the next word, parted by blanks
  int operands = 0;                    // number of words between its options and the program
  Shell shell = Shell::None;
};

constexpr Launcher kLaunchers[] = {
    {"bash", "", 0, Shell::Posix},
    {"bear", "--output -o --config"},
    {"buildcache"},
    {"cachecc1"},
    {"ccache", "--config-path"},
    {"clcache"},
    {"cmake", "-E"},  // "cmake -E env", "cmake -E time", "cmake -E __run_co_compile ... --"
    {"cmd", "", 0, Shell::Windows},
    {"colorgcc"},
    {"command"},
    {"distcc"},
    {"env", "-u --unset -C --chdir"},
    {"exec"},
    {"goma_ld"},
    {"gomacc"},
    {"icecc"},
    {"intercept-build"},
    {"ionice", "-c -n --class --classdata"},
    {"libtool"},
    {"nice", "-n --adjustment"},
    {"nohup"},
    {"pump"},
    {"reclient"},
    {"rewrapper"},
    {"sccache"},
    {"scan-build", "-o"},
    {"setarch", "", 1},
    {"sh", "", 0, Shell::Posix},
    {"stdbuf", "-i -o -e"},
    {"taskset", "", 1},
    {"time", "-f -o --format --output"},
    {"timeout", "-k -s --kill-after --signal", 1},
    {"wine"},
    {"xcrun", "-sdk --sdk -toolchain --toolchain"},
};

/// Libtool is often a copy for one target: "x86_64-linux-gnu-libtool".
bool IsNamed(const std::string& program, std::string_view name) {
  if (name == "libtool" && program.size() > name.size()) {
    return program.substr(program.size() - name.size() - 1) == "-libtool";
  }
  return program == name;
}

const Launcher* FindLauncher(const std::string& word) {
  const std::string program = InSmallLetters(ProgramName(word));
  const auto* const found =
      std::find_if(std::begin(kLaunchers), std::end(kLaunchers),
                   [&](const Launcher& each) { return IsNamed(program, each.name); });
  return found != std::end(kLaunchers) ? found : nullptr;
}

bool IsAmong(std::string_view option, std::string_view options) {
  const std::string all = " " + std::string(options) + " ";
  return all.find(" " + std::string(option) + " ") != std::string::npos;
}

bool IsAssignment(const std::string& word) {
  const std::size_t equals = word.find('=');
  if (equals == 0 || equals == std::string::npos) return false;
  return std::all_of(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(equals),
                     [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

/// True for the option behind which the shell is given a command.
bool IsScriptOption(const std::string& option, Shell shell) {
  if (shell == Shell::Windows) return option == "/c" || option == "/C";
  return shell == Shell::Posix && option[1] != '-' && option.back() == 'c';
}

class Search {
 public:
  explicit Search(std::vector<std::string> all) : words(std::move(all)) {}

  PlainCommand Run() {
    SkipAssignments();
    while (at < words.size()) {
      const Launcher* const launcher = FindLauncher(words[at]);
      if (launcher == nullptr || IsBuildByCMake()) break;
      ++at;
      SkipOptions(*launcher);
      SkipAssignments();
      // "--" may follow assignments too, as in "cmake -E env A=b -- g++".
      if (at < words.size() && words[at] == "--") ++at;
      at = std::min(words.size(), at + static_cast<std::size_t>(launcher->operands));
    }
    found.words.assign(words.begin() + static_cast<std::ptrdiff_t>(at), words.end());
    return std::move(found);
  }

 private:
  bool IsBuildByCMake() const {
    return ProgramName(words[at]) == "cmake" && (at + 1 == words.size() || words[at + 1] != "-E");
  }

  bool AtOption(const Launcher& launcher) const {
    if (at == words.size() || words[at].size() < 2) return false;
    return words[at][0] == (launcher.shell == Shell::Windows ? '/' : '-');
  }

  void SkipOptions(const Launcher& launcher) {
    while (AtOption(launcher)) {
      const std::string& option = words[at++];
      if (option == "--") return;
      if (IsScriptOption(option, launcher.shell)) return TakeScript(launcher.shell);
      if (IsAmong(option, launcher.valueOptions) && at < words.size()) ++at;
    }
  }

  /// Windows' shell takes all that follows, but several words are parted already.
  void TakeScript(Shell shell) {
    const bool isWindows = shell == Shell::Windows;
    if (at == words.size() || (isWindows && at + 1 < words.size())) return;
    words = SplitWords(words[at], isWindows ? Quoting::Windows : Quoting::Shell);
    at = 0;
  }

  void SkipAssignments() {
    for (; at < words.size() && IsAssignment(words[at]); ++at) {
      found.environment.push_back(words[at]);
    }
  }

  std::vector<std::string> words;
  std::size_t at = 0;
  PlainCommand found;
};

}  // namespace

PlainCommand FindCompiler(std::vector<std::string> words) { return Search(std::move(words)).Run(); }

}  // namespace snipwell
