#include "text/text_reader.h"

#include <algorithm>
#include <cstring>

#include "platform/files.h"

namespace snipwell {

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;
// One more in front, for a carriage return held over from the block before.
constexpr std::size_t kBufferSize = kBlock + 1;

bool JoinsLineEnds(LineEnds lineEnds) {
  return lineEnds == LineEnds::Foreign || platform::kTextHasCarriageReturns;
}

}  // namespace

TextReader::TextReader(const std::string& fileName, LineEnds lineEnds)
    : file(platform::OpenForReading(fileName)),
      joinsLineEnds(JoinsLineEnds(lineEnds)),
      isOpen(file.IsOpen()),
      atEnd(!isOpen),
      failed(!isOpen) {}

TextReader::TextReader(std::string_view text, LineEnds lineEnds)
    : memory(text),
      joinsLineEnds(JoinsLineEnds(lineEnds)),
      isOpen(true),
      atEnd(false),
      failed(false) {}

TextReader TextReader::OverMemory(std::string_view text, LineEnds lineEnds) {
  return TextReader(text, lineEnds);
}

std::string_view TextReader::ReadSome() {
  if (next == limit && !Fill()) return {};
  const std::string_view read = AtHand();
  next = limit;
  return read;
}

bool TextReader::Fill() {
  if (FillBuffer()) return true;
  atEnd = true;
  return false;
}

bool TextReader::FillBuffer() {
  if (!isOpen) return false;
  if (!buffer) buffer.reset(new char[kBufferSize]);
  // A block that holds nothing but a held carriage return is not the end: go on to the next.
  do {
    if (loadedAll) return false;
    std::size_t kept = 0;
    if (heldReturn) buffer[kept++] = '\r';
    heldReturn = false;
    const std::size_t count = Load(buffer.get() + kept, kBlock);
    loadedAll = count == 0;
    next = buffer.get();
    limit = next + kept + count;
    if (joinsLineEnds) JoinLineEnds();
  } while (next == limit);
  return true;
}

std::size_t TextReader::Load(char* into, std::size_t size) {
  if (!file.IsOpen()) {
    const std::size_t count = std::min(size, memory.size());
    if (count > 0) std::memcpy(into, memory.data(), count);
    memory.remove_prefix(count);
    return count;
  }
  const std::ptrdiff_t count = platform::ReadSome(file.Number(), into, size);
  if (count >= 0) return static_cast<std::size_t>(count);
  failed = true;
  return 0;
}

/// Drops each carriage return of the buffer that a line feed follows. One that ends the buffer is
/// held until the next block shows what follows it, or that nothing does.
void TextReader::JoinLineEnds() {
  char* const start = buffer.get();
  char* end = start + (limit - next);
  if (end > start && end[-1] == '\r' && !loadedAll) {
    heldReturn = true;
    --end;
  }
  char* out = std::find(start, end, '\r');
  for (const char* in = out; in < end; ++in) {
    const bool joined = *in == '\r' && in + 1 < end && in[1] == '\n';
    if (!joined) *out++ = *in;
  }
  limit = out;
}

}  // namespace snipwell
