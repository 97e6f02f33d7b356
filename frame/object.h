// The late-bound object model: everything that a controller reads, writes or calls in its
// surroundings is an Object, reached by member name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/value.h"

namespace qorcred {

enum class InvokeKind : std::uint8_t { kGet, kPut, kCall };

/// How a call hands an argument over.
enum class Passing : std::uint8_t {
  kValue,     ///< an expression: nobody sees what a receiver writes there
  kVariable,  ///< a variable, by reference, whose content the caller does not look at afterwards
  kReadBack,  ///< a variable, by reference, whose content the caller uses afterwards
};

/// The arguments of one invocation, writable, and how each is passed; owns neither. Unless told
/// otherwise all are read back. The last argument of a put is the value to be put.
class Arguments : public std::span<Value> {
 public:
  Arguments() = default;
  Arguments(std::span<Value> values, Passing all = Passing::kReadBack)
      : std::span<Value>(values), rest_(all) {}
  /// Arguments beyond the end of `each` are read back.
  Arguments(std::span<Value> values, std::span<const Passing> each)
      : std::span<Value>(values), each_(each) {}
  Arguments(std::vector<Value>& values) : std::span<Value>(values) {}
  template <std::size_t count>
  Arguments(std::array<Value, count>& values) : std::span<Value>(values) {}
  Arguments(Value* first, std::size_t count) : std::span<Value>(first, count) {}

  [[nodiscard]] Passing PassingOf(std::size_t at) const {
    return at < each_.size() ? each_[at] : rest_;
  }

 private:
  std::span<const Passing> each_;
  Passing rest_ = Passing::kReadBack;
};

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
  return object.Invoke(member, InvokeKind::kGet, Arguments(arguments, Passing::kValue));
}

/// Writes a property; the value comes last: Put(list, "ItemData", 3, rid).
template <typename... IndexesAndValue>
void Put(Object& object, std::string_view member, IndexesAndValue&&... indexesAndValue) {
  std::array<Value, sizeof...(IndexesAndValue)> arguments{
      Value(std::forward<IndexesAndValue>(indexesAndValue))...};
  object.Invoke(member, InvokeKind::kPut, Arguments(arguments, Passing::kValue));
}

/// An argument of Call() that is a variable; all others are expressions.
class Variable {
 public:
  explicit Variable(Value content) : content_(std::move(content)) {}
  operator Value() && { return std::move(content_); }

 private:
  Value content_;
};

/// Calls a method whose arguments are not read back: Call(tenants, "pbGetTenantID",
/// Variable(connection), Variable(unitKey), Variable(rid)).
template <typename... Parameters>
Value Call(Object& object, std::string_view member, Parameters&&... parameters) {
  static constexpr std::array<Passing, sizeof...(Parameters)> kPassing{
      std::is_same_v<Parameters, Variable> ? Passing::kVariable : Passing::kValue...};
  std::array<Value, sizeof...(Parameters)> arguments{
      Value(std::forward<Parameters>(parameters))...};
  return object.Invoke(member, InvokeKind::kCall, Arguments(arguments, kPassing));
}

/// The object in `value`. Raises kObjectRequired when it holds no object and kObjectNotSet when the
/// reference is null.
[[nodiscard]] const ObjectRef& RequireObject(const Value& value);

/// `object` itself; raises kObjectNotSet when it is null.
[[nodiscard]] Object& RequireSet(const ObjectRef& object);

/// Whether two member names are the same (ASCII case does not count).
[[nodiscard]] bool SameMember(std::string_view one, std::string_view other) noexcept;

}  // namespace qorcred
