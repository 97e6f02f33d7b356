// What needs attention: which tenants, codes and cards, and the steps that settle it.
#include <gmock/gmock.h>

#include <algorithm>

#include "host/desks/attention_desk.h"
#include "host/desks/attention_list.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The session's day is 2026-01-31. Nobody in unit 2 has a period.
class AttentionTest : public DeskFixture {
 protected:
  [[nodiscard]] AttentionDays Days(std::int32_t within = 30) { return {session().Today(), within}; }
  [[nodiscard]] std::vector<std::int32_t> RidsFor(const std::string& reason,
                                                  std::int32_t within = 30) {
    return RidsIn(Answer(AttentionList(session(), kUnit, Days(within)),
                         {{"reason = " + reason}, "", "", {}}));
  }
  void SetEnd(std::int32_t rid, const std::string& end) {
    Run("UPDATE Tenants SET ACTIVETENANT=-1, ACTIVEENDTIME='" + end +
        "' WHERE RID=" + std::to_string(rid));
  }
  [[nodiscard]] std::string Tenant(const std::string& column, std::int32_t rid) {
    return Cell("SELECT " + column + " FROM Tenants WHERE RID=" + std::to_string(rid));
  }
  [[nodiscard]] std::vector<std::int32_t> Chosen(AttentionStep step,
                                                 std::vector<std::string> conditions = {}) {
    const AttentionDesk desk(session(), kUnit, Days(), std::move(conditions), step);
    std::vector<std::int32_t> rids;
    for (const TenantRow& tenant : desk.chosen()) {
      rids.push_back(tenant.rid);
    }
    return rids;
  }
};

TEST_F(AttentionTest, LeasesAreOverTheDayAfterTheyEndAndEndSoonUpToTheDayThatIsAskedFor) {
  SetEnd(62, "2026-01-30 23:59:59");
  SetEnd(63, "2026-01-31 00:00:00");
  SetEnd(64, "2026-03-02 23:59:59");
  SetEnd(65, "2026-03-03 00:00:00");
  EXPECT_THAT(RidsFor("expired"), ElementsAre(62));
  EXPECT_THAT(RidsFor("expiring"), ElementsAre(63, 64));
  EXPECT_THAT(RidsFor("expiring", 31), ElementsAre(63, 64, 65));
  EXPECT_THAT(RidsFor("expiring", 0), ElementsAre(63));
  const List days =
      Answer(AttentionList(session(), kUnit, Days()), {{"reason begins with exp"}, "", "days", {}});
  EXPECT_THAT(days.rows, ElementsAre(std::vector<Value>{-1.0}, std::vector<Value>{0.0},
                                     std::vector<Value>{30.0}));
}

TEST_F(AttentionTest, APeriodThatIsNotKeptEndsNothing) {
  SetEnd(62, "2026-01-30 23:59:59");
  Run("UPDATE Tenants SET ACTIVETENANT=0 WHERE RID=62");
  EXPECT_THAT(RidsFor("expired"), IsEmpty());
}

TEST_F(AttentionTest, WhoIsPastTheLastDayIsThereAsLongAsACardOrADoorIsLeft) {
  SetEnd(62, "2026-01-01 12:00:00");
  Run("UPDATE Tenants SET DOORSCHEDULE1=0, DOORSCHEDULE2=0, DOORSCHEDULE3=0, DOORSCHEDULE4=0 "
      "WHERE RID=62");
  EXPECT_THAT(RidsFor("expired"), ElementsAre(62)) << "a card";
  Run("UPDATE Tenants SET CREDENTIALID1=NULL, CREDENTIALID2=NULL, DIRECTORYCODE=NULL WHERE RID=62");
  EXPECT_THAT(RidsFor("expired"), IsEmpty());
  EXPECT_THAT(RidsFor("no card"), IsEmpty()) << "and nothing is missing then";
  EXPECT_EQ(std::ranges::count(RidsFor("no code"), 62), 0);
  Run("UPDATE Tenants SET DOORSCHEDULE4=1 WHERE RID=62");
  EXPECT_THAT(RidsFor("expired"), ElementsAre(62)) << "a door";
}

TEST_F(AttentionTest, CardsAndCodesThatAreMissingAreTold) {
  EXPECT_THAT(RidsFor("no card"), IsEmpty());
  Run("UPDATE Tenants SET CREDENTIALID1=NULL, CREDENTIALID2=NULL WHERE RID IN (62, 63)");
  Run("UPDATE Tenants SET Resident=1 WHERE RID=63");
  EXPECT_THAT(RidsFor("no card"), ElementsAre(62)) << "a resident is given none";
  const auto without = static_cast<std::size_t>(
      CountOf("SELECT RID FROM Tenants WHERE UnitKey=2 AND DIRECTORYCODE IS NULL"));
  EXPECT_THAT(RidsFor("no code"), SizeIs(without));
}

TEST_F(AttentionTest, CardsAreFreeThatNobodyHoldsInOrderOfTheirNumbers) {
  const std::vector<std::int32_t> free = RidsFor("free card");
  EXPECT_THAT(free, SizeIs(CountOf("SELECT RID FROM CredentialBank WHERE UnitKey=2 AND RID NOT IN "
                                   "(SELECT CREDENTIALID1 FROM Tenants WHERE CREDENTIALID1 IS NOT "
                                   "NULL) AND RID NOT IN (SELECT CREDENTIALID2 FROM Tenants WHERE "
                                   "CREDENTIALID2 IS NOT NULL)")));
  ASSERT_FALSE(free.empty());
  Run("UPDATE Tenants SET Resident=1, CREDENTIALID2=" + std::to_string(free.front()) +
      " WHERE RID=70");
  EXPECT_EQ(RidsFor("free card").size(), free.size() - 1) << "a resident holds it";
}

TEST_F(AttentionTest, DirectoryCodesAreOverOrEndSoonUnlessTheyAreDeleted) {
  Run("UPDATE DIRECTORYCODE SET ACTIVE=-1, ENDDATE='2026-01-30 10:00:00' WHERE RID=11");
  Run("UPDATE DIRECTORYCODE SET ACTIVE=-1, ENDDATE='2026-02-01 10:00:00' WHERE RID IN (12, 13)");
  Run("UPDATE DIRECTORYCODE SET MODIFIED=3 WHERE RID=13");
  Run("UPDATE DIRECTORYCODE SET ACTIVE=0, ENDDATE='2026-01-30 10:00:00' WHERE RID=14");
  EXPECT_THAT(RidsFor("expired code"), ElementsAre(11));
  EXPECT_THAT(RidsFor("expiring code", 1), ElementsAre(12));
}

TEST_F(AttentionTest, DeactivatingTakesCardsAndDoorsAndKeepsThePeriod) {
  SetEnd(62, "2026-01-30 23:59:59");
  SetEnd(63, "2026-02-05 23:59:59");
  const std::size_t free = RidsFor("free card").size();
  AttentionDesk desk(session(), kUnit, Days(), {}, AttentionStep::kDeactivate);
  ASSERT_THAT(desk.chosen(), SizeIs(1));
  const ChangedTenants tried = desk.Run(Trial::kYes);
  EXPECT_FALSE(tried.written);
  EXPECT_THAT(RidsFor("expired"), ElementsAre(62));
  const ChangedTenants done = desk.Run(Trial::kNo);
  EXPECT_TRUE(done.done());
  EXPECT_EQ(done.tenants, 1U);
  EXPECT_THAT(done.freed, SizeIs(1));
  EXPECT_EQ(Tenant("DOORSCHEDULE1", 62) + Tenant("DOORSCHEDULE2", 62) +
                Tenant("DOORSCHEDULE3", 62) + Tenant("DOORSCHEDULE4", 62),
            "0000");
  EXPECT_EQ(Tenant("ACTIVETENANT", 62), "True") << "or the tenant would be let in again";
  EXPECT_EQ(Tenant("CREDENTIALID1", 62), "");
  EXPECT_THAT(RidsFor("expired"), IsEmpty());
  EXPECT_EQ(RidsFor("free card").size(), free + 1);
  EXPECT_EQ(CountOf("SELECT RID FROM ProgramSteps WHERE SubjectRID=62"), 1U);
  EXPECT_NE(Tenant("CREDENTIALID1", 63), "") << "whose lease is not over";
}

TEST_F(AttentionTest, EndingIsForLeasesThatGoOnBeyondToday) {
  SetEnd(62, "2026-01-30 23:59:59");
  SetEnd(63, "2026-01-31 12:00:00");
  SetEnd(64, "2026-02-05 23:59:59");
  SetEnd(65, "2026-02-06 23:59:59");
  EXPECT_THAT(Chosen(AttentionStep::kEnd), ElementsAre(64, 65));
  EXPECT_THAT(Chosen(AttentionStep::kEnd, {"end < 2026-02-06"}), ElementsAre(64));
  AttentionDesk desk(session(), kUnit, Days(), {"rid = 64"}, AttentionStep::kEnd);
  EXPECT_TRUE(desk.Run(Trial::kNo).done());
  EXPECT_EQ(Cell("SELECT RID FROM Tenants WHERE RID=64 AND ACTIVEENDTIME=#2026-01-31 23:59:59#"),
            "64");
  EXPECT_EQ(Tenant("CREDENTIALID1", 64), "");
}

TEST_F(AttentionTest, NobodyIsChosenWhereNobodyIsMeant) {
  EXPECT_THAT(Chosen(AttentionStep::kEnd), IsEmpty());
  AttentionDesk desk(session(), kUnit, Days(), {}, AttentionStep::kDeactivate);
  const ChangedTenants none = desk.Run(Trial::kNo);
  EXPECT_TRUE(none.unchanged);
  EXPECT_EQ(none.meant, 0U);
  EXPECT_EQ(FieldAtFault([&] { (void)Chosen(AttentionStep::kEnd, {"floor = 1"}); }),
            report_input::kCondition);
}

TEST_F(AttentionTest, WhatSomebodyElseHasChangedMeanwhileIsNotOverwritten) {
  SetEnd(62, "2026-01-30 23:59:59");
  AttentionDesk desk(session(), kUnit, Days(), {}, AttentionStep::kDeactivate);
  TenantDesk other(session(), kUnit);
  other.Choose({"rid:62"});
  TenantEntry entry;
  entry.to = "2027-01-31";
  ASSERT_TRUE(other.Edit(entry, Trial::kNo).done());
  EXPECT_EQ(desk.Run(Trial::kNo).ending, Ending::kStale);
  EXPECT_NE(Tenant("CREDENTIALID1", 62), "");
}

TEST_F(AttentionTest, FreeCardsAreDeletedByTheReportUnlessSomebodyHoldsOneByNow) {
  FreeCards transmitters(session(), kUnit, Days(), {"name begins with Transmitter"});
  ASSERT_GT(transmitters.cards().size(), 5U);
  const std::int32_t taken = transmitters.cards().front().rid;
  const std::size_t before = RidsFor("free card").size();
  Run("UPDATE Tenants SET CREDENTIALID2=" + std::to_string(taken) + " WHERE RID=62");
  EXPECT_FALSE(transmitters.Delete().done());
  Run("UPDATE Tenants SET CREDENTIALID2=NULL WHERE RID=62");
  EXPECT_EQ(RidsFor("free card").size(), before) << "nothing was deleted";
  FreeCards again(session(), kUnit, Days(), {"name begins with Transmitter"});
  const DeletedCredentials deleted = again.Delete();
  EXPECT_TRUE(deleted.done());
  EXPECT_EQ(deleted.rows, static_cast<std::int32_t>(again.cards().size()));
  EXPECT_EQ(CountOf("SELECT RID FROM CredentialBank WHERE RID=" + std::to_string(taken)), 0U);
}

TEST_F(AttentionTest, ReadsEachTableOnceHoweverMuchThereIs) {
  Open(true);
  const auto statements = [&] {
    calls_.clear();
    (void)AttentionList(session(), kUnit, Days());
    return std::count_if(calls_.begin(), calls_.end(), [](const std::string& call) {
      return call.find("SELECT") != std::string::npos;
    });
  };
  const auto ofMany = statements();
  EXPECT_GT(ofMany, 3);
  Run("DELETE FROM Tenants WHERE UnitKey=2 AND RID>62");
  Run("DELETE FROM CredentialBank WHERE UnitKey=2 AND RID>500");
  EXPECT_EQ(statements(), ofMany);
}

}  // namespace
}  // namespace qorhost::test
