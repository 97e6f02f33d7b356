// What the objects of the quick hosts are made of.
#pragma once

#include <windows.h>

#include <cstdint>
#include <utility>

#include "com/ownership.h"
#include "tests/com/support/plain_dispatch.h"

namespace qorbench {

/// What every object of this host is made of; `Name` maps names to identifiers.
class FastObject : public qortest::PlainDispatch<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    ids[0] = Name(names[0]);
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
  }

 protected:
  virtual DISPID Name(const wchar_t* name) = 0;
};

inline std::int32_t LongOf(const VARIANT& argument) {
  return (V_VT(&argument) & VT_BYREF) != 0 ? *V_I4REF(&argument) : V_I4(&argument);
}

inline BSTR TextOf(const VARIANT& argument) {
  return (V_VT(&argument) & VT_BYREF) != 0 ? *V_BSTRREF(&argument) : V_BSTR(&argument);
}

inline void Answer(VARIANT* result, std::int32_t number) {
  if (result == nullptr) return;
  V_VT(result) = VT_I4;
  V_I4(result) = number;
}

inline void Answer(VARIANT* result, IDispatch* object) {
  if (result == nullptr) return;
  object->AddRef();
  V_VT(result) = VT_DISPATCH;
  V_DISPATCH(result) = object;
}

template <typename Object, typename... Parts>
qorcred::com::ComPtr<IDispatch> Make(Parts&&... parts) {
  qorcred::com::ComPtr<IDispatch> made;
  *made.Receive() = new Object(std::forward<Parts>(parts)...);
  return made;
}

}  // namespace qorbench
