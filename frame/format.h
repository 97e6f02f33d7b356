// Texts of values after a picture.
#pragma once

#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorcred {

/// Formats `value` after `picture`. Null gives "".
/// Date pictures (letter case does not count): d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss
/// AM/PM; "m" and "mm" directly after an hour part are minutes. Month and day names are English.
/// Other characters stand for themselves.
/// Number pictures are runs of "0": at least that many digits, rounded half away from zero, the
/// sign in front. A picture of the other kind is applied to the value converted to a date or a
/// number; a text that cannot be converted comes back unchanged. Other values raise as ToDate() and
/// ToDouble() do.
[[nodiscard]] std::string Format(const Value& value, std::string_view picture);

}  // namespace qorcred
