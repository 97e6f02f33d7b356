// Schedules: made, renamed, and deleted where nothing uses them.
#include "host/desks/schedule_desk.h"

#include <gmock/gmock.h>

#include "host/desks/desk_error.h"
#include "host/desks/unit_schedules.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::Contains;
using testing::HasSubstr;

class ScheduleDeskTest : public DeskFixture {
 protected:
  [[nodiscard]] ChangedSchedule Add(const std::string& name,
                                    const std::optional<std::string>& id = std::nullopt) {
    return AddSchedule(session(), kUnit, name, id, Trial::kNo);
  }
  [[nodiscard]] std::string RefusalOfDeleting(const std::string& schedule) {
    try {
      (void)DeleteSchedule(session(), kUnit, schedule, Trial::kNo);
    } catch (const RefusedError& refusal) {
      return refusal.what();
    }
    return "";
  }
  [[nodiscard]] std::string NameOf(const std::string& id) {
    return Cell("SELECT ScheduleName FROM Schedules WHERE UnitKey=2 AND ScheduleID=" + id);
  }
};

TEST_F(ScheduleDeskTest, ANewScheduleIsOfferedByTheScreens) {
  const ChangedSchedule added = Add("Gardeners");
  EXPECT_EQ(added.id, 6);
  EXPECT_THAT(OfferedSchedules(session(), kUnit), Contains("6"));
  EXPECT_THAT(ReportedSchedules(session(), kUnit), Contains("Gardeners"));
}

TEST_F(ScheduleDeskTest, AnIdIsGivenOrTheNextOne) {
  EXPECT_EQ(Add("A", "20").id, 20);
  EXPECT_EQ(Add("B").id, 21);
  EXPECT_THROW((void)Add("C", "20"), RefusedError);
  for (const char* id : {"0", "1", "-2", "x", "2147483648"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)Add("D", id); }), schedule_input::kId) << id;
  }
}

TEST_F(ScheduleDeskTest, ANameIsOneAlone) {
  for (const char* name : {"", " ", "late shift", "FULL ACCESS", "7", "Anna's", "a\nb"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)Add(name); }), schedule_input::kName) << name;
  }
}

TEST_F(ScheduleDeskTest, IsRenamedByItsIdOrItsName) {
  const ChangedSchedule renamed =
      RenameSchedule(session(), kUnit, "late shift", "Evenings", Trial::kNo);
  EXPECT_EQ(renamed.id, 3);
  EXPECT_EQ(renamed.former, "Late Shift");
  EXPECT_EQ(NameOf("3"), "Evenings");
  EXPECT_EQ(RenameSchedule(session(), kUnit, "3", "evenings", Trial::kNo).name, "evenings");
  EXPECT_EQ(NameOf("3"), "evenings");
  EXPECT_TRUE(RenameSchedule(session(), kUnit, "3", "evenings", Trial::kNo).unchanged);
}

TEST_F(ScheduleDeskTest, TheTwoOfEveryUnitStay) {
  for (const char* schedule : {"0", "1", "Full Access"}) {
    EXPECT_EQ(FieldAtFault(
                  [&] { (void)RenameSchedule(session(), kUnit, schedule, "Other", Trial::kNo); }),
              schedule_input::kSchedule)
        << schedule;
    EXPECT_EQ(FieldAtFault([&] { (void)DeleteSchedule(session(), kUnit, schedule, Trial::kNo); }),
              schedule_input::kSchedule)
        << schedule;
  }
}

TEST_F(ScheduleDeskTest, OneThatIsNotThereIsAFault) {
  for (const char* schedule : {"9", "Gardeners", ""}) {
    EXPECT_EQ(FieldAtFault([&] { (void)DeleteSchedule(session(), kUnit, schedule, Trial::kNo); }),
              schedule_input::kSchedule)
        << schedule;
  }
}

TEST_F(ScheduleDeskTest, WhatIsInUseIsRefusedWithThePlaces) {
  Run("UPDATE Tenants SET DOORSCHEDULE3=0 WHERE UnitKey=2 AND DOORSCHEDULE3=4");
  Run("UPDATE Tenants SET DOORSCHEDULE4=4 WHERE RID=62");
  EXPECT_EQ(RefusalOfDeleting("4"),
            "the schedule 4, Night Shift, is in use by 1 tenant: O'Brien Paula (RID 62), and by 1 "
            "directory code: 104 (RID 14). Give them another one first; nothing was deleted");
  EXPECT_EQ(NameOf("4"), "Night Shift");
  EXPECT_THAT(RefusalOfDeleting("Early Shift"),
              HasSubstr("; and 14 more, and by 2 directory codes: "));
}

TEST_F(ScheduleDeskTest, WhatNothingUsesIsDeleted) {
  (void)Add("Gardeners");
  EXPECT_EQ(RefusalOfDeleting("Gardeners"), "");
  EXPECT_EQ(NameOf("6"), "");
}

TEST_F(ScheduleDeskTest, AreListedWithTheirUses) {
  (void)Add("Gardeners");
  const List table = ScheduleList(session(), {{kUnit, "Linden Park"}});
  ASSERT_EQ(table.rows.size(), 7U);
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[1][3]), "75");
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[4][4]), "1");
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[6][2]), "Gardeners");
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[6][3]), "0");
}

TEST_F(ScheduleDeskTest, TrialsChangeNothing) {
  EXPECT_EQ(AddSchedule(session(), kUnit, "A", std::nullopt, Trial::kYes).id, 6);
  (void)RenameSchedule(session(), kUnit, "3", "B", Trial::kYes);
  EXPECT_EQ(NameOf("6"), "");
  EXPECT_EQ(NameOf("3"), "Late Shift");
}

}  // namespace
}  // namespace qorhost::test
