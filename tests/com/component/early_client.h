// A client of the component that binds early.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "com/ownership.h"
#include "tests/com/support/client.h"
#include "tests/com/support/variant.h"

namespace qortest {

/// An object reached as programs do that were compiled against the registered type library: they
/// ask the object for no names, but call identifiers through the class's own interface and pass
/// every parameter in its own type, by reference where the library has a pointer.
class EarlyClient {
 public:
  /// Creates an object of a registered class; fails the test when that cannot be done.
  explicit EarlyClient(const wchar_t* programmaticId);

  /// Calls with the first arguments; the library's defaults stand for those that are left out.
  template <typename... Arguments>
  Outcome Call(const std::wstring& name, const Arguments&... arguments) const {
    return Invoke(INVOKE_FUNC, name, {Variant(arguments)...});
  }
  Outcome PutReference(const std::wstring& name, const Variant& value) const {
    return Invoke(INVOKE_PROPERTYPUTREF, name, {value});
  }

 private:
  [[nodiscard]] Outcome Invoke(INVOKEKIND kind, const std::wstring& name,
                               std::vector<Variant> arguments) const;

  ComPtr<ITypeInfo> info_;
  ComPtr<IDispatch> object_;
};

}  // namespace qortest
