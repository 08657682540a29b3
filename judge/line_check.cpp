#include "judge/line_check.h"

#include <utility>

#include "failure/output_lines.h"

namespace snipwell {

namespace {

class WritesLineRun : public CheckRun {
 public:
  explicit WritesLineRun(const std::string& wantedText) : text(wantedText) {}

  std::optional<bool> Look(const platform::Child& child) override {
    while (lines.TakeNext(child.Output())) {
      if (IsWanted()) return true;
    }
    if (!child.HasEnded()) return std::nullopt;
    return lines.TakeRest(child.Output()) && IsWanted();
  }

 private:
  bool IsWanted() const { return lines.All().back().find(text) != std::string::npos; }

  const std::string& text;
  OutputLines lines;
};

}  // namespace

WritesLine::WritesLine(CompilerRun compilerRun, std::string wantedText)
    : run(std::move(compilerRun)), text(std::move(wantedText)) {}

platform::ChildCommand WritesLine::Command(const Place& place) const {
  return CommandOf(run, place);
}

std::unique_ptr<CheckRun> WritesLine::Run(const Place& /*place*/) {
  return std::make_unique<WritesLineRun>(text);
}

}  // namespace snipwell
