// The directory-code screen of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dircodes/cls_dir_code.h"
#include "host/cli/store_session.h"
#include "host/screens/directory_code_screen.h"

namespace qorhost {

/// Opens the screen as the application does: fills its lists and limits, and lets the selection of
/// a code load it. The session must outlive the desk. Raises FailureError when a list cannot be
/// filled.
class DirCodeDesk {
 public:
  DirCodeDesk(StoreSession& session, std::int32_t unitKey);
  ~DirCodeDesk();
  DirCodeDesk(const DirCodeDesk&) = delete;
  DirCodeDesk& operator=(const DirCodeDesk&) = delete;

  [[nodiscard]] ScreenModel& screen() { return *screen_; }
  [[nodiscard]] ListModel& codes() { return screen_->List("cbodirectorycode"); }
  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }

  /// Selects a code, by its number or as in "rid:17", which loads it into the edit controls;
  /// returns its RID. Raises UsageError when the unit has no such code or several.
  std::int32_t Select(const std::string& choice);
  /// Fills the list of codes again and selects the row `rid`, when there is one.
  void RefreshCodes(std::int32_t rid = 0);
  /// Types a code. Raises UsageError for one that the box does not take.
  void TypeCode(std::string_view option, const std::string& code);

  // The operations, on this screen and unit. The session's log tells what happened on the way.
  bool SaveNew(std::int32_t* newRid);
  bool SaveEdited();
  bool Renumber(const std::string& code);
  bool Delete(std::int32_t rid);

  /// Whether the last operation changed a row: a save answers True also when someone else has
  /// changed the code meanwhile.
  [[nodiscard]] bool changedRows() const { return changedRows_; }

 private:
  void Open();
  void RequireNoFailure(std::string_view doing);
  template <typename Operation>
  bool Watch(Operation&& operation);

  StoreSession& session_;
  std::int32_t unitKey_;
  std::shared_ptr<ScreenModel> screen_;
  qorcred::clsDirCode controller_;
  Subscription codeSelected_;
  bool changedRows_ = false;
};

/// "0101 (RID 5)"
[[nodiscard]] std::string CodeName(DirCodeDesk& desk, std::int32_t index);

}  // namespace qorhost
