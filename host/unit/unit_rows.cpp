#include "host/unit/unit_rows.h"

#include <fmt/format.h>

#include <cmath>

#include "frame/convert.h"
#include "frame/date.h"

namespace qorhost {

namespace {

using qorcred::Value;
using qorcred::unit_place::Place;
using namespace qorcred::unit_place;  // the places

enum Column : std::int32_t {
  kColumnCode,
  kColumnPhone,
  kColumnExtension,
  kColumnTimeDelay,
  kColumnDndSchedule,
  kColumnIsDndChecked,
  kColumnCfSchedule,
  kColumnIsCfChecked,
  kColumnCfPhone,
  kColumnCfExtension,
  kColumnCfTimeDelay,
  kColumnActive,
  kColumnStartDate,
  kColumnEndDate,
  kColumnDisplayName,
  kColumnShowDisplayName,
  kColumnShowDirectoryCode,
};

// Columns that go over as the text of their value.
struct Same {
  Place place;
  Column column;
};
constexpr Same kSame[] = {{kPhone, kColumnPhone},
                          {kExtension, kColumnExtension},
                          {kTimeDelay, kColumnTimeDelay},
                          {kDndSchedule, kColumnDndSchedule},
                          {kCfSchedule, kColumnCfSchedule},
                          {kCfPhone, kColumnCfPhone},
                          {kCfExtension, kColumnCfExtension},
                          {kCfTimeDelay, kColumnCfTimeDelay},
                          {kDisplayName, kColumnDisplayName}};
constexpr Same kFlags[] = {{kActive, kColumnActive},
                           {kIsDndChecked, kColumnIsDndChecked},
                           {kIsCfChecked, kColumnIsCfChecked}};

bool IsSet(const Value& flag) {
  return !qorcred::IsEmptyText(flag) && qorcred::ToBoolean(flag);
}

std::string CodeText(double code) {
  return fmt::format("{:.0f}", code);
}

// Writes a date and whether it is in use; tells when the unit's notation has no such year.
std::string PutDate(UnitCode& code, Place used, Place date, Place time, const Value& cell,
                    std::string_view name) {
  if (qorcred::IsEmptyText(cell)) {
    code[used] = "0";
    return {};
  }
  const qorcred::CivilTime civil = qorcred::ToCivil(qorcred::ToDate(cell));
  if (civil.year < 2000 || civil.year > 2099) {
    return fmt::format("its {} lies in the year {}, and a unit knows 2000 to 2099", name,
                       civil.year);
  }
  code[used] = "1";
  code[date] = fmt::format("{:02}{:02}{:02}", civil.year - 2000, civil.month, civil.day);
  code[time] = fmt::format("{:02}{:02}", civil.hour, civil.minute);
  return {};
}

std::string_view ModeOf(bool showsName, bool showsCode) {
  if (showsName) return showsCode ? "0" : "1";
  return showsCode ? "2" : "3";
}

}  // namespace

RowReading CodeFromRow(const qorcred::TableView& rows, std::int32_t row, std::int32_t firstColumn) {
  const auto cell = [&](Column column) { return rows.Cell(row, firstColumn + column); };
  RowReading reading;
  UnitCode& code = reading.code;

  const double number = qorcred::NumericValue(cell(kColumnCode));
  if (number < 0 || number > static_cast<double>(kLargestUnitCode) ||
      number != std::trunc(number)) {
    reading.obstacle = "its code is no whole number of up to 15 digits";
    return reading;
  }
  code[kCode] = CodeText(number);
  for (const Same& same : kSame) code[same.place] = qorcred::TextOrEmpty(cell(same.column));
  for (const Same& flag : kFlags) code[flag.place] = IsSet(cell(flag.column)) ? "1" : "0";

  reading.obstacle =
      PutDate(code, kStartDateUsed, kStartDate, kStartTime, cell(kColumnStartDate), "start date");
  if (!reading.obstacle.empty()) return reading;
  reading.obstacle =
      PutDate(code, kEndDateUsed, kEndDate, kEndTime, cell(kColumnEndDate), "end date");
  if (!reading.obstacle.empty()) return reading;

  const Value showsName = cell(kColumnShowDisplayName);
  const Value showsCode = cell(kColumnShowDirectoryCode);
  // Rows of units without display options have neither.
  if (!qorcred::IsEmptyText(showsName) || !qorcred::IsEmptyText(showsCode)) {
    code[kDisplayMode] = ModeOf(IsSet(showsName), IsSet(showsCode));
  }
  reading.obstacle = FaultIn(code);
  if (reading.obstacle.empty()) MakeCanonical(code);
  return reading;
}

}  // namespace qorhost
