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

TextWriter::TextWriter(const std::string& fileName)
    : TextWriter(platform::OpenForWriting(fileName)) {}

TextWriter::TextWriter(platform::Descriptor openFile)
    : file(std::move(openFile)), failed(!file.IsOpen()) {}

TextWriter::TextWriter(std::string* text) : memory(text), failed(false) {}

TextWriter TextWriter::Appending(const std::string& fileName) {
  return TextWriter(platform::OpenForAppending(fileName));
}

TextWriter TextWriter::IntoMemory(std::string& text) { return TextWriter(&text); }

bool TextWriter::Close() {
  Flush();
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
