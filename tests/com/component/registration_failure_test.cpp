// Registering that fails, and what is left then.
#include <gtest/gtest.h>
#include <windows.h>
// After the system's own header, which it builds on.
#include <sddl.h>

#include <string>
#include <vector>

#include "com/classes.h"
#include "com/text.h"
#include "tests/com/component/component_file.h"
#include "tests/com/component/registry.h"

namespace qortest {
namespace {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ToUtf8;
using qorcred::com::ToWide;

using Register = HRESULT(STDAPICALLTYPE*)();
using Install = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);
using Keys = std::vector<std::string>;

// Everybody, administrators too, may read values and change these rights, but neither write nor
// look at what is below, which deleting begins with.
constexpr const wchar_t* kProtected = L"D:P(A;CI;0x60001;;;WD)";
constexpr const wchar_t* kEverything = L"D:P(A;CI;KA;;;WD)";

constexpr const wchar_t* kMachine = L"Software\\qorCredTests";
constexpr const char* kClassOfOthers = "CLSID\\{9F0B6DB3-2A8C-4A0E-8B57-0E3C5C2B1A11}";

/// The machine's part of the registry is, for this process, an empty key of the user's.
class RegistrationFailureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    component_ = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(component_, nullptr);
    RemoveMachine();
    HKEY machine = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kMachine, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &machine, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine), ERROR_SUCCESS);
    RegCloseKey(machine);
    MakeKey(HKEY_LOCAL_MACHINE, kClassOfOthers);
  }
  void TearDown() override {
    Unprotect();
    EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr), ERROR_SUCCESS);
    RemoveMachine();
    FreeLibrary(component_);
  }

  [[nodiscard]] HRESULT Call(const char* name) const {
    return EntryPoint<Register>(component_, name)();
  }
  [[nodiscard]] HRESULT CallInstall(bool install, const wchar_t* text) const {
    return EntryPoint<Install>(component_, "DllInstall")(install ? TRUE : FALSE, text);
  }

  static void SetText(const std::string& below, const std::string& text) {
    const std::wstring wide = ToWide(text);
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, Path(below).c_str(), nullptr, REG_SZ, wide.c_str(),
                        static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t))),
        ERROR_SUCCESS);
  }

  /// Nobody may write or delete there until Unprotect() or the end of the test.
  void Protect(const std::string& below) {
    SetRights(below, kProtected);
    protected_.push_back(below);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, Path(below).c_str(), 0,
                            KEY_CREATE_SUB_KEY | KEY_SET_VALUE, &key),
              ERROR_ACCESS_DENIED);
  }
  /// Registers and unregisters while one key is protected: just these keys stay, and later they go.
  void ExpectToStay(const std::string& kept, const Keys& left) {
    SCOPED_TRACE(kept);
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    Protect(kept);
    EXPECT_EQ(Call("DllUnregisterServer"), E_ACCESSDENIED);
    EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), left);
    Unprotect();
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), Keys{});
  }
  void Unprotect() {
    for (const std::string& below : protected_) SetRights(below, kEverything);
    protected_.clear();
  }

 private:
  static void RemoveMachine() { RegDeleteTreeW(HKEY_CURRENT_USER, kMachine); }

  static void SetRights(const std::string& below, const wchar_t* rights) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1,
                                                                   &descriptor, nullptr),
              FALSE);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, Path(below).c_str(), 0, WRITE_DAC, &key),
              ERROR_SUCCESS);
    EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    RegCloseKey(key);
    LocalFree(descriptor);
  }

  HMODULE component_ = nullptr;
  std::vector<std::string> protected_;
};

const std::string& ClassKey() {
  static const std::string key = "CLSID\\" + GuidText(Classes().front().id);
  return key;
}

TEST_F(RegistrationFailureTest, WithoutRightsNothingIsEntered) {
  Protect("");
  EXPECT_EQ(Call("DllRegisterServer"), E_ACCESSDENIED);
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), Keys{});
}

TEST_F(RegistrationFailureTest, WithoutRightsAnOlderRegistrationStaysAsItIs) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  SetText(ClassKey() + "\\InprocServer32", "C:\\older\\qorCred.dll");
  Protect("");
  EXPECT_EQ(Call("DllRegisterServer"), E_ACCESSDENIED);
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), OwnKeys());
  EXPECT_EQ(ValueAt(HKEY_LOCAL_MACHINE, ClassKey() + "\\InprocServer32"), "C:\\older\\qorCred.dll");
}

// The library comes last. Below a key that the next start of the system forgets no lasting one can
// be made.
TEST_F(RegistrationFailureTest, AFirstRegistrationThatFailsHalfwayLeavesNothing) {
  MakeKey(HKEY_LOCAL_MACHINE, "TypeLib", 0, REG_OPTION_VOLATILE);
  EXPECT_EQ(Call("DllRegisterServer"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), Keys{});
  EXPECT_TRUE(Exists(HKEY_LOCAL_MACHINE, kClassOfOthers));
}

TEST_F(RegistrationFailureTest, ARepeatedOneThatFailsHalfwayTakesNothingAway) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  RemoveKey(HKEY_LOCAL_MACHINE, "TypeLib");
  const Keys before = OwnKeysIn(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(before.size(), OwnKeys().size() - 1);
  MakeKey(HKEY_LOCAL_MACHINE, "TypeLib", 0, REG_OPTION_VOLATILE);
  EXPECT_EQ(Call("DllRegisterServer"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), before);
}

TEST_F(RegistrationFailureTest, OneThatFailsHalfwayTakesNoNamesOfAnotherComponentAway) {
  SetText("qorCred.clsDirCode\\CLSID", "{9F0B6DB3-2A8C-4A0E-8B57-0E3C5C2B1A11}");
  MakeKey(HKEY_LOCAL_MACHINE, "TypeLib", 0, REG_OPTION_VOLATILE);
  EXPECT_EQ(Call("DllRegisterServer"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_TRUE(Exists(HKEY_LOCAL_MACHINE, "qorCred.clsDirCode\\CLSID"));
}

TEST_F(RegistrationFailureTest, UnregisteringGoesOnAfterAFailureAndHandsItOut) {
  for (const ComClass& comClass : Classes()) {
    const std::string name = "qorCred." + ToUtf8(comClass.name);
    const std::string classKey = "CLSID\\" + GuidText(comClass.id);
    const std::string interfaceKey = "Interface\\" + GuidText(comClass.dispinterface);
    ExpectToStay(interfaceKey, {interfaceKey});
    ExpectToStay(name, {name});
    ExpectToStay(name + ".1", {name + ".1"});
    ExpectToStay(classKey, {classKey, name, name + ".1"});  // with its names
  }
  ExpectToStay(kLibraryKey + "\\1.0", {kLibraryKey});
}

struct Word {
  const char* name;
  const wchar_t* text;
  HKEY root;  ///< null: refused
};

void PrintTo(const Word& word, std::ostream* out) {
  *out << word.name;
}

class InstallationWordTest : public RegistrationFailureTest,
                             public ::testing::WithParamInterface<Word> {
 protected:
  void SetUp() override {
    RegistrationFailureTest::SetUp();
    ASSERT_EQ(CallInstall(false, L"user"), S_OK);
  }
  void TearDown() override {
    EXPECT_EQ(CallInstall(false, L"user"), S_OK);
    RegistrationFailureTest::TearDown();
  }
  [[nodiscard]] static Keys Expected(HKEY root) {
    return GetParam().root == root ? OwnKeys() : Keys{};
  }
};

TEST_P(InstallationWordTest, SaysWhoseRegistrationIsMade) {
  EXPECT_EQ(CallInstall(true, GetParam().text), GetParam().root != nullptr ? S_OK : E_INVALIDARG);
  EXPECT_EQ(OwnKeysIn(HKEY_CURRENT_USER), Expected(HKEY_CURRENT_USER));
  EXPECT_EQ(OwnKeysIn(HKEY_LOCAL_MACHINE), Expected(HKEY_LOCAL_MACHINE));
}

TEST_P(InstallationWordTest, SaysWhoseRegistrationIsTakenAway) {
  ASSERT_EQ(CallInstall(true, L"user"), S_OK);
  ASSERT_EQ(CallInstall(true, nullptr), S_OK);
  EXPECT_EQ(CallInstall(false, GetParam().text), GetParam().root != nullptr ? S_OK : E_INVALIDARG);
  for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    EXPECT_EQ(OwnKeysIn(root), GetParam().root == root ? Keys{} : OwnKeys());
  }
}

INSTANTIATE_TEST_SUITE_P(Words, InstallationWordTest,
                         ::testing::Values(Word{"None", nullptr, HKEY_LOCAL_MACHINE},
                                           Word{"Empty", L"", HKEY_LOCAL_MACHINE},
                                           Word{"User", L"user", HKEY_CURRENT_USER},
                                           Word{"UserInCapitals", L"USER", HKEY_CURRENT_USER},
                                           Word{"UserWithACapital", L"User", HKEY_CURRENT_USER},
                                           Word{"Users", L"users", nullptr},
                                           Word{"Use", L"use", nullptr},
                                           Word{"UserAfterABlank", L" user", nullptr},
                                           Word{"UserBeforeABlank", L"user ", nullptr},
                                           Word{"Machine", L"machine", nullptr},
                                           Word{"Blank", L" ", nullptr}),
                         [](const auto& word) { return std::string(word.param.name); });

}  // namespace
}  // namespace qortest
