// Two who do something to one unit at once, each of them interrupted by the other: the first stops
// before one of its statements, the second before one of its own, the first ends, then the second.
// Of all orders one in four is tried on a file, along diagonals of all pairs of statements, and
// fewer on a server; QORHOST_MORE_ORDERS in the environment tries so many times more: 100 tries
// all.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <semaphore>
#include <string>
#include <thread>

#include "tests/host/concurrency/meetings.h"

namespace qorhost::test {
namespace {

/// What an interrupted run came to.
struct Interrupted {
  Result result;
  bool firstStood = false;  // there was such a statement
  bool secondStood = false;
  bool firstHeld = false;  // it had the right to write when it stood
  bool secondHeld = false;
};

class Interruptions : public MeetingTest {
 protected:
  /// The first stands before its statement `i`, the second before its statement `j` meanwhile.
  Interrupted Run(int i, int j) {
    Begin();
    Interrupted run;
    Told second;
    std::binary_semaphore secondStands(0);
    std::binary_semaphore secondMayGoOn(0);
    std::thread other;
    second_->BeforeStatements([&](int statement) {
      if (statement == j && other.joinable()) {
        run.secondStood = true;
        run.secondHeld = second_->session().sql().work().locked();
        secondStands.release();
        secondMayGoOn.acquire();
      }
    });
    first_->BeforeStatements([&](int statement) {
      if (statement != i) {
        return;
      }
      run.firstStood = true;
      run.firstHeld = first_->session().sql().work().locked();
      std::binary_semaphore started(0);
      other = std::thread([&] {
        started.acquire();
        second = RunSecond();
        secondStands.release();
      });
      started.release();
      secondStands.acquire();
    });
    const Told first = RunFirst();
    first_->BeforeStatements([](int) {});
    secondMayGoOn.release();
    if (other.joinable()) {
      other.join();
    } else {
      second = RunSecond();
    }
    second_->BeforeStatements([](int) {});
    run.result = End(first, second);
    return run;
  }

  /// What is stored is what one of them leaves alone, or both one after the other.
  void Judge(const Interrupted& run) {
    const Result& result = run.result;
    EXPECT_EQ(place_->Wrong(), std::vector<std::string>());
    EXPECT_EQ(place_->Entries(), (result.first.done() ? 1 : 0) + (result.second.done() ? 1 : 0));
    if (result.first.done() && result.second.done()) {
      EXPECT_TRUE(result.content == firstThenSecond_.content ||
                  result.content == secondThenFirst_.content)
          << TextOf(result);
    } else {
      EXPECT_TRUE(result.first.done() || result.second.done()) << TextOf(result);
      EXPECT_EQ(result.content, result.first.done() ? afterFirst_ : afterSecond_) << TextOf(result);
    }
  }

  Result firstThenSecond_;
  Result secondThenFirst_;
  std::vector<std::string> afterFirst_;
  std::vector<std::string> afterSecond_;
};

TEST_P(Interruptions, LeaveWhatOneAfterTheOtherWouldLeave) {
  Begin();
  const Told firstAlone = RunFirst();
  afterFirst_ = place_->Content();
  firstThenSecond_ = End(firstAlone, RunSecond());
  Begin();
  const Told secondAlone = RunSecond();
  afterSecond_ = place_->Content();
  secondThenFirst_ = End(RunFirst(), secondAlone);
  ASSERT_TRUE(firstAlone.done() && secondAlone.done());

  // Once both have stood with the right to write asked for, nothing new can come: what follows up
  // to the end of the work nobody else can write into.
  const int step = OrderStep(kUsualStepOfInterruptions);
  int orders = 0;
  bool firstHeld = false;
  bool firstStood = true;
  for (int i = 0; firstStood && !firstHeld; ++i) {
    bool secondHeld = false;
    bool secondStood = true;
    for (int j = i % step; firstStood && secondStood && !secondHeld; j += step) {
      SCOPED_TRACE(fmt::format("{} before statement {}, {} before statement {}",
                               GetParam().first.name, i, GetParam().second.name, j));
      const Interrupted run = Run(i, j);
      Judge(run);
      if (HasFailure()) {
        return;
      }
      ++orders;
      firstStood = run.firstStood;
      secondStood = run.secondStood;
      secondHeld = run.secondHeld;
      firstHeld = firstHeld || run.firstHeld;
    }
  }
  // Few, where one asks for the right to write at once, as an import does.
  EXPECT_GT(orders, 2);
  RecordProperty("orders", orders);
}

INSTANTIATE_TEST_SUITE_P(OfTwo, Interruptions, testing::ValuesIn(MeetingsOfTwo()),
                         [](const testing::TestParamInfo<Meeting>& one) { return one.param.name; });

}  // namespace
}  // namespace qorhost::test
