// The units of a store and their settings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/seen_row.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"
#include "host/desks/unit_fields.h"

namespace qorhost {

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

/// Done or stale.
struct ChangedUnit : Outcome {
  UnitName unit;
  std::vector<qorcred::Value> row;  ///< of UnitSettingsList(), as it is now; empty when stale
};

/// Makes a unit with what the controllers need of one: settings, four doors, the two fixed
/// schedules, group zero. Without a key it gets the one behind the highest. Of a trial nothing is
/// stored. Raises InputFault, and RefusedError for a key that is taken.
[[nodiscard]] ChangedUnit AddUnit(DeskSession& session, const std::optional<std::string>& key,
                                  const UnitEntry& entry, OtherUnits others, Trial trial);

/// Changes its name and settings; a unit without settings gets those of a new one first. Raises
/// InputFault, SharedType, and RefusedError when what is stored does not fit: more codes than the
/// capacity, longer codes than the digits. Of a unit that was seen in UnitSettingsList() and is
/// another one by now, or is gone, nothing is changed: it is stale.
[[nodiscard]] ChangedUnit EditUnit(DeskSession& session, std::int32_t unitKey,
                                   const UnitEntry& entry, OtherUnits others, Trial trial,
                                   const std::optional<SeenRow>& seen = std::nullopt);

/// The same of several units as one unit of work: all of them or none.
[[nodiscard]] std::vector<ChangedUnit> EditUnits(DeskSession& session,
                                                 const std::vector<std::int32_t>& unitKeys,
                                                 const UnitEntry& entry, OtherUnits others,
                                                 Trial trial);

/// The types of units that are stored, in the order of their names.
[[nodiscard]] std::vector<std::string> UnitTypes(DeskSession& session);

/// The units with their settings, a row for each; one that has none has its name alone.
[[nodiscard]] List UnitSettingsList(DeskSession& session, const std::vector<UnitName>& units);

/// How work on a unit ends that was seen otherwise than it is stored; see FindOvertaken().
[[nodiscard]] std::optional<Outcome> FindUnitOvertaken(DeskSession& session, std::int32_t unitKey,
                                                       const std::optional<SeenRow>& seen);

}  // namespace qorhost
