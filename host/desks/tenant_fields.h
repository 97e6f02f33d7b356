// The inputs of the tenants' desk by name.
#pragma once

#include <array>
#include <string_view>

/// What the inputs are called in an InputFault.
namespace qorhost::tenant_field {

inline constexpr std::string_view kTenant = "tenant";  ///< which stored one is meant
inline constexpr std::string_view kLastName = "last name";
inline constexpr std::string_view kFirstName = "first name";
inline constexpr std::string_view kInitial = "middle initial";
inline constexpr std::string_view kNameAtUnit = "name at the unit";
inline constexpr std::string_view kGroup = "group";
inline constexpr std::string_view kActive = "active";
inline constexpr std::string_view kStart = "first day";
inline constexpr std::string_view kEnd = "last day";
inline constexpr std::string_view kSchedules = "schedules";  ///< at all doors, in their order
/// At one door alone, the first to the fourth.
inline constexpr std::array<std::string_view, 4> kDoorSchedules{"schedule 1", "schedule 2",
                                                                "schedule 3", "schedule 4"};
inline constexpr std::string_view kCard = "card";
inline constexpr std::string_view kCode = "directory code";
inline constexpr std::string_view kResident = "resident";

}  // namespace qorhost::tenant_field
