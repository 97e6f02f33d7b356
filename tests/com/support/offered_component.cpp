#include "tests/com/support/offered_component.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "com/counted.h"

namespace qortest {

namespace {

/// Hands out what a test makes.
class Factory final : public qorcred::com::Counted<IClassFactory> {
 public:
  explicit Factory(OfferedComponent::Maker make) : make_(std::move(make)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
    *object = nullptr;
    const ComPtr<IDispatch> made = make_();
    return made ? made->QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IClassFactory);
  }

  OfferedComponent::Maker make_;
};

std::wstring KeyOf(const std::wstring& programmaticId) {
  return L"Software\\Classes\\" + programmaticId;
}

void Enter(const std::wstring& programmaticId, const CLSID& id) {
  std::array<wchar_t, 39> text{};  // with the braces and the zero at its end
  const int length = StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  const LSTATUS status = RegSetKeyValueW(
      HKEY_LOCAL_MACHINE, (KeyOf(programmaticId) + L"\\CLSID").c_str(), nullptr, REG_SZ,
      text.data(), static_cast<DWORD>(static_cast<std::size_t>(length) * sizeof(wchar_t)));
  EXPECT_EQ(status, ERROR_SUCCESS);
}

}  // namespace

OfferedComponent::OfferedComponent(std::wstring programmaticId, Maker make)
    : programmaticId_(std::move(programmaticId)) {
  CLSID id;
  if (FAILED(CLSIDFromProgID(programmaticId_.c_str(), &id))) {
    EXPECT_EQ(CoCreateGuid(&id), S_OK);
    Enter(programmaticId_, id);
    entered_ = true;
  }
  ComPtr<IClassFactory> factory;
  *factory.Receive() = new Factory(std::move(make));
  EXPECT_EQ(
      CoRegisterClassObject(id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
      S_OK);
}

OfferedComponent::~OfferedComponent() {
  EXPECT_EQ(CoRevokeClassObject(cookie_), S_OK);
  if (entered_) RegDeleteTreeW(HKEY_LOCAL_MACHINE, KeyOf(programmaticId_).c_str());
}

}  // namespace qortest
