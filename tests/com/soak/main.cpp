// Works with the component for a long time while its host misbehaves, and watches what the process
// holds. com_soak [--operations N] [--seed N] [--from N] [--leak block|bytes|handle|reference]
//
// Every operation comes from the seed and its own number: one that fails can be run alone, with
// --from. With --leak one operation in a hundred loses something on purpose; the soak has to fail
// then.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "tests/com/scenarios/object_dispatch.h"
#include "tests/com/soak/turn.h"
#include "tests/com/support/component.h"
#include "tests/com/support/pressed_boxes.h"
#include "tests/com/support/process_state.h"

namespace qortest {
namespace {

struct Options {
  std::uint64_t operations = 100'000;
  std::uint64_t seed = 20'260'101;
  std::uint64_t from = 0;
  std::string leak;
};

// What is measured at the beginning and after each of so many equal parts of the run.
constexpr std::uint64_t kParts = 10;
constexpr std::uint64_t kLeakEach = 100;
// In a shorter run the first part has not yet met everything.
constexpr std::uint64_t kFewestForGrowth = 1'000;

// What the system may still keep for itself. What the component loses it loses with every operation
// of some kind, and there are hundreds of each.
constexpr long long kBlocksToSpare = 8;
constexpr long long kBytesToSpare = 4096;
constexpr long long kHandlesToSpare = 2;

struct Checkpoint {
  std::uint64_t operations;
  ProcessState state;
  int hostObjects;  ///< of the test's host, which the component held until then: 0 between
                    ///< operations
};

[[noreturn]] void Fail(const std::string& what) {
  std::fflush(stdout);
  std::fprintf(stderr, "com_soak: %s\n", what.c_str());
  std::fflush(stderr);
  // Nothing is put in order any more: what was found may be in its way.
  TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
  std::abort();
}

Options ReadOptions(int count, char** words) {
  Options options;
  for (int at = 1; at + 1 < count; at += 2) {
    const std::string_view name = words[at];
    const std::string value = words[at + 1];
    if (name == "--leak") {
      options.leak = value;
    } else if (name == "--operations") {
      options.operations = std::stoull(value);
    } else if (name == "--seed") {
      options.seed = std::stoull(value);
    } else if (name == "--from") {
      options.from = std::stoull(value);
    } else {
      Fail("unknown option " + std::string(name));
    }
  }
  if (count % 2 == 0 || options.operations < kParts) Fail("an option lacks its value");
  return options;
}

void Lose(const std::string& what) {
  if (what == "block") {
    (void)SysAllocString(L"nobody frees this text");
  } else if (what == "bytes") {
    static std::string longer;  // one block, whatever it holds
    longer.append(1024, ' ');
  } else if (what == "handle") {
    (void)CreateEventW(nullptr, FALSE, FALSE, nullptr);
  } else if (what == "reference") {
    (void)CreateObject(L"qorCred.clsDirCodeReport").Detach();
  } else if (!what.empty()) {
    Fail("nothing is known of a leak of a " + what);
  }
}

void Print(const Checkpoint& point) {
  std::printf("%10llu %10zu %12zu %8zu %10zu %10d\n",
              static_cast<unsigned long long>(point.operations), point.state.blocks,
              point.state.bytes, point.state.handles, point.state.committed / 1024,
              point.hostObjects);
  std::fflush(stdout);
}

// The first part warms everything up: growth counts from its end on.
void RequireNoGrowth(const std::vector<Checkpoint>& points) {
  const Checkpoint& first = points.at(1);
  const Checkpoint& last = points.back();
  const auto grown = [&](std::size_t ProcessState::*what) {
    return static_cast<long long>(last.state.*what) - static_cast<long long>(first.state.*what);
  };
  std::printf("grown since the first part: %lld blocks, %lld bytes, %lld handles\n",
              grown(&ProcessState::blocks), grown(&ProcessState::bytes),
              grown(&ProcessState::handles));
  if (grown(&ProcessState::blocks) > kBlocksToSpare) Fail("more memory is allocated than before");
  if (grown(&ProcessState::bytes) > kBytesToSpare) Fail("what is allocated holds more than before");
  if (grown(&ProcessState::handles) > kHandlesToSpare) Fail("more handles are open than before");
  if (!AreHeapsSound()) Fail("a heap is damaged");
}

void Soak(const Options& options) {
  std::printf("%d bit, seed %llu, operations %llu to %llu\n", static_cast<int>(sizeof(void*) * 8),
              static_cast<unsigned long long>(options.seed),
              static_cast<unsigned long long>(options.from),
              static_cast<unsigned long long>(options.from + options.operations - 1));
  std::printf("%10s %10s %12s %8s %10s %10s\n", "operations", "blocks", "bytes", "handles",
              "claimed KB", "objects");
  Turns turns;
  std::vector<Checkpoint> points;
  points.reserve(kParts + 1);
  points.push_back({0, MeasureProcess(), LiveAutomationObjects()});
  Print(points.back());
  for (std::uint64_t done = 0; done < options.operations;) {
    const std::uint64_t number = options.from + done;
    Random random(options.seed, number);
    const std::string wrong = turns.Run(random);
    if (!wrong.empty()) Fail("operation " + std::to_string(number) + ", " + wrong);
    ++done;
    if (number % kLeakEach == 0) Lose(options.leak);
    if (done * kParts / options.operations > (done - 1) * kParts / options.operations) {
      points.push_back({done, MeasureProcess(), LiveAutomationObjects()});
      Print(points.back());
    }
  }
  for (std::size_t at = 0; at < kDisturbances; ++at) {
    const auto one = static_cast<Disturbance>(at);
    std::printf("%10zu  %s\n", turns.Count(one), NameOf(one));
  }
  std::printf("%zu calls of the host, %ld message boxes, %zu of the disturbances came to pass\n",
              turns.calls(), PressedBoxes::Count(), turns.disturbed());
  if (turns.disturbed() * 2 < options.operations)
    Fail("less than half of the operations were disturbed");
  if (testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed()) {
    Fail("the host was called as it must not be: see above");
  }
  if (options.operations < kFewestForGrowth) {
    std::puts("too few operations to tell growth");
  } else {
    RequireNoGrowth(points);
  }
}

}  // namespace
}  // namespace qortest

int main(int count, char** words) {
  testing::InitGoogleTest();
  const qortest::Options options = qortest::ReadOptions(count, words);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return EXIT_FAILURE;
  qortest::KeepNoFreedTexts();
  {
    const qortest::PressedBoxes boxes;
    qortest::Soak(options);
  }
  CoUninitialize();
  return EXIT_SUCCESS;
}
