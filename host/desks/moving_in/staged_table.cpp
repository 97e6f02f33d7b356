#include "host/desks/moving_in/staged_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/text.h"
#include "host/desks/moving_in/cell_conversion.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

bool IsSameName(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](char left, char right) {
    return qorcred::LowerAscii(left) == qorcred::LowerAscii(right);
  });
}

/// The one number column that also takes texts: a merge of directory codes writes a date into it.
bool TakesTexts(std::string_view table, std::string_view column) {
  return table == "Tenants" && column == "MODIFIED";
}

}  // namespace

StagedTable::StagedTable(const KnownTable& known)
    : known_(&known), layout_(&LayoutOf(known)), given_(layout_->columns.size(), false) {}

StagedTable::StagedTable(const KnownTable& known, const DesktopTable& table,
                         std::vector<SettledCell>& settled)
    : StagedTable(known) {
  isInFile_ = true;
  MatchColumns(table);
  Convert(table, settled);
}

std::size_t StagedTable::At(std::string_view column) const {
  std::size_t place = 0;
  while (!IsSameName(layout_->columns[place].name, column)) ++place;
  return place;
}

void StagedTable::MatchColumns(const DesktopTable& table) {
  for (const dialect::Column& column : layout_->columns) {
    const auto found = std::find_if(
        table.columns.begin(), table.columns.end(),
        [&](const DesktopColumn& source) { return IsSameName(source.name, column.name); });
    if (found == table.columns.end()) {
      missing_.push_back(column.name);
      sources_.emplace_back();
    } else {
      sources_.emplace_back(found - table.columns.begin());
    }
    given_[sources_.size() - 1] = sources_.back().has_value();
  }
  for (const DesktopColumn& source : table.columns) {
    if (dialect::FindColumn(*layout_, source.name) == nullptr) {
      unknown_.push_back(source.name);
    }
  }
}

void StagedTable::Convert(const DesktopTable& table, std::vector<SettledCell>& settled) {
  rows_.reserve(table.rows.size());
  for (const std::vector<DesktopCell>& source : table.rows) {
    StagedRow row{rows_.size() + 1, std::vector<Value>(layout_->columns.size(), Null{}), false};
    const std::size_t before = settled.size();
    for (std::size_t place = 0; place < sources_.size(); ++place) {
      if (sources_[place]) {
        ConvertCell(source[*sources_[place]], place, row, settled);
      }
    }
    // What names a row is known when all of its cells are.
    for (std::size_t at = before; at < settled.size(); ++at) {
      settled[at].identity = IdentityOf(row);
    }
    rows_.push_back(std::move(row));
  }
}

void StagedTable::ConvertCell(const DesktopCell& cell, std::size_t place, StagedRow& row,
                              std::vector<SettledCell>& settled) const {
  const dialect::Column& column = layout_->columns[place];
  ConvertedCell converted = Converted(cell, column.type);
  if (converted.remark && converted.remark->settlement == Settlement::kRefused &&
      TakesTexts(known_->name, column.name) && std::holds_alternative<DesktopText>(cell)) {
    converted = Converted(cell, dialect::ColumnType::kText);
    if (!converted.remark) {
      converted.remark =
          CellRemark{Settlement::kKept, "text-for-number",
                     "a text among numbers, as a merge of directory codes writes it"};
    }
  }
  row.cells[place] = std::move(converted.value);
  if (!converted.remark) {
    return;
  }
  row.isRefused = row.isRefused || converted.remark->settlement == Settlement::kRefused;
  SettledCell told;
  told.settlement = converted.remark->settlement;
  told.table = known_->name;
  told.row = row.number;
  told.column = column.name;
  told.kind = converted.remark->kind;
  told.value = ShownCell(cell);
  told.reason = std::move(converted.remark->reason);
  if (told.settlement == Settlement::kAdjusted) {
    told.instead = ShownStored(row.cells[place]);
  }
  settled.push_back(std::move(told));
}

std::string StagedTable::IdentityOf(const StagedRow& row) const {
  std::string identity;
  const auto add = [&](std::string_view column) {
    const Value& cell = row.cells[At(column)];
    if (!cell.Is(qorcred::ValueType::kNull)) {
      identity += fmt::format("{}{} {}", identity.empty() ? "" : ", ", column, ShownStored(cell));
    }
  };
  add("RID");
  if (identity.empty()) {
    for (const std::string_view column : known_->needed) {
      if (!column.empty()) add(column);
    }
  }
  return identity;
}

std::optional<double> NumberIn(const Value& cell) {
  if (const auto* number = cell.As<std::int32_t>()) return *number;
  if (const auto* number = cell.As<double>()) return *number;
  return std::nullopt;
}

std::optional<std::int32_t> LongIn(const Value& cell) {
  if (const auto* number = cell.As<std::int32_t>()) return *number;
  return std::nullopt;
}

std::string_view TextIn(const Value& cell) {
  const auto* text = cell.As<std::string>();
  return text == nullptr ? std::string_view() : std::string_view(*text);
}

bool FlagIn(const Value& cell) {
  const auto* flag = cell.As<bool>();
  return flag != nullptr && *flag;
}

}  // namespace qorhost
