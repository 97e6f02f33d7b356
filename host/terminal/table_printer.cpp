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

std::string CellText(const Value& value, std::string_view nullText) {
  if (value.Is(qorcred::ValueType::kNull)) {
    return std::string(nullText);
  }
  return Displayable(qorcred::ToText(value));
}

class Layout {
 public:
  Layout(const Table& table, std::size_t width, std::size_t widestText)
      : table_(table),
        widths_(table.columns.size(), 0),
        shown_(widths_.size()),
        numeric_(NumberColumns(table)) {
    for (const auto& row : table.rows) {
      for (std::size_t at = 0; at < widths_.size(); ++at) {
        widths_[at] = std::max(widths_[at], DisplayWidth(CellText(row[at], table.nullText)));
      }
    }
    for (std::size_t at = 0; at < numeric_.size(); ++at) {
      if (widestText > 0 && !numeric_[at]) {
        widths_[at] = std::min(widths_[at], widestText);
      }
    }
    // What a column cannot be narrower than.
    std::vector<std::size_t> least;
    for (std::size_t at = 0; at < numeric_.size(); ++at) {
      const std::size_t title = DisplayWidth(Displayable(table.columns[at].title));
      least.push_back(numeric_[at] ? std::max(widths_[at], std::min(title, kNarrowest))
                                   : kNarrowest);
      widths_[at] = std::max(widths_[at], title);
    }
    FitInto(width, least);
  }

  void PrintTitles(std::ostream& out) const {
    std::vector<std::string> titles;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < shown_; ++at) {
      titles.push_back(CutTo(Displayable(table_.columns[at].title), widths_[at]));
      lines.emplace_back(widths_[at], '-');
    }
    PrintLine(out, std::move(titles));
    PrintLine(out, std::move(lines));
  }

  void PrintRow(std::ostream& out, const std::vector<Value>& row) const {
    std::vector<std::string> cells;
    for (std::size_t at = 0; at < shown_; ++at) {
      cells.push_back(CutTo(CellText(row[at], table_.nullText), widths_[at]));
    }
    PrintLine(out, std::move(cells));
  }

  /// " (not shown: Card 2, Code)" where columns are left out.
  [[nodiscard]] std::string LeftOut() const {
    std::string names;
    for (std::size_t at = shown_; at < widths_.size(); ++at) {
      names += (names.empty() ? "" : ", ") + Displayable(table_.columns[at].title);
    }
    return names.empty() ? names : fmt::format(" (not shown: {})", names);
  }

 private:
  static constexpr std::size_t kNarrowest = 12;  // in which a name can be told from others

  /// Cuts the widest columns alike until all of them fit; where they would become too narrow to be
  /// read, the last columns are left out.
  void FitInto(std::size_t width, const std::vector<std::size_t>& least) {
    if (width == 0 || widths_.empty()) {
      return;
    }
    const auto cut = [&](std::size_t at, std::size_t most) {
      return std::min(widths_[at], std::max(least[at], most));
    };
    const auto taken = [&](std::size_t most) {
      constexpr std::size_t kBetween = 2;
      std::size_t columns = kBetween * (shown_ - 1);
      for (std::size_t at = 0; at < shown_; ++at) {
        columns += cut(at, most);
      }
      return columns;
    };
    while (shown_ > 1 && taken(kNarrowest) > width) {
      --shown_;
    }
    std::size_t most = *std::max_element(widths_.begin(), widths_.end());
    while (most > kNarrowest && taken(most) > width) {
      --most;
    }
    for (std::size_t at = 0; at < shown_; ++at) {
      widths_[at] = cut(at, most);
    }
  }

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
  std::size_t shown_;          // columns, from the left
  std::vector<bool> numeric_;  // to the right
};

}  // namespace

void PrintTable(std::ostream& out, const Table& table, std::size_t width, std::size_t widestText) {
  if (table.rows.empty()) {
    out << "no rows\n";
    return;
  }
  const Layout layout(table, width, widestText);
  layout.PrintTitles(out);
  for (const auto& row : table.rows) {
    layout.PrintRow(out, row);
  }
  out << Counted(table.rows.size(), "row", "rows") << layout.LeftOut() << '\n';
}

void PrintRows(Console& console, const Table& table, bool asJson) {
  if (asJson) {
    PrintJson(console.out, table);
  } else {
    PrintTable(console.out, table, 0, WidestText(console));
  }
}

}  // namespace qorhost
