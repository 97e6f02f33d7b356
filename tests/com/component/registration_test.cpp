// What registering writes into the registry, and that unregistering takes all of it away.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com/classes.h"
#include "com/ownership.h"
#include "com/text.h"
#include "tests/com/component/component_file.h"
#include "tests/com/component/registry.h"

namespace qortest {
namespace {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ComPtr;
using qorcred::com::ToUtf8;

using Register = HRESULT(STDAPICALLTYPE*)();
using Install = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);

/// The interface's name as the component's type library has it.
std::string InterfaceName(REFIID iid) {
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadTypeLibEx(ComponentFile().c_str(), REGKIND_NONE, library.Receive()), S_OK);
  if (!library) return "(none)";
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(library->GetTypeInfoOfGuid(iid, info.Receive()), S_OK);
  if (!info) return "(none)";
  BSTR name = nullptr;
  EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr), S_OK);
  const std::string text = name == nullptr ? "(none)" : ToUtf8(name);
  SysFreeString(name);
  return text;
}

class RegistrationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    component_ = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(component_, nullptr);
    install_ = EntryPoint<Install>(component_, "DllInstall");
    ASSERT_NE(install_, nullptr);
  }
  void TearDown() override {
    EXPECT_EQ(ForUser(false), S_OK);
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);  // as it was before the tests
    FreeLibrary(component_);
  }

  [[nodiscard]] HRESULT Call(const char* name) const {
    return EntryPoint<Register>(component_, name)();
  }
  [[nodiscard]] HRESULT ForUser(bool install) const {
    return install_(install ? TRUE : FALSE, L"user");
  }

 private:
  HMODULE component_ = nullptr;
  Install install_ = nullptr;
};

TEST_F(RegistrationTest, ForTheUserEntersEveryClass) {
  ASSERT_EQ(ForUser(true), S_OK);
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    const std::string progId = "qorCred." + ToUtf8(comClass.name);
    const std::string classKey = "CLSID\\" + GuidText(comClass.id);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey), std::string(comClass.identity.description));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\InprocServer32"), ToUtf8(ComponentFile()));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\InprocServer32", L"ThreadingModel"),
              "Apartment");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\ProgID"), progId + ".1");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\VersionIndependentProgID"), progId);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\TypeLib"), kLibraryId);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + "\\CLSID"), GuidText(comClass.id));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + "\\CurVer"), progId + ".1");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + ".1\\CLSID"), GuidText(comClass.id));
  }
  const std::string version = kLibraryKey + "\\1.0";
  EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, version), "qorCred controllers");
  EXPECT_EQ(
      ValueAt(HKEY_CURRENT_USER, version + (sizeof(void*) == 8 ? "\\0\\win64" : "\\0\\win32")),
      ToUtf8(ComponentFile()));
}

TEST_F(RegistrationTest, ForTheUserEntersEveryInterfaceWithAutomationsProxy) {
  ASSERT_EQ(ForUser(true), S_OK);
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    const std::string key = "Interface\\" + GuidText(comClass.dispinterface);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key), InterfaceName(comClass.dispinterface));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key + "\\ProxyStubClsid32"),
              "{00020420-0000-0000-C000-000000000046}");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key + "\\TypeLib"), kLibraryId);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key + "\\TypeLib", L"Version"), "1.0");
  }
}

TEST_F(RegistrationTest, UnregisteringTheUserLeavesNothingBehind) {
  ASSERT_EQ(ForUser(true), S_OK);
  EXPECT_EQ(OwnKeysIn(HKEY_CURRENT_USER), OwnKeys());
  EXPECT_EQ(ForUser(false), S_OK);
  EXPECT_EQ(OwnKeysIn(HKEY_CURRENT_USER), std::vector<std::string>{});
}

TEST_F(RegistrationTest, UnregisteringWhatIsNotRegisteredIsNoFailure) {
  ASSERT_EQ(ForUser(false), S_OK);
  EXPECT_EQ(ForUser(false), S_OK);
}

TEST_F(RegistrationTest, ForTheUserLeavesTheMachineAlone) {
  ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
  ASSERT_EQ(ForUser(true), S_OK);
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), std::vector<std::string>{});
}

TEST_F(RegistrationTest, ForTheMachineMakesTheClassesCreatableByName) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    for (const std::wstring& name : {std::wstring(L"qorCred.") + comClass.name,
                                     std::wstring(L"qorCred.") + comClass.name + L".1"}) {
      CLSID id{};
      EXPECT_EQ(CLSIDFromProgID(name.c_str(), &id), S_OK);
      EXPECT_TRUE(IsEqualCLSID(id, comClass.id));
    }
  }
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), std::vector<std::string>{});
}

TEST_F(RegistrationTest, TheTypeLibraryOfTheOtherBitnessStays) {
  ASSERT_EQ(ForUser(true), S_OK);
  const std::string other = kLibraryKey + "\\1.0\\0\\" + (sizeof(void*) == 8 ? "win32" : "win64");
  MakeKey(HKEY_CURRENT_USER, other);
  ASSERT_EQ(ForUser(false), S_OK);
  EXPECT_TRUE(Exists(HKEY_CURRENT_USER, other));
  RemoveKey(HKEY_CURRENT_USER, kLibraryKey);
}

TEST_F(RegistrationTest, TheClassesOfTheOtherBitnessStayWithTheirNames) {
  constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
  const ComClass& comClass = Classes().front();
  const std::string progId = "qorCred." + ToUtf8(comClass.name);
  const std::vector<std::string> others{"CLSID\\" + GuidText(comClass.id),
                                        "Interface\\" + GuidText(comClass.dispinterface)};
  for (const std::string& key : others) MakeKey(HKEY_LOCAL_MACHINE, key, kOtherView);
  const bool isOneView = Exists(HKEY_LOCAL_MACHINE, others.front());
  if (!isOneView) {
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), OwnKeys());
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), (std::vector<std::string>{progId, progId + ".1"}));
  }
  for (const std::string& key : others) {
    EXPECT_TRUE(Exists(HKEY_LOCAL_MACHINE, key, kOtherView)) << key;
    RemoveKey(HKEY_LOCAL_MACHINE, key, kOtherView);
  }
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), std::vector<std::string>{});
  if (isOneView) GTEST_SKIP() << "this system has one bitness only";
}

}  // namespace
}  // namespace qortest
