// The controller of the directory-code report screen.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "reports/report_controller.h"

namespace qorcred {

/// Turns the filter rows into the report's statement and shows its rows in the host's grid.
/// Unlike the other operations, pbGenSql raises what fails in it.
class clsDirCodeReport final : public ReportController {
 public:
  /// `host` must outlive the controller.
  explicit clsDirCodeReport(Host& host) : ReportController(host) {}

  /// Lays the grid's columns out, shows the rows of `strSQL` in it and makes coded cells readable.
  /// `objGrid` is the data grid; `objColGrid` receives the table of the layout: caption, width and
  /// field name. `colValueItem` (may be null) is the value item that is filled for every
  /// translation; without one the grid's NewValueItem makes it, and a grid that has none leaves the
  /// cells as they are.
  void pvDirCodeReportResult(std::int32_t lngUnitKey, const ObjectRef& objCon,
                             const ObjectRef& objGrid, std::string_view strSQL,
                             ObjectRef& objColGrid, const ObjectRef& colValueItem = nullptr);

  /// The unit's name; "" for an unknown unit.
  std::string pbGetUnitName(const ObjectRef& objConn, std::int32_t lngUnitKey);

  /// The report's statement for the five filter rows of gfrmTxFilter. Sets the times of the filter
  /// rows' pickers: from midnight to 23:59:59. Raises what a call raises, kOverflow for a field
  /// identifier beyond 16 bits.
  std::string pbGenSql(const ObjectRef& objConn, std::int32_t intUnitKey);

  /// How many digits a directory code of the unit mlngUnitKey has (`blnDirLength`) or an entry
  /// code; 0 when it is not known.
  std::int32_t pbGetEntryLength(const ObjectRef& objCon, bool blnDirLength = false);

  /// Fills every `cboField` of the filter screen with the report's fields and returns their
  /// captions, joined by "|".
  std::string pbComboData(const ObjectRef& objConn);

  /// The public surface above as data.
  [[nodiscard]] static std::span<const Member> MemberTable();
  [[nodiscard]] std::span<const Member> Members() const override { return MemberTable(); }

 private:
  // Statement
  /// The select list, without the comma or blank that comes last.
  std::string SelectList(const ObjectRef& connection, const DatabaseManager& manager);
  std::string pvBuildDirCodeFilter(const ObjectRef& connection, const DatabaseManager& manager,
                                   std::int32_t unitKey);
  std::string FilterRow(const ObjectRef& connection, const DatabaseManager& manager,
                        std::int32_t unitKey, std::int32_t row);
  std::string pvGetFilterFieldName(const ObjectRef& connection, const DatabaseManager& manager,
                                   std::int16_t fieldId);
};

}  // namespace qorcred
