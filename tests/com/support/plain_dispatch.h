// Automation objects without a type library.
#pragma once

#include <windows.h>

#include "com/counted.h"

namespace qortest {

/// What they share, whether `Interface` is IDispatch or what script engines make of it.
template <typename Interface>
class PlainDispatch : public qorcred::com::Counted<Interface> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override { return IsEqualIID(iid, IID_IDispatch); }
};

}  // namespace qortest
