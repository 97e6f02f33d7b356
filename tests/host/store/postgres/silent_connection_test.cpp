// A network that is cut without a word, at any message: whoever waits looks up meanwhile and may
// give up, what he is told is what is stored, and the next operation is done.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "frame/date.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "server_proxy.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::AnyOf;
using testing::HasSubstr;
using Way = ServerProxy::Way;

qorcred::Date NoonOfDay() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

/// What an operation was told, and what happened meanwhile.
struct Course {
  bool isStored = false;
  bool isUnknown = false;
  std::string words = "stored";
  int messages = 0;
  int looks = 0;  // while the network was cut
};

/// Somebody at a store behind a proxy of his own, who gives up a moment after the network was cut,
/// and stays with that until the operation's end.
class PatientSeat {
 public:
  explicit PatientSeat(const std::string& database)
      : proxy_(TestServer::Shared()),
        store_(OpenServerStore(proxy_.NameOf(database), OpenMode::kReadWrite), PatienceOf(), false),
        session_(store_.StartSession(NoonOfDay)) {}

  /// Adds two doors; the network is cut at that message.
  Course AddDoorsCutAt(int message) {
    looks_ = 0;
    std::atomic<int> met = 0;
    proxy_.Ask([&](const ServerProxy::Message&) {
      if (met++ != message) {
        return Way::kOn;
      }
      isCut_ = true;
      return Way::kSilence;
    });
    Course course = AddDoors();
    course.messages = met;
    course.looks = looks_;
    isCut_ = false;
    proxy_.Ask(nullptr);
    proxy_.Hush(false);
    return course;
  }

  /// With what an operation reads in between.
  Course AddDoors() {
    Course course;
    try {
      WorkGuard guard(session_->work(), {{1}, "add doors", {}});
      session_->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
      (void)session_->Scalar("SELECT Count(*) FROM DOORS");
      {
        Undoable part(session_->savepoint());
        (void)session_->Change("INSERT INTO DOORS (UNITKEY, DOORNAME) VALUES (1, 'second')",
                               std::nullopt);
        part.Keep();
      }
      course.isStored = guard.Commit();
    } catch (const StoreError& failure) {
      course.words = failure.what();
      course.isUnknown = failure.fault() == StoreFault::kUnknown;
    }
    return course;
  }

 private:
  [[nodiscard]] bool LookUp() {
    constexpr int kEnough = 10;
    looks_ += isCut_ ? 1 : 0;
    return !isCut_ || looks_ < kEnough;
  }
  [[nodiscard]] Patience PatienceOf() {
    Patience patience;
    patience.waiting = [this](std::chrono::milliseconds) { return LookUp(); };
    patience.working = [this] { return LookUp(); };
    return patience;
  }

  ServerProxy proxy_;
  std::atomic<bool> isCut_ = false;
  int looks_ = 0;
  Store store_;
  std::unique_ptr<SqlSession> session_;
};

class SilentConnection : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    (void)OpenServerStore(TestServer::Shared().Create("silent"), OpenMode::kCreate);
    Connection(TestServer::Shared().NameOf("silent"))
        .RunAll(R"(INSERT INTO qorhost."Units" ("UnitKey", "UnitName") VALUES (1, 'Court'))");
  }

  /// Like the one that was made.
  static std::string NewDatabase() {
    static int count = 0;
    std::string database = "silent" + std::to_string(++count);
    (void)TestServer::Shared().Create(database, "silent");
    return database;
  }
  [[nodiscard]] static std::int64_t DoorsIn(const std::string& database) {
    return Connection(TestServer::Shared().NameOf(database))
        .Run(R"(SELECT count(*) FROM qorhost."DOORS")")
        .Number(0, 0);
  }
};

// All at once, each on a store of its own: what takes time is the waiting.
TEST_F(SilentConnection, AtAnyMessageCanBeGivenUpAndIsToldAsItIsStored) {
  constexpr int kNever = -1;
  const int messages = PatientSeat(NewDatabase()).AddDoorsCutAt(kNever).messages;
  ASSERT_GT(messages, 8);
  ASSERT_LT(messages, 30) << "more than the server takes at once";
  struct Trial {
    std::string database = NewDatabase();
    Course cut;
    Course next;
  };
  std::vector<Trial> trials(static_cast<std::size_t>(messages));
  std::vector<std::thread> seats;
  for (int message = 0; message < messages; ++message) {
    seats.emplace_back([&trial = trials[static_cast<std::size_t>(message)], message] {
      PatientSeat seat(trial.database);
      trial.cut = seat.AddDoorsCutAt(message);
      trial.next = seat.AddDoors();
    });
  }
  for (std::thread& seat : seats) {
    seat.join();
  }
  int unknown = 0;
  for (const Trial& trial : trials) {
    EXPECT_FALSE(trial.cut.isStored);
    EXPECT_THAT(trial.cut.words, AnyOf(HasSubstr("was not waited for any longer"),
                                       HasSubstr("it is not known whether it was stored")));
    // Behind the tenth, who gave up, the server was still told to end its work.
    EXPECT_GT(trial.cut.looks, 20) << trial.cut.words;
    EXPECT_TRUE(trial.next.isStored) << trial.next.words;
    EXPECT_EQ(DoorsIn(trial.database), 2) << trial.cut.words;
    unknown += trial.cut.isUnknown ? 1 : 0;
  }
  EXPECT_GE(unknown, 1) << "at the commit nobody tells";
  EXPECT_LE(unknown, 3);
  RecordProperty("messages", messages);
}

}  // namespace

}  // namespace qorhost::postgres::test
