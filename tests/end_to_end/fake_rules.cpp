#include "tests/end_to_end/fake_rules.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace snipwell::testing {

namespace {

struct Line {
  std::string word;
  std::string rest;
};
using Rule = std::vector<Line>;

/// Replaces \n, \\ and \xHH.
std::string Unescape(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
    } else if (text[++i] == 'x') {
      result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      result += text[i] == 'n' ? '\n' : text[i];
    }
  }
  return result;
}

std::vector<Rule> ReadRules(const std::string& fileName) {
  std::vector<Rule> rules;
  std::ifstream in(fileName);
  for (std::string text; std::getline(in, text);) {
    if (!text.empty() && text.back() == '\r') text.pop_back();
    const std::size_t blank = text.find(' ');
    const std::string word = text.substr(0, blank);
    if (word == "rule") rules.emplace_back();
    if (word.empty() || word == "rule") continue;
    rules.back().push_back(
        {word, blank == std::string::npos ? "" : Unescape(text.substr(blank + 1))});
  }
  return rules;
}

bool Holds(const Line& line, const Compilation& made) {
  const auto contains = [&](const std::string& text) {
    return text.find(line.rest) != std::string::npos;
  };
  const auto given = std::count(made.arguments.begin(), made.arguments.end(), line.rest);
  if (line.word == "has") return contains(made.text);
  if (line.word == "lacks") return !contains(made.text);
  if (line.word == "words") return HasInOrder(made.text, line.rest);
  if (line.word == "arg") return given != 0;
  if (line.word == "noarg") return given == 0;
  if (line.word == "source") return contains(made.file);
  if (line.word == "run") return made.run == std::stoi(line.rest);
  if (line.word == "until") return made.run <= std::stoi(line.rest);
  if (line.word == "even") return made.run % 2 == 0;
  return true;  // an action
}

std::string WithFileName(std::string text, const std::string& file) {
  const std::size_t place = text.find("{file}");
  return place == std::string::npos ? text : text.replace(place, 6, file);
}

void AdvanceClock(int seconds) {
  int now = 0;
  std::ifstream("test_clock") >> now;
  std::ofstream("test_clock") << now + seconds;
}

[[noreturn]] void Hang() {
  for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
}

[[noreturn]] void Flood() {
  for (;;) std::cout << "flood\n" << std::flush;
}

void Crash() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

#ifdef _WIN32
const char kHangs[] = "FAKE_HANGS";  // a variable of a process that is left behind

void Litter() {
  std::ofstream(std::filesystem::temp_directory_path() /
                ("litter" + std::to_string(::GetCurrentProcessId())));
  wchar_t program[MAX_PATH];
  ::GetModuleFileNameW(nullptr, program, MAX_PATH);
  ::SetEnvironmentVariableA(kHangs, "1");
  STARTUPINFOW startup{};
  PROCESS_INFORMATION process{};
  ::CreateProcessW(program, nullptr, nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr,
                   &startup, &process);
}

/// Signal 9 ends the process at once. Any other is Ctrl-Break, sent as the system sends it: by a
/// thread in the process. To ask the system for it takes a console, which tests do not have
/// everywhere.
void Signal(const std::string& rest) {
  std::istringstream in(rest);
  int signal = 0;
  std::string fileName;
  in >> signal >> fileName;
  DWORD process = 0;
  std::ifstream(fileName) >> process;
  // All processes have the system's libraries at the same addresses.
  const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernelbase"), "CtrlRoutine")));
  const HANDLE target = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
  if (signal == 9) ::TerminateProcess(target, 9);
  ::CreateRemoteThread(target, nullptr, 0, routine, reinterpret_cast<void*>(CTRL_BREAK_EVENT), 0,
                       nullptr);
}

void HangIfLeftBehind() {
  if (std::getenv(kHangs) != nullptr) Hang();
}
#else
void HangIfLeftBehind() {}

void Litter() {
  std::ofstream(std::filesystem::temp_directory_path() / ("litter" + std::to_string(::getpid())));
  if (::fork() != 0) return;
  ::setsid();
  Hang();
}

void Signal(const std::string& rest) {
  std::istringstream in(rest);
  int signal = 0;
  std::string fileName;
  in >> signal >> fileName;
  pid_t process = 0;
  if (std::ifstream(fileName) >> process) ::kill(process, signal);
}
#endif

int Act(const Rule& rule, const Compilation& made) {
  for (const Line& line : rule) {
    if (line.word == "out") std::cout << WithFileName(line.rest, made.file) << std::endl;
    if (line.word == "err") std::cerr << WithFileName(line.rest, made.file) << std::endl;
    if (line.word == "raw") std::cout << WithFileName(line.rest, made.file) << std::flush;
    if (line.word == "clock") AdvanceClock(std::stoi(line.rest));
    if (line.word == "delete") std::filesystem::remove(made.file);
    if (line.word == "litter") Litter();
    if (line.word == "signal") Signal(line.rest);
    if (line.word == "wait") {
      std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(line.rest)));
    }
    if (line.word == "hang") Hang();
    if (line.word == "flood") Flood();
    if (line.word == "abort") std::raise(SIGABRT);
    if (line.word == "crash") Crash();
    if (line.word == "exit") return std::stoi(line.rest);
  }
  return EXIT_SUCCESS;
}

}  // namespace

std::string ReadAll(const std::string& fileName) {
  if (!std::filesystem::is_regular_file(fileName)) return "";
  std::ifstream in(std::filesystem::path(fileName), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool HasInOrder(const std::string& text, const std::string& words) {
  std::istringstream in(words);
  std::size_t place = 0;
  for (std::string word; in >> word; place += word.size()) {
    place = text.find(word, place);
    if (place == std::string::npos) return false;
  }
  return true;
}

std::optional<int> Obey(const std::string& rulesFile, const Compilation& made) {
  HangIfLeftBehind();
  for (const Rule& rule : ReadRules(rulesFile)) {
    const bool holds =
        std::all_of(rule.begin(), rule.end(), [&](const Line& line) { return Holds(line, made); });
    if (holds) return Act(rule, made);
  }
  return std::nullopt;
}

}  // namespace snipwell::testing
