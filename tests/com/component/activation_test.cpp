// Creating the classes through an activation context, without any registration.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

#include "com/classes.h"
#include "com/ownership.h"
#include "com/text.h"
#include "tests/com/component/apartments.h"
#include "tests/com/component/component_file.h"

namespace qortest {
namespace {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ToUtf8;

using Unregister = HRESULT(STDAPICALLTYPE*)();

/// An activation context made from a manifest, active as long as it lives.
class ActiveContext {
 public:
  /// `file` is the manifest, or a program or library that has it in it.
  explicit ActiveContext(const std::wstring& file) {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.lpSource = file.c_str();
    if (!file.ends_with(L".manifest")) {
      description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
      description.lpResourceName = MAKEINTRESOURCEW(1);
    }
    context_ = CreateActCtxW(&description);
    active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
  }
  ~ActiveContext() {
    if (active_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
  }
  ActiveContext(const ActiveContext&) = delete;
  ActiveContext& operator=(const ActiveContext&) = delete;

  [[nodiscard]] bool active() const { return active_; }

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

HRESULT Create(const ComClass& comClass, ComPtr<IDispatch>& object) {
  CLSID id{};
  const HRESULT found = CLSIDFromProgID(comClass.programmaticId, &id);
  if (FAILED(found)) return found;
  return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.ReceiveVoid());
}

class ActivationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // Nothing may be found in the registry.
    HMODULE component = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(component, nullptr);
    ASSERT_EQ(EntryPoint<Unregister>(component, "DllUnregisterServer")(), S_OK);
    FreeLibrary(component);
  }
  void TearDown() override {
    HMODULE component = LoadLibraryW(ComponentFile().c_str());
    EXPECT_EQ(EntryPoint<Unregister>(component, "DllRegisterServer")(), S_OK);
    FreeLibrary(component);
  }
};

TEST_F(ActivationTest, WithoutRegistrationAndContextThereAreNoClasses) {
  for (const ComClass& comClass : Classes()) {
    ComPtr<IDispatch> object;
    EXPECT_TRUE(FAILED(Create(comClass, object))) << ToUtf8(comClass.name);
  }
}

void ExpectEveryClassCreatable() {
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    ComPtr<IDispatch> object;
    EXPECT_EQ(Create(comClass, object), S_OK);
    ASSERT_TRUE(object);
    UINT count = 0;
    EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
  }
}

TEST_F(ActivationTest, TheComponentsManifestMakesEveryClassCreatable) {
  for (const wchar_t* file : {L"qorCred.manifest", L"qorCred.dll"}) {
    SCOPED_TRACE(ToUtf8(file));
    const ActiveContext context(TestFolder() + file);
    ASSERT_TRUE(context.active()) << GetLastError();
    ExpectEveryClassCreatable();
  }
}

/// A new folder below the one for temporary files, with copies of the named files.
class CopiedFiles {
 public:
  explicit CopiedFiles(std::initializer_list<const wchar_t*> names) {
    std::array<wchar_t, MAX_PATH> temporary{};
    GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
    folder_ = std::wstring(temporary.data()) + L"qorCred" + std::to_wstring(GetCurrentProcessId());
    EXPECT_NE(CreateDirectoryW(folder_.c_str(), nullptr), FALSE);
    for (const wchar_t* name : names) {
      files_.push_back(folder_ + L"\\" + name);
      EXPECT_NE(CopyFileW((TestFolder() + name).c_str(), files_.back().c_str(), TRUE), FALSE);
    }
  }
  ~CopiedFiles() {
    for (const std::wstring& file : files_) DeleteFileW(file.c_str());
    RemoveDirectoryW(folder_.c_str());
  }
  CopiedFiles(const CopiedFiles&) = delete;
  CopiedFiles& operator=(const CopiedFiles&) = delete;

  [[nodiscard]] const std::wstring& file(std::size_t at) const { return files_.at(at); }

 private:
  std::wstring folder_;
  std::vector<std::wstring> files_;
};

TEST_F(ActivationTest, AnApplicationNeedsNothingButTheDllBesideItsManifest) {
  const CopiedFiles copies({L"application.manifest", L"qorCred.dll"});
  const ActiveContext context(copies.file(0));
  ASSERT_TRUE(context.active()) << GetLastError();
  ExpectEveryClassCreatable();
  CoFreeUnusedLibrariesEx(0, 0);
}

TEST_F(ActivationTest, TheComponentsManifestLetsEveryInterfaceCrossApartments) {
  const std::wstring manifest = TestFolder() + L"qorCred.manifest";
  const ActiveContext context(manifest);
  ASSERT_TRUE(context.active());
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    ComPtr<IDispatch> object;
    ASSERT_EQ(Create(comClass, object), S_OK);
    Passage passage(false, object.get(), comClass.dispinterface);
    ASSERT_EQ(passage.sent(), S_OK);
    HRESULT received = E_UNEXPECTED;
    Answer answer;
    ASSERT_EQ(RunInApartment(COINIT_MULTITHREADED,
                             [&] {
                               // A context is active for its thread only.
                               const ActiveContext ofThread(manifest);
                               ComPtr<IDispatch> proxy;
                               received = passage.Receive(proxy);
                               if (proxy) answer = TextThrough(proxy.get());
                             }),
              S_OK);
    ASSERT_EQ(received, S_OK);
    EXPECT_EQ(answer.code, S_OK);
    EXPECT_EQ(TextIn(answer.result), L"500");
  }
}

TEST_F(ActivationTest, AnApplicationsManifestThatNamesTheComponentDoesToo) {
  const ActiveContext context(TestFolder() + L"application.manifest");
  ASSERT_TRUE(context.active()) << GetLastError();
  ExpectEveryClassCreatable();
}

}  // namespace
}  // namespace qortest
