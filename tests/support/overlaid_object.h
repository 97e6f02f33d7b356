// Screens and controls of a host's own that answer some questions in their own way.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "frame/object.h"
#include "frame/runtime_error.h"

namespace qortest {

/// An object some of whose members read as fixed values, or are not there at all; every other call
/// goes to the object behind it.
class OverlaidObject final : public qorcred::Object {
 public:
  /// A member without a value is unknown.
  using Answers = std::map<std::string, std::optional<qorcred::Value>, std::less<>>;

  OverlaidObject(qorcred::ObjectRef inner, Answers answers)
      : inner_(std::move(inner)), answers_(std::move(answers)) {}

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override {
    const auto answer = answers_.find(member);
    if (answer == answers_.end()) return inner_->Invoke(member, kind, arguments);
    if (!answer->second.has_value()) {
      throw qorcred::RuntimeError(qorcred::ErrorNumber::kUnknownMember);
    }
    if (kind != qorcred::InvokeKind::kGet) return inner_->Invoke(member, kind, arguments);
    return *answer->second;
  }

 private:
  qorcred::ObjectRef inner_;
  Answers answers_;
};

/// `screen` on which the control `name` answers so.
[[nodiscard]] inline qorcred::ObjectRef WithControl(const qorcred::ObjectRef& screen,
                                                    const std::string& name,
                                                    OverlaidObject::Answers answers) {
  const qorcred::ObjectRef control = qorcred::RequireObject(qorcred::Get(*screen, name));
  return std::make_shared<OverlaidObject>(
      screen, OverlaidObject::Answers{
                  {name, qorcred::Value(qorcred::ObjectRef(
                             std::make_shared<OverlaidObject>(control, std::move(answers))))}});
}

/// `screen` without the control or variable `name`.
[[nodiscard]] inline qorcred::ObjectRef WithoutMember(const qorcred::ObjectRef& screen,
                                                      std::string name) {
  return std::make_shared<OverlaidObject>(screen,
                                          OverlaidObject::Answers{{std::move(name), std::nullopt}});
}

}  // namespace qortest
