// English names of months and days, for date texts and date pictures.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace qorcred {

inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

/// From Sunday on.
inline constexpr std::array<std::string_view, 7> kDayNames = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

/// The letters of a short name.
inline constexpr std::size_t kShortNameLength = 3;

}  // namespace qorcred
