// The curve is drawn in a square of 10,000 by 10,000, which is stretched over the plot; the lines
// of the grid and the labels are placed by percents, so that they are not stretched.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "snipwell/html_parts.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

constexpr long kSide = 10000;

std::string Percents(double share) {
  const long tenths = std::lround(share * 1000);
  return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
}

double Logarithm(std::size_t bytes) {
  return std::log10(static_cast<double>(std::max<std::size_t>(bytes, 1)));
}

/// "1 B", "10 kB", "1 MB".
std::string PowerOfTen(int power) {
  static const char* const kUnits[] = {" B", " kB", " MB", " GB", " TB", " PB", " EB"};
  const int unit = std::min(power / 3, static_cast<int>(std::size(kUnits)) - 1);
  return '1' + std::string(static_cast<std::size_t>(power - unit * 3), '0') + kUnits[unit];
}

/// A time in the unit that fits the distance of the marks: "0", "80 s", "5 min", "2 h".
std::string TimeLabel(double seconds, double step) {
  if (seconds <= 0) return "0";
  const bool isHours = step >= 3600;
  const bool isMinutes = step >= 60 && !isHours;
  const long tenths = std::lround(seconds * 10 / (isHours ? 3600 : isMinutes ? 60 : 1));
  const std::string fraction = tenths % 10 == 0 ? "" : '.' + std::to_string(tenths % 10);
  return std::to_string(tenths / 10) + fraction + (isHours ? " h" : isMinutes ? " min" : " s");
}

/// The distance of the marks on the axis of the time: at most six of them.
double TimeStep(double seconds) {
  constexpr double kMostSteps = 6;
  static const double kSteps[] = {0.1, 0.2, 0.5, 1,   2,    5,    10,   20,   30,
                                  60,  120, 300, 600, 1200, 1800, 3600, 7200, 14400};
  for (const double step : kSteps) {
    if (step * kMostSteps >= seconds) return step;
  }
  return std::ceil(seconds / kMostSteps / 86400) * 86400;
}

class Plot {
 public:
  explicit Plot(const Findings& findings) : history(findings.history) {
    const auto isSmaller = [](const SizePoint& a, const SizePoint& b) { return a.bytes < b.bytes; };
    const auto [least, most] = std::minmax_element(history.begin(), history.end(), isSmaller);
    low = static_cast<int>(std::floor(Logarithm(least->bytes)));
    high = std::max(low + 1, static_cast<int>(std::ceil(Logarithm(most->bytes))));
    seconds = Known(std::max(findings.seconds, history.back().seconds));
    if (seconds == 0) seconds = 1;
  }

  std::string Html() const {
    return "<svg class=\"plot\" role=\"img\" aria-label=\"size over time\">\n" + SizeAxis() +
           TimeAxis() + Curve() + "</svg>\n";
  }

 private:
  /// A time that can be drawn: no time is less than 0, or no number, or endless.
  static double Known(double time) {
    constexpr double kLongest = 1e9;
    return time > 0 ? std::min(time, kLongest) : 0;
  }

  double Across(double time) const { return std::min(1.0, Known(time) / seconds); }
  double Down(double logarithm) const { return (high - logarithm) / (high - low); }

  std::string SizeAxis() const {
    std::string html;
    for (int power = low; power <= high; ++power) {
      const std::string y = Percents(Down(power));
      html += "<line x1=\"0\" x2=\"100%\" y1=\"" + y + "\" y2=\"" + y +
              "\"/><text class=\"y\" x=\"-8\" y=\"" + y + "\">" + PowerOfTen(power) + "</text>\n";
    }
    return html;
  }

  std::string TimeAxis() const {
    const double step = TimeStep(seconds);
    std::string html;
    for (int i = 0; i * step <= seconds; ++i) {
      html += "<text class=\"x\" x=\"" + Percents(Across(i * step)) + "\" y=\"100%\" dy=\"20\">" +
              TimeLabel(i * step, step) + "</text>\n";
    }
    return html;
  }

  /// Each size lasts until the next. Of points that cannot be told apart the last counts.
  std::string Curve() const {
    std::string path = "M0," + Height(history.front());
    for (std::size_t i = 1; i < history.size(); ++i) {
      const long x = Column(history[i]);
      const bool isLastHere = i + 1 == history.size() || Column(history[i + 1]) != x;
      if (isLastHere) path += 'H' + std::to_string(x) + 'V' + Height(history[i]);
    }
    path += 'H' + std::to_string(kSide);
    const std::string side = std::to_string(kSide);
    return "<svg viewBox=\"0 0 " + side + ' ' + side +
           "\" preserveAspectRatio=\"none\" width=\"100%\" height=\"100%\"><path class=\"area\" "
           "d=\"" +
           path + 'V' + side + "H0Z\"/><path class=\"curve\" d=\"" + path + "\"/></svg>\n" +
           EndLabel();
  }

  std::string EndLabel() const {
    const std::string y = Percents(Down(Logarithm(history.back().bytes)));
    return "<circle cx=\"100%\" cy=\"" + y + "\" r=\"4\"/><text class=\"end\" x=\"100%\" y=\"" + y +
           "\" dy=\"-10\">" + Grouped(history.back().bytes) + " B</text>\n";
  }

  /// In steps of which some thousand fill the plot.
  long Column(const SizePoint& point) const {
    constexpr long kColumns = 2000;
    return std::lround(Across(point.seconds) * kColumns) * (kSide / kColumns);
  }

  std::string Height(const SizePoint& point) const {
    return std::to_string(std::lround(Down(Logarithm(point.bytes)) * kSide));
  }

  const std::vector<SizePoint>& history;
  int low;  // powers of ten at the ends of the axis of the size
  int high;
  double seconds;
};

}  // namespace

std::string HtmlPlot(const Findings& findings) {
  return findings.history.size() < 2 ? "" : Plot(findings).Html();
}

}  // namespace snipwell
