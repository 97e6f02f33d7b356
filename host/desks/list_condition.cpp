#include "host/desks/list_condition.h"

#include <algorithm>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/credential_types.h"
#include "host/desks/name_words.h"
#include "host/desks/shown_value.h"
#include "host/desks/typed_input.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

using qorcred::Value;

/// The operators of texts stand in pairs: one and its contrary.
constexpr std::int32_t kPair = 2;

/// The operators of numbers and dates, in the order of their list.
enum NumberOperator : std::int32_t {
  kEqual,
  kUnequal,
  kGreater,
  kGreaterOrEqual,
  kLess,
  kLessOrEqual,
  kBetween,
  kNotBetween,
};

bool ComparesNumbers(FieldKind kind) {
  return kind == FieldKind::kNumber || kind == FieldKind::kDate;
}

/// Whether the operator is met where what it is followed by does not hold.
bool Denies(FieldKind kind, std::int32_t operation) {
  return ComparesNumbers(kind) ? operation == kUnequal || operation == kNotBetween
                               : operation % kPair != 0;
}

bool IsNothing(const Value& cell) {
  if (const auto* several = cell.As<qorcred::StringArray>()) {
    return several->empty();
  }
  return qorcred::IsEmptyText(cell);
}

/// Asks each of a cell's values; of most there is one.
template <typename Predicate>
bool AnyOf(const Value& cell, Predicate&& holds) {
  if (const auto* several = cell.As<qorcred::StringArray>()) {
    return std::any_of(several->begin(), several->end(),
                       [&holds](const std::string& one) { return holds(Value(one)); });
  }
  return holds(cell);
}

/// The seconds up to a moment, from one and the same.
double SecondsTo(qorcred::Date moment) {
  return static_cast<double>(qorcred::SecondsBetween(qorcred::Date{}, moment));
}

double GivenMoment(std::string_view given, TimeOf clock, bool& byMoment) {
  const GivenDate date = ReadMoment(report_input::kCondition, given, clock);
  byMoment = byMoment || date.hasTime;
  return SecondsTo(date.date);
}

}  // namespace

std::optional<double> NumberOf(const Value& cell) {
  if (const auto* several = cell.As<qorcred::StringArray>()) {
    return several->empty() ? std::nullopt : NumberOf(Value(several->front()));
  }
  if (const auto* text = cell.As<std::string>()) {
    const auto number = WholeNumberIn(*text, {0, kLargestUnitCode});
    return number ? std::optional(static_cast<double>(*number)) : std::nullopt;
  }
  return qorcred::IsEmptyText(cell) ? std::nullopt : std::optional(qorcred::NumericValue(cell));
}

ListCondition::ListCondition(std::string_view where, const std::vector<ReportField>& fields) {
  const ReportCondition condition = ReadCondition(where, fields);
  field_ = static_cast<std::size_t>(condition.field);
  kind_ = fields[field_].kind;
  operation_ = condition.operation;
  wantsNone_ = condition.first.empty();
  if (wantsNone_) {
    return;
  }
  switch (kind_) {
    case FieldKind::kNumber:
      first_ = qorcred::Val(condition.first);
      second_ = qorcred::Val(condition.second);
      return;
    case FieldKind::kDate:
      first_ = GivenMoment(condition.first, fields[field_].clock, byMoment_);
      second_ = condition.second.empty()
                    ? 0
                    : GivenMoment(condition.second, fields[field_].clock, byMoment_);
      return;
    case FieldKind::kYesNo:
      yes_ = ReadYesNo(condition.first);
      return;
    case FieldKind::kCredentialType:
      text_ = FoldedText(TypeNameOf(ReadCredentialType(condition.first).type));
      return;
    case FieldKind::kSchedule:
      text_ = FoldedText(qorcred::ReplaceAll(condition.first, "''", "'"));
      return;
    default:
      text_ = FoldedText(condition.first);
      return;
  }
}

bool ListCondition::IsMetBy(const Value& cell) const {
  const auto holds = [&] {
    if (wantsNone_ || IsNothing(cell)) {
      return wantsNone_ && IsNothing(cell);
    }
    switch (kind_) {
      case FieldKind::kNumber:
        return NumberHolds(cell);
      case FieldKind::kDate:
        return DateHolds(cell);
      case FieldKind::kYesNo:
        return qorcred::ToBoolean(cell) == yes_;
      default:
        return TextHolds(cell);
    }
  };
  return holds() != Denies(kind_, operation_);
}

bool ListCondition::TextHolds(const Value& cell) const {
  return AnyOf(cell, [this](const Value& one) {
    const std::u32string text = FoldedText(ShownText(one));
    switch (operation_ / kPair) {
      case 0:
        return text == text_;
      case 1:
        return text.starts_with(text_);
      case 2:
        return text.ends_with(text_);
      default:
        return text.find(text_) != std::u32string::npos;
    }
  });
}

bool ListCondition::NumberHolds(const Value& cell) const {
  return AnyOf(cell, [this](const Value& one) {
    const std::optional<double> number = NumberOf(one);
    return number && IsAsked(*number);
  });
}

bool ListCondition::DateHolds(const Value& cell) const {
  const auto* date = cell.As<qorcred::Date>();
  return date != nullptr && IsAsked(SecondsTo(byMoment_ ? *date : qorcred::DayOf(*date)));
}

bool ListCondition::IsAsked(double number) const {
  switch (operation_) {
    case kEqual:
    case kUnequal:
      return number == first_;
    case kGreater:
      return number > first_;
    case kGreaterOrEqual:
      return number >= first_;
    case kLess:
      return number < first_;
    case kLessOrEqual:
      return number <= first_;
    default:
      return number >= first_ && number <= second_;
  }
}

}  // namespace qorhost
