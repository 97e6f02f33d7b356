// The engine on which this program runs the tests of the store's contract: one for each program, by
// what it is linked with.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/store/store.h"

namespace qorhost::test {

/// An empty store that nobody else opens.
[[nodiscard]] std::unique_ptr<Store> FreshStore();

/// Where a store of a test's own may be, which several have open.
class StorePlace {
 public:
  virtual ~StorePlace() = default;
  StorePlace(const StorePlace&) = delete;
  StorePlace& operator=(const StorePlace&) = delete;

  [[nodiscard]] virtual std::unique_ptr<Store> Open(OpenMode mode) const = 0;

 protected:
  StorePlace() = default;
};
[[nodiscard]] std::unique_ptr<StorePlace> NewPlace();

/// Whether the engine keeps rows of units' tables that name no unit.
[[nodiscard]] bool KeepsRowsOfNoUnit();

/// Statements past the dialect and the contract, in words that all engines know; the names of
/// tables and columns as the catalog spells them.
void RunRaw(Store& store, const std::string& sql);
/// The first cell of a SELECT; "no row" for none.
[[nodiscard]] std::string TextOfRaw(Store& store, const std::string& sql);
[[nodiscard]] std::int64_t NumberOfRaw(Store& store, const std::string& sql);

}  // namespace qorhost::test
