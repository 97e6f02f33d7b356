// The start of the desktop program, until its window is painted, against that of an empty window:
// each a process of its own.
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <array>
#include <string>

#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/desktop/binding/qt_text.h"

namespace qorbench {

namespace {

constexpr const char* kStart = "desktop/start";
constexpr const char* kStartFloor = "desktop/start-empty";

constexpr int kStarts = 5;

double SecondsIn(const timeval& time) {
  constexpr double kMicroseconds = 1e6;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / kMicroseconds;
}

/// Runs a program to its end; the processor's time that it took.
double SecondsOf(const std::string& program) {
  std::string name = program;
  std::array<char*, 2> arguments{name.data(), nullptr};
  pid_t process = 0;
  Check(posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0,
        "the program starts");
  int status = 0;
  rusage used{};
  Check(
      wait4(process, &status, 0, &used) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0,
      "the program ends when its window is painted");
  return SecondsIn(used.ru_utime) + SecondsIn(used.ru_stime);
}

void Start(benchmark::State& state, const char* program) {
  const QTemporaryDir settings;  // nothing is remembered
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  double seconds = 0.0;
  for ([[maybe_unused]] auto iteration : state) {
    for (int start = 0; start < kStarts; ++start) {
      seconds += SecondsOf(program);
    }
  }
  state.counters[kItems] = kStarts;
  state.counters[kSecondsElsewhere] = seconds;
}

}  // namespace

Comparison AddDesktopStartBenchmarks() {
  benchmark::RegisterBenchmark(kStart, Start, QORBENCH_PROGRAM)->Iterations(1);
  benchmark::RegisterBenchmark(kStartFloor, Start, QORBENCH_EMPTY_WINDOW)->Iterations(1);
  constexpr double kStartGoal = 2.0;
  return {"desktop-start", kStart, kStartFloor, kStartGoal};
}

}  // namespace qorbench
