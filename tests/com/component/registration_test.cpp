// What registering writes into the registry, and that unregistering takes all of it away.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "com/classes.h"
#include "com/ownership.h"
#include "com/text.h"
#include "tests/com/component/component_file.h"

namespace qortest {
namespace {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ComPtr;
using qorcred::com::ToUtf8;
using qorcred::com::ToWide;

using Register = HRESULT(STDAPICALLTYPE*)();
using Install = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);

constexpr const char* kLibrary = "{15454B9D-F853-42C9-81E6-2264AACD34E3}";

std::string GuidText(REFGUID guid) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return ToUtf8(text.data());
}

std::wstring Path(const std::string& below) {
  return ToWide("Software\\Classes\\" + below);
}

bool Exists(HKEY root, const std::string& below) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, Path(below).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

std::string ValueAt(HKEY root, const std::string& below, const wchar_t* name = nullptr) {
  std::array<wchar_t, 1024> text{};
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const LSTATUS status =
      RegGetValueW(root, Path(below).c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? ToUtf8(text.data()) : "(none)";
}

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

/// Every key that belongs to the component, below Software\Classes.
std::vector<std::string> OwnKeys() {
  std::vector<std::string> keys{std::string("TypeLib\\") + kLibrary};
  for (const ComClass& comClass : Classes()) {
    const std::string progId = "qorCred." + ToUtf8(comClass.name);
    keys.push_back("CLSID\\" + GuidText(comClass.id));
    keys.push_back("Interface\\" + GuidText(comClass.dispinterface));
    keys.push_back(progId);
    keys.push_back(progId + ".1");
  }
  return keys;
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
    install_(FALSE, L"user");
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
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey), ToUtf8(comClass.description));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\InprocServer32"), ToUtf8(ComponentFile()));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\InprocServer32", L"ThreadingModel"),
              "Apartment");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\ProgID"), progId + ".1");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\VersionIndependentProgID"), progId);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, classKey + "\\TypeLib"), kLibrary);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + "\\CLSID"), GuidText(comClass.id));
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + "\\CurVer"), progId + ".1");
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, progId + ".1\\CLSID"), GuidText(comClass.id));
  }
  const std::string version = std::string("TypeLib\\") + kLibrary + "\\1.0";
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
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key + "\\TypeLib"), kLibrary);
    EXPECT_EQ(ValueAt(HKEY_CURRENT_USER, key + "\\TypeLib", L"Version"), "1.0");
  }
}

TEST_F(RegistrationTest, UnregisteringTheUserLeavesNothingBehind) {
  ASSERT_EQ(ForUser(true), S_OK);
  for (const std::string& key : OwnKeys()) EXPECT_TRUE(Exists(HKEY_CURRENT_USER, key)) << key;
  EXPECT_EQ(ForUser(false), S_OK);
  for (const std::string& key : OwnKeys()) EXPECT_FALSE(Exists(HKEY_CURRENT_USER, key)) << key;
}

TEST_F(RegistrationTest, UnregisteringWhatIsNotRegisteredIsNoFailure) {
  ASSERT_EQ(ForUser(false), S_OK);
  EXPECT_EQ(ForUser(false), S_OK);
}

TEST_F(RegistrationTest, ForTheUserLeavesTheMachineAlone) {
  ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
  ASSERT_EQ(ForUser(true), S_OK);
  for (const std::string& key : OwnKeys()) EXPECT_FALSE(Exists(HKEY_LOCAL_MACHINE, key)) << key;
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
  for (const std::string& key : OwnKeys()) EXPECT_FALSE(Exists(HKEY_LOCAL_MACHINE, key)) << key;
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
}

TEST_F(RegistrationTest, TheTypeLibraryOfTheOtherBitnessStays) {
  ASSERT_EQ(ForUser(true), S_OK);
  const std::string other =
      std::string("TypeLib\\") + kLibrary + "\\1.0\\0\\" + (sizeof(void*) == 8 ? "win32" : "win64");
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, Path(other).c_str(), 0, nullptr, 0, KEY_WRITE,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(key);
  ASSERT_EQ(ForUser(false), S_OK);
  EXPECT_TRUE(Exists(HKEY_CURRENT_USER, other));
  ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, Path(std::string("TypeLib\\") + kLibrary).c_str()),
            ERROR_SUCCESS);
}

TEST_F(RegistrationTest, AnInstallationWithoutTheWordIsTheMachines) {
  const auto install = EntryPoint<Install>(LoadLibraryW(ComponentFile().c_str()), "DllInstall");
  ASSERT_EQ(ForUser(false), S_OK);
  ASSERT_EQ(install(TRUE, nullptr), S_OK);
  EXPECT_TRUE(Exists(HKEY_LOCAL_MACHINE, std::string("TypeLib\\") + kLibrary));
  EXPECT_FALSE(Exists(HKEY_CURRENT_USER, std::string("TypeLib\\") + kLibrary));
}

}  // namespace
}  // namespace qortest
