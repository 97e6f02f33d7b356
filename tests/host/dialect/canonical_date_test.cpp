#include "host/dialect/canonical_date.h"

#include <gtest/gtest.h>

#include "frame/date.h"

namespace qorhost::dialect::test {
namespace {

TEST(CanonicalDateTest, ReadsWhatItWrites) {
  for (const char* text : {"2026-01-31 14:05:09", "0100-01-01 00:00:00", "9999-12-31 23:59:59",
                           "1899-12-30 00:00:00", "1899-12-29 06:00:00", "2024-02-29 23:59:59"}) {
    const auto date = FromCanonicalDate(text);
    ASSERT_TRUE(date) << text;
    EXPECT_EQ(CanonicalDate(*date), text);
  }
}

TEST(CanonicalDateTest, RefusesEverythingElse) {
  for (const char* text :
       {"", "2026-01-31", "2026-01-31T14:05:09", "2026-02-29 00:00:00", "2026-13-01 00:00:00",
        "2026-00-15 00:00:00", "2026-01-00 00:00:00", "2026-04-31 00:00:00", "2026-01-32 00:00:00",
        "2026-01-15 24:00:00", "2026-01-15 23:60:00", "2026-01-15 23:59:60", "0099-01-15 00:00:00",
        "2026-01-31 24:00:00", "2026-01-31 14:05:60", "2026-1-31 14:05:09", "0099-12-31 00:00:00",
        "2026-01-31 14:05:09 ", "x026-01-31 14:05:09"}) {
    EXPECT_FALSE(FromCanonicalDate(text)) << text;
  }
}

TEST(CanonicalDateTest, SerialDaysHaveBounds) {
  EXPECT_EQ(CanonicalDate(DateFromSerial(-657434.0).value()), "0100-01-01 00:00:00");
  EXPECT_FALSE(DateFromSerial(-657435.0));
  EXPECT_EQ(CanonicalDate(DateFromSerial(2958465.0).value()), "9999-12-31 00:00:00");
  EXPECT_FALSE(DateFromSerial(2958466.0));
}

}  // namespace
}  // namespace qorhost::dialect::test
