// What the inputs of a unit's settings are called, and how far they go.
#pragma once

#include <cstdint>
#include <string_view>

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace unit_input {
inline constexpr std::string_view kKey = "key";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kCapacity = "capacity";
inline constexpr std::string_view kCodeDigits = "digits of directory codes";
inline constexpr std::string_view kEntryDigits = "digits of entry codes";
inline constexpr std::string_view kDefaultEnd = "default end";
inline constexpr std::string_view kIgnoresFacility = "ignores facility codes";
inline constexpr std::string_view kCardFacility = "facility code of cards";
inline constexpr std::string_view kTransmitterFacility = "facility code of transmitters";
}  // namespace unit_input

namespace unit_bound {
inline constexpr std::int32_t kCapacity = 32767;  ///< what the controllers read as 16 bits
inline constexpr std::int32_t kDigits = 15;       ///< of a code, which is a floating-point number
inline constexpr std::int32_t kDays = 36500;      ///< after which a code ends by default
}  // namespace unit_bound

}  // namespace qorhost
