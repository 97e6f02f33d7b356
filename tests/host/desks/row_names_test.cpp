// Rows as people name them, and what is told of a name that is none.
#include "host/desks/row_names.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "host/desks/input_fault.h"
#include "host/desks/report_words.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

constexpr std::string_view kField = "credential";

/// What is told of a fault; "" when there is none.
std::string FaultIn(const std::function<void()>& work) {
  try {
    work();
  } catch (const InputFault& fault) {
    return fault.what();
  }
  return "";
}

TEST(RowNamed, IsTheRowOfAnIdentity) {
  EXPECT_EQ(RowNamed(kField, "rid:17"), 17);
  EXPECT_EQ(RowNamed(kField, "RID:-3"), -3);
  EXPECT_EQ(RowNamed(kField, "17"), std::nullopt);
  EXPECT_EQ(RowNamed(kField, "ri"), std::nullopt);
  EXPECT_EQ(FaultIn([] { (void)RowNamed(kField, "rid:"); }),
            "the row '' is none: a row is named by its RID, as in rid:17");
  EXPECT_EQ(FaultIn([] { (void)RowNamed(kField, "rid:4294967296"); }),
            "the row '4294967296' is none: a row is named by its RID, as in rid:17");
}

TEST(GivenRids, AreWholeNumbersWithCommasBetween) {
  EXPECT_EQ(GivenRids("17").count(), 1U);
  EXPECT_EQ(GivenRids("17,18,21").count(), 3U);
  EXPECT_EQ(GivenRids("17,18,21").text(), "17,18,21");
  for (const char* given :
       {"", ",", "17,", ",17", "1,,2", "17;18", "1 7", "-1", "x", "1.5", "1 OR 1=1", "0x1", "1, 2",
        "1)--", "2147483648", "99999999999", "select"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)GivenRids(given); }), report_input::kRids) << given;
  }
}

TEST(GivenRids, AreNamedBehindAPrefixAlone) {
  EXPECT_EQ(GivenRids::Named("rid:17,18").text(), "17,18");
  EXPECT_EQ(GivenRids::Named("RID:17").count(), 1U);
  for (const char* bare : {"17", "17,18", "rid", " rid:17", ""}) {
    EXPECT_NE(FaultIn([&] { (void)GivenRids::Named(bare); }).find("a bare number is the number on"),
              std::string::npos)
        << bare;
  }
  EXPECT_EQ(FaultIn([] { (void)GivenRids::Named("rid:17;18"); }),
            "RIDs '17;18' must be RIDs of the report with commas between them, as in 17,18,21");
}

}  // namespace
}  // namespace qorhost::test
