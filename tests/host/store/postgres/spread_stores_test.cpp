// A store whose tables lie in several places: what comes into it and out of it is what it is
// elsewhere, and operators do with it what they do with a plain one.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/store/postgres/schema.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::test::TestServer;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class SpreadStores : public RunFixture {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    building_ = File("building.db");
    ASSERT_EQ(On(building_, {"init", "--demo"}).status, 0);
    ASSERT_EQ(On(building_, Adding("Quintus")).status, 0);
    spread_ = NewSpread();
    const Outcome copied = Run({"copy", "--from", building_, "--to", spread_});
    ASSERT_EQ(copied.status, 0) << copied.err;
  }

  [[nodiscard]] static std::string NewDatabase() {
    static int count = 0;
    return TestServer::Shared().Create("spreadstore" + std::to_string(++count));
  }
  /// A store in several places, with which nothing was done.
  [[nodiscard]] static std::string NewSpread() {
    std::string name = NewDatabase();
    (void)postgres::OpenServerStore(name, OpenMode::kCreate,
                                    {.spread = postgres::Spread::kPartitions});
    return name;
  }
  [[nodiscard]] Outcome On(const std::string& store, Words words) {
    words.insert(words.begin(), {"--db", store, "--yes"});
    return Run(std::move(words));
  }
  [[nodiscard]] static Words Adding(const std::string& name) {
    return {"tenants", "add", "--unit", "1", "--last", name};
  }

  /// What is told of a store, with its identities, its history and the hashes of that.
  [[nodiscard]] std::string TellAll(const std::string& store) {
    std::string all;
    for (const Words& words :
         {Words{"units"}, Words{"history", "check", "--json"}, Words{"history", "list", "--json"},
          Words{"steps", "list", "--all-units", "--json"},
          Words{"tenants", "list", "--unit", "1", "--json"},
          Words{"tenants", "list", "--unit", "2", "--json"},
          Words{"credentials", "list", "--unit", "2", "--json"},
          Words{"dircodes", "list", "--unit", "2", "--json"}}) {
      const Outcome told = On(store, words);
      EXPECT_EQ(told.status, 0) << words.front() << ' ' << told.err;
      all += told.out;
    }
    EXPECT_EQ(On(store, {"check"}).status, 0);
    return all;
  }

  std::string building_;
  std::string spread_;
};

TEST_F(SpreadStores, HoldWhatWasCopiedIntoThem) {
  EXPECT_EQ(TellAll(spread_), TellAll(building_));
  EXPECT_EQ(On(spread_, Adding("Quirin")).status, 0);
  EXPECT_EQ(On(building_, Adding("Quirin")).status, 0);
  EXPECT_EQ(On(spread_, {"history", "undo", "--last", "--unit", "1"}).status,
            On(building_, {"history", "undo", "--last", "--unit", "1"}).status);
  EXPECT_EQ(On(spread_, {"tenants", "list", "--unit", "1"}).out,
            On(building_, {"tenants", "list", "--unit", "1"}).out);
  EXPECT_EQ(On(spread_, {"check"}).status, 0);
}

TEST_F(SpreadStores, AreBackedUpAndPutBack) {
  const std::string backup = File("backup.db");
  const Outcome made = On(spread_, {"backup", backup});
  ASSERT_EQ(made.status, 0) << made.err;
  EXPECT_EQ(TellAll(backup), TellAll(spread_));
  const std::string again = NewSpread();
  const Outcome restored = On(again, {"restore", backup});
  ASSERT_EQ(restored.status, 0) << restored.err;
  EXPECT_EQ(TellAll(again), TellAll(spread_));
  // What is added behind it gets an identity of its own.
  EXPECT_EQ(On(again, Adding("Quirin")).status, 0);
  EXPECT_EQ(On(again, {"check"}).status, 0);
}

/// From a plain store to one in several places and back goes by a copy.
TEST_F(SpreadStores, AreCopiedToPlainOnes) {
  const std::string plain = NewDatabase();
  const Outcome copied = Run({"copy", "--from", spread_, "--to", plain});
  ASSERT_EQ(copied.status, 0) << copied.err;
  EXPECT_EQ(TellAll(plain), TellAll(spread_));
  const std::string back = NewSpread();
  ASSERT_EQ(Run({"copy", "--from", plain, "--to", back}).status, 0);
  EXPECT_EQ(TellAll(back), TellAll(plain));
}

TEST_F(SpreadStores, TakeUnitsBesideTheirOwn) {
  const std::string annex = File("annex.db");
  ASSERT_EQ(On(annex, {"init"}).status, 0);
  for (const char* const unit : {"One", "Two", "Three", "Four", "Annex"}) {
    ASSERT_EQ(On(annex, {"units", "add", unit, "--type", "Panel 500", "--capacity", "500"}).status,
              0);
  }
  ASSERT_EQ(On(annex, {"tenants", "add", "--unit", "5", "--last", "Quirin"}).status, 0);
  const Outcome copied = Run({"copy", "--from", annex, "--to", spread_, "--unit", "5"});
  ASSERT_EQ(copied.status, 0) << copied.err;
  EXPECT_THAT(On(spread_, {"tenants", "list", "--unit", "5"}).out, HasSubstr("Quirin"));
  EXPECT_EQ(On(spread_, {"check"}).status, 0);
  EXPECT_EQ(Run({"copy", "--from", annex, "--to", spread_, "--unit", "1"}).status, 1);
}

TEST_F(SpreadStores, AreWorkedOnByOperators) {
  postgres::Connection beside(spread_);
  beside.RunAll(
      "CREATE ROLE spreaddesk NOLOGIN; CREATE ROLE spreadoffice NOLOGIN; "
      "CREATE ROLE spreadolga LOGIN IN ROLE spreaddesk");
  const Outcome granted = On(spread_, {"init", "--rights-only", "--operators", "spreaddesk",
                                       "--administrators", "spreadoffice"});
  ASSERT_EQ(granted.status, 0) << granted.err;
  std::string olga = spread_;
  olga.replace(olga.find("tester"), 6, "spreadolga");
  const Outcome added = On(olga, Adding("Quirin"));
  EXPECT_EQ(added.status, 0) << added.err;
  const Outcome issued = On(olga, {"credentials", "add", "--unit", "2", "--type", "card26",
                                   "--start", "901", "--facility", "7"});
  EXPECT_EQ(issued.status, 0) << issued.err;
  EXPECT_EQ(On(olga, {"history", "check"}).status, 0);
  EXPECT_EQ(On(olga, {"check"}).status, 0);
  postgres::Connection own(olga);
  for (const char* const forbidden :
       {R"(UPDATE qorhost."AuditEntries" SET "Who" = 'x')", R"(DELETE FROM qorhost."AuditEntries")",
        R"(DELETE FROM qorhost."AuditEntries_p1")", R"(SELECT * FROM qorhost."Tenants_p1")",
        R"(DROP TABLE qorhost."Tenants_p1")", R"(UPDATE qorhost."UnitVersions" SET "Entry" = 1)"}) {
    EXPECT_THROW((void)own.Run(forbidden), StoreError) << forbidden;
  }
}

}  // namespace
}  // namespace qorhost::test
