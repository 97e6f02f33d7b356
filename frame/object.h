// The late-bound object model: everything that a controller reads, writes or calls in its
// surroundings is an Object, reached by member name.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "frame/value.h"

namespace qorcred {

enum class InvokeKind : std::uint8_t { kGet, kPut, kCall };

/// Arguments of one invocation. Writable: what a member changes here reaches the caller (ByRef).
/// The last argument of a put is the value to be put.
using Arguments = std::span<Value>;

/// Anything with members. Member names compare without regard to ASCII case; the empty name is the
/// default member. An unknown member raises ErrorNumber::kUnknownMember.
class Object {
 public:
  virtual ~Object() = default;

  virtual Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) = 0;

 protected:
  Object() = default;
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
};

/// Reads a property, or an item of an indexed one: Get(list, "ItemData", 3).
template <typename... Indexes>
Value Get(Object& object, std::string_view member, Indexes&&... indexes) {
  std::array<Value, sizeof...(Indexes)> arguments{Value(std::forward<Indexes>(indexes))...};
  return object.Invoke(member, InvokeKind::kGet, arguments);
}

/// Writes a property; the value comes last: Put(list, "ItemData", 3, rid).
template <typename... IndexesAndValue>
void Put(Object& object, std::string_view member, IndexesAndValue&&... indexesAndValue) {
  std::array<Value, sizeof...(IndexesAndValue)> arguments{
      Value(std::forward<IndexesAndValue>(indexesAndValue))...};
  object.Invoke(member, InvokeKind::kPut, arguments);
}

/// Calls a method whose arguments are not read back.
template <typename... Parameters>
Value Call(Object& object, std::string_view member, Parameters&&... parameters) {
  std::array<Value, sizeof...(Parameters)> arguments{
      Value(std::forward<Parameters>(parameters))...};
  return object.Invoke(member, InvokeKind::kCall, arguments);
}

/// The object in `value`. Raises kObjectRequired when it holds no object and kObjectNotSet when the
/// reference is null.
[[nodiscard]] const ObjectRef& RequireObject(const Value& value);

/// `object` itself; raises kObjectNotSet when it is null.
[[nodiscard]] Object& RequireSet(const ObjectRef& object);

/// Whether two member names are the same (ASCII case does not count).
[[nodiscard]] bool SameMember(std::string_view one, std::string_view other) noexcept;

}  // namespace qorcred
