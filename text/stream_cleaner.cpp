#include "text/stream_cleaner.h"

#include "text/text_reader.h"
#include "text/text_writer.h"

namespace snipwell {

namespace {

bool IsWhiteSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

}  // namespace

bool StreamCleaner::Run() {
  Read();
  while (!in->AtEnd()) {
    switch (current) {
      case '#': CopyDirective(); break;
      case '/': SkipComment(); break;
      case '"':
      case '\'': CopyLiteral(current); break;
      case ' ':
      case '\t':
      case '\v':
      case '\f':
      case '\r':
      case '\n': CollapseBlanks(); break;
      default: Advance();
    }
  }
  return true;
}

/// Reads the next character into `current`: NUL, and false, at the end of the input.
bool StreamCleaner::Read() {
  if (in->Read(current)) return true;
  current = '\0';
  return false;
}

void StreamCleaner::Write() { out->Put(current); }

void StreamCleaner::Advance() {
  Write();
  Read();
}

void StreamCleaner::CollapseBlanks() {
  bool heldLineFeed = false;
  do {
    heldLineFeed = heldLineFeed || current == '\n';
  } while (Read() && IsWhiteSpace(current));
  out->Put(heldLineFeed ? '\n' : ' ');
}

void StreamCleaner::SkipComment() {
  const bool more = Read();
  if (more && current == '/') return SkipLineComment();
  if (more && current == '*') return SkipBlockComment();
  out->Put('/');
  // What follows a slash that opens no comment is written as it is, never classified: a blank there
  // stays, and a quote there opens no literal.
  if (more) Advance();
}

void StreamCleaner::SkipLineComment() {
  while (Read() && current != '\n') {
  }
  Read();
}

void StreamCleaner::SkipBlockComment() {
  // The star that opened the comment cannot close it.
  char previous = '\0';
  while (Read() && !(previous == '*' && current == '/')) previous = current;
  Read();
}

void StreamCleaner::CopyLiteral(char quote) {
  do {
    Write();
    if (current == '\\' && Read()) Write();
    if (!Read()) return;
  } while (current != quote);
  Advance();
}

void StreamCleaner::CopyDirective() {
  bool lineEnded = false;
  do {
    Write();
    lineEnded = current == '\n';
  } while (Read() && !lineEnded);
}

}  // namespace snipwell
