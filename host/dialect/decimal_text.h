// Numbers with two places behind the point, as named formats write them.
#pragma once

#include <string>

namespace qorhost::dialect {

struct DecimalStyle {
  int shift = 0;         ///< places by which the point is moved to the right beforehand
  bool grouped = false;  ///< commas between thousands
};

/// The text of a finite number after a style. The 15 digits that the number shows are rounded, half
/// away from zero, so that 1.005 has the places 1.01; what is rounded to zero has no sign.
[[nodiscard]] std::string DecimalText(double number, DecimalStyle style);

/// The text of a finite number as "1.23E+04": rounded as above, the exponent of two or three
/// digits.
[[nodiscard]] std::string ScientificText(double number);

}  // namespace qorhost::dialect
