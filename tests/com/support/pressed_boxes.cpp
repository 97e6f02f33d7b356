#include "tests/com/support/pressed_boxes.h"

#include <initializer_list>

namespace qortest {

namespace {

long pressed = 0;

LRESULT CALLBACK PressButton(int code, WPARAM first, LPARAM second) {
  if (code == HCBT_ACTIVATE) {
    const auto box = reinterpret_cast<HWND>(first);
    for (const int button : {IDOK, IDYES}) {
      const HWND control = GetDlgItem(box, button);
      if (control == nullptr) continue;
      ++pressed;
      PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(control));
      break;
    }
  }
  return CallNextHookEx(nullptr, code, first, second);
}

}  // namespace

PressedBoxes::PressedBoxes()
    : hook_(SetWindowsHookExW(WH_CBT, PressButton, nullptr, GetCurrentThreadId())) {}

PressedBoxes::~PressedBoxes() {
  UnhookWindowsHookEx(hook_);
}

long PressedBoxes::Count() {
  return pressed;
}

}  // namespace qortest
