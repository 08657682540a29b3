#include "text/string_array.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <iterator>
#include <utility>

#include "text/text_reader.h"

namespace snipwell {

namespace {

constexpr char kNoEscape = '\0';

void ReportBadPosition(const char* correction) {
  std::cerr << "ERROR: Trying to Add a string to a non-existant position in a StringArray"
            << std::endl
            << correction << std::endl;
}

/// Reads past the next `delimiter`, or to the end.
void SkipThrough(TextReader& in, char delimiter) {
  char c = '\0';
  while (in.Read(c) && c != delimiter) {
  }
}

/// Reads one piece up to its closing `delimiter`, which is read too, or to the end.
std::string ReadPiece(TextReader& in, char delimiter, char escape) {
  std::string piece;
  if (delimiter != ' ') SkipThrough(in, delimiter);
  char c = '\0';
  while (in.Read(c) && c != delimiter) {
    if (escape != kNoEscape && c == escape && !in.Read(c)) break;
    piece += c;
  }
  return piece;
}

void DropLineFeeds(std::string& piece) {
  std::cout << "temp before: " << piece << std::endl;
  piece.erase(std::remove(piece.begin(), piece.end(), '\n'), piece.end());
  std::cout << "temp after: " << piece << std::endl;
}

}  // namespace

StringArray::StringArray(int count, const char* const* initial) {
  if (count < 0) {
    std::cerr << "Bad Size, some error function should go here" << std::endl;
    count = 0;
  }
  SetSize(count);
  strings = std::make_unique<std::string[]>(static_cast<std::size_t>(size));
  if (initial == nullptr) return;
  for (int i = 0; i < size; ++i) {
    if (initial[i] != nullptr) strings[i] = initial[i];
  }
}

StringArray::StringArray(std::vector<std::string> pieces) { Replace(std::move(pieces)); }

StringArray::StringArray(const StringArray& other) : StringArray(other.size) {
  std::copy_n(other.strings.get(), size, strings.get());
}

StringArray& StringArray::operator=(const StringArray& other) {
  if (this == &other) return *this;
  if (size != other.size) {
    strings = std::make_unique<std::string[]>(static_cast<std::size_t>(other.size));
    SetSize(other.size);
  }
  std::copy_n(other.strings.get(), size, strings.get());
  return *this;
}

std::string StringArray::Get(int index) const {
  return index >= 0 && index < size ? strings[index] : std::string();
}

void StringArray::Set(int index, const std::string& value) {
  if (index >= 0 && index < size) strings[index] = value;
}

/// Moves the strings out, for a change of size.
std::vector<std::string> StringArray::Take() {
  return {std::make_move_iterator(strings.get()), std::make_move_iterator(strings.get() + size)};
}

/// Makes a new block of exactly the size of `kept`.
void StringArray::Replace(std::vector<std::string> kept) {
  strings = std::make_unique<std::string[]>(kept.size());
  SetSize(static_cast<int>(kept.size()));
  std::move(kept.begin(), kept.end(), strings.get());
}

void StringArray::Add(const std::string& value) { Add(value, size); }

void StringArray::Add(const std::string& value, int position) {
  if (position > size) {
    ReportBadPosition("Adding to the end instead.");
    position = size;
  }
  if (position < 0) {
    ReportBadPosition("Adding to the beginning instead.");
    position = 0;
  }
  std::vector<std::string> kept = Take();
  kept.insert(kept.begin() + position, value);
  Replace(std::move(kept));
}

void StringArray::Append(const StringArray& other) {
  std::vector<std::string> kept(strings.get(), strings.get() + size);
  kept.insert(kept.end(), other.strings.get(), other.strings.get() + other.size);
  Replace(std::move(kept));
}

std::string StringArray::RemoveLast() { return Remove(size - 1); }

std::string StringArray::Remove(int position) {
  if (size == 0) return std::string();
  position = std::clamp(position, 0, size - 1);
  std::vector<std::string> kept = Take();
  std::string removed = std::move(kept[static_cast<std::size_t>(position)]);
  kept.erase(kept.begin() + position);
  Replace(std::move(kept));
  return removed;
}

int StringArray::Find(const std::string& value) const {
  const std::string* const end = strings.get() + size;
  const std::string* const found =
      std::find(static_cast<const std::string*>(strings.get()), end, value);
  return found == end ? -1 : static_cast<int>(found - strings.get());
}

int StringArray::FindPrefix(const std::string& value, unsigned int length) const {
  for (int i = 0; i < size; ++i) {
    if (strings[i].size() >= length && strings[i].compare(0, length, value, 0, length) == 0)
      return i;
  }
  return -1;
}

void StringArray::CopyTo(char** buffers) const {
  for (int i = 0; i < size; ++i) {
    std::memcpy(buffers[i], strings[i].c_str(), strings[i].size() + 1);
  }
  buffers[size] = nullptr;
}

void StringArray::Print(std::ostream& out) const {
  out << "StringArray Contents" << std::endl << "--------------------" << std::endl;
  for (int i = 0; i < size; ++i) out << '|' << strings[i] << '|' << std::endl;
  out << size << " Strings Total" << std::endl;
}

std::ostream& operator<<(std::ostream& out, const StringArray& array) {
  array.Print(out);
  return out;
}

bool StringArray::ReadFile(const std::string& fileName, char delimiter, char escape,
                           bool keepNewlines) {
  TextReader in(fileName, LineEnds::Foreign);
  if (!in.IsOpen()) return false;
  std::vector<std::string> pieces;
  while (!in.AtEnd()) {
    std::string piece = ReadPiece(in, delimiter, escape);
    if (!keepNewlines) DropLineFeeds(piece);
    if (!piece.empty()) pieces.push_back(std::move(piece));
  }
  Replace(std::move(pieces));
  return true;
}

}  // namespace snipwell
