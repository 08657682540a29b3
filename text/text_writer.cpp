#include "text/text_writer.h"

#include <utility>

#include "platform/files.h"

namespace snipwell {

namespace {

std::string WithCarriageReturns(const std::string& text) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

}  // namespace

// A file that is written again and again is written over and cut off: file systems can take an
// emptied and refilled one for a replacement that must reach the disk at once.
TextWriter::TextWriter(const std::string& fileName)
    : TextWriter(platform::OpenForRewriting(fileName), true) {}

TextWriter::TextWriter(platform::Descriptor openFile, bool replacesText)
    : file(std::move(openFile)), replaces(replacesText), failed(!file.IsOpen()) {}

TextWriter::TextWriter(std::string* text) : memory(text), failed(false) {}

TextWriter TextWriter::Appending(const std::string& fileName) {
  return TextWriter(platform::OpenForAppending(fileName), false);
}

TextWriter TextWriter::IntoMemory(std::string& text) { return TextWriter(&text); }

void TextWriter::CutOff() {
  if (replaces && file.IsOpen() && !platform::CutOff(file.Number())) failed = true;
}

bool TextWriter::Close() {
  Flush();
  CutOff();
  if (!file.Close()) failed = true;
  return !failed;
}

void TextWriter::Flush() {
  if (platform::kTextHasCarriageReturns) pending = WithCarriageReturns(pending);
  if (memory != nullptr) {
    *memory += pending;
  } else if (file.IsOpen() && !platform::WriteAll(file.Number(), pending.data(), pending.size())) {
    failed = true;
  }
  pending.clear();
}

}  // namespace snipwell
