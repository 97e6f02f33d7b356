// Conditions on the cells of rows: "FIELD OPERATOR VALUE", in the words of the reports.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "frame/value.h"
#include "host/desks/report_words.h"

namespace qorhost {

/// A condition that is read once and asked of many cells. Texts compare as FoldedText(), dates by
/// whole days unless a time is given. A cell of several values meets a condition when one of
/// them does; the operators that deny ("does not equal", "not between", ...) are met when none
/// does. A cell without a value meets those, and "equal" without a value.
class ListCondition {
 public:
  /// Raises InputFault as ReadCondition() does.
  ListCondition(std::string_view where, const std::vector<ReportField>& fields);

  /// The place of its field.
  [[nodiscard]] std::size_t field() const { return field_; }
  [[nodiscard]] bool IsMetBy(const qorcred::Value& cell) const;

 private:
  [[nodiscard]] bool TextHolds(const qorcred::Value& cell) const;
  [[nodiscard]] bool NumberHolds(const qorcred::Value& cell) const;
  [[nodiscard]] bool DateHolds(const qorcred::Value& cell) const;
  [[nodiscard]] bool IsAsked(double number) const;

  std::size_t field_;
  FieldKind kind_;
  std::int32_t operation_;
  bool wantsNone_;
  std::u32string text_;
  double first_ = 0;
  double second_ = 0;
  bool byMoment_ = false;  // of dates
  bool yes_ = false;
};

/// The number in a cell, or in its first text where that is digits alone; nothing for anything
/// else.
[[nodiscard]] std::optional<double> NumberOf(const qorcred::Value& cell);

}  // namespace qorhost
