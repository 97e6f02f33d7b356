// Small charts as SVG that stands inside a page: dark on light, so that they print in grey.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>

namespace qorhost {

/// The markup of a chart. Made by the functions below alone: texts from outside are escaped in it.
class SvgChart {
 public:
  [[nodiscard]] const std::string& markup() const noexcept { return markup_; }

 private:
  friend class SvgDrawing;
  explicit SvgChart(std::string markup) : markup_(std::move(markup)) {}
  std::string markup_;
};

/// What a chart is called, and what it says to those who do not see it.
struct ChartText {
  std::string title;
  std::string description;
};

/// How much of something is taken.
struct ChartBar {
  std::string label;
  double value = 0;             ///< from 0
  std::optional<double> limit;  ///< above 0; none: it is not known
};

/// A bar for each, all limits of one length; a value above its limit fills the bar and goes on
/// behind it. The numbers stand beside. Takes time linear in the bars.
[[nodiscard]] SvgChart BarChart(const ChartText& text, std::span<const ChartBar> bars);

/// How much of something there was at a time.
struct ChartColumn {
  std::string label;
  double value = 0;  ///< from 0
};

/// A column for each, the highest as high as the chart, with the numbers above them; labels stand
/// below as many as have room. Takes time linear in the columns.
[[nodiscard]] SvgChart ColumnChart(const ChartText& text, std::span<const ChartColumn> columns);

}  // namespace qorhost
