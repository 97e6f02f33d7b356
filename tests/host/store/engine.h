// The engine on which this program runs the tests of the store's contract: one for each program, by
// what it is linked with.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
/// Whether a statement that is about a unit finds what its rows are linked to in other units.
[[nodiscard]] bool FollowsLinksToOtherUnits();

/// Whether the identities of rows that are added one after the other are so, too.
[[nodiscard]] bool GivesIdentitiesWithoutGaps();

/// Whether the engine reads texts with bytes that are no UTF-8.
[[nodiscard]] bool ReadsBytesThatAreNoText();

/// What an entry of the audit says of where it comes from, when the session was signed with that.
[[nodiscard]] std::string OriginStored(const std::string& signedWith);

/// Statements past the dialect and the contract, in words that all engines know; the names of
/// tables and columns as the catalog spells them.
void RunRaw(Store& store, const std::string& sql);
/// The first cell of a SELECT; "no row" for none.
[[nodiscard]] std::string TextOfRaw(Store& store, const std::string& sql);
[[nodiscard]] std::int64_t NumberOfRaw(Store& store, const std::string& sql);
/// Every row of a SELECT, its cells divided by commas; Null is "-", a whole number has no point.
[[nodiscard]] std::vector<std::string> RowsOfRaw(Store& store, const std::string& sql);
/// From now on the engine refuses new rows of the table for which the condition on NEW holds.
void RefuseRows(Store& store, const std::string& table, const std::string& condition);
/// Rows of all tables that were added, changed or deleted so far, undone ones too.
[[nodiscard]] std::int64_t RowsEverChanged(Store& store);
/// Every cell of every table, and the schema, as the engine has them.
[[nodiscard]] std::string DumpOf(Store& store);

}  // namespace qorhost::test
