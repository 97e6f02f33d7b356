// The key of the unit in what the server is asked: where a statement names a row by its identity
// alone, and where it joins rows of one unit. No row is hidden by it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/dialect/translator.h"
#include "host/store/postgres/printer.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using qorcred::Value;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Printed {
  std::string sql;
  std::string inUnit;
  std::size_t values = 0;
};

Printed PrintedOf(const std::string& sql) {
  dialect::Translator translator(&Print);
  const dialect::Translation translation = translator.Translate(sql, "2026-01-31 14:05:09");
  return {translation.shape->sql, translation.shape->sqlInUnit, translation.parameters.size()};
}

TEST(UnitKey, GoesToARowThatIsNamedByItsIdentityAlone) {
  for (const char* sql :
       {"SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 7",
        "SELECT DirectoryCode FROM DIRECTORYCODE WHERE 7 = RID AND MODIFIED <> 3",
        "SELECT LastName FROM Tenants WHERE TenantID = 7",
        "SELECT UnitKey FROM Tenants AS t WHERE t.RID = 7",
        "UPDATE Tenants SET MODIFIED=1 WHERE RID=7", "DELETE FROM CredentialBank WHERE RID=7"}) {
    const Printed printed = PrintedOf(sql);
    EXPECT_THAT(printed.sql, Not(HasSubstr("UnitKey\" ="))) << sql;
    EXPECT_THAT(printed.inUnit,
                testing::ContainsRegex("AND \"\\w+\"\\.\"(UnitKey|UNITKEY)\" = \\$" +
                                       std::to_string(printed.values + 1) + "::int4"))
        << sql;
  }
}

TEST(UnitKey, GoesNowhereElse) {
  for (const char* sql :
       {"SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 7 AND UNITKEY = 1",
        "SELECT MODIFIED FROM DIRECTORYCODE", "SELECT TOTAL FROM UNITTYPES WHERE RID = 7",
        "SELECT Count(*) FROM Tenants WHERE RID = 7",  // gives a row in any case
        "SELECT RID FROM Tenants WHERE RID = 7 OR RID = 8",
        "SELECT RID FROM Tenants WHERE RID IN (7, 8)",
        "SELECT RID FROM Tenants WHERE RID = 7 UNION SELECT RID FROM Tenants WHERE RID = 8",
        "SELECT RID FROM Tenants WHERE RID > 7", "SELECT RID FROM Tenants WHERE NOT RID = 7",
        "INSERT INTO Units (RID, UnitKey) VALUES (7, 1)", "DELETE FROM Tenants WHERE RID IN (7)",
        "UPDATE Tenants SET MODIFIED=1 WHERE GROUPID=7"}) {
    EXPECT_THAT(PrintedOf(sql).inUnit, IsEmpty()) << sql;
  }
}

TEST(UnitKey, ReachesWhatIsLinkedToRowsOfAUnit) {
  EXPECT_THAT(PrintedOf("SELECT b.RID FROM credentialbank a, tenants b WHERE (a.RID = "
                        "b.CredentialID1 or a.RID = b.CredentialID2) and a.unitkey=1")
                  .sql,
              HasSubstr(R"( AND ("b"."UnitKey" = desktop.whole($2::float8)))"));
  EXPECT_THAT(PrintedOf("SELECT t.RID FROM Tenants t INNER JOIN DirectoryCode d ON "
                        "t.DIRECTORYCODE = d.RID WHERE t.UnitKey=1")
                  .sql,
              HasSubstr(R"( AND ("d"."UNITKEY" = desktop.whole($2::float8)))"));
}

TEST(UnitKey, ReachesNothingThatIsLinkedOtherwise) {
  for (const char* sql :
       {"SELECT b.RID FROM credentialbank a, tenants b WHERE a.RID = b.CredentialID1",
        "SELECT b.RID FROM credentialbank a, tenants b WHERE a.RID = b.RID AND a.UnitKey=1",
        "SELECT b.RID FROM credentialbank a, tenants b WHERE (a.RID = b.CredentialID1 OR a.RID = "
        "b.LINKCODE) AND a.UnitKey=1",
        "SELECT b.RID FROM credentialbank a LEFT JOIN tenants b ON a.RID = b.CredentialID1 WHERE "
        "a.UnitKey=1",
        "SELECT b.RID FROM credentialbank a, tenants b WHERE a.RID = b.CredentialID1 AND "
        "a.UnitKey>1"}) {
    EXPECT_THAT(PrintedOf(sql).sql, Not(HasSubstr(R"("b"."UnitKey")"))) << sql;
  }
}

/// On a server whose tables lie in several places.
class UnitKeySession : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static const std::string made = [] {
      (void)OpenServerStore(TestServer::Shared().Create("spread"), OpenMode::kCreate,
                            {.spread = Spread::kPartitions});
      return std::string("spread");
    }();
    static int count = 0;
    const std::string name = TestServer::Shared().Create("unitkey" + std::to_string(++count), made);
    store_ =
        std::make_unique<Store>(OpenServerStore(name, OpenMode::kReadWrite), Patience(), false);
    session_ = store_->StartSession([] { return qorcred::FromCivil({2026, 1, 31, 12, 0, 0}); });
    for (const std::int32_t unit : {1, 2}) {
      session_->AddRow("Units", std::vector<Field>{{"UnitKey", unit}});
      codes_.push_back(session_->AddRow("DirectoryCode",
                                        std::vector<Field>{{"UNITKEY", unit}, {"MODIFIED", unit}}));
    }
  }

  [[nodiscard]] Value StateOf(std::int32_t rid) {
    return session_->Scalar("SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = " +
                            std::to_string(rid));
  }

  std::unique_ptr<Store> store_;
  std::unique_ptr<SqlSession> session_;
  std::vector<std::int32_t> codes_;  // one of each unit
};

TEST_F(UnitKeySession, ReadsARowOfAnotherUnitThanTheOperations) {
  const WorkGuard guard(session_->work(), {{1}, "look", {}});
  EXPECT_EQ(StateOf(codes_[0]), Value(1));
  EXPECT_EQ(StateOf(codes_[1]), Value(2));
  EXPECT_EQ(StateOf(codes_[1] + 1), Value());
}

TEST_F(UnitKeySession, ChangesARowOfAnotherUnitThanTheOperations) {
  WorkGuard guard(session_->work(), {{1}, "change", {}});
  for (const std::int32_t code : codes_) {
    EXPECT_EQ(session_
                  ->Change("UPDATE DirectoryCode SET MODIFIED=3 WHERE RID=" + std::to_string(code),
                           std::nullopt)
                  .rows,
              1);
  }
  EXPECT_TRUE(guard.Commit());
  EXPECT_EQ(StateOf(codes_[0]), Value(3));
  EXPECT_EQ(StateOf(codes_[1]), Value(3));
}

TEST_F(UnitKeySession, DeletesARowOfAnotherUnitThanTheOperations) {
  WorkGuard guard(session_->work(), {{1}, "delete", {}});
  EXPECT_EQ(session_->DeleteRow("DirectoryCode", codes_[1]), 1);
  EXPECT_EQ(session_->DeleteRow("DirectoryCode", codes_[1]), 0);
  EXPECT_EQ(session_->DeleteRow("DirectoryCode", codes_[0]), 1);
  EXPECT_TRUE(guard.Commit());
}

TEST_F(UnitKeySession, ComparesTheVersionOfARowOfAnotherUnitThanTheOperations) {
  const Value none = qorcred::Null{};
  for (const std::int32_t code : codes_) {
    WorkGuard guard(session_->work(), {{1}, "change", {}});
    const std::string update =
        "UPDATE DirectoryCode SET MODIFIED=3 WHERE RID=" + std::to_string(code);
    EXPECT_EQ(session_->UpdateVersion(update, {"DIRECTORYCODE", code, none}).rows, 1);
    const Value other("2020-01-01 00:00:00");
    EXPECT_EQ(session_->UpdateVersion(update, {"DIRECTORYCODE", code, other}).rows, 0);
    EXPECT_TRUE(guard.Commit());
  }
}

TEST_F(UnitKeySession, PutsBackRowsOfAnotherUnitThanTheOperations) {
  const std::string rid = std::to_string(codes_[1]);
  std::vector<RowChange> changes;
  for (const std::string& sql :
       {"UPDATE DirectoryCode SET MODIFIED=3 WHERE RID=" + rid,
        std::string("INSERT INTO DirectoryCode (UNITKEY, MODIFIED) VALUES (2, 4)"),
        "DELETE FROM DirectoryCode WHERE RID=" + rid}) {
    WorkGuard guard(session_->work(), {{1}, "wrong unit", {}});
    (void)session_->Change(sql, std::nullopt);
    EXPECT_TRUE(guard.Commit());
    const std::int64_t entry = session_->audit().After(0, 1).back().entry;
    changes.push_back(session_->audit().RowsOf(entry).front());
  }
  WorkGuard guard(session_->work(), {{1}, "undo", {}});
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    EXPECT_EQ(session_->audit().PutBack(*change), std::nullopt);
  }
  EXPECT_TRUE(guard.Commit());
  EXPECT_EQ(StateOf(codes_[1]), Value(2));
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM DirectoryCode"), Value(2));
}

TEST_F(UnitKeySession, AnOperationOnSeveralUnitsAsksAsOneOnTheWholeStore) {
  WorkGuard guard(session_->work(), {{1, 2}, "change", {}});
  EXPECT_EQ(StateOf(codes_[1]), Value(2));
  EXPECT_EQ(session_->DeleteRow("DirectoryCode", codes_[1]), 1);
  EXPECT_EQ(session_->DeleteRow("DirectoryCode", codes_[0]), 1);
  EXPECT_TRUE(guard.Commit());
}

TEST_F(UnitKeySession, TellsAnIdentityThatStandsInSeveralUnits) {
  EXPECT_THAT(store_->Damages(), IsEmpty());
  store_->connection().RunAll(R"(INSERT INTO "DOORS" ("RID", "UNITKEY") VALUES (7, 1), (7, 2))");
  EXPECT_THAT(store_->Damages(),
              testing::ElementsAre("the identity 7 of DOORS stands in several units: 1, 2"));
}

TEST_F(UnitKeySession, APlainStoreKeepsAnIdentityFromStandingTwice) {
  Store plain(OpenServerStore(TestServer::Shared().Create("unitkey_plain"), OpenMode::kCreate),
              Patience(), false);
  const auto session = plain.StartSession([] {
    return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
  });
  for (const std::int32_t unit : {1, 2}) {
    session->AddRow("Units", std::vector<Field>{{"UnitKey", unit}});
  }
  session->AddRow("DOORS", std::vector<Field>{{"RID", 7}, {"UNITKEY", 1}});
  EXPECT_THROW(session->AddRow("DOORS", std::vector<Field>{{"RID", 7}, {"UNITKEY", 2}}),
               StoreError);
  EXPECT_EQ(session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 2}}), 8);
}

}  // namespace

}  // namespace qorhost::postgres::test
