// The rows of one table on their way from a file to a store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/desks/moving_in/known_tables.h"
#include "host/desks/moving_in/settled_cells.h"
#include "host/files/desktop_file/desktop_table.h"

namespace qorhost {

struct StagedRow {
  std::size_t number = 0;  ///< in the file's table, from 1
  /// In the order of the store's columns; where the file has none Null, and No for Yes or No.
  std::vector<qorcred::Value> cells;
  bool isRefused = false;
};

/// A table with its cells converted.
class StagedTable {
 public:
  /// Without any rows: the file does not have it.
  explicit StagedTable(const KnownTable& known);
  /// Converts every cell, and puts into `settled` what has to be told of it. With a unit, rows of
  /// others are counted alone, where the table has units.
  StagedTable(const KnownTable& known, const DesktopTable& table, std::optional<std::int32_t> unit,
              SettledCells& settled);

  [[nodiscard]] const KnownTable& known() const { return *known_; }
  [[nodiscard]] bool isInFile() const { return isInFile_; }
  [[nodiscard]] std::vector<StagedRow>& rows() { return rows_; }
  [[nodiscard]] const std::vector<StagedRow>& rows() const { return rows_; }

  [[nodiscard]] std::size_t ofOtherUnits() const { return ofOtherUnits_; }

  /// The place of a column among the cells; it must be one of the table's.
  [[nodiscard]] std::size_t At(std::string_view column) const;
  /// Whether the file has the column, or its cells were made.
  [[nodiscard]] bool IsGiven(std::size_t place) const { return given_[place]; }
  void MarkGiven(std::size_t place) { given_[place] = true; }
  /// Columns of the store that the file's table does not have, as the store calls them.
  [[nodiscard]] const std::vector<std::string_view>& missing() const { return missing_; }
  /// Columns of the file that the store does not have, as the file calls them.
  [[nodiscard]] const std::vector<std::string>& unknown() const { return unknown_; }

  [[nodiscard]] std::string IdentityOf(const StagedRow& row) const;

 private:
  void MatchColumns(const DesktopTable& table);
  void Convert(const DesktopTable& table, std::optional<std::int32_t> unit, SettledCells& settled);
  void ConvertCell(const DesktopCell& cell, std::size_t place, StagedRow& row,
                   std::vector<SettledCell>& settled) const;
  [[nodiscard]] std::vector<qorcred::Value> EmptyCells() const;
  [[nodiscard]] bool IsOf(std::int32_t unit, const StagedRow& row) const;

  const KnownTable* known_;
  const dialect::Table* layout_;
  bool isInFile_ = false;
  std::vector<std::optional<std::size_t>> sources_;  // for each column of the store
  std::vector<bool> given_;
  std::vector<std::string_view> missing_;
  std::vector<std::string> unknown_;
  std::vector<StagedRow> rows_;
  std::size_t ofOtherUnits_ = 0;
};

/// A cell as a number; nothing for Null.
[[nodiscard]] std::optional<double> NumberIn(const qorcred::Value& cell);
/// A cell of whole numbers.
[[nodiscard]] std::optional<std::int32_t> LongIn(const qorcred::Value& cell);
/// A cell of texts; "" for Null.
[[nodiscard]] std::string_view TextIn(const qorcred::Value& cell);
[[nodiscard]] bool FlagIn(const qorcred::Value& cell);

}  // namespace qorhost
