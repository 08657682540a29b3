// What a set of children does on every system: limits, waiting, and what is told when.

#include "platform/child_set.h"

#include <algorithm>

#include "platform/signals.h"

namespace snipwell::platform {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

Clock::time_point TimeIn(double seconds) {
  constexpr double kMost = 1e9;  // the clock counts no further
  return Clock::now() +
         std::chrono::duration_cast<Clock::duration>(Seconds(std::min(seconds, kMost)));
}

}  // namespace

Child& ChildSet::Start(const ChildCommand& command) {
  children.push_back(std::unique_ptr<Child>(new Child));
  Child& child = *children.back();
  child.start = Clock::now();
  child.grace = command.graceSeconds;
  if (command.limitSeconds > 0) child.limit = TimeIn(command.limitSeconds);
  child.end.reason = Spawn(child, command);
  child.end.started = child.end.reason == 0;
  if (child.end.started) ++started;
  child.ended = child.hasNews = !child.end.started;
  return child;
}

void ChildSet::Stop(Child& child) {
  if (child.ended) return;
  child.end.stopped = !child.end.timedOut;
  End(child);
}

/// Kills it, or asks it to end and sees to it that it does.
void ChildSet::End(Child& child) {
  if (child.isAsked) return;
  child.isAsked = child.grace > 0 && AskToEnd(child);
  child.limit.reset();
  if (child.isAsked) {
    child.limit = TimeIn(child.grace);
  } else {
    Kill(child);
  }
}

void ChildSet::Release(Child& child) {
  Stop(child);
  child.isReleased = true;
  if (!child.ended && !child.isAsked) Finish(child);
  Forget();
}

/// Lets go of those that have ended and that nobody knows any more.
void ChildSet::Forget() {
  const auto isGone = [](const auto& child) { return child->ended && child->isReleased; };
  children.erase(std::remove_if(children.begin(), children.end(), isGone), children.end());
}

void ChildSet::EndAll() {
  for (const auto& child : children) Stop(*child);
  for (const auto& child : children) {
    child->isReleased = true;
    if (!child->ended && !child->isAsked) Finish(*child);
  }
  for (Forget(); !children.empty(); Forget()) {
    Look(TimeToSleep(1));
    StopOverdue();
  }
}

ChildNews ChildSet::Wait(std::optional<double> seconds) {
  const Clock::time_point start = Clock::now();
  for (;;) {
    const std::optional<double> left =
        seconds ? std::optional(*seconds - Seconds(Clock::now() - start).count()) : std::nullopt;
    Look(TimeToSleep(left));
    StopOverdue();
    ChildNews news = TakeNews();
    const bool runs = std::any_of(children.begin(), children.end(), [](const auto& child) {
      return !child->ended && !child->isReleased;
    });
    if (!news.children.empty() || news.signal != 0 || (left ? *left <= 0 : !runs)) return news;
  }
}

Child* ChildSet::Find(long id) const {
  for (const auto& child : children) {
    if (!child->ended && child->id == id) return child.get();
  }
  return nullptr;
}

/// How long nothing needs to be looked at, when the caller allows `seconds`.
std::optional<double> ChildSet::TimeToSleep(std::optional<double> seconds) const {
  bool hasToReturn = !seconds;
  for (const auto& child : children) {
    if (child->hasNews && !child->isReleased) return 0;
    if (child->ended) continue;
    hasToReturn = hasToReturn && child->isReleased;
    if (!child->limit) continue;
    const double left = Seconds(*child->limit - Clock::now()).count();
    seconds = std::min(seconds.value_or(left), left);
  }
  return hasToReturn ? 0 : seconds;
}

void ChildSet::StopOverdue() {
  for (const auto& child : children) {
    if (child->ended || !child->limit || Clock::now() < *child->limit) continue;
    if (child->isAsked) {
      child->limit.reset();
      Kill(*child);
    } else {
      child->end.timedOut = true;
      End(*child);
    }
  }
}

ChildNews ChildSet::TakeNews() {
  ChildNews news;
  for (const auto& child : children) {
    if (child->hasNews && !child->isReleased) news.children.push_back(child.get());
    child->hasNews = false;
  }
  Forget();
  news.signal = TakeSignal();
  return news;
}

}  // namespace snipwell::platform
