// A number for a credential, as it is typed.
#pragma once

#include <cstdint>
#include <string_view>

namespace qorhost {

class CredentialNumber {
 public:
  /// Raises InputFault for a text that is no whole number, and for a number below 0 or above the
  /// highest: the controller refuses 0 alone, and would store what the column cannot hold.
  explicit CredentialNumber(std::string_view typed);

  [[nodiscard]] std::int32_t value() const noexcept { return value_; }

 private:
  std::int32_t value_ = 0;
};

}  // namespace qorhost
