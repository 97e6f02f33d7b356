// Commands that fill a store on a server, which fails at any statement that writes, or at the
// commit: the store is as it was, the words say why, and the command can be given again.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/store/postgres/schema.h"
#include "server_faults.h"
#include "test_server.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using postgres::test::EveryRowOf;
using postgres::test::kServerFaults;
using postgres::test::ServerFault;
using postgres::test::ServerFaults;
using postgres::test::TestServer;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class FailingCopies : public RunFixture {
 protected:
  void SetUp() override {
    static int count = 0;
    server_ = TestServer::Shared().Create("failingcopies" + std::to_string(++count));
    ASSERT_EQ(Run({"--db", server_, "init"}).status, 0);
    ASSERT_EQ(Run({"--db", Building(), "init"}).status, 0);
    for (const char* const unit : {"Mill", "Court"}) {
      ASSERT_EQ(Run({"--db", Building(), "units", "add", unit, "--type", "Panel 500", "--capacity",
                     "500"})
                    .status,
                0);
    }
    ASSERT_EQ(
        Run({"--db", Building(), "tenants", "add", "--unit", "2", "--last", "Quintus"}).status, 0);
  }

  [[nodiscard]] std::string Building() const { return File("building.db"); }

  /// Each of its writes in turn meets one of the faults, until it comes to its end.
  void FailEach(const Words& words) {
    postgres::Connection beside(server_);
    ServerFaults faults(beside);
    const std::vector<std::string> before = EveryRowOf(beside);
    for (int nth = 1;; ++nth) {
      const ServerFault& fault =
          kServerFaults.at(static_cast<std::size_t>(nth) % kServerFaults.size());
      SCOPED_TRACE(fmt::format("{} at the write {}", fault.state, nth));
      faults.Plan(nth, fault);
      const Outcome outcome = Run(words);
      const bool isMet = faults.met() >= nth;
      faults.Plan(0, {});
      if (!isMet) {
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_NE(EveryRowOf(beside), before);
        EXPECT_GT(nth, 10);
        break;
      }
      EXPECT_EQ(outcome.status, 3) << outcome.out;
      EXPECT_THAT(outcome.err, HasSubstr(fault.words));
      ASSERT_EQ(EveryRowOf(beside), before) << outcome.err;
    }
    const Outcome checked = Run({"--db", server_, "check"});
    EXPECT_EQ(checked.status, 0) << checked.err;
  }

  std::string server_;
};

TEST_F(FailingCopies, OfAWholeStoreLeaveNothing) {
  FailEach({"copy", "--from", Building(), "--to", server_});
}

TEST_F(FailingCopies, OfAUnitLeaveNothing) {
  ASSERT_EQ(
      Run({"--db", server_, "units", "add", "Annex", "--type", "Panel 500", "--capacity", "500"})
          .status,
      0);
  FailEach({"copy", "--from", Building(), "--to", server_, "--unit", "2"});
}

TEST_F(FailingCopies, OfABackupLeaveNothing) {
  FailEach({"--db", server_, "--yes", "restore", Building()});
}

}  // namespace
}  // namespace qorhost::test
