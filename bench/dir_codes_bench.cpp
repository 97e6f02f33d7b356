// Directory codes: the table for a merge, for ten times the codes, and filling the list against
// stepping the same query by hand.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "dircodes/cls_dir_code.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "host/screens/dir_code_screen.h"
#include "host/store/store_connection.h"

namespace qorbench {

namespace {

constexpr const char* kListOurs = "dircodes/list-ours";
constexpr const char* kListByHand = "dircodes/list-by-hand";
constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kListed = 10000;
constexpr int kListTimes = 20;  // in each round: once is over too soon
constexpr int kFetchTimes = 10;
constexpr std::int32_t kDigits = 6;

struct Setting {
  explicit Setting(std::int32_t count)
      : connection(
            std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock())),
        screen(qorhost::MakeDirectoryCodeScreen(qorcred::FromCivil({2026, 1, 15, 0, 0, 0}))),
        controller(*host) {
    PutDirCodes(qorhost::sqlite::DatabaseOf(connection->store()), count);
    screen->Box("txtdirectorycode").SetMaxLength(kDigits);
    controller.set_mobjDirCodeScreen(screen);
  }

  BenchStore store;
  std::shared_ptr<qorhost::StoreConnection> connection;
  std::unique_ptr<qorhost::StoreHost> host = StrictHost();
  std::shared_ptr<qorhost::ScreenModel> screen;
  qorcred::clsDirCode controller;
};

// The table for a merge of `count` codes that all had another number before.
void Fetch(benchmark::State& state, std::int32_t count) {
  Setting setting(count);
  qorcred::ObjectRef table;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kFetchTimes; ++time) {
      Check(setting.controller.pbFetchDirForMerge(setting.connection, kUnit, table),
            "the table is fetched");
    }
  }

  const qorcred::TableView rows(table);
  Check(rows.UpperRow() == 2 * count - 1 && rows.UpperColumn() == 2, "every code is there twice");
  for (std::int32_t row = 0; row < 2 * count; ++row) {
    Check(qorcred::ToLong(rows.Cell(row, 2)) == row + 1, "current codes come before previous ones");
  }
  state.counters[kItems] = kFetchTimes * count;
}

void FillOurs(benchmark::State& state) {
  Setting setting(kListed);
  constexpr std::int32_t kAll = -1;
  constexpr std::int32_t kChosen = 7;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kListTimes; ++time) {
      setting.controller.pbRetrieveDirCodes(setting.connection, kUnit, kAll, kListed - kChosen + 1);
    }
  }

  const qorhost::ListModel& list = setting.screen->List("cbodirectorycode");
  Check(list.count() == kListed + 1, "the list has an entry for each code");
  Check(list.selected() == kChosen, "the code shown before is selected");
  for (std::int32_t number = 1; number <= kListed; ++number) {
    Check(list.Text(number) == fmt::format("{:06}", number) &&
              list.ItemData(number) == kListed - number + 1,
          "the entries are in the order of their codes");
  }
  state.counters[kItems] = kListTimes * kListed;
}

void FillByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutDirCodes(database, kListed);
  std::vector<by_hand::ListedCode> rows;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kListTimes; ++time) {
      rows = by_hand::ListCodes(database.handle(), kUnit, kDigits);
    }
  }

  Check(rows.size() == static_cast<std::size_t>(kListed), "every code is listed");
  std::int32_t number = 0;
  for (const by_hand::ListedCode& row : rows) {
    ++number;
    Check(row.shown == fmt::format("{:06}", number) && row.rid == kListed - number + 1 &&
              row.numbers.front() == kUnit && row.texts.back() == fmt::format("Name {}", number),
          "the rows are in the order of their codes");
  }
  state.counters[kItems] = kListTimes * kListed;
}

// "ten times the codes take at most twelve times as long"
constexpr double kGrowthGoal = 1.2;

Comparison AddGrowth(const char* name, const char* large, std::int32_t manyCodes, const char* small,
                     std::int32_t fewCodes) {
  benchmark::RegisterBenchmark(large, Fetch, manyCodes)->Iterations(1);
  benchmark::RegisterBenchmark(small, Fetch, fewCodes)->Iterations(1);
  return {name, large, small, kGrowthGoal};
}

}  // namespace

std::vector<Comparison> AddDirCodeBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kListOurs, FillOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kListByHand, FillByHand)->Iterations(1);
  constexpr double kListGoal = 3.0;
  return {
      {"fill-dircode-list", kListOurs, kListByHand, kListGoal},
      AddGrowth("fetch-growth-10000", "dircodes/fetch-10000", 10000, "dircodes/fetch-1000", 1000),
      AddGrowth("fetch-growth-60000", "dircodes/fetch-60000", 60000, "dircodes/fetch-6000", 6000)};
}

}  // namespace qorbench
