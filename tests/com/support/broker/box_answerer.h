// Presses a button of every message box that this thread shows.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace qortest {

/// A message box as its window shows it.
struct SeenBox {
  std::wstring title;
  std::wstring text;
  std::wstring icon;     ///< "information", "warning", "question", "error" or "none"
  std::wstring buttons;  ///< "OK", "Yes No", ...
};

using BoxListener = std::function<void(const SeenBox& box)>;

/// While it lives, a message box of this thread is reported and then answered with `button` (IDOK,
/// IDYES, ...) as soon as it takes messages. One at a time in a process.
class BoxAnswerer {
 public:
  BoxAnswerer(int button, BoxListener listener);
  ~BoxAnswerer();
  BoxAnswerer(const BoxAnswerer&) = delete;
  BoxAnswerer& operator=(const BoxAnswerer&) = delete;

  [[nodiscard]] bool IsActive() const { return changes_ != nullptr && messages_ != nullptr; }

 private:
  static LRESULT CALLBACK OnWindowChange(int code, WPARAM window, LPARAM details);
  static LRESULT CALLBACK OnMessage(int code, WPARAM isRemoved, LPARAM message);
  void Notice(HWND box);
  void Answer(HWND box);

  HHOOK changes_;
  HHOOK messages_;
  int button_;
  BoxListener listener_;
  HWND noticed_ = nullptr;
};

}  // namespace qortest
