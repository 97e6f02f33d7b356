// Values as people read them, the same in every list, card and question.
#pragma once

#include <string>

#include "frame/value.h"

namespace qorhost {

/// Yes or no, a date as "2026-01-31 14:05", with its seconds where it has some, names with commas
/// between them, anything else as its text; nothing for Null.
[[nodiscard]] std::string ShownText(const qorcred::Value& value);

/// The day alone: "2026-01-31".
[[nodiscard]] std::string ShownDay(qorcred::Date date);

/// What ShownText() writes otherwise than the value's own text, as that text; any other value as it
/// is.
[[nodiscard]] qorcred::Value ShownCell(qorcred::Value value);

}  // namespace qorhost
