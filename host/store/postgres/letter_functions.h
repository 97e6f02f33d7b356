// Letter case in the server's own language, by the very tables of host/dialect/folding.h.
#pragma once

#include <string>

namespace qorhost::postgres {

/// The statements that create desktop.key(), by which texts are compared, desktop.ucase() and
/// desktop.lcase(). Keys are compared byte by byte (COLLATE "C").
[[nodiscard]] std::string LetterFunctions();

}  // namespace qorhost::postgres
