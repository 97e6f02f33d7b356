// The directory-code controller on a real store, with its screens.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dircodes/cls_dir_code.h"
#include "host/screens/dir_code_screen.h"
#include "host/unit/unit_code.h"
#include "tests/host/end_to_end/store_surroundings.h"
#include "tests/support/fault_gate.h"

namespace qortest {

/// Calls on the screen pass the gate as well. The unit has codes of up to four digits.
class DirCodeBuilding : public StoreSurroundings {
 public:
  DirCodeBuilding();

  [[nodiscard]] qorcred::clsDirCode& controller() { return *controller_; }
  [[nodiscard]] qorhost::ScreenModel& screen() { return *screen_; }

  /// A code in the store as the unit has it, in the state `state`; returns its RID.
  std::int32_t Store(std::string_view code, int state = 0);
  /// Types a new code with a phone number.
  void TypeNew(std::string_view code);
  /// Opens the stored code in the row `rid` for editing.
  void Open(std::int32_t rid);
  bool SaveNew(std::int32_t* rid = nullptr);
  bool SaveEdited();
  bool Delete(std::int32_t rid, bool ask);
  bool Merge(std::string_view mode, const qorhost::UnitCode& code, std::int32_t rid = 0);
  void TellFirmware(std::string firmware);

  /// Code, previous code and state of every row, by code.
  [[nodiscard]] std::string Codes();
  /// Kind, row and code of every step in the queue.
  [[nodiscard]] std::string Steps();
  /// Every row of the tables that the controller writes to.
  [[nodiscard]] std::string Snapshot();

 private:
  std::shared_ptr<qorhost::ScreenModel> screen_;
  std::unique_ptr<qorcred::clsDirCode> controller_;
};

}  // namespace qortest
