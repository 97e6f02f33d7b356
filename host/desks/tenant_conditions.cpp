#include "host/desks/tenant_conditions.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/typed_input.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

enum Field : std::int32_t {
  kName,
  kNameAtUnit,
  kGroup,
  kActive,
  kStart,
  kEnd,
  kFirstSchedule,
  kLastSchedule = kFirstSchedule + 3,
  kCode,
  kCard,
  kResident,
};

struct NamedField {
  std::string_view name;
  FieldKind kind;
  bool mayBeUnset = false;
};

constexpr std::array kFields{
    NamedField{"name", FieldKind::kText},          NamedField{"name at unit", FieldKind::kText},
    NamedField{"group", FieldKind::kNumber},       NamedField{"active", FieldKind::kYesNo},
    NamedField{"start", FieldKind::kDate},         NamedField{"end", FieldKind::kDate},
    NamedField{"schedule1", FieldKind::kSchedule}, NamedField{"schedule2", FieldKind::kSchedule},
    NamedField{"schedule3", FieldKind::kSchedule}, NamedField{"schedule4", FieldKind::kSchedule},
    NamedField{"code", FieldKind::kNumber, true},  NamedField{"card", FieldKind::kNumber, true},
    NamedField{"resident", FieldKind::kYesNo}};

std::vector<ReportField> FieldsWith(const TenantLinks& links) {
  std::vector<std::string> schedules;
  for (const auto& [id, name] : links.schedules) {
    schedules.push_back(name);
  }
  std::vector<ReportField> fields;
  for (const NamedField& named : kFields) {
    ReportField& field = fields.emplace_back();
    field.name = named.name;
    field.kind = named.kind;
    field.mayBeUnset = named.mayBeUnset;
    if (named.kind == FieldKind::kNumber) {
      field.range = {0, kLargestUnitCode};
    } else if (named.kind == FieldKind::kSchedule) {
      field.names = schedules;
    }
  }
  return fields;
}

bool StartsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() &&
         qorcred::CompareIgnoringCase(text.substr(0, start.size()), start) == 0;
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() &&
         qorcred::CompareIgnoringCase(text.substr(text.size() - end.size()), end) == 0;
}

bool HasPart(std::string_view text, std::string_view part) {
  for (std::size_t at = 0; at + part.size() <= text.size(); ++at) {
    if (StartsWith(text.substr(at), part)) {
      return true;
    }
  }
  return false;
}

/// The operators of texts stand in pairs: one and its contrary.
bool TextMeets(std::int32_t operation, std::string_view text, std::string_view wanted) {
  constexpr std::int32_t kPair = 2;
  const auto holds = [&] {
    switch (operation / kPair) {
      case 0:
        return qorcred::CompareIgnoringCase(text, wanted) == 0;
      case 1:
        return StartsWith(text, wanted);
      case 2:
        return EndsWith(text, wanted);
      default:
        return HasPart(text, wanted);
    }
  };
  return holds() == (operation % kPair == 0);
}

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

bool IsNegative(std::int32_t operation) {
  return operation == kUnequal || operation == kNotBetween;
}

/// Whether one number is as the operator, or the one that it denies, says.
bool NumberIs(std::int32_t operation, double number, double first, double second) {
  switch (operation) {
    case kEqual:
    case kUnequal:
      return number == first;
    case kGreater:
      return number > first;
    case kGreaterOrEqual:
      return number >= first;
    case kLess:
      return number < first;
    case kLessOrEqual:
      return number <= first;
    default:
      return number >= first && number <= second;
  }
}

/// Whether the numbers that a tenant has meet the condition. Without a value it asks for tenants
/// who have none.
bool NumbersMeet(const ReportCondition& condition, const std::vector<double>& numbers) {
  bool holds = numbers.empty();
  if (!condition.first.empty()) {
    const double first = qorcred::Val(condition.first);
    const double second = qorcred::Val(condition.second);
    holds = std::any_of(numbers.begin(), numbers.end(), [&](double number) {
      return NumberIs(condition.operation, number, first, second);
    });
  }
  return holds != IsNegative(condition.operation);
}

/// By whole days.
bool DateMeets(const ReportCondition& condition, const std::optional<qorcred::Date>& date) {
  const auto dayOf = [](std::string_view given) {
    return given.empty() ? 0.0 : ReadDate(report_input::kCondition, given).date.serial;
  };
  const bool holds = date && NumberIs(condition.operation, qorcred::DayOf(*date).serial,
                                      dayOf(condition.first), dayOf(condition.second));
  return holds != IsNegative(condition.operation);
}

bool YesNoMeets(const ReportCondition& condition, bool value) {
  return (value == ReadYesNo(condition.first)) == (condition.operation == 0);
}

}  // namespace

TenantConditions::TenantConditions(const std::vector<std::string>& conditions,
                                   const TenantLinks& links)
    : links_(links), fields_(FieldsWith(links)) {
  for (const std::string& condition : conditions) {
    conditions_.push_back(ReadCondition(condition, fields_));
  }
}

std::string TenantConditions::FieldNames() {
  std::vector<std::string_view> names;
  for (const NamedField& field : kFields) {
    names.push_back(field.name);
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

bool TenantConditions::AreMetBy(const TenantRow& tenant) const {
  return std::all_of(conditions_.begin(), conditions_.end(),
                     [&](const ReportCondition& condition) { return IsMet(condition, tenant); });
}

bool TenantConditions::IsMet(const ReportCondition& condition, const TenantRow& tenant) const {
  switch (condition.field) {
    case kName:
      return TextMeets(condition.operation, tenant.Name(), condition.first);
    case kNameAtUnit:
      return TextMeets(condition.operation, tenant.nameAtUnit, condition.first);
    case kGroup:
      return NumbersMeet(condition, {static_cast<double>(tenant.group)});
    case kActive:
      return YesNoMeets(condition, tenant.active);
    case kStart:
      return DateMeets(condition, tenant.start);
    case kEnd:
      return DateMeets(condition, tenant.end);
    case kResident:
      return YesNoMeets(condition, tenant.resident);
    case kCode: {
      const auto code = links_.codes.find(tenant.code);
      return NumbersMeet(condition, code == links_.codes.end() ? std::vector<double>{}
                                                               : std::vector{code->second.number});
    }
    case kCard: {
      std::vector<double> numbers;
      for (const std::int32_t rid : tenant.cards) {
        const auto card = links_.cards.find(rid);
        if (card != links_.cards.end()) {
          numbers.push_back(card->second.number);
        }
      }
      return NumbersMeet(condition, numbers);
    }
    default: {
      static_assert(kLastSchedule + 1 == kCode, "the schedules are what is left");
      const auto door = static_cast<std::size_t>(condition.field - kFirstSchedule);
      return TextMeets(condition.operation, links_.Schedule(tenant.schedules.at(door)),
                       qorcred::ReplaceAll(condition.first, "''", "'"));
    }
  }
}

}  // namespace qorhost
