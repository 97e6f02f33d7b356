// Who may go in where and when: doors, schedules and periods.
#include "host/desks/access_list.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;
using testing::ElementsAre;
using testing::IsEmpty;

/// Unit 2 has 75 tenants and four doors; the session's day is 2026-01-31. 62 has Full Access at the
/// first two doors and No Access at the fourth.
class AccessListTest : public DeskFixture {
 protected:
  [[nodiscard]] List Access(const std::string& on = "") {
    return AccessList(session(), kUnit, ReadAccessTime(session(), on));
  }
  /// Column `field` of the rows that meet the conditions, as texts.
  [[nodiscard]] std::vector<std::string> Cells(const std::string& field,
                                               std::vector<std::string> conditions,
                                               const std::string& on = "") {
    std::vector<std::string> cells;
    for (const auto& row : Answer(Access(on), {std::move(conditions), "", field, {}}).rows) {
      cells.push_back(qorcred::TextOrEmpty(row[0]));
    }
    return cells;
  }
  /// Whether access holds of tenant 62 at the first door.
  [[nodiscard]] bool Holds(const std::string& on) {
    const List rows = Answer(Access(on), {{"rid = 62", "door_number = 1"}, "", "access", {}});
    return rows.rows.size() == 1 && rows.rows[0][0] == Value(true);
  }
};

TEST_F(AccessListTest, HasARowForEveryTenantAtEveryDoorByItsName) {
  EXPECT_EQ(Access().rows.size(), 300U);
  EXPECT_EQ(Access().title, "Access on 2026-01-31");
  EXPECT_THAT(Cells("door", {"rid = 62"}),
              ElementsAre("Front Entrance Door", "Underground Car Park", "Garden Gate North Side",
                          "Service Corridor Level Two"));
  EXPECT_THAT(Cells("schedule", {"rid = 62", "door = garden gate north side"}),
              ElementsAre("Late Shift"));
}

TEST_F(AccessListTest, FollowsTheDoorsThatAreStored) {
  Run("DELETE FROM DOORS WHERE UNITKEY=2 AND DOORID IN (1, 3)");
  EXPECT_THAT(Cells("door", {"rid = 62"}),
              ElementsAre("Underground Car Park", "Service Corridor Level Two"));
  Run("DELETE FROM DOORS WHERE UNITKEY=2");
  EXPECT_THAT(Cells("door", {"rid = 62"}), ElementsAre("Door 1", "Door 2", "Door 3", "Door 4"));
}

TEST_F(AccessListTest, IsWhereTheScheduleIsAnotherOneThanNoAccess) {
  EXPECT_THAT(Answer(Access(), {{"schedule = No Access", "access = yes"}, "", "", {}}).rows,
              IsEmpty());
  EXPECT_THAT(Answer(Access(), {{"schedule <> No Access", "access = no"}, "", "", {}}).rows,
              IsEmpty());
  Run("UPDATE Tenants SET DOORSCHEDULE1=77 WHERE RID=62");
  EXPECT_THAT(Cells("schedule", {"rid = 62", "door_number = 1"}), ElementsAre("77"));
}

TEST_F(AccessListTest, HoldsInTheDaysOfAPeriodThatIsKept) {
  Run("UPDATE Tenants SET ACTIVETENANT=-1, ACTIVESTARTTIME='2026-02-01 08:00:00', "
      "ACTIVEENDTIME='2026-02-10 12:00:00' WHERE RID=62");
  EXPECT_FALSE(Holds("")) << "it has not begun";
  EXPECT_FALSE(Holds("2026-01-31"));
  EXPECT_TRUE(Holds("2026-02-01")) << "from eight on";
  EXPECT_FALSE(Holds("2026-02-01 07:59:59"));
  EXPECT_TRUE(Holds("2026-02-01 08:00:00"));
  EXPECT_TRUE(Holds("2026-02-10")) << "until noon";
  EXPECT_TRUE(Holds("2026-02-10 12:00:00"));
  EXPECT_FALSE(Holds("2026-02-10 12:00:01"));
  EXPECT_FALSE(Holds("2026-02-11"));
  Run("UPDATE Tenants SET ACTIVESTARTTIME=NULL WHERE RID=62");
  EXPECT_TRUE(Holds("2020-01-01"));
  Run("UPDATE Tenants SET ACTIVEENDTIME=NULL WHERE RID=62");
  EXPECT_TRUE(Holds("2040-01-01"));
}

TEST_F(AccessListTest, HoldsAlwaysWhereThePeriodIsNotKept) {
  Run("UPDATE Tenants SET ACTIVETENANT=0, ACTIVEENDTIME='2020-01-01 00:00:00' WHERE RID=62");
  EXPECT_TRUE(Holds("2026-02-11"));
}

TEST_F(AccessListTest, TellsADayThatIsNone) {
  EXPECT_EQ(FieldAtFault([&] { (void)ReadAccessTime(session(), "soon"); }), access_input::kOn);
}

TEST_F(AccessListTest, ReadsEachTableOnceHoweverManyTenantsThereAre) {
  Open(true);
  const auto statements = [&] {
    calls_.clear();
    (void)Access();
    return std::count_if(calls_.begin(), calls_.end(), [](const std::string& call) {
      return call.find("SELECT") != std::string::npos;
    });
  };
  const auto ofMany = statements();
  EXPECT_GT(ofMany, 3);
  Run("DELETE FROM Tenants WHERE UnitKey=2 AND RID>62");
  EXPECT_EQ(statements(), ofMany);
}

}  // namespace
}  // namespace qorhost::test
