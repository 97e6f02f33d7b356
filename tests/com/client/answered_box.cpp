#include "tests/com/client/answered_box.h"

#include <array>
#include <utility>

namespace qortest {

namespace {

constexpr DWORD kPatience = 10'000;  // milliseconds
constexpr const wchar_t* kDialogClass = L"#32770";

// Signalled when this process shows a dialog; null while nobody waits for one.
HANDLE dialogShown = nullptr;

std::wstring ClassOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

// Runs on the thread that shows its windows.
LRESULT CALLBACK NoticeDialog(int code, WPARAM first, LPARAM second) {
  if (code == HCBT_ACTIVATE && dialogShown != nullptr &&
      ClassOf(reinterpret_cast<HWND>(first)) == kDialogClass) {
    SetEvent(dialogShown);
  }
  return CallNextHookEx(nullptr, code, first, second);
}

// The longest text of the box's labels; the icon's has none.
BOOL CALLBACK KeepLabel(HWND window, LPARAM found) {
  if (ClassOf(window) != L"Static") return TRUE;
  std::array<wchar_t, 1024> buffer{};
  SendMessageW(window, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
  auto& text = *reinterpret_cast<std::wstring*>(found);
  if (text.size() < std::wstring(buffer.data()).size()) text = buffer.data();
  return TRUE;
}

struct OtherWindows {
  HWND box;
  int takingInput = 0;
};

BOOL CALLBACK CountTakingInput(HWND window, LPARAM given) {
  auto& others = *reinterpret_cast<OtherWindows*>(given);
  const bool takesInput = IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
  if (window != others.box && takesInput) ++others.takingInput;
  return TRUE;
}

}  // namespace

AnsweredBox::AnsweredBox(std::wstring title, int button)
    : title_(std::move(title)),
      button_(button),
      shown_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      hook_(SetWindowsHookExW(WH_CBT, NoticeDialog, nullptr, GetCurrentThreadId())) {
  dialogShown = shown_;
  user_ = std::thread([this] { Answer(); });
}

AnsweredBox::~AnsweredBox() {
  (void)Seen();
  dialogShown = nullptr;
  UnhookWindowsHookEx(hook_);
  CloseHandle(shown_);
}

const SeenBox& AnsweredBox::Seen() {
  if (user_.joinable()) user_.join();
  return seen_;
}

void AnsweredBox::Answer() {
  if (WaitForSingleObject(shown_, kPatience) != WAIT_OBJECT_0) return;
  const HWND box = FindWindowW(kDialogClass, title_.c_str());
  if (box == nullptr) return;
  seen_.wasFound = true;
  EnumChildWindows(box, KeepLabel, reinterpret_cast<LPARAM>(&seen_.text));
  for (const int button : {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO}) {
    if (GetDlgItem(box, button) != nullptr) seen_.buttons.push_back(button);
  }
  seen_.owner = GetWindow(box, GW_OWNER);
  seen_.wasOwnerEnabled = seen_.owner != nullptr && IsWindowEnabled(seen_.owner) != FALSE;
  OtherWindows others{box};
  EnumThreadWindows(GetWindowThreadProcessId(box, nullptr), CountTakingInput,
                    reinterpret_cast<LPARAM>(&others));
  seen_.windowsTakingInput = others.takingInput;
  PostMessageW(box, WM_COMMAND, MAKEWPARAM(button_, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(box, button_)));
}

}  // namespace qortest
