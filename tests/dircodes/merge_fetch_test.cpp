// The store's side of the comparison with a unit, and the link kept alive while it is fetched.
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::ObjectRef;
using qorcred::Value;

constexpr std::string_view kCodesFirst =
    "ExecuteSelect \"SELECT UNITKEY,RID,DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND "
    "DIRECTORYCODE >=0 ORDER BY DIRECTORYCODE\"";
constexpr std::string_view kPreviousCodes =
    "ExecuteSelect \"SELECT UNITKEY,RID,OLDDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND "
    "DIRECTORYCODE >=0 AND OLDDIRECTORYCODE<> NULL  ORDER BY OLDDIRECTORYCODE\"";

class DirCodeFetch : public DirCodeTest {
 protected:
  void Current(std::vector<Row> rows) {
    Database().Select("DIRECTORYCODE >=0 ORDER BY", std::move(rows));
  }
  void Previous(std::vector<Row> rows) {
    Database().Select("OLDDIRECTORYCODE<> NULL", std::move(rows));
  }
  /// What the clock shows, in seconds after its start.
  void Clock(std::initializer_list<int> seconds, qorcred::CivilTime start = {2026, 11, 21, 10, 0}) {
    for (const int second : seconds) {
      qorcred::CivilTime time = start;
      time.second += second;
      Host().script().nextTimes.push_back(FromCivil(time));
    }
  }
  bool Fetch() { return Controller().pbFetchDirForMerge(Connection(), kUnit, table_); }
  [[nodiscard]] Value Cell(std::int32_t row, std::int32_t column) const {
    return qorcred::Get(*table_, "Value", row, column);
  }
  [[nodiscard]] std::int32_t Last(std::int32_t dimension) const {
    return *qorcred::Get(*table_, "UpperBound", dimension).As<std::int32_t>();
  }
  [[nodiscard]] std::int32_t First(std::int32_t dimension) const {
    return *qorcred::Get(*table_, "LowerBound", dimension).As<std::int32_t>();
  }
  /// The rows of the table.
  [[nodiscard]] std::vector<Row> Rows() const {
    std::vector<Row> rows;
    for (std::int32_t row = First(1); row <= Last(1); ++row) {
      rows.emplace_back();
      for (std::int32_t column = First(2); column <= Last(2); ++column) {
        rows.back().push_back(Cell(row, column));
      }
    }
    return rows;
  }
  [[nodiscard]] ObjectRef& table() { return table_; }

 private:
  ObjectRef table_;
};

TEST_F(DirCodeFetch, GivesTheCodesAndBehindThemThePreviousOnes) {
  Current({{kUnit, 17, 12}, {kUnit, 18, 34}});
  Previous({{kUnit, 18, 5}, {kUnit, 17, 12}});

  EXPECT_TRUE(Fetch());

  EXPECT_TRUE(TranscriptIs(std::string(kCodesFirst) + " -> 2 rows\n" + std::string(kPreviousCodes) +
                           R"~( -> 2 rows
    Now -> #11/21/2026 10:00:00 AM#
    Now -> #11/21/2026 10:00:00 AM#
    Now -> #11/21/2026 10:00:00 AM#
  )~"));
  EXPECT_EQ(Rows(),
            (std::vector<Row>{{kUnit, 17, 12}, {kUnit, 18, 34}, {kUnit, 18, 5}, {kUnit, 17, 12}}));
}

TEST_F(DirCodeFetch, WithoutPreviousCodesGivesTheCodesAlone) {
  Current({{kUnit, 17, 12}, {kUnit, 18, 34}});

  EXPECT_TRUE(Fetch());

  EXPECT_TRUE(TranscriptIs(std::string(kCodesFirst) + " -> 2 rows\n" + std::string(kPreviousCodes) +
                           " -> no rows"));
  EXPECT_EQ(Rows(), (std::vector<Row>{{kUnit, 17, 12}, {kUnit, 18, 34}}));
}

TEST_F(DirCodeFetch, OfAUnitWithoutCodesGivesOneEmptyRow) {
  EXPECT_TRUE(Fetch());

  EXPECT_EQ(Rows(), std::vector<Row>{{""}});
}

// Widened to three columns, so that the rows can follow.
TEST_F(DirCodeFetch, WithoutCodesKeepsTheEmptyRowInFrontOfThePreviousOnes) {
  Previous({{kUnit, 18, 5}, {kUnit, 17, 12}});

  EXPECT_TRUE(Fetch());

  EXPECT_EQ(First(1), 0);
  EXPECT_EQ(First(2), 0);
  ASSERT_EQ(Last(1), 2);
  ASSERT_EQ(Last(2), 2);
  EXPECT_EQ(Cell(0, 0), Value(""));
  EXPECT_EQ(Cell(0, 1), Value());
  EXPECT_EQ(Cell(0, 2), Value());
  EXPECT_EQ(Cell(1, 1), Value(18));
  EXPECT_EQ(Cell(1, 2), Value(5));
  EXPECT_EQ(Cell(2, 2), Value(12));
}

TEST_F(DirCodeFetch, ReplacesTheTableThatWasGiven) {
  const auto given = std::make_shared<qorcred::ResultTable>(4, 4);
  table() = given;
  Current({{kUnit, 17, 12}});

  EXPECT_TRUE(Fetch());

  EXPECT_NE(table(), given);
  EXPECT_EQ(given->UpperBound(1), 3);
  EXPECT_EQ(Rows(), (std::vector<Row>{{kUnit, 17, 12}}));
}

TEST_F(DirCodeFetch, KeepsTheBoundsOfTheCodes) {
  const auto codes = std::make_shared<qorcred::ResultTable>(2, 4);
  codes->ReDim(5, 6, 0, 3);
  codes->At(6, 3) = "more";
  Database().On("DIRECTORYCODE >=0 ORDER BY", {.table = codes});
  Previous({{kUnit, 18, 5}});

  EXPECT_TRUE(Fetch());

  EXPECT_EQ(First(1), 5);
  EXPECT_EQ(Last(1), 7);
  EXPECT_EQ(First(2), 0);
  EXPECT_EQ(Last(2), 3);
  EXPECT_EQ(Cell(6, 3), Value("more"));
  EXPECT_EQ(Cell(7, 2), Value(5));
  EXPECT_EQ(Cell(7, 3), Value());
}

TEST_F(DirCodeFetch, PingsTheUnitWhenSixSecondsHavePassed) {
  Current({{kUnit, 17, 12}});
  Previous({{kUnit, 17, 1}, {kUnit, 18, 2}, {kUnit, 19, 3}, {kUnit, 20, 4}});
  //     start, row 1, row 2 and after its ping, row 3, row 4 and after its ping
  Clock({0, 5, 6, 8, 13, 14, 15});

  EXPECT_TRUE(Fetch());

  EXPECT_TRUE(TranscriptIs(std::string(kCodesFirst) + " -> 1 row\n" + std::string(kPreviousCodes) +
                           R"~( -> 4 rows
    Now -> #11/21/2026 10:00:00 AM#
    Now -> #11/21/2026 10:00:05 AM#
    Now -> #11/21/2026 10:00:06 AM#
    DoEvents
    pbPing
    Now -> #11/21/2026 10:00:08 AM#
    Now -> #11/21/2026 10:00:13 AM#
    Now -> #11/21/2026 10:00:14 AM#
    DoEvents
    pbPing
    Now -> #11/21/2026 10:00:15 AM#
  )~"));
  EXPECT_EQ(Last(1), 4);
}

struct Wait {
  std::string_view name;
  int seconds;
  std::size_t pings;
};

class DirCodePing : public DirCodeFetch, public ::testing::WithParamInterface<Wait> {};

TEST_P(DirCodePing, IsDueAfterSixSecondsWhateverTheTimeOfDay) {
  constexpr int kSecondsOfADay = 86400;
  constexpr int kStep = 977;
  for (int start = 0; start < kSecondsOfADay; start += kStep) {
    DirCodeScreen screen;
    screen.host().database().Select("OLDDIRECTORYCODE<> NULL", {{kUnit, 17, 1}});
    for (const int second : {start, start + GetParam().seconds}) {
      screen.host().script().nextTimes.push_back(FromCivil({2026, 11, 21, 0, 0, second}));
    }
    ObjectRef table;

    ASSERT_TRUE(screen.controller().pbFetchDirForMerge(screen.host().connection(), kUnit, table));

    ASSERT_EQ(screen.host().transcript().StartingWith("pbPing").size(), GetParam().pings) << start;
    ASSERT_EQ(screen.host().transcript().StartingWith("DoEvents").size(), GetParam().pings);
  }
}

INSTANTIATE_TEST_SUITE_P(Waits, DirCodePing,
                         ::testing::Values(Wait{"AtOnce", 0, 0}, Wait{"FiveSeconds", 5, 0},
                                           Wait{"SixSeconds", 6, 1}, Wait{"SevenSeconds", 7, 1},
                                           Wait{"ADay", 86400, 1}, Wait{"AClockSetBack", -3600, 0}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(DirCodeFetch, PingsAcrossMidnight) {
  Previous({{kUnit, 17, 1}, {kUnit, 18, 2}});
  Clock({0, 5, 6}, {2026, 12, 31, 23, 59, 57});

  EXPECT_TRUE(Fetch());

  EXPECT_EQ(Host().transcript().StartingWith("pbPing"), Lines{"pbPing"});
}

TEST_F(DirCodeFetch, KeepsTheCodesWhenAPingFails) {
  Current({{kUnit, 17, 12}});
  Previous({{kUnit, 17, 1}, {kUnit, 18, 2}});
  Clock({0, 1, 7});
  Host().gate().FailOn("pbPing");

  EXPECT_FALSE(Fetch());

  EXPECT_EQ(Rows(), (std::vector<Row>{{kUnit, 17, 12}, {kUnit, 17, 1}}));
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pbFetchDirForMerge");
}

TEST_F(DirCodeFetch, HasTheCodesThoughTheSecondQueryRaises) {
  Current({{kUnit, 17, 12}});
  Database().On("OLDDIRECTORYCODE<> NULL", {.nothing = true});

  EXPECT_FALSE(Fetch());

  EXPECT_EQ(Rows(), (std::vector<Row>{{kUnit, 17, 12}}));
  EXPECT_EQ(Host().services().trapped().size(), 1U);
}

TEST_F(DirCodeFetch, LeavesTheTableAloneWhenTheFirstQueryRaises) {
  Database().On("DIRECTORYCODE >=0 ORDER BY", {.nothing = true});

  EXPECT_FALSE(Fetch());

  EXPECT_EQ(table(), nullptr);
}

TEST_F(DirCodeFetch, TakesAFailedQueryAsEmpty) {
  Current({{kUnit, 17, 12}});
  Database().Error("OLDDIRECTORYCODE<> NULL", "the disk is gone");

  EXPECT_TRUE(Fetch());

  EXPECT_EQ(Rows(), (std::vector<Row>{{kUnit, 17, 12}}));
}

TEST_F(DirCodeFetch, TrapsAPreviousCodeWithTooFewColumns) {
  Current({{kUnit, 17, 12}});
  Previous({{kUnit, 18}});

  EXPECT_FALSE(Fetch());

  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, ErrorNumber::kIndexOutOfRange);
}

TEST_F(DirCodeFetch, NeedsNoScreens) {
  Controller().set_mobjDirCodeScreen(nullptr);
  Controller().set_mfrmConnectionScreen(nullptr);
  Current({{kUnit, 17, 12}});
  Previous({{kUnit, 17, 1}});

  EXPECT_TRUE(Fetch());

  EXPECT_EQ(Last(1), 1);
}

TEST_F(DirCodeFetch, GivesManyPreviousCodesInTheirOrder) {
  constexpr std::int32_t kMany = 500;
  std::vector<Row> previous;
  for (std::int32_t code = 0; code < kMany; ++code) previous.push_back({kUnit, code, code});
  Current({{kUnit, 17, 12}});
  Previous(std::move(previous));

  EXPECT_TRUE(Fetch());

  ASSERT_EQ(Last(1), kMany);
  for (std::int32_t code = 0; code < kMany; ++code) {
    ASSERT_EQ(Cell(code + 1, 2), Value(code));
  }
}

}  // namespace
}  // namespace qortest
