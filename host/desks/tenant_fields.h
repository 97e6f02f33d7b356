// The inputs of the tenants' desk by name.
#pragma once

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
inline constexpr std::string_view kSchedules = "schedules";
inline constexpr std::string_view kCard = "card";
inline constexpr std::string_view kCode = "directory code";
inline constexpr std::string_view kResident = "resident";

}  // namespace qorhost::tenant_field
