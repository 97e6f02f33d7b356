// A user who answers one message box.
#pragma once

#include <windows.h>

#include <string>
#include <thread>
#include <vector>

namespace qortest {

/// What a message box showed.
struct SeenBox {
  bool wasFound = false;
  std::wstring text;
  std::vector<int> buttons;  ///< identifiers of the usual ones that it has, in ascending order
  HWND owner = nullptr;
  bool wasOwnerEnabled = false;
  int windowsTakingInput = 0;  ///< visible ones of the thread beside the box
};

/// While it lives, another thread waits for a message box of this thread with the title, reads it
/// and presses a button. Gives up after ten seconds without one.
class AnsweredBox {
 public:
  AnsweredBox(std::wstring title, int button);
  ~AnsweredBox();
  AnsweredBox(const AnsweredBox&) = delete;
  AnsweredBox& operator=(const AnsweredBox&) = delete;

  /// What was there. Ends the waiting.
  [[nodiscard]] const SeenBox& Seen();

 private:
  void Answer();

  std::wstring title_;
  int button_;
  SeenBox seen_;
  HANDLE shown_;
  HHOOK hook_;
  std::thread user_;
};

}  // namespace qortest
