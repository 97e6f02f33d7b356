// The texts of calls, and the traced run of a controller's operation.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "frame/member_table.h"
#include "trace/tracer.h"

namespace qorcred::trace {

/// The name of an argument by its place; empty when it has none.
using Naming = std::function<std::string_view(std::size_t)>;

/// (name: value, ...)
[[nodiscard]] std::string ArgumentsText(Tracer& tracer, std::span<const Value> arguments,
                                        const Naming& naming);
/// ` out name: value, ...` of the arguments that are other than before; empty when none is. One
/// without a name has its place, counted from 1: ` out 2: 7`.
[[nodiscard]] std::string OutsText(Tracer& tracer, std::span<const Value> before,
                                   std::span<const Value> after, const Naming& naming);

/// Runs a member of the controller that the trace calls `name` as Member::run does. Objects that
/// the caller hands over are traced for the controller, those that it gets are its own.
Value RunTraced(Tracer& tracer, std::string_view name, Controller& controller, const Member& member,
                InvokeKind kind, std::span<Value> arguments);

}  // namespace qorcred::trace
