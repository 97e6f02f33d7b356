// What becomes of odd numbers of doors and schedules.
#include <gmock/gmock.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Of unit and number; the RIDs are those from 1 on.
DesktopTable DoorTable(const std::vector<std::pair<std::int64_t, DesktopCell>>& doors) {
  DesktopTable table = TableOf("DOORS", {"RID", "UNITKEY", "DOORID"}, {});
  for (const auto& [unit, number] : doors) {
    table.rows.push_back({N(static_cast<std::int64_t>(table.rows.size()) + 1), N(unit), number});
  }
  table.count = table.rows.size();
  return table;
}

MovingPlan PlanOfDoors(const std::vector<std::pair<std::int64_t, DesktopCell>>& doors) {
  return {{{UnitTable({1, 2}), DoorTable(doors)}}, "some.mdb", std::nullopt};
}

std::vector<std::optional<std::int32_t>> NumbersIn(const MovingPlan& plan) {
  const StagedTable& doors = plan.tables()[3];
  std::vector<std::optional<std::int32_t>> numbers;
  for (const StagedRow& row : doors.rows()) {
    if (!row.isRefused) numbers.push_back(LongIn(row.cells[doors.At("DOORID")]));
  }
  return numbers;
}

TEST(DoorRules, NumbersFromOneOnWithoutAGapStay) {
  const MovingPlan plan = PlanOfDoors({{1, N(2)}, {2, N(1)}, {1, N(1)}, {1, N(3)}});
  EXPECT_THAT(ToldOf(plan, "DOORS"), IsEmpty());
  EXPECT_THAT(NumbersIn(plan), ElementsAre(2, 1, 1, 3));
}

TEST(DoorRules, AGapIsClosedForDoorsAreCounted) {
  const MovingPlan plan = PlanOfDoors({{1, N(1)}, {1, N(3)}, {1, N(4)}, {2, N(2)}});
  EXPECT_THAT(ToldOf(plan, "DOORS"), ElementsAre("adjusted row 2 DOORID 3 -> 2 [door-number]",
                                                 "adjusted row 3 DOORID 4 -> 3 [door-number]",
                                                 "adjusted row 4 DOORID 2 -> 1 [door-number]"));
  EXPECT_THAT(NumbersIn(plan), ElementsAre(1, 2, 3, 1));
}

TEST(DoorRules, NumbersThatNoDoorHasComeInTheirOrder) {
  const MovingPlan plan = PlanOfDoors({{1, N(99)}, {1, N(0)}, {1, N(-3)}, {1, N(2147483647)}});
  EXPECT_THAT(ToldOf(plan, "DOORS"),
              ElementsAre("adjusted row 1 DOORID 99 -> 3 [door-number]",
                          "adjusted row 2 DOORID 0 -> 2 [door-number]",
                          "adjusted row 3 DOORID -3 -> 1 [door-number]",
                          "adjusted row 4 DOORID 2147483647 -> 4 [door-number]"));
  EXPECT_THAT(NumbersIn(plan), ElementsAre(3, 2, 1, 4));
}

TEST(DoorRules, ARefusedDoorIsNotCounted) {
  const MovingPlan plan =
      PlanOfDoors({{1, N(1)}, {1, DesktopText{"two", true}}, {1, N(1)}, {7, N(2)}, {1, N(3)}});
  EXPECT_THAT(ToldOf(plan, "DOORS"), ElementsAre("refused row 2 DOORID \"two\" [text-for-number]",
                                                 "refused row 3 DOORID 1 [duplicate-id]",
                                                 "refused row 4 UNITKEY 7 [missing-unit]",
                                                 "adjusted row 5 DOORID 3 -> 2 [door-number]"));
  EXPECT_THAT(NumbersIn(plan), ElementsAre(1, 2));
}

TEST(ScheduleRules, NumbersThatTheProgramHasNotAreToldAndKept) {
  const MovingPlan plan({{UnitTable({1, 2}), TableOf("Schedules", {"RID", "UnitKey", "ScheduleID"},
                                                     {{N(1), N(1), N(0)},
                                                      {N(2), N(1), N(1)},
                                                      {N(3), N(1), N(-1)},
                                                      {N(4), N(1), N(2147483646)},
                                                      {N(5), N(2), N(2147483647)},
                                                      {N(6), N(2), N(-2147483648)}})}},
                        "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "Schedules"),
              ElementsAre("kept row 3 ScheduleID -1 [number-range]",
                          "kept row 5 ScheduleID 2147483647 [number-range]",
                          "kept row 6 ScheduleID -2147483648 [number-range]"));
}

}  // namespace
}  // namespace qorhost::test
