#include "judge/test_check.h"

#include <filesystem>
#include <utility>

namespace snipwell {

namespace {

/// Scripts may count on nothing being there.
std::filesystem::path EmptyFolder(const Place& place) { return place.temporary / "temporary"; }

class TestRun : public CheckRun {
 public:
  std::optional<bool> Look(const platform::Child& child) override {
    if (!child.HasEnded()) return std::nullopt;
    const platform::ChildEnd& end = child.End();
    return end.started && !end.timedOut && end.signal == 0 && end.status == 0;
  }
};

}  // namespace

TestHolds::TestHolds(std::vector<std::string> testWords, double limit, double grace)
    : words(std::move(testWords)), limitSeconds(limit), graceSeconds(grace) {}

platform::ChildCommand TestHolds::Command(const Place& place) const {
  platform::ChildCommand command;
  command.arguments = words;
  command.folder = place.folder.string();
  command.temporaryFolder = EmptyFolder(place).string();
  command.limitSeconds = limitSeconds;
  command.graceSeconds = graceSeconds;
  return command;
}

std::unique_ptr<CheckRun> TestHolds::Run(const Place& place) {
  std::filesystem::create_directory(EmptyFolder(place));
  return std::make_unique<TestRun>();
}

}  // namespace snipwell
