// A process whose ANSI code page is UTF-8, which its manifest says: Base64 goes through the code
// page that the process has, whatever most systems have.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "com/text.h"
#include "com/windows_host.h"
#include "tests/com/support/client.h"
#include "tests/com/support/component.h"

namespace qortest {
namespace {

using qorcred::com::TheHost;
using qorcred::com::ToUtf8;

using Bytes = std::vector<std::uint8_t>;

constexpr const wchar_t* kClassesThatDecode[] = {L"qorCred.clsCredential", L"qorCred.clsDirCode"};

/// A text and its bytes in this process's code page.
struct EncodedText {
  std::wstring text;
  Bytes bytes;
};

// Of two, three and four bytes a character.
const EncodedText kTexts[] = {
    {L"\u00E9", {0xC3, 0xA9}},
    {L"\u65E5\u672C", {0xE6, 0x97, 0xA5, 0xE6, 0x9C, 0xAC}},
    {L"A\U0001F600z", {'A', 0xF0, 0x9F, 0x98, 0x80, 'z'}},
};

class Utf8CodePage : public testing::Test {
 protected:
  // Without its manifest the program could not tell the process's code page from another.
  void SetUp() override { ASSERT_EQ(GetACP(), static_cast<UINT>(CP_UTF8)); }
  void TearDown() override { EXPECT_EQ(CanUnload(), S_OK); }

  static Outcome Decode(const wchar_t* programmaticId, const wchar_t* text) {
    return Client(programmaticId).Call(L"pbBase64Dec", Variant(text));
  }
};

TEST_F(Utf8CodePage, IsTheOneThatDecodedBytesAreReadIn) {
  const std::pair<const wchar_t*, std::wstring> texts[] = {
      {L"w6k=", L"\u00E9"},
      {L"5pel5pys", L"\u65E5\u672C"},
      {L"SMOpbGxv", L"H\u00E9llo"},
      {L"QfCfmIB6", L"A\U0001F600z"},
  };
  for (const wchar_t* programmaticId : kClassesThatDecode) {
    for (const auto& [text, expected] : texts) {
      SCOPED_TRACE(ToUtf8(programmaticId) + " " + ToUtf8(text));
      const Outcome outcome = Decode(programmaticId, text);
      ASSERT_EQ(outcome.code, S_OK);
      EXPECT_EQ(TextIn(outcome.result), expected);
    }
  }
}

// A letter outside the alphabet has more bytes here than units in the text. The bytes that it has
// too many are out of range, unless a group begins with one of them: that overflows.
TEST_F(Utf8CodePage, IsTheOneThatATextIsTakenIn) {
  constexpr auto kOverflow = static_cast<HRESULT>(0x800A0006);
  constexpr auto kOutOfRange = static_cast<HRESULT>(0x800A0009);
  const std::pair<const wchar_t*, HRESULT> texts[] = {
      {L"T\u00E9Aw", kOutOfRange},     // 54 C3 A9 41, 77
      {L"T\u65E5Aw", kOutOfRange},     // 54 E6 97 A5, 41 77
      {L"AAA\u00E9AAAA", kOverflow},   // 41 41 41 C3, A9 ...
      {L"AAA\u65E5AAAA", kOverflow},   // 41 41 41 E6, 97 ...
      {L"AA\u00E9AAAAA", kOutOfRange}  // 41 41 C3 A9, 41 41 41 41, 41
  };
  for (const wchar_t* programmaticId : kClassesThatDecode) {
    for (const auto& [text, raised] : texts) {
      SCOPED_TRACE(ToUtf8(programmaticId) + " " + ToUtf8(text));
      const Outcome outcome = Decode(programmaticId, text);
      EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
      EXPECT_EQ(outcome.raised, raised);
    }
  }
}

TEST_F(Utf8CodePage, IsTheControllersHosts) {
  for (const auto& [text, bytes] : kTexts) {
    const std::string utf8 = ToUtf8(text);
    SCOPED_TRACE(utf8);
    EXPECT_EQ(TheHost().AnsiToText(bytes), utf8);
    EXPECT_EQ(TheHost().TextToAnsi(utf8), bytes);
  }
}

}  // namespace
}  // namespace qortest
