#include "platform/shell.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace snipwell::platform {

namespace {

std::string Quoted(const std::string& word) {
  const auto isPlain = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) != 0 || std::string_view("_@%+=:,./-").find(c) != std::string::npos;
  };
  if (!word.empty() && std::all_of(word.begin(), word.end(), isPlain)) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + '\'';
}

}  // namespace

std::string PosixCommand(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + Quoted(word);
  return line;
}

}  // namespace snipwell::platform
