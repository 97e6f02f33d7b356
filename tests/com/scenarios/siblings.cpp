#include "tests/com/scenarios/siblings.h"

#include <array>
#include <string>
#include <string_view>

#include "com/ownership.h"
#include "com/text.h"
#include "frame/siblings.h"
#include "tests/com/scenarios/object_dispatch.h"

namespace qortest {

namespace {

using qorcred::com::ComPtr;

constexpr std::array<std::string_view, 5> kSiblings{
    qorcred::component::kDatabaseManager, qorcred::component::kStepSender,
    qorcred::component::kTenant, qorcred::component::kApplication,
    qorcred::component::kConnectionManager};

CLSID ClassOf(std::size_t sibling) {
  CLSID id = {0x7a4f0c10, 0x9b1d, 0x4c7e, {0x8e, 0x55, 0x21, 0x90, 0xaa, 0x3c, 0x5d, 0x00}};
  id.Data4[7] = static_cast<unsigned char>(sibling);
  return id;
}

std::wstring NamePath(std::size_t sibling) {
  return L"Software\\Classes\\" + qorcred::com::ToWide(kSiblings[sibling]);
}

void EnterName(std::size_t sibling) {
  std::array<wchar_t, 39> id{};
  StringFromGUID2(ClassOf(sibling), id.data(), static_cast<int>(id.size()));
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, (NamePath(sibling) + L"\\CLSID").c_str(), nullptr, REG_SZ,
                  id.data(), static_cast<DWORD>(id.size() * sizeof(wchar_t)));
}

/// Makes one kind of sibling.
class SiblingFactory final : public IClassFactory {
 public:
  SiblingFactory(qorcred::Host& host, std::string_view name) : host_(host), name_(name) {}
  SiblingFactory(const SiblingFactory&) = delete;
  SiblingFactory& operator=(const SiblingFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
    *object = nullptr;
    try {
      return AsAutomationObject(host_.CreateComponent(name_))->QueryInterface(iid, object);
    } catch (...) {
      return E_FAIL;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  ~SiblingFactory() = default;

  qorcred::Host& host_;
  std::string name_;
  ULONG references_ = 1;
};

}  // namespace

OfferedSiblings::OfferedSiblings(qorcred::Host& host) {
  for (std::size_t sibling = 0; sibling < kSiblings.size(); ++sibling) {
    EnterName(sibling);
    ComPtr<IClassFactory> factory;
    *factory.Receive() = new SiblingFactory(host, kSiblings[sibling]);
    DWORD cookie = 0;
    if (SUCCEEDED(CoRegisterClassObject(ClassOf(sibling), factory.get(), CLSCTX_INPROC_SERVER,
                                        REGCLS_MULTIPLEUSE, &cookie))) {
      cookies_.push_back(cookie);
    }
  }
}

OfferedSiblings::~OfferedSiblings() {
  for (const DWORD cookie : cookies_) CoRevokeClassObject(cookie);
  for (std::size_t sibling = 0; sibling < kSiblings.size(); ++sibling) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, NamePath(sibling).c_str());
  }
}

}  // namespace qortest
