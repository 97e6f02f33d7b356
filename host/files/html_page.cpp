#include "host/files/html_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/convert.h"
#include "host/dialect/canonical_date.h"
#include "host/files/html_text.h"

namespace qorhost {

namespace {

using qorcred::Value;

std::string TextOf(const Value& cell, const Table& table) {
  if (const auto* date = cell.As<qorcred::Date>()) {
    return dialect::CanonicalDate(*date);
  }
  return cell.Is(qorcred::ValueType::kNull) ? std::string(table.nullText)
                                            : qorcred::TextOrEmpty(cell);
}

/// How long the texts of a column are, in characters.
struct ColumnLengths {
  std::size_t text = 0;
  std::size_t word = 0;  // that is not broken

  void Take(std::string_view cell) {
    std::size_t length = 0;
    std::size_t inWord = 0;
    for (const char byte : cell) {
      const bool begins = (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
      length += begins ? 1U : 0U;
      inWord = byte == ' ' ? 0 : inWord + (begins ? 1U : 0U);
      word = std::max(word, inWord);
    }
    text = std::max(text, length);
  }
};

/// How a column is set.
enum class Setting : std::uint8_t {
  kWraps,
  kNumber,  ///< to the right, in one line
  kShort,   ///< in one line
  kBreaks,  ///< words are broken where they have to be
};

/// How a table is set, and how much stands in one of its rows.
struct TableLayout {
  std::vector<Setting> columns;
  std::size_t width = 0;  // in characters
};

TableLayout LayoutOf(const Table& table) {
  constexpr std::size_t kShortText = 26;
  constexpr std::size_t kLongWord = 28;
  constexpr std::size_t kMostCounted = 32;  // longer texts wrap
  constexpr std::size_t kBetween = 2;
  std::vector<ColumnLengths> lengths(table.columns.size());
  for (const auto& row : table.rows) {
    for (std::size_t at = 0; at < lengths.size(); ++at) {
      lengths[at].Take(TextOf(row[at], table));
    }
  }
  const std::vector<bool> numbers = NumberColumns(table);
  TableLayout layout;
  for (std::size_t at = 0; at < lengths.size(); ++at) {
    ColumnLengths title;
    title.Take(table.columns[at].title);
    layout.columns.push_back(numbers[at]                      ? Setting::kNumber
                             : lengths[at].word > kLongWord   ? Setting::kBreaks
                             : lengths[at].text <= kShortText ? Setting::kShort
                                                              : Setting::kWraps);
    layout.width += std::min(std::max(lengths[at].text, title.word), kMostCounted) + kBetween;
  }
  return layout;
}

/// How the sheets lie and how large the writing is, for so many characters in a row.
struct SheetForm {
  std::size_t most;
  std::string_view lies;
  std::string_view size;
  bool keepsLines;  ///< short texts are kept in one line
};
constexpr std::array kSheetForms{
    SheetForm{90, "portrait", "9.5pt", true}, SheetForm{110, "portrait", "8pt", true},
    SheetForm{140, "landscape", "9pt", true}, SheetForm{190, "landscape", "7.5pt", true},
    SheetForm{SIZE_MAX, "landscape", "6.5pt", false}};

const SheetForm& FormFor(std::size_t width) {
  return *std::find_if(kSheetForms.begin(), kSheetForms.end(),
                       [width](const SheetForm& form) { return width <= form.most; });
}

constexpr std::string_view kStyle = R"(
html { color: #000; background: #fff; font-family: "Helvetica Neue", Arial, "Liberation Sans", "DejaVu Sans", sans-serif; line-height: 1.25; }
body { margin: 2em auto; padding: 0 1em; max-width: 80em; }
h1 { font-size: 1.9em; font-weight: 600; margin: 0 0 .3em; }
h1, dd, caption, th, td { unicode-bidi: isolate; }
dl { display: flex; flex-wrap: wrap; gap: .1em 2em; margin: 0 0 1.2em; padding-bottom: .7em; border-bottom: 2px solid #27445c; }
dl div { display: flex; gap: .5em; }
dt { color: #444; }
dd { margin: 0; font-weight: 600; overflow-wrap: anywhere; }
section { margin-bottom: 2em; }
h2 { font-size: 1.25em; font-weight: 600; margin: 0 0 .5em; break-after: avoid; }
caption { text-align: left; padding-bottom: .5em; color: #333; break-after: avoid; }
table { width: 100%; border-collapse: collapse; }
th, td { padding: .2em .45em; text-align: left; vertical-align: top; }
th { font-weight: 600; vertical-align: bottom; border-bottom: 1.5px solid #000; }
td { border-bottom: 1px solid #c4ccd2; }
tbody tr:nth-child(even) td { background: #f3f5f7; }
.n { text-align: right; font-variant-numeric: tabular-nums; }
td.n, td.s { white-space: nowrap; }
td.l { overflow-wrap: anywhere; }
svg { display: block; width: 100%; max-width: 62em; height: auto; margin: 0 0 .8em; break-inside: avoid; }
svg text { font-size: 12px; fill: #000; }
@media print {
  body { margin: 0; padding: 0; max-width: none; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
  section { margin-bottom: 1.3em; }
  * { -webkit-print-color-adjust: exact; print-color-adjust: exact; }
}
)";

void PrintStyle(std::ostream& out, const HtmlPage& page, const SheetForm& form) {
  out << "<style>" << kStyle << fmt::format("html {{ font-size: {}; }}\n", form.size)
      << fmt::format(
             "@page {{ size: {}; margin: 14mm 13mm 17mm;\n"
             "  @bottom-left {{ content: \"{}\"; font: 8pt sans-serif; color: #444; }}\n"
             "  @bottom-right {{ content: counter(page) \" / \" counter(pages); font: 8pt "
             "sans-serif; color: #444; }} }}\n",
             form.lies, CssText(page.foot))
      << "</style>\n";
}

std::string_view ClassOf(Setting setting, const SheetForm& form) {
  switch (setting) {
    case Setting::kNumber:
      return " class=\"n\"";
    case Setting::kBreaks:
      return " class=\"l\"";
    case Setting::kShort:
      return form.keepsLines ? " class=\"s\"" : "";
    case Setting::kWraps:
      break;
  }
  return "";
}

void PrintTable(std::ostream& out, const PageSection& section, const TableLayout& layout,
                const SheetForm& form) {
  const Table& table = section.table;
  std::vector<std::string_view> classes;
  for (const Setting setting : layout.columns) {
    classes.push_back(ClassOf(setting, form));
  }
  out << "<table>\n<caption>" << HtmlText(section.caption) << "</caption>\n<thead>\n<tr>";
  for (std::size_t at = 0; at < classes.size(); ++at) {
    out << "<th scope=\"col\"" << classes[at] << '>' << HtmlText(table.columns[at].title)
        << "</th>";
  }
  out << "</tr>\n</thead>\n<tbody>\n";
  for (const auto& row : table.rows) {
    out << "<tr>";
    for (std::size_t at = 0; at < classes.size(); ++at) {
      out << "<td" << classes[at] << '>' << HtmlText(TextOf(row[at], table)) << "</td>";
    }
    out << "</tr>\n";
  }
  out << "</tbody>\n</table>\n";
}

void PrintHead(std::ostream& out, const HtmlPage& page, const SheetForm& form) {
  out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width\">\n<title>"
      << HtmlText(page.foot) << "</title>\n";
  PrintStyle(out, page, form);
  out << "</head>\n<body>\n<header>\n<h1>" << HtmlText(page.title) << "</h1>\n<dl>\n";
  for (const PageFact& fact : page.facts) {
    out << "<div><dt>" << HtmlText(fact.name) << "</dt><dd>" << HtmlText(fact.text)
        << "</dd></div>\n";
  }
  out << "</dl>\n</header>\n<main>\n";
}

}  // namespace

void PrintHtml(std::ostream& out, const HtmlPage& page) {
  std::vector<TableLayout> layouts;
  std::size_t width = 0;
  for (const PageSection& section : page.sections) {
    layouts.push_back(LayoutOf(section.table));
    width = std::max(width, layouts.back().width);
  }
  const SheetForm& form = FormFor(width);
  PrintHead(out, page, form);
  for (std::size_t at = 0; at < page.sections.size(); ++at) {
    const PageSection& section = page.sections[at];
    out << "<section>\n";
    if (!section.heading.empty()) {
      out << "<h2>" << HtmlText(section.heading) << "</h2>\n";
    }
    for (const SvgChart& chart : section.charts) {
      out << chart.markup();
    }
    if (!section.table.columns.empty()) {
      PrintTable(out, section, layouts[at], form);
    }
    out << "</section>\n";
  }
  out << "</main>\n</body>\n</html>\n";
}

}  // namespace qorhost
