#include "host/terminal/table_printer.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

using qorcred::Value;
using qorcred::ValueType;

bool IsNumber(const Value& value) {
  return value.Is(ValueType::kInteger) || value.Is(ValueType::kLong) ||
         value.Is(ValueType::kDouble);
}

bool IsNothing(const Value& value) {
  return value.Is(ValueType::kNull) || value.Is(ValueType::kEmpty);
}

std::string CellText(const Value& value, std::string_view nullText) {
  if (value.Is(ValueType::kNull)) {
    return std::string(nullText);
  }
  return Displayable(qorcred::ToText(value));
}

class Layout {
 public:
  explicit Layout(const Table& table) : table_(table) {
    for (const TableColumn& column : table.columns) {
      widths_.push_back(DisplayWidth(Displayable(column.title)));
    }
    // To the right when a column has numbers and nothing else.
    std::vector<bool> hasNumber(table.columns.size(), false);
    numeric_.assign(table.columns.size(), true);
    for (const auto& row : table.rows) {
      for (std::size_t at = 0; at < widths_.size(); ++at) {
        widths_[at] = std::max(widths_[at], DisplayWidth(CellText(row[at], table.nullText)));
        numeric_[at] = numeric_[at] && (IsNumber(row[at]) || IsNothing(row[at]));
        hasNumber[at] = hasNumber[at] || IsNumber(row[at]);
      }
    }
    for (std::size_t at = 0; at < numeric_.size(); ++at) {
      numeric_[at] = numeric_[at] && hasNumber[at];
    }
  }

  void PrintTitles(std::ostream& out) const {
    std::vector<std::string> titles;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < widths_.size(); ++at) {
      titles.push_back(Displayable(table_.columns[at].title));
      lines.emplace_back(widths_[at], '-');
    }
    PrintLine(out, std::move(titles));
    PrintLine(out, std::move(lines));
  }

  void PrintRow(std::ostream& out, const std::vector<Value>& row) const {
    std::vector<std::string> cells;
    for (std::size_t at = 0; at < widths_.size(); ++at) {
      cells.push_back(CellText(row[at], table_.nullText));
    }
    PrintLine(out, std::move(cells));
  }

 private:
  void PrintLine(std::ostream& out, std::vector<std::string> cells) const {
    std::string line;
    for (std::size_t at = 0; at < cells.size(); ++at) {
      const std::size_t blanks = widths_[at] - DisplayWidth(cells[at]);
      line += at == 0 ? "" : "  ";
      if (numeric_[at]) {
        line.append(blanks, ' ').append(cells[at]);
      } else {
        line.append(cells[at]).append(blanks, ' ');
      }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }

  const Table& table_;
  std::vector<std::size_t> widths_;
  std::vector<bool> numeric_;
};

}  // namespace

void PrintTable(std::ostream& out, const Table& table) {
  if (table.rows.empty()) {
    out << "no rows\n";
    return;
  }
  const Layout layout(table);
  layout.PrintTitles(out);
  for (const auto& row : table.rows) {
    layout.PrintRow(out, row);
  }
  out << Counted(table.rows.size(), "row", "rows") << '\n';
}

void PrintRows(std::ostream& out, const Table& table, bool asJson) {
  if (asJson) {
    PrintJson(out, table);
  } else {
    PrintTable(out, table);
  }
}

}  // namespace qorhost
