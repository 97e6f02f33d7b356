// What the component's file tells of itself to installers and to the file manager.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "com/text.h"
#include "tests/com/component/component_file.h"

namespace qortest {
namespace {

using qorcred::com::ToUtf8;

constexpr std::string_view kVersion = QORCRED_VERSION;

/// The version resource of the component.
class VersionResource : public testing::Test {
 protected:
  void SetUp() override {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(ComponentFile().c_str(), &ignored);
    ASSERT_NE(size, 0U) << "no version resource in " << ToUtf8(ComponentFile());
    resource_.resize(size);
    ASSERT_NE(GetFileVersionInfoW(ComponentFile().c_str(), 0, size, resource_.data()), FALSE);
  }

  // A block of the resource and its size, in bytes or, of a text, in units; null when it has none.
  [[nodiscard]] const void* Block(const std::wstring& path, UINT& size) const {
    void* block = nullptr;
    const BOOL found = VerQueryValueW(resource_.data(), path.c_str(), &block, &size);
    return found == FALSE ? nullptr : block;
  }

  // A text in the one language that the resource names.
  [[nodiscard]] std::string Text(const std::wstring& name) const {
    UINT size = 0;
    const auto* text =
        static_cast<const wchar_t*>(Block(L"\\StringFileInfo\\040904B0\\" + name, size));
    if (text == nullptr) return "(none)";
    return ToUtf8(text);
  }

 private:
  std::vector<std::byte> resource_;
};

// "1.2.3.0" of the numbers that installers compare.
std::string Number(DWORD high, DWORD low) {
  return std::to_string(HIWORD(high)) + "." + std::to_string(LOWORD(high)) + "." +
         std::to_string(HIWORD(low)) + "." + std::to_string(LOWORD(low));
}

TEST_F(VersionResource, HasTheVersionAsNumbers) {
  UINT size = 0;
  const auto* info = static_cast<const VS_FIXEDFILEINFO*>(Block(L"\\", size));
  ASSERT_NE(info, nullptr);
  ASSERT_EQ(size, sizeof *info);
  EXPECT_EQ(info->dwSignature, static_cast<DWORD>(VS_FFI_SIGNATURE));
  const std::string expected = std::string(kVersion) + ".0";
  EXPECT_EQ(Number(info->dwFileVersionMS, info->dwFileVersionLS), expected);
  EXPECT_EQ(Number(info->dwProductVersionMS, info->dwProductVersionLS), expected);
  EXPECT_EQ(info->dwFileType, static_cast<DWORD>(VFT_DLL));
  EXPECT_EQ(info->dwFileFlags & info->dwFileFlagsMask, 0U) << "a debug or patched build";
}

TEST_F(VersionResource, HasTheVersionAndTheNamesAsTexts) {
  EXPECT_EQ(Text(L"FileVersion"), kVersion);
  EXPECT_EQ(Text(L"ProductVersion"), kVersion);
  EXPECT_EQ(Text(L"ProductName"), "qorCred");
  EXPECT_EQ(Text(L"FileDescription"), "qorCred controllers");
  EXPECT_EQ(Text(L"InternalName"), "qorCred");
  EXPECT_EQ(Text(L"OriginalFilename"), "qorCred.dll");
}

TEST_F(VersionResource, NamesTheLanguageThatItsTextsAreIn) {
  UINT size = 0;
  const auto* languages = static_cast<const WORD*>(Block(L"\\VarFileInfo\\Translation", size));
  ASSERT_NE(languages, nullptr);
  ASSERT_EQ(size, 2 * sizeof(WORD));
  EXPECT_EQ(languages[0], 0x0409);
  EXPECT_EQ(languages[1], 0x04B0);
}

}  // namespace
}  // namespace qortest
