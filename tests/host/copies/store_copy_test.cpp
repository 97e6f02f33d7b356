// Whole stores copied: from files to servers and back, with identities and history.
#include "host/desks/store_copy.h"

#include <gmock/gmock.h>

#include <functional>
#include <tuple>

#include "host/desks/store_check.h"
#include "host/files/file_error.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_error.h"
#include "tests/host/copies/copy_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class WholeCopies : public CopyFixture, public testing::WithParamInterface<std::tuple<Kind, Kind>> {
 protected:
  void SetUp() override {
    if (LacksServer(std::get<0>(GetParam()), std::get<1>(GetParam()))) {
      GTEST_SKIP() << WhyNoServer();
    }
    from_ = DemoStore(std::get<0>(GetParam()));
    to_ = NewName(std::get<1>(GetParam()));
  }

  std::string from_;
  std::string to_;
};

TEST_P(WholeCopies, HaveEveryRowEveryIdentityAndTheHistory) {
  const StoreCopy made = CopyStore(OrderFor(from_, to_));
  EXPECT_TRUE(made.isNewStore);
  EXPECT_TRUE(made.isWhole);
  EXPECT_EQ(made.copied.rows.size(), CopiedTables().size());
  EXPECT_TRUE(made.copied.lost.empty());
  EXPECT_EQ(Everything(to_), Everything(from_));
  EXPECT_GT(Everything(to_).size(), 400U);
}

TEST_P(WholeCopies, ComeIntoAStoreThatWasMadeAndIsStillNew) {
  to_ = NewStoreName(std::get<1>(GetParam()));
  const StoreCopy made = CopyStore(OrderFor(from_, to_));
  EXPECT_FALSE(made.isNewStore);
  EXPECT_TRUE(made.isWhole);
  EXPECT_EQ(Everything(to_), Everything(from_));
}

TEST_P(WholeCopies, GoOnAsTheStoreDid) {
  (void)CopyStore(OrderFor(from_, to_));
  const std::int32_t before = std::stoi(Rows(to_, "SELECT MAX(RID) FROM Tenants").front());
  {
    const std::unique_ptr<Store> store = OpenStoreFile(to_, Access::kChange);
    const std::unique_ptr<SqlSession> session = store->StartSession(AtNoon());
    WorkGuard guard(session->work(), {{2}, "add", {}});
    const std::vector<Field> fields{{"UnitKey", 2}, {"LastName", "New"}};
    EXPECT_EQ(session->AddRow("Tenants", fields), before + 1);
    guard.Commit();
    EXPECT_TRUE(session->audit().Check().empty());
    EXPECT_EQ(session->audit().After(0, std::nullopt).size(),
              static_cast<std::size_t>(session->work().VersionOf(2).entry));
  }
}

TEST_P(WholeCopies, ThatAreOnlyTriedLeaveNothing) {
  CopyOrder order = OrderFor(from_, to_);
  order.trial = Trial::kYes;
  const StoreCopy made = CopyStore(order);
  EXPECT_TRUE(made.isWhole);
  EXPECT_THROW((void)OpenStoreFile(to_, Access::kRead), std::runtime_error);
  to_ = NewStoreName(std::get<1>(GetParam()));
  order.to = to_;
  const std::vector<std::string> before = Everything(to_);
  (void)CopyStore(order);
  EXPECT_EQ(Everything(to_), before);
}

TEST_P(WholeCopies, ThatAreStoppedAnywhereLeaveNothing) {
  for (const std::int64_t place : {300, 900}) {
    CopyOrder order = OrderFor(from_, to_);
    order.progress = [place](std::int64_t done, std::int64_t) { return done < place; };
    EXPECT_THROW((void)CopyStore(order), CancelledError) << place;
    EXPECT_THROW((void)OpenStoreFile(to_, Access::kRead), std::runtime_error);
  }
  EXPECT_TRUE(CopyStore(OrderFor(from_, to_)).isWhole);
}

TEST_P(WholeCopies, AreOfOneMomentWhateverOthersStoreMeanwhile) {
  const std::vector<std::string> before = Everything(from_);
  const std::unique_ptr<Store> other = OpenStoreFile(from_, Access::kChange);
  const std::unique_ptr<SqlSession> session = other->StartSession(AtNoon());
  CopyOrder order = OrderFor(from_, to_);
  order.progress = [&](std::int64_t done, std::int64_t total) {
    if (done % 100 == 1 && done < total) {
      WorkGuard guard(session->work(), {{1}, "meanwhile", {}});
      (void)session->Change("UPDATE Tenants SET FirstName='x' WHERE UnitKey=1", {});
      (void)session->Change("INSERT INTO DOORS (UNITKEY, DOORID) VALUES (1, 9)", {});
      guard.Commit();
    }
    return true;
  };
  (void)CopyStore(order);
  EXPECT_EQ(Everything(to_), before);
  EXPECT_NE(Everything(from_), before);
}

std::string NameOf(const testing::TestParamInfo<std::tuple<Kind, Kind>>& row) {
  const auto name = [](Kind kind) { return std::string(kind == Kind::kFile ? "File" : "Server"); };
  return name(std::get<0>(row.param)) + "To" + name(std::get<1>(row.param));
}

INSTANTIATE_TEST_SUITE_P(Places, WholeCopies,
                         testing::Combine(testing::Values(Kind::kFile, Kind::kServer),
                                          testing::Values(Kind::kFile, Kind::kServer)),
                         NameOf);

class StoreCopies : public CopyFixture {
 protected:
  static void Alter(const std::string& file) {
    const std::unique_ptr<Store> store = OpenStore(file, OpenMode::kReadWrite);
    sqlite::DatabaseOf(*store).Run(
        "CREATE TRIGGER Altering AFTER INSERT ON Tenants BEGIN "
        "UPDATE Tenants SET FirstName='altered' WHERE RID=NEW.RID; END");
  }
};

TEST_F(StoreCopies, IntoThemselvesAreRefused) {
  const std::string store = DemoStore(Kind::kFile);
  EXPECT_THROW((void)CopyStore(OrderFor(store, store)), RefusedError);
  EXPECT_THROW((void)CopyStore(OrderFor(folder_.File("none.db").string(), store)), MissingStore);
}

// A store whose engine changes what is written, as a trigger of somebody else's does.
TEST_F(StoreCopies, ThatAreNotWhatWasCopiedAreNotStored) {
  const std::string from = DemoStore(Kind::kFile);
  const std::string to = NewName(Kind::kFile);
  PutStore(to, {false, AtNoon(), {}}, Standing::kStays);
  Alter(to);
  const std::vector<std::string> before = Everything(to);
  for (const UnitKeys& units : {UnitKeys{}, UnitKeys{2}}) {
    try {
      (void)CopyStore(OrderFor(from, to, units));
      ADD_FAILURE() << "a wrong copy was stored";
    } catch (const StoreError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("Tenants, RID"));
      EXPECT_THAT(failure.what(), HasSubstr("FirstName: 'altered' instead of"));
    }
    EXPECT_EQ(Everything(to), before);
  }
}

}  // namespace
}  // namespace qorhost::test
