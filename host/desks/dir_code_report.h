// The directory-code report of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/report_filter.h"
#include "host/desks/session.h"
#include "host/screens/grid_model.h"
#include "reports/cls_dir_code_report.h"

namespace qorhost {

/// Opens the filter screen with the fields of the store and an empty grid. The session must outlive
/// it. Raises FailureError when the fields cannot be read.
class DirCodeReport {
 public:
  /// Conditions that the report can take.
  static constexpr std::size_t kMostConditions = kFewestFilterRows;

  DirCodeReport(DeskSession& session, std::int32_t unitKey);

  /// Enters conditions, each "FIELD OPERATOR VALUE [AND VALUE2]". Raises InputFault for one
  /// that is not understood, or would narrow nothing.
  void Narrow(const std::vector<std::string>& conditions);

  /// The filter rows, and the fields that they are of.
  [[nodiscard]] ReportFilter& filter() { return filter_; }
  [[nodiscard]] std::vector<ReportField> FilterFields() const;

  /// Composes the report's statement from the conditions.
  Outcome Compose();
  /// The statement that was composed last.
  [[nodiscard]] const std::string& statement() const { return statement_; }
  /// Runs the statement and shows its rows in the grid. A store may go without rows for the two
  /// schedules that every unit has: their names are added to the grid here.
  Outcome Run();

  /// Every column of the statement under its name; those that the grid does not show are extra.
  [[nodiscard]] List Rows() const;
  /// The grid's visible columns, for people.
  [[nodiscard]] Table Visible() const { return ForPeople(Answer(Rows(), {})); }

 private:
  [[nodiscard]] std::vector<std::string> ColumnNames() const;

  DeskSession& session_;
  std::int32_t unitKey_;
  ReportFilter filter_;
  std::shared_ptr<GridModel> grid_ = std::make_shared<GridModel>();
  Controlled<qorcred::clsDirCodeReport> controller_;
  std::string statement_;
};

}  // namespace qorhost
