// The public surface of a controller as data. Late-bound calls, the Windows component, its type
// library check and the reference documentation all come from a class's one table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "frame/object.h"

namespace qorcred {

/// One parameter of an operation. `type` is what an argument is converted to before the call;
/// kEmpty takes any value as it is.
struct Parameter {
  std::string_view name;
  ValueType type;
  bool byRef = false;
  bool optional = false;
};

enum class MemberKind : std::uint8_t { kOperation, kProperty };

class Controller;

/// One member. `run` receives exactly one argument for each parameter, converted; an omitted
/// optional one is Missing. For the put of a property it receives the value alone.
struct Member {
  int id;  ///< never renumbered: clients bind to it
  std::string_view name;
  MemberKind kind;
  std::span<const Parameter> parameters;
  ValueType type;  ///< of the result or the property; kEmpty when there is no result
  Value (*run)(Controller& controller, InvokeKind kind, Arguments arguments);
};

/// A late-bound class described by a table.
class Controller : public Object {
 public:
  [[nodiscard]] virtual std::span<const Member> Members() const = 0;

  /// Converts the arguments, runs the member and hands ByRef arguments back.
  /// Raises kUnknownMember, kWrongArgumentCount, kArgumentNotOptional or what converting raises.
  Value Invoke(std::string_view name, InvokeKind kind, Arguments arguments) override;
};

/// The member called `name`, in any ASCII case; null when there is none.
[[nodiscard]] const Member* FindMember(std::span<const Member> members, std::string_view name);

/// A value as the type of a parameter. An object type takes any object, also a reference to
/// nothing. Raises kObjectRequired, kTypeMismatch or what converting raises.
[[nodiscard]] Value ConvertArgument(ValueType type, Value value);
/// The same for a property, which may also be set to nothing.
[[nodiscard]] Value ConvertPropertyValue(ValueType type, Value value);

/// An argument that was converted to its parameter's type.
[[nodiscard]] const ObjectRef& ObjectIn(const Value& argument);
[[nodiscard]] std::int32_t LongIn(const Value& argument);
[[nodiscard]] const std::string& TextIn(const Value& argument);

/// An optional argument's value, or `fallback` when it was omitted.
[[nodiscard]] std::int32_t LongOr(const Value& argument, std::int32_t fallback);
[[nodiscard]] bool BooleanOr(const Value& argument, bool fallback);
/// An optional object, or none when it was omitted.
[[nodiscard]] ObjectRef ObjectOrNone(const Value& argument);

}  // namespace qorcred
