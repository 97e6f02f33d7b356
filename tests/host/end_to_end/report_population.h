// Random rows for the reports, known to the test and written to a store.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/store/store_connection.h"

namespace qortest {

/// The same numbers for the same seed on every machine.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// A number from 0 to `sides` - 1.
  std::size_t Throw(std::size_t sides) { return static_cast<std::size_t>(engine_() % sides); }
  bool Chance(std::size_t percent) { return Throw(100) < percent; }
  std::int32_t Number(std::int32_t low, std::int32_t high) {
    return low + static_cast<std::int32_t>(Throw(static_cast<std::size_t>(high - low + 1)));
  }
  template <typename List>
  auto& One(List& list) {
    return list[Throw(std::size(list))];
  }

 private:
  std::mt19937_64 engine_;
};

/// The seed of the random rows and filters: QORCRED_SEED, else always the same. Printed once.
[[nodiscard]] std::uint64_t Seed();

/// Columns of a directory code, in the order in which the tests' report selects them.
enum class CodeColumn : std::uint8_t {
  kCode,
  kPhone,
  kExtension,
  kDelay,
  kName,
  kActive,
  kStart,
  kEnd,
  kIsDnd,
  kDndSchedule,
  kIsCf,
  kCfSchedule,
  kCfPhone,
  kCfExtension,
  kCfDelay,
  kShowName,
  kShowCode,
  kState,
  kOldCode,
  kRid,
};
inline constexpr std::size_t kCodeColumns = 20;

/// Cells as a result table gives them.
struct CodeRow {
  std::int32_t unit = 0;
  std::array<qorcred::Value, kCodeColumns> cells;

  [[nodiscard]] const qorcred::Value& operator[](CodeColumn column) const {
    return cells[static_cast<std::size_t>(column)];
  }
  [[nodiscard]] qorcred::Value& operator[](CodeColumn column) {
    return cells[static_cast<std::size_t>(column)];
  }
};

struct ScheduleRow {
  std::int32_t unit = 0;
  qorcred::Value id;
  qorcred::Value name;
};

struct TenantRow {
  std::int32_t rid = 0;
  std::int32_t unit = 0;
  qorcred::Value lastName;
  qorcred::Value firstName;
  qorcred::Value middleInitial;
  qorcred::Value resident;
  qorcred::Value credential1;
  qorcred::Value credential2;
};

struct CredentialRow {
  std::int32_t rid = 0;
  std::int32_t unit = 0;
  qorcred::Value type;
  qorcred::Value number;
  qorcred::Value facility;
  qorcred::Value idCode;
  qorcred::Value sequence;
  qorcred::Value button;
};

struct Population {
  std::vector<CodeRow> codes;
  std::vector<ScheduleRow> schedules;
  std::vector<TenantRow> tenants;
  std::vector<CredentialRow> credentials;
};

/// How many rows to make, two thirds of them for the unit 1 and the others for the unit 2.
struct PopulationSize {
  std::size_t codes = 0;
  std::size_t schedules = 0;
  std::size_t tenants = 0;
  std::size_t credentials = 0;
};

[[nodiscard]] Population MakePopulation(Dice& dice, const PopulationSize& size);

/// The same with tenants that hold no credential of another unit.
[[nodiscard]] Population WithoutLinksToOtherUnits(Population population);

/// Empties the tables and writes the rows. The report's fields get three more: the state of a code
/// (68), its previous code (80) and its RID (90).
void WritePopulation(const Population& population, qorhost::StoreConnection& store);

}  // namespace qortest
