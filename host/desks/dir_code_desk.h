// The directory-code screen of one unit with its controller, worked as an operator works it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "dircodes/cls_dir_code.h"
#include "host/desks/desk_work.h"
#include "host/desks/outcome.h"
#include "host/desks/session.h"
#include "host/screens/dir_code_screen.h"

namespace qorhost {

/// The code that is selected in the list.
struct ShownDirCode {
  std::string entry;  ///< as the list shows it: "0101"
  std::int32_t rid = 0;
};

/// What a save of a new code tells: its row, 0 when there is none.
struct SavedDirCode : Outcome {
  std::int32_t rid = 0;

  [[nodiscard]] bool isStored() const { return done() && rid > 0; }
};

/// The same with the stored code as the screen shows it then.
struct AddedDirCode : SavedDirCode {
  ShownDirCode code;
  std::string number;  ///< as it is stored: "101"
};

/// Opens the screen as the application does: fills its lists and limits, and lets the selection of
/// a code load it. The session must outlive the desk. Raises FailureError when a list cannot be
/// filled.
class DirCodeDesk {
 public:
  DirCodeDesk(DeskSession& session, std::int32_t unitKey);
  ~DirCodeDesk();
  DirCodeDesk(const DirCodeDesk&) = delete;
  DirCodeDesk& operator=(const DirCodeDesk&) = delete;

  [[nodiscard]] ScreenModel& screen() { return *screen_; }
  [[nodiscard]] ListModel& codes() { return screen_->List("cbodirectorycode"); }
  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }

  /// Selects a code, by its number or as in "rid:17", which loads it into the edit controls. Raises
  /// InputFault when the unit has no such code or several, FailureError when it cannot be loaded.
  ShownDirCode Select(std::string_view choice);
  /// Selects "<Add New>" and empties what a loaded code has left: the screen is as it opened,
  /// with the period that the unit gives new codes. Raises FailureError when that cannot be read.
  void StartNew();
  /// The code that is selected.
  [[nodiscard]] ShownDirCode Shown();
  /// The number of the selected code as it was stored when it was loaded.
  [[nodiscard]] qorcred::Value StoredCode() const { return shown_.Cell("DIRECTORYCODE"); }
  /// Fills the list of codes again and selects the row `rid`, when there is one.
  void RefreshCodes(std::int32_t rid = 0);
  /// Types a code. Raises InputFault for one that the box does not take, and for a number
  /// that is no whole one.
  void TypeCode(const std::string& given);

  // The operations, on this screen and unit, each a unit of work. A change is stale when someone
  // else has changed or deleted the code meanwhile; after one that was done the code is loaded
  // again.

  /// Leaves the list of codes as it is: many saves, one after the other, need no more.
  SavedDirCode SaveNew();
  /// Saves a new code and, when it is stored, shows it in the list.
  AddedDirCode AddCode();
  /// Nothing is run, and no step queued, when the screen shows the code as it was loaded.
  Outcome SaveEdited();
  /// Gives the code that is selected the number that was typed; nothing is run when it has that.
  Outcome Renumber();
  /// Deletes the code that is selected, and takes it from its tenants. Raises FailureError when
  /// none is.
  Outcome Delete();

 private:
  void Open();
  void StartController();
  [[nodiscard]] std::int32_t Find(std::string_view choice);
  void FillLists();
  bool ShowRow(std::int32_t rid);
  [[nodiscard]] TextModel& codeBox() { return screen_->Box("txtdirectorycode"); }
  [[nodiscard]] Outcome Work(std::string what, const std::function<Outcome()>& run);
  [[nodiscard]] Outcome Change(std::string_view what, const std::function<bool()>& change);
  [[nodiscard]] Outcome SaveOnce(std::int32_t& rid);
  [[nodiscard]] bool IsAsLoaded() const;

  DeskSession& session_;
  std::int32_t unitKey_;
  std::shared_ptr<ScreenModel> screen_;
  std::optional<Controlled<qorcred::clsDirCode>> controller_;
  ShownState shown_;
  std::optional<ScreenSnapshot> loaded_;  // by Select(), until an operation changes the store
  Subscription codeSelected_;
};

}  // namespace qorhost
