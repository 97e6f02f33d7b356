// Rows of the store as people name them: by their identity, behind "rid:".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost {

/// Stands in front of RIDs.
inline constexpr std::string_view kRowPrefix = "rid:";

/// "rid:17"
[[nodiscard]] std::string RowName(std::int32_t rid);
/// "rid:17,18,21"
[[nodiscard]] std::string RowNames(std::span<const std::int32_t> rids);

/// What stands behind kRowPrefix, letter case not counting; nothing for a text that does not begin
/// so.
[[nodiscard]] std::optional<std::string_view> BehindRowPrefix(std::string_view given);

/// The row that "rid:17" names; nothing for a text that does not begin so. Raises InputFault when
/// no whole number stands behind it.
[[nodiscard]] std::optional<std::int32_t> RowNamed(std::string_view field, std::string_view given);

/// RIDs with commas between them: "17,18,21".
class GivenRids {
 public:
  /// Raises InputFault for anything else.
  explicit GivenRids(std::string text);
  /// Those of "rid:17,18,21", the prefix being needed: a bare number is the one on a credential.
  /// Raises InputFault for anything else.
  [[nodiscard]] static GivenRids Named(std::string_view given);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::size_t count() const { return count_; }
  [[nodiscard]] bool Holds(const qorcred::Value& rid) const;

 private:
  std::string text_;
  std::set<std::int32_t> rids_;
  std::size_t count_ = 0;
};

}  // namespace qorhost
