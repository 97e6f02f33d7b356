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
    GrantRightsAtOnce(*owner_, {"operators" + nth_, "administrators" + nth_});
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
          R"(SELECT setval('"AuditNumbers"', 1))",
          R"(ALTER SEQUENCE "AuditNumbers" RESTART)",
          // A further piece would alter what an entry says.
          R"(INSERT INTO "AuditRows" ("Entry", "Piece", "Rows") VALUES (1, 9, ''))",
          // An entry with a number that was not given to this session, or one of before.
          R"(INSERT INTO "AuditEntries" VALUES (1, 9, '', '', '', 1, NULL, '', '', ''))",
          R"(INSERT INTO "AuditEntries" SELECT "HomeUnit", "RID"+1, "At", "Who", "Origin", "UnitKey", "Previous", "What", "Rows", "Hash" FROM "AuditEntries")",
          // The number of another session's, which has it already and will add its entry.
          R"(INSERT INTO "AuditEntries" SELECT 1, last_value, '', '', 'x as ' || session_user, 1, "Entry", '', '', '' FROM "AuditNumbers", "UnitVersions")",
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
          R"(DROP FUNCTION desktop.guard_entry CASCADE)",
          R"(SET session_replication_role = replica)",
          R"(SELECT setval(pg_get_serial_sequence('"Tenants"', 'RID'), 1))",
      }) {
    EXPECT_EQ(FailureOf(olga, sql), "no rights") << sql;
  }
  EXPECT_EQ(FailureOf(olga, R"(UPDATE "DOORS" SET "DOORNAME"='Yard')"), "done");
}

TEST_F(Rights, OfOperatorsAddAnEntryBehindTheLastOneOfItsUnitUnderTheirOwnLogin) {
  Work("olga");
  owner_->RunAll(R"(INSERT INTO "Units" ("UnitKey", "UnitName") VALUES (2, 'Gardens'))");
  owner_->RunAll(R"(INSERT INTO "UnitVersions" VALUES (2, 0, 0))");
  Connection olga = As("olga");
  struct Entry {
    const char* unit = "1";
    const char* previous = R"("Entry")";
    const char* number = R"(nextval('"AuditNumbers"'))";
    std::string from = "'desk as ' || session_user";
    const char* home = "1";
  };
  const auto added = [&](const Entry& entry, const char* then = "") {
    return FailureOf(
        olga, fmt::format(
                  R"(INSERT INTO "AuditEntries" SELECT {}, {}, '', 'anybody', {}, {}, {}, '', '', )"
                  R"('' FROM "UnitVersions" WHERE "UnitKey"=1; {})",
                  entry.home, entry.number, entry.from, entry.unit, entry.previous, then));
  };
  constexpr const char* kRaise =
      R"(UPDATE "UnitVersions" SET "Entry"=currval('"AuditNumbers"') WHERE "UnitKey"=)";
  EXPECT_EQ(added({}, fmt::format("{}1", kRaise).c_str()), "done");
  EXPECT_EQ(added({}, fmt::format("{}2", kRaise).c_str()), "no rights") << "of another unit";
  EXPECT_EQ(added({.unit = "NULL", .previous = "NULL", .home = "0"}), "done");
  EXPECT_EQ(added({.unit = "NULL", .home = "0"}), "no rights");
  EXPECT_EQ(added({.previous = "NULL"}), "no rights") << "beside the chain";
  EXPECT_EQ(added({.previous = R"("Entry" - 1)"}), "no rights");
  EXPECT_EQ(added({.home = "2"}), "no rights") << "where nobody looks for it";
  EXPECT_EQ(added({.number = R"(nextval('"AuditNumbers"') + 1)"}), "no rights");
  EXPECT_EQ(added({.from = "'desk as adam'"}), "no rights");
  EXPECT_EQ(added({.from = "'desk'"}), "no rights");
  // A number that was given before somebody else has stored something for the unit.
  (void)olga.Run(R"(SELECT nextval('"AuditNumbers"'))");
  Work("adam");
  EXPECT_EQ(added({.number = R"(currval('"AuditNumbers"'))"}), "no rights");
}

TEST_F(Rights, AreSeenInTheEntriesWhoeverSignsThem) {
  Work("olga");
  Store store(As("olga"), Patience(), false);
  const WorkEntry entry = store.StartSession(Noon)->audit().After(0, std::nullopt).back();
  EXPECT_EQ(entry.who, "olga");
  EXPECT_EQ(entry.origin, "test as olga" + nth_);
}

TEST_F(Rights, StayWhenTheStoreIsBroughtUpToDate) {
  Work("olga");
  std::vector<Migration> steps(Migrations().begin(), Migrations().end());
  // A table in the place of another one, and one more sequence.
  const std::string later = R"(DROP TABLE "UnitCounters";
    CREATE TABLE "UnitCounters" ("RID" serial, "UnitKey" integer NOT NULL UNIQUE,
                                 "NextLinkCode" bigint, PRIMARY KEY ("UnitKey", "RID"));
    DROP FUNCTION desktop.guard_piece CASCADE)";
  steps.push_back({steps.back().version + 1, later});
  const auto openAs = [&](const std::string& login) {
    return OpenServerStore(NameFor(login), OpenMode::kReadWrite, {.steps = steps});
  };
  try {
    (void)openAs("olga");
    ADD_FAILURE() << "an operator has changed the schema";
  } catch (const StoreError& failure) {
    EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kNoRights));
    EXPECT_THAT(failure.what(), HasSubstr("let a member of the role 'administrators" + nth_));
  }
  (void)openAs("adam");
  Connection olga = openAs("olga");
  EXPECT_EQ(FailureOf(olga, R"(INSERT INTO "UnitCounters" ("UnitKey") VALUES (1))"), "done");
  EXPECT_EQ(FailureOf(olga, R"(TRUNCATE "UnitCounters")"), "no rights");
  EXPECT_EQ(FailureOf(olga, R"(INSERT INTO "AuditRows" VALUES (1, 1, 9, ''))"), "no rights");
  EXPECT_EQ(owner_
                ->Run("SELECT tableowner FROM pg_tables WHERE schemaname='qorhost' AND "
                      "tablename='UnitCounters'")
                .Text(0, 0),
            "administrators" + nth_);
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
  GrantRightsAtOnce(adam, {"operators" + nth_, ""});  // again, as after an upgrade
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
    GrantRightsAtOnce(carl, {"missing" + nth_, ""});
    ADD_FAILURE() << "a role was made by one who may not";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("CREATE ROLE \"missing" + nth_ + "\" NOLOGIN"));
  }
  for (const StoreRoles& odd :
       {StoreRoles{"a\"b", ""}, StoreRoles{"", "a'b"}, StoreRoles{"same", "same"}}) {
    EXPECT_THROW(GrantRightsAtOnce(*owner_, odd), StoreError);
  }
}

}  // namespace

}  // namespace qorhost::postgres::test
