// The functions of texts: cases, parts, pictures and LIKE.
#pragma once

#include <span>

#include "host/store/sqlite/sql_call.h"

namespace qorhost::sqlite {

/// What to register with the engine; lives as long as the program.
[[nodiscard]] std::span<const SqlFunction> TextFunctions();

}  // namespace qorhost::sqlite
