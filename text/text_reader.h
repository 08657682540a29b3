#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/descriptor.h"

namespace snipwell {

/// What a reader does with a carriage return that is directly followed by a line feed.
enum class LineEnds {
  Native,   ///< what the system's text mode does: the source and its copies
  Foreign,  ///< the pair reads as one line feed on every system: text written by other programs
};

/// Buffered reader of one text, character by character. Reading follows the rule of input streams
/// that the scanners count on: the reader is at its end only after a read has found nothing more,
/// not yet when the last character has been read.
class TextReader {
 public:
  /// Opens a file. When it cannot be opened, the reader is at its end and has failed.
  TextReader(const std::string& fileName, LineEnds lineEnds);
  /// Reads a text in memory, which must stay as long as the reader.
  static TextReader OverMemory(std::string_view text, LineEnds lineEnds = LineEnds::Native);

  bool IsOpen() const { return isOpen; }
  /// True once a read has met the end of the text or an error.
  bool AtEnd() const { return atEnd; }
  /// True when the text ended because of an error, or was never opened.
  bool Failed() const { return failed; }

  /// Reads the next character into `c`. At the end returns false and leaves `c` as it was.
  bool Read(char& c) {
    if (next == limit && !Fill()) return false;
    c = *next++;
    return true;
  }

  /// The next characters that are at hand without a read of the file, maybe none; valid until the
  /// next operation. `Skip` passes over the first `count` of them.
  std::string_view AtHand() const { return {next, static_cast<std::size_t>(limit - next)}; }
  void Skip(std::size_t count) { next += count; }

  /// Reads as many characters as are at hand, at least one; nothing at the end. Valid until the
  /// next operation.
  std::string_view ReadSome();

  /// True when the next read will find the end. Does not put the reader at its end.
  bool IsExhausted() { return next == limit && !FillBuffer(); }

 private:
  TextReader(std::string_view text, LineEnds lineEnds);
  bool Fill();
  bool FillBuffer();
  std::size_t Load(char* into, std::size_t size);
  void JoinLineEnds();

  platform::Descriptor file;
  std::string_view memory;  // what is still to be read of a text in memory
  bool joinsLineEnds;
  bool isOpen;
  bool atEnd;
  bool failed;
  bool loadedAll = false;
  bool heldReturn = false;  // a carriage return ended the last block; what follows decides
  std::unique_ptr<char[]> buffer;
  const char* next = nullptr;
  const char* limit = nullptr;
};

}  // namespace snipwell
