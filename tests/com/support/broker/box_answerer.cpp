#include "tests/com/support/broker/box_answerer.h"

#include <array>
#include <cstddef>

namespace qortest {

namespace {

// The one that lives; a hook is told of no object.
BoxAnswerer* current = nullptr;

// The window class of dialogs, to which message boxes belong.
constexpr wchar_t kDialogClass[] = L"#32770";

// Posted to a box; it arrives when the box waits for the user. Dialogs make nothing of it.
constexpr UINT kIsReady = WM_APP;

std::wstring TextOf(HWND window) {
  const auto length = static_cast<std::size_t>(GetWindowTextLengthW(window));
  std::wstring text(length + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool HasClass(HWND window, const wchar_t* name) {
  std::array<wchar_t, 64> found{};
  GetClassNameW(window, found.data(), static_cast<int>(found.size()));
  return lstrcmpiW(found.data(), name) == 0;
}

std::wstring NameOf(HICON icon) {
  struct KnownIcon {
    LPCWSTR resource;
    const wchar_t* name;
  };
  const std::array<KnownIcon, 4> known{{{IDI_INFORMATION, L"information"},
                                        {IDI_WARNING, L"warning"},
                                        {IDI_QUESTION, L"question"},
                                        {IDI_ERROR, L"error"}}};
  for (const KnownIcon& candidate : known) {
    if (icon != nullptr && LoadIconW(nullptr, candidate.resource) == icon) return candidate.name;
  }
  return L"none";
}

std::wstring ButtonsOf(HWND box) {
  struct KnownButton {
    int id;
    const wchar_t* name;
  };
  constexpr std::array<KnownButton, 7> kKnown{{{IDOK, L"OK"},
                                               {IDYES, L"Yes"},
                                               {IDNO, L"No"},
                                               {IDABORT, L"Abort"},
                                               {IDRETRY, L"Retry"},
                                               {IDIGNORE, L"Ignore"},
                                               {IDCANCEL, L"Cancel"}}};
  std::wstring names;
  for (const KnownButton& known : kKnown) {
    const HWND button = GetDlgItem(box, known.id);
    if (button == nullptr || (GetWindowLongW(button, GWL_STYLE) & WS_VISIBLE) == 0) continue;
    if (!names.empty()) names += L' ';
    names += known.name;
  }
  return names;
}

// A message box has one static control for its icon and one for its text.
SeenBox Look(HWND box) {
  SeenBox seen{TextOf(box), {}, L"none", ButtonsOf(box)};
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (!HasClass(child, L"Static")) continue;
    if ((GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
      seen.icon = NameOf(reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0)));
    } else {
      seen.text += TextOf(child);
    }
  }
  return seen;
}

}  // namespace

BoxAnswerer::BoxAnswerer(int button, BoxListener listener)
    : changes_(SetWindowsHookExW(WH_CBT, OnWindowChange, nullptr, GetCurrentThreadId())),
      messages_(SetWindowsHookExW(WH_GETMESSAGE, OnMessage, nullptr, GetCurrentThreadId())),
      button_(button),
      listener_(std::move(listener)) {
  current = this;
}

BoxAnswerer::~BoxAnswerer() {
  for (HHOOK hook : {changes_, messages_}) {
    if (hook != nullptr) UnhookWindowsHookEx(hook);
  }
  if (current == this) current = nullptr;
}

LRESULT CALLBACK BoxAnswerer::OnWindowChange(int code, WPARAM window, LPARAM details) {
  BoxAnswerer* const self = current;
  // A window handle comes as a number.
  const auto box = reinterpret_cast<HWND>(window);
  if (code == HCBT_ACTIVATE && self != nullptr && HasClass(box, kDialogClass)) self->Notice(box);
  return CallNextHookEx(nullptr, code, window, details);
}

LRESULT CALLBACK BoxAnswerer::OnMessage(int code, WPARAM isRemoved, LPARAM message) {
  BoxAnswerer* const self = current;
  const MSG& arrived = *reinterpret_cast<const MSG*>(message);
  if (code == HC_ACTION && isRemoved == PM_REMOVE && self != nullptr &&
      arrived.hwnd == self->noticed_ && arrived.message == kIsReady) {
    self->Answer(arrived.hwnd);
  }
  return CallNextHookEx(nullptr, code, isRemoved, message);
}

void BoxAnswerer::Notice(HWND box) {
  // A box can be activated more than once, the first time before there is anything in it.
  if (box == noticed_) return;
  noticed_ = box;
  PostMessageW(box, kIsReady, 0, 0);
}

void BoxAnswerer::Answer(HWND box) {
  listener_(Look(box));
  PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button_), 0);
}

}  // namespace qortest
