// What the system gives to the controllers: dates in the user's form, the ANSI code page, events.
#include "com/windows_host.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "com/text.h"
#include "frame/date.h"
#include "frame/runtime_error.h"

namespace qortest {
namespace {

using qorcred::Date;
using qorcred::com::TheHost;
using qorcred::com::ToUtf8;

SYSTEMTIME Afternoon() {
  SYSTEMTIME time{};
  time.wYear = 2026;
  time.wMonth = 1;
  time.wDay = 31;
  time.wHour = 14;
  time.wMinute = 5;
  time.wSecond = 9;
  return time;
}

std::string UsersDate(const SYSTEMTIME& time) {
  std::array<wchar_t, 80> text{};
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text.data(),
                 static_cast<int>(text.size()));
  return ToUtf8(text.data());
}

std::string UsersTime(const SYSTEMTIME& time) {
  std::array<wchar_t, 80> text{};
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, text.data(),
                 static_cast<int>(text.size()));
  return ToUtf8(text.data());
}

TEST(WindowsHostDates, HaveTheUsersFormAndNoTimeAtMidnight) {
  const SYSTEMTIME time = Afternoon();
  const Date afternoon = qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
  EXPECT_EQ(TheHost().DateText(afternoon), UsersDate(time) + " " + UsersTime(time));
  EXPECT_EQ(TheHost().DateText(qorcred::DayOf(afternoon)), UsersDate(time));
}

TEST(WindowsHostDates, FollowTheUsersSettings) {
  std::array<wchar_t, 80> before{};
  ASSERT_NE(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, before.data(),
                           static_cast<int>(before.size())),
            0);
  ASSERT_NE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"dd.MM.yyyy"), FALSE);
  EXPECT_EQ(TheHost().DateText(qorcred::FromCivil({2026, 1, 31})), "31.01.2026");
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, before.data());
}

TEST(WindowsHostClock, IsTheLocalTimeToTheSecond) {
  SYSTEMTIME before{};
  SYSTEMTIME after{};
  GetLocalTime(&before);
  const qorcred::CivilTime now = qorcred::ToCivil(TheHost().Now());
  GetLocalTime(&after);
  const auto serial = [](const SYSTEMTIME& time) {
    return qorcred::FromCivil(
               {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond})
        .serial;
  };
  EXPECT_GE(qorcred::FromCivil(now).serial, serial(before));
  EXPECT_LE(qorcred::FromCivil(now).serial, serial(after));
}

TEST(WindowsHostCodePage, IsTheSystems) {
  std::vector<std::uint8_t> bytes;
  std::string ansi;
  for (int byte = 1; byte < 256; ++byte) {
    // Only bytes that are characters of their own in this code page.
    if (IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE) continue;
    bytes.push_back(static_cast<std::uint8_t>(byte));
    ansi.push_back(static_cast<char>(byte));
  }
  std::wstring wide(ansi.size(), L'\0');
  const int length = MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()),
                                         wide.data(), static_cast<int>(wide.size()));
  wide.resize(static_cast<std::size_t>(length));
  EXPECT_EQ(TheHost().AnsiToText(bytes), ToUtf8(wide));
  EXPECT_EQ(TheHost().AnsiToText({}), "");
  EXPECT_EQ(TheHost().TextToAnsi("Pello RT"),
            (std::vector<std::uint8_t>{'P', 'e', 'l', 'l', 'o', ' ', 'R', 'T'}));
}

TEST(WindowsHostCodePage, TakesEveryCharacterThatItHas) {
  const std::wstring letters = L"\x00E9\x00F1\x00E0\x00DF";
  std::vector<std::uint8_t> expected(letters.size() * 2);
  const int size = WideCharToMultiByte(CP_ACP, 0, letters.data(), static_cast<int>(letters.size()),
                                       reinterpret_cast<char*>(expected.data()),
                                       static_cast<int>(expected.size()), nullptr, nullptr);
  ASSERT_GT(size, 0);
  expected.resize(static_cast<std::size_t>(size));
  EXPECT_EQ(TheHost().TextToAnsi(ToUtf8(letters)), expected);
}

TEST(WindowsHostComponents, AnUnknownOneCannotBeCreated) {
  try {
    (void)TheHost().CreateComponent("qorNone.clsNothing");
    FAIL() << "nothing was raised";
  } catch (const qorcred::RuntimeError& failure) {
    EXPECT_EQ(failure.number(), qorcred::ErrorNumber::kCannotCreateComponent);
    EXPECT_NE(failure.description().find("qorNone.clsNothing"), std::string::npos);
  }
}

int timesSeen = 0;

// A window's procedure has a calling convention of its own in 32 bits.
LRESULT CALLBACK CountMessages(HWND window, UINT message, WPARAM word, LPARAM number) {
  if (message == WM_APP) ++timesSeen;
  return DefWindowProcW(window, message, word, number);
}

TEST(WindowsHostEvents, WaitingOnesRunAndTheEndStaysWaiting) {
  timesSeen = 0;
  WNDCLASSW description{};
  description.lpfnWndProc = CountMessages;
  description.lpszClassName = L"qorCredEvents";
  ASSERT_NE(RegisterClassW(&description), 0);
  HWND window = CreateWindowExW(0, L"qorCredEvents", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  PostMessageW(window, WM_APP, 0, 0);
  PostMessageW(window, WM_APP, 0, 0);
  TheHost().LetEventsRun();
  EXPECT_EQ(timesSeen, 2);

  PostQuitMessage(7);
  TheHost().LetEventsRun();
  MSG message{};
  ASSERT_NE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), FALSE);
  EXPECT_EQ(message.wParam, 7U);
  DestroyWindow(window);
  UnregisterClassW(L"qorCredEvents", nullptr);
}

}  // namespace
}  // namespace qortest
