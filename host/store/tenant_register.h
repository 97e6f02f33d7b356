// What the host keeps of tenants beside their rows: ids and link codes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "host/store/write_buffer.h"

namespace qorhost {

/// The names in a tenant's row; "" for what is not there. Valid as long as the call that has them.
struct StoredNames {
  std::int32_t unitKey = 0;
  std::int32_t rid = 0;
  std::string_view lastName;
  std::string_view firstName;
  std::string_view initial;
  std::string_view nameAtUnit;
  bool resident = false;
};

/// Whether whoever takes names wants more of them.
enum class Reading : bool { kHasEnough, kGoesOn };

/// A part of SqlSession, and raises what that raises.
class TenantRegister {
 public:
  virtual ~TenantRegister() = default;
  TenantRegister(const TenantRegister&) = delete;
  TenantRegister& operator=(const TenantRegister&) = delete;

  /// The tenant id of a row; 0 when the unit has no such row.
  [[nodiscard]] virtual std::int32_t TenantIdOf(std::int32_t unitKey, std::int32_t rid) = 0;

  /// Goes over the tenants of all units until `take` says that it has enough, without making values
  /// of what it hands over.
  virtual void EachName(const std::function<Reading(const StoredNames&)>& take) = 0;

  /// Gives each of the unit's rows its row in TenantsBackup. Takes one statement for each run of
  /// rows without gaps.
  virtual void BackUp(std::int32_t unitKey, std::span<const std::int32_t> rids) = 0;

  /// The unit's next free link code, from 1. The counter knows the codes that were taken, the
  /// tenants those that came with their rows by another way; the counter catches up with them where
  /// the store may be written. Raises kOverflow as a RuntimeError when no code is left.
  [[nodiscard]] virtual std::int32_t NextLinkCode(std::int32_t unitKey) = 0;
  /// The next `count` codes, from 0, are not given out again. Raises what NextLinkCode() raises.
  virtual void TakeLinkCodes(std::int32_t unitKey, std::int32_t count) = 0;

 protected:
  TenantRegister() = default;

  /// The id of a tenant whose row is held; nothing for another one.
  [[nodiscard]] static std::optional<std::int32_t> HeldTenantId(const WriteBuffer& buffer,
                                                                std::int32_t unitKey,
                                                                std::int32_t rid);
  /// The next free code; the counter catches up with the tenants. Raises kOverflow.
  [[nodiscard]] static std::int32_t CatchUp(LinkCodes::Known& codes);

  /// `code` as a link code. Raises kOverflow where it is none.
  [[nodiscard]] static std::int32_t RequireLinkCode(std::int64_t code);
};

}  // namespace qorhost
