// The entry points of broker.dll.
#include <olectl.h>
#include <windows.h>

#include <array>
#include <new>
#include <string>

#include "com/ownership.h"
#include "tests/com/support/broker/broker.h"

namespace {

constexpr CLSID kBrokerClass = {
    0x3c1d5c52, 0x6c0b, 0x4f7a, {0x9a, 0x61, 0x0e, 0x5b, 0x7f, 0xd3, 0x22, 0x84}};
constexpr wchar_t kBrokerName[] = L"qorTest.Broker";

HINSTANCE module = nullptr;

/// Lives as long as the library.
class BrokerFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto* broker = new (std::nothrow) qortest::Broker;
    if (broker == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = broker->QueryInterface(iid, object);
    broker->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

std::wstring ClassText() {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(kBrokerClass, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassPath() {
  return L"Software\\Classes\\CLSID\\" + ClassText();
}

std::wstring NamePath() {
  return std::wstring(L"Software\\Classes\\") + kBrokerName;
}

bool Enter(const std::wstring& path, const wchar_t* name, const std::wstring& value) {
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), name, REG_SZ, value.c_str(),
                         static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) module = instance;
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, LPVOID* object) {
  static BrokerFactory factory;
  if (!IsEqualCLSID(classId, kBrokerClass)) return CLASS_E_CLASSNOTAVAILABLE;
  return factory.QueryInterface(iid, object);
}

STDAPI DllCanUnloadNow() {
  return qortest::NoBrokerLives() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  std::array<wchar_t, MAX_PATH> file{};
  GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
  const std::wstring server = ClassPath() + L"\\InprocServer32";
  const bool done = Enter(server, nullptr, file.data()) &&
                    Enter(server, L"ThreadingModel", L"Apartment") &&
                    Enter(NamePath() + L"\\CLSID", nullptr, ClassText());
  return done ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, NamePath().c_str());
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, ClassPath().c_str());
  return S_OK;
}
