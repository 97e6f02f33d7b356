// Rows of member tables, made from member pointers: what a late-bound call runs and the type of its
// result come from the function itself, and a row whose parameters do not fit it does not compile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/member_table.h"

namespace qorcred {

namespace member_rows {

/// How a converted argument reaches a parameter of the C++ type T. `kWritable`: the function may
/// change it, in its place.
template <typename T>
struct ArgumentFor;

template <typename T, ValueType valueType, bool isWritable>
struct ArgumentInPlace {
  static constexpr ValueType kType = valueType;
  static constexpr bool kWritable = isWritable;
  static T& From(Value& argument) { return *argument.As<T>(); }
};

template <>
struct ArgumentFor<bool> : ArgumentInPlace<bool, ValueType::kBoolean, false> {};
template <>
struct ArgumentFor<std::int32_t> : ArgumentInPlace<std::int32_t, ValueType::kLong, false> {};
template <>
struct ArgumentFor<std::int32_t&> : ArgumentInPlace<std::int32_t, ValueType::kLong, true> {};
template <>
struct ArgumentFor<std::string_view> : ArgumentInPlace<std::string, ValueType::kString, false> {};
template <>
struct ArgumentFor<std::string> : ArgumentInPlace<std::string, ValueType::kString, false> {};
template <>
struct ArgumentFor<std::string&> : ArgumentInPlace<std::string, ValueType::kString, true> {};
template <>
struct ArgumentFor<ObjectRef> : ArgumentInPlace<ObjectRef, ValueType::kObject, false> {};
template <>
struct ArgumentFor<const ObjectRef&> : ArgumentInPlace<ObjectRef, ValueType::kObject, false> {};
template <>
struct ArgumentFor<ObjectRef&> : ArgumentInPlace<ObjectRef, ValueType::kObject, true> {};
template <>
struct ArgumentFor<StringArray&> : ArgumentInPlace<StringArray, ValueType::kStringArray, true> {};

/// A result that the caller of the native operation need not take.
template <>
struct ArgumentFor<std::int32_t*> {
  static constexpr ValueType kType = ValueType::kLong;
  static constexpr bool kWritable = true;
  static std::int32_t* From(Value& argument) { return argument.As<std::int32_t>(); }
};

/// The type of a result; kEmpty when there is none.
template <typename T>
constexpr ValueType TypeOfResult() {
  if constexpr (std::is_void_v<T>) {
    return ValueType::kEmpty;
  } else {
    return ArgumentFor<T>::kType;
  }
}

// Not constexpr: what calls it does not compile.
inline void ParametersDoNotFitTheFunction() {}

template <auto function>
struct Thunk;

template <typename Result, typename Class, typename... Parameters,
          Result (Class::*function)(Parameters...)>
struct Thunk<function> {
  static constexpr ValueType kResultType = TypeOfResult<Result>();

  static Value Run(Controller& controller, InvokeKind, Arguments arguments) {
    return RunWith(controller, arguments, std::index_sequence_for<Parameters...>());
  }

  /// Whether the described parameters are the function's.
  static constexpr bool Fits(std::span<const Parameter> described) {
    constexpr std::size_t kCount = sizeof...(Parameters);
    if (described.size() != kCount || kCount > kMostParameters) return false;
    // One more, because there may be none.
    constexpr ValueType kTypes[] = {ArgumentFor<Parameters>::kType..., ValueType::kEmpty};
    constexpr bool kWritable[] = {ArgumentFor<Parameters>::kWritable..., false};
    for (std::size_t at = 0; at < kCount; ++at) {
      if (described[at].type != kTypes[at]) return false;
      if (kWritable[at] && !described[at].byRef) return false;
      if (!described[at].HasDefaultOfItsType()) return false;
      // What follows an argument that may be left out may be left out as well.
      if (at > 0 && described[at - 1].IsOptional() && !described[at].IsOptional()) return false;
    }
    return true;
  }

 private:
  template <std::size_t... at>
  static Value RunWith(Controller& controller, [[maybe_unused]] Arguments arguments,
                       std::index_sequence<at...>) {
    auto& self = static_cast<Class&>(controller);
    if constexpr (std::is_void_v<Result>) {
      (self.*function)(ArgumentFor<Parameters>::From(arguments[at])...);
      return {};
    } else {
      return (self.*function)(ArgumentFor<Parameters>::From(arguments[at])...);
    }
  }
};

template <auto getter, auto setter>
struct PropertyThunk;

template <typename Class, typename Read, typename Written, Read (Class::*getter)() const,
          void (Class::*setter)(Written)>
struct PropertyThunk<getter, setter> {
  static_assert(std::is_same_v<std::remove_cvref_t<Read>, std::remove_cvref_t<Written>>,
                "a property is read and written in one type");
  static constexpr ValueType kType = ArgumentFor<Written>::kType;

  static Value Run(Controller& controller, InvokeKind kind, Arguments arguments) {
    auto& self = static_cast<Class&>(controller);
    if (kind == InvokeKind::kGet) return (self.*getter)();
    (self.*setter)(ArgumentFor<Written>::From(arguments[0]));
    return {};
  }
};

}  // namespace member_rows

/// Parameters that most operations begin with.
inline constexpr Parameter kConnectionParameter{"objConn", ValueType::kObject, true};
inline constexpr Parameter kUnitKeyParameter{"lngUnitKey", ValueType::kLong};
inline constexpr Parameter kConnectionAndUnitParameters[] = {kConnectionParameter,
                                                             kUnitKeyParameter};

/// The row of an operation: Operation<&clsDirCode::pbSave>(3, "pbSave", kSave).
template <auto function>
consteval Member Operation(int id, std::string_view name,
                           std::span<const Parameter> parameters = {}) {
  using Thunk = member_rows::Thunk<function>;
  if (!Thunk::Fits(parameters)) member_rows::ParametersDoNotFitTheFunction();
  return {id, name, MemberKind::kOperation, parameters, Thunk::kResultType, Thunk::Run};
}

/// The row of a property that can be read and written.
template <auto getter, auto setter>
consteval Member Property(int id, std::string_view name) {
  using Thunk = member_rows::PropertyThunk<getter, setter>;
  return {id, name, MemberKind::kProperty, {}, Thunk::kType, Thunk::Run};
}

}  // namespace qorcred
