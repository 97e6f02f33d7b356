// A directory code as a unit keeps it: 24 texts in the unit's own notation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dircodes/unit_notation.h"
#include "frame/value.h"

namespace qorhost {

inline constexpr std::size_t kUnitFieldCount = 24;

/// The texts by their place; see qorcred::unit_place for the places. Places 0 to 3 are not looked
/// at.
struct UnitCode {
  std::array<std::string, kUnitFieldCount> fields;

  [[nodiscard]] std::string& operator[](qorcred::unit_place::Place place) { return fields[place]; }
  [[nodiscard]] const std::string& operator[](qorcred::unit_place::Place place) const {
    return fields[place];
  }
  friend bool operator==(const UnitCode&, const UnitCode&) = default;
};

/// The firmware of units that have display options, and of those that have none.
inline constexpr std::string_view kFirmwareWithDisplay = "FC02.010";
using qorcred::kFirmwareWithoutDisplay;

/// The largest directory code: 15 digits, as many as the store keeps exactly.
inline constexpr std::int64_t kLargestUnitCode = 999'999'999'999'999;

/// The longest text of a code, in UTF-16 units: what a text column of a desktop database holds.
inline constexpr std::size_t kLongestUnitText = 255;

/// Why a text of a code, called `name`, would not get through a statement unharmed; "" when it
/// would.
[[nodiscard]] std::string FaultInText(std::string_view name, std::string_view text);

/// Why the code cannot be taken over into a store, naming the field; "" when it can be.
[[nodiscard]] std::string FaultIn(const UnitCode& code);

/// Brings a code without fault into the one form in which codes compare: numbers without zeros in
/// front, unused dates empty, an empty display mode "0", a delay without a value "2".
void MakeCanonical(UnitCode& code);

/// The code's number. The code must be without fault.
[[nodiscard]] std::int64_t NumberOf(const UnitCode& code);

/// The texts that clsDirCode.pbMergeSave takes: an empty schedule becomes "Null".
[[nodiscard]] qorcred::StringArray DetailsOf(const UnitCode& code);

}  // namespace qorhost
