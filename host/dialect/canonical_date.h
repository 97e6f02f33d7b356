// The one text form in which the store keeps dates: YYYY-MM-DD HH:MM:SS, which sorts as it should.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost::dialect {

/// The canonical text of a date, rounded to the second.
[[nodiscard]] std::string CanonicalDate(qorcred::Date date);

/// Reads exactly the canonical text; anything else gives nothing.
[[nodiscard]] std::optional<qorcred::Date> FromCanonicalDate(std::string_view text);

/// The date that serial days stand for; nothing outside the years 100 to 9999.
[[nodiscard]] std::optional<qorcred::Date> DateFromSerial(double serial);

}  // namespace qorhost::dialect
