// An operator does all that the program does, and nothing else; an administrator owns the store.
#include "host/store/postgres/rights.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/store/demo.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

qorcred::Date Noon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

class Rights : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    nth_ = std::to_string(++count);
    database_ = "rights" + nth_;
    owner_ = std::make_unique<Connection>(
        OpenServerStore(TestServer::Shared().Create(database_), OpenMode::kCreate));
    GrantRights(*owner_, {"operators" + nth_, "administrators" + nth_});
    for (const char* login : {"olga", "adam", "nobody"}) {
      owner_->RunAll(fmt::format("CREATE ROLE {}{} LOGIN", login, nth_));
    }
    owner_->RunAll(
        fmt::format("GRANT operators{0} TO olga{0}; GRANT administrators{0} TO adam{0}", nth_));
    owner_->RunAll(R"(INSERT INTO "Units" ("UnitKey", "UnitName") VALUES (1, 'Court'))");
  }

  /// The store's name for a login.
  [[nodiscard]] std::string NameFor(const std::string& login) const {
    std::string name = TestServer::Shared().NameOf(database_);
    name.replace(name.find("tester"), 6, login + nth_);
    return name;
  }
  [[nodiscard]] Connection As(const std::string& login) const {
    return OpenServerStore(NameFor(login), OpenMode::kReadWrite);
  }

  /// What a statement at a login fails with; "done" when it does not.
  [[nodiscard]] static std::string FailureOf(Connection& connection, const std::string& sql) {
    try {
      connection.RunAll("BEGIN; " + sql);
    } catch (const StoreError& failure) {
      connection.UndoWhatIsOpen();
      return failure.fault() == StoreFault::kNoRights ? "no rights" : failure.what();
    }
    connection.UndoWhatIsOpen();
    return "done";
  }

  /// A unit of work by the login, which leaves an entry in several pieces.
  void Work(const std::string& login) const {
    Store store(As(login), Patience(), false);
    const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
    session->work().SignAs({login, "test", {}});
    WorkGuard guard(session->work(), {{1}, "add doors", {}});
    session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}, {"DOORNAME", "Main"}});
    session->units().KeepCounts(1);
    session->tenants().TakeLinkCodes(1, 2);
    session->steps().Queue(1, "program tenant", 1);
    (void)session->Change("INSERT INTO Tenants (RID, UnitKey, LastName) VALUES (7777, 1, 'Adam')",
                          std::nullopt);
    (void)session->Change("UPDATE Tenants SET LastName='Berg' WHERE RID=7777", std::nullopt);
    session->DeleteRow("Tenants", 7777);
    EXPECT_TRUE(guard.Commit());
    EXPECT_THAT(session->audit().Check(), IsEmpty());
  }

  std::string nth_;
  std::string database_;
  std::unique_ptr<Connection> owner_;
};

TEST_F(Rights, OfOperatorsAreEnoughForAllThatTheProgramDoes) {
  owner_->RunAll(R"(DELETE FROM "Units")");
  {
    Store store(As("olga"), Patience(), false);
    const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
    CreateDemoData(*session);
  }
  Work("olga");
  Work("adam");
  Work("olga");
  Store store(As("olga"), Patience(), false);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  EXPECT_THAT(session->audit().Check(), IsEmpty());
  const std::vector<WorkEntry> entries = session->audit().After(0, std::nullopt);
  ASSERT_GE(entries.size(), 3U);
  const std::vector<RowChange> changes = session->audit().RowsOf(entries.back().entry);
  ASSERT_FALSE(changes.empty());
  WorkGuard guard(session->work(), {{1}, "undo", {}});
  session->work().Lock();
  EXPECT_EQ(session->audit().PutBack(changes.front()), std::nullopt);
  EXPECT_TRUE(guard.Commit());
}

TEST_F(Rights, OfOperatorsEndAtTheAuditAndTheSchema) {
  Work("olga");
  Connection olga = As("olga");
  for (
      const char* sql : {
          R"(UPDATE "AuditEntries" SET "Who"='nobody')",
          R"(DELETE FROM "AuditEntries")",
          R"(TRUNCATE "AuditEntries")",
          R"(UPDATE "AuditRows" SET "Rows"='')",
          R"(DELETE FROM "AuditRows")",
          R"(DELETE FROM "AuditEnd")",
          R"(INSERT INTO "AuditEnd" VALUES (7))",
          R"(UPDATE "AuditEnd" SET "Last"=0)",
          R"(UPDATE "AuditEnd" SET "Last"="Last"+2)",
          // A further piece would alter what an entry says.
          R"(INSERT INTO "AuditRows" ("Entry", "Piece", "Rows") VALUES (1, 9, ''))",
          // An entry that is not the last one's, or one of no number of its own.
          R"(INSERT INTO "AuditEntries" VALUES (1, 9, '', '', '', 1, NULL, '', '', ''))",
          R"(INSERT INTO "AuditEntries" SELECT "HomeUnit", "RID"+1, "At", "Who", "Origin", "UnitKey", "Previous", "What", "Rows", "Hash" FROM "AuditEntries")",
          R"(UPDATE "UnitVersions" SET "Entry"=0)",
          R"(UPDATE "UnitVersions" SET "Mark"=0)",
          R"(INSERT INTO "UnitVersions" VALUES (5, 1, 0))",
          R"(DELETE FROM "UnitVersions")",
          R"(UPDATE "StoreSchema" SET "Version"=7)",
          R"(DROP TABLE "Tenants")",
          R"(ALTER TABLE "Tenants" ADD COLUMN x int)",
          R"(ALTER TABLE "AuditEntries" DISABLE TRIGGER ALL)",
          R"(DROP TRIGGER "Guard" ON "AuditRows")",
          R"(TRUNCATE "Tenants")",
          R"(CREATE TABLE qorhost.mine (x int))",
          R"(CREATE FUNCTION desktop.mine() RETURNS int LANGUAGE sql AS 'SELECT 1')",
          R"(DROP FUNCTION desktop.guard_end CASCADE)",
          R"(SET session_replication_role = replica)",
          R"(SELECT setval(pg_get_serial_sequence('"Tenants"', 'RID'), 1))",
      }) {
    EXPECT_EQ(FailureOf(olga, sql), "no rights") << sql;
  }
  EXPECT_EQ(FailureOf(olga, R"(UPDATE "DOORS" SET "DOORNAME"='Yard')"), "done");
}

TEST_F(Rights, OfAdministratorsAreThoseOfAnOwner) {
  Work("olga");
  Connection adam = As("adam");
  for (const char* sql : {
           R"(ALTER TABLE "Tenants" ADD COLUMN x int)",
           R"(CREATE TABLE qorhost.mine (x int))",
           R"(DROP SCHEMA qorhost CASCADE)",
           R"(DROP SCHEMA desktop CASCADE)",
       }) {
    EXPECT_EQ(FailureOf(adam, sql), "done") << sql;
  }
  GrantRights(adam, {"operators" + nth_, ""});  // again, as after an upgrade
  Work("olga");
}

TEST_F(Rights, OfOthersAreNone) {
  EXPECT_THROW((void)As("nobody"), StoreError);
}

TEST_F(Rights, AreGrantedToRolesThatAreThere) {
  owner_->RunAll(
      fmt::format("CREATE ROLE carl{0} LOGIN; GRANT administrators{0} TO carl{0}", nth_));
  Connection carl = As("carl");
  try {
    GrantRights(carl, {"missing" + nth_, ""});
    ADD_FAILURE() << "a role was made by one who may not";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("CREATE ROLE \"missing" + nth_ + "\" NOLOGIN"));
  }
  for (const Roles& odd : {Roles{"a\"b", ""}, Roles{"", "a'b"}, Roles{"same", "same"}}) {
    EXPECT_THROW(GrantRights(*owner_, odd), StoreError);
  }
}

}  // namespace

}  // namespace qorhost::postgres::test
