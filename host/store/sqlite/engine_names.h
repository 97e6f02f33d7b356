// How the engine's SQL spells operators, functions and the collation.
#pragma once

#include <string_view>

#include "host/dialect/tree.h"

namespace qorhost::sqlite {

inline constexpr std::string_view kCollate = " COLLATE \"DESKTOP\"";

/// Around a time and a date: the time, or one second after the date where that is not earlier.
struct LaterThanDate {
  std::string_view beforeTime = "max(";
  std::string_view beforeDate = ", coalesce(datetime(";
  std::string_view end = ", '+1 second'), ''))";
};
inline constexpr LaterThanDate kLaterThanDate;

/// An operator between its operands, with blanks; ", " for one printed as a function.
[[nodiscard]] std::string_view SymbolOf(dialect::Operator op);

/// The function that stands for an operator; empty for one printed with its symbol.
[[nodiscard]] std::string_view FunctionOf(dialect::Operator op);

/// Empty for a function that is not printed as a call of its own.
[[nodiscard]] std::string_view FunctionOf(dialect::Function function);

[[nodiscard]] std::string_view FunctionOf(dialect::Aggregate aggregate);

/// The function that coerces a value of the class; empty for none.
[[nodiscard]] std::string_view FunctionOf(dialect::Coercion coercion,
                                          dialect::ValueClass valueClass);

}  // namespace qorhost::sqlite
