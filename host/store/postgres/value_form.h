// What the server holds a value of the dialect as: its types are fixed before a statement runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/dialect/tree.h"

namespace qorhost::postgres {

enum class Form : std::uint8_t {
  kNull,    ///< the word Null, of any type
  kWhole,   ///< an integer; -1 and 0 for Booleans
  kDouble,  ///< a double
  kText,    ///< a text; dates are canonical texts
  kAny,     ///< jsonb: a number or a text, of which only the row tells
};

/// The form that an expression is printed in, what the binder makes of it included.
[[nodiscard]] Form FormOf(const dialect::Expression& node);

/// The same without what the binder makes of it.
[[nodiscard]] Form OwnFormOf(const dialect::Expression& node);

/// Whether it is a literal beside numbers that may turn out to be none when it is bound.
[[nodiscard]] bool MayBeBoundAsText(const dialect::Expression& node);

/// Where either may stand.
[[nodiscard]] Form CommonForm(Form one, Form other);

/// A result column of all SELECTs of a query.
[[nodiscard]] Form FormOfResult(const dialect::Query& query, std::size_t column);

/// The server's name of the type.
[[nodiscard]] std::string_view TypeOf(Form form);

/// How two values are compared.
enum class Comparing : std::uint8_t {
  kNumbers,
  kTexts,   ///< byte by byte
  kFolded,  ///< without regard to case
  kOrder,   ///< numbers before texts
};

/// `collated`: what the binder found out of the comparison.
[[nodiscard]] Comparing ComparingOf(const dialect::Expression& one,
                                    const dialect::Expression& other, bool collated);
/// The same beside the results of a query.
[[nodiscard]] Comparing ComparingWithResult(const dialect::Expression& one,
                                            const dialect::Query& query, bool collated);

/// Whether it is a column of whole numbers, as most indexes have.
[[nodiscard]] bool IsWholeColumn(const dialect::Expression& node);

}  // namespace qorhost::postgres
