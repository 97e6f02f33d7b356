#include "tests/com/fuzz/planted.h"

#include <cstring>
#include <utility>

#include "tests/com/support/plain_dispatch.h"

namespace qortest {

namespace {

using qorcred::com::ComPtr;

bool IsReference(const VARIANT& argument, VARTYPE type) {
  return V_VT(&argument) == (VT_BYREF | type) && V_BYREF(&argument) != nullptr;
}

// An array that comes by value; null for anything else.
SAFEARRAY* ArrayIn(const VARIANT& argument) {
  const bool isArray = V_VT(&argument) == (VT_ARRAY | VT_BSTR) && V_ARRAY(&argument) != nullptr;
  return isArray ? V_ARRAY(&argument) : nullptr;
}

void ClearFirst(SAFEARRAY& array) {
  if (array.pvData == nullptr || array.rgsabound[0].cElements == 0) return;
  std::memset(array.pvData, 0, array.cbElements);
}

/// Passes every call on, and does harm behind it.
class Defective final : public PlainDispatch<IDispatch> {
 public:
  Defective(ComPtr<IDispatch> object, std::string_view defect)
      : object_(std::move(object)), defect_(defect) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return object_->GetIDsOfNames(iid, names, count, locale, ids);
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* given, VARIANT* result, EXCEPINFO* info,
                                   UINT* badArgument) override {
    const HRESULT done = object_->Invoke(id, iid, locale, flags, given, result, info, badArgument);
    if (defect_ == "code" && done == DISP_E_TYPEMISMATCH) return E_FAIL;
    const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
    if (defect_ == "value" && result != nullptr && V_VT(result) == VT_I4) ++V_I4(result);
    if (given == nullptr || given->rgvarg == nullptr || given->cNamedArgs > given->cArgs) {
      return done;
    }
    for (UINT at = 0; at < given->cArgs; ++at) Harm(given->rgvarg[at], done, isPut);
    return done;
  }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override { return IsEqualIID(iid, IID_IDispatch); }

  void Harm(VARIANT& argument, HRESULT done, bool isPut) const {
    if (defect_ == "width" && IsReference(argument, VT_I2)) *V_I4REF(&argument) = 0;
    if (defect_ == "argument" && V_VT(&argument) == VT_I2) ++V_I2(&argument);
    if (defect_ == "write" && FAILED(done) && IsReference(argument, VT_I4)) ++*V_I4REF(&argument);
    if (defect_ == "reference" && V_VT(&argument) == VT_DISPATCH &&
        V_DISPATCH(&argument) != nullptr) {
      V_DISPATCH(&argument)->AddRef();
    }
    if (defect_ == "block" && isPut && V_VT(&argument) == VT_BSTR) (void)SysAllocString(L"lost");
    SAFEARRAY* array = ArrayIn(argument);
    if (defect_ == "element" && array != nullptr) ClearFirst(*array);
    if (defect_ == "lock" && array != nullptr) SafeArrayLock(array);
    const bool leadsNowhere = (V_VT(&argument) & VT_BYREF) != 0 && V_BYREF(&argument) == nullptr;
    if (defect_ == "crash" && leadsNowhere) *V_I2REF(&argument) = 0;
    if (defect_ == "hang" && leadsNowhere) WaitForSingleObject(GetCurrentThread(), INFINITE);
  }

  ComPtr<IDispatch> object_;
  std::string defect_;
};

}  // namespace

const std::vector<std::string_view>& PlantedDefects() {
  static const std::vector<std::string_view> names{"code",  "value",     "width", "argument",
                                                   "write", "reference", "block", "element",
                                                   "lock",  "crash",     "hang"};
  return names;
}

ComPtr<IDispatch> WithDefect(const ComPtr<IDispatch>& object, std::string_view name) {
  if (name.empty()) return object;
  ComPtr<IDispatch> made;
  *made.Receive() = new Defective(object, name);
  return made;
}

}  // namespace qortest
