// Stores on a server as they are made, opened, refused and lost.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "frame/date.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/session.h"
#include "host/store/postgres/store.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::HasSubstr;

class ServerStore : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    name_ = TestServer::Shared().Create("opening" + std::to_string(++count));
  }

  [[nodiscard]] Store Open(OpenMode mode) const {
    return {OpenServerStore(name_, mode), Patience(), mode == OpenMode::kReadOnly};
  }
  [[nodiscard]] std::string FailureToOpen(OpenMode mode, StoreFault fault) const {
    try {
      (void)Open(mode);
    } catch (const StoreError& failure) {
      EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(fault));
      return failure.what();
    }
    return "it was opened";
  }

  std::string name_;
};

qorcred::Date Noon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

TEST_F(ServerStore, IsMadeOnceAndThenOpened) {
  EXPECT_THAT(FailureToOpen(OpenMode::kReadWrite, StoreFault::kNoStore),
              HasSubstr("create it first"));
  {
    Store made = Open(OpenMode::kCreate);
    made.StartSession(Noon)->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  }
  Store again = Open(OpenMode::kCreate);
  EXPECT_EQ(again.StartSession(Noon)->Scalar("SELECT Count(*) FROM Units"), qorcred::Value(1));
}

TEST_F(ServerStore, OfANewerSchemaIsRefused) {
  (void)Open(OpenMode::kCreate);
  Connection(name_).RunAll(R"(UPDATE qorhost."StoreSchema" SET "Version" = "Version" + 1)");
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite, OpenMode::kCreate}) {
    EXPECT_THAT(FailureToOpen(mode, StoreFault::kRefused), HasSubstr("newer version"));
  }
}

TEST_F(ServerStore, IsNotSpreadOverServersWhereTheServerHasNoFunctionsForIt) {
  try {
    (void)OpenServerStore(name_, OpenMode::kCreate, {.spread = Spread::kServers});
    ADD_FAILURE() << "it was made";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("cannot spread tables over several servers"));
  }
  EXPECT_EQ(Connection(name_)
                .Run("SELECT count(*) FROM pg_namespace WHERE nspname IN ('qorhost', 'desktop')")
                .Number(0, 0),
            0);
}

/// Functions of the names by which a distributed server is told where tables lie, which write down
/// what they are told, and at which table something stood already that such servers refuse.
constexpr const char* kStandIns = R"sql(
CREATE TABLE public.told (number serial, call text, links int8);
CREATE FUNCTION public.note(what text) RETURNS void LANGUAGE sql AS $$
  INSERT INTO public.told (call, links) SELECT what, count(*) FROM pg_constraint WHERE contype = 'f'
$$;
CREATE FUNCTION public.create_distributed_table(relation regclass, distribution_column text,
                                                colocate_with text DEFAULT 'default')
RETURNS void LANGUAGE sql AS $$
  SELECT public.note(relation::text || ' by ' || distribution_column || ' beside ' || colocate_with
                     || (SELECT count(*) FROM pg_trigger WHERE tgrelid = relation)::text)
$$;
CREATE FUNCTION public.create_reference_table(relation regclass) RETURNS void LANGUAGE sql AS $$
  SELECT public.note(relation::text || ' everywhere')
$$;
)sql";

TEST_F(ServerStore, TellsADistributedServerWhereItsTablesLie) {
  Connection(name_).RunAll(kStandIns);
  (void)OpenServerStore(name_, OpenMode::kCreate, {.spread = Spread::kServers});
  const Result told = Connection(name_).Run("SELECT call, links FROM told ORDER BY number");
  std::vector<std::string> calls;
  for (int row = 0; row < told.rows(); ++row) {
    calls.emplace_back(told.Text(row, 0));
    EXPECT_EQ(told.Number(row, 1), 0) << "links between tables come later";
  }
  EXPECT_THAT(
      calls,
      testing::ElementsAre(
          R"("Units" by UnitKey beside default0)", R"("CredentialBank" by UnitKey beside "Units"0)",
          R"("Tenants" by UnitKey beside "Units"0)", R"("TenantGroup" by UnitKey beside "Units"0)",
          R"("TenantsBackup" by UnitKey beside "Units"0)",
          R"("Schedules" by UnitKey beside "Units"0)",
          R"("UnitSettings" by UnitKey beside "Units"0)", R"("UNITTYPES" everywhere)",
          R"("DirectoryCode" by UNITKEY beside "Units"0)", R"("TenantSelectionFields" everywhere)",
          R"("DOORS" by UNITKEY beside "Units"0)", R"("ProgramSteps" by UnitKey beside "Units"0)",
          R"("UnitCounters" by UnitKey beside "Units"0)",
          R"("AuditEntries" by HomeUnit beside "Units"0)",
          R"("AuditRows" by HomeUnit beside "Units"0)",
          R"("UnitVersions" by UnitKey beside "Units"0)"));
  Store store = Open(OpenMode::kReadWrite);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM TenantSelectionFields"), qorcred::Value(17));
}

TEST_F(ServerStore, EveryTableIsPlacedOrStaysOnPurpose) {
  (void)Open(OpenMode::kCreate);
  const Result tables = Connection(name_).Run(
      "SELECT tablename FROM pg_tables WHERE schemaname = 'qorhost' ORDER BY tablename COLLATE "
      "\"C\"");
  std::vector<std::string> unplaced;
  for (int row = 0; row < tables.rows(); ++row) {
    const std::string name(tables.Text(row, 0));
    const auto& placed = PlacedTables();
    if (std::none_of(placed.begin(), placed.end(),
                     [&](const PlacedTable& table) { return table.name == name; })) {
      unplaced.push_back(name);
    }
  }
  EXPECT_THAT(unplaced, testing::ElementsAre("StoreSchema"));
}

constexpr std::array kLaterSteps{
    Migration{1, ""},  // has been taken
    Migration{2, R"(CREATE TABLE "Notes" ("Text" text); INSERT INTO "Notes" VALUES ('later'))"},
    Migration{3, R"(ALTER TABLE "Notes" ADD COLUMN "By" text DEFAULT 'Ann')"}};

TEST_F(ServerStore, OfAnEarlierSchemaIsBroughtUpToDateOnce) {
  (void)Open(OpenMode::kCreate);
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite, OpenMode::kCreate}) {
    Connection later = OpenServerStore(name_, mode, {.steps = kLaterSteps});
    EXPECT_EQ(later.Run(R"(SELECT "Text" || "By" FROM "Notes")").Text(0, 0), "laterAnn");
    EXPECT_EQ(later.Run(R"(SELECT "Version" FROM "StoreSchema")").Number(0, 0), 3);
  }
  EXPECT_THAT(FailureToOpen(OpenMode::kReadWrite, StoreFault::kRefused),
              HasSubstr("schema 3, this one reads up to 1"));
}

/// Both have seen the earlier version before either of them has the right to go on.
TEST_F(ServerStore, OfAnEarlierSchemaIsBroughtUpToDateByOneOfTwo) {
  (void)Open(OpenMode::kCreate);
  Connection beside(name_);
  beside.RunAll("BEGIN");
  LockMaking(beside, {});
  std::vector<std::thread> openers;
  for (int opener = 0; opener < 2; ++opener) {
    openers.emplace_back([this] {
      EXPECT_NO_THROW((void)OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kLaterSteps}));
    });
  }
  const char* const waiting =
      "SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND NOT granted AND "
      "database = (SELECT oid FROM pg_database WHERE datname = current_database())";
  while (beside.Run(waiting).Number(0, 0) < 2) {
    std::this_thread::yield();
  }
  beside.RunAll("COMMIT");
  for (std::thread& opener : openers) {
    opener.join();
  }
  EXPECT_EQ(beside.Run(R"(SELECT count(*) FROM qorhost."Notes")").Number(0, 0), 1);
}

TEST_F(ServerStore, OfAnEarlierSchemaWaitsForThoseWhoWorkOnItAsLongAsThePatienceLasts) {
  Store other = Open(OpenMode::kCreate);
  const std::unique_ptr<SqlSession> session = other.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  const Patience impatient{std::chrono::milliseconds(50), {}};
  const auto expectBusy = [&] {
    try {
      (void)OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kLaterSteps}, impatient);
      ADD_FAILURE() << "it was brought up to date under somebody's hands";
    } catch (const StoreError& failure) {
      EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kBusy));
      EXPECT_THAT(failure.what(), HasSubstr("let it finish, then try again"));
    }
    EXPECT_EQ(other.connection().Run(R"(SELECT "Version" FROM "StoreSchema")").Number(0, 0), 1);
  };
  {
    WorkGuard guard(session->work(), {{1}, "add a door", {}});
    session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
    expectBusy();
    EXPECT_TRUE(guard.Commit());
  }
  // Of a table that a step changes a reader is in the way, too.
  constexpr std::array kChangingDoors{
      Migration{1, ""}, Migration{2, R"(ALTER TABLE "DOORS" ADD COLUMN "Note" text)"}};
  {
    const Undoable look(session->look());
    EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(1));
    EXPECT_THROW(
        (void)OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kChangingDoors}, impatient),
        StoreError);
  }
  EXPECT_NO_THROW(
      (void)OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kChangingDoors}, impatient));
}

/// A program that has had it open since before it was brought up to date.
TEST_F(ServerStore, OfALaterSchemaIsNotWrittenByThoseWhoHadItOpen) {
  Store other = Open(OpenMode::kCreate);
  const std::unique_ptr<SqlSession> session = other.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  {
    WorkGuard known(session->work(), {{1}, "add a door", {}});
    session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
    EXPECT_TRUE(known.Commit());
  }
  Connection later = OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kLaterSteps});
  for (const std::vector<std::int32_t>& units :
       std::vector<std::vector<std::int32_t>>{{1}, {2}, {}}) {
    WorkGuard guard(session->work(), {units, "add a door", {}});
    try {
      session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
      ADD_FAILURE() << "an older program has written to it";
    } catch (const StoreError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("was brought up to date by a newer version"));
    }
    EXPECT_THROW((void)guard.Commit(), StoreError);
  }
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(1));
  EXPECT_EQ(later.Run(R"(SELECT count(*) FROM "UnitVersions")").Number(0, 0), 1);
}

TEST_F(ServerStore, ThatCannotBeBroughtUpToDateStaysAsItWas) {
  (void)Open(OpenMode::kCreate);
  constexpr std::array kBroken{Migration{1, ""}, kLaterSteps[1],
                               Migration{3, R"(ALTER TABLE "Nowhere" ADD COLUMN "By" text)"}};
  EXPECT_THROW((void)OpenServerStore(name_, OpenMode::kReadWrite, {.steps = kBroken}), StoreError);
  Store store = Open(OpenMode::kReadWrite);
  EXPECT_TRUE(store.connection().Run("SELECT to_regclass('\"Notes\"')").IsNull(0, 0));
  EXPECT_EQ(store.connection().Run(R"(SELECT "Version" FROM "StoreSchema")").Number(0, 0), 1);
}

TEST_F(ServerStore, IsMadeByAllStepsWhereNoneIs) {
  std::vector<Migration> steps(Migrations().begin(), Migrations().end());
  steps.insert(steps.end(), kLaterSteps.begin() + 1, kLaterSteps.end());
  Connection made = OpenServerStore(name_, OpenMode::kCreate, {.steps = steps});
  EXPECT_EQ(made.Run(R"(SELECT "Text" || "By" FROM "Notes")").Text(0, 0), "laterAnn");
  EXPECT_EQ(made.Run(R"(SELECT "Version" FROM "StoreSchema")").Number(0, 0), 3);
}

TEST_F(ServerStore, ForReadingTakesNoChanges) {
  (void)Open(OpenMode::kCreate);
  Store store = Open(OpenMode::kReadOnly);
  EXPECT_TRUE(store.readOnly());
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM Units"), qorcred::Value(0));
  try {
    session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
    ADD_FAILURE() << "a store for reading was written";
  } catch (const StoreError& failure) {
    EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kReadOnly));
  }
}

TEST_F(ServerStore, ThatIsLostInAUnitOfWorkHasStoredNothing) {
  Store store = Open(OpenMode::kCreate);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  const std::string backend(store.connection().Run("SELECT pg_backend_pid()::text").Text(0, 0));
  session->work().Begin({{1}, "add a door", {}});
  session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  Connection(TestServer::Shared().NameOf("postgres"))
      .Run("SELECT pg_terminate_backend(" + backend + ", 5000)");
  EXPECT_THROW(session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}}), StoreError);
  EXPECT_EQ(static_cast<int>(session->work().voided()), static_cast<int>(VoidReason::kFailed));
  EXPECT_THROW(session->work().Commit(), StoreError);
  EXPECT_FALSE(session->work().open());
  EXPECT_EQ(Open(OpenMode::kReadOnly).StartSession(Noon)->Scalar("SELECT Count(*) FROM DOORS"),
            qorcred::Value(0));
}

TEST_F(ServerStore, KeepsATransactionUsableBehindAStatementThatTheServerRefuses) {
  Store store = Open(OpenMode::kCreate);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  session->transaction().Begin();
  session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  EXPECT_THROW(session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 99}}), StoreError);
  EXPECT_THROW((void)session->Select("SELECT RID / 0 FROM Units"), StoreError);
  session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  session->transaction().Commit();
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(2));
}

TEST_F(ServerStore, AReadThatFailsLeavesAUnitOfWorkAsItWas) {
  Store store = Open(OpenMode::kCreate);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  session->work().Begin({{1}, "add a door", {}});
  session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  EXPECT_THROW((void)session->Select("SELECT RID / 0 FROM Units"), StoreError);
  EXPECT_TRUE(session->work().Commit());
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(1));
}

TEST_F(ServerStore, TwoUnitsAreWrittenSideBySide) {
  Store one = Open(OpenMode::kCreate);
  Store other = Open(OpenMode::kReadWrite);
  const std::unique_ptr<SqlSession> here = one.StartSession(Noon);
  const std::unique_ptr<SqlSession> there = other.StartSession(Noon);
  other.SetPatience({std::chrono::milliseconds(0), {}});
  here->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  here->AddRow("Units", std::vector<Field>{{"UnitKey", 2}});
  here->work().Begin({{1}, "add a door", {}});
  here->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  there->work().Begin({{2}, "add a door", {}});
  there->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 2}});
  EXPECT_TRUE(there->work().Commit());
  EXPECT_TRUE(here->work().Commit());
  EXPECT_THAT(here->audit().Check(), testing::IsEmpty());
  EXPECT_EQ(here->audit().After(0, std::nullopt).size(), 2U);
}

TEST_F(ServerStore, ReadsABoundedResult) {
  Store store = Open(OpenMode::kCreate);
  store.connection().RunAll(R"(INSERT INTO qorhost."TenantsBackup" ("UnitKey", "TenantID") )"
                            "SELECT 1, n FROM generate_series(1, 1001) n");
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  try {
    (void)session->Select("SELECT a.RID FROM TenantsBackup a, TenantsBackup b");
    ADD_FAILURE() << "more than a million rows were read";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("more than 1000000 rows"));
  }
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM TenantsBackup"), qorcred::Value(1001));
}

}  // namespace

}  // namespace qorhost::postgres::test
