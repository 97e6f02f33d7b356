// What the server tells of changed rows: the text of a notice, and the order in which the history
// has the rows of a statement.
#include "host/store/postgres/told_row.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "host/store/postgres/change_log.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(ToldRow, HasItsCellsAsTheyAreWritten) {
  Told first(
      R"({"table":"Tenants","before":{"RID":7,"LastName":"a \"b\", {c} \\","Resident":null},"after":{"RID":7,"LastName":"ü","Resident":-1}})");
  const Told told(std::move(first));
  EXPECT_EQ(told.table(), "Tenants");
  EXPECT_EQ(told.rid(), 7);
  EXPECT_EQ(told.last(), 7);
  EXPECT_EQ(told.before().At("LastName"), R"("a \"b\", {c} \\")");
  EXPECT_EQ(told.before().At("Resident"), "null");
  EXPECT_EQ(told.after().At("LastName"), "\"ü\"");
  EXPECT_EQ(told.after().At("Resident"), "-1");
  EXPECT_EQ(told.after().At("FirstName"), "");
}

TEST(ToldRow, MayStandForThoseBehindIt) {
  const Told told(R"({"table" : "Tenants", "after" : {"RID":7,"UnitKey":1}, "last" : 12})");
  EXPECT_TRUE(told.before().empty());
  EXPECT_EQ(told.rid(), 7);
  EXPECT_EQ(told.last(), 12);
}

TEST(ToldRow, OfOtherWordsIsRefused) {
  for (const char* text : {"", "{", "[]", "{}", R"({"table":"Tenants"})", R"({"table":"Tenants)",
                           R"({"table":"Tenants","after":{"UnitKey":1}})",
                           R"({"table":"Tenants","after":{"RID":"x"}})",
                           R"({"table":"Tenants","after":{"RID":1)", R"({"after":{"RID":1},"\)"}) {
    EXPECT_THROW((void)Told(text), StoreError) << text;
  }
}

/// The identities of the rows of all changes.
std::vector<std::int64_t> RidsIn(const ChangeLog& log) {
  std::vector<std::int64_t> rids;
  for (const RowChange& change : log.changes()) {
    rids.push_back(change.rid);
  }
  return rids;
}

/// A log of what happens in a store with three credentials.
class ToldRows : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    name_ = TestServer::Shared().Create("told_rows" + std::to_string(++count));
    connection_ = std::make_unique<Connection>(
        OpenServerStore(name_, OpenMode::kCreate, {.spread = spread_}));
    connection_->RunAll(
        R"(INSERT INTO "CredentialBank" ("UnitKey", "PINNo") SELECT 1, n FROM generate_series(1, 3) n)");
  }
  void TearDown() override {
    if (connection_ != nullptr) {
      connection_->UndoWhatIsOpen();
    }
  }

  Spread spread_ = Spread::kNone;
  std::string name_;
  std::unique_ptr<Connection> connection_;
};

TEST_F(ToldRows, ComeInTheOrderOfTheIdentitiesOfTheirStatement) {
  // The first one lies behind the others from now on.
  connection_->RunAll(R"(UPDATE "CredentialBank" SET "PINNo"=9 WHERE "RID"=1)");
  ChangeLog log(*connection_);
  log.Start();

  PreparedText all{R"(UPDATE "CredentialBank" SET "PINNo"="PINNo"+10)", {}};
  connection_->Begin();
  (void)connection_->Run(all, {}, false);
  EXPECT_THAT(RidsIn(log), ElementsAre(1, 2, 3));

  PreparedText second{R"(DELETE FROM "CredentialBank" WHERE "RID"=$1::int4)", {}};
  for (const char* rid : {"3", "2"}) {
    const std::vector<Sent> values{Sent(rid)};
    connection_->RunLater(second, values);
  }
  PreparedText rest{R"(DELETE FROM "CredentialBank")", {}};
  (void)connection_->Run(rest, {}, false);
  EXPECT_THAT(RidsIn(log), ElementsAre(1, 2, 3, 3, 2, 1));
  EXPECT_EQ(log.touched(), 6);
}

TEST_F(ToldRows, ThatAreNewJoinTheirRunWhereverTheOrderHasBroughtIt) {
  connection_->RunAll(R"(INSERT INTO "Units" ("UnitKey", "UnitName") VALUES (1, 'Court'))");
  ChangeLog log(*connection_);
  log.Start();
  connection_->Begin();
  connection_->RunAll(
      R"(INSERT INTO "DOORS" ("RID", "UNITKEY") VALUES (8, 1), (6, 1), (5, 1), (9, 1))");
  EXPECT_THAT(RidsIn(log), ElementsAre(5, 6, 8, 9));
  connection_->RunAll(R"(INSERT INTO "DOORS" ("RID", "UNITKEY") VALUES (10, 1))");
  ASSERT_THAT(RidsIn(log), ElementsAre(5, 6, 8, 9));
  EXPECT_EQ(log.changes()[3].lastRid, 10);
  EXPECT_EQ(log.changes()[2].lastRid, 8);
}

/// The same in a store whose tables lie in several places.
class ToldRowsOfParts : public ToldRows {
 protected:
  ToldRowsOfParts() { spread_ = Spread::kPartitions; }
};

TEST_F(ToldRowsOfParts, AreThoseOfTheirTable) {
  connection_->RunAll(
      R"(INSERT INTO "Units" ("UnitKey", "UnitName") VALUES (1, 'Court'), (2, 'Gardens'))");
  ChangeLog log(*connection_);
  log.Start();
  connection_->Begin();
  for (
      const char* sql :
      {R"(INSERT INTO "CredentialBank" ("UnitKey", "PINNo") VALUES (1, 4), (1, 5))",
       R"(INSERT INTO "CredentialBank" ("UnitKey", "PINNo") VALUES (1, 6), (2, 7))",
       R"(INSERT INTO "DOORS" ("UNITKEY") VALUES (1), (2))",
       R"(UPDATE "CredentialBank" SET "UnitKey"=2 WHERE "PINNo"=1)",
       R"(DELETE FROM "DOORS" WHERE "UNITKEY"=2)",
       R"(INSERT INTO "ProgramSteps" ("UnitKey", "Kind", "QueuedAt", "Sent") VALUES (1, 'x', '', 0))"}) {
    connection_->RunAll(sql);
  }
  std::vector<std::string> told;
  for (const RowChange& change : log.changes()) {
    told.push_back(fmt::format("{} {} {}-{}", static_cast<int>(change.kind), change.table,
                               change.rid, change.lastRid));
  }
  EXPECT_THAT(told, ElementsAre("0 CredentialBank 4-7", "0 DOORS 1-2", "1 CredentialBank 1-1",
                                "2 DOORS 2-2"));
  EXPECT_EQ(log.touched(), 9);
  EXPECT_EQ(log.steps(), 1);
}

// Nobody but somebody else's trigger tells so. What it stands for would be missing in the history.
TEST_F(ToldRows, OfATableThatTheStoreDoesNotHaveKeepTheirWorkFromBeingStored) {
  connection_->RunAll(
      R"(INSERT INTO "Units" ("UnitKey", "UnitName") VALUES (1, 'Court'); )"
      "CREATE FUNCTION desktop.tell_other() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
      R"(RAISE INFO '{"table":"Gates","after":{"RID":1}}' USING ERRCODE = 'QHROW'; )"
      "RETURN NULL; END $$; "
      R"(CREATE TRIGGER "Other" AFTER INSERT ON "DOORS" )"
      "FOR EACH ROW EXECUTE FUNCTION desktop.tell_other()");
  Store store(OpenServerStore(name_, OpenMode::kReadWrite), Patience(), false);
  const auto session = store.StartSession([] {
    return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
  });
  for (const char* ownTriggers : {"ENABLE", "DISABLE"}) {
    connection_->RunAll(fmt::format(R"(ALTER TABLE "DOORS" {} TRIGGER "TellINSERT")", ownTriggers));
    WorkGuard guard(session->work(), {{1}, "add a door", {}});
    session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
    try {
      (void)guard.Commit();
      ADD_FAILURE() << "stored";
    } catch (const StoreError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("tells of a changed row in other words"));
      EXPECT_EQ(failure.fault(), StoreFault::kRefused);
    }
  }
  EXPECT_EQ(connection_->Run(R"(SELECT count(*) FROM "DOORS")").Number(0, 0), 0);
}

// A statement may change every row of a large store.
TEST_F(ToldRows, AreTakenWhileTheirStatementRuns) {
  connection_->RunAll(
      "CREATE FUNCTION desktop.rest_a_while() RETURNS trigger LANGUAGE plpgsql AS "
      "$$ BEGIN PERFORM pg_sleep(0.2); RETURN NULL; END $$; "
      R"(CREATE TRIGGER "Then" AFTER UPDATE ON "CredentialBank" )"
      "FOR EACH ROW EXECUTE FUNCTION desktop.rest_a_while()");
  ChangeLog log(*connection_);
  log.Start();
  connection_->Begin();
  std::int64_t seen = 0;
  Watch watch;
  watch.goesOn = [&](std::chrono::milliseconds) {
    seen = log.touched();
    return true;
  };
  PreparedText all{R"(UPDATE "CredentialBank" SET "PINNo"="PINNo"+10)", {}};
  (void)connection_->Run(all, {}, false, nullptr, watch);
  EXPECT_GE(seen, 2);
  EXPECT_EQ(log.touched(), 3);
}

}  // namespace

}  // namespace qorhost::postgres::test
