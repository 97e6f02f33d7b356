// What of a desktop database file comes into a store: every row settled, before there is a store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/moving_in/settled_cells.h"
#include "host/desks/moving_in/staged_table.h"
#include "host/files/desktop_file/desktop_table.h"

namespace qorhost {

/// One table by numbers; every row of the file is in one of the last three.
struct MovedTable {
  std::string_view name;
  bool isInFile = false;
  std::size_t inFile = 0;
  std::size_t broughtIn = 0;
  std::size_t refused = 0;
  std::size_t ofOtherUnits = 0;
};

/// What a file has and a store has not, as the file calls it.
struct LeftThing {
  std::string table;
  std::string column;    ///< "" of a whole table
  std::size_t rows = 0;  ///< of a whole table that stands in the file
  bool isLink = false;   ///< a whole table, whose rows stand in another file
};

/// What a store has and the file has not.
struct MissingThing {
  std::string_view table;
  std::string_view column;  ///< "" of a whole table
  std::string_view means;   ///< a sentence without its end
};

class MovingPlan {
 public:
  /// Of all units, or of one alone. `name` is the file's, for messages. Raises RefusedError for a
  /// file of another application, one whose tables stand elsewhere or twice, lack what gives them
  /// a meaning, or do not have the unit.
  MovingPlan(const DesktopFile& file, std::string_view name, std::optional<std::int32_t> unit);

  /// In the order in which they are stored, those among them that the file does not have.
  [[nodiscard]] const std::vector<StagedTable>& tables() const { return tables_; }
  /// In the order of the tables and rows.
  [[nodiscard]] const SettledCells& settled() const { return settled_; }
  [[nodiscard]] const std::vector<MovedTable>& numbers() const { return numbers_; }
  /// Tables first.
  [[nodiscard]] const std::vector<LeftThing>& left() const { return left_; }
  [[nodiscard]] const std::vector<MissingThing>& missing() const { return missing_; }
  /// In which the texts of the file are read, where that can be another one.
  [[nodiscard]] const std::optional<DesktopCodePage>& codePage() const { return codePage_; }
  [[nodiscard]] std::size_t CountOf(Settlement settlement) const {
    return settled_.CountOf(settlement);
  }
  [[nodiscard]] std::size_t refusedRows() const;
  [[nodiscard]] std::size_t broughtInRows() const;

 private:
  void Stage(const DesktopFile& file, std::string_view name, std::optional<std::int32_t> unit);
  void LeaveUnknown(const DesktopFile& file, std::string_view name);
  void RequireMeaning(const StagedTable& table, std::string_view name) const;
  void NameColumns(const StagedTable& table);
  void Settle();
  void Count();
  [[nodiscard]] StagedTable& Of(std::string_view table);

  std::vector<StagedTable> tables_;
  SettledCells settled_;
  std::vector<MovedTable> numbers_;
  std::vector<LeftThing> left_;
  std::vector<MissingThing> missing_;
  std::optional<DesktopCodePage> codePage_;
};

}  // namespace qorhost
