// The functions of numbers and dates, and of what columns take.
#pragma once

#include <span>

#include "host/store/sqlite/sql_call.h"

namespace qorhost::sqlite {

/// What to register with the engine; lives as long as the program.
[[nodiscard]] std::span<const SqlFunction> ValueFunctions();

}  // namespace qorhost::sqlite
