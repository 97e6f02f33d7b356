// Queries that would run for hours are ended on the server; waiting for others is no work.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "frame/date.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

// 2000 to the power of six pairs of rows.
constexpr const char* kEndless =
    "SELECT Count(*) FROM TenantsBackup a, TenantsBackup b, TenantsBackup c, TenantsBackup d, "
    "TenantsBackup e, TenantsBackup f WHERE a.TenantID + b.TenantID < f.TenantID";

qorcred::Date Noon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

class WorkBound : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    static int count = 0;
    name_ = TestServer::Shared().Create("bound" + std::to_string(++count));
    (void)OpenServerStore(name_, OpenMode::kCreate);
    Connection(name_).RunAll(
        R"(INSERT INTO qorhost."Units" ("UnitKey", "UnitName") VALUES (1, 'Court'); )"
        R"(INSERT INTO qorhost."TenantsBackup" ("UnitKey", "TenantID") )"
        "SELECT 1, n FROM generate_series(1, 2000) n");
    patience_.work = milliseconds(300);
    store_ = NewStore();
    session_ = store_->StartSession(Noon);
  }

  [[nodiscard]] std::unique_ptr<Store> NewStore() const {
    return std::make_unique<Store>(OpenServerStore(name_, OpenMode::kReadWrite), patience_, false);
  }
  void ExpectEnded() {
    try {
      (void)session_->Select(kEndless);
      ADD_FAILURE() << "it came to an end";
    } catch (const StoreError& failure) {
      EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kTooMuchWork));
      EXPECT_THAT(failure.what(), HasSubstr("worked for too long and was ended"));
      EXPECT_THAT(failure.what(), HasSubstr("narrow it"));
    }
  }
  [[nodiscard]] std::size_t Backups() {
    return session_->Select("SELECT TenantID FROM TenantsBackup").rowCount;
  }

  std::string name_;
  Patience patience_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<SqlSession> session_;
};

TEST_F(WorkBound, EndsAnEndlessQueryAndTheNextOneRuns) {
  ExpectEnded();
  EXPECT_EQ(Backups(), 2000U);
  EXPECT_THROW((void)session_->Scalar(kEndless), StoreError);
  EXPECT_EQ(Backups(), 2000U);
}

TEST_F(WorkBound, LeavesTheTransactionOfAQuery) {
  session_->transaction().Begin();
  (void)session_->Change("DELETE FROM TenantsBackup WHERE TenantID > 1999", std::nullopt);
  ExpectEnded();
  session_->transaction().Commit();
  EXPECT_EQ(Backups(), 1999U);
}

TEST_F(WorkBound, EndsAnEndlessChangeWithTheWorkThatItBelongsTo) {
  {
    WorkGuard guard(session_->work(), {{1}, "delete", {}});
    EXPECT_THROW((void)session_->Change("DELETE FROM TenantsBackup WHERE RID IN (SELECT Count(*) "
                                        "FROM TenantsBackup a, TenantsBackup b, TenantsBackup c, "
                                        "TenantsBackup d, TenantsBackup e WHERE a.TenantID + "
                                        "b.TenantID < e.TenantID)",
                                        std::nullopt),
                 StoreError);
    EXPECT_THROW(guard.Commit(), StoreError);
  }
  EXPECT_EQ(Backups(), 2000U);
}

TEST_F(WorkBound, AsksWhoeverLooksUpMeanwhile) {
  int looks = 0;
  patience_.work = std::chrono::hours(1);
  patience_.working = [&looks] { return ++looks < 5; };
  store_->SetPatience(patience_);
  ExpectEnded();
  EXPECT_GE(looks, 5) << "who gives up looks on until the server has ended it";
  patience_.working = nullptr;
  store_->SetPatience(patience_);
  EXPECT_EQ(Backups(), 2000U);
}

TEST_F(WorkBound, DoesNotCountWhatIsWaitedForOthers) {
  const std::unique_ptr<Store> other = NewStore();
  const std::unique_ptr<SqlSession> first = other->StartSession(Noon);
  WorkGuard holding(first->work(), {{1}, "first", {}});
  first->work().Lock();
  std::atomic<bool> isWaiting = false;
  patience_.work = milliseconds(1);
  patience_.waiting = [&isWaiting](milliseconds waited) {
    isWaiting = waited > milliseconds(100);
    return true;
  };
  store_->SetPatience(patience_);
  std::thread second([this] {
    WorkGuard guard(session_->work(), {{1}, "second", {}});
    EXPECT_NO_THROW(session_->work().Lock());
  });
  while (!isWaiting) {
    std::this_thread::yield();
  }
  holding.Undo();
  second.join();
}

}  // namespace

}  // namespace qorhost::postgres::test
