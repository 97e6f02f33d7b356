// A connection that is lost at any message, a backend that is ended at any statement, a server that
// is started again: what is told of the operation is what is stored, and the next one is done.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

#include "frame/date.h"
#include "host/store/postgres/rights.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "needs_server.h"
#include "server_proxy.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::HasSubstr;
using Way = ServerProxy::Way;

const auto* const kNeedsServer = NeedServer();

enum class Heard { kStored, kNotStored, kUnknown };

qorcred::Date Noon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

class LostConnection : public testing::Test {
 protected:
  void SetUp() override {
    static int count = 0;
    database_ = "lost" + std::to_string(++count);
    const std::string name = TestServer::Shared().Create(database_);
    (void)OpenServerStore(name, OpenMode::kCreate);
    beside_ = std::make_unique<Connection>(name);
    beside_->RunAll(R"(INSERT INTO qorhost."Units" ("UnitKey", "UnitName") VALUES (1, 'Court'))");
    proxy_ = std::make_unique<ServerProxy>(TestServer::Shared());
    store_ = std::make_unique<Store>(
        OpenServerStore(proxy_->NameOf(database_), OpenMode::kReadWrite), Patience(), false);
    session_ = store_->StartSession(Noon);
  }

  /// Two rows in one unit of work, with what an operation reads before and in between.
  Heard AddTwoDoors(bool wholeStore = false) {
    UnitOfWork& work = session_->work();
    try {
      WorkOrder order;
      order.what = "add doors";
      if (!wholeStore) {
        order.units = {1};
        order.filled = work.VersionOf(1);
      }
      WorkGuard guard(work, order);
      (void)session_->Select("SELECT UnitName FROM Units");
      session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
      (void)session_->Scalar("SELECT Count(*) FROM DOORS");
      (void)session_->Change("INSERT INTO DOORS (UNITKEY, DOORNAME) VALUES (1, 'second')",
                             std::nullopt);
      EXPECT_TRUE(guard.Commit());
      return Heard::kStored;
    } catch (const StoreError& failure) {
      words_ = failure.what();
      return failure.fault() == StoreFault::kUnknown ? Heard::kUnknown : Heard::kNotStored;
    }
  }

  [[nodiscard]] std::int64_t Number(const std::string& sql) {
    return beside_->Run(sql).Number(0, 0);
  }
  [[nodiscard]] std::int64_t Doors() { return Number(R"(SELECT count(*) FROM qorhost."DOORS")"); }
  [[nodiscard]] std::int64_t Entries() {
    return Number(R"(SELECT count(*) FROM qorhost."AuditEntries")");
  }

  /// The operation, to which `way` happens at its n-th message; whether it has one.
  bool RunWithLossAt(int nth, const std::function<Way(const ServerProxy::Message&)>& way,
                     bool wholeStore = false) {
    const std::int64_t doors = Doors();
    const std::int64_t entries = Entries();
    std::atomic<int> met = 0;
    proxy_->Ask([&](const ServerProxy::Message& message) {
      return met++ == nth ? way(message) : Way::kOn;
    });
    const Heard heard = AddTwoDoors(wholeStore);
    const bool reached = met > nth;
    proxy_->Ask(nullptr);
    EXPECT_NE(static_cast<int>(heard), static_cast<int>(Heard::kUnknown)) << words_;
    const int stored = heard == Heard::kStored ? 1 : 0;
    EXPECT_EQ(Entries() - entries, stored) << words_;
    EXPECT_EQ(Doors() - doors, 2 * stored) << words_;
    EXPECT_FALSE(session_->inTransaction());
    // The program goes on.
    EXPECT_EQ(static_cast<int>(AddTwoDoors(wholeStore)), static_cast<int>(Heard::kStored))
        << words_;
    EXPECT_EQ(Doors() - doors, 2 * stored + 2);
    return reached;
  }

  void LoseAtEach(Way way, bool wholeStore) {
    int nth = 0;
    while (RunWithLossAt(
               nth, [way](const auto&) { return way; }, wholeStore) &&
           !HasFailure()) {
      ++nth;
    }
    EXPECT_GT(nth, 10);
    EXPECT_THAT(session_->audit().Check(), testing::IsEmpty());
    RecordProperty("messages", nth);
  }

  std::string database_;
  std::unique_ptr<Connection> beside_;
  std::unique_ptr<ServerProxy> proxy_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<SqlSession> session_;
  std::string words_;
};

class AnyWay : public LostConnection, public testing::WithParamInterface<Way> {};

TEST_P(AnyWay, AtAnyMessageIsToldAsItIsStored) {
  LoseAtEach(GetParam(), false);
}

TEST_P(AnyWay, AtAnyMessageOfWorkOnTheWholeStoreIsToldAsItIsStored) {
  LoseAtEach(GetParam(), true);
}

INSTANTIATE_TEST_SUITE_P(At, AnyWay,
                         testing::Values(Way::kLostBefore, Way::kLostBehind,
                                         Way::kLostBehindAnswer),
                         [](const testing::TestParamInfo<Way>& one) {
                           return one.param == Way::kLostBefore   ? "Before"
                                  : one.param == Way::kLostBehind ? "Behind"
                                                                  : "BehindTheAnswer";
                         });

TEST_F(LostConnection, BehindTheCommitIsStoredAndToldSo) {
  proxy_->Ask([](const ServerProxy::Message& message) {
    return message.text.starts_with("COMMIT") ? Way::kLostBehindAnswer : Way::kOn;
  });
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kStored)) << words_;
  EXPECT_EQ(Doors(), 2);
  EXPECT_EQ(session_->work().Committed(1), session_->work().VersionOf(1));
}

TEST_F(LostConnection, BeforeTheCommitIsToldAsNotStored) {
  proxy_->Ask([](const ServerProxy::Message& message) {
    return message.text.starts_with("COMMIT") ? Way::kLostBefore : Way::kOn;
  });
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored));
  EXPECT_THAT(words_, HasSubstr("nothing was stored"));
  EXPECT_EQ(Doors(), 0);
}

/// A login that has its rights through a role alone may end its own process, as others may: the
/// server goes on with a transaction whose other end was cut off.
TEST_F(LostConnection, AtALongCommitIsToldToALoginThatActsThroughARole) {
  const std::string role = "acting_" + database_;
  const std::string login = "actor_" + database_;
  GrantRightsAtOnce(*beside_, {role, ""});
  beside_->RunAll(fmt::format("CREATE ROLE {} LOGIN NOINHERIT IN ROLE {}", login, role));
  beside_->RunAll(
      "CREATE FUNCTION desktop.rest_long() RETURNS trigger LANGUAGE plpgsql AS "
      "$$ BEGIN PERFORM pg_sleep(30); RETURN NULL; END $$; "
      R"(CREATE CONSTRAINT TRIGGER "Rest" AFTER INSERT ON qorhost."DOORS" )"
      "DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION desktop.rest_long()");
  std::string name = proxy_->NameOf(database_);
  name.replace(name.find("tester"), 6, login);
  session_.reset();
  store_ = std::make_unique<Store>(OpenServerStore(name, OpenMode::kReadWrite), Patience(), false);
  session_ = store_->StartSession(Noon);
  proxy_->Ask([](const ServerProxy::Message& message) {
    return message.text.starts_with("COMMIT") ? Way::kLostBehind : Way::kOn;
  });
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored)) << words_;
  EXPECT_THAT(words_, HasSubstr("nothing was stored"));
  proxy_->Ask(nullptr);
  EXPECT_EQ(Doors(), 0);
  // It has taken its role again.
  beside_->RunAll(R"(DROP TRIGGER "Rest" ON qorhost."DOORS")");
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kStored)) << words_;
  EXPECT_EQ(Doors(), 2);
}

/// Where nobody can be asked, it is not said that nothing was stored.
TEST_F(LostConnection, AtTheCommitWithNobodyToAskIsUnknown) {
  proxy_->Ask([this](const ServerProxy::Message& message) {
    if (!message.text.starts_with("COMMIT")) {
      return Way::kOn;
    }
    proxy_->Close(true);
    return Way::kLostBehindAnswer;
  });
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kUnknown)) << words_;
  EXPECT_THAT(words_, HasSubstr("it is not known whether it was stored: look at the history"));
  EXPECT_EQ(Doors(), 2);
  proxy_->Ask(nullptr);
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored));
  EXPECT_THAT(words_, HasSubstr("cannot be opened"));
  proxy_->Close(false);
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kStored)) << words_;
  EXPECT_EQ(Doors(), 4);
}

TEST_F(LostConnection, ByTheEndOfItsBackendAtAnyStatementIsToldAsItIsStored) {
  const auto end = [this](const ServerProxy::Message& message) {
    beside_->Run(fmt::format("SELECT pg_terminate_backend({}, 5000)", message.backend));
    return Way::kOn;
  };
  int nth = 0;
  while (RunWithLossAt(nth, end) && !HasFailure()) {
    ++nth;
  }
  EXPECT_GT(nth, 10);
}

TEST_F(LostConnection, WhileALookIsOpenEndsTheLook) {
  {
    const Undoable look(session_->look());
    EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(0));
    proxy_->Ask([](const ServerProxy::Message&) { return Way::kLostBefore; });
    EXPECT_THROW((void)session_->Scalar("SELECT Count(*) FROM DOORS"), StoreError);
    proxy_->Ask(nullptr);
    // What would be read on a new connection is not of the same state.
    EXPECT_THROW((void)session_->Scalar("SELECT Count(*) FROM DOORS"), StoreError);
  }
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(0));
}

TEST_F(LostConnection, InAConnectionsOwnTransactionIsUndoneAndTheNextIsDone) {
  session_->transaction().Begin();
  session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  proxy_->Ask([](const ServerProxy::Message&) { return Way::kLostBefore; });
  EXPECT_THROW(session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}}), StoreError);
  proxy_->Ask(nullptr);
  EXPECT_THROW(session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}}), StoreError);
  session_->transaction().Rollback();
  session_->transaction().Begin();
  session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  session_->transaction().Commit();
  EXPECT_EQ(Doors(), 1);
}

TEST_F(LostConnection, WhoWaitsForTheServerLooksUpAndMayGiveUp) {
  using std::chrono::steady_clock;
  int looks = 0;
  Patience patience;
  patience.working = [&looks] { return ++looks < 10; };
  store_->SetPatience(patience);
  proxy_->Close(true);
  proxy_->Ask([](const auto&) { return Way::kLostBefore; });
  const steady_clock::time_point begun = steady_clock::now();
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored));
  EXPECT_LT(steady_clock::now() - begun, std::chrono::seconds(3));
  EXPECT_GE(looks, 10);
  EXPECT_THAT(words_, HasSubstr("was not waited for any longer"));
  proxy_->Ask(nullptr);
  proxy_->Close(false);
  looks = -1000;
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kStored)) << words_;
  EXPECT_EQ(Doors(), 2);
}

TEST_F(LostConnection, AServerThatWasWaitedForInVainIsTriedOnceBehindIt) {
  using std::chrono::steady_clock;
  proxy_->Close(true);
  proxy_->Ask([](const auto&) { return Way::kLostBefore; });
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored));
  const steady_clock::time_point begun = steady_clock::now();
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kNotStored));
  EXPECT_LT(steady_clock::now() - begun, std::chrono::seconds(2));
  proxy_->Ask(nullptr);
  proxy_->Close(false);
  EXPECT_EQ(static_cast<int>(AddTwoDoors()), static_cast<int>(Heard::kStored)) << words_;
}

TEST_F(LostConnection, WhileRightsAreGrantedIsToldAsTheyStand) {
  bool isReached = true;
  int nth = 0;
  for (; isReached && !HasFailure(); ++nth) {
    const std::string role = fmt::format("lostoperators{}", nth);
    Connection granting = OpenServerStore(proxy_->NameOf(database_), OpenMode::kReadWrite);
    std::atomic<int> met = 0;
    proxy_->Ask([&](const ServerProxy::Message&) {
      const Way way = nth % 2 == 0 ? Way::kLostBehindAnswer : Way::kLostBefore;
      return met++ == nth / 2 ? way : Way::kOn;
    });
    bool isTold = true;
    try {
      GrantRightsAtOnce(granting, {role, ""});
    } catch (const StoreError& failure) {
      isTold = false;
      EXPECT_NE(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kUnknown));
    }
    isReached = met > nth / 2;
    proxy_->Ask(nullptr);
    const std::string granted = fmt::format(
        "SELECT count(*) FROM pg_roles WHERE rolname = '{}' AND "
        "has_schema_privilege(oid, 'qorhost', 'USAGE')",
        role);
    EXPECT_EQ(Number(granted) == 1, isTold) << nth;
  }
  EXPECT_GT(nth, 10);
}

/// With a server of its own, which others need not miss.
class ServerStartedAgain : public testing::Test {
 protected:
  void SetUp() override {
    server_ = std::make_unique<TestServer>();
    store_ = std::make_unique<Store>(OpenServerStore(server_->Create("again"), OpenMode::kCreate),
                                     Patience(), false);
    session_ = store_->StartSession(Noon);
    session_->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  }

  std::unique_ptr<TestServer> server_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<SqlSession> session_;
};

TEST_F(ServerStartedAgain, BetweenOperationsIsNotNoticed) {
  server_->StartAgain();
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM Units"), qorcred::Value(1));
  server_->StartAgain();
  {
    WorkGuard guard(session_->work(), {{1}, "add a door", {}});
    session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
    EXPECT_TRUE(guard.Commit());
  }
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(1));
}

TEST_F(ServerStartedAgain, InAnOperationUndoesItAndTheNextIsDone) {
  {
    WorkGuard guard(session_->work(), {{1}, "add a door", {}});
    session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
    server_->StartAgain();
    EXPECT_THROW(guard.Commit(), StoreError);
  }
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(0));
  WorkGuard guard(session_->work(), {{1}, "add a door", {}});
  session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
  EXPECT_TRUE(guard.Commit());
}

/// What the server has not written to its disk by then it has forgotten, the transaction's number
/// included.
TEST_F(ServerStartedAgain, AtTheCommitIsToldAsItIsStored) {
  ServerProxy proxy(*server_);
  Store store(OpenServerStore(proxy.NameOf("again"), OpenMode::kReadWrite), Patience(), false);
  const std::unique_ptr<SqlSession> session = store.StartSession(Noon);
  // A server ends with the thread that has started it: not with that of a connection.
  std::binary_semaphore isAsked(0);
  std::binary_semaphore isDone(0);
  bool isOver = false;
  std::thread starter([&] {
    while (true) {
      isAsked.acquire();
      if (isOver) {
        return;
      }
      server_->StartAgain();
      isDone.release();
    }
  });
  std::int64_t doors = 0;
  for (const bool isBehind : {false, true, false, true}) {
    proxy.Ask([&](const ServerProxy::Message& message) {
      if (!message.text.starts_with("COMMIT")) {
        return Way::kOn;
      }
      if (!isBehind) {
        isAsked.release();
        isDone.acquire();
      }
      return isBehind ? Way::kLostBehindAnswer : Way::kOn;
    });
    try {
      WorkGuard guard(session->work(), {{1}, "add a door", {}});
      session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
      EXPECT_TRUE(guard.Commit());
      EXPECT_TRUE(isBehind);
      ++doors;
    } catch (const StoreError& failure) {
      EXPECT_FALSE(isBehind);
      EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kNoServer));
      EXPECT_THAT(failure.what(), HasSubstr("nothing was stored; try again"));
    }
    proxy.Ask(nullptr);
    EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"),
              qorcred::Value(static_cast<std::int32_t>(doors)));
  }
  isOver = true;
  isAsked.release();
  starter.join();
}

TEST_F(ServerStartedAgain, ThatIsNotThereIsToldSoAndFoundLater) {
  server_->End();
  try {
    (void)session_->Scalar("SELECT Count(*) FROM Units");
    ADD_FAILURE() << "a server that is not there has answered";
  } catch (const StoreError& failure) {
    EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kNoServer));
    EXPECT_THAT(failure.what(), HasSubstr("whether it runs"));
  }
  server_->StartAgain();
  EXPECT_EQ(session_->Scalar("SELECT Count(*) FROM Units"), qorcred::Value(1));
}

}  // namespace

}  // namespace qorhost::postgres::test
