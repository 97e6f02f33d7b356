// Automation objects of the host, as the controllers see them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "com/ownership.h"
#include "frame/object.h"

namespace qorcred::com {

/// An automation object reached by member name. Reads go out as METHOD | PROPERTYGET, puts as
/// PROPERTYPUT, an object's put as PROPERTYPUTREF when the first is refused, calls as METHOD. A
/// call's variables go by reference in their own types, to an object of a script engine as
/// references to variants, the only ones that it writes to; its expressions go by value. A member's
/// identifier is asked for once. Failures come as RuntimeError: see FailureFrom().
class DispatchObject final : public Object {
 public:
  explicit DispatchObject(IDispatch* dispatch) : dispatch_(dispatch) {}

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override;

  [[nodiscard]] const ComPtr<IDispatch>& dispatch() const { return dispatch_; }

 private:
  struct KnownMember {
    std::string name;
    DISPID id;
  };

  [[nodiscard]] DISPID IdOf(std::string_view member);
  [[nodiscard]] bool IsScriptObject();
  Value Read(DISPID id, const Arguments& arguments);
  void Write(DISPID id, const Arguments& arguments);
  Value Run(DISPID id, const Arguments& arguments);

  ComPtr<IDispatch> dispatch_;
  std::vector<KnownMember> members_;
  enum class Kind : std::uint8_t { kUnknown, kScript, kOther };
  Kind kind_ = Kind::kUnknown;
};

/// The object as the controllers see it; null for null.
[[nodiscard]] ObjectRef Wrap(IDispatch* dispatch);

/// The automation object behind `object`; null for null. Raises kTypeMismatch for any other kind.
[[nodiscard]] ComPtr<IDispatch> Unwrap(const ObjectRef& object);

}  // namespace qorcred::com
