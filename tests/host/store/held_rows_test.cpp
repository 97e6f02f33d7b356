// Rows that are held and written many at once are those that would have been written one by one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "host/store/store_error.h"
#include "host/store/unit_of_work.h"
#include "host/store/write_buffer.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class HeldRowsTest : public StoreFixture {
 protected:
  [[nodiscard]] SqlSession& Sql() { return connection_->session(); }
  [[nodiscard]] UnitOfWork& Work() { return Sql().work(); }
  void Begin() { Work().Begin({{kUnit}, "issue", {}}); }

  std::int64_t AddCredential(std::int32_t number, std::int32_t unit = kUnit) {
    return Sql()
        .Change("INSERT INTO CREDENTIALBANK(UnitKey,RID,PINNo,LASTMODIFIEDDATE)VALUES(" +
                    std::to_string(unit) + ",_ROWID_," + std::to_string(number) + ",'_LMDATE_')",
                dialect::StatementKind::kInsert)
        .newRow;
  }
  std::int64_t AddTenant(std::int32_t code, std::int32_t unit = kUnit) {
    return Sql()
        .Change("INSERT INTO TENANTS(UnitKey,LastName,LINKCODE,ACTIVETENANT)VALUES(" +
                    std::to_string(unit) + ",'No Name" + std::to_string(code) + "'," +
                    std::to_string(code) + ",True)",
                dialect::StatementKind::kInsert)
        .newRow;
  }
  [[nodiscard]] std::string Read(const std::string& sql) {
    return qorcred::ToText(Sql().Scalar(sql));
  }
  /// A rule that the store is not known to have.
  void AddRule() { Run("CREATE UNIQUE INDEX broken ON CredentialBank (UnitKey, PINNo)"); }
  /// So many rows are added before the first ones are held.
  static constexpr std::int32_t kLooked = 5;
  /// What a save with tenants does for a number.
  void Issue(std::int32_t number) {
    AddCredential(number);
    const std::int32_t code = Sql().tenants().NextLinkCode(kUnit);
    const auto tenant = static_cast<std::int32_t>(AddTenant(code));
    Sql().tenants().TakeLinkCodes(kUnit, 1);
    const std::int32_t id = Sql().tenants().TenantIdOf(kUnit, tenant);
    EXPECT_EQ(id, tenant);
    (void)Sql().Change(
        "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (1 , " + std::to_string(id) + ")",
        std::nullopt);
    Sql().steps().Queue(kUnit, step::kProgramTenant, tenant);
  }
  /// The rows of the latest audit entry.
  [[nodiscard]] std::vector<std::string> Audited() {
    std::vector<std::string> rows;
    for (const RowChange& change :
         Sql().audit().RowsOf(Number("SELECT max(RID) FROM AuditEntries"))) {
      rows.push_back(TextOfChange(change));
    }
    return rows;
  }
};

TEST_F(HeldRowsTest, HaveTheIdentitiesThatWereTold) {
  Begin();
  std::vector<std::int64_t> told;
  for (std::int32_t number = 1; number <= 1000; ++number) {
    told.push_back(AddCredential(number));
  }
  EXPECT_TRUE(Work().Commit());
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  for (std::size_t at = 0; at < told.size(); at += 37) {
    EXPECT_EQ(Number("SELECT PINNo FROM CredentialBank WHERE RID=" + std::to_string(told[at])),
              static_cast<std::int64_t>(at) + 1);
  }
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank WHERE UnitKey=1 AND "
                   "LASTMODIFIEDDATE='2026-01-31 14:05:09'"),
            1000);
  EXPECT_EQ(Number("SELECT max(RID) FROM CredentialBank"), told.back());
}

TEST_F(HeldRowsTest, AreThereForWhoeverReads) {
  Begin();
  for (std::int32_t number = 1; number <= 40; ++number) {
    AddCredential(number);
    if (number % 3 == 0) {
      EXPECT_EQ(Read("SELECT Count(*) FROM CREDENTIALBANK"), std::to_string(number));
    }
    if (number % 7 == 0) {
      EXPECT_EQ(Sql().units().Count(kUnit).credentials, number);
    }
  }
  EXPECT_EQ(Sql().Change("UPDATE CREDENTIALBANK SET PINNo=PINNo+100", std::nullopt).rows, 40);
  AddCredential(141);
  EXPECT_EQ(Sql().Change("DELETE FROM CREDENTIALBANK WHERE PINNo>139", std::nullopt).rows, 2);
  EXPECT_TRUE(Work().Commit());
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank WHERE PINNo BETWEEN 101 AND 139"), 39);
}

TEST_F(HeldRowsTest, OfSeveralTablesLeaveTheSameAuditAsOneByOne) {
  std::vector<std::vector<std::string>> audits;
  for (const bool readsBetween : {true, false}) {
    connection_.reset();
    SetUp();
    Begin();
    for (std::int32_t number = 1; number <= 100; ++number) {
      Issue(number);
      if (readsBetween) {
        (void)Read("SELECT Count(*) FROM TENANTS");
      }
    }
    EXPECT_EQ(Work().stepsQueued(), 100);
    EXPECT_TRUE(Work().Commit());
    audits.push_back(Audited());
    EXPECT_EQ(Number("SELECT count(*) FROM Tenants WHERE LINKCODE=RID AND ACTIVETENANT=-1 AND "
                     "Resident=0"),
              100);
    EXPECT_EQ(Number("SELECT count(*) FROM TenantsBackup WHERE TenantID=RID AND UnitKey=1"), 100);
    EXPECT_EQ(Number("SELECT count(*) FROM ProgramSteps WHERE SubjectRID=RID AND Code IS NULL AND "
                     "Sent=0 AND Kind='program tenant'"),
              100);
    EXPECT_EQ(Number("SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=1"), 101);
    EXPECT_EQ(Sql().audit().Check().size(), 0U);
  }
  EXPECT_EQ(audits[0].size(), 2U);  // a run of each audited table
  EXPECT_EQ(audits[1].size(), 2U);
  EXPECT_EQ(audits[0], audits[1]);
}

TEST_F(HeldRowsTest, OfAnotherFormKeepTheirOrder) {
  Begin();
  for (std::int32_t number = 1; number <= 60; ++number) {
    AddCredential(number);
    if (number % 5 == 0) {
      (void)Sql().Change("INSERT INTO CREDENTIALBANK(UnitKey,PINNo,DOORCODE) VALUES (1,0,NULL)",
                         std::nullopt);
    }
  }
  EXPECT_TRUE(Work().Commit());
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank"), 72);
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank a, CredentialBank b WHERE a.RID<b.RID AND "
                   "a.PINNo>b.PINNo AND b.PINNo>0"),
            0);
}

TEST_F(HeldRowsTest, AreUndoneWithWhatTheyBelongTo) {
  Begin();
  AddCredential(1);
  AddCredential(2);
  {
    Undoable part(Sql().savepoint());
    for (std::int32_t number = 3; number <= 20; ++number) {
      AddCredential(number);
    }
    part.Undo();
  }
  const std::int64_t next = AddCredential(21);
  {
    Undoable inner(Sql().transaction());
    AddCredential(22);
    AddCredential(23);
    inner.Undo();
  }
  EXPECT_EQ(Read("SELECT Count(*) FROM CREDENTIALBANK"), "3");
  EXPECT_EQ(Number("SELECT max(RID) FROM CredentialBank"), next);
  Work().Undo();
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank"), 0);
}

TEST_F(HeldRowsTest, CountAsWrittenBeforeTheyAre) {
  Begin();
  Work().Lock();
  AddCredential(1);
  const std::int64_t before = Work().written();
  AddCredential(2);
  const std::int64_t held = Work().written();
  EXPECT_GT(held, before);
  EXPECT_EQ(Read("SELECT Count(*) FROM CREDENTIALBANK"), "2");
  EXPECT_EQ(Work().written(), held);
  Work().Undo();
}

/// A row that breaks a rule which came behind those that are held: for every place.
TEST_F(HeldRowsTest, AreToldByNameWhenOneFailsAndTheWholeIsUndone) {
  constexpr std::int32_t kRows = 90;
  Run("INSERT INTO CredentialBank (UnitKey, PINNo) VALUES (1, 500)");
  for (std::int32_t nth = kLooked + 1; nth <= kRows; ++nth) {
    SCOPED_TRACE(nth);
    Begin();
    std::string failure;
    std::int64_t failed = 0;
    try {
      for (std::int32_t number = 1; number <= kRows; ++number) {
        const std::int64_t rid = AddCredential(number == nth ? 500 : number);
        failed = number == nth ? rid : failed;
        if (number == kLooked) {
          AddRule();
        }
      }
      (void)Read("SELECT Count(*) FROM CREDENTIALBANK");
    } catch (const StoreError& error) {
      failure = error.what();
    }
    ASSERT_NE(failed, 0) << "it was not held";
    EXPECT_THAT(failure, HasSubstr("Row " + std::to_string(failed) + " of CredentialBank"));
    EXPECT_THROW((void)AddCredential(501), StoreError);
    EXPECT_THROW((void)Work().Commit(), StoreError);
    EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank"), 1);
    EXPECT_FALSE(Sql().inTransaction());
  }
  Begin();
  AddCredential(1);
  EXPECT_TRUE(Work().Commit());
}

TEST_F(HeldRowsTest, ThatFailInTheConnectionsTransactionAreNotCommitted) {
  Sql().transaction().Begin();
  for (const std::int32_t number : {1, 2, 3, 4, 5, 6, 7, 8, 9, 9}) {
    AddCredential(number);
    if (number == kLooked) {
      AddRule();
    }
  }
  EXPECT_THROW((void)Read("SELECT Count(*) FROM CREDENTIALBANK"), StoreError);
  EXPECT_THROW((void)AddCredential(11), StoreError);
  EXPECT_THROW(Sql().transaction().Commit(), StoreError);
  Sql().transaction().Rollback();
  EXPECT_EQ(Read("SELECT Count(*) FROM CREDENTIALBANK"), "0");
}

TEST_F(HeldRowsTest, ThatFailInAPartAreForgivenWithIt) {
  Begin();
  Work().Lock();
  for (std::int32_t line = 1; line <= 3; ++line) {
    Undoable part(Sql().savepoint());
    try {
      for (std::int32_t number = 1; number <= 10; ++number) {
        AddCredential(line == 2 && number > 8 ? 0 : line * 100 + number);
        if (line == 2 && number == kLooked) {
          AddRule();
        }
      }
      part.Keep();
      EXPECT_NE(line, 2);
    } catch (const StoreError&) {
      EXPECT_EQ(line, 2);
      part.Undo();
    }
  }
  EXPECT_TRUE(Work().Commit());
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank"), 20);
}

// A rule that is there when the rows come: they are told to whoever adds them, one by one.
TEST_F(HeldRowsTest, AreNoneOfATableWithARuleOfItsOwn) {
  AddRule();
  Sql().transaction().Begin();
  for (std::int32_t number = 1; number <= 10; ++number) {
    AddCredential(number);
  }
  EXPECT_THROW((void)AddCredential(5), StoreError);
  Sql().transaction().Rollback();
}

TEST_F(HeldRowsTest, KnowTheLinkCodesThatTheStoreKnows) {
  Run("INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Gardens')");
  constexpr unsigned kSeed = 4711;
  std::mt19937 random(kSeed);
  Work().Begin({{}, "issue", {}});
  Work().Lock();
  for (int turn = 0; turn < 500; ++turn) {
    const std::int32_t unit = 1 + static_cast<std::int32_t>(random() % 2);
    const std::string key = std::to_string(unit);
    switch (random() % 8) {
      case 0:
        AddTenant(static_cast<std::int32_t>(random() % 5000), unit);
        break;
      case 1:
        (void)Sql().Change("DELETE FROM TENANTS WHERE UnitKey=" + key + " AND LINKCODE>4000",
                           std::nullopt);
        break;
      case 2:
        Sql().tenants().TakeLinkCodes(unit, 1);
        break;
      case 3:
        (void)Sql().Change("UPDATE TENANTS SET LINKCODE=LINKCODE+1 WHERE UnitKey=" + key,
                           std::nullopt);
        break;
      default: {
        const std::int32_t code = Sql().tenants().NextLinkCode(unit);
        AddTenant(code, unit);
        Sql().tenants().TakeLinkCodes(unit, 1);
        break;
      }
    }
    if (random() % 4 == 0) {
      const std::int32_t told = Sql().tenants().NextLinkCode(unit);
      (void)Read("SELECT Count(*) FROM TENANTS");  // from here on everything is in the store
      const std::int64_t counter =
          Number("SELECT max(NextLinkCode) FROM UnitCounters WHERE UnitKey=" + key);
      const std::int64_t after = Number("SELECT max(LINKCODE)+1 FROM Tenants WHERE UnitKey=" + key);
      ASSERT_EQ(told, std::max({counter, after, std::int64_t{1}})) << "turn " << turn;
      ASSERT_EQ(counter, told) << "turn " << turn;
    }
  }
  EXPECT_TRUE(Work().Commit());
}

TEST_F(HeldRowsTest, OfTenantsTellTheirIdsAlone) {
  Begin();
  std::vector<std::int32_t> rids;
  for (std::int32_t code = 1; code <= 30; ++code) {
    rids.push_back(static_cast<std::int32_t>(AddTenant(code)));
  }
  for (const std::int32_t rid : rids) {
    EXPECT_EQ(Sql().tenants().TenantIdOf(kUnit, rid), rid);
    EXPECT_EQ(Sql().tenants().TenantIdOf(2, rid), 0);
  }
  EXPECT_EQ(Sql().tenants().TenantIdOf(kUnit, rids.back() + 1), 0);
  Work().Undo();
}

TEST_F(HeldRowsTest, TakeEveryKindOfValue) {
  const std::string text = "it''s \"quoted\" \\ {a,b} \xC3\xA4\n NULL";
  Begin();
  for (int row = 0; row < 12; ++row) {
    (void)Sql().Change(
        "INSERT INTO DIRECTORYCODE(UNITKEY,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
        "ISDNDCHECKED,ACTIVE,STARTDATE,DISPLAYNAME,CFEXTENSION) VALUES (1,123456789012345.5,'" +
            text + "','',-2147483647,True,False,#1/31/2026#,NULL,'NULL')",
        std::nullopt);
  }
  EXPECT_TRUE(Work().Commit());
  EXPECT_EQ(Number("SELECT count(*) FROM DirectoryCode WHERE DIRECTORYCODE=123456789012345.5 AND "
                   "PHONENUMBER='" +
                   text +
                   "' AND EXTENSION='' AND TIMEDELAY=-2147483647 AND ISDNDCHECKED=-1 AND ACTIVE=0 "
                   "AND STARTDATE='2026-01-31 00:00:00' AND DISPLAYNAME IS NULL AND "
                   "CFEXTENSION='NULL' AND MODIFIED=0"),
            12);
}

/// A message to a server takes 65,535 values.
TEST_F(HeldRowsTest, AreFoundByListsOfAnyLengthThatADialectTakes) {
  std::string list;
  for (int number = 1; number <= 100'000; ++number) {
    list += (number == 1 ? "" : ",") + std::to_string(number);
  }
  Begin();
  AddCredential(3);
  AddCredential(99'999);
  AddCredential(100'001);
  EXPECT_EQ(Read("SELECT Count(*) FROM CREDENTIALBANK WHERE PINNo IN (" + list + ")"), "2");
  EXPECT_EQ(Sql()
                .Change("UPDATE CREDENTIALBANK SET DOORCODE=7 WHERE PINNo IN (" + list + ")",
                        std::nullopt)
                .rows,
            2);
  EXPECT_TRUE(Work().Commit());
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank WHERE DOORCODE=7"), 2);
}

TEST_F(HeldRowsTest, StopAtTheLastIdentity) {
  Begin();
  (void)Sql().AddRow("CredentialBank", std::vector<Field>{{"RID", 2147483645}, {"UnitKey", 1}});
  EXPECT_EQ(AddCredential(1), 2147483646);
  EXPECT_EQ(AddCredential(2), 2147483647);
  EXPECT_THROW((void)AddCredential(3), StoreError);
  Work().Undo();
}

}  // namespace
}  // namespace qorhost::test
