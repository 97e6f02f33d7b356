// The filter screen as an operator fills it in.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "host/desks/report_words.h"
#include "host/desks/session.h"
#include "host/screens/report_filter_screen.h"

namespace qorhost {

/// The filter screen of one report.
class ReportFilter {
 public:
  /// Has room for `conditions` conditions.
  ReportFilter(DeskSession& session, std::size_t conditions);

  /// The screen to hand to controllers.
  [[nodiscard]] qorcred::ObjectRef screen() const { return screen_; }
  /// The list of fields in a row.
  [[nodiscard]] ListModel& Fields(std::size_t row) const { return At<ListModel>("cboField", row); }
  [[nodiscard]] std::size_t rowCount() const { return rows_; }

  /// Chooses and types a condition into a row. Raises InputFault when the screen does not take one
  /// of its values.
  void Enter(std::size_t row, const ReportCondition& condition, FieldKind kind);

 private:
  template <typename Kind>
  [[nodiscard]] Kind& At(std::string_view name, std::size_t row) const {
    return dynamic_cast<Kind&>(*screen_->Get<ControlArrayModel>(name).at(row));
  }

  std::size_t rows_;
  std::shared_ptr<ScreenModel> screen_;
};

}  // namespace qorhost
