// The inputs of the credential screen by name.
#pragma once

#include <string_view>

/// What the inputs are called in an InputFault.
namespace qorhost::credential_field {

inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kFirst = "number";
inline constexpr std::string_view kLast = "last number";
inline constexpr std::string_view kFacility = "facility code";
inline constexpr std::string_view kIdCode = "ID code";
inline constexpr std::string_view kSequence = "sequence code";
inline constexpr std::string_view kButton = "button";
inline constexpr std::string_view kNewTenants = "new tenants";
inline constexpr std::string_view kSchedules = "schedules";
inline constexpr std::string_view kStart = "first day";
inline constexpr std::string_view kEnd = "last day";
inline constexpr std::string_view kCredential = "credential";
inline constexpr std::string_view kDoor = "door";
inline constexpr std::string_view kTenant = "tenant";
inline constexpr std::string_view kNewNumber = "new number";

}  // namespace qorhost::credential_field
