#include "judge/compiler_checks.h"

#include <utility>

#include "failure/failure_reader.h"

namespace snipwell {

namespace {

/// A child at its limit hangs, one that the system kills is out of memory; any other fails as its
/// output tells.
Failure Concluded(FailureReader& reader, const platform::Child& child) {
  if (!child.HasEnded()) return reader.Conclude(child.Output(), 0, false);
  const platform::ChildEnd& end = child.End();
  if (end.timedOut) return {FailureKind::Hang, "not ended", false};
  const Failure failure =
      reader.Conclude(child.Output(), end.signal, end.signal == 0 && end.status == 0);
  const bool killed = end.signal == platform::ChildEnd::kKilled && !reader.IsDecided();
  return killed ? Failure{FailureKind::OutOfMemory, "out of memory", false} : failure;
}

class FailsAlikeRun : public CheckRun {
 public:
  FailsAlikeRun(const Failure& wantedFailure, bool errorsAllowed, const Place& programPlace,
                const FailsAlike::OtherCrash& onOtherCrash)
      : wanted(wantedFailure),
        place(programPlace),
        otherCrash(onOtherCrash),
        reader(errorsAllowed && wanted.kind != FailureKind::Error) {}

  std::optional<bool> Look(const platform::Child& child) override {
    reader.Read(child.Output());
    if (!reader.IsDecided() && !child.HasEnded()) return std::nullopt;
    const Failure failure = Concluded(reader, child);
    const bool same = failure.IsSameAs(wanted);
    if (!same && failure.kind == FailureKind::Crash && otherCrash) otherCrash(failure, place);
    return same;
  }

 private:
  const Failure& wanted;
  const Place& place;
  const FailsAlike::OtherCrash& otherCrash;
  FailureReader reader;
};

class AcceptsRun : public CheckRun {
 public:
  std::optional<bool> Look(const platform::Child& child) override {
    reader.Read(child.Output());
    if (reader.IsDecided()) return false;
    if (!child.HasEnded()) return std::nullopt;
    const platform::ChildEnd& end = child.End();
    return end.started && end.status == 0 && end.signal == 0 && !end.timedOut;
  }

 private:
  FailureReader reader{false};
};

}  // namespace

platform::ChildCommand CommandOf(const CompilerRun& run, const Place& place) {
  platform::ChildCommand command;
  command.arguments = run.words(place.program.string(), (place.temporary / "output").string());
  command.folder = run.folder;
  command.temporaryFolder = place.temporary.string();
  command.environment = run.environment;
  command.limitSeconds = run.limitSeconds;
  command.graceSeconds = run.graceSeconds;
  command.memoryBytes = run.memoryBytes;
  return command;
}

FailsAlike::FailsAlike(CompilerRun compilerRun, Failure wantedFailure, bool errorsAllowed,
                       OtherCrash onOtherCrash)
    : run(std::move(compilerRun)),
      wanted(std::move(wantedFailure)),
      allowErrors(errorsAllowed),
      otherCrash(std::move(onOtherCrash)) {}

platform::ChildCommand FailsAlike::Command(const Place& place) const {
  return CommandOf(run, place);
}

std::unique_ptr<CheckRun> FailsAlike::Run(const Place& place) {
  return std::make_unique<FailsAlikeRun>(wanted, allowErrors, place, otherCrash);
}

Accepts::Accepts(CompilerRun compilerRun) : run(std::move(compilerRun)) {}

platform::ChildCommand Accepts::Command(const Place& place) const { return CommandOf(run, place); }

std::unique_ptr<CheckRun> Accepts::Run(const Place& /*place*/) {
  return std::make_unique<AcceptsRun>();
}

Failure FailureOf(const platform::Child& child) {
  FailureReader reader(true);
  return Concluded(reader, child);
}

}  // namespace snipwell
