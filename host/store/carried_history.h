// The history of a store as it is stored, to be carried into another store with all of its rows.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/store/audit_log.h"
#include "host/store/unit_of_work.h"

namespace qorhost {

/// An entry with all that its hash is made of.
struct CarriedEntry {
  WorkEntry entry;
  std::optional<std::int64_t> previous;
  std::vector<std::string> rows;  ///< in pieces, one at least
  std::string hash;
};

/// A part of SqlSession, and raises what that raises. Entries and hashes are the same on every
/// engine, so that a history that was carried is as whole as it was.
class CarriedHistory {
 public:
  virtual ~CarriedHistory() = default;
  CarriedHistory(const CarriedHistory&) = delete;
  CarriedHistory& operator=(const CarriedHistory&) = delete;

  /// Hands over every entry, oldest first. Nothing else may be asked of the session meanwhile.
  virtual void EachEntry(const std::function<void(const CarriedEntry&)>& take) = 0;
  /// The version of every unit that was ever changed, also of those that are gone.
  [[nodiscard]] virtual std::vector<std::pair<std::int32_t, UnitVersion>> Versions() = 0;

  /// Stores an entry as it is, in a transaction on a store whose last entry comes before it.
  virtual void Add(const CarriedEntry& carried) = 0;
  /// The same of the version of a unit that has none.
  virtual void AddVersion(std::int32_t unitKey, const UnitVersion& version) = 0;

 protected:
  CarriedHistory() = default;
};

}  // namespace qorhost
