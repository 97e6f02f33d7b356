// The store on which saves are measured, and what must be in it afterwards.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "host/components/store_host.h"
#include "host/store/sqlite/store.h"

namespace qorbench {

/// The numbers of one save, `start` to `end`, issued in one unit by one transaction.
struct RangeSave {
  std::int32_t unit;
  std::int32_t start;
  std::int32_t end;

  [[nodiscard]] constexpr std::int32_t Count() const { return end - start + 1; }
};

/// Every number that a credential can have. A unit holds at most 32767 codes, so it takes three
/// saves in three units.
inline constexpr std::array kEveryNumber{RangeSave{1, 1, 32767}, RangeSave{2, 32768, 65534},
                                         RangeSave{3, 65535, 65535}};

/// A tenth of the numbers, in the same units.
inline constexpr std::array kTenthOfNumbers{RangeSave{1, 1, 3276}, RangeSave{2, 3277, 6552},
                                            RangeSave{3, 6553, 6553}};

[[nodiscard]] std::int32_t CountOf(std::span<const RangeSave> saves);

/// A new store file with the units 1 to 3, of a type with the largest capacity, and the group-zero
/// row of each (its identity is the unit's key). Deleted with this object.
class BenchStore {
 public:
  BenchStore();
  ~BenchStore();
  BenchStore(const BenchStore&) = delete;
  BenchStore& operator=(const BenchStore&) = delete;

  /// The store's file, alone in its folder; files put beside it are deleted with it.
  [[nodiscard]] std::filesystem::path File() const;
  /// Opens the file as the application does.
  [[nodiscard]] std::unique_ptr<qorhost::Store> Open() const;
  /// The same, without the store around the database: for what is written by hand.
  [[nodiscard]] qorhost::sqlite::Database OpenDatabase() const;

 private:
  std::filesystem::path folder_;
};

/// Puts the directory codes 1 to `count` into unit 1, past every check. The numbers run down, so
/// that a list is in another order than the table; each code was `count` more before.
void PutDirCodes(qorhost::sqlite::Database& database, std::int32_t count);

/// The application's host with the computer's clock; a message box or a failure ends the program.
[[nodiscard]] std::unique_ptr<qorhost::StoreHost> StrictHost();

/// Ends the program unless the store holds exactly the credentials of these saves, identities in
/// the order of the numbers from 1.
void CheckCredentials(qorhost::sqlite::Database& database, std::span<const RangeSave> saves);

/// The same, with one tenant for each credential (tenants with the credentials' identities, link
/// codes from 1 in each unit), its backup row and its programming step.
void CheckTenants(qorhost::sqlite::Database& database, std::span<const RangeSave> saves);

}  // namespace qorbench
