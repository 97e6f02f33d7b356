// The filter screen as an operator fills it in.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/report_words.h"
#include "host/desks/session.h"
#include "host/screens/report_filter_screen.h"

namespace qorhost {

/// What the conditions of a screen that a person fills in are called in an InputFault, by their
/// rows.
inline constexpr std::array<std::string_view, kFewestFilterRows> kConditionRows{
    "condition 1", "condition 2", "condition 3", "condition 4", "condition 5"};

/// The filter screen of one report.
class ReportFilter {
 public:
  /// Has room for `conditions` conditions.
  ReportFilter(DeskSession& session, std::size_t conditions);

  /// The screen to hand to controllers.
  [[nodiscard]] qorcred::ObjectRef screen() const { return screen_; }
  /// The same for whoever shows it.
  [[nodiscard]] ScreenModel& model() const { return *screen_; }
  /// The list of fields in a row.
  [[nodiscard]] ListModel& Fields(std::size_t row) const { return At<ListModel>("cboField", row); }
  [[nodiscard]] std::size_t rowCount() const { return rows_; }

  /// Chooses and types a condition into a row. Raises InputFault when the screen does not take one
  /// of its values.
  void Enter(std::size_t row, const ReportCondition& condition, FieldKind kind);

  // For a screen of kFewestFilterRows rows that a person fills in. `fields` are those of the lists,
  // in their order.

  /// Keeps every row as a person needs it from now on: with the operators of the field that is
  /// chosen, the first one chosen, and of the controls for values those alone visible that it
  /// takes.
  void Follow(std::vector<ReportField> fields);
  /// Nothing is chosen or typed in the row any more.
  void Clear(std::size_t row);
  /// The field that is chosen in the row; null without one.
  [[nodiscard]] const ReportField* FieldIn(std::size_t row) const;
  /// Checks what was chosen and typed as ReadCondition() does, and completes it as Enter() does.
  /// Raises InputFault, with one of kConditionRows as its field.
  void TakeEntered();

 private:
  template <typename Kind>
  [[nodiscard]] Kind& At(std::string_view name, std::size_t row) const {
    return dynamic_cast<Kind&>(*screen_->Get<ControlArrayModel>(name).at(row));
  }

  [[nodiscard]] ListModel& Operators(std::size_t row) const {
    return At<ListModel>("cboFilter", row);
  }
  void OfferOperators(std::size_t row);
  void ShowValues(std::size_t row);
  [[nodiscard]] std::string EnteredIn(std::size_t row, const ReportField& field) const;

  std::size_t rows_;
  std::shared_ptr<ScreenModel> screen_;
  std::vector<ReportField> fields_;       // of a screen that a person fills in
  std::vector<Subscription> selections_;  // of fields and operators
};

}  // namespace qorhost
