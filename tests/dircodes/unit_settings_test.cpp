// What depends on the unit's settings: how long a code may be and the default dates.
#include <string>
#include <string_view>
#include <utility>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::Date;
using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::Null;
using qorcred::Value;

class DirCodeSettings : public DirCodeTest {
 protected:
  void Settings(Value digits, Value mode, Value date, Value days) {
    Database().Select("FROM UnitSettings", {{std::move(digits), false, std::move(mode),
                                             std::move(date), std::move(days)}});
  }
  void Retrieve() { Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit); }
  void SetMaxDate(Date date) { qorcred::Put(Host().controls().Date("dtpEnd"), "MaxDate", date); }
  [[nodiscard]] ::testing::AssertionResult PickersGet(std::string_view expected) {
    Lines lines = Host().transcript().Read(Detail::kEffects);
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("dtp"); });
    return SameLines(lines, expected);
  }
};

TEST_F(DirCodeSettings, WithoutDeactivationShowAYearAndLeaveItUnchecked) {
  Settings(4, 0, Null{}, Null{});

  Retrieve();

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT MAXDIGITSDIRECTORYCODE,IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, DEACTIVATIONDAYS FROM UnitSettings WHERE UnitKey=3" -> 1 row
    txtdirectorycode.MaxLength = 4
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Year = 2027
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
    dtpEnd.Value = Null
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").shown(), FromCivil({2027, 11, 21, 23, 59, 59}));
  EXPECT_FALSE(Host().controls().Date("dtpStart").chosen());
  EXPECT_FALSE(Host().controls().Date("dtpEnd").chosen());
}

TEST_F(DirCodeSettings, OnALeapDayShowTheFirstOfMarchOfTheNextYear) {
  Settings(4, 0, Null{}, Null{});
  Host().script().now = FromCivil({2028, 2, 29, 10, 0, 0});

  Retrieve();

  EXPECT_TRUE(PickersGet(R"~(
    dtpStart.Value = #2/29/2028 10:00:00 AM#
    dtpEnd.Value = #2/29/2028 10:00:00 AM#
    dtpEnd.Month = 3
    dtpEnd.Day = 1
    dtpEnd.Year = 2029
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
    dtpEnd.Value = Null
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").shown(), FromCivil({2029, 3, 1, 23, 59, 59}));
  EXPECT_FALSE(Host().controls().Date("dtpEnd").chosen());
  EXPECT_TRUE(Host().services().trapped().empty());
}

struct NextYear {
  std::string_view name;
  qorcred::CivilTime now;
  qorcred::CivilTime end;
};

class DirCodeNextYear : public DirCodeSettings, public ::testing::WithParamInterface<NextYear> {};

TEST_P(DirCodeNextYear, IsTheSameDayOfTheNextYear) {
  Settings(4, 0, Null{}, Null{});
  Host().script().now = FromCivil(GetParam().now);

  Retrieve();

  EXPECT_EQ(Host().controls().Date("dtpEnd").shown(), FromCivil(GetParam().end));
  EXPECT_TRUE(Host().transcript().StartingWith("dtpEnd.Month").empty());
  EXPECT_TRUE(Host().transcript().StartingWith("dtpEnd.Day").empty());
}

INSTANTIATE_TEST_SUITE_P(
    Days, DirCodeNextYear,
    ::testing::Values(
        NextYear{"LastOfFebruary", {2027, 2, 28, 10, 0, 0}, {2028, 2, 28, 23, 59, 59}},
        NextYear{"TheDayBeforeALeapDay", {2028, 2, 28, 10, 0, 0}, {2029, 2, 28, 23, 59, 59}},
        NextYear{"TheDayAfterALeapDay", {2028, 3, 1, 10, 0, 0}, {2029, 3, 1, 23, 59, 59}},
        NextYear{"The29thOfAnotherMonth", {2028, 1, 29, 10, 0, 0}, {2029, 1, 29, 23, 59, 59}},
        NextYear{"NewYearsEve", {2026, 12, 31, 23, 59, 59}, {2027, 12, 31, 23, 59, 59}},
        NextYear{"Midnight", {2027, 1, 1, 0, 0, 0}, {2028, 1, 1, 23, 59, 59}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(DirCodeSettings, WithAFixedDateEndThatDay) {
  Settings(4, 1, FromCivil({2026, 12, 31, 0, 0, 0}), Null{});

  Retrieve();

  EXPECT_TRUE(PickersGet(R"~(
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Value = #12/31/2026#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").Chosen(),
            Value(FromCivil({2026, 12, 31, 23, 59, 59})));
  EXPECT_FALSE(Host().controls().Date("dtpStart").chosen());
}

TEST_F(DirCodeSettings, WithAFixedDateThatIsMissingLeaveTheEndUnchecked) {
  Settings(4, 1, Null{}, Null{});

  Retrieve();

  EXPECT_TRUE(PickersGet(R"~(
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Value = Null
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
  )~"));
}

TEST_F(DirCodeSettings, WithADayCountEndThatManyDaysFromNow) {
  Settings(4, 2, Null{}, 30);

  Retrieve();

  EXPECT_TRUE(PickersGet(R"~(
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.Value = #12/21/2026 10:00:00 AM#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").Chosen(),
            Value(FromCivil({2026, 12, 21, 23, 59, 59})));
  EXPECT_FALSE(Host().controls().Date("dtpStart").chosen());
}

struct LastDay {
  std::string_view name;
  Value days;
  std::string_view chosen;
};

class DirCodeLastDay : public DirCodeSettings, public ::testing::WithParamInterface<LastDay> {};

TEST_P(DirCodeLastDay, IsNoLaterThanTheLatestOfThePicker) {
  Settings(4, 2, Null{}, GetParam().days);
  SetMaxDate(FromCivil({2026, 12, 1, 0, 0, 0}));

  Retrieve();

  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.Value = "),
            Lines{"dtpEnd.Value = " + std::string(GetParam().chosen)});
  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.MaxDate"),
            Lines{"dtpEnd.MaxDate -> #12/1/2026#"});
  EXPECT_TRUE(Host().services().trapped().empty());
}

INSTANTIATE_TEST_SUITE_P(DayCounts, DirCodeLastDay,
                         ::testing::Values(LastDay{"None", 0, "#11/21/2026 10:00:00 AM#"},
                                           LastDay{"Null", Null{}, "#11/21/2026 10:00:00 AM#"},
                                           LastDay{"Text", "3", "#11/24/2026 10:00:00 AM#"},
                                           LastDay{"BeforeNow", -1, "#11/20/2026 10:00:00 AM#"},
                                           LastDay{"TheDayBeforeTheLatest", 9,
                                                   "#11/30/2026 10:00:00 AM#"},
                                           LastDay{"TheLatestDay", 10, "#12/1/2026#"},
                                           LastDay{"TheDayAfterTheLatest", 11, "#12/1/2026#"},
                                           LastDay{"BeyondTheCalendar", 1e9, "#12/1/2026#"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(DirCodeSettings, WithALatestDateInThePastEndThere) {
  Settings(4, 2, Null{}, 0);
  SetMaxDate(FromCivil({2026, 11, 20, 0, 0, 0}));
  Host().controls().Date("dtpEnd").Choose(FromCivil({2026, 11, 1, 0, 0, 0}));

  Retrieve();

  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.Value = "),
            Lines{"dtpEnd.Value = #11/20/2026#"});
}

TEST_F(DirCodeSettings, OfAnotherModeLeaveThePickersAlone) {
  for (const Value& mode : {Value(3), Value(-1), Value(0.5), Value("4"), Value(32768)}) {
    DirCodeScreen screen;
    screen.host().database().Select("FROM UnitSettings", {{4, false, mode, Null{}, 30}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(screen.host().transcript().StartingWith("dtp").empty());
    EXPECT_EQ(screen.host().controls().Box("txtdirectorycode").maxLength(), 4);
  }
}

TEST_F(DirCodeSettings, WithAnEmptyModeCountAsWithoutDeactivation) {
  for (const Value& mode : {Value(Null{}), Value(), Value(""), Value("0"), Value("never")}) {
    DirCodeScreen screen;
    screen.host().database().Select("FROM UnitSettings", {{4, false, mode, Null{}, Null{}}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_EQ(screen.host().transcript().StartingWith("dtpStart.Value = ").size(), 2U);
    EXPECT_EQ(screen.host().transcript().StartingWith("dtpEnd.Year = 2027").size(), 1U);
  }
}

TEST_F(DirCodeSettings, ReadTheModeFromTextsToo) {
  Settings("6", "2", Null{}, "30");

  Retrieve();

  EXPECT_EQ(Host().controls().Box("txtdirectorycode").maxLength(), 6);
  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.Value = "),
            Lines{"dtpEnd.Value = #12/21/2026 10:00:00 AM#"});
}

TEST_F(DirCodeSettings, WithoutACodeLengthSetNoLimit) {
  qorcred::Put(Host().controls().Box("txtdirectorycode"), "MaxLength", 4);
  Settings(Null{}, 3, Null{}, Null{});

  Retrieve();

  EXPECT_EQ(Host().controls().Box("txtdirectorycode").maxLength(), 0);
  EXPECT_EQ(Host().transcript().StartingWith("txtdirectorycode"),
            Lines{"txtdirectorycode.MaxLength = 0"});
}

TEST_F(DirCodeSettings, WithAStoredCodeSelectedChangeTheCodeLengthAlone) {
  for (const std::int32_t mode : {0, 1, 2}) {
    DirCodeScreen screen;
    screen.ShowStored();
    screen.host().StartOver();
    screen.host().database().Select("FROM UnitSettings",
                                    {{4, false, mode, FromCivil({2026, 12, 31, 0, 0, 0}), 30}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEverything), R"~(
      ExecuteSelect "SELECT MAXDIGITSDIRECTORYCODE,IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, DEACTIVATIONDAYS FROM UnitSettings WHERE UnitKey=3" -> 1 row
      txtdirectorycode.MaxLength = 4
      cbodirectorycode.ListIndex -> 1
    )~"))
        << mode;
  }
}

TEST_F(DirCodeSettings, WithAddNewSelectedSetTheDatesToo) {
  Screen().ShowStored();
  Host().Select("cbodirectorycode", 0);
  Settings(4, 1, FromCivil({2026, 12, 31, 0, 0, 0}), Null{});

  Retrieve();

  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.Value = "),
            Lines{"dtpEnd.Value = #12/31/2026#"});
}

TEST_F(DirCodeSettings, AreReadInAFixedOrder) {
  Settings(4, 2, Null{}, 30);

  Retrieve();

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT MAXDIGITSDIRECTORYCODE,IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, DEACTIVATIONDAYS FROM UnitSettings WHERE UnitKey=3" -> 1 row
    txtdirectorycode.MaxLength = 4
    cbodirectorycode.ListIndex -> -1
    Now -> #11/21/2026 10:00:00 AM#
    dtpStart.Value = #11/21/2026 10:00:00 AM#
    dtpEnd.MaxDate -> #12/31/9999#
    dtpEnd.Value = #12/21/2026 10:00:00 AM#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpStart.Value = Null
  )~"));
}

// The result of a unit without settings has no column for the deactivation.
TEST_F(DirCodeSettings, ThatAreMissingRaiseTheIndexToTheCaller) {
  EXPECT_EQ(ErrorOf([this] { Retrieve(); }), static_cast<int>(ErrorNumber::kIndexOutOfRange));

  EXPECT_EQ(Host().transcript().StartingWith("txt"), Lines{"txtdirectorycode.MaxLength = 0"});
  EXPECT_TRUE(Host().transcript().StartingWith("dtp").empty());
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(DirCodeSettings, ThatAreMissingGoUnnoticedWithAStoredCodeSelected) {
  Screen().ShowStored();

  EXPECT_EQ(ErrorOf([this] { Retrieve(); }), 0);
}

}  // namespace
}  // namespace qortest
