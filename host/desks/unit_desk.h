// The units of a store and their settings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace unit_input {
inline constexpr std::string_view kKey = "key";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kCapacity = "capacity";
inline constexpr std::string_view kCodeDigits = "digits of directory codes";
inline constexpr std::string_view kEntryDigits = "digits of entry codes";
inline constexpr std::string_view kDefaultEnd = "default end";
inline constexpr std::string_view kIgnoresFacility = "ignores facility codes";
inline constexpr std::string_view kCardFacility = "facility code of cards";
inline constexpr std::string_view kTransmitterFacility = "facility code of transmitters";
}  // namespace unit_input

namespace unit_bound {
inline constexpr std::int32_t kCapacity = 32767;  ///< what the controllers read as 16 bits
inline constexpr std::int32_t kDigits = 15;       ///< of a code, which is a floating-point number
inline constexpr std::int32_t kDays = 36500;      ///< after which a code ends by default
}  // namespace unit_bound

/// A unit as it is typed; what is not given stays, or is as in a new unit.
struct UnitEntry {
  std::optional<std::string> name;
  std::optional<std::string> type;      ///< a stored one, or with a capacity a new one
  std::optional<std::string> capacity;  ///< of the type: that of every unit of it
  std::optional<std::string> codeDigits;
  std::optional<std::string> entryDigits;
  std::optional<std::string> defaultEnd;       ///< "none", a date, or "90d"
  std::optional<std::string> ignoresFacility;  ///< yes or no
  std::optional<std::string> cardFacility;
  std::optional<std::string> transmitterFacility;

  /// Whether anything is given.
  [[nodiscard]] bool any() const {
    return name || type || capacity || codeDigits || entryDigits || defaultEnd || ignoresFacility ||
           cardFacility || transmitterFacility;
  }
};

/// Other units have the type whose capacity is to be changed: it is asked for first.
class SharedType : public RefusedError {
 public:
  using RefusedError::RefusedError;
};

/// Whether the capacity of a type may be changed that other units have, too.
enum class OtherUnits : bool { kAsked, kChanged };

struct ChangedUnit {
  UnitName unit;
  bool unchanged = false;  ///< everything was stored so already
};

/// Makes a unit with what the controllers need of one: settings, four doors, the two fixed
/// schedules, group zero. Without a key it gets the one behind the highest. Of a trial nothing is
/// stored. Raises InputFault, and RefusedError for a key that is taken.
[[nodiscard]] ChangedUnit AddUnit(DeskSession& session, const std::optional<std::string>& key,
                                  const UnitEntry& entry, OtherUnits others, Trial trial);

/// Changes its name and settings; a unit without settings gets those of a new one first. Raises
/// InputFault, SharedType, and RefusedError when what is stored does not fit: more codes than the
/// capacity, longer codes than the digits.
[[nodiscard]] ChangedUnit EditUnit(DeskSession& session, std::int32_t unitKey,
                                   const UnitEntry& entry, OtherUnits others, Trial trial);

/// The same of several units as one unit of work: all of them or none.
[[nodiscard]] std::vector<ChangedUnit> EditUnits(DeskSession& session,
                                                 const std::vector<std::int32_t>& unitKeys,
                                                 const UnitEntry& entry, OtherUnits others,
                                                 Trial trial);

/// The units with their settings.
[[nodiscard]] List UnitSettingsList(DeskSession& session, const std::vector<UnitName>& units);

}  // namespace qorhost
