// The directory-code report of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/report_filter.h"
#include "host/desks/session.h"
#include "host/files/table.h"
#include "host/screens/grid_model.h"
#include "reports/cls_dir_code_report.h"

namespace qorhost {

/// What the composing of the report's statement tells.
struct ComposedReport : Outcome {
  std::string statement;
};

/// A unit's name as it heads a report: "Unit 7" for one without a name.
[[nodiscard]] std::string ReportTitle(DeskSession& session, std::int32_t unitKey);

/// Opens the filter screen with the fields of the store and an empty grid. The session must outlive
/// it. Raises FailureError when the fields cannot be read.
class DirCodeReport {
 public:
  /// Conditions that the report can take.
  static constexpr std::size_t kMostConditions = kFewestFilterRows;

  DirCodeReport(DeskSession& session, std::int32_t unitKey);

  /// Enters conditions, each "FIELD OPERATOR VALUE [AND VALUE2]". Returns what is to be known of
  /// those that do not narrow the report. Raises InputFault.
  std::vector<std::string> Narrow(const std::vector<std::string>& conditions);

  /// Composes the report's statement.
  [[nodiscard]] ComposedReport Compose();
  /// Shows the rows of a statement in the grid. A store may go without rows for the two schedules
  /// that every unit has: their names are added to the grid here.
  Outcome Show(const std::string& statement);

  /// The grid's visible columns.
  [[nodiscard]] Table Visible() const;
  /// Every column of the statement under its name, the hidden ones too.
  [[nodiscard]] Table Complete() const;

 private:
  [[nodiscard]] std::vector<std::string> ColumnNames() const;

  DeskSession& session_;
  std::int32_t unitKey_;
  ReportFilter filter_;
  std::shared_ptr<GridModel> grid_ = std::make_shared<GridModel>();
  qorcred::clsDirCodeReport controller_;
};

}  // namespace qorhost
