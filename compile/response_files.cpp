#include "compile/response_files.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "compile/whole_file.h"
#include "platform/files.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;

// Files that name each other several times grow without end long before they are deep.
constexpr int kMostFiles = 2000;

void PutUtf8(std::uint32_t character, std::string& text) {
  const int more = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  constexpr std::uint32_t kFirstByte[] = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(kFirstByte[more] | character >> (6 * more));
  for (int i = more - 1; i >= 0; --i) {
    text += static_cast<char>(0x80 | (character >> (6 * i) & 0x3F));
  }
}

std::uint32_t Unit(std::string_view bytes, std::size_t at, bool bigEndian) {
  const auto byte = [&](std::size_t i) {
    return std::uint32_t{static_cast<unsigned char>(bytes[i])};
  };
  return bigEndian ? byte(at) << 8 | byte(at + 1) : byte(at + 1) << 8 | byte(at);
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  std::string text;
  std::uint32_t high = 0;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const std::uint32_t unit = Unit(bytes, at, bigEndian);
    if (high != 0 && unit >> 10 == 0x37) {
      PutUtf8(0x10000 + ((high & 0x3FF) << 10) + (unit & 0x3FF), text);
    } else if (unit >> 10 != 0x36) {
      PutUtf8(unit, text);
    }
    high = unit >> 10 == 0x36 ? unit : 0;
  }
  return text;
}

/// The text as UTF-8, without the byte order mark.
std::string Decoded(std::string text) {
  const auto starts = [&](std::string_view mark) {
    return text.compare(0, mark.size(), mark) == 0;
  };
  if (starts("\xEF\xBB\xBF")) return text.substr(3);
  if (starts("\xFF\xFE")) return FromUtf16(std::string_view(text).substr(2), false);
  if (starts("\xFE\xFF")) return FromUtf16(std::string_view(text).substr(2), true);
  return text;
}

class Reader {
 public:
  Reader(const std::string& atFolder, Quoting rules) : folder(atFolder), quoting(rules) {}

  CommandWords Read(const std::vector<std::string>& words) {
    for (const std::string& word : words) Take(word);
    found.folder = folder;
    return std::move(found);
  }

 private:
  void Take(const std::string& word) {
    if (!found.complaint.empty()) return;
    const bool named = word.size() > 1 && word[0] == '@';
    const std::string file = named ? (fs::path(folder) / word.substr(1)).string() : "";
    std::optional<std::string> text = named ? ReadWholeFile(file) : std::nullopt;
    if (text.has_value()) {
      TakeFile(file, Decoded(std::move(*text)));
    } else {
      found.words.push_back(word);
    }
  }

  void TakeFile(const std::string& file, const std::string& text) {
    const std::string identity = platform::FileIdentity(file);
    if (std::find(open.begin(), open.end(), identity) != open.end()) {
      found.complaint = "The response file " + file + " names itself: take that @ out of it.";
      return;
    }
    if (++count > kMostFiles) {
      found.complaint = "Too many response files: write their words into one.";
      return;
    }
    open.push_back(identity);
    for (const std::string& word : SplitWords(text, quoting)) Take(word);
    open.pop_back();
  }

  std::string folder;
  Quoting quoting;
  int count = 0;
  std::vector<std::string> open;  // the files that are being read, each named by the one before
  CommandWords found;
};

}  // namespace

CommandWords ReadResponseFiles(const std::vector<std::string>& words, const std::string& folder,
                               Quoting quoting) {
  return Reader(folder, quoting).Read(words);
}

}  // namespace snipwell
