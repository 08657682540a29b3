// One function for each section, in the order of the page. A section that has nothing to say is
// left out.

#include "snipwell/markdown_report.h"

#include <algorithm>
#include <cctype>

#include "snipwell/report_text.h"

namespace snipwell {

namespace {

constexpr std::size_t kMostSource = 50'000;  // trackers take little more
constexpr std::size_t kMostOutputLines = 100;
constexpr std::size_t kMostRanges = 30;
constexpr std::size_t npos = std::string_view::npos;

std::size_t LongestRunOfBackticks(std::string_view text) {
  std::size_t longest = 0;
  std::size_t run = 0;
  for (const char c : text) {
    run = c == '`' ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

std::string Code(std::string_view text) {
  const std::string line = ReadableLine(text);
  const std::string marks(LongestRunOfBackticks(line) + 1, '`');
  const auto needsRoom = [](char c) { return c == '`' || c == ' '; };
  const bool padded = line.empty() || needsRoom(line.front()) || needsRoom(line.back());
  const char* const pad = padded ? " " : "";
  return marks + pad + line + pad + marks;
}

bool IsWordPart(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return std::isalnum(byte) != 0 || byte >= 0x80;
}

/// True when the character means nothing to a reader of Markdown, as does a "_" within a word.
bool IsPlain(const std::string& line, std::size_t at) {
  const auto isWithinWord = [](char c) { return IsWordPart(c) || c == '_'; };
  if (line[at] != '_') {
    return IsWordPart(line[at]) || std::string_view(" .,:;()'\"/%?-").find(line[at]) != npos;
  }
  return at > 0 && isWithinWord(line[at - 1]) && at + 1 < line.size() && isWithinWord(line[at + 1]);
}

/// True when a line that begins so may be a list, a rule or an indented block. An option is none.
bool MayStartBlock(const std::string& line) {
  const std::size_t digits = std::min(line.find_first_not_of("0123456789"), line.size());
  const std::size_t first = digits == 0 && line[0] == '-' ? 1 : 0;
  const bool isNumbered = digits > 0 && (digits + 1 >= line.size() || line[digits + 1] == ' ');
  return isNumbered || first >= line.size() || !IsWordPart(line[first]);
}

/// A text on one line, as it is where that makes nothing else of it.
std::string Inline(std::string_view text) {
  const std::string line = ReadableLine(text);
  if (line.empty()) return line;
  bool isPlain = !MayStartBlock(line);
  for (std::size_t at = 0; at < line.size() && isPlain; ++at) isPlain = IsPlain(line, at);
  return isPlain ? line : Code(line);
}

/// The text in a fence that is longer than any in it.
std::string Fenced(const std::string& language, const std::string& text) {
  const std::string readable = ReadableText(text);
  const std::string fence(std::max<std::size_t>(3, LongestRunOfBackticks(readable) + 1), '`');
  const bool ended = readable.empty() || readable.back() == '\n';
  return fence + language + '\n' + readable + (ended ? "" : "\n") + fence + "\n\n";
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

std::string LanguageOf(const std::string& sourceName) {
  const std::size_t dot = sourceName.rfind('.');
  const std::string ending = dot != std::string::npos ? sourceName.substr(dot) : "";
  return ending == ".c" || ending == ".i" ? "c" : "cpp";
}

std::string Title(const Findings& findings) {
  std::string text = std::string(kReportMarker) + "\n# " + Inline(findings.headline) + "\n\n";
  if (!findings.kind.empty()) text += Inline(findings.kind) + "\n\n";
  return text;
}

std::string Compiler(const Findings& findings) {
  if (findings.compilerVersion.empty()) return "";
  return "## Compiler\n\n" + Fenced("text", Joined(findings.compilerVersion));
}

std::string Source(const Findings& findings) {
  if (findings.source.size() > kMostSource) {
    return "The source, " + Code(findings.sourceName) + ", is too long to stand here.\n\n";
  }
  std::string text = "Source " + Code(findings.sourceName) + ":\n\n";
  text += Fenced(LanguageOf(findings.sourceName), findings.source);
  if (ReadableText(findings.source) != findings.source) {
    text += "Some bytes of the source cannot be shown here; the file itself has them.\n\n";
  }
  return text;
}

std::string Reproduction(const Findings& findings) {
  std::string text = "## How to reproduce\n\n";
  text += Fenced("sh", CommandLine(findings.reducedCommand)) + Source(findings);
  if (!findings.acceptedBy.empty())
    text += "It is accepted by " + Inline(findings.acceptedBy) + ".\n\n";
  return text;
}

std::string Output(const Findings& findings) {
  if (findings.output.empty()) return "";
  return "## Output\n\n" +
         Fenced("text", Joined(ShortenedLines(findings.output, kMostOutputLines)));
}

std::string Origin(const Findings& findings) {
  std::string text = "## Where it comes from\n\n" + Fenced("sh", CommandLine(findings.command));
  const std::size_t shown = std::min(kMostRanges, findings.origin.size());
  for (std::size_t i = 0; i < shown; ++i) text += "- " + Code(NameOf(findings.origin[i])) + '\n';
  const std::size_t more = findings.origin.size() - shown;
  if (more > 0) text += "- and " + Counted(more, "more range") + '\n';
  return text + (shown > 0 ? "\n" : "");
}

/// A cell of a table, which a bar would end, even in a code span.
std::string Cell(std::string text) {
  std::replace(text.begin(), text.end(), '|', '/');
  return Inline(text);
}

std::string Sizes(const Findings& findings) {
  std::string text = "## Reduction\n\n";
  if (!findings.stages.empty()) text += "| | bytes | tokens |\n|---|---:|---:|\n";
  for (const StageSize& stage : findings.stages) {
    text += "| " + Cell(stage.stage) + " | " + Grouped(stage.bytes) + " | " +
            Grouped(stage.tokens) + " |\n";
  }
  if (!findings.stages.empty()) text += '\n';
  return text + Counted(findings.compilations, "compilation") + " in " +
         Duration(findings.seconds) + ".\n\n";
}

std::string Notes(const Findings& findings) {
  if (findings.notes.empty()) return "";
  std::string text = "## Notes\n\n";
  for (const std::string& note : findings.notes) text += "- " + Inline(note) + '\n';
  return text + '\n';
}

std::string OtherCrashes(const Findings& findings) {
  if (findings.otherCrashes.empty()) return "";
  std::string text = "## Other crashes met on the way\n\n";
  for (const OtherCrash& crash : findings.otherCrashes) {
    text += "- " + Inline(crash.headline) + ", kept in " + Code(crash.file) + '\n';
  }
  return text + '\n';
}

}  // namespace

std::string MarkdownReport(const Findings& findings) {
  return Title(findings) + Compiler(findings) + Reproduction(findings) + Output(findings) +
         Origin(findings) + Sizes(findings) + Notes(findings) + OtherCrashes(findings) +
         "Made by snipwell " + Inline(findings.version) + ".\n";
}

}  // namespace snipwell
