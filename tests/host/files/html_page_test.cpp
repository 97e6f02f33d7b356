// Pages for printing: what they hold, and that no text in them is anything but text.
#include "host/files/html_page.h"

#include <gmock/gmock.h>

#include <sstream>

#include "frame/date.h"
#include "host/files/html_text.h"

namespace qorhost::test {
namespace {

using qorcred::Null;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct TextRow {
  const char* name;
  std::string_view text;
  std::string_view expected;
};

class HtmlTexts : public testing::TestWithParam<TextRow> {};

TEST_P(HtmlTexts, StandForThemselves) {
  EXPECT_EQ(HtmlText(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, HtmlTexts,
    testing::Values(TextRow{"Nothing", "", ""}, TextRow{"Plain", "Zoë 東京 😀", "Zoë 東京 😀"},
                    TextRow{"Script", "<script>alert(1)</script>",
                            "&lt;script&gt;alert(1)&lt;/script&gt;"},
                    TextRow{"Quotes", "\"O'Brien\"", "&quot;O&#39;Brien&quot;"},
                    TextRow{"Entity", "&lt;b&gt;", "&amp;lt;b&amp;gt;"},
                    TextRow{"EndOfAComment", "--><b>", "--&gt;&lt;b&gt;"},
                    TextRow{"LineEndsAndTabs", "a\r\n\tb", "a\\x0D\\n\\tb"},
                    TextRow{"Nul", std::string_view("a\0b", 3), "a\\x00b"},
                    TextRow{"EscapeSequence", "\x1B[2J", "\\x1B[2J"},
                    TextRow{"ReadingDirection", "a\xE2\x80\xAE<b", "a\\u202E&lt;b"},
                    TextRow{"IsolatedDirection", "\xE2\x81\xA6x\xE2\x81\xA9", "\\u2066x\\u2069"},
                    TextRow{"BytesThatAreNotUtf8", "\xFF<\xC3", "\xEF\xBF\xBD&lt;\xEF\xBF\xBD"},
                    TextRow{"OverlongMarkup", "\xC0\xBC", "\xEF\xBF\xBD\xEF\xBF\xBD"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CssTexts, StandForThemselvesInAStyleSheet) {
  EXPECT_EQ(CssText("Unit 2, Linden Park."), "Unit 2, Linden Park.");
  EXPECT_EQ(CssText("\"; } </style>"), "\\22 \\3B  \\7D  \\3C \\2F style\\3E ");
  EXPECT_EQ(CssText("a\\b\n"), "a\\5C b\\5C n");
  EXPECT_EQ(CssText("ë😀"), "\\EB \\1F600 ");
}

std::string Printed(const HtmlPage& page) {
  std::ostringstream out;
  PrintHtml(out, page);
  return out.str();
}

std::size_t CountOf(std::string_view part, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos;
       at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

HtmlPage PageWith(Table table) {
  HtmlPage page;
  page.title = "Tenants";
  page.foot = "Tenants, unit 2";
  page.facts = {{"Unit", "2, Linden Park"}};
  page.sections.push_back({{}, {}, "2 rows", std::move(table)});
  return page;
}

TEST(HtmlPages, HoldTheirTablesInAccessibleMarkup) {
  Table table;
  table.columns = {{"RID", "rid"}, {"Name", "name"}, {"End", "end"}};
  table.rows = {{17, "Tanaka", qorcred::FromCivil({2026, 1, 31, 14, 5, 9})}, {18, Null{}, Null{}}};
  const std::string text = Printed(PageWith(table));
  EXPECT_THAT(text, testing::StartsWith("<!DOCTYPE html>\n<html lang=\"en\">"));
  EXPECT_THAT(text,
              AllOf(HasSubstr("<title>Tenants, unit 2</title>"), HasSubstr("<h1>Tenants</h1>"),
                    HasSubstr("<dt>Unit</dt><dd>2, Linden Park</dd>"),
                    HasSubstr("<caption>2 rows</caption>"),
                    HasSubstr("<th scope=\"col\" class=\"n\">RID</th>"
                              "<th scope=\"col\" class=\"s\">Name</th>"),
                    HasSubstr("<tr><td class=\"n\">17</td><td class=\"s\">Tanaka</td>"
                              "<td class=\"s\">2026-01-31 14:05:09</td></tr>"),
                    HasSubstr("<tr><td class=\"n\">18</td><td class=\"s\"></td>")));
  for (const char* element : {"html", "head", "style", "body", "header", "main", "section", "table",
                              "caption", "thead", "tbody", "tr", "dl"}) {
    SCOPED_TRACE(element);
    EXPECT_EQ(CountOf(std::string("</") + element + ">", text),
              CountOf(std::string("<") + element + ">", text) +
                  CountOf(std::string("<") + element + " ", text));
  }
}

TEST(HtmlPages, ArePrintedWithHeadsOnEverySheetAndNoRowBroken) {
  const std::string text = Printed(PageWith({}));
  EXPECT_THAT(text, AllOf(HasSubstr("thead { display: table-header-group; }"),
                          HasSubstr("tr { break-inside: avoid; }"), HasSubstr("@page {"),
                          HasSubstr("content: \"Tenants, unit 2\""),
                          HasSubstr("counter(page) \" / \" counter(pages)")));
  EXPECT_THAT(text, Not(HasSubstr("<table>"))) << "there are no columns";
}

TEST(HtmlPages, NeedNothingFromElsewhereAndRunNothing) {
  Table table;
  table.columns = {{"Name", "name"}};
  table.rows = {{"x"}};
  const std::string text = Printed(PageWith(table));
  EXPECT_THAT(text, HasSubstr("content=\"default-src 'none'; style-src 'unsafe-inline'\""));
  for (const char* never :
       {"<script", "<link", "<img", "src=", "href=", "url(", "@import", "http:", "https:"}) {
    EXPECT_THAT(text, Not(HasSubstr(never)));
  }
}

TEST(HtmlPages, HoldHostileTextsAsTextWhereverTheyStand) {
  const std::string hostile = "</style></title><script>\"'&\xE2\x80\xAE\n\x1B\xFF";
  Table table;
  table.columns = {{hostile, "key"}};
  table.rows = {{hostile}};
  table.rows.push_back({qorcred::Value(hostile)});
  HtmlPage page;
  page.title = hostile;
  page.foot = hostile;
  page.facts = {{hostile, hostile}};
  page.sections.push_back({hostile, {}, hostile, table});
  const ChartText told{hostile, hostile};
  const std::vector<ChartBar> bars{{hostile, 1, 2.0}};
  const std::vector<ChartColumn> columns{{hostile, 1}};
  page.sections.back().charts = {BarChart(told, bars), ColumnChart(told, columns)};
  const std::string text = Printed(page);
  EXPECT_THAT(text, AllOf(Not(HasSubstr("<script")), Not(HasSubstr("\xE2\x80\xAE")),
                          Not(HasSubstr("\x1B")), Not(HasSubstr("\xFF"))));
  EXPECT_EQ(CountOf("</style>", text), 1U);
  EXPECT_EQ(CountOf("</title>", text), 3U) << "of the page and of two charts";
  EXPECT_EQ(CountOf("&lt;script&gt;", text), 17U);
}

Table TableOf(std::size_t columns, std::size_t characters) {
  Table table;
  table.rows.emplace_back();
  for (std::size_t at = 0; at < columns; ++at) {
    table.columns.push_back({"T", "t"});
    table.rows.back().emplace_back(std::string(characters, 'x'));
  }
  return table;
}

TEST(HtmlPages, LieAcrossAndAreWrittenSmallerTheMoreStandsInARow) {
  const auto formOf = [](std::size_t columns) {
    const std::string text = Printed(PageWith(TableOf(columns, 8)));  // ten with what is between
    const std::string size = text.substr(text.find("html { font-size: ") + 18, 5);
    return size.substr(0, size.find(';')) +
           (text.find("size: landscape") == std::string::npos ? " upright" : " across");
  };
  EXPECT_EQ(formOf(9), "9.5pt upright");
  EXPECT_EQ(formOf(10), "8pt upright");
  EXPECT_EQ(formOf(11), "8pt upright");
  EXPECT_EQ(formOf(12), "9pt across");
  EXPECT_EQ(formOf(14), "9pt across");
  EXPECT_EQ(formOf(15), "7.5pt across");
  EXPECT_EQ(formOf(19), "7.5pt across");
  EXPECT_EQ(formOf(20), "6.5pt across");
}

TEST(HtmlPages, BreakWordsThatNoSheetHolds) {
  const auto cellOf = [](const std::string& cell) {
    Table table;
    table.columns = {{"Name", "name"}};
    table.rows = {{cell}};
    const std::string text = Printed(PageWith(table));
    const std::size_t from = text.find("<td");
    return text.substr(from, text.find('>', from) - from);
  };
  EXPECT_EQ(cellOf(std::string(26, 'x')), "<td class=\"s\"");
  EXPECT_EQ(cellOf("twenty-seven characters are"), "<td");
  EXPECT_EQ(cellOf(std::string(28, 'x')), "<td");
  EXPECT_EQ(cellOf(std::string(29, 'x')), "<td class=\"l\"");
}

TEST(HtmlPages, GrowByTheSameForEveryRow) {
  const auto sizeOf = [](std::size_t rows) {
    Table table = TableOf(3, 20);
    table.rows.resize(rows, table.rows.front());
    return Printed(PageWith(table)).size();
  };
  const std::size_t row = sizeOf(2) - sizeOf(1);
  EXPECT_EQ(sizeOf(1001) - sizeOf(1), 1000 * row);
}

}  // namespace
}  // namespace qorhost::test
