// What becomes of odd directory codes and of cards with doors that are not there.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;

TEST(CodeRules, CodesBelowMinusOneAreToldAndKept) {
  const MovingPlan plan(
      {{UnitTable({1}), TableOf("DirectoryCode", {"RID", "UNITKEY", "DIRECTORYCODE"},
                                {{N(1), N(1), N(-1)},
                                 {N(2), N(1), N(-2)},
                                 {N(3), N(1), N(-99999)},
                                 {N(4), N(1), N(0)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("kept row 2 DIRECTORYCODE -2 [number-range]",
                          "kept row 3 DIRECTORYCODE -99999 [number-range]",
                          "kept row 4 PHONENUMBER Null [missing-phone]"));
}

TEST(CodeRules, NumbersOfCodesThatNoUnitCanHaveBecomeNull) {
  std::vector<std::vector<DesktopCell>> rows;
  const std::vector<DesktopCell> formers{
      12.5, 1e300, -3.0, 1e15, 999999999999999.0, 0.0, DesktopNull{}, DesktopCell{-1.0}};
  for (const DesktopCell& former : formers) {
    const std::int64_t number = 1 + static_cast<std::int64_t>(rows.size());
    rows.push_back({N(number), N(1), N(number), DesktopText{"555", true}, former});
  }
  rows.push_back({N(9), N(1), N(-1), DesktopText{"555", true}, 0.5});
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DirectoryCode",
                {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "OLDDIRECTORYCODE"}, rows)}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("adjusted row 1 OLDDIRECTORYCODE 12.5 -> Null [number-range]",
                          "adjusted row 2 OLDDIRECTORYCODE 1e+300 -> Null [number-range]",
                          "adjusted row 3 OLDDIRECTORYCODE -3 -> Null [number-range]",
                          "adjusted row 4 OLDDIRECTORYCODE 1000000000000000 -> Null [number-range]",
                          "adjusted row 9 OLDDIRECTORYCODE 0.5 -> Null [number-range]"));
}

TEST(CodeRules, DelaysBelowZeroAreToldAndKept) {
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DirectoryCode",
                {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "TIMEDELAY", "CFTIMEDELAY"},
                {{N(1), N(1), N(1), DesktopText{"1", true}, N(0), N(2147483647)},
                 {N(2), N(1), N(2), DesktopText{"1", true}, N(-1), DesktopNull{}},
                 {N(3), N(1), N(3), DesktopText{"1", true}, DesktopNull{}, N(-5)},
                 {N(4), N(1), N(-1), DesktopText{"1", true}, N(-1), N(-1)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("kept row 2 TIMEDELAY -1 [value-range]",
                          "kept row 3 CFTIMEDELAY -5 [value-range]",
                          "kept row 4 TIMEDELAY -1 [value-range]",
                          "kept row 4 CFTIMEDELAY -1 [value-range]"));
}

/// The two of them are the display mode, of which each pair has a meaning.
TEST(CodeRules, DisplayModesAreAnyPairOfYesAndNo) {
  DesktopTable codes = TableOf(
      "DirectoryCode",
      {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "SHOWDISPLAYNAME", "SHOWDIRECTORYCODE"},
      {});
  const auto add = [&](std::int64_t number, DesktopCell name, DesktopCell code) {
    codes.rows.push_back(
        {N(number), N(1), N(number), DesktopText{"1", true}, std::move(name), std::move(code)});
  };
  add(1, N(0), N(0));
  add(2, N(-1), N(0));
  add(3, N(0), N(1));
  add(4, N(-1), N(-1));
  add(5, N(3), DesktopNull{});
  codes.count = codes.rows.size();
  const MovingPlan plan({{UnitTable({1}), codes}}, "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("adjusted row 5 SHOWDISPLAYNAME 3 -> Yes [number-for-flag]",
                          "adjusted row 5 SHOWDIRECTORYCODE Null -> No [null-flag]"));
}

TEST(CodeRules, CodesThatStandForNoneAreSettledLikeOthers) {
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf(
            "DirectoryCode",
            {"RID", "UNITKEY", "DIRECTORYCODE", "CFSCHEDULEID", "TIMEDELAY", "MODIFIED"},
            {{N(1), N(1), N(-1), N(42), N(-5), N(12)}, {N(2), N(1), N(-1), N(1), N(0), N(0)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(
      ToldOf(plan, "DirectoryCode"),
      testing::UnorderedElementsAre("adjusted row 1 CFSCHEDULEID 42 -> Null [missing-schedule]",
                                    "kept row 1 TIMEDELAY -5 [value-range]",
                                    "adjusted row 1 MODIFIED 12 -> 2 [value-range]"));
  const auto codes =
      std::find_if(plan.tables().begin(), plan.tables().end(),
                   [](const StagedTable& table) { return table.known().name == "DirectoryCode"; });
  const StagedRow& row = codes->rows().front();
  EXPECT_EQ(LongIn(row.cells[codes->At("CFSCHEDULEID")]), std::nullopt);
  EXPECT_EQ(LongIn(row.cells[codes->At("MODIFIED")]), 2);
}

TEST(CodeRules, CardsWithADoorThatTheUnitLacksAreTold) {
  constexpr std::int64_t kCard = 1;
  constexpr std::int64_t kTransmitter = 2;
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DOORS", {"RID", "UNITKEY", "DOORID"}, {{N(1), N(1), N(1)}, {N(2), N(1), N(2)}}),
        TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo", "DOORCODE"},
                {{N(1), N(1), N(kCard), N(1), N(2)},
                 {N(2), N(1), N(kCard), N(2), N(3)},
                 {N(3), N(1), N(kCard), N(3), N(-1)},
                 {N(4), N(1), N(kCard), N(4), N(0)},
                 {N(5), N(1), N(kCard), N(5), DesktopNull{}},
                 {N(6), N(1), N(kTransmitter), N(6), N(3)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "CredentialBank"), ElementsAre("kept row 2 DOORCODE 3 [missing-door]",
                                                          "kept row 3 DOORCODE -1 [missing-door]"));
}

}  // namespace
}  // namespace qorhost::test
