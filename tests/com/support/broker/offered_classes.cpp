#include "tests/com/support/broker/offered_classes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <new>

#include "com/counted.h"

namespace qortest {

namespace {

/// Gives the same object for every creation.
class OneObjectFactory final : public qorcred::com::Counted<IClassFactory> {
 public:
  OneObjectFactory(std::wstring programmaticId, IDispatch* object, const CreationListener& listener)
      : programmaticId_(std::move(programmaticId)), object_(object), listener_(listener) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    listener_(programmaticId_);
    return object_->QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IClassFactory);
  }

  std::wstring programmaticId_;
  ComPtr<IDispatch> object_;
  CreationListener listener_;
};

std::wstring NamePath(const std::wstring& programmaticId) {
  return L"Software\\Classes\\" + programmaticId;
}

HRESULT EnterName(const std::wstring& programmaticId, CLSID& id) {
  const HRESULT made = CoCreateGuid(&id);
  if (FAILED(made)) return made;
  std::array<wchar_t, 39> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  const LSTATUS status =
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, (NamePath(programmaticId) + L"\\CLSID").c_str(), nullptr,
                      REG_SZ, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)));
  return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

}  // namespace

HRESULT OfferedClasses::Offer(const std::wstring& programmaticId, IDispatch* object) {
  Withdraw(programmaticId);
  CLSID id;
  const bool isKnown = SUCCEEDED(CLSIDFromProgID(programmaticId.c_str(), &id));
  if (!isKnown) {
    const HRESULT entered = EnterName(programmaticId, id);
    if (FAILED(entered)) return entered;
  }
  ComPtr<IClassFactory> factory;
  *factory.Receive() = new OneObjectFactory(programmaticId, object, listener_);
  DWORD cookie = 0;
  const HRESULT offered =
      CoRegisterClassObject(id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
  if (SUCCEEDED(offered)) {
    offered_.push_back({programmaticId, cookie, !isKnown});
  } else if (!isKnown) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, NamePath(programmaticId).c_str());
  }
  return offered;
}

void OfferedClasses::Withdraw(const std::wstring& programmaticId) {
  const auto found = std::find_if(offered_.begin(), offered_.end(), [&](const Offered& offered) {
    return offered.programmaticId == programmaticId;
  });
  if (found == offered_.end()) return;
  const Offered offered = *found;
  offered_.erase(found);
  CoRevokeClassObject(offered.cookie);
  if (offered.isNameOurs) RegDeleteTreeW(HKEY_LOCAL_MACHINE, NamePath(programmaticId).c_str());
}

OfferedClasses::~OfferedClasses() {
  while (!offered_.empty()) Withdraw(std::wstring(offered_.back().programmaticId));
}

}  // namespace qortest
