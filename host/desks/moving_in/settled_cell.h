// What became of something odd in a file that is brought in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

/// All that was settled, by number, and so much of it by name as a person reads: a hostile file may
/// have millions of odd cells.
class SettledCells {
 public:
  static constexpr std::size_t kMostNamed = 50'000;  ///< of each settlement

  void Add(SettledCell cell);
  /// In the order of tables, and in each of them in that of rows.
  void Sort(const std::vector<std::string_view>& tables);

  [[nodiscard]] const std::vector<SettledCell>& named() const { return named_; }
  [[nodiscard]] std::size_t CountOf(Settlement settlement) const;
  /// How many there are beside the named ones.
  [[nodiscard]] std::size_t UnnamedOf(Settlement settlement) const;

 private:
  std::vector<SettledCell> named_;
  std::array<std::size_t, 3> counts_{};
};

}  // namespace qorhost
