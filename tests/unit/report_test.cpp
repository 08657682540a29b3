// The report: where the lines of a preprocessed text came from, and that nothing in the texts of
// compilers and users gets out of its place on a page.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>
#include <set>
#include <sstream>

#include "snipwell/html_parts.h"
#include "snipwell/html_report.h"
#include "snipwell/json_report.h"
#include "snipwell/line_map.h"
#include "snipwell/markdown_report.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

constexpr std::size_t npos = std::string::npos;

/// A preprocessed text of random lines, and what is to come of each, noted while it is written.
class RandomText {
 public:
  explicit RandomText(unsigned seed) : random(seed) {
    for (int count = 0; count < 40; ++count) AddLine();
  }

  struct Line {
    std::string text;
    std::string file;
    std::uint32_t line;
  };

  std::string preprocessed;
  std::vector<Line> kept;

 private:
  void AddLine() {
    static const std::vector<std::string> others = {
        "/*", "# 7 \"comment\"", "*/", "R\"(", "", "# 8 \"raw\" 3", ")\";", "#pragma once", "x;"};
    switch (random() % 8) {
      case 0: return AddMarker("# ", "a.cpp", "a.cpp", " 1 3 4");
      case 1: return AddMarker("#line ", "C:\\\\b \\\"\\303\\274.h", "C:\\b \"\xc3\xbc.h", "\r");
      case 2: return AddMarker("  #  ", "<built-in>", "<built-in>", " 2");
      case 3: return AddText("");
      case 4: return AddText(random() % 2 == 0 ? "  \t" : "  y;");
      case 5:
        for (const std::string& other : others) AddText(other);
        return;
      default: return AddText("int x" + std::to_string(random()) + ";");
    }
  }

  void AddMarker(const char* start, const char* escaped, const char* name, const char* flags) {
    line = static_cast<std::uint32_t>(random() % 8);
    const bool named = random() % 4 != 0;
    preprocessed += start + std::to_string(line);
    if (named) preprocessed += std::string(" \"") + escaped + '"' + flags;
    if (named) file = name;
    preprocessed += '\n';
  }

  void AddText(const std::string& text) {
    preprocessed += text + '\n';
    const bool isBlank = text.find_first_not_of(" \t") == std::string::npos;
    const bool inRawString = !kept.empty() && kept.back().text == "R\"(\n";
    if (!isBlank || !afterBlank || inRawString) kept.push_back({text + '\n', file, line});
    afterBlank = isBlank;
    ++line;
  }

  std::mt19937 random;
  std::string file = "start.cpp";
  std::uint32_t line = 1;
  bool afterBlank = true;
};

}  // namespace

TEST(LineMap, TellsTheLineOfEveryByte) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const RandomText random(seed);
    const MappedText mapped = WithoutMarkers(random.preprocessed, "start.cpp");
    std::size_t offset = 0;
    for (const RandomText::Line& line : random.kept) {
      ASSERT_EQ(mapped.text.substr(offset, line.text.size()), line.text) << random.preprocessed;
      for (const std::size_t end = offset + line.text.size(); offset < end; ++offset) {
        const LineMap::Place place = mapped.map.At(offset);
        ASSERT_EQ(mapped.map.Files()[place.file].name, line.file) << random.preprocessed;
        ASSERT_EQ(place.line, line.line) << random.preprocessed;
      }
    }
    ASSERT_EQ(offset, mapped.text.size()) << random.preprocessed;
  }
}

TEST(LineMap, TakesNoOtherLineForAMarker) {
  for (const char* const line :
       {"#", "# ", "#1x", "#line", "#line12", "#pragma 1", "# 1 x", "# 1 \"x", "# 1 \"x\" y",
        "# 1 \"x\"3", "# 1 \"x\" \\", "int x; # 1 \"x\"", "/**/# 1 \"x\"", "\"", "# 1 \"\\"}) {
    EXPECT_EQ(WithoutMarkers(line, "a").text, line);
    EXPECT_EQ(WithoutMarkers(std::string(line) + "\n", "a").text, std::string(line) + "\n");
  }
}

TEST(LineMap, GivesTheRangesOfWhatIsLeft) {
  const MappedText mapped = WithoutMarkers(
      "# 1 \"/usr/include/s.h\" 1 3\ns1\ns2\n# 3 \"<command-line>\"\nm3\n# 0 \"a.cpp\"\nd0\n# 40 "
      "\"./src/pool.cpp\"\n"
      "a40\nb41\nc42\n# 7 \"/home/src/pool.h\" 1\nd7\n# 60 \"/home/src/pool.cpp\" 2\ne60\nf61\n"
      "g62\nh63\n# 5 \"../other/x.h\"\ni5\n# 9 \"/homeer/y.h\"\nj9\n",
      "");
  struct {
    const char* left;
    const char* ranges;
  } const rows[] = {
      {"", ""},
      {"s1 m3 d0", "/usr/include/s.h:1 "},
      {"a40 c42", "src/pool.cpp:40-42 "},
      {"e60 h63 e60 a40", "src/pool.cpp:40 src/pool.cpp:60 src/pool.cpp:63 "},
      {"s2 d7 f61 g62", "src/pool.h:7 src/pool.cpp:61-62 /usr/include/s.h:2 "},
      {"i5 d7", "../other/x.h:5 src/pool.h:7 "},
      {"j9 i5", "/homeer/y.h:9 ../other/x.h:5 "},
      {"f61 h63 a40 b41 c42 e60", "src/pool.cpp:40-42 src/pool.cpp:60-63 "},
  };
  for (const auto& row : rows) {
    std::vector<std::uint32_t> origins;
    std::istringstream words(row.left);
    for (std::string word; words >> word;) {
      origins.push_back(static_cast<std::uint32_t>(mapped.text.find(word)));
    }
    std::string ranges;
    for (const LineRange& range : RangesOf(LinesLeft(mapped.map, origins, "/home"))) {
      ranges += NameOf(range) + ' ';
    }
    EXPECT_EQ(ranges, row.ranges) << row.left;
  }
}

TEST(LineMap, CountsTheLinesOfAPlainFile) {
  const std::string text = "one\n\n# 7 \"x\"\nfour";
  const LineMap map("a.cpp", text);
  std::uint32_t line = 1;
  for (std::size_t offset = 0; offset < text.size(); ++offset) {
    EXPECT_EQ(map.At(offset).line, line) << offset;
    if (text[offset] == '\n') ++line;
  }
  EXPECT_EQ(map.At(text.size() + 5).line, 4U);
  EXPECT_EQ(LineMap("a.cpp", "").At(0).line, 1U);
}

namespace {

/// Findings with this text wherever there can be one.
Findings FindingsOf(const std::string& text) {
  Findings findings;
  findings.headline = findings.kind = findings.sourceName = findings.source = text;
  findings.acceptedBy = findings.output = findings.version = text;
  findings.compilerVersion = findings.command = findings.reducedCommand = findings.notes = {text};
  findings.stages = {{text, 1234567, 89}, {text, 12, 3}};
  findings.compilations = 5;
  findings.seconds = 61.5;
  findings.origin = {{text, 3, 4, false}, {text, 7, 7, true}};
  findings.otherCrashes = {{text, text}};
  findings.history = {{0.5, 1234567}, {1, 800}, {61, 12}};
  return findings;
}

/// Calls `check` with every text of up to `more` pieces that goes on from `text`.
template <typename Check>
void WithEveryText(const std::vector<std::string>& pieces, int more, const Check& check,
                   const std::string& text = "") {
  if (!text.empty()) check(text);
  for (const std::string& piece : pieces) {
    if (more > 0 && !testing::Test::HasFailure()) {
      WithEveryText(pieces, more - 1, check, text + piece);
    }
  }
}

std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string Ended(const std::string& text) { return text.back() == '\n' ? text : text + '\n'; }

std::size_t Count(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
    ++count;
  return count;
}

/// A report as a reader of Markdown takes it apart.
struct Outline {
  std::vector<std::string> marks;  // what each line outside the fences begins with
  std::vector<std::string> fenced;
  std::string complaint;  // markup within a line
};

std::size_t Backticks(const std::string& line, std::size_t at) {
  return std::min(line.find_first_not_of('`', at), line.size()) - at;
}

/// The line with a "c" for each code span.
std::string WithoutCode(const std::string& line) {
  std::string plain;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t count = Backticks(line, at);
    std::size_t close = at + count;
    while (count > 0 && close < line.size() && Backticks(line, close) != count) {
      close += std::max<std::size_t>(1, Backticks(line, close));
    }
    const bool isCode = count > 0 && close < line.size();
    plain += isCode ? 'c' : line[at];
    at = isCode ? close + count : at + 1;
  }
  return plain;
}

std::string ComplaintAbout(const std::string& plain) {
  if (plain.find_first_of("`<>[]*\\~&#|") != std::string::npos) return "markup: " + plain;
  static const std::regex block("^(\\s|[=+]|-([ -]|$)|[0-9]+[.)]( |$)).*");
  if (std::regex_match(plain, block)) return "starts a block: " + plain;
  for (std::size_t at = plain.find('_'); at != std::string::npos; at = plain.find('_', at + 1)) {
    const bool isInner =
        at > 0 && at + 1 < plain.size() && plain[at - 1] != ' ' && plain[at + 1] != ' ';
    if (!isInner) return "emphasis: " + plain;
  }
  return "";
}

Outline OutlineOf(const std::string& report) {
  Outline outline;
  std::size_t fence = 0;  // its backticks, while it is open
  for (const std::string& line : Split(report.substr(kReportMarker.size()))) {
    const std::size_t count = Backticks(line, 0);
    const bool closes = fence > 0 && count >= fence && count == line.size();
    if (fence > 0 && !closes) {
      outline.fenced.back() += line + '\n';
    } else if (closes || (count >= 3 && line.find('`', count) == std::string::npos)) {
      fence = closes ? 0 : count;
      outline.marks.push_back(line.substr(count));
      if (!closes) outline.fenced.emplace_back();
    } else {
      const std::string plain = WithoutCode(line);
      if (line[0] == '|' && Count(line, "|") != 4) outline.complaint += "cells: " + line;
      const std::size_t text = plain[0] == '|' ? plain.size() : plain.find_first_not_of("#- ");
      const std::size_t mark = plain.find(' ') < text ? plain.find(' ') + 1 : 0;
      outline.marks.push_back(plain.substr(0, plain[0] == '|' ? std::string::npos : mark));
      if (plain[0] != '|') outline.complaint += ComplaintAbout(plain.substr(mark));
    }
  }
  return outline;
}

}  // namespace

TEST(MarkdownReport, KeepsEveryTextInItsPlace) {
  const Outline expected = OutlineOf(MarkdownReport(FindingsOf("<")));
  ASSERT_EQ(expected.fenced.size(), 5U);
  const auto check = [&](const std::string& text) {
    const std::string report = MarkdownReport(FindingsOf(text));
    const Outline outline = OutlineOf(report);
    ASSERT_EQ(outline.complaint, "") << report;
    ASSERT_EQ(report.substr(0, kReportMarker.size() + 1), std::string(kReportMarker) + "\n");
    ASSERT_EQ(outline.fenced.size(), expected.fenced.size()) << report;
    ASSERT_EQ(outline.fenced[2], Ended(text)) << report;
    ASSERT_EQ(outline.fenced[3], Ended(text)) << report;
    std::vector<std::string> marks = outline.marks;
    for (std::string& mark : marks) {
      if (mark[0] == '|' && mark.find("1,234,567") != std::string::npos)
        mark = "| c | 1,234,567 | 89 |";
      if (mark[0] == '|' && mark.find("| 12 | 3 |") != std::string::npos) mark = "| c | 12 | 3 |";
    }
    ASSERT_EQ(marks, expected.marks) << report;
  };
  WithEveryText({"`", "\n", "#", " ", "-", "|", "<!--", "a", "\\", "_", "*", "~~~", "1.", "```"}, 3,
                check);
}

TEST(MarkdownReport, LeavesPlainTextAsItIs) {
  for (const char* const text : {"in cp_gimplify_expr, at cp/cp-gimplify.cc:812", "1.0.0",
                                 "-Wall was not needed.", "g\xc3\xbcltig (\"a\"): 50%?"}) {
    EXPECT_NE(MarkdownReport(FindingsOf(text)).find(std::string("\n# ") + text + '\n'), npos)
        << text;
  }
}

TEST(MarkdownReport, LeavesOutTheMiddleOfALongOutput) {
  Findings findings;
  for (int line = 1; line <= 250; ++line) findings.output += "line " + std::to_string(line) + '\n';
  const Outline outline = OutlineOf(MarkdownReport(findings));
  const std::vector<std::string> lines = Split(outline.fenced[2]);
  ASSERT_EQ(lines.size(), 100U);
  EXPECT_EQ(lines[49], "line 50");
  EXPECT_EQ(lines[50], "[... 151 lines left out ...]");
  EXPECT_EQ(lines[51], "line 202");
  findings.output = std::string(999, 'x') + "\xc3\xbc\n";
  EXPECT_EQ(OutlineOf(MarkdownReport(findings)).fenced[2], std::string(999, 'x') + " [...]\n");
}

TEST(MarkdownReport, LeavesOutALongSourceAlone) {
  Findings findings;
  findings.sourceName = "a.cpp";
  findings.acceptedBy = "g++";
  findings.source = std::string(50'001, 'a');
  const std::string report = MarkdownReport(findings);
  EXPECT_LT(report.size(), 1000U);
  EXPECT_NE(report.find("`a.cpp`, is too long to stand here.\n\nIt is accepted by `g++`."),
            std::string::npos)
      << report;
}

TEST(ReportText, IsAlwaysReadable) {
  struct {
    std::string text;
    std::string readable;  // with "?" for U+FFFD
  } const rows[] = {
      {"a\tb\r\nc\n", "a\tb\nc\n"},
      {"a\rb", "a?b"},
      {std::string("\0\x1b\x7f", 3), "???"},
      {"\xc3\xbc \xe2\x82\xac \xf0\x9f\x98\x80 \xf4\x8f\xbf\xbf",
       "\xc3\xbc \xe2\x82\xac \xf0\x9f\x98\x80 \xf4\x8f\xbf\xbf"},
      {"\x80 \xc3 \xe2\x82 \xf0\x9f\x98", "? ? ?? ???"},
      {"\xc0\xaf \xe0\x9f\x80 \xed\xa0\x80 \xf0\x8f\x80\x80 \xf4\x90\x80\x80 \xff",
       "?? ??? ??? ???? ???? ?"},
  };
  for (const auto& row : rows) {
    std::string readable = ReadableText(row.text);
    for (std::size_t at = readable.find("\xef\xbf\xbd"); at != std::string::npos;) {
      at = readable.replace(at, 3, "?").find("\xef\xbf\xbd");
    }
    EXPECT_EQ(readable, row.readable) << testing::PrintToString(row.text);
  }
}

TEST(JsonReport, ParsesBack) {
  for (const std::string& text :
       {std::string("\"\\\n</script>\x01"), std::string("\0\xc3\xbc", 3)}) {
    const nlohmann::json json = nlohmann::json::parse(JsonReport(FindingsOf(text)));
    for (const char* const key :
         {"headline", "kind", "sourceName", "source", "acceptedBy", "output", "version"}) {
      EXPECT_EQ(json.at(key), text) << key;
    }
    for (const char* const key : {"compilerVersion", "command", "reducedCommand", "notes"}) {
      EXPECT_EQ(json.at(key), nlohmann::json({text})) << key;
    }
    EXPECT_EQ(json.at("stages")[0],
              nlohmann::json({{"stage", text}, {"bytes", 1234567}, {"tokens", 89}}));
    EXPECT_EQ(json.at("origin")[0],
              nlohmann::json({{"file", text}, {"first", 3}, {"last", 4}, {"isSystem", false}}));
    EXPECT_EQ(json.at("origin")[1].at("isSystem"), true);
    EXPECT_EQ(json.at("otherCrashes"), nlohmann::json({{{"headline", text}, {"file", text}}}));
    EXPECT_EQ(json.at("history")[0], nlohmann::json({{"seconds", 0.5}, {"bytes", 1234567}}));
    EXPECT_EQ(json.at("compilations"), 5);
    EXPECT_EQ(json.at("seconds"), 61.5);
    EXPECT_EQ(json.size(), 17U);
  }
  EXPECT_EQ(nlohmann::json::parse(JsonReport(FindingsOf("a\xff"))).at("source"), "a\xef\xbf\xbd");
  EXPECT_TRUE(nlohmann::json::parse(JsonReport(Findings())).at("acceptedBy").is_null());
}

namespace {

/// A page as a browser takes it apart.
struct Page {
  std::set<std::string> tags;  // with 0 for each number
  std::string text;            // what stands between them
  std::vector<std::string> open;
  bool isNested = true;
};

void AddTag(Page& page, const std::string& tag) {
  static const std::regex number("-?[0-9][0-9.]*");
  const std::string name = tag.substr(0, tag.find_first_of(" >"));
  if (tag[0] == '/') {
    page.isNested &= !page.open.empty() && '/' + page.open.back() == name;
    if (!page.open.empty()) page.open.pop_back();
  } else if (tag.back() != '/' && name != "!DOCTYPE" && name != "meta") {
    page.open.push_back(name);
  }
  const bool isCurve = name == "path";
  page.tags.insert(isCurve ? tag.substr(0, tag.find(" d=")) : std::regex_replace(tag, number, "0"));
}

Page PageOf(const std::string& html) {
  Page page;
  for (std::size_t at = 0; at < html.size();) {
    const bool isTag = html[at] == '<';
    const std::size_t end = std::min(html.find(isTag ? '>' : '<', at), html.size());
    if (isTag) AddTag(page, html.substr(at + 1, end - at - 1));
    if (!isTag) page.text += html.substr(at, end - at);
    at = end + (isTag ? 1 : 0);
  }
  return page;
}

/// What a browser shows for a text without tags.
std::string Unescaped(std::string text) {
  const std::pair<const char*, const char*> entities[] = {
      {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}};
  for (const auto& [entity, character] : entities) {
    for (std::size_t at = 0; (at = text.find(entity, at)) != std::string::npos; ++at) {
      text.replace(at, std::string(entity).size(), character);
    }
  }
  return text;
}

std::string LongFile(const std::string& text) {
  std::string file;
  for (int line = 0; line < 40; ++line) file += text + '\n';
  return file;
}

}  // namespace

TEST(HtmlReport, KeepsEveryTextInItsPlace) {
  const std::string plain = "/*c*/ \"s\" 1 int";
  const Page expected = PageOf(HtmlReport(FindingsOf(plain), {{"f", LongFile("x"), {2, 20}}}));
  const auto check = [&](const std::string& text) {
    const Page page = PageOf(HtmlReport(FindingsOf(text), {{text + "f", LongFile(text), {2, 20}}}));
    EXPECT_TRUE(page.isNested && page.open.empty()) << text;
    for (const std::string& tag : page.tags) ASSERT_EQ(expected.tags.count(tag), 1U) << tag;
    constexpr std::size_t kPlaces = 17 + 40;  // the lines of the file are 40
    const bool isLine = text.find('\n') == npos;
    ASSERT_GE(Count(Unescaped(page.text), text), isLine ? kPlaces : 1) << text;
  };
  WithEveryText({"<", ">", "&", "\"", "'", "-->", "</", "script>", "\n", "`", " x=", "&lt;", "/*"},
                3, [&](const std::string& text) { check("(" + text + ")"); });
}

TEST(HtmlReport, EscapesForAttributesToo) {
  EXPECT_EQ(Escaped("<a&\"'>"), "&lt;a&amp;&quot;&#39;&gt;");
}

TEST(HtmlReport, ShowsEveryLineOnceAndMarksWhatIsLeft) {
  std::mt19937 random(3);
  for (int round = 0; round < 100; ++round) {
    ViewedFile file;
    const std::uint32_t size = 1 + static_cast<std::uint32_t>(random() % 60);
    std::string expected;
    for (std::uint32_t line = 1; line <= size; ++line) {
      const bool isLeft = random() % 12 == 0;
      if (isLeft) file.lines.push_back(line);
      file.text += "line" + std::to_string(line) + (line < size ? "\n" : "");
      expected += std::to_string(line) + (isLeft ? "+ " : " ");
    }
    if (random() % 2 == 0) file.lines.push_back(size + 5);  // the text has changed
    const std::string html = HtmlReport(Findings(), {file});
    static const std::regex shown(
        "<div( class=\"left\")? data-n=\"([0-9]+)\">line([0-9]+)\n</div>");
    std::string found;
    for (std::sregex_iterator at(html.begin(), html.end(), shown); at != std::sregex_iterator();
         ++at) {
      EXPECT_EQ((*at)[2], (*at)[3]);
      found += (*at)[2].str() + ((*at)[1].matched ? "+ " : " ");
    }
    ASSERT_EQ(found, expected);
  }
}

TEST(HtmlReport, PlotsAnyHistory) {
  const double endless = std::numeric_limits<double>::infinity();
  const std::vector<SizePoint> histories[] = {
      {{0, 0}, {0, 0}},
      {{0, 10}, {-5, 9}, {std::nan(""), 8}, {endless, 7}},
      {{0, 1}, {1e300, static_cast<std::size_t>(-1)}},
      {{0.01, 5000000}, {0.02, 20}},
  };
  for (const auto& history : histories) {
    Findings findings;
    findings.history = history;
    const std::string html = HtmlReport(findings, {});
    static const std::regex curve(
        "<path class=\"curve\" d=\"M0,[0-9]+([HV](10000|[0-9]{1,4}))+\"/>");
    EXPECT_TRUE(std::regex_search(html, curve)) << html;
    EXPECT_NE(html.find("x=\"0.0%\" y=\"100%\""), npos) << html;
    EXPECT_LT(html.size(), 20000U);
  }
}

}  // namespace snipwell
