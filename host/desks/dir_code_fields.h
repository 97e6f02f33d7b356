// The inputs of the directory-code screen by name.
#pragma once

#include <string_view>

/// What the inputs are called in an InputFault.
namespace qorhost::dir_code_field {

inline constexpr std::string_view kChoice = "directory code";  ///< which stored code is meant
inline constexpr std::string_view kCode = "code";
inline constexpr std::string_view kPhone = "phone";
inline constexpr std::string_view kExtension = "extension";
inline constexpr std::string_view kDelay = "delay";
inline constexpr std::string_view kDnd = "do-not-disturb schedule";
inline constexpr std::string_view kForwardPhone = "forward phone";
inline constexpr std::string_view kForwardExtension = "forward extension";
inline constexpr std::string_view kForwardSchedule = "forward schedule";
inline constexpr std::string_view kForwardDelay = "forward delay";
inline constexpr std::string_view kStart = "first day";
inline constexpr std::string_view kEnd = "last day";
inline constexpr std::string_view kActive = "active";
inline constexpr std::string_view kDisplayName = "display name";

}  // namespace qorhost::dir_code_field
