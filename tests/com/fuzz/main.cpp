// Calls the component in every way that automation lets a client try, on hosts that answer by
// chance. com_fuzz [--episodes N] [--seed N] [--from N] [--seconds N] [--plant DEFECT]
//         com_fuzz --corpus all | --collect EPISODES [--seed N]
//
// --corpus runs the episodes of corpus.h, which end every member in every way that is known;
// --collect prints such a table anew: those of so many episodes that reach what none before them
// reached.
//
// An episode comes from the seed and its own number: one that finds something is run again alone by
// --seed and --from, which are printed with it. With --plant the component has a defect that has to
// be found. With --seconds it ends then, if not before; an
// episode may take as long as --patience says.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/com/fuzz/corpus.h"
#include "tests/com/fuzz/episode.h"
#include "tests/com/fuzz/planted.h"
#include "tests/com/support/pressed_boxes.h"
#include "tests/com/support/process_state.h"

namespace qortest {
namespace {

struct Options {
  std::uint64_t episodes = 1'000;
  std::uint64_t seed = 20'260'101;
  std::uint64_t from = 0;
  std::uint64_t seconds = 0;
  std::uint64_t patience = 20;
  std::string defect;
  bool corpus = false;
  std::uint64_t collect = 0;
};

// How often the heaps are looked at.
constexpr std::uint64_t kHeapsEach = 50;
// What the system may still keep for itself after the first half: names that come late, say.
constexpr long long kBlocksToSpare = 16;
// Fewer episodes have not met everything that is made once.
constexpr std::uint64_t kFewestForGrowth = 1'000;

std::uint64_t seed = 0;
DWORD patience = 0;  // milliseconds
std::atomic<std::uint64_t> running{0};

// Where the process may be damaged: no memory, no streams.
[[noreturn]] void Fail(const char* what) {
  std::array<char, 1500> text{};
  const int length = std::snprintf(
      text.data(), text.size(),
      "com_fuzz: %s\nAgain: com_fuzz --seed %llu --from %llu --episodes 1\n", what,
      static_cast<unsigned long long>(seed), static_cast<unsigned long long>(running.load()));
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(),
            std::min(static_cast<DWORD>(length), static_cast<DWORD>(text.size() - 1)), &written,
            nullptr);
  TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
  std::abort();
}

LONG WINAPI TellCrash(EXCEPTION_POINTERS* crash) {
  std::array<char, 600> text{};
  std::snprintf(text.data(), text.size(), "the process crashed, exception %08lX: %s",
                crash->ExceptionRecord->ExceptionCode, Episodes::Current());
  Fail(text.data());
}

// Ends the process when an episode lasts too long.
DWORD WINAPI Watch(void* ended) {
  std::uint64_t last = running;
  while (WaitForSingleObject(ended, patience) == WAIT_TIMEOUT) {
    if (running == last) {
      std::array<char, 600> text{};
      std::snprintf(text.data(), text.size(), "a call does not come to its end: %s",
                    Episodes::Current());
      Fail(text.data());
    }
    last = running;
  }
  return 0;
}

[[noreturn]] void Refuse(const std::string& what) {
  std::fprintf(stderr, "com_fuzz: %s\n", what.c_str());
  std::exit(EXIT_FAILURE);
}

Options ReadOptions(int count, char** words) {
  Options options;
  if (count % 2 == 0) Refuse("an option lacks its value");
  for (int at = 1; at + 1 < count; at += 2) {
    const std::string_view name = words[at];
    const std::string value = words[at + 1];
    if (name == "--plant") {
      options.defect = value;
    } else if (name == "--episodes") {
      options.episodes = std::stoull(value);
    } else if (name == "--seed") {
      options.seed = std::stoull(value);
    } else if (name == "--from") {
      options.from = std::stoull(value);
    } else if (name == "--seconds") {
      options.seconds = std::stoull(value);
    } else if (name == "--corpus") {
      options.corpus = true;
    } else if (name == "--collect") {
      options.collect = std::stoull(value);
    } else if (name == "--patience") {
      options.patience = std::stoull(value);
    } else {
      Refuse("unknown option " + std::string(name));
    }
  }
  const auto& known = PlantedDefects();
  if (!options.defect.empty() &&
      std::find(known.begin(), known.end(), options.defect) == known.end()) {
    Refuse("nothing is known of a defect " + options.defect);
  }
  return options;
}

void Tell(const Episodes& episodes, std::uint64_t done) {
  std::printf("%llu episodes, %zu calls, %zu calls of the host, %ld message boxes; ended with",
              static_cast<unsigned long long>(done), episodes.calls(), episodes.hostCalls(),
              PressedBoxes::Count());
  for (const auto& [code, count] : episodes.codes()) {
    std::printf(" %08lX: %zu", static_cast<unsigned long>(code), count);
  }
  std::puts("");
}

void Fuzz(const Options& options) {
  std::printf("%d bit, seed %llu, episodes from %llu on\n", static_cast<int>(sizeof(void*) * 8),
              static_cast<unsigned long long>(options.seed),
              static_cast<unsigned long long>(options.from));
  std::fflush(stdout);
  const auto begin = std::chrono::steady_clock::now();
  const std::chrono::seconds limit(options.seconds);
  Episodes episodes(options.defect);
  std::size_t blocks = 0;
  std::uint64_t done = 0;
  for (; done < options.episodes; ++done) {
    if (options.seconds != 0 && std::chrono::steady_clock::now() - begin > limit) break;
    running = options.from + done;
    Random random(options.seed, running);
    const std::string wrong = episodes.Run(random);
    if (!wrong.empty()) Fail(wrong.c_str());
    if (done % kHeapsEach == 0 && !AreHeapsSound())
      Fail("a heap is damaged, by this or one before");
    if (done == options.episodes / 2) blocks = MeasureProcess().blocks;
  }
  const auto grown =
      static_cast<long long>(MeasureProcess().blocks) - static_cast<long long>(blocks);
  Tell(episodes, done);
  if (!AreHeapsSound()) Fail("a heap is damaged");
  if (done < options.episodes || done < kFewestForGrowth) return;
  std::printf("grown since the first half: %lld blocks\n", grown);
  if (grown > kBlocksToSpare) Fail("more memory is allocated than before");
}

void RunOne(Episodes& episodes, std::uint64_t fromSeed, std::uint64_t number) {
  seed = fromSeed;
  running = number;
  Random random(fromSeed, number);
  const std::string wrong = episodes.Run(random);
  if (!wrong.empty()) Fail(wrong.c_str());
  if (!AreHeapsSound()) Fail("a heap is damaged, by this or one before");
}

void Collect(const Options& options) {
  Episodes episodes(options.defect);
  episodes.KeepEndings();
  for (std::uint64_t number = 0; number < options.collect; ++number) {
    const std::size_t before = episodes.endings().size();
    RunOne(episodes, options.seed, number);
    if (episodes.endings().size() != before) {
      std::printf("    {%llu, %llu},\n", static_cast<unsigned long long>(options.seed),
                  static_cast<unsigned long long>(number));
    }
  }
  std::printf("%zu endings\n", episodes.endings().size());
}

// A change of the fuzzer makes other episodes of the same numbers: the table is collected anew
// then.
void RunCorpus(const Options& options) {
  Episodes episodes(options.defect);
  episodes.KeepEndings();
  for (const CorpusEpisode& each : kCorpus) RunOne(episodes, each.seed, each.number);
  Tell(episodes, kCorpus.size());
  std::printf("%zu endings\n", episodes.endings().size());
  if (episodes.endings().size() < kEndingsOfCorpus) {
    Refuse("the episodes of corpus.h reach less than they did: print them anew with --collect");
  }
}

void Run(const Options& options) {
  if (options.collect != 0) {
    Collect(options);
  } else if (options.corpus) {
    RunCorpus(options);
  } else {
    Fuzz(options);
  }
}

}  // namespace
}  // namespace qortest

int main(int count, char** words) {
  testing::InitGoogleTest();
  const qortest::Options options = qortest::ReadOptions(count, words);
  qortest::seed = options.seed;
  qortest::patience = static_cast<DWORD>(options.patience * 1000);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return EXIT_FAILURE;
  qortest::KeepNoFreedTexts();
  SetUnhandledExceptionFilter(qortest::TellCrash);
  HANDLE ended = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE watch = CreateThread(nullptr, 0, qortest::Watch, ended, 0, nullptr);
  {
    const qortest::PressedBoxes boxes;
    qortest::Run(options);
  }
  SetEvent(ended);
  WaitForSingleObject(watch, INFINITE);
  CloseHandle(watch);
  CloseHandle(ended);
  CoUninitialize();
  // What a host's object met that tests do not expect.
  return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? EXIT_FAILURE
                                                                         : EXIT_SUCCESS;
}
