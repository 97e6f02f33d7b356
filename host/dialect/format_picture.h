// The pictures of Format that the dialect knows.
#pragma once

#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost::dialect {

/// Raises kInvalidProcedureCall, with what Format takes, for a picture that it does not take.
void RequirePicture(std::string_view picture);

/// The text of a number, date or text after a picture: one of the named formats ("Short Date",
/// "Percent", ...; letter case does not count), parts of dates between blanks and - / . , :, or a
/// run of zeros. Dates and numbers become one another; a text that is neither stays as it is.
/// Raises as RequirePicture(), and kOverflow for a number that is no date or not finite.
[[nodiscard]] std::string FormatValue(const qorcred::Value& value, std::string_view picture);

}  // namespace qorhost::dialect
