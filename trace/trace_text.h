// How a trace spells values so that they can be read back: docs/trace.md has the grammar.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "frame/value.h"

namespace qorcred::trace {

/// The name of an object in a trace.
using ObjectNames = std::function<std::string(const ObjectRef&)>;

/// "text" (a quote doubled, \\, \n, \t, \x1B), 3, 3% (16 bit), 3# (Double), True, False, Null,
/// Empty, #1/31/2026 2:05:09 PM#, #=46053.25# (a date whose text is another one), {"a", "b"},
/// Nothing, the object's name, - for an omitted argument.
[[nodiscard]] std::string SpelledValue(const Value& value, const ObjectNames& names);
[[nodiscard]] std::string SpelledText(std::string_view text);
/// 0x4E54
[[nodiscard]] std::string SpelledBytes(std::string_view bytes);
/// ` ! 438 "Object doesn't support this property or method"`
[[nodiscard]] std::string SpelledFailure(const RuntimeError& failure);

}  // namespace qorcred::trace
