// A directory code as a unit writes it down, and the way from there to the store's notation.
#pragma once

#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorcred {

/// The delay, in the unit's own measure, of a call that has no extension to dial.
inline constexpr std::string_view kDelayWithoutExtension = "2";

/// Places of the texts that describe one directory code; 0 to 3 are not used here.
namespace unit_place {
enum Place : unsigned {
  kCode = 4,
  kPhone = 5,
  kExtension = 6,
  kCfPhone = 7,
  kCfExtension = 8,
  kDisplayName = 9,
  kActive = 10,         ///< "1" = yes
  kStartDateUsed = 11,  ///< "1" = yes
  kStartDate = 12,      ///< YYMMDD
  kStartTime = 13,      ///< hhmm
  kEndDateUsed = 14,    ///< "1" = yes
  kEndDate = 15,        ///< YYMMDD
  kEndTime = 16,        ///< hhmm
  kDndSchedule = 17,
  kIsDndChecked = 18,  ///< "1" = yes
  kTimeDelay = 19,
  kIsCfChecked = 20,  ///< "1" = yes
  kCfSchedule = 21,
  kCfTimeDelay = 22,
  kDisplayMode = 23,  ///< "1", "2", "3" or another
};
}  // namespace unit_place

/// The firmware of units that have no display options.
inline constexpr std::string_view kFirmwareWithoutDisplay = "FC01.005";

/// What a unit shows of a directory code, as flags for a statement.
struct DisplayOptions {
  std::string_view name;  ///< "True" or "False"
  std::string_view code;
};

/// Changes the texts in place: flags to "True" and "False", times to hh:mm, dates to mm/dd/yyyy
/// with a blank and the time behind, and dates that are not in use to "". Years are 2000 to 2099.
/// Returns the display options. Raises kIndexOutOfRange when there are fewer than 24 texts: what
/// stood before the missing one has then been changed.
DisplayOptions ConvertToStoreNotation(StringArray& details);

/// The display options of a display mode.
[[nodiscard]] DisplayOptions DisplayOptionsOf(std::string_view mode);

}  // namespace qorcred
