// Reading numbers that fill a whole text.
#pragma once

#include <cstdint>
#include <string_view>

namespace qorcred {

enum class NumberReading : std::uint8_t {
  kNotNumeric,
  kNumber,
  kTooLarge,  ///< a number by its form, beyond the range of a double
};

struct TextNumber {
  NumberReading reading = NumberReading::kNotNumeric;
  double number = 0.0;
};

/// Reads a text that must be a number as a whole, in the forms that IsNumeric() accepts. A sign
/// does not go with &H and &O, nor with brackets.
[[nodiscard]] TextNumber ReadNumber(std::string_view text);

}  // namespace qorcred
