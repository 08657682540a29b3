// One function for each part of the page, in its order. A part that has nothing to say is left out.

#include "snipwell/html_report.h"

#include <set>

#include "snipwell/html_parts.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

constexpr std::size_t kMostOutputLines = 1000;

std::string Element(const std::string& tag, const std::string& html) {
  return '<' + tag + '>' + html + "</" + tag.substr(0, tag.find(' ')) + ">\n";
}

std::string Paragraph(const std::string& className, const std::string& text) {
  return text.empty() ? "" : Element("p class=\"" + className + '"', Escaped(text));
}

/// The browser is told to load nothing and to run nothing, whatever the texts hold.
std::string Head(const Findings& findings) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" "
         "content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width\">\n"
         "<meta name=\"generator\" content=\"snipwell\">\n" +
         Element("title", Escaped(ReadableLine(findings.headline))) + Element("style", kHtmlStyle) +
         "</head>\n<body>\n";
}

std::string Title(const Findings& findings) {
  std::string html =
      Paragraph("kind", findings.kind) + Element("h1", Escaped(ReadableLine(findings.headline)));
  for (const std::string& line : findings.compilerVersion) html += Paragraph("compiler", line);
  return Element("header", html);
}

std::string Tile(const std::string& name, const std::string& value, const std::string& detail) {
  const std::string small = detail.empty() ? "" : "<small>" + detail + "</small>";
  return Element("div", Element("dt", name) + Element("dd", value + small));
}

std::string SizeTile(const std::string& name, std::size_t first, std::size_t last) {
  return Tile(name, Grouped(last), "of " + Grouped(first));
}

std::string Tiles(const Findings& findings) {
  std::string html;
  if (!findings.stages.empty()) {
    const StageSize& first = findings.stages.front();
    const StageSize& last = findings.stages.back();
    html += SizeTile("Bytes", first.bytes, last.bytes);
    html += SizeTile("Tokens", first.tokens, last.tokens);
  }
  html += Tile("Compilations", Grouped(findings.compilations), "");
  return Element("dl", html + Tile("Time", Duration(findings.seconds), ""));
}

std::string Result(const Findings& findings) {
  std::string html = Element("h2", "How to reproduce") +
                     Element("pre", Escaped(CommandLine(findings.reducedCommand))) +
                     Element("article", Element("h3", Escaped(findings.sourceName)) +
                                            Element("pre", HtmlSource(findings.source)));
  if (!findings.acceptedBy.empty()) {
    html += Element("p", "<code>" + Escaped(findings.acceptedBy) + "</code> accepts it.");
  }
  return Element("section class=\"result\"", html);
}

/// The ranges in the files that are not shown.
std::string OtherRanges(const Findings& findings, const std::vector<ViewedFile>& files) {
  std::set<std::string> shown;
  for (const ViewedFile& file : files) shown.insert(file.name);
  std::string items;
  for (const LineRange& range : findings.origin) {
    const bool isShown = shown.count(range.file) != 0;
    if (!isShown) items += Element("li", Element("code", Escaped(NameOf(range))));
  }
  return items.empty() ? "" : Element("h2", "Also from") + Element("ul", items);
}

std::string Comparison(const Findings& findings, const std::vector<ViewedFile>& files) {
  std::string left = Element("h2", "Where it comes from");
  for (const ViewedFile& file : files) left += HtmlFile(file);
  left += OtherRanges(findings, files);
  return files.empty() && findings.origin.empty()
             ? Result(findings)
             : Element("div class=\"columns compared\"",
                       Element("section", left) + Result(findings));
}

std::string StageTable(const Findings& findings) {
  if (findings.stages.empty()) return "";
  std::string rows = Element("tr", "<th>after</th><th>bytes</th><th>tokens</th>");
  for (const StageSize& stage : findings.stages) {
    rows += Element("tr", "<td>" + Escaped(stage.stage) + "</td><td>" + Grouped(stage.bytes) +
                              "</td><td>" + Grouped(stage.tokens) + "</td>");
  }
  return Element("section", Element("h2", "Stages") + Element("table", rows));
}

std::string Sizes(const Findings& findings) {
  const std::string plot = HtmlPlot(findings);
  if (plot.empty()) return StageTable(findings);
  const std::string plotted =
      Element("h2", "Size over time") + Element("div class=\"plotted\"", plot);
  return Element("div class=\"columns sizes\"", Element("section", plotted) + StageTable(findings));
}

std::string Output(const Findings& findings) {
  if (findings.output.empty()) return "";
  std::string html;
  for (const std::string& line : ShortenedLines(findings.output, kMostOutputLines)) {
    html += Escaped(line) + '\n';
  }
  return Element("h2", "Output of the compiler") + Element("pre", html);
}

std::string Notes(const Findings& findings) {
  std::string items;
  for (const std::string& note : findings.notes) items += Element("li", Escaped(note));
  return items.empty() ? "" : Element("h2", "Notes") + Element("ul", items);
}

std::string OtherCrashes(const Findings& findings) {
  std::string items;
  for (const OtherCrash& crash : findings.otherCrashes) {
    items += Element(
        "li", Escaped(crash.headline) + ", kept in <code>" + Escaped(crash.file) + "</code>");
  }
  return items.empty() ? "" : Element("h2", "Other crashes met on the way") + Element("ul", items);
}

std::string Foot(const Findings& findings) {
  const std::string command =
      Element("h2", "Command as given") + Element("pre", Escaped(CommandLine(findings.command)));
  return command + Element("footer", "Made by snipwell " + Escaped(findings.version)) +
         "</body>\n</html>\n";
}

}  // namespace

std::string HtmlReport(const Findings& findings, const std::vector<ViewedFile>& files) {
  return Head(findings) + Title(findings) + Tiles(findings) + Sizes(findings) +
         Comparison(findings, files) + Output(findings) + Notes(findings) + OtherCrashes(findings) +
         Foot(findings);
}

}  // namespace snipwell
