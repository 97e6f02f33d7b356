// What became of something odd in a file that is brought in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qorhost {

enum class Settlement : std::uint8_t {
  kRefused,   ///< the row is not brought in
  kAdjusted,  ///< it is, with another value
  kKept,      ///< it is, as it stands
};

/// As people and programs read it: "refused", "adjusted", "kept".
[[nodiscard]] std::string_view WordFor(Settlement settlement);

struct SettledCell {
  Settlement settlement = Settlement::kKept;
  std::string table;     ///< as the store calls it
  std::size_t row = 0;   ///< of the file's table, from 1
  std::string identity;  ///< "RID 17"; "" where the row has none
  std::string column;    ///< as the store calls it
  std::string kind;      ///< a word that stays: "duplicate-id"
  std::string value;     ///< as it stands in the file, on one line and not too long
  std::string reason;    ///< a sentence without its end
  std::string instead;   ///< of an adjusted one: what is stored
};

}  // namespace qorhost
