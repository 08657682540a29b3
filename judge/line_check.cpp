#include "judge/line_check.h"

#include <utility>

#include "failure/line_rewriter.h"

namespace snipwell {

namespace {

class WritesLineRun : public CheckRun {
 public:
  explicit WritesLineRun(const std::string& wantedText) : text(wantedText) {}

  std::optional<bool> Look(const platform::Child& child) override {
    const std::string& output = child.Output();
    for (std::size_t end; (end = output.find('\n', read)) != std::string::npos; read = end + 1) {
      if (HoldsText(output.substr(read, end - read))) return true;
    }
    if (!child.HasEnded()) return std::nullopt;
    return HoldsText(output.substr(read));
  }

 private:
  bool HoldsText(const std::string& line) const {
    return WithoutColours(line).find(text) != std::string::npos;
  }

  const std::string& text;
  std::size_t read = 0;  // bytes that were read as whole lines
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
