// The entry points of the component library.
#include <windows.h>

#include <new>
#include <string_view>

#include "com/class_factory.h"
#include "com/classes.h"
#include "com/module.h"
#include "com/ownership.h"
#include "com/registration.h"

using qorcred::com::Audience;

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    qorcred::com::RememberModule(instance);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, LPVOID* object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const qorcred::com::ComClass* comClass = qorcred::com::FindClass(classId);
  if (comClass == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new (std::nothrow) qorcred::com::ClassFactory(*comClass);
  if (factory == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = factory->QueryInterface(iid, object);
  factory->Release();
  return result;
}

STDAPI DllCanUnloadNow() {
  return qorcred::com::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return qorcred::com::Register(Audience::kMachine);
}

STDAPI DllUnregisterServer() {
  return qorcred::com::Unregister(Audience::kMachine);
}

/// The word "user", in whatever case, means the current user's registration, no text the machine's.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  const std::wstring_view word = commandLine == nullptr ? L"" : commandLine;
  const bool forUser = CompareStringOrdinal(word.data(), static_cast<int>(word.size()), L"user", -1,
                                            TRUE) == CSTR_EQUAL;
  if (!forUser && !word.empty()) return E_INVALIDARG;
  const Audience audience = forUser ? Audience::kUser : Audience::kMachine;
  return install != FALSE ? qorcred::com::Register(audience) : qorcred::com::Unregister(audience);
}
