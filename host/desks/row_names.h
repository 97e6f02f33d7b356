// Rows of the store as people name them: by their identity, behind "rid:".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost {

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
