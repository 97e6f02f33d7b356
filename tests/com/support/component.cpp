#include "tests/com/support/component.h"

namespace qortest {

ComPtr<IDispatch> CreateObject(const wchar_t* programmaticId) {
  CLSID id;
  ComPtr<IDispatch> object;
  if (SUCCEEDED(CLSIDFromProgID(programmaticId, &id))) {
    CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.ReceiveVoid());
  }
  return object;
}

HRESULT CanUnload() {
  const HMODULE module = GetModuleHandleW(L"qorCred.dll");
  if (module == nullptr) return S_OK;
  using EntryPoint = HRESULT(STDAPICALLTYPE*)();
  // Through a pointer without type: a function pointer is not converted to another kind directly.
  const auto canUnload = reinterpret_cast<EntryPoint>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
  return canUnload == nullptr ? E_FAIL : canUnload();
}

ComPtr<IClassFactory> FactoryOf(const wchar_t* programmaticId) {
  CLSID id;
  ComPtr<IClassFactory> factory;
  if (SUCCEEDED(CLSIDFromProgID(programmaticId, &id))) {
    CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.ReceiveVoid());
  }
  return factory;
}

}  // namespace qortest
