#include "tests/com/component/apartments.h"

#include <thread>
#include <utility>

namespace qortest {

namespace {

using qorcred::com::OwnedExcepInfo;

ComPtr<IGlobalInterfaceTable> InterfaceTable() {
  ComPtr<IGlobalInterfaceTable> table;
  CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER,
                   IID_IGlobalInterfaceTable, table.ReceiveVoid());
  return table;
}

DISPID IdOf(IDispatch* object, std::wstring name) {
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

}  // namespace

HRESULT RunInApartment(DWORD kind, const std::function<void()>& body) {
  HANDLE gone = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (gone == nullptr) return E_OUTOFMEMORY;
  HRESULT entered = E_UNEXPECTED;
  std::thread other([&] {
    entered = CoInitializeEx(nullptr, kind);
    if (SUCCEEDED(entered)) {
      body();
      CoUninitialize();
    }
    SetEvent(gone);
  });
  DWORD signalled = 0;
  while (CoWaitForMultipleHandles(0, INFINITE, 1, &gone, &signalled) != S_OK) {
  }
  other.join();
  CloseHandle(gone);
  return entered;
}

Passage::Passage(bool byTable, IDispatch* object, REFIID iid) : iid_(iid) {
  if (!byTable) {
    sent_ = CoMarshalInterThreadInterfaceInStream(iid, object, &stream_);
    return;
  }
  table_ = InterfaceTable();
  if (table_) sent_ = table_->RegisterInterfaceInGlobal(object, iid, &cookie_);
}

Passage::~Passage() {
  if (cookie_ != 0) table_->RevokeInterfaceFromGlobal(cookie_);
}

HRESULT Passage::Receive(ComPtr<IDispatch>& proxy) {
  if (stream_ != nullptr) {
    return CoGetInterfaceAndReleaseStream(std::exchange(stream_, nullptr), iid_,
                                          proxy.ReceiveVoid());
  }
  const ComPtr<IGlobalInterfaceTable> table = InterfaceTable();
  return table ? table->GetInterfaceFromGlobal(cookie_, iid_, proxy.ReceiveVoid()) : E_FAIL;
}

bool IsProxy(IUnknown* object) {
  ComPtr<IUnknown> security;
  return SUCCEEDED(object->QueryInterface(IID_IClientSecurity, security.ReceiveVoid()));
}

Answer Call(IDispatch* object, const std::wstring& name, WORD flags, Variant argument) {
  const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS given{};
  given.rgvarg = &argument;
  given.cArgs = flags == DISPATCH_PROPERTYGET ? 0 : 1;
  given.rgdispidNamedArgs = isPut ? &named : nullptr;
  given.cNamedArgs = isPut ? 1 : 0;
  OwnedExcepInfo info;
  Answer answer;
  answer.code = object->Invoke(IdOf(object, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &given,
                               isPut ? nullptr : &answer.result, &info, nullptr);
  answer.raised = info.scode;
  return answer;
}

Answer TextThrough(IDispatch* object) {
  if (IdOf(object, L"pbBase64Dec") != DISPID_UNKNOWN) {
    return Call(object, L"pbBase64Dec", DISPATCH_METHOD, L"NTAw");
  }
  const Answer put = Call(object, L"gstrRIDsForDeletion", DISPATCH_PROPERTYPUT, L"500");
  return FAILED(put.code) ? put : Call(object, L"gstrRIDsForDeletion", DISPATCH_PROPERTYGET, {});
}

}  // namespace qortest
