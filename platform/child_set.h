#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace snipwell::platform {

/// What a child process is to run.
struct ChildCommand {
  std::vector<std::string> arguments;  ///< the first one is the program, looked up in PATH
  /// Current directory, from which a relative program is looked up too; empty means this process's
  /// own.
  std::string folder;
  /// Where the child is to have its temporary files, by TMPDIR, on Windows TMP and TEMP too; empty
  /// means this process's own.
  std::string temporaryFolder;
  std::vector<std::string> environment;  ///< further variables, "NAME=value"
  double limitSeconds = 0;               ///< wall time; 0 means no limit
  /// Address space of each of its processes, on Windows the memory that it commits; 0 means no
  /// limit.
  std::uint64_t memoryBytes = 0;
  /// When it is to end, it is asked to (SIGTERM), and killed so many seconds later. 0: killed at
  /// once, as always where a system knows no such request.
  double graceSeconds = 0;
};

/// How a child ended. What Windows ends a process by, such as an access violation, is told by the
/// number of the signal that it would be on a POSIX system.
struct ChildEnd {
  static constexpr int kKilled = 9;  ///< the signal of one that somebody has killed

  bool started = false;
  int reason = 0;         ///< the error number (errno's) when it could not be started
  bool timedOut = false;  ///< it was ended at the limit
  bool stopped = false;   ///< it was ended by `ChildSet::Stop`
  int signal = 0;         ///< the signal that ended it, or 0
  int status = 0;         ///< its exit status, when no signal ended it
  double seconds = 0;     ///< wall time from its start to its end
};

/// A child process of a `ChildSet`, which owns it.
class Child {
 public:
  /// More than that of a child's output is read but thrown away.
  static constexpr std::size_t kMostOutput = std::size_t{16} * 1024 * 1024;

  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// What it and its own children have written so far to standard output and standard error, in
  /// the order of writing, on Windows with a carriage return and line feed as one line feed. It
  /// grows in `ChildSet::Wait` only.
  const std::string& Output() const { return output; }
  bool HasEnded() const { return ended; }
  /// How it ended; of use when it has.
  const ChildEnd& End() const { return end; }

 private:
  friend class ChildSet;
  struct Process;
  Child();

  using Clock = std::chrono::steady_clock;

  long id = 0;  // the system's number, or one of the set's own; of one that runs
  std::string output;
  Clock::time_point start;
  std::optional<Clock::time_point> limit;  // none when the end is near anyway
  double grace = 0;                        // seconds
  bool isAsked = false;                    // to end
  bool isReleased = false;                 // nobody knows it any more
  bool ended = false;
  bool hasNews = false;  // something has happened that Wait has not told yet
  ChildEnd end;
  std::unique_ptr<Process> process;  // what the system knows it by
};

/// What a wait came back with. All empty when its time was up, or there was nothing to wait for.
struct ChildNews {
  std::vector<Child*> children;  ///< those that have written or ended since the last wait
  /// The signal (interrupt, hang-up, terminate or the like) that this process was sent meanwhile,
  /// or 0. The caller should clean up and end by that signal.
  int signal = 0;
};

/// Runs child processes side by side, and waits for all of them in one place.
///
/// When a child has ended, by itself, at its limit or because it was stopped, what it leaves behind
/// is killed. On POSIX systems a child leads a process group of its own, and what is left of that
/// is killed; on Linux also what has left the group. Of what has left it, a process is taken to
/// belong to the child whose TMPDIR is its own, so children that run at the same time should have
/// folders of their own. On Windows a child has a job object of its own, which nothing can leave,
/// and which ends with this process too, whatever ends that.
///
/// Standard input of a child is empty, signals have their default handling, it leaves no core file,
/// and it is told to write its messages in English. Of this process's descriptors and handles it
/// has none but its own output.
///
/// One set lives at a time, in a process of one thread that has no other children meanwhile.
/// Signals are held back as by `SignalsHeldBack`.
class ChildSet {
 public:
  ChildSet();
  /// Ends all children.
  ~ChildSet();
  ChildSet(const ChildSet&) = delete;
  ChildSet& operator=(const ChildSet&) = delete;

  /// Starts a child. One that cannot be started has ended when this returns, and says why. It stays
  /// where it is until it is released.
  Child& Start(const ChildCommand& command);

  /// Kills the child and its group, or asks them to end first. Like any other end, this one is told
  /// by a later wait. Nothing happens to a child that has ended.
  void Stop(Child& child);

  /// Waits until a child has written or ended, this process is sent a signal, or the time is up.
  /// Without a time it comes back at once when no child runs.
  ChildNews Wait(std::optional<double> seconds = std::nullopt);

  /// Forgets a child; one that still runs is ended first, or asked to end: then later waits and
  /// the end of the set see to it.
  void Release(Child& child);

  /// How many children were started.
  std::size_t Started() const { return started; }

 private:
  struct System;

  Child* Find(long id) const;
  void End(Child& child);
  void EndAll();
  void Forget();
  std::optional<double> TimeToSleep(std::optional<double> seconds) const;
  void StopOverdue();
  ChildNews TakeNews();

  // What the system does. `Spawn` starts a child and gives its id, or returns the error number;
  // `Kill` ends all of it that runs, without waiting; `AskToEnd` lets it end by itself, or returns
  // false where that cannot be; `Finish` ends what is left of a child that
  // has ended or was killed, and tells how it ended; `Look` waits until something happens, at most
  // that long, and takes in what has happened.
  int Spawn(Child& child, const ChildCommand& command);
  void Kill(Child& child);
  bool AskToEnd(Child& child);
  void Finish(Child& child);
  void Look(std::optional<double> seconds);

  std::vector<std::unique_ptr<Child>> children;
  std::size_t started = 0;
  std::unique_ptr<System> system;
};

}  // namespace snipwell::platform
