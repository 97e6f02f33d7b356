// Backups of a server's store, their way back, and a store on a server that is made anew.
#include <gmock/gmock.h>

#include "host/desks/store_backup.h"
#include "host/files/file_error.h"
#include "host/store/store_error.h"
#include "tests/host/copies/copy_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class ServerBackups : public CopyFixture {
 protected:
  void SetUp() override {
    if (!WhyNoServer().empty()) {
      GTEST_SKIP() << WhyNoServer();
    }
    store_ = DemoStore(Kind::kServer);
  }
  [[nodiscard]] std::string Backup() const { return folder_.File("backup.db").string(); }
  static bool IsThere(const std::string& name) {
    try {
      (void)OpenStoreFile(name, Access::kRead);
      return true;
    } catch (const std::runtime_error&) {
      return false;
    }
  }
  static ReplacementConsent Answer(bool yes) {
    return [yes](const std::string&) { return yes; };
  }

  std::string store_;
};

TEST_F(ServerBackups, AreFilesThatHoldEverything) {
  const BackedUp made = BackUp(store_, Backup(), Standing::kStays);
  EXPECT_EQ(made.bytes, std::filesystem::file_size(Backup()));
  EXPECT_FALSE(made.heads.empty());
  EXPECT_EQ(Everything(Backup()), Everything(store_));
  EXPECT_THROW((void)BackUp(store_, Backup(), Standing::kStays), FileError);
  EXPECT_EQ(BackUp(store_, Backup(), Standing::kReplaced).heads, made.heads);
}

TEST_F(ServerBackups, ComeBackIntoADatabaseWithoutAStoreOrWithANewOne) {
  (void)BackUp(store_, Backup(), Standing::kStays);
  const std::string empty = NewServerName();
  const Restored restored = Restore(empty, Backup(), AtNoon()());
  EXPECT_FALSE(restored.kept);
  EXPECT_EQ(Everything(empty), Everything(store_));
  const std::string made = NewStoreName(Kind::kServer);
  EXPECT_EQ(Restore(made, Backup(), AtNoon()()).heads, restored.heads);
  EXPECT_EQ(Everything(made), Everything(store_));
}

TEST_F(ServerBackups, AreNotPutOverAStoreOfOthers) {
  (void)BackUp(store_, Backup(), Standing::kStays);
  const std::vector<std::string> before = Everything(store_);
  try {
    (void)Restore(store_, Backup(), AtNoon()());
    ADD_FAILURE() << "a store with units was overwritten";
  } catch (const RefusedError& refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("init --force"));
  }
  EXPECT_EQ(Everything(store_), before);
  EXPECT_THROW((void)BackUp(Backup(), store_, Standing::kReplaced), RefusedError);
  EXPECT_THROW((void)Restore(Backup(), store_, AtNoon()()), RefusedError);
}

TEST_F(ServerBackups, ThatAreOnlyTriedLeaveNothing) {
  (void)BackUp(store_, Backup(), Standing::kStays, {}, Trial::kYes);
  EXPECT_FALSE(std::filesystem::exists(Backup()));
  (void)BackUp(store_, Backup(), Standing::kStays);
  const std::string empty = NewServerName();
  (void)Restore(empty, Backup(), AtNoon()(), {}, Trial::kYes);
  EXPECT_FALSE(IsThere(empty));
}

TEST_F(ServerBackups, AStoreIsMadeAnewOnlyWhenThatIsSaidTwice) {
  const std::vector<std::string> before = Everything(store_);
  const NewStore made{false, AtNoon(), {}};
  EXPECT_THROW(PutStore(store_, made, Standing::kStays), FileError);
  EXPECT_THROW(PutStore(store_, made, Standing::kReplaced), DoubtfulStore);
  EXPECT_THROW(PutStore(store_, made, Standing::kReplaced, {}, Answer(false)), DoubtfulStore);
  EXPECT_EQ(Everything(store_), before);
  PutStore(store_, made, Standing::kReplaced, {}, Answer(true));
  EXPECT_TRUE(Rows(store_, "SELECT RID FROM Units").empty());
  NewStore filled{false, AtNoon(), {}};
  filled.contents = [](SqlSession& session) {
    (void)session.Change("INSERT INTO Units (UnitKey) VALUES (1)", {});
  };
  PutStore(store_, filled, Standing::kReplaced, {}, Answer(true));
  EXPECT_EQ(Rows(store_, "SELECT RID FROM Units").size(), 1U);
}

TEST_F(ServerBackups, AStoreThatCannotBeMadeAnewStaysAsItIs) {
  const std::vector<std::string> before = Everything(store_);
  NewStore made{false, AtNoon(), {}};
  made.contents = [](SqlSession& session) {
    (void)session.Change("INSERT INTO Units (UnitKey) VALUES (1)", {});
    throw CancelledError();
  };
  EXPECT_THROW(PutStore(store_, made, Standing::kReplaced, {}, Answer(true)), CancelledError);
  EXPECT_EQ(Everything(store_), before);
  const std::string empty = NewServerName();
  EXPECT_THROW(PutStore(empty, made, Standing::kStays), CancelledError);
  EXPECT_FALSE(IsThere(empty));
  // Nothing was left behind that would be in the way.
  made.contents = nullptr;
  PutStore(store_, made, Standing::kReplaced, {}, Answer(true));
  EXPECT_TRUE(Rows(store_, "SELECT RID FROM Units").empty());
}

TEST_F(ServerBackups, AStoreIsNotReplacedWhileSomebodyWritesToIt) {
  const std::unique_ptr<Store> other = OpenStoreFile(store_, Access::kChange);
  const std::unique_ptr<SqlSession> session = other->StartSession(AtNoon());
  WorkGuard guard(session->work(), {{1}, "add a door", {}});
  (void)session->Change("INSERT INTO DOORS (UNITKEY, DOORID) VALUES (1, 9)", {});
  try {
    PutStore(store_, {false, AtNoon(), {}}, Standing::kReplaced,
             {std::chrono::milliseconds(20), {}}, Answer(true));
    ADD_FAILURE() << "a store was replaced under a writer";
  } catch (const StoreError& failure) {
    EXPECT_EQ(static_cast<int>(failure.fault()), static_cast<int>(StoreFault::kBusy));
  }
  guard.Commit();
  EXPECT_EQ(Rows(store_, "SELECT RID FROM DOORS WHERE DOORID=9").size(), 1U);
}

}  // namespace
}  // namespace qorhost::test
