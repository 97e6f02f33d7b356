// What the user entered on the credential screen, checked.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/controls.h"
#include "frame/screen_names.h"

namespace qorcred {

/// The tenant that a save creates with every credential.
struct TenantEntry {
  std::string active;         ///< "True" or "False"
  std::string startDateText;  ///< empty when no date is chosen
  std::string endDateText;
  std::array<std::int16_t, 4> schedules{};  ///< schedule ids of doors 1 to 4; 0 without a choice
  std::int32_t groupZeroRid = 0;            ///< the unit's group-zero row
};

/// One credential, or a range that shares everything but the number.
struct CredentialEntry {
  std::int16_t type = 0;
  std::int32_t start = 0;  ///< 1 to 65535
  std::int32_t end = 0;    ///< start to 65535
  std::int32_t facilityCode = 0;
  std::int32_t idCode = 0;
  std::int32_t sequenceCode = 0;
  std::string button;  ///< "4" or "1"
  TenantEntry tenant;  ///< filled only for a save that creates tenants

  [[nodiscard]] std::int32_t Count() const { return end - start + 1; }
};

/// The chosen button as its number's text: "4" when optButton4 is True, else "1".
[[nodiscard]] std::string ReadButton(const Screen& screen);

}  // namespace qorcred
