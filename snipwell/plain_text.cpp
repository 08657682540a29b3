#include "snipwell/plain_text.h"

#include <array>
#include <cstddef>
#include <utility>

#include "refine/tokenizer.h"

namespace snipwell {

namespace {

constexpr std::size_t npos = std::string_view::npos;

bool EndsWith(std::string_view text, char c) { return !text.empty() && text.back() == c; }

/// The text with `write(token, its text, whole text so far)` called for each token; nothing when
/// that changed nothing.
template <typename Write>
std::optional<std::string> Rewritten(std::string_view text, const Write& write) {
  std::string written;
  written.reserve(text.size());
  for (const Token& token : Tokenize(text)) {
    write(token, text.substr(token.begin, token.length), written);
  }
  if (written == text) return std::nullopt;
  return written;
}

/// A raw string taken apart; views of its text.
struct RawString {
  std::string_view prefix;  // without the R
  std::string_view content;
  std::string_view suffix;
};

/// True for what stands before the quote of a raw string.
bool IsRawPrefix(std::string_view text) {
  for (const std::string_view prefix : {"R", "u8R", "LR", "uR", "UR"}) {
    if (text == prefix) return true;
  }
  return false;
}

/// Nothing when the token is another, or is not closed.
std::optional<RawString> TakeApart(const Token& token, std::string_view text) {
  constexpr std::size_t kLongestDelimiter = 16;
  const std::size_t quote = text.find('"');
  if (token.kind != TokenKind::String || quote == npos) return std::nullopt;
  const std::size_t open = text.find('(', quote);
  const bool opens = open != npos && open - quote <= kLongestDelimiter + 1;
  if (!IsRawPrefix(text.substr(0, quote)) || !opens) return std::nullopt;
  const std::string delimiter(text.substr(quote + 1, open - quote - 1));
  const std::size_t close = text.find(")" + delimiter + "\"", open);
  if (close == npos) return std::nullopt;
  return RawString{text.substr(0, quote - 1), text.substr(open + 1, close - open - 1),
                   text.substr(close + delimiter.size() + 2)};
}

void AppendOctal(unsigned char byte, std::string& text) {
  text += '\\';
  for (const int shift : {6, 3, 0}) text += static_cast<char>('0' + ((byte >> shift) & 7));
}

/// Appends a character of a raw string as an ordinary one holds it. Of "??", which would start a
/// trigraph, the second one is escaped.
void AppendEscaped(char c, std::string& text) {
  const auto byte = static_cast<unsigned char>(c);
  if (c == '\n') {
    text += "\\n";
  } else if (c == '\\' || c == '"' || (c == '?' && EndsWith(text, '?'))) {
    text += {'\\', c};
  } else if (byte < 0x20 || byte == 0x7f) {
    AppendOctal(byte, text);
  } else {
    text += c;
  }
}

/// Compilers read a carriage return and line feed as a line feed, in raw strings too.
void AppendPlain(const RawString& raw, std::string& text) {
  text += raw.prefix;
  text += '"';
  for (std::size_t i = 0; i < raw.content.size(); ++i) {
    if (raw.content.substr(i, 2) == "\r\n") continue;
    AppendEscaped(raw.content[i], text);
  }
  text += '"';
  text += raw.suffix;
}

/// The length of the splice with which a text starts, or 0.
std::size_t Splice(std::string_view text) {
  if (text.substr(0, 2) == "\\\n") return 2;
  return text.substr(0, 3) == "\\\r\n" ? 3 : 0;
}

/// True for a splice that, taken out, would make one of a backslash before and a line feed behind.
bool HidesSplice(std::string_view before, std::string_view behind) {
  return EndsWith(before, '\\') && Splice("\\" + std::string(behind.substr(0, 2))) != 0;
}

/// Joins the lines but for those in raw strings. A comment or string that only the joined text
/// shows to be one can still hold splices.
std::optional<std::string> JoinedOnce(std::string_view text) {
  return Rewritten(text, [&](const Token& token, std::string_view own, std::string& written) {
    const bool raw = TakeApart(token, own).has_value();
    for (std::size_t i = 0; i < own.size();) {
      const std::size_t splice = raw ? 0 : Splice(own.substr(i));
      const std::string_view behind = text.substr(token.begin + i + splice);
      const bool stays = splice == 0 || HidesSplice(written, behind);
      const std::size_t length = splice == 0 ? 1 : splice;
      if (stays) written += own.substr(i, length);
      i += length;
    }
  });
}

std::string_view Usual(const Token& token, std::string_view text) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kUsual = {
      {{"<%", "{"}, {"%>", "}"}, {"<:", "["}, {":>", "]"}, {"%:", "#"}, {"%:%:", "##"}}};
  if (token.kind != TokenKind::Punctuator && token.kind != TokenKind::DirectiveStart) return text;
  for (const auto& [other, usual] : kUsual) {
    if (text == other) return usual;
  }
  return text;
}

}  // namespace

std::optional<std::string> WithoutSplices(std::string_view text) {
  constexpr int kMostRounds = 8;  // only texts made for it need more than two
  std::optional<std::string> joined = JoinedOnce(text);
  for (int round = 1; joined.has_value() && round < kMostRounds; ++round) {
    std::optional<std::string> again = JoinedOnce(*joined);
    if (!again.has_value()) break;
    joined = std::move(again);
  }
  return joined;
}

/// Outside of directives a "%:%:" stays, as "##" could start one.
std::optional<std::string> WithUsualBrackets(std::string_view text) {
  bool inDirective = false;
  return Rewritten(text, [&](const Token& token, std::string_view own, std::string& written) {
    if (token.kind == TokenKind::DirectiveStart) inDirective = true;
    if (token.kind == TokenKind::DirectiveEnd) inDirective = false;
    const std::string_view usual = own == "%:%:" && !inDirective ? own : Usual(token, own);
    const bool merges = EndsWith(written, '#') && usual.front() == '#';
    if (merges && token.kind == TokenKind::Punctuator) written += ' ';
    written += usual;
  });
}

std::optional<std::string> WithPlainStrings(std::string_view text) {
  return Rewritten(text, [](const Token& token, std::string_view own, std::string& written) {
    if (const std::optional<RawString> raw = TakeApart(token, own)) {
      AppendPlain(*raw, written);
    } else {
      written += own;
    }
  });
}

std::optional<std::string> WithLinesBehindDirectives(std::string_view text) {
  return Rewritten(text, [&](const Token& token, std::string_view own, std::string& written) {
    const std::string_view lineEnd = EndsWith(written, '\r') ? "\r\n" : "\n";
    written += own;
    if (token.kind != TokenKind::DirectiveEnd) return;
    const std::string_view behind = text.substr(token.begin + token.length);
    const bool emptyLine = behind.substr(0, 1) == "\n" || behind.substr(0, 2) == "\r\n";
    if (!behind.empty() && !emptyLine) written += lineEnd;
  });
}

const std::vector<PlainTextStep>& PlainTextSteps() {
  static const std::vector<PlainTextStep> steps = {
      {"lines joined", WithoutSplices},
      {"usual brackets", WithUsualBrackets},
      {"plain strings", WithPlainStrings},
      {"lines behind directives", WithLinesBehindDirectives},
  };
  return steps;
}

}  // namespace snipwell
