// Names on the screens that controllers ask for and hosts build.
#pragma once

#include <array>
#include <string_view>

namespace qorcred {

/// The screen that creates a tenant with every credential.
inline constexpr std::string_view kTenantCreatingScreen = "frmTBL";

/// The schedule lists of doors 1 to 4.
inline constexpr std::array<std::string_view, 4> kScheduleLists{"cboSchedules1", "cboSchedules2",
                                                                "cboSchedules3", "cboSchedules4"};

/// The schedule lists of the directory-code screen: of Do Not Disturb and of call forwarding.
inline constexpr std::string_view kDndScheduleList = "cboSchedules";
inline constexpr std::string_view kCfScheduleList = "cboSchedulesCF";

}  // namespace qorcred
