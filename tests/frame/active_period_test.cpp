#include "frame/active_period.h"

#include <gtest/gtest.h>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

Date At(int day, int hour, int minute, int second) {
  return FromCivil({2026, 11, day, hour, minute, second});
}

TEST(ActivePeriodTest, IsMeasuredInWholeMinutes) {
  const struct {
    const char* name;
    Value start;
    Value end;
    bool withoutLength;
  } rows[] = {
      {"WithinAMinute", At(21, 10, 0, 5), At(21, 10, 0, 50), true},
      {"Same", At(21, 10, 0, 0), At(21, 10, 0, 0), true},
      {"OverAMinutesBound", At(21, 10, 0, 59), At(21, 10, 1, 0), false},
      {"EndOneMinuteBefore", At(21, 10, 1, 0), At(21, 10, 0, 0), true},
      {"NextDay", At(21, 23, 59, 59), At(22, 0, 0, 0), false},
      {"NoStart", Null{}, At(21, 10, 0, 0), false},
      {"NoEnd", At(21, 10, 0, 0), Null{}, false},
      {"EmptyTextForEnd", At(21, 10, 0, 0), "", false},
      {"Texts", "11/21/2026 10:00:05 AM", "11/21/2026 10:00:50 AM", true},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(IsPeriodWithoutLength(row.start, row.end), row.withoutLength);
  });
}

TEST(ActivePeriodTest, TextThatIsNoDateIsRaised) {
  EXPECT_THROW(static_cast<void>(IsPeriodWithoutLength("soon", At(21, 10, 0, 0))), RuntimeError);
}

TEST(ActivePeriodTest, LastDayStaysWithinTheLatest) {
  const Date from = At(21, 10, 0, 0);
  const Date latest = FromCivil({2026, 11, 30, 0, 0, 0});
  const struct {
    const char* name;
    double days;
    Date expected;
  } rows[] = {
      {"NoDays", 0, from},
      {"OneDayLess", 8, At(29, 10, 0, 0)},
      {"TheLatestDay", 9, latest},
      {"OneDayMore", 10, latest},
      {"BeyondTheCalendar", 9'000'000, latest},
      {"Backwards", -1, At(20, 10, 0, 0)},
  };
  ForEachRow(rows, [&](const auto& row) {
    EXPECT_EQ(LastActiveDay(from, row.days, latest), row.expected);
  });
}

}  // namespace
}  // namespace qorcred
