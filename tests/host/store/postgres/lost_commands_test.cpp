// Commands whose server is lost while it is to store: the words and the status tell what is stored.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "server_proxy.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::test::ServerProxy;
using postgres::test::TestServer;
using testing::HasSubstr;
using testing::Not;
using Way = ServerProxy::Way;

class LostCommands : public RunFixture {
 protected:
  void SetUp() override {
    static int count = 0;
    const std::string database = "lostcommands" + std::to_string(++count);
    server_ = TestServer::Shared().Create(database);
    proxy_ = std::make_unique<ServerProxy>(TestServer::Shared());
    through_ = proxy_->NameOf(database);
    ASSERT_EQ(On(server_, {"init", "--demo"}).status, 0);
  }

  [[nodiscard]] Outcome On(const std::string& store, std::vector<std::string> words) {
    words.insert(words.begin(), {"--db", store, "--yes"});
    return Run(std::move(words));
  }

  /// The command, whose commit meets that; with `closed` nobody can be asked afterwards.
  [[nodiscard]] Outcome Losing(const std::vector<std::string>& words, Way way, bool closed) {
    proxy_->Ask([this, way, closed](const ServerProxy::Message& message) {
      if (!message.text.starts_with("COMMIT")) {
        return Way::kOn;
      }
      proxy_->Close(closed);
      return way;
    });
    Outcome outcome = On(through_, words);
    proxy_->Ask(nullptr);
    proxy_->Close(false);
    return outcome;
  }

  [[nodiscard]] bool IsThere(const std::string& name) {
    return On(server_, {"tenants", "list", "--unit", "1", "--json"}).out.find(name) !=
           std::string::npos;
  }

  std::string server_;
  std::string through_;
  std::unique_ptr<ServerProxy> proxy_;
};

std::vector<std::string> Adding(const std::string& name) {
  return {"tenants", "add", "--unit", "1", "--last", name};
}

TEST_F(LostCommands, TellWhetherTheyHaveStored) {
  const Outcome stored = Losing(Adding("Quintus"), Way::kLostBehindAnswer, false);
  EXPECT_EQ(stored.status, 0) << stored.err;
  EXPECT_TRUE(IsThere("Quintus"));
  const Outcome notStored = Losing(Adding("Quirin"), Way::kLostBefore, false);
  EXPECT_EQ(notStored.status, 3);
  EXPECT_THAT(notStored.err, HasSubstr("nothing was stored; try again"));
  EXPECT_FALSE(IsThere("Quirin"));
  EXPECT_EQ(On(through_, {"check"}).status, 0);
}

TEST_F(LostCommands, SayThatNobodyCanTell) {
  const Outcome added = Losing(Adding("Quintus"), Way::kLostBehindAnswer, true);
  EXPECT_EQ(added.status, 4);
  EXPECT_THAT(added.err, HasSubstr("it is not known whether it was stored: look at the history "
                                   "(qorhost history list) before you do it again"));
  EXPECT_THAT(added.err, Not(HasSubstr("nothing was")));
  EXPECT_TRUE(IsThere("Quintus"));
  EXPECT_THAT(On(server_, {"history", "list"}).out, HasSubstr("Quintus"));
  const Outcome written =
      Losing({"sql", "--write", "DELETE FROM Tenants WHERE LastName='Quintus'", "--json"},
             Way::kLostBefore, true);
  EXPECT_EQ(written.status, 4);
  EXPECT_THAT(written.err, HasSubstr("\"kind\":\"unknown\",\"status\":4"));
  EXPECT_TRUE(IsThere("Quintus"));
}

}  // namespace
}  // namespace qorhost::test
