// Dates in the cells of a spreadsheet, whose order somebody has to say.
#include "host/desks/sheet_dates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/desks/input_fault.h"

namespace qorhost {
namespace {

struct DateCase {
  const char* cell;
  DateOrder order;
  const char* read;
};

TEST(SheetDates, AreReadInTheOrderOfTheSheet) {
  for (const DateCase& one : std::vector<DateCase>{
           {"15.01.2026", DateOrder::kDayFirst, "2026-01-15"},
           {"5.1.26", DateOrder::kDayFirst, "2026-01-05"},
           {"15. 1. 2026", DateOrder::kDayFirst, "2026-01-15"},
           {" 03/04/2026 ", DateOrder::kDayFirst, "2026-04-03"},
           {"03-04-2026 18:00", DateOrder::kDayFirst, "2026-04-03 18:00"},
           {"31.12.29", DateOrder::kDayFirst, "2029-12-31"},
           {"01.01.30", DateOrder::kDayFirst, "1930-01-01"},
           {"03/04/2026", DateOrder::kMonthFirst, "2026-03-04"},
           {"01.15.2026", DateOrder::kMonthFirst, "2026-01-15"},
           {"2026/01/15", DateOrder::kYearFirst, "2026-01-15"},
           {"26.1.5", DateOrder::kYearFirst, "2026-01-05"},
           {"29.02.2028", DateOrder::kDayFirst, "2028-02-29"},
       }) {
    EXPECT_EQ(DateInCell("first day", one.cell, {one.order}), one.read) << one.cell;
  }
}

TEST(SheetDates, ThatTellTheirOrderStayAsTheyAre) {
  for (const DateOrder order : {DateOrder::kAsTyped, DateOrder::kUnsaid, DateOrder::kDayFirst,
                                DateOrder::kMonthFirst, DateOrder::kYearFirst}) {
    for (const char* cell : {"2026-12-31", "2026-12-31T18:00", "2026-12-31 18:00", "31 Dec 2026",
                             "05 Mar 2024 14:30", "none"}) {
      EXPECT_EQ(DateInCell("first day", cell, {order}), cell) << cell;
    }
  }
}

TEST(SheetDates, AreLeftToWhoeverReadsTypedOnes) {
  for (const char* cell : {"12/31/2026", "31.12.2026", "soon"}) {
    EXPECT_EQ(DateInCell("first day", cell, {}), cell);
  }
}

struct FaultCase {
  const char* cell;
  DateOrder order;
  const char* told;
};

TEST(SheetDates, AreRefusedWithTheWayToSayTheirOrder) {
  for (
      const FaultCase& one : std::vector<FaultCase>{
          {"03/04/2026", DateOrder::kUnsaid,
           "first day '03/04/2026' does not tell in which order day, month and year stand: say it"},
          {"15.01.2026", DateOrder::kUnsaid,
           "first day '15.01.2026' does not tell in which order day, month and year stand: say it"},
          {"2026/01/15", DateOrder::kUnsaid,
           "first day '2026/01/15' does not tell in which order day, month and year stand: say it"},
          {"31.12.2026", DateOrder::kMonthFirst,
           "first day '31.12.2026' is no date in the order month, day, year: write it so, or as "
           "2026-12-31"},
          {"29.02.2026", DateOrder::kDayFirst,
           "first day '29.02.2026' is no date in the order day, month, year: write it so, or as "
           "2026-12-31"},
          {"2026.01.15", DateOrder::kDayFirst,
           "first day '2026.01.15' is no date in the order day, month, year: write it so, or as "
           "2026-12-31"},
          {"1.2.203", DateOrder::kDayFirst, ""},
          {"15.01.2026", DateOrder::kYearFirst, ""},
          {"1.2.3", DateOrder::kDayFirst, ""},
          {"15.01/2026", DateOrder::kDayFirst,
           "first day '15.01/2026' is no date: write it as 2026-12-31 or 31 Dec 2026, with a time "
           "as in '2026-12-31 18:00'"},
          {"15.01.2026x", DateOrder::kDayFirst, ""},
          {"15.01.", DateOrder::kDayFirst, ""},
          {"46037", DateOrder::kDayFirst, ""},
          {"2026-02-30", DateOrder::kDayFirst, ""},
          {"{value}", DateOrder::kDayFirst, ""},
          {"soon", DateOrder::kUnsaid, ""},
      }) {
    try {
      ADD_FAILURE() << one.cell << ": " << DateInCell("first day", one.cell, {one.order, "say it"});
    } catch (const InputFault& fault) {
      EXPECT_EQ(fault.field(), "first day");
      EXPECT_EQ(fault.value(), one.cell);
      if (*one.told != '\0') {
        EXPECT_EQ(std::string(fault.what()), one.told);
      }
    }
  }
}

}  // namespace
}  // namespace qorhost
