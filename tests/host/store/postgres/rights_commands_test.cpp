// The command that makes a store on a server, and grants the rights on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "host/store/postgres/connection.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::Connection;
using postgres::test::TestServer;
using testing::HasSubstr;

class RightsCommands : public RunFixture {
 protected:
  void SetUp() override {
    static int count = 0;
    server_ = TestServer::Shared().Create("rightscommands" + std::to_string(++count));
  }

  [[nodiscard]] Outcome On(const std::string& store, std::vector<std::string> words) {
    words.insert(words.begin(), {"--db", store, "--yes"});
    return Run(std::move(words));
  }

  std::string server_;
};

TEST_F(RightsCommands, GrantThemWithANewStoreAndLater) {
  const Outcome made =
      On(server_, {"init", "--demo", "--operators", "desk", "--administrators", "office"});
  ASSERT_EQ(made.status, 0) << made.err;
  Connection owner(server_);
  owner.RunAll("CREATE ROLE olga LOGIN IN ROLE desk");
  std::string olga = server_;
  olga.replace(olga.find("tester"), 6, "olga");
  EXPECT_EQ(On(olga, {"tenants", "add", "--unit", "1", "--last", "Quintus"}).status, 0);
  EXPECT_EQ(On(olga, {"history", "check"}).status, 0);
  const Outcome undone = On(olga, {"history", "undo", "2"});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THROW(Connection(olga).RunAll(R"(DELETE FROM qorhost."AuditEntries")"), std::exception);
  const Outcome later = On(server_, {"init", "--rights-only", "--operators", "desk2"});
  EXPECT_EQ(later.status, 0) << later.err;
  EXPECT_THAT(later.err + later.out, HasSubstr("Granted the rights on"));
  EXPECT_EQ(On(server_, {"init", "--rights-only"}).status, 2);
  EXPECT_EQ(On(server_, {"init", "--rights-only", "--demo", "--operators", "desk"}).status, 2);
  EXPECT_EQ(On(olga, {"init", "--rights-only", "--operators", "desk"}).status, 3);
}

TEST_F(RightsCommands, StandBehindARestoreAndOnAStoreThatIsMadeAnew) {
  const auto roles = [](const char* word) { return word + std::string("2"); };
  ASSERT_EQ(On(File("old.db"), {"init", "--demo"}).status, 0);
  ASSERT_EQ(On(server_, {"init", "--operators", roles("desk"), "--administrators", roles("office")})
                .status,
            0);
  Connection owner(server_);
  owner.RunAll("CREATE ROLE oscar LOGIN IN ROLE desk2; CREATE ROLE adam LOGIN IN ROLE office2");
  const auto as = [&](const std::string& login) {
    std::string name = server_;
    return name.replace(name.find("tester"), 6, login);
  };
  const auto works = [&](const char* unit, const char* name) {
    const Outcome done = On(as("oscar"), {"tenants", "add", "--unit", unit, "--last", name});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_EQ(On(as("oscar"), {"history", "check"}).status, 0);
    EXPECT_EQ(On(as("oscar"), {"init", "--force"}).status, 3);
    EXPECT_THROW(Connection(as("oscar")).RunAll(R"(DELETE FROM qorhost."AuditEntries")"),
                 std::exception);
  };
  const Outcome restored = On(server_, {"restore", File("old.db")});
  ASSERT_EQ(restored.status, 0) << restored.err;
  works("1", "Quintus");
  for (const std::string& maker : {as("adam"), server_}) {
    const Outcome anew = On(maker, {"init", "--force", "--demo"});
    ASSERT_EQ(anew.status, 0) << anew.err;
    works("1", "Sextus");
    EXPECT_EQ(owner.Run("SELECT DISTINCT tableowner FROM pg_tables WHERE schemaname='qorhost'")
                  .Text(0, 0),
              "office2");
  }
}

TEST_F(RightsCommands, AreNoneOfAFile) {
  const Outcome file = On(File("new.db"), {"init", "--operators", "desk"});
  EXPECT_EQ(file.status, 1);
  EXPECT_THAT(file.err, HasSubstr("set the rights of the file"));
  EXPECT_FALSE(std::filesystem::exists(File("new.db")));
}

}  // namespace
}  // namespace qorhost::test
