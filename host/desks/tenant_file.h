// The columns of a file of tenants with their cards and directory codes.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "host/desks/credential_line.h"
#include "host/desks/dir_code_line.h"
#include "host/files/import_file.h"

namespace qorhost {

/// In this order an export writes them, up to `kExported`. A credential's own columns begin at
/// `kCard1` and `kCard2`, its door behind them; those of the directory code at `kCode`. Behind them
/// stand those that a list of tenants has besides.
namespace tenant_file_column {
enum : std::size_t {
  kTenantId,
  kName,
  kLastName,
  kFirstName,
  kInitial,
  kNameAtUnit,
  kApartment,
  kGroup,
  kActive,
  kStart,
  kEnd,
  kSchedules,
  kSchedule1,
  kResident = kSchedule1 + 4,
  kCard1,
  kDoor1 = kCard1 + credential_column::kCount,
  kCard2,
  kDoor2 = kCard2 + credential_column::kCount,
  kCode,
  kExported = kCode + dir_code_column::kCount,
  kEntry1 = kExported,  ///< a stored credential as lists call it: "Transmitter-301"
  kEntry2,
  kRid,
  kUnit,
  kCardNumbers,
  kCount
};
}  // namespace tenant_file_column

[[nodiscard]] std::span<const ImportColumn> TenantFileColumns();

/// Stands in the place of a name where nobody holds the card or the directory code, as the screens
/// show it.
inline constexpr std::string_view kNobody = "<Unassigned>";
/// Whether a cell says so, with the brackets or without.
[[nodiscard]] bool SaysNobody(std::string_view cell);

}  // namespace qorhost
