#include "host/files/svg_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "frame/utf8.h"
#include "host/files/html_text.h"

namespace qorhost {

namespace {

constexpr double kWidth = 720;
constexpr std::string_view kDark = "#27445c";   // of what there is
constexpr std::string_view kLight = "#dfe6ec";  // of the room for it
constexpr std::string_view kLine = "#5f6f7c";
constexpr std::string_view kOver = "#111111";  // of what is too much

std::string NumberShown(double number) {
  return qorcred::ToText(qorcred::Value(number));
}

/// So much of a label as has room; the rest is where the numbers are listed.
std::string Shortened(std::string_view label, std::size_t characters) {
  std::size_t at = 0;
  for (std::size_t taken = 0; at < label.size(); ++taken) {
    if (taken + 1 == characters && at + qorcred::ReadUtf8(label, at).length < label.size()) {
      return std::string(label.substr(0, at)) + "…";
    }
    at += qorcred::ReadUtf8(label, at).length;
  }
  return std::string(label);
}

}  // namespace

/// Puts a chart together, shape by shape.
class SvgDrawing {
 public:
  SvgDrawing(const ChartText& text, double height) {
    Add(R"(<svg role="img" viewBox="0 0 {:g} {:g}" xmlns="http://www.w3.org/2000/svg" )"
        "aria-label=\"{}\">\n<title>{}</title>\n<desc>{}</desc>\n",
        kWidth, height, HtmlText(text.title), HtmlText(text.title), HtmlText(text.description));
  }

  void Box(double x, double y, double width, double height, std::string_view colour) {
    Add("<rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\" fill=\"{}\"/>\n", x, y,
        width, height, colour);
  }
  void Frame(double x, double y, double width, double height) {
    Add("<rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\" fill=\"none\" "
        "stroke=\"{}\"/>\n",
        x, y, width, height, kLine);
  }
  void Line(double x, double y, double toX, double toY) {
    Add("<line x1=\"{:.1f}\" y1=\"{:.1f}\" x2=\"{:.1f}\" y2=\"{:.1f}\" stroke=\"{}\"/>\n", x, y,
        toX, toY, kLine);
  }
  /// `anchor` is "start", "middle" or "end".
  void Text(double x, double y, std::string_view anchor, std::string_view text) {
    Add("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\">{}</text>\n", x, y, anchor,
        HtmlText(text));
  }

  [[nodiscard]] SvgChart End() { return SvgChart(std::move(markup_.append("</svg>\n"))); }

 private:
  template <typename... Parts>
  void Add(fmt::format_string<Parts...> form, Parts&&... parts) {
    markup_ += fmt::format(form, std::forward<Parts>(parts)...);
  }

  std::string markup_;
};

SvgChart BarChart(const ChartText& text, std::span<const ChartBar> bars) {
  constexpr double kStep = 26;
  constexpr double kThick = 15;
  constexpr double kLeft = 200;    // where bars begin
  constexpr double kLength = 340;  // of a limit
  constexpr double kBeyond = 12;   // of what goes on behind it
  constexpr double kGap = 8;
  constexpr double kTextBelow = 12;  // from the top of a bar to the foot of its text
  constexpr std::size_t kLabel = 28;
  SvgDrawing drawing(text, static_cast<double>(bars.size()) * kStep);
  double top = (kStep - kThick) / 2;
  for (const ChartBar& bar : bars) {
    drawing.Text(kLeft - kGap, top + kTextBelow, "end", Shortened(bar.label, kLabel));
    std::string told = fmt::format("{}, no limit known", NumberShown(bar.value));
    if (bar.limit && *bar.limit > 0) {
      const double share = std::max(bar.value, 0.0) / *bar.limit;
      drawing.Box(kLeft, top, kLength, kThick, kLight);
      drawing.Box(kLeft, top, kLength * std::min(share, 1.0), kThick, kDark);
      drawing.Frame(kLeft, top, kLength, kThick);
      if (share > 1) {
        drawing.Box(kLeft + kLength, top, kBeyond, kThick, kOver);
      }
      told = fmt::format("{} of {} ({:.0f} %)", NumberShown(bar.value), NumberShown(*bar.limit),
                         std::floor(share * 100));  // what is not full is not 100 %
    }
    drawing.Text(kLeft + kLength + kBeyond + kGap, top + kTextBelow, "start", told);
    top += kStep;
  }
  return drawing.End();
}

SvgChart ColumnChart(const ChartText& text, std::span<const ChartColumn> columns) {
  constexpr double kHeight = 142;
  constexpr double kFoot = 112;  // of the columns
  constexpr double kHighest = 84;
  constexpr double kBelow = 16;  // from there to the foot of a label
  constexpr double kAbove = 4;   // from a column to its number
  constexpr double kTick = 4;
  constexpr double kLabelWidth = 96;
  constexpr double kFilled = 0.7;  // of a column's room
  SvgDrawing drawing(text, kHeight);
  double most = 0;
  for (const ChartColumn& column : columns) {
    most = std::max(most, column.value);
  }
  const double step = kWidth / static_cast<double>(std::max<std::size_t>(columns.size(), 1));
  const auto every = static_cast<std::size_t>(kLabelWidth / step) + 1;
  const double numberWidth = static_cast<double>(NumberShown(most).size()) * 7;
  double left = 0;
  for (std::size_t at = 0; at < columns.size(); ++at, left += step) {
    const double middle = left + step / 2;
    const double high = most > 0 ? std::max(columns[at].value, 0.0) / most * kHighest : 0;
    if (high > 0) {
      drawing.Box(left + step * (1 - kFilled) / 2, kFoot - high, step * kFilled, high, kDark);
    }
    if (high > 0 && (numberWidth <= step || columns[at].value == most)) {
      drawing.Text(middle, kFoot - high - kAbove, "middle", NumberShown(columns[at].value));
    }
    // The last one is labelled, and others where there is room.
    if ((columns.size() - 1 - at) % every == 0) {
      const bool isLast = at + 1 == columns.size();
      if (isLast || middle > kLabelWidth / 2) {
        drawing.Line(middle, kFoot, middle, kFoot + kTick);
        drawing.Text(isLast ? kWidth : middle, kFoot + kBelow, isLast ? "end" : "middle",
                     columns[at].label);
      }
    }
  }
  drawing.Line(0, kFoot, kWidth, kFoot);
  return drawing.End();
}

}  // namespace qorhost
