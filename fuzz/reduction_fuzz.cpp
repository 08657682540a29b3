// A whole reduction of any text with a compiler and a clock that stand in this process. Before the
// first NUL byte stands what the compiler does: words that the text must hold for the error to
// show, or, after a "?", a compiler that shows it for some texts and not for others, without
// reason. A "!" in front sets a time limit that is passed on the way.
//
// At every compilation: the isolated file is the program that showed the error last; the candidate
// is a part of it; with every object kept, the candidate would equal it byte for byte. At the end
// the source is as before, the isolated file shows the error, and the search was no endless one.

#include <algorithm>
#include <ctime>
#include <deque>
#include <functional>
#include <iostream>
#include <optional>

#include "compile/run_compiler.h"
#include "fuzz/fuzzing.h"
#include "platform/clock.h"
#include "reduce/file_org.h"
#include "snip/preliminary_checks.h"
#include "tests/unit/invariants.h"
#include "tests/unit/printed.h"
#include "tests/unit/temp_folder.h"

namespace snipwell {

namespace fuzz {

namespace {

constexpr char kSource[] = "x.cpp";
constexpr char kIsolated[] = "x.tsf.cpp";
constexpr char kCandidate[] = "x.fut.cpp";
constexpr char kOutput[] = "x.cpp.ZEDRerrfile";
constexpr double kLimitMinutes = 1;
constexpr int kSecondsPerLook = 2;  // at the clock

/// With every blank a space, as the cleaner writes them.
std::string WithSpaces(std::string text) {
  const auto isBlank = [](char c) { return std::string("\t\v\f\r").find(c) != std::string::npos; };
  std::replace_if(text.begin(), text.end(), isBlank, ' ');
  return text;
}

class Reduction {
 public:
  Reduction(const TempFolder& inFolder, std::string behaviour, std::string text);

  void Run();
  void Compile();
  std::time_t Now() { return limited ? now += kSecondsPerLook : 0; }

 private:
  bool ShowsError(const std::string& text) const;
  void CheckEverythingKept();

  const TempFolder& folder;
  bool limited;
  bool erratic;
  std::string wanted;
  std::string source;
  std::string lastShown;    // the program that showed the error last
  std::string shownBefore;  // the same before the last compilation
  std::size_t compilations = 0;
  std::time_t now = 0;
  std::optional<FileOrg> engine;
  bool hasList = false;
};

Reduction* current = nullptr;  // the one that runs

Reduction::Reduction(const TempFolder& inFolder, std::string behaviour, std::string text)
    : folder(inFolder),
      limited(!behaviour.empty() && behaviour[0] == '!'),
      erratic(behaviour.find('?') == (limited ? 1U : 0U)),
      wanted(behaviour.substr((limited ? 1U : 0U) + (erratic ? 1U : 0U))),
      source(std::move(text)),
      lastShown(source) {}

bool Reduction::ShowsError(const std::string& text) const {
  if (text == source) return true;
  if (erratic) return std::hash<std::string>()(wanted + text) % 3 != 0;
  std::string words = wanted;
  while (!words.empty()) {
    if (text.find(TakeUpTo(' ', words)) == std::string::npos) return false;
  }
  return true;
}

void Reduction::CheckEverythingKept() {
  const std::string candidate = folder.Read(kCandidate);
  engine->Restore();
  Require(engine->WriteCandidateFile(), "a candidate can be written");
  Require(folder.Read(kCandidate) == lastShown, "with everything kept nothing changes");
  folder.Write(kCandidate, candidate);
}

void Reduction::Compile() {
  ++compilations;
  const std::string candidate = folder.Read(kCandidate);
  Require(folder.Read(kIsolated) == lastShown, "the isolated file showed the error last");
  Require(IsLeftOf(WithSpaces(candidate), WithSpaces(lastShown)), "a candidate is a part");
  // The statuses are of no use after the compilation, so they can be reset here.
  if (hasList) CheckEverythingKept();
  const bool shows = ShowsError(candidate);
  shownBefore = lastShown;
  if (shows) lastShown = candidate;
  folder.Write(kOutput, shows ? "x.fut.cpp(7) : error\n" : "x.fut.cpp(7) : other error\n");
}

void Reduction::Run() {
  folder.Write(kSource, source);
  folder.Write(kOutput, "x.cpp(7) : error\n");
  ErrorMatch match(kOutput, "", true);
  RunSettings settings;
  settings.errorFileName = kOutput;
  settings.arguments = StringArray({"snip", kSource});
  ArgumentVector vector(settings.arguments);
  std::deque<ArgumentVector> vectors;
  engine.emplace(1, kSource, match, "", kOutput, 0, 0.0, limited ? kLimitMinutes : 0.0, true,
                 vector.Count(), vector.Get());
  settings.arguments = StringArray(engine->GetArgCount(), engine->GetArgv());
  PreliminaryChecks(settings, *engine, vectors).Run();
  engine->BuildList();
  hasList = true;
  try {
    engine->Reduce();
  } catch (double) {
    Require(limited, "the limit was set");
    lastShown = shownBefore;  // a candidate that came too late is not accepted
  }
  engine.reset();
  Require(folder.Read(kSource) == source, "the source stays as it is");
  Require(folder.Read(kIsolated) == lastShown, "the isolated file showed the error last");
  Require(ShowsError(lastShown), "the isolated file shows the error");
  Require(compilations <= 64 + 8 * source.size(), "the search is no endless one");
}

}  // namespace

}  // namespace fuzz

// In the place of the library's own.

int RunCompiler(const char*, const char*, int, char* const*) {
  fuzz::current->Compile();
  return Failed;
}

std::time_t platform::CurrentTime() { return fuzz::current->Now(); }

}  // namespace snipwell

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  const Capture output(std::cout);
  const Capture error(std::cerr);
  static const TempFolder folder;
  static const CurrentFolder current(folder);
  std::string text = fuzz::TextOf(data, size);
  const std::string behaviour = fuzz::TakeUpTo('\0', text);
  fuzz::Reduction reduction(folder, behaviour, text);
  fuzz::current = &reduction;
  reduction.Run();
  return 0;
}
