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

// Columns that go over as the text of their value.
struct Same {
  Place place;
  unit_column::Column column;
};
constexpr Same kSame[] = {{kPhone, unit_column::kPhone},
                          {kExtension, unit_column::kExtension},
                          {kTimeDelay, unit_column::kTimeDelay},
                          {kDndSchedule, unit_column::kDndSchedule},
                          {kCfSchedule, unit_column::kCfSchedule},
                          {kCfPhone, unit_column::kCfPhone},
                          {kCfExtension, unit_column::kCfExtension},
                          {kCfTimeDelay, unit_column::kCfTimeDelay},
                          {kDisplayName, unit_column::kDisplayName}};
constexpr Same kFlags[] = {{kActive, unit_column::kActive},
                           {kIsDndChecked, unit_column::kIsDndChecked},
                           {kIsCfChecked, unit_column::kIsCfChecked}};

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

std::string SelectOfCodes(std::string_view columns, std::int32_t unitKey) {
  return fmt::format("SELECT {} FROM DIRECTORYCODE WHERE UNITKEY={} AND DIRECTORYCODE>=0", columns,
                     unitKey);
}

bool IsSet(const Value& flag) {
  return !qorcred::IsEmptyText(flag) && qorcred::ToBoolean(flag);
}

RowReading CodeFromRow(const qorcred::TableView& rows, std::int32_t row, std::int32_t firstColumn) {
  const auto cell = [&](unit_column::Column column) {
    return rows.Cell(row, firstColumn + column);
  };
  RowReading reading;
  UnitCode& code = reading.code;

  const double number = qorcred::NumericValue(cell(unit_column::kCode));
  if (number < 0 || number > static_cast<double>(kLargestUnitCode) ||
      number != std::trunc(number)) {
    reading.obstacle = "its code is no whole number of up to 15 digits";
    return reading;
  }
  code[kCode] = CodeText(number);
  for (const Same& same : kSame) code[same.place] = qorcred::TextOrEmpty(cell(same.column));
  for (const Same& flag : kFlags) code[flag.place] = IsSet(cell(flag.column)) ? "1" : "0";

  reading.obstacle = PutDate(code, kStartDateUsed, kStartDate, kStartTime,
                             cell(unit_column::kStartDate), "start date");
  if (!reading.obstacle.empty()) return reading;
  reading.obstacle =
      PutDate(code, kEndDateUsed, kEndDate, kEndTime, cell(unit_column::kEndDate), "end date");
  if (!reading.obstacle.empty()) return reading;

  const Value showsName = cell(unit_column::kShowDisplayName);
  const Value showsCode = cell(unit_column::kShowDirectoryCode);
  // Rows of units without display options have neither.
  if (!qorcred::IsEmptyText(showsName) || !qorcred::IsEmptyText(showsCode)) {
    code[kDisplayMode] = ModeOf(IsSet(showsName), IsSet(showsCode));
  }
  reading.obstacle = FaultIn(code);
  if (reading.obstacle.empty()) MakeCanonical(code);
  return reading;
}

}  // namespace qorhost
