// The public surface of a controller as data. Late-bound calls, the Windows component, its type
// library check and the reference documentation all come from a class's one table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "frame/object.h"

namespace qorcred {

/// What a parameter is when its argument is left out, if it may be: nothing stands for an object.
enum class Omitting : std::uint8_t { kRefused, kGivesNothing };
using Default = std::variant<Omitting, bool, std::int32_t>;

/// One parameter of an operation. `type` is what an argument is converted to before the call;
/// kEmpty takes any value as it is.
struct Parameter {
  std::string_view name;
  ValueType type;
  bool byRef = false;
  Default omitted = Omitting::kRefused;

  [[nodiscard]] constexpr bool IsOptional() const { return omitted != Default(Omitting::kRefused); }
  /// Whether what stands for an omitted argument is of the parameter's type.
  [[nodiscard]] constexpr bool HasDefaultOfItsType() const {
    if (!IsOptional()) return true;
    if (std::holds_alternative<bool>(omitted)) return type == ValueType::kBoolean;
    if (std::holds_alternative<std::int32_t>(omitted)) return type == ValueType::kLong;
    return type == ValueType::kObject;
  }
  /// What the operation gets for an omitted argument. For optional parameters alone.
  [[nodiscard]] Value Omitted() const;
};

/// No operation takes more; a row with more does not compile.
inline constexpr std::size_t kMostParameters = 8;

enum class MemberKind : std::uint8_t { kOperation, kProperty };

class Controller;

/// One member; see frame/member_rows.h for how rows are made. `run` receives exactly one argument
/// for each parameter, converted, or its default; what the operation changes stands in its place
/// afterwards. For the put of a property it receives the value alone.
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

}  // namespace qorcred
