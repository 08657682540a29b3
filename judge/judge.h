#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace snipwell {

/// Answers whether programs are interesting. Several questions can be open at a time, each in a
/// place of its own, and the answers come in any order.
class Judge {
 public:
  struct Answer {
    std::size_t place;
    bool interesting;
  };

  virtual ~Judge() = default;

  /// How many questions can be open at a time; they have the places 0 to `Places()` - 1.
  virtual std::size_t Places() const = 0;
  /// Asks about a program. Nothing may be open at that place.
  virtual void Ask(std::size_t place, const std::string& program) = 0;
  /// Takes an open question back; it gets no answer.
  virtual void Drop(std::size_t place) = 0;
  /// Waits for the answer to one of the open questions. None when the search has to stop: the time
  /// is up or somebody has asked for it.
  virtual std::optional<Answer> Await() = 0;
};

}  // namespace snipwell
