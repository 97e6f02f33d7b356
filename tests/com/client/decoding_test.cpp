// Base64 through the component: the system's ANSI code page on the way in and out.
#include <utility>
#include <vector>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

/// The text of these bytes in the system's ANSI code page.
std::wstring FromAnsi(const std::string& bytes) {
  std::vector<wchar_t> text(bytes.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()),
                                       text.data(), static_cast<int>(text.size()));
  return {text.data(), static_cast<std::size_t>(size)};
}

class Decoding : public ComTest {
 protected:
  static std::wstring Decoded(const wchar_t* controllerName, const std::wstring& text) {
    const Client controller(controllerName);
    const Outcome outcome = controller.Call(L"pbBase64Dec", Variant(text));
    EXPECT_EQ(outcome.code, S_OK);
    return TextIn(outcome.result);
  }
};

TEST_F(Decoding, GivesBytesBeyondAsciiInTheSystemsCodePage) {
  const std::pair<const wchar_t*, std::string> texts[] = {
      {L"6fDg", "\xE9\xF0\xE0"},
      {L"SOlsbG8=", "H\xE9llo"},
      {L"/9/A", "\xFF\xDF\xC0"},
  };
  for (const auto& [text, bytes] : texts) {
    const std::wstring expected = FromAnsi(bytes);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(Decoded(kCredential, text), expected);
    EXPECT_EQ(Decoded(kDirCode, text), expected);
  }
}

TEST_F(Decoding, GivesZerosInsideOfATextToo) {
  EXPECT_EQ(Decoded(kCredential, L"QQBC"), std::wstring(L"A\0B", 3));
}

TEST_F(Decoding, RaisesAnOverflowForALetterThatTheAlphabetDoesNotHave) {
  // One that the code page has, and one that it has not.
  for (const wchar_t* text : {L"\x00E9TAw", L"\x4E2DTAw"}) {
    const Client controller(kCredential);
    const Outcome outcome = controller.Call(L"pbBase64Dec", Variant(text));
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.raised, static_cast<HRESULT>(0x800A0006));
    EXPECT_EQ(outcome.description, L"Overflow");
  }
}

}  // namespace
}  // namespace qortest
