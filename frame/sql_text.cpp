#include "frame/sql_text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "frame/text.h"

namespace qorcred {
namespace {

constexpr std::string_view kNull = "Null";

/// What a rule does at one place: copy `kept` characters, write Null, go on after `taken`.
struct Hole {
  std::size_t kept = 0;
  std::size_t taken = 0;
};

enum class MinusOne : bool { kStays, kBecomesNull };

/// The hole that starts at `position`, `taken` 0 when there is none. No rule's result holds what
/// another rule looks for, so one pass over the original text does what the rules do in turn.
/// The comma that ends one hole may start the next: it is not taken.
template <MinusOne minusOne>
Hole HoleAt(std::string_view sql, std::size_t position) noexcept {
  const auto at = [sql, position](std::size_t offset) {
    return position + offset < sql.size() ? sql[position + offset] : '\0';
  };
  switch (sql[position]) {
    case ',':
    case '=':
      return at(1) == ' ' && at(2) == ',' ? Hole{2, 2} : Hole{};
    case '\'':
      return at(1) == '\'' ? Hole{0, 2} : Hole{};
    case '-':
      return minusOne == MinusOne::kBecomesNull && at(1) == '1' ? Hole{0, 2} : Hole{};
    default:
      return {};
  }
}

/// 1 where the two characters begin a hole that the rules may fill, else 0. Without branches.
template <MinusOne minusOne>
std::uint8_t BeginsHole(char one, char next) noexcept {
  const auto isPair = [one, next](char first, char second) {
    return static_cast<unsigned>(one == first) & static_cast<unsigned>(next == second);
  };
  constexpr unsigned kMinusOneCounts = minusOne == MinusOne::kBecomesNull ? 1 : 0;
  return static_cast<std::uint8_t>(isPair(' ', ',') | isPair('\'', '\'') |
                                   (isPair('-', '1') & kMinusOneCounts));
}

/// Whether the text holds any pair of characters that only a hole has: nearly every statement of a
/// range of credentials ends here. Blocks of one size without an exit in the middle are looked at
/// as a whole by the processor; the search functions of some runtime libraries take each character
/// by itself.
template <MinusOne minusOne>
bool MayHaveHole(std::string_view sql) noexcept {
  constexpr std::size_t kBlock = 16;
  std::array<std::uint8_t, kBlock> found{};
  std::size_t position = 0;
  for (; position + kBlock < sql.size(); position += kBlock) {
    const char* const one = sql.data() + position;
    const char* const next = one + 1;
    for (std::size_t place = 0; place < kBlock; ++place) {
      found[place] |= BeginsHole<minusOne>(one[place], next[place]);
    }
  }
  std::uint8_t any = 0;
  for (; position + 1 < sql.size(); ++position) {
    any |= BeginsHole<minusOne>(sql[position], sql[position + 1]);
  }
  for (const std::uint8_t one : found) any |= one;
  return any != 0;
}

template <MinusOne minusOne>
std::string FillHoles(std::string sql) {
  if (!MayHaveHole<minusOne>(sql)) return sql;
  std::string filled;
  std::size_t copied = 0;
  for (std::size_t position = 0; position < sql.size();) {
    const Hole hole = HoleAt<minusOne>(sql, position);
    if (hole.taken == 0) {
      ++position;
      continue;
    }
    // A blank before a comma is not always a hole: room is made at the first one.
    if (filled.empty()) filled.reserve(sql.size() + sql.size() / 4 + kNull.size());
    filled.append(sql, copied, position + hole.kept - copied).append(kNull);
    position += hole.taken;
    copied = position;
  }
  if (copied == 0) return sql;
  filled.append(sql, copied);
  return filled;
}

}  // namespace

std::string FixNullValues(std::string sql) {
  return FillHoles<MinusOne::kBecomesNull>(std::move(sql));
}

std::string ReplaceEmptyWithNull(std::string sql) {
  return FillHoles<MinusOne::kStays>(std::move(sql));
}

std::string DateWithoutMinusOne(std::string text) {
  if (!Contains(text, "-1")) return text;
  return ReplaceAll(text, "-", "/");
}

}  // namespace qorcred
