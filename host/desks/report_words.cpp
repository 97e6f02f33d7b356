#include "host/desks/report_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/near_words.h"
#include "host/desks/typed_input.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using qorcred::CompareIgnoringCase;
using qorcred::Trim;

constexpr std::array kTextOperators{
    ReportOperator{"equal", "="},      ReportOperator{"does not equal", "<>"},
    ReportOperator{"begins with", ""}, ReportOperator{"does not begin with", ""},
    ReportOperator{"ends with", ""},   ReportOperator{"does not end with", ""},
    ReportOperator{"contains", ""},    ReportOperator{"does not contain", ""}};

constexpr std::array kNumberOperators{
    ReportOperator{"equal", "="},        ReportOperator{"does not equal", "<>"},
    ReportOperator{"greater than", ">"}, ReportOperator{"greater than or equal", ">="},
    ReportOperator{"less than", "<"},    ReportOperator{"less than or equal", "<="},
    ReportOperator{"between", ""},       ReportOperator{"not between", ""}};

constexpr std::size_t kComparisons = 2;  // "equal" and "does not equal"

bool StartsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() &&
         CompareIgnoringCase(text.substr(0, start.size()), start) == 0;
}

bool IsSymbolCharacter(char character) {
  return character == '=' || character == '<' || character == '>';
}

/// Whether a word that is `size` long ends there.
bool EndsWord(std::string_view text, std::size_t size) {
  return text.size() == size || text[size] == ' ' || IsSymbolCharacter(text[size]);
}

std::string Listed(const std::vector<std::string>& words) {
  return fmt::format("{}", fmt::join(words, ", "));
}

/// The field that was meant by the first words, or by a few of them; empty when none is like them.
std::string FieldLike(std::string_view where, const std::vector<std::string>& names) {
  constexpr std::size_t kMostWords = 5;  // of a field's name
  std::size_t end = 0;
  for (std::size_t words = 0; words < kMostWords && end < where.size(); ++words) {
    end = std::min(where.find_first_of(" =<>", end + 1), where.size());
    if (std::string near = MostLike(where.substr(0, end), names); !near.empty()) {
      return near;
    }
  }
  return {};
}

/// A field at the start of a text: its place and how many characters name it.
struct FoundField {
  std::int32_t place = 0;
  std::size_t size = 0;
};

FoundField FindField(std::string_view where, const std::vector<ReportField>& fields) {
  if (fields.empty()) {
    throw InputFault(report_input::kCondition, where,
                     "{field} '{value}': the store has no fields to narrow this report by: "
                     "TenantSelectionFields is empty");
  }
  FoundField found;
  for (std::size_t at = 0; at < fields.size(); ++at) {
    const auto tryName = [&](std::string_view name) {
      if (StartsWith(where, name) && EndsWord(where, name.size()) && name.size() > found.size) {
        found = {static_cast<std::int32_t>(at), name.size()};
      }
    };
    tryName(fields[at].name);
    std::for_each(fields[at].alsoCalled.begin(), fields[at].alsoCalled.end(), tryName);
  }
  if (found.size == 0) {
    std::vector<std::string> names;
    for (const ReportField& field : fields) {
      names.push_back(field.name);
    }
    const std::string near = FieldLike(where, names);
    throw InputFault(
        report_input::kCondition, where,
        fmt::format("{{field}} '{{value}}' begins with no field{}: {}",
                    near.empty() ? "" : fmt::format(", did you mean '{}'?", InReason(near)),
                    InReason(Listed(names))));
  }
  return found;
}

/// How to say what an operator that is left out would say.
std::string_view HintFor(const ReportField& field) {
  return field.kind == FieldKind::kNumber && field.leftOut > 0 ? "; for a range give two conditions"
                                                               : "";
}

/// An operator at the start of a text: its place and how many characters name it.
struct FoundOperator {
  std::int32_t place = 0;
  std::size_t size = 0;
};

FoundOperator FindOperator(std::string_view rest, const ReportField& field,
                           std::string_view where) {
  const std::span<const ReportOperator> operators = OperatorsOf(field);
  FoundOperator found;
  for (std::size_t at = 0; at < operators.size(); ++at) {
    const auto& [word, symbol] = operators[at];
    // A value may follow a symbol directly, but "<" is not the start of "<=".
    const bool bySymbol = !symbol.empty() && StartsWith(rest, symbol);
    const bool byWord =
        StartsWith(rest, word) && (rest.size() == word.size() || rest[word.size()] == ' ');
    const std::size_t size = bySymbol ? symbol.size() : byWord ? word.size() : 0;
    if (size > found.size) {
      found = {static_cast<std::int32_t>(at), size};
    }
  }
  const bool cutShort = found.size < rest.size() && found.size > 0 &&
                        IsSymbolCharacter(rest[found.size - 1]) &&
                        IsSymbolCharacter(rest[found.size]);
  if (found.size == 0 || cutShort) {
    std::vector<std::string> names;
    for (const ReportOperator& known : operators) {
      names.push_back(known.symbol.empty() ? std::string(known.word)
                                           : fmt::format("{} ({})", known.word, known.symbol));
    }
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}' has no operator that goes with '{}': {}{}",
                                 InReason(field.name), Listed(names), HintFor(field)));
  }
  return found;
}

/// Splits at the first " AND ".
void SplitRange(std::string_view values, std::string_view where, ReportCondition& condition) {
  constexpr std::string_view kAnd = " and ";
  for (std::size_t at = 0; at + kAnd.size() <= values.size(); ++at) {
    if (StartsWith(values.substr(at), kAnd)) {
      condition.first = Trim(values.substr(0, at));
      condition.second = Trim(values.substr(at + kAnd.size()));
      break;
    }
  }
  if (condition.first.empty() || condition.second.empty()) {
    throw InputFault(report_input::kCondition, where,
                     "{field} '{value}' needs two values, as in '... between 5 AND 9'");
  }
}

/// The number in digits. Controllers take the leading number of a text, round it, and leave a
/// condition without one out.
std::string ReadNumber(const ReportField& field, const std::string& given, bool mayBeEmpty,
                       std::string_view where) {
  if (given.empty() && mayBeEmpty) {
    return given;
  }
  if (given.empty()) {
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}' ends without a value: '{}' takes a number",
                                 InReason(field.name)));
  }
  const auto number = WholeNumberIn(given, field.range);
  if (!number) {
    const std::string taken = NumberTaken(given).isAll
                                  ? fmt::format("a whole number from {} to {}, in digits alone",
                                                field.range.lowest, field.range.highest)
                                  : "a number";
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}': '{}' takes {}, and '{}' is none",
                                 InReason(field.name), taken, InReason(given)));
  }
  return std::to_string(*number);
}

void RequireOrder(bool inOrder, std::string_view where) {
  if (!inOrder) {
    throw InputFault(report_input::kCondition, where,
                     "{field} '{value}': the first value of a range must not be above the second");
  }
}

void ReadNumbers(const ReportField& field, bool mayBeEmpty, std::string_view where,
                 ReportCondition& condition) {
  condition.first = ReadNumber(field, condition.first, mayBeEmpty, where);
  if (!condition.second.empty()) {
    condition.second = ReadNumber(field, condition.second, false, where);
    RequireOrder(
        WholeNumberIn(condition.first, field.range) <= WholeNumberIn(condition.second, field.range),
        where);
  }
}

/// Other operators without a value find what nobody means.
void CheckText(bool isEmpty, bool comparesEquality, std::string_view where) {
  if (isEmpty && !comparesEquality) {
    throw InputFault(report_input::kCondition, where,
                     "{field} '{value}' ends without a text to look for; 'equal' without one finds "
                     "the rows that have none");
  }
}

/// The report compares ids of schedules that it finds by name: with a name that is none it finds
/// nothing, or everything.
void CheckSchedule(const ReportField& field, const std::string& given, bool comparesEquality,
                   std::string_view where) {
  if (given.empty() && field.mayBeUnset && comparesEquality) {
    return;
  }
  if (given.empty()) {
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}' ends without a value: '{}' takes the name "
                                 "of a schedule",
                                 InReason(field.name)));
  }
  const std::string name = qorcred::ReplaceAll(given, "''", "'");
  const bool known = std::any_of(field.names.begin(), field.names.end(), [&](const auto& one) {
    return CompareIgnoringCase(one, name) == 0;
  });
  if (comparesEquality && !known && !field.switchedBy.empty() &&
      CompareIgnoringCase(given, kNoneEntry) == 0) {
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}': the report finds schedules by their names "
                                 "alone; rows without one have '{} = no'",
                                 InReason(field.switchedBy)));
  }
  if (comparesEquality && !known) {
    const std::string names = field.names.empty() ? "the unit has none" : Listed(field.names);
    throw InputFault(report_input::kCondition, where,
                     fmt::format("{{field}} '{{value}}': '{}' is none of the unit's schedules: {}",
                                 InReason(name), InReason(names)));
  }
}

qorcred::Date ReadDay(const ReportField& field, std::string_view given) {
  const GivenDate date = ReadMoment(report_input::kCondition, given, field.clock);
  if (date.hasTime && !field.takesTimes) {
    throw InputFault(report_input::kCondition, given,
                     "{field} '{value}': the report compares whole days, leave the time out");
  }
  return date.date;
}

void CheckDays(const ReportField& field, bool comparesEquality, std::string_view where,
               const ReportCondition& condition) {
  if (condition.first.empty() && field.mayBeUnset && comparesEquality) {
    return;
  }
  const qorcred::Date first = ReadDay(field, condition.first);
  if (!condition.second.empty()) {
    RequireOrder(first.serial <= ReadDay(field, condition.second).serial, where);
  }
}

/// Yes or no in one of its spellings, or in the words that the rows have for them.
void ReadYesNoWords(const ReportField& field, bool comparesEquality, ReportCondition& condition) {
  if (condition.first.empty() && field.mayBeUnset && comparesEquality) {
    return;
  }
  for (const auto& [word, plain] :
       {std::pair(field.yesWord, "yes"), std::pair(field.noWord, "no")}) {
    if (!word.empty() && CompareIgnoringCase(word, condition.first) == 0) {
      condition.first = plain;
    }
  }
  (void)ReadYesNo(condition.first);
}

/// What the rows say where there is nothing asks for nothing.
void ReadUnsetWord(const ReportField& field, bool comparesEquality, ReportCondition& condition) {
  if (comparesEquality && !field.unsetWord.empty() &&
      CompareIgnoringCase(field.unsetWord, condition.first) == 0) {
    condition.first.clear();
  }
}

/// The values as the field takes them.
void CheckValues(const ReportField& field, bool comparesEquality, std::string_view where,
                 ReportCondition& condition) {
  switch (field.kind) {
    case FieldKind::kText:
      ReadUnsetWord(field, comparesEquality, condition);
      return CheckText(condition.first.empty(), comparesEquality, where);
    case FieldKind::kNumber:
    case FieldKind::kNumberText:
      return ReadNumbers(field, field.mayBeUnset && comparesEquality, where, condition);
    case FieldKind::kSchedule:
      return CheckSchedule(field, condition.first, comparesEquality, where);
    case FieldKind::kDate:
      return CheckDays(field, comparesEquality, where, condition);
    case FieldKind::kYesNo:
    case FieldKind::kYesNoText:
      return ReadYesNoWords(field, comparesEquality, condition);
    case FieldKind::kOther:
    case FieldKind::kCredentialType:
      return;
  }
}

}  // namespace

std::span<const ReportOperator> OperatorsFor(FieldKind kind) {
  switch (kind) {
    case FieldKind::kText:
    case FieldKind::kNumberText:
    case FieldKind::kSchedule:
      return kTextOperators;
    case FieldKind::kNumber:
    case FieldKind::kDate:
      return kNumberOperators;
    case FieldKind::kYesNo:
    case FieldKind::kYesNoText:
    case FieldKind::kOther:
    case FieldKind::kCredentialType:
      return std::span(kTextOperators).first(kComparisons);
  }
  return {};
}

bool ReadYesNo(std::string_view given) {
  const std::optional<bool> yes = YesOrNo(given);
  if (!yes) {
    throw InputFault(report_input::kCondition, given, "{field}: '{value}' is neither yes nor no");
  }
  return *yes;
}

const CredentialTypeWords& ReadCredentialType(std::string_view given) {
  const CredentialTypeWords* found = FindCredentialType(CredentialTypes(), given);
  if (found == nullptr) {
    std::vector<std::string> names;
    for (const CredentialTypeWords& known : CredentialTypes()) {
      names.push_back(fmt::format("{} ({})", TypeNameOf(known.type), known.word));
    }
    throw InputFault(
        report_input::kCondition, given,
        fmt::format("{{field}}: '{{value}}' is no credential type: {}", fmt::join(names, ", ")));
  }
  return *found;
}

std::span<const ReportOperator> OperatorsOf(const ReportField& field) {
  const std::span<const ReportOperator> operators = OperatorsFor(field.kind);
  return operators.first(operators.size() - field.leftOut);
}

ReportCondition ReadCondition(std::string_view where, const std::vector<ReportField>& fields) {
  const std::string_view trimmed = Trim(where);
  ReportCondition condition;
  const FoundField named = FindField(trimmed, fields);
  condition.field = named.place;
  const ReportField& field = fields[static_cast<std::size_t>(condition.field)];

  const std::string_view rest = Trim(trimmed.substr(named.size));
  const FoundOperator found = FindOperator(rest, field, trimmed);
  condition.operation = found.place;
  const std::string_view values = Trim(rest.substr(found.size));
  if (OperatorsFor(field.kind)[static_cast<std::size_t>(found.place)].IsRange()) {
    SplitRange(values, trimmed, condition);
  } else {
    condition.first = values;
  }

  CheckValues(field, found.place < static_cast<std::int32_t>(kComparisons), trimmed, condition);
  return condition;
}

}  // namespace qorhost
