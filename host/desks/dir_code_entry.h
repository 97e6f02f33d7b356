// What an operator types into the directory-code screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/desks/dir_code_fields.h"

namespace qorhost {

class DirCodeDesk;
class ScreenModel;

/// What is typed into the screen or ticked on it; nothing given leaves a control as it is. Whether
/// the texts are numbers and complete is the controller's to say.
struct DirCodeEntry {
  std::optional<std::string> phone;
  std::optional<std::string> extension;
  std::optional<std::string> delay;
  std::optional<std::string> dnd;  ///< a schedule's id or name
  bool noDnd = false;
  std::optional<std::string> forwardPhone;
  std::optional<std::string> forwardExtension;
  std::optional<std::string> forwardSchedule;  ///< a schedule's id or name
  std::optional<std::string> forwardDelay;
  bool noForwarding = false;
  std::optional<std::string> from;  ///< a date, or "none"
  std::optional<std::string> to;
  std::optional<bool> active;
  std::optional<std::string> displayName;
  std::optional<bool> showName;
  std::optional<bool> showCode;

  /// Whether it leaves every control as it is.
  [[nodiscard]] bool IsEmpty() const;
};

/// A save would store what begins with another text as 0, and what goes on behind a number as that
/// number: raises InputFault for them. An empty text is the controller's to refuse.
void RequireCodeNumber(const std::string& code);

/// Types a new code and sets the screen's controls as `entry` says; the others stay, but the code
/// is active, with name and code shown, unless the entry says otherwise. Raises InputFault for what
/// cannot be typed or chosen, for a code that is no whole number, and for texts that the store's
/// statements cannot take.
void EnterNewCode(DirCodeDesk& desk, const std::string& code, const DirCodeEntry& entry);

/// The same of what is typed into the screen already; what a new code has unless somebody says
/// otherwise is ticked by TickForNewCode() before.
void CheckTypedCode(DirCodeDesk& desk);
void CheckTypedChange(DirCodeDesk& desk);
/// Ticks what a new code has unless its entry says otherwise: active, with name and code shown.
void TickForNewCode(ScreenModel& screen);
/// When the code that the screen shows is active; nothing of one that is not, and where the period
/// is open.
struct CodePeriod {
  std::optional<qorcred::Date> start;
  std::optional<qorcred::Date> end;
};
[[nodiscard]] CodePeriod PeriodShown(DirCodeDesk& desk);

/// Sets the controls for the stored code that the screen shows. Gives the settings, named for
/// people, that a save will clear because they are switched off. Raises InputFault as for a new
/// code, and for a code that the list can only show rounded: a save would store it so.
[[nodiscard]] std::vector<std::string> EnterDirCodeChange(DirCodeDesk& desk,
                                                          const DirCodeEntry& entry);

}  // namespace qorhost
