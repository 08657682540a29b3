#include "judge/process_judge.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "platform/files.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;

void MakeFresh(const Place& place) {
  fs::create_directory(place.temporary);
  fs::create_directory(place.folder);
}

void Clean(const Place& place) {
  // Where something stays, a next program finds its file written over, or says so.
  platform::RemoveFolder(place.temporary.string());
}

void WriteProgram(const fs::path& file, const std::string& program) {
  std::ofstream out(file, std::ios::binary);
  out << program;
  out.close();
  if (!out) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace

ProcessJudge::ProcessJudge(platform::ChildSet& childSet,
                           std::vector<std::unique_ptr<Check>> allChecks, Settings judgeSettings)
    : children(childSet), checks(std::move(allChecks)), settings(std::move(judgeSettings)) {
  seats.resize(settings.places);
  fs::create_directories(settings.folder);
}

ProcessJudge::~ProcessJudge() {
  for (Seat& seat : seats) Leave(seat);
}

void ProcessJudge::Ask(std::size_t place, const std::string& program) {
  Seat& seat = seats[place];
  seat.program = program;
  seat.check = 0;
  StartCheck(seat);
}

/// A place that no command has had: one that takes its time to end may still be in its own.
Place ProcessJudge::NextPlace() {
  const fs::path base = settings.folder / std::to_string(started++);
  return {base / "program", base, base / "program" / settings.programName};
}

void ProcessJudge::StartCheck(Seat& seat) {
  Check& check = *checks[seat.check];
  seat.place = NextPlace();
  MakeFresh(seat.place);
  WriteProgram(seat.place.program, seat.program);
  seat.run = check.Run(seat.place);
  seat.child = &children.Start(check.Command(seat.place));
}

void ProcessJudge::Drop(std::size_t place) {
  Leave(seats[place]);
  const auto about = [place](const Answer& answer) { return answer.place == place; };
  answers.erase(std::remove_if(answers.begin(), answers.end(), about), answers.end());
}

void ProcessJudge::Leave(Seat& seat) {
  if (seat.child == nullptr) return;
  children.Release(*std::exchange(seat.child, nullptr));
  seat.run.reset();
  Clean(seat.place);
}

std::optional<Judge::Answer> ProcessJudge::Await() {
  while (answers.empty()) {
    if (signal != 0 || IsTimeUp()) return std::nullopt;
    Listen();
  }
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::optional<bool> ProcessJudge::AskNow(const std::string& program) {
  Ask(0, program);
  const std::optional<Answer> answer = Await();
  if (!answer) return std::nullopt;
  return answer->interesting;
}

void ProcessJudge::Listen() {
  const platform::ChildNews news = children.Wait(SecondsToWait());
  signal = news.signal;
  for (std::size_t i = 0; i < seats.size(); ++i) {
    const auto& told = news.children;
    if (std::find(told.begin(), told.end(), seats[i].child) != told.end()) Look(i);
  }
  if (whileWaiting) whileWaiting();
}

/// Looks at what a command has written; the answer may need the next check.
void ProcessJudge::Look(std::size_t index) {
  Seat& seat = seats[index];
  const std::optional<bool> verdict = seat.run->Look(*seat.child);
  if (!verdict) return;
  Leave(seat);
  if (*verdict && ++seat.check < checks.size()) {
    StartCheck(seat);
  } else {
    answers.push_back({index, *verdict});
  }
}

bool ProcessJudge::IsTimeUp() const { return settings.end && Clock::now() >= *settings.end; }

std::optional<double> ProcessJudge::SecondsToWait() const {
  constexpr double kTick = 0.1;
  if (whileWaiting) return kTick;
  if (!settings.end) return std::nullopt;
  return std::max(0.0, std::chrono::duration<double>(*settings.end - Clock::now()).count());
}

}  // namespace snipwell
