// A controller as a program in C++ holds it when its operations may be traced.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/host.h"
#include "frame/member_rows.h"
#include "frame/runtime_error.h"
#include "trace/traced_call.h"
#include "trace/tracer.h"

namespace qorcred::trace {

/// Owns a controller. Without a tracer every call goes straight to it. With one the operations, its
/// creation and its end are written, and what it is handed is traced; what comes back is the host's
/// own. `host` is the traced one then.
template <typename Class>
class TracedController {
 public:
  TracedController(std::string_view className, Host& host, std::shared_ptr<Tracer> tracer)
      : tracer_(std::move(tracer)) {
    if (tracer_ == nullptr) {
      controller_.emplace(host);
      return;
    }
    name_ = tracer_->NewName(className);
    tracer_->Begin("new " + name_);
    controller_.emplace(host);
    tracer_->End("");
  }
  ~TracedController() {
    if (tracer_ != nullptr) Release();
  }
  TracedController(const TracedController&) = delete;
  TracedController& operator=(const TracedController&) = delete;

  /// Run<&clsCredential::pbDelete>(connection, unitKey, rid), with every argument.
  template <auto function, typename... Given>
  auto Run(Given&&... given) {
    static const Member& member = RowOf(&member_rows::Thunk<function>::Run);
    return RunWith(function, member, std::index_sequence_for<Given...>(), given...);
  }

  /// Puts a property.
  void Set(std::string_view property, Value value) {
    const Member* member = FindMember(Class::MemberTable(), property);
    if (member == nullptr) throw RuntimeError(ErrorNumber::kUnknownMember);
    if (tracer_ != nullptr) {
      RunTraced(*tracer_, name_, *controller_, *member, InvokeKind::kPut, {&value, 1});
    } else {
      member->run(*controller_, InvokeKind::kPut, {&value, 1});
    }
  }

 private:
  static const Member& RowOf(decltype(Member::run) run) {
    for (const Member& member : Class::MemberTable()) {
      if (member.run == run) return member;
    }
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }

  template <typename Owner, typename Result, typename... Parameters, std::size_t... at,
            typename... Given>
  Result RunWith(Result (Owner::*function)(Parameters...), const Member& member,
                 std::index_sequence<at...>, Given&... given) {
    if (tracer_ == nullptr) return ((*controller_).*function)(given...);
    std::array<Value, sizeof...(Parameters)> values{ValueOf<Parameters>(given)...};
    [[maybe_unused]] Value result =
        RunTraced(*tracer_, name_, *controller_, member, InvokeKind::kCall, values);
    (HandBack<Parameters>(given, values[at]), ...);
    if constexpr (!std::is_void_v<Result>) return std::move(*result.As<Result>());
  }

  template <typename Parameter, typename Given>
  static Value ValueOf(const Given& given) {
    if constexpr (std::is_pointer_v<Parameter>) {
      const std::int32_t* number = given;
      return number == nullptr ? 0 : *number;
    } else if constexpr (std::is_same_v<Parameter, std::string_view>) {
      return std::string_view(given);
    } else {
      return std::remove_cvref_t<Parameter>(given);
    }
  }

  template <typename Parameter, typename Given>
  static void HandBack(Given& given, Value& value) {
    using Plain = std::remove_cvref_t<Parameter>;
    if constexpr (std::is_pointer_v<Parameter>) {
      std::int32_t* number = given;
      if (number != nullptr) *number = *value.As<std::int32_t>();
    } else if constexpr (std::is_same_v<Parameter, Plain&>) {
      given = std::move(*value.As<Plain>());
    }
  }

  void Release() noexcept {
    try {
      tracer_->Begin("Release " + name_);
      controller_.reset();
      tracer_->End("");
    } catch (...) {
      controller_.reset();
    }
  }

  std::shared_ptr<Tracer> tracer_;
  std::string name_;
  std::optional<Class> controller_;
};

}  // namespace qorcred::trace
