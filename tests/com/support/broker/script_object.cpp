#include "tests/com/support/broker/script_object.h"

#include <utility>

#include "tests/com/support/plain_dispatch.h"

namespace qortest {

namespace {

// IDispatchEx; not every import library has its identifier.
constexpr IID kScriptObject = {
    0xa6ef9860, 0xc720, 0x11d0, {0x93, 0x37, 0x00, 0xa0, 0xc9, 0x0d, 0xca, 0xa9}};

/// Hands everything on to another object, one name apart.
class RenamedMember final : public PlainDispatch<IDispatchEx> {
 public:
  RenamedMember(ComPtr<IDispatchEx> object, std::wstring name, std::wstring member)
      : object_(std::move(object)), name_(std::move(name)), member_(std::move(member)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    if (names == nullptr || ids == nullptr || count != 1) return E_INVALIDARG;
    return IdOf(object_, Translated(names[0]), ids[0]);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT*) override {
    return object_->InvokeEx(id, locale, flags, parameters, result, info, nullptr);
  }

  HRESULT STDMETHODCALLTYPE GetDispID(BSTR name, DWORD, DISPID* id) override {
    if (name == nullptr || id == nullptr) return E_INVALIDARG;
    return IdOf(object_, Translated(name), *id);
  }
  HRESULT STDMETHODCALLTYPE InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* info,
                                     IServiceProvider* caller) override {
    return object_->InvokeEx(id, locale, flags, parameters, result, info, caller);
  }
  HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, kScriptObject);
  }

  [[nodiscard]] std::wstring Translated(const wchar_t* name) const {
    return lstrcmpiW(name, name_.c_str()) == 0 ? member_ : std::wstring(name);
  }

  ComPtr<IDispatchEx> object_;
  std::wstring name_;
  std::wstring member_;
};

}  // namespace

ComPtr<IDispatchEx> AsScriptObject(const ComPtr<IDispatch>& object) {
  ComPtr<IDispatchEx> scriptObject;
  if (object) object->QueryInterface(kScriptObject, scriptObject.ReceiveVoid());
  return scriptObject;
}

HRESULT IdOf(const ComPtr<IDispatchEx>& object, const std::wstring& member, DISPID& id) {
  BSTR name = SysAllocString(member.c_str());
  if (name == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = object->GetDispID(name, fdexNameCaseInsensitive, &id);
  SysFreeString(name);
  return result;
}

ComPtr<IDispatch> WithMemberCalled(const ComPtr<IDispatchEx>& object, const std::wstring& name,
                                   const std::wstring& member) {
  ComPtr<IDispatch> made;
  *made.Receive() = new RenamedMember(object, name, member);
  return made;
}

}  // namespace qortest
