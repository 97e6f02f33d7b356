// Late-bound methods of the host's own objects, as tables.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "frame/object.h"

namespace qorhost {

/// One method of class Self. It may be called with `fewest` to `most` arguments.
template <typename Self>
struct Method {
  std::string_view name;
  std::size_t fewest;
  std::size_t most;
  qorcred::Value (Self::*run)(qorcred::Arguments arguments);
};

[[noreturn]] void RaiseUnknownMember(std::string_view object, std::string_view member);
void CheckArgumentCount(std::string_view member, std::size_t count, std::size_t fewest,
                        std::size_t most);

/// Raises the exception being handled as a RuntimeError: itself when it is one, a statement that
/// the dialect or the store refuses as kApplicationDefined with its text. For catch blocks only.
[[noreturn]] void RaiseAsRuntimeError();

/// Runs the method called `member`. `object` is what messages call it. Raises kUnknownMember,
/// kWrongArgumentCount or what the method raises, always as a RuntimeError.
template <typename Self>
qorcred::Value RunMethod(Self& self, std::string_view object, std::span<const Method<Self>> methods,
                         std::string_view member, qorcred::InvokeKind kind,
                         qorcred::Arguments arguments) {
  for (const Method<Self>& method : methods) {
    if (method.name.size() == member.size() && kind != qorcred::InvokeKind::kPut &&
        qorcred::SameMember(method.name, member)) {
      CheckArgumentCount(method.name, arguments.size(), method.fewest, method.most);
      try {
        return (self.*method.run)(arguments);
      } catch (...) {
        RaiseAsRuntimeError();
      }
    }
  }
  RaiseUnknownMember(object, member);
}

}  // namespace qorhost
