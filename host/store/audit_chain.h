// The hashes that bind the entries of the audit to each other.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/store/audit_log.h"

namespace qorhost {

/// The hash of an entry: `before` are the hashes of the entries that it follows (for a unit's entry
/// the unit's last one; for one of the whole store the last ones of all units, in the order of
/// their numbers), `rows` its rows as they are stored, which may come in pieces. 64 hexadecimal
/// digits, of BLAKE2b with 256 bits.
[[nodiscard]] std::string HashOf(const WorkEntry& entry, std::span<const std::string> before,
                                 std::span<const std::string> rows);

}  // namespace qorhost
