#include "compile/word_splitting.h"

#include <cstddef>
#include <filesystem>
#include <utility>

#include "platform/shell.h"

namespace snipwell {

namespace {

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// One pass over the text, which keeps what quote it stands in.
class Splitter {
 public:
  Splitter(std::string_view whole, Quoting rules) : text(whole), quoting(rules) {}

  std::vector<std::string> Words() {
    while (at < text.size()) Step();
    EndWord();
    return std::move(words);
  }

 private:
  void Step() {
    const char c = text[at];
    if (quote == 0 && IsBlank(c)) {
      EndWord();
      ++at;
    } else if (c == '\\') {
      quoting == Quoting::Windows ? TakeBackslashes() : TakeBackslash();
    } else if (c == quote || (quote == 0 && IsQuote(c))) {
      TakeQuote(c);
    } else {
      Put(c);
      ++at;
    }
  }

  bool IsQuote(char c) const { return c == '"' || (c == '\'' && quoting != Quoting::Windows); }

  char Next() const { return at + 1 < text.size() ? text[at + 1] : '\0'; }

  void TakeQuote(char c) {
    inWord = true;
    if (quoting == Quoting::Windows && quote != 0 && Next() == '"') {
      Put('"');
      at += 2;
      return;
    }
    quote = quote == 0 ? c : '\0';
    ++at;
  }

  bool IsPlainBackslash() const {
    if (quoting == Quoting::Gnu || quote == 0) return at + 1 == text.size();
    return quote == '\'' || std::string_view("$`\"\\\n").find(Next()) == std::string_view::npos;
  }

  void TakeBackslash() {
    if (IsPlainBackslash()) {
      Put('\\');
      ++at;
      return;
    }
    const bool joinsLines = quoting == Quoting::Shell && Next() == '\n';
    if (!joinsLines) Put(Next());
    at += 2;
  }

  /// Two of them stand for one before a double quote, and each for itself elsewhere.
  void TakeBackslashes() {
    std::size_t count = 0;
    for (; at < text.size() && text[at] == '\\'; ++at) ++count;
    const bool beforeQuote = at < text.size() && text[at] == '"';
    inWord = true;
    word.append(beforeQuote ? count / 2 : count, '\\');
    if (beforeQuote && count % 2 == 1) {
      Put('"');
      ++at;
    }
  }

  void Put(char c) {
    word += c;
    inWord = true;
  }

  void EndWord() {
    if (inWord) words.push_back(std::move(word));
    word.clear();
    inWord = false;
  }

  std::string_view text;
  Quoting quoting;
  std::size_t at = 0;
  char quote = '\0';  // the quote that is open
  bool inWord = false;
  std::string word;
  std::vector<std::string> words;
};

}  // namespace

Quoting UsersQuoting() { return platform::kShellIsPosix ? Quoting::Shell : Quoting::Windows; }

std::vector<std::string> SplitWords(std::string_view text, Quoting quoting) {
  return Splitter(text, quoting).Words();
}

}  // namespace snipwell
