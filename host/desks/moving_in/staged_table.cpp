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
                         std::optional<std::int32_t> unit, SettledCells& settled)
    : StagedTable(known) {
  isInFile_ = true;
  MatchColumns(table);
  Convert(table, unit, settled);
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
    // Yes and No have no Null: a column of them that the file lacks is made.
    given_[sources_.size() - 1] =
        sources_.back().has_value() || column.type == dialect::ColumnType::kBoolean;
  }
  for (const DesktopColumn& source : table.columns) {
    if (dialect::FindColumn(*layout_, source.name) == nullptr) {
      unknown_.push_back(source.name);
    }
  }
}

void StagedTable::Convert(const DesktopTable& table, std::optional<std::int32_t> unit,
                          SettledCells& settled) {
  rows_.reserve(table.rows.size());
  const std::vector<Value> empty = EmptyCells();
  std::size_t number = 0;
  for (const std::vector<DesktopCell>& source : table.rows) {
    StagedRow row{++number, empty, false};
    std::vector<SettledCell> ofRow;
    for (std::size_t place = 0; place < sources_.size(); ++place) {
      if (sources_[place]) {
        ConvertCell(source[*sources_[place]], place, row, ofRow);
      }
    }
    if (unit && !IsOf(*unit, row)) {
      ++ofOtherUnits_;
      continue;
    }
    // What names a row is known when all of its cells are.
    for (SettledCell& cell : ofRow) {
      cell.identity = IdentityOf(row);
      settled.Add(std::move(cell));
    }
    rows_.push_back(std::move(row));
  }
}

std::vector<Value> StagedTable::EmptyCells() const {
  std::vector<Value> cells;
  for (const dialect::Column& column : layout_->columns) {
    cells.push_back(column.type == dialect::ColumnType::kBoolean ? Value(false) : Value(Null{}));
  }
  return cells;
}

bool StagedTable::IsOf(std::int32_t unit, const StagedRow& row) const {
  return dialect::FindColumn(*layout_, "UnitKey") == nullptr ||
         LongIn(row.cells[At("UnitKey")]) == unit;
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
