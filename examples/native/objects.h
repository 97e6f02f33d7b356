// What the objects of both screens are made of.
#pragma once

#include <frame/object.h>
#include <frame/runtime_error.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::SameMember;
using qorcred::Value;

[[noreturn]] inline void Raise(qorcred::ErrorNumber number) {
  throw qorcred::RuntimeError(number);
}

/// An object that is nothing but properties: a text box, an option button, the screen.
class Properties final : public qorcred::Object {
 public:
  using Pairs = std::vector<std::pair<std::string, Value>>;
  explicit Properties(Pairs pairs) : pairs_(std::move(pairs)) {}

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    if (SameMember(member, "SetFocus")) return {};
    for (auto& [name, value] : pairs_) {
      if (!SameMember(name, member)) continue;
      if (kind == InvokeKind::kPut) value = arguments[0];
      return value;
    }
    Raise(qorcred::ErrorNumber::kUnknownMember);
  }

 private:
  Pairs pairs_;
};

inline ObjectRef Box(const std::string& text) {
  return std::make_shared<Properties>(Properties::Pairs{{"Text", Value(text)},
                                                        {"Enabled", Value(true)},
                                                        {"Visible", Value(true)},
                                                        {"BackColor", Value(0)}});
}

inline ObjectRef Option(bool chosen) {
  return std::make_shared<Properties>(
      Properties::Pairs{{"Value", Value(chosen)}, {"Visible", Value(true)}});
}
