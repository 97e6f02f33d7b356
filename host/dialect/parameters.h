// The values that a statement's literals become when they are bound, by what they are compared with
// or written to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/dialect/catalog.h"
#include "host/dialect/lexer.h"

namespace qorhost::dialect {

/// What is done to a literal before it is bound.
enum class Conversion : std::uint8_t {
  kNone,            ///< numbers, texts and canonical dates
  kToText,          ///< everything as text, dates in their default text
  kPattern,         ///< the same; what is no pattern of LIKE is refused
  kPicture,         ///< the same; what is no picture of Format is refused
  kCompareNumber,   ///< numeric texts as numbers, dates as serial days
  kCompareBoolean,  ///< also True, False, Yes, No, On, Off as -1 and 0
  kCompareDate,     ///< date texts and serial days as canonical dates
  kOrderDate,       ///< the same; what is no date is refused
  kRowCount,        ///< a whole number from 0
  kStore,           ///< what the target column takes; anything else is refused
};

enum class ParameterSource : std::uint8_t { kLiteral, kNow, kToday };

struct Parameter {
  ParameterSource source = ParameterSource::kLiteral;
  Conversion conversion = Conversion::kNone;
  bool negated = false;
  std::size_t literal = 0;
  const Column* target = nullptr;  ///< of kStore
};

/// What the values of one statement are made from.
struct Bindings {
  std::string_view sql;
  const std::vector<Literal>& literals;
  std::string_view timeStamp;
};

/// Sets `value` to what `parameter` binds; reuses a text that it holds. Raises SqlError where the
/// literal does not fit.
void SetParameter(const Bindings& bindings, const Parameter& parameter, qorcred::Value& value);

}  // namespace qorhost::dialect
