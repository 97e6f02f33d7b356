// What is measured. Each function adds its benchmarks to Google Benchmark and returns the rows that
// they give; a benchmark does its work once in each round.
#pragma once

#include <memory>
#include <vector>

#include "bench/table.h"

namespace qorbench {

enum class Size : bool {
  kQuick,  ///< a tenth of the credentials with tenants, no large merge
  kFull,
};

[[nodiscard]] std::vector<Comparison> AddIssueBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddWorkBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddTenantsBenchmarks(Size size);
/// Of a store on a PostgreSQL server; none where no server is installed.
[[nodiscard]] std::vector<Comparison> AddServerBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddOperatorBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddListBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddDirCodeBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddSyncBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddImportBenchmarks(Size size);
/// None where desktop database files cannot be read, or there is no other program that does.
[[nodiscard]] std::vector<Comparison> AddMovingBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddReportBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddLibraryBenchmarks(Size size);
[[nodiscard]] std::vector<Comparison> AddTranslateBenchmarks(Size size);
/// What those of the desktop program need as long as they run: a platform without a screen. Null
/// where Qt is not.
[[nodiscard]] std::shared_ptr<void> StartDesktop();
/// Of the desktop program's start; a part of the next.
[[nodiscard]] Comparison AddDesktopStartBenchmarks();
/// Of the desktop program; there is none where Qt is not.
[[nodiscard]] std::vector<Comparison> AddDesktopBenchmarks(Size size);

/// The benchmark that counts the library's allocations for each credential.
inline constexpr const char* kLibraryBenchmark = "library/range";

}  // namespace qorbench
