#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "judge/check.h"
#include "judge/judge.h"
#include "platform/child_set.h"

namespace snipwell {

/// Judges programs by running commands on them: a program is interesting when all checks say so.
/// Each is made in the order given, in fresh folders, and only when those before have said yes.
class ProcessJudge : public Judge {
 public:
  using Clock = std::chrono::steady_clock;

  struct Settings {
    std::size_t places = 1;                ///< commands that run at the same time
    std::filesystem::path folder;          ///< for the folders of the places
    std::string programName;               ///< of the program's file
    std::optional<Clock::time_point> end;  ///< when to stop the search
  };

  /// Borrows the children, of which it releases only its own.
  ProcessJudge(platform::ChildSet& childSet, std::vector<std::unique_ptr<Check>> allChecks,
               Settings judgeSettings);
  ~ProcessJudge() override;

  std::size_t Places() const override { return seats.size(); }
  void Ask(std::size_t place, const std::string& program) override;
  void Drop(std::size_t place) override;
  std::optional<Answer> Await() override;

  /// Asks about one program and waits for the answer.
  std::optional<bool> AskNow(const std::string& program);

  /// The signal that has stopped the search, or 0.
  int StoppedBy() const { return signal; }
  /// Called about ten times a second while the judge waits; may be empty.
  void CallWhileWaiting(std::function<void()> callback) { whileWaiting = std::move(callback); }

 private:
  struct Seat {
    Place place;
    std::string program;
    std::size_t check = 0;
    platform::Child* child = nullptr;
    std::unique_ptr<CheckRun> run;
  };

  Place NextPlace();
  void StartCheck(Seat& seat);
  void Leave(Seat& seat);
  void Look(std::size_t index);
  void Listen();
  std::optional<double> SecondsToWait() const;
  bool IsTimeUp() const;

  platform::ChildSet& children;
  std::vector<std::unique_ptr<Check>> checks;
  Settings settings;
  std::vector<Seat> seats;
  std::size_t started = 0;  // commands
  std::deque<Answer> answers;
  std::function<void()> whileWaiting;
  int signal = 0;
};

}  // namespace snipwell
