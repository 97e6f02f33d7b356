// A late-bound client of the component.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/com/support/variant.h"

namespace qortest {

/// How a call ended.
struct Outcome {
  HRESULT code = E_UNEXPECTED;
  Variant result;
  UINT badArgument = kNoArgument;  ///< its place in the array that was passed
  HRESULT raised = S_OK;           ///< EXCEPINFO's code and texts
  std::wstring source;
  std::wstring description;

  static constexpr UINT kNoArgument = 0xFFFF;
};

/// An object reached by names alone.
class Client {
 public:
  /// Creates an object of a registered class; fails the test when that cannot be done.
  explicit Client(const wchar_t* programmaticId);

  /// Calls with arguments by position.
  template <typename... Arguments>
  Outcome Call(const std::wstring& name, const Arguments&... arguments) const {
    // References, so that clearing stays with the caller's own variants.
    return Invoke(IdOf(name), DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                  {static_cast<const VARIANT&>(arguments)...}, {});
  }
  [[nodiscard]] Outcome Get(const std::wstring& name) const {
    return Invoke(IdOf(name), DISPATCH_PROPERTYGET, {}, {});
  }
  Outcome Put(const std::wstring& name, const VARIANT& value) const {
    return Invoke(IdOf(name), DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT});
  }
  Outcome PutReference(const std::wstring& name, const VARIANT& value) const {
    return Invoke(IdOf(name), DISPATCH_PROPERTYPUTREF, {value}, {DISPID_PROPERTYPUT});
  }

  /// The call as it is: arguments in the order of the parameters, the last ones named by
  /// `named` in the order of the array that automation wants.
  Outcome Invoke(DISPID id, WORD flags, std::vector<VARIANT> arguments,
                 std::vector<DISPID> named) const;
  /// The identifier of a member; DISPID_UNKNOWN when there is none.
  [[nodiscard]] DISPID IdOf(const std::wstring& name) const;

  [[nodiscard]] IDispatch* get() const { return object_.get(); }
  void Release() { object_ = {}; }

 private:
  ComPtr<IDispatch> object_;
};

}  // namespace qortest
