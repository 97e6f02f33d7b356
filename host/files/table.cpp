#include "host/files/table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/cli/display_text.h"

namespace qorhost {

namespace {

using nlohmann::ordered_json;
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

std::string IsoText(qorcred::Date date) {
  const qorcred::CivilTime time = qorcred::ToCivil(date);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", time.year, time.month, time.day,
                     time.hour, time.minute, time.second);
}

/// A whole number without a point, so that counts read as counts.
ordered_json NumberJson(double number) {
  constexpr double kExactlyWhole = 9007199254740992.0;  // beyond it doubles skip whole numbers
  if (std::abs(number) <= kExactlyWhole && std::trunc(number) == number) {
    return static_cast<std::int64_t>(number);
  }
  return number;
}

ordered_json JsonOf(const Value& value) {
  switch (value.type()) {
    case ValueType::kBoolean:
      return *value.As<bool>();
    case ValueType::kInteger:
      return *value.As<std::int16_t>();
    case ValueType::kLong:
      return *value.As<std::int32_t>();
    case ValueType::kDouble:
      return NumberJson(*value.As<double>());
    case ValueType::kDate:
      return IsoText(*value.As<qorcred::Date>());
    case ValueType::kString:
      return *value.As<std::string>();
    case ValueType::kStringArray:
      return *value.As<qorcred::StringArray>();
    default:
      return nullptr;
  }
}

std::string JsonText(const ordered_json& json) {
  // A text that is not UTF-8 must not stop the output of everything else.
  return json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

std::vector<std::string> UniqueKeys(const std::vector<TableColumn>& columns) {
  std::vector<std::string> keys;
  std::set<std::string> taken;
  for (const TableColumn& column : columns) {
    std::string key = column.key;
    for (int number = 2; !taken.insert(key).second; ++number) {
      key = fmt::format("{}_{}", column.key, number);
    }
    keys.push_back(std::move(key));
  }
  return keys;
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
  out << fmt::format("{} {}\n", table.rows.size(), table.rows.size() == 1 ? "row" : "rows");
}

void PrintJson(std::ostream& out, const Table& table) {
  const std::vector<std::string> keys = UniqueKeys(table.columns);
  out << '[';
  for (std::size_t number = 0; number < table.rows.size(); ++number) {
    ordered_json object = ordered_json::object();
    for (std::size_t at = 0; at < keys.size(); ++at) {
      object[keys[at]] = JsonOf(table.rows[number][at]);
    }
    out << (number == 0 ? "\n  " : ",\n  ") << JsonText(object);
  }
  out << (table.rows.empty() ? "]\n" : "\n]\n");
}

void PrintRows(std::ostream& out, const Table& table, bool asJson) {
  if (asJson) {
    PrintJson(out, table);
  } else {
    PrintTable(out, table);
  }
}

void PrintJsonObject(std::ostream& out, const std::vector<std::pair<std::string, Value>>& members) {
  ordered_json object = ordered_json::object();
  for (const auto& [key, value] : members) {
    object[key] = JsonOf(value);
  }
  out << JsonText(object) << '\n';
}

}  // namespace qorhost
