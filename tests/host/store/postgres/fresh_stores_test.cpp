// Stores that commands make on a server, when the connection is lost at any of their messages: then
// the one that stood there is there, or none, or the whole new one; and that is what the command
// says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "host/store/postgres/connection.h"
#include "server_proxy.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::test::ServerProxy;
using postgres::test::TestServer;
using testing::HasSubstr;
using Way = ServerProxy::Way;
using Words = std::vector<std::string>;

class FreshStores : public RunFixture {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
    proxy_ = std::make_unique<ServerProxy>(TestServer::Shared());
    before_ = NewDatabase("template0");
  }

  [[nodiscard]] static std::string NewDatabase(const std::string& like) {
    static int count = 0;
    std::string database = "fresh" + std::to_string(++count);
    (void)TestServer::Shared().Create(database, like);
    return database;
  }
  [[nodiscard]] static std::string Name(const std::string& database) {
    return TestServer::Shared().NameOf(database);
  }
  [[nodiscard]] Outcome On(const std::string& store, Words words) {
    words.insert(words.begin(), {"--db", store, "--yes"});
    return Run(std::move(words));
  }
  /// What stands in a database, in the words of commands.
  [[nodiscard]] std::string Contents(const std::string& database) {
    const Outcome units = On(Name(database), {"units"});
    return units.out + units.err.substr(0, units.err.find('\'')) +
           On(Name(database), {"history", "list", "--columns", "entry,what,rows"}).out;
  }

  /// The command's words, in which "SERVER" stands for the store.
  [[nodiscard]] Outcome Making(Words words, const std::string& store) {
    for (std::string& word : words) {
      if (word == "SERVER") word = store;
    }
    return Run(std::move(words));
  }

  /// The command on a store through the proxy, whose message of that number meets that.
  [[nodiscard]] Outcome Losing(const Words& words, const std::string& database, int number,
                               Way way) {
    kinds_.clear();
    proxy_->Ask([this, number, way](const ServerProxy::Message& message) {
      kinds_.emplace_back(message.text.substr(0, kKind));
      return static_cast<int>(kinds_.size()) == number ? way : Way::kOn;
    });
    Outcome outcome = Making(words, proxy_->NameOf(database));
    proxy_->Ask(nullptr);
    return outcome;
  }

  /// The same in short: which units and people stand there and what was done.
  [[nodiscard]] static std::string Mark(const std::string& database) {
    postgres::Connection connection(Name(database));
    if (connection.Run("SELECT to_regclass('qorhost.\"Units\"')").IsNull(0, 0)) {
      return "no store";
    }
    const postgres::Result found = connection.Run(
        R"(SELECT concat_ws('|', (SELECT string_agg("UnitName", ',' ORDER BY "RID") )"
        R"(FROM qorhost."Units"), (SELECT string_agg("LastName", ',' ORDER BY "RID") )"
        R"(FROM qorhost."Tenants"), (SELECT string_agg("What", ',' ORDER BY "RID") )"
        R"(FROM qorhost."AuditEntries")))");
    return "a store: " + std::string(found.Text(0, 0));
  }

  /// Which of the messages are lost, from 1: of each kind the first and the last one, and the four
  /// at the end; all of them where QORHOST_MORE_ORDERS in the environment is 100.
  [[nodiscard]] static std::vector<int> NumbersToLose(const std::vector<std::string>& kinds) {
    constexpr int kAtTheEnd = 4;
    const char* const asked = std::getenv("QORHOST_MORE_ORDERS");
    const bool isEach = asked != nullptr && std::stoi(asked) >= 100;
    std::vector<int> numbers;
    for (auto at = kinds.begin(); at != kinds.end(); ++at) {
      const bool isFirst = std::find(kinds.begin(), at, *at) == at;
      const bool isLast = std::find(at + 1, kinds.end(), *at) == kinds.end();
      if (isEach || isFirst || isLast || kinds.end() - at <= kAtTheEnd) {
        numbers.push_back(static_cast<int>(at - kinds.begin()) + 1);
      }
    }
    return numbers;
  }

  /// Whatever message is lost: what stood in `before_` stays, or the new one is whole, as told.
  void LoseEach(const Words& words) {
    std::string database = NewDatabase(before_);
    const std::string old = Mark(database);
    const Outcome whole = Losing(words, database, 0, Way::kOn);
    ASSERT_EQ(whole.status, 0) << whole.err;
    const std::vector<int> numbers = NumbersToLose(kinds_);
    const auto all = static_cast<int>(kinds_.size());
    const std::string fresh = Mark(database);
    const std::string contents = Contents(database);
    ASSERT_NE(fresh, old);
    ASSERT_GT(all, 10);
    std::cout << "[          ] " << numbers.size() << " of " << all << " messages are lost\n";
    bool isNew = true;
    for (const int number : numbers) {
      const Way way = number % 2 == 0 ? Way::kLostBefore : Way::kLostBehindAnswer;
      SCOPED_TRACE(std::to_string(number) + " of " + std::to_string(all));
      database = isNew ? NewDatabase(before_) : database;
      const Outcome lost = Losing(words, database, number, way);
      const std::string found = Mark(database);
      isNew = found == fresh;
      EXPECT_EQ(lost.status == 0, isNew) << lost.err << found;
      EXPECT_TRUE(isNew || found == old) << lost.err << found;
    }
    // Nothing of what was lost is in the way.
    database = isNew ? NewDatabase(before_) : database;
    EXPECT_EQ(Making(words, Name(database)).status, 0);
    EXPECT_EQ(Contents(database), contents);
  }

  std::string before_;                      // the database that each of them starts as
  static constexpr std::size_t kKind = 40;  // letters, by which messages are alike
  std::vector<std::string> kinds_;          // of those that the command sent
  std::unique_ptr<ServerProxy> proxy_;
};

TEST_F(FreshStores, LeaveTheOldOneUntilTheyAreWhole) {
  ASSERT_EQ(On(Name(before_), {"init"}).status, 0);
  ASSERT_EQ(
      On(Name(before_), {"units", "add", "Old House", "--type", "Panel 500", "--capacity", "500"})
          .status,
      0);
  LoseEach({"--db", "SERVER", "init", "--force", "--yes", "--demo"});
}

TEST_F(FreshStores, ThatABackupOrACopyFillsAreWholeOrNotThere) {
  ASSERT_EQ(On(File("small.db"), {"init"}).status, 0);
  ASSERT_EQ(
      On(File("small.db"), {"units", "add", "Mill", "--type", "Panel 500", "--capacity", "500"})
          .status,
      0);
  LoseEach({"--db", "SERVER", "restore", File("small.db")});
  LoseEach({"--db", File("small.db"), "copy", "--to", "SERVER"});
}

TEST_F(FreshStores, ThatABuildingIsBroughtIntoAreWholeOrNotThere) {
  if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
    GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
  }
  const std::string samples = QORHOST_DESKTOP_SAMPLES;
  LoseEach({"--db", "SERVER", "init", "--from", samples + "/building-2000.mdb"});
}

TEST_F(FreshStores, ShowTheOldOneToOthersWhileTheyAreMade) {
  ASSERT_EQ(On(Name(before_), {"init"}).status, 0);
  ASSERT_EQ(
      On(Name(before_), {"units", "add", "Old House", "--type", "Panel 500", "--capacity", "500"})
          .status,
      0);
  const std::string old = Contents(before_);
  std::string meanwhile;
  bool isAsked = false;
  proxy_->Ask([&](const ServerProxy::Message& message) {
    if (message.text.starts_with("COMMIT") && !isAsked) {
      isAsked = true;
      meanwhile = Contents(before_);
    }
    return Way::kOn;
  });
  EXPECT_EQ(On(proxy_->NameOf(before_), {"init", "--force", "--demo"}).status, 0);
  EXPECT_EQ(meanwhile, old);
  EXPECT_THAT(Contents(before_), HasSubstr("Harbour Court"));
}

TEST_F(FreshStores, AreMadeByTheOwnerOfADatabaseForRolesOfOthers) {
  postgres::Connection(Name(before_))
      .RunAll(
          "CREATE ROLE freshoffice; CREATE ROLE freshdesk; CREATE ROLE freshanna LOGIN IN ROLE "
          "freshoffice; CREATE ROLE fresholga LOGIN IN ROLE freshdesk");
  const auto nameFor = [this](const std::string& login) {
    std::string name = Name(before_);
    return name.replace(name.find("tester"), 6, login);
  };
  const Outcome refused = On(nameFor("freshanna"), {"init"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_THAT(refused.err, HasSubstr("ask its administrator for GRANT CREATE ON DATABASE \"" +
                                     before_ + "\" TO \"freshanna\""));
  postgres::Connection(Name(before_)).RunAll("ALTER DATABASE " + before_ + " OWNER TO freshanna");
  const Outcome made = On(nameFor("freshanna"), {"init", "--demo", "--operators", "freshdesk",
                                                 "--administrators", "freshoffice"});
  EXPECT_EQ(made.status, 0) << made.err;
  const Outcome added =
      On(nameFor("fresholga"), {"tenants", "add", "--unit", "1", "--last", "Quintus"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_NE(On(nameFor("fresholga"), {"init", "--force"}).status, 0);
  EXPECT_EQ(On(nameFor("freshanna"), {"init", "--force"}).status, 0);
}

TEST_F(FreshStores, RemoveTheOldOneWhenNobodyReadsIt) {
  ASSERT_EQ(On(Name(before_), {"init"}).status, 0);
  postgres::Connection reader(Name(before_));
  reader.RunAll("BEGIN; LOCK TABLE qorhost.\"Units\" IN ACCESS SHARE MODE");
  const auto left = [&] {
    return postgres::Connection(Name(before_))
        .Run("SELECT count(*) FROM pg_namespace WHERE nspname LIKE '%replaced'")
        .Number(0, 0);
  };
  const Outcome made = On(Name(before_), {"init", "--force", "--demo", "--wait", "0"});
  EXPECT_EQ(made.status, 0);
  EXPECT_THAT(made.err, HasSubstr("could not be removed, for somebody goes on reading it"));
  EXPECT_EQ(left(), 2);
  reader.RunAll("COMMIT");
  EXPECT_EQ(On(Name(before_), {"init", "--force"}).status, 0);
  EXPECT_EQ(left(), 0);
}

}  // namespace
}  // namespace qorhost::test
