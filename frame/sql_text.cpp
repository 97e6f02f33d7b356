#include "frame/sql_text.h"

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

/// Whether the text holds any pair of characters that only a hole has. The library's searches are
/// several times as fast as the pass, and nearly every statement of a range of credentials ends
/// here.
template <MinusOne minusOne>
bool MayHaveHole(std::string_view sql) noexcept {
  return Contains(sql, " ,") || Contains(sql, "''") ||
         (minusOne == MinusOne::kBecomesNull && Contains(sql, "-1"));
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
