// The words in which an operator narrows a report: "FIELD OPERATOR VALUE [AND VALUE2]".
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/credential_types.h"
#include "host/desks/local_time.h"
#include "host/desks/whole_number.h"

namespace qorhost {

/// What a condition is called in an InputFault.
namespace report_input {
inline constexpr std::string_view kCondition = "condition";
inline constexpr std::string_view kRids = "RIDs";
}  // namespace report_input

/// What a field's values are, and with it which operators go with the field.
enum class FieldKind : std::uint8_t {
  kText,
  kNumber,
  kNumberText,  ///< a number, searched as a text
  kSchedule,    ///< the name of a schedule
  kDate,
  kYesNo,
  kYesNoText,  ///< yes or no, compared as a text
  kOther,      ///< a field that the report only compares
  kCredentialType,
};

/// A field by its name on the screen; its place in the list of fields is that in `cboField`.
struct ReportField {
  std::string name;
  FieldKind kind = FieldKind::kText;
  std::size_t leftOut = 0;  ///< operators at the end of the kind's list that do not narrow by it
  bool mayBeUnset = false;  ///< of all but texts: whether (un)equal without a value asks for rows
                            ///< without
  NumberRange range{};      ///< of numbers
  std::vector<std::string> names{};       ///< of schedules: those that the report finds
  std::vector<std::string> alsoCalled{};  ///< other names of it
  std::string unsetWord{};  ///< of texts: what the rows say where there is none, or ""
  std::string yesWord{};    ///< of yes or no: what the rows say instead, or ""
  std::string noWord{};
  std::string switchedBy{};  ///< of schedules: the field that says whether there is one, or ""
  bool takesTimes = false;   ///< of dates: whether a time may be given, else whole days alone
  TimeOf clock = TimeOf::kCalendar;  ///< of dates: of a moment its offset may be given
};

/// An operator by its word in `cboFilter`; its place in the list of operators is that in
/// `cboFilter`. `symbol` is "" when there is none.
struct ReportOperator {
  std::string_view word;
  std::string_view symbol;

  /// Whether it stands between two values.
  [[nodiscard]] bool IsRange() const { return word.find("between") != std::string_view::npos; }
};

[[nodiscard]] std::span<const ReportOperator> OperatorsFor(FieldKind kind);
/// The same without those that do not go with the field itself.
[[nodiscard]] std::span<const ReportOperator> OperatorsOf(const ReportField& field);

/// One condition, with places in the lists. Values are trimmed and are what the field takes: a
/// number in digits, a date, yes or no, a schedule's name, a text. Only a text may be empty, and an
/// unset number, both with (un)equal. The first value of a range is not above the second.
struct ReportCondition {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  std::string first;
  std::string second;  ///< of a range
};

/// Reads a condition; letter case of field and operator does not count, the longest name wins.
/// Raises InputFault that lists the fields, or the operators that go with the field.
[[nodiscard]] ReportCondition ReadCondition(std::string_view where,
                                            const std::vector<ReportField>& fields);

/// Yes or no in one of its spellings. Raises InputFault for anything else.
[[nodiscard]] bool ReadYesNo(std::string_view given);

/// A type by any of its names. Raises InputFault that lists them.
[[nodiscard]] const CredentialTypeWords& ReadCredentialType(std::string_view given);

}  // namespace qorhost
