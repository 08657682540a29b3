// What a set of children does on every system: limits, waiting, and what is told when.

#include "platform/child_set.h"

#include <algorithm>

#include "platform/signals.h"

namespace snipwell::platform {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

}  // namespace

Child& ChildSet::Start(const ChildCommand& command) {
  children.push_back(std::unique_ptr<Child>(new Child));
  Child& child = *children.back();
  child.start = Clock::now();
  if (command.limitSeconds > 0) {
    constexpr double kMost = 1e9;  // the clock counts no further
    const Seconds limit(std::min(command.limitSeconds, kMost));
    child.limit = child.start + std::chrono::duration_cast<Clock::duration>(limit);
  }
  child.end.reason = Spawn(child, command);
  child.end.started = child.end.reason == 0;
  if (child.end.started) ++started;
  child.ended = child.hasNews = !child.end.started;
  return child;
}

void ChildSet::Stop(Child& child) {
  if (child.ended) return;
  child.end.stopped = !child.end.timedOut;
  child.limit.reset();
  Kill(child);
}

void ChildSet::Release(Child& child) {
  Stop(child);
  if (!child.ended) Finish(child);
  const auto isIt = [&](const auto& other) { return other.get() == &child; };
  children.erase(std::find_if(children.begin(), children.end(), isIt));
}

void ChildSet::EndAll() {
  for (const auto& child : children) Stop(*child);
  for (const auto& child : children) {
    if (!child->ended) Finish(*child);
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
    const bool runs = std::any_of(children.begin(), children.end(),
                                  [](const auto& child) { return !child->ended; });
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
  bool runs = false;
  for (const auto& child : children) {
    if (child->hasNews) return 0;
    if (child->ended) continue;
    runs = true;
    if (!child->limit) continue;
    const double left = Seconds(*child->limit - Clock::now()).count();
    seconds = std::min(seconds.value_or(left), left);
  }
  return runs ? seconds : seconds.value_or(0);
}

void ChildSet::StopOverdue() {
  for (const auto& child : children) {
    if (child->ended || !child->limit || Clock::now() < *child->limit) continue;
    child->end.timedOut = true;
    child->limit.reset();
    Kill(*child);
  }
}

ChildNews ChildSet::TakeNews() {
  ChildNews news;
  for (const auto& child : children) {
    if (child->hasNews) news.children.push_back(child.get());
    child->hasNews = false;
  }
  news.signal = TakeSignal();
  return news;
}

}  // namespace snipwell::platform
