#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/descriptor.h"

namespace snipwell {

/// Buffered writer of one text, with line ends as the system's text mode writes them. It owns its
/// file and closes it when it goes.
class TextWriter {
 public:
  /// Creates the file or replaces what it holds; the old text is gone when the writer is closed.
  /// When the file cannot be opened the writer has failed, and takes what is written without
  /// effect.
  explicit TextWriter(const std::string& fileName);
  /// Writes at the end of the file, created when missing.
  static TextWriter Appending(const std::string& fileName);
  /// Writes into `text`, which must stay as long as the writer; it is complete after `Close`.
  static TextWriter IntoMemory(std::string& text);
  TextWriter(const TextWriter&) = delete;
  TextWriter& operator=(const TextWriter&) = delete;
  ~TextWriter() { Close(); }

  bool IsOpen() const { return memory != nullptr || file.IsOpen(); }
  /// True when the file was never opened or the system has refused a part of the text.
  bool Failed() const { return failed; }

  void Put(char c) {
    pending.push_back(c);
    if (pending.size() >= kBlock) Flush();
  }

  void Put(std::string_view text) {
    pending.append(text);
    if (pending.size() >= kBlock) Flush();
  }

  /// Removes what the file holds behind what has reached it so far, which else goes at `Close`.
  void CutOff();

  /// Writes what is pending and closes the file. Returns false when the text is not complete.
  bool Close();

 private:
  TextWriter(platform::Descriptor openFile, bool replacesText);
  explicit TextWriter(std::string* text);
  void Flush();

  static constexpr std::size_t kBlock = std::size_t{64} * 1024;

  platform::Descriptor file;
  bool replaces = false;  // what the file held is to be replaced
  std::string* memory = nullptr;
  std::string pending;
  bool failed;
};

}  // namespace snipwell
