// Which tables of a desktop database file are brought into a store, and what they need.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "host/dialect/catalog.h"

namespace qorhost {

/// What a row's RID is to others.
enum class Identity : std::uint8_t {
  kReferred,  ///< other rows, or programs, name it: it is kept or the row refused
  kOwn,       ///< nobody does: a row whose RID cannot be kept gets another one
};

struct KnownTable {
  std::string_view name;  ///< as the store calls it
  Identity identity = Identity::kOwn;
  std::array<std::string_view, 3> needed;  ///< columns without which it means nothing; "" behind
  std::string_view without;                ///< what it means that a file does not have it
};

/// In the order in which they are settled and stored: what others refer to comes first.
[[nodiscard]] std::span<const KnownTable> KnownTables();
/// By name, letter case of ASCII apart; null when it is none of them.
[[nodiscard]] const KnownTable* FindKnownTable(std::string_view name);
/// Their columns.
[[nodiscard]] const dialect::Table& LayoutOf(const KnownTable& table);

}  // namespace qorhost
