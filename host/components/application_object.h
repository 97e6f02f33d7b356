// qorAppln.clsApplication: the state of units.
#pragma once

#include <cstdint>
#include <string>

#include "frame/object.h"
#include "host/store/sql_session.h"

namespace qorhost {

struct UnitStatus {
  bool known = false;  ///< the store has the unit
  std::string name;
  std::string type;  ///< UnitSettings.UNITTYPE; empty where there is none
  std::int64_t credentials = 0;
  std::int64_t entryCodes = 0;  ///< 0: the store keeps no entry codes
  std::int64_t directoryCodes = 0;
  std::int64_t pendingSteps = 0;

  /// What counts against the capacity of the unit's type.
  [[nodiscard]] std::int64_t CodesInUse() const {
    return credentials + entryCodes + directoryCodes;
  }
};

/// What the store holds of a unit; unknown and without a name where it has none.
[[nodiscard]] UnitStatus ReadUnitStatus(SqlSession& session, std::int32_t unitKey);

/// Late-bound member:
/// pbGetUnitStatus(conn, unitKey, known, name, type, credentials, entryCodes, directoryCodes,
/// pendingSteps), all but the first two filled in: `known` -1 or 0 (Integer), the others texts,
/// counts as decimal digits.
class ApplicationObject final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::Value GetUnitStatus(qorcred::Arguments arguments);
};

}  // namespace qorhost
