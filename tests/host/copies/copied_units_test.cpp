// Units copied into stores that have others: new identities, and every link leading there.
#include "host/desks/copied_units.h"

#include <gmock/gmock.h>

#include <tuple>

#include "host/desks/store_check.h"
#include "host/store/store_error.h"
#include "tests/host/copies/copy_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kHolders =
    "SELECT t.LastName, t.FirstName, t.LINKCODE, c.CredentialType, c.PINNo, c.FacilityCode FROM "
    "Tenants t, CredentialBank c WHERE t.CREDENTIALID1=c.RID AND t.UnitKey=2 AND c.UnitKey=2 ORDER "
    "BY t.RID";
constexpr const char* kCodes =
    "SELECT t.LastName, d.DIRECTORYCODE, d.PHONENUMBER, d.STARTDATE FROM Tenants t, DirectoryCode "
    "d WHERE t.DIRECTORYCODE=d.RID AND t.UnitKey=2 AND d.UNITKEY=2 ORDER BY t.RID";
constexpr const char* kBackups =
    "SELECT t.LastName, b.UnitKey FROM Tenants t, TenantsBackup b WHERE b.TenantID=t.TenantID AND "
    "t.UnitKey=2 ORDER BY b.RID";
constexpr const char* kSteps =
    "SELECT s.Kind, s.Code, s.QueuedAt, t.LastName FROM ProgramSteps s, Tenants t WHERE "
    "s.SubjectRID=t.RID AND s.Kind='program tenant' AND s.UnitKey=2 ORDER BY s.RID";
constexpr const char* kGroups =
    "SELECT t.LastName, g.IsGroupZero FROM Tenants t, TenantGroup g WHERE t.GROUPID=g.RID AND "
    "t.UnitKey=2 AND g.UnitKey=2 ORDER BY t.RID";
constexpr const char* kCards =
    "SELECT CredentialType, PINNo, FacilityCode, DOORCODE, LASTMODIFIEDDATE FROM CredentialBank "
    "WHERE UnitKey=2 ORDER BY RID";

class UnitCopies : public CopyFixture, public testing::WithParamInterface<std::tuple<Kind, Kind>> {
 protected:
  void SetUp() override {
    if (LacksServer(std::get<0>(GetParam()), std::get<1>(GetParam()))) {
      GTEST_SKIP() << WhyNoServer();
    }
    from_ = DemoStore(std::get<0>(GetParam()));
    Change(from_, {"INSERT INTO TenantsBackup (UnitKey, TenantID) VALUES (2, 62)",
                   "INSERT INTO ProgramSteps (UnitKey, Kind, SubjectRID, Sent) VALUES (2, "
                   "'program tenant', 62, 0)"});
    to_ = NewStoreName(std::get<1>(GetParam()));
    // Identities of another unit stand where those of the copied rows stood.
    const std::vector<std::string> statements{
        "INSERT INTO Units (UnitKey, UnitName) VALUES (9, 'Other')",
        "INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (9, -1)",
        "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE) VALUES (9, 100)"};
    Change(to_, statements);
    std::vector<RowCells> cards;
    std::vector<RowCells> tenants;
    for (int number = 1; number <= 150; ++number) {
      cards.push_back({9, 1, number});
      tenants.push_back({9, "T", number});
    }
    const std::unique_ptr<Store> store = OpenStoreFile(to_, Access::kChange);
    const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
    const std::vector<std::string_view> ofCards{"UnitKey", "CredentialType", "PINNo"};
    const std::vector<std::string_view> ofTenants{"UnitKey", "LastName", "CREDENTIALID1"};
    session->AddRows("CredentialBank", ofCards, cards);
    session->AddRows("Tenants", ofTenants, tenants);
  }

  static void Change(const std::string& name, const std::vector<std::string>& statements) {
    const std::unique_ptr<Store> store = OpenStoreFile(name, Access::kChange);
    const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
    Undoable whole(session->transaction());
    for (const std::string& statement : statements) (void)session->Change(statement, {});
    whole.Keep();
  }
  void ExpectRefused(const UnitKeys& units, const std::string& words) {
    const std::vector<std::string> before = Everything(to_);
    try {
      (void)CopyStore(OrderFor(from_, to_, units));
      ADD_FAILURE() << "was not refused: " << words;
    } catch (const RefusedError& refusal) {
      EXPECT_THAT(refusal.what(), HasSubstr(words));
    }
    EXPECT_EQ(Everything(to_), before);
  }
  [[nodiscard]] static std::vector<std::string> FaultsIn(const std::string& name) {
    DeskSession session(OpenStoreFile(name, Access::kRead), {});
    std::vector<std::string> faults;
    for (const Finding& finding : FindingsIn(session, 2)) faults.push_back(finding.what);
    return faults;
  }

  std::string from_;
  std::string to_;
};

TEST_P(UnitCopies, HaveEveryRowAndEveryLinkWithNewIdentities) {
  const std::vector<std::string> others =
      Rows(to_, "SELECT * FROM Tenants WHERE UnitKey=9 ORDER BY RID");
  const StoreCopy made = CopyStore(OrderFor(from_, to_, {2}));
  EXPECT_FALSE(made.isWhole);
  for (const char* sql : {kHolders, kCodes, kBackups, kSteps, kGroups, kCards,
                          "SELECT UnitName FROM Units WHERE UnitKey=2",
                          "SELECT DOORID, DOORNAME FROM DOORS WHERE UNITKEY=2 ORDER BY RID",
                          "SELECT ScheduleID, ScheduleName, Modified FROM Schedules WHERE "
                          "UnitKey=2 ORDER BY RID",
                          "SELECT UNITTYPE, RECORDDEACTIVATION, DEACTIVATIONDATE, "
                          "MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey=2",
                          "SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=2"}) {
    EXPECT_EQ(Rows(to_, sql), Rows(from_, sql)) << sql;
  }
  for (const char* sql : {kHolders, kCodes, kBackups, kSteps, kGroups, kCards}) {
    EXPECT_THAT(Rows(to_, sql), testing::Not(IsEmpty())) << sql;
  }
  EXPECT_NE(Rows(to_, "SELECT MIN(RID) FROM Tenants WHERE UnitKey=2"),
            Rows(from_, "SELECT MIN(RID) FROM Tenants WHERE UnitKey=2"));
  EXPECT_EQ(Rows(to_, "SELECT * FROM Tenants WHERE UnitKey=9 ORDER BY RID"), others);
  EXPECT_THAT(Rows(to_, "SELECT UnitKey FROM Units ORDER BY UnitKey"), ElementsAre("2|", "9|"));
  EXPECT_EQ(FaultsIn(to_), FaultsIn(from_));
}

TEST_P(UnitCopies, AreOneEntryOfTheHistoryThatStaysWhereItWas) {
  (void)CopyStore(OrderFor(from_, to_, {2, 3}));
  const std::unique_ptr<Store> store = OpenStoreFile(to_, Access::kRead);
  const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
  const std::vector<WorkEntry> entries = session->audit().After(0, std::nullopt);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].who, "Bob");
  EXPECT_THAT(entries[0].what, testing::StartsWith("copy from "));
  EXPECT_EQ(entries[0].what.find('?'), std::string::npos);
  EXPECT_THAT(session->audit().Check(), IsEmpty());
  EXPECT_EQ(session->work().VersionOf(2).entry, entries[0].entry);
}

TEST_P(UnitCopies, OfTheWholeStoreTakeAllItsUnits) {
  const StoreCopy made = CopyStore(OrderFor(from_, to_));
  EXPECT_FALSE(made.isWhole);
  EXPECT_THAT(Rows(to_, "SELECT UnitKey FROM Units ORDER BY UnitKey"),
              ElementsAre("1|", "2|", "3|", "9|"));
  EXPECT_EQ(Rows(to_, kHolders), Rows(from_, kHolders));
}

TEST_P(UnitCopies, AreRefusedWhereTheirKeyIsTaken) {
  ExpectRefused({7}, "there is no unit 7 to copy");
  Change(to_, {"INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Here')"});
  ExpectRefused({2}, "has a unit 2 already, 'Here'");
  ExpectRefused({}, "has a unit 2 already, 'Here'");
  Change(to_, {"INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo) VALUES (3, 1, 1)"});
  ExpectRefused({3}, "has rows of a unit 3 in CredentialBank");
}

// An undone copy leaves what the history does not follow; the unit can be copied again.
TEST_P(UnitCopies, TakeThePlaceOfCountersBackupsAndStepsThatAreNoUnitsAnyMore) {
  Change(to_, {"INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (2, 7777)",
               "INSERT INTO TenantsBackup (UnitKey, TenantID) VALUES (2, 1)",
               "INSERT INTO ProgramSteps (UnitKey, Kind, SubjectRID) VALUES (2, 'program tenant', "
               "1)"});
  (void)CopyStore(OrderFor(from_, to_, {2}));
  for (const char* sql : {kBackups, kSteps, "SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=2",
                          "SELECT COUNT(*) FROM ProgramSteps WHERE UnitKey=2"}) {
    EXPECT_EQ(Rows(to_, sql), Rows(from_, sql)) << sql;
  }
}

TEST_P(UnitCopies, TakeTheirTypeWithThemUnlessItIsAnotherThere) {
  const std::string type = Rows(from_, "SELECT UNITTYPE FROM UnitSettings WHERE UnitKey=2")[0];
  const std::string name = type.substr(0, type.size() - 1);
  Change(to_, {"INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('" + name + "', 'MQ==')"});
  ExpectRefused({2}, "which has another capacity in the other store");
  Change(to_, {"DELETE FROM UNITTYPES"});
  (void)CopyStore(OrderFor(from_, to_, {2}));
  EXPECT_THAT(Rows(to_, "SELECT DESCRIPTION FROM UNITTYPES"), ElementsAre(type));
}

TEST_P(UnitCopies, TellLinksThatLedNowhere) {
  Change(from_, {"UPDATE Tenants SET CREDENTIALID2=99999 WHERE RID=62"});
  const StoreCopy made = CopyStore(OrderFor(from_, to_, {2}));
  ASSERT_EQ(made.copied.lost.size(), 1U);
  EXPECT_EQ(made.copied.lost[0].table, "Tenants");
  EXPECT_EQ(made.copied.lost[0].row, 62);
  EXPECT_EQ(made.copied.lost[0].column, "CREDENTIALID2");
  EXPECT_EQ(made.copied.lost[0].target, 99999);
  EXPECT_THAT(Rows(to_, "SELECT COUNT(*) FROM Tenants WHERE CREDENTIALID2=99999"),
              ElementsAre("0|"));
}

TEST_P(UnitCopies, ThatAreStoppedOrTriedLeaveTheStoreAsItWas) {
  const std::vector<std::string> before = Everything(to_);
  CopyOrder order = OrderFor(from_, to_, {2});
  for (const std::int64_t place : {1, 100, 250}) {
    order.progress = [place](std::int64_t done, std::int64_t) { return done < place; };
    EXPECT_THROW((void)CopyStore(order), CancelledError) << place;
    EXPECT_EQ(Everything(to_), before);
  }
  order.progress = nullptr;
  order.trial = Trial::kYes;
  EXPECT_FALSE(CopyStore(order).copied.rows.empty());
  EXPECT_EQ(Everything(to_), before);
}

TEST_P(UnitCopies, IntoNoStoreMakeOne) {
  const std::string made = NewName(std::get<1>(GetParam()));
  const StoreCopy copy = CopyStore(OrderFor(from_, made, {2}));
  EXPECT_TRUE(copy.isNewStore);
  EXPECT_EQ(Rows(made, kHolders), Rows(from_, kHolders));
  EXPECT_THAT(Rows(made, "SELECT UnitKey FROM Units"), ElementsAre("2|"));
  const std::string never = NewName(std::get<1>(GetParam()));
  EXPECT_THROW((void)CopyStore(OrderFor(from_, never, {7})), RefusedError);
  EXPECT_THROW((void)OpenStoreFile(never, Access::kRead), std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(Places, UnitCopies,
                         testing::Values(std::tuple(Kind::kFile, Kind::kFile),
                                         std::tuple(Kind::kFile, Kind::kServer),
                                         std::tuple(Kind::kServer, Kind::kFile)),
                         [](const auto& row) {
                           const auto name = [](Kind kind) {
                             return std::string(kind == Kind::kFile ? "File" : "Server");
                           };
                           return name(std::get<0>(row.param)) + "To" +
                                  name(std::get<1>(row.param));
                         });

}  // namespace
}  // namespace qorhost::test
