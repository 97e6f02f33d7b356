// A server that fails at any statement that writes, or at the commit: a full disk, others in the
// way, a statement that is ended, a process that is. Whatever the operation, it is told, nothing of
// it is stored, and the seat goes on.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/postgres/placement.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/server_building.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/postgres/needs_server.h"
#include "tests/host/store/postgres/server_faults.h"
#include "tests/host/store/postgres/test_server.h"

namespace qorhost::test {

void PrintTo(const NamedOperation& one, std::ostream* out) {
  *out << one.name;
}

namespace {

using postgres::test::kServerFaults;
using postgres::test::ServerFault;
using postgres::test::ServerFaults;
using postgres::test::TestServer;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const auto* const kServerIsNeeded = postgres::test::NeedServer();

/// Nobody stops at its statements.
class Unwatched final : public Steps {
 public:
  void Tell(std::function<void()> /*step*/) override {}
};

class ServerFailures : public testing::TestWithParam<NamedOperation> {
 protected:
  void SetUp() override {
    seat_ = std::make_unique<Seat>(
        std::make_unique<postgres::Store>(postgres::OpenServerStore(Made(), OpenMode::kReadWrite),
                                          Patience(), false),
        std::make_unique<Unwatched>(), "anna");
    Begin();
    const Told told = RunAt(GetParam().operation, *seat_);
    ASSERT_TRUE(told.done()) << TextOf(told);
    after_ = ContentOf(beside_);
  }

  void Begin() {
    faults_.Plan(0, {});
    RenewBuilding(beside_, kRoomy);
    ASSERT_TRUE(RunAt(FirstEntry(), *seat_).done());
  }

  /// The operation meets the fault at its n-th write, from 1; whether it came so far.
  bool FailAt(int nth, const ServerFault& fault) {
    Begin();
    const std::vector<std::string> before = postgres::test::EveryRowOf(beside_);
    const PreparedDesk desk = GetParam().operation.prepare(*seat_);
    faults_.Plan(nth, fault);
    const Told told = TellingRaised(desk.run);
    const bool isMet = faults_.met() >= nth;
    faults_.Plan(0, {});
    if (!isMet) {
      EXPECT_TRUE(told.done()) << TextOf(told);
      EXPECT_EQ(ContentOf(beside_), after_);
      return false;
    }
    EXPECT_EQ(told.ending, Ending::kFailed) << TextOf(told);
    EXPECT_THAT(told.failures, AllOf(Not(IsEmpty()), Each(HasSubstr(fault.words)))) << TextOf(told);
    EXPECT_EQ(postgres::test::EveryRowOf(beside_), before);
    // The seat goes on as if nothing had been.
    const Told again = RunAt(GetParam().operation, *seat_);
    EXPECT_TRUE(again.done()) << TextOf(again);
    EXPECT_EQ(ContentOf(beside_), after_);
    EXPECT_THAT(WrongIn(beside_), IsEmpty());
    return true;
  }

 private:
  static const std::string& Made() {
    static const std::string name = [] {
      std::string made = TestServer::Shared().Create("failures");
      (void)postgres::OpenServerStore(made, OpenMode::kCreate);
      return made;
    }();
    return name;
  }

  postgres::Connection beside_ = postgres::OpenServerStore(Made(), OpenMode::kReadWrite);
  ServerFaults faults_{beside_};
  std::unique_ptr<Seat> seat_;
  std::vector<std::string> after_;
};

/// Every fault at each of the first writes, and at the many behind them one of the faults by turns.
TEST_P(ServerFailures, AtAnyWriteAreToldAndLeaveNothing) {
  constexpr std::size_t kFirst = 6;
  std::size_t met = 0;
  bool isMet = true;
  for (std::size_t nth = 1; isMet; ++nth) {
    for (std::size_t kind = 0; kind < kServerFaults.size() && isMet; ++kind) {
      if (nth > kFirst && nth % kServerFaults.size() != kind) {
        continue;
      }
      const ServerFault& fault = kServerFaults.at(kind);
      SCOPED_TRACE(fmt::format("{} at the write {}", fault.state, nth));
      isMet = FailAt(static_cast<int>(nth), fault);
      if (HasFailure()) {
        return;
      }
      met += isMet ? 1 : 0;
    }
  }
  // The row, the entry, the version and the commit at least.
  EXPECT_GE(met, 4 * kServerFaults.size());
  RecordProperty("met", static_cast<int>(met));
}

INSTANTIATE_TEST_SUITE_P(Of, ServerFailures, testing::ValuesIn(OperationsOfEveryKind()),
                         [](const testing::TestParamInfo<NamedOperation>& one) {
                           return one.param.name;
                         });

}  // namespace
}  // namespace qorhost::test
