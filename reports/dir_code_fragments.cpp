#include "reports/dir_code_fragments.h"

#include <array>
#include <cstddef>

#include "frame/sql_text.h"

namespace qorcred {

namespace {

// A condition's text for a row with a value and for one without. Letters in braces stand for the
// terms; see ConditionTerms.
struct Fragment {
  std::string_view withValue;
  std::string_view withoutValue;

  constexpr Fragment(std::string_view any) : withValue(any), withoutValue(any) {}
  constexpr Fragment(std::string_view given, std::string_view missing)
      : withValue(given), withoutValue(missing) {}
};

constexpr std::size_t kOperations = 8;
using Fragments = std::array<Fragment, kOperations>;

constexpr Fragment kNone{""};

// Blanks, letter case and what is missing differ from text to text: hosts rely on all of it.

constexpr Fragments kText{
    Fragment{" AND {C} IN ('{V}')", " AND ({C} IN ('') OR {C} IS NULL )"},
    Fragment{" AND {C} NOT IN ('{V}') "},
    Fragment{" AND {C} LIKE '{V}%' ", " AND ({C} = '' OR {C} is NULL) "},
    Fragment{" AND DirectoryCode.DirectoryCode NOT IN (SELECT DirectoryCode FROM DirectoryCode "
             "WHERE UnitKey = {U} AND {C} LIKE '{V}%') ",
             " AND ({C} <> '' OR {C} is not NULL) "},
    Fragment{" AND {C} LIKE '%{V}' ", " AND ({C} = '' or {C} is NULL) "},
    Fragment{" AND DirectoryCode.DirectoryCode NOT IN (SELECT DirectoryCode FROM DirectoryCode "
             "WHERE UnitKey = {U} AND {C} LIKE '%{V}') ",
             " AND ({C} <> '' OR {C} is not NULL) "},
    Fragment{" AND {C} LIKE '%{V}%' ", " AND ({C} = '' OR {C} is NULL) "},
    Fragment{" AND {C} NOT LIKE '%{V}%' ", " AND ({C} <> '' OR {C} is NOT NULL) "},
};

// There is none for a range of numbers.
constexpr Fragments kNumber{
    Fragment{" AND {C} IN ({V}) ", " AND {C} IS NULL "},
    Fragment{" AND {C} NOT IN ({V}) ", " AND {C} IS NOT NULL "},
    Fragment{" AND {C} > ({V}) "},
    Fragment{" AND {C} >= ({V}) "},
    Fragment{" AND {C} < ({V}) "},
    Fragment{" AND {C} <= ({V}) "},
    kNone,
    kNone,
};

constexpr Fragments kYesNo{
    Fragment{" AND {C} = {B} "},
    Fragment{" AND {C} <> {B} "},
    kNone,
    kNone,
    kNone,
    kNone,
    kNone,
    kNone,
};

constexpr Fragments kSchedule{
    Fragment{" AND {C} IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND ScheduleName "
             "= '{V}') "},
    Fragment{" AND {C} NOT IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND "
             "ScheduleName = '{V}') "},
    Fragment{" AND {C} IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND ScheduleName "
             "LIKE '{V}%') "},
    Fragment{" AND {C} NOT IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND "
             "ScheduleName LIKE '{V}%') "},
    Fragment{" AND {C} IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND ScheduleName "
             "LIKE '%{V}') "},
    Fragment{" AND {C} NOT IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND "
             "ScheduleName LIKE '%{V}') "},
    Fragment{" AND {C} IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND ScheduleName "
             "LIKE '%{V}%') "},
    Fragment{" AND {C} NOT IN ( SELECT ScheduleID from Schedules WHERE UnitKey = {U} AND "
             "ScheduleName LIKE '%{V}%') "},
};

constexpr Fragments kDate{
    Fragment{" AND Format({C}, 'DD MM YYYY')  = '{D}' "},
    Fragment{" AND Format({C}, 'DD MM YYYY')  <> '{D}' "},
    Fragment{" AND {C} > #{F} 23:59:59# "},
    Fragment{" AND {C} >= #{F}# "},
    Fragment{" AND {C} < #{F}# "},
    Fragment{" AND {C} <= #{F} 23:59:59# "},
    Fragment{" AND ( ({C} >= #{F}#) AND ( {C} <= #{T}# ))"},
    Fragment{" AND DirectoryCode NOT IN ( SELECT DirectoryCode FROM DirectoryCode Where UnitKey = "
             "{U} AND (({C} >= #{F}#) AND ( {C} <= #{T}# )))"},
};

constexpr Fragments kOther{
    kText[0], kText[1], kNone, kNone, kNone, kNone, kNone, kNone,
};

// "Does not begin with" of these fields picks schedules that begin with the value.
constexpr Fragments kLastFields{
    kText[0], kText[1], kNone, kSchedule[2], kNone, kNone, kNone, kNone,
};

// "Does not contain" of the display name asks for schedules.
constexpr Fragments kDisplayName{
    kText[0], kText[1], kText[2], kText[3], kText[4], kText[5], kText[6], kSchedule[7],
};

// Compared as a number, but searched as a text: without a value for the text NULL.
constexpr Fragments kCfTimeDelay{
    kNumber[0],
    kNumber[1],
    Fragment{kText[2].withValue},
    Fragment{kText[3].withValue},
    Fragment{kText[4].withValue},
    Fragment{kText[5].withValue},
    Fragment{kText[6].withValue},
    Fragment{kText[7].withValue},
};

const Fragments& FragmentsOf(std::int16_t field) {
  switch (field) {
    case report_field::kPhoneNumber:
    case report_field::kExtension:
    case report_field::kCfPhoneNumber:
    case report_field::kCfExtension:
      return kText;
    case report_field::kDisplayName:
      return kDisplayName;
    case report_field::kDirectoryCode:
    case report_field::kTimeDelay:
      return kNumber;
    case report_field::kCfTimeDelay:
      return kCfTimeDelay;
    case report_field::kIsDndChecked:
    case report_field::kIsCfChecked:
    case report_field::kActive:
      return kYesNo;
    case report_field::kDndSchedule:
    case report_field::kCfSchedule:
      return kSchedule;
    case report_field::kStartDate:
    case report_field::kEndDate:
      return kDate;
    default:
      return field >= report_field::kShowDisplayName && field <= report_field::kLast ? kLastFields
                                                                                     : kOther;
  }
}

void AppendTerm(std::string& text, char letter, const ConditionTerms& terms) {
  switch (letter) {
    case 'C':
      text += terms.column;
      break;
    case 'V':
      text += terms.value;
      break;
    case 'B':
      text += terms.answer;
      break;
    case 'F':
      text += terms.from;
      break;
    case 'T':
      text += terms.to;
      break;
    case 'D':
      text += terms.fromDay;
      break;
    default:
      text += Concat(terms.unitKey);
      break;
  }
}

// Replaces the letters in braces from left to right; what a term holds is not looked at again.
std::string Fill(std::string_view fragment, const ConditionTerms& terms) {
  std::string text;
  for (std::size_t brace = fragment.find('{'); brace != std::string_view::npos;
       brace = fragment.find('{')) {
    text += fragment.substr(0, brace);
    AppendTerm(text, fragment[brace + 1], terms);
    fragment.remove_prefix(brace + 3);
  }
  text += fragment;
  return text;
}

}  // namespace

bool HasNumberValues(std::int16_t field) noexcept {
  return field == report_field::kDirectoryCode || field == report_field::kTimeDelay ||
         field == report_field::kCfTimeDelay;
}

std::string ConditionFor(std::int16_t field, std::int32_t operation, const ConditionTerms& terms) {
  if (operation < 0 || operation >= static_cast<std::int32_t>(kOperations)) return {};
  const Fragment& fragment = FragmentsOf(field)[static_cast<std::size_t>(operation)];
  const std::string_view nothing = HasNumberValues(field) ? kNoNumber : std::string_view();
  return Fill(terms.value == nothing ? fragment.withoutValue : fragment.withValue, terms);
}

}  // namespace qorcred
