#include "host/components/application_object.h"

#include <array>
#include <string>

#include "frame/convert.h"
#include "host/store/method_table.h"
#include "host/store/sqlite/kept_counts.h"
#include "host/store/store_connection.h"

namespace qorhost {

namespace {

using qorcred::Arguments;
using qorcred::Value;

}  // namespace

UnitStatus ReadUnitStatus(SqlSession& session, std::int32_t unitKey) {
  UnitStatus status;
  {
    const StatementUse unit(
        session.Own("SELECT U.UnitName, S.UNITTYPE FROM Units U LEFT JOIN UnitSettings S "
                    "ON S.UnitKey = U.UnitKey WHERE U.UnitKey=?1"));
    unit->BindNumber(1, unitKey);
    if (unit->Step()) {
      status.known = true;
      status.name = unit->Text(0);
      status.type = unit->Text(1);
    }
  }
  const UnitCounts counts = ReadUnitCounts(session, unitKey);
  status.credentials = counts.credentials;
  status.directoryCodes = counts.directoryCodes;
  status.pendingSteps = counts.pendingSteps;
  return status;
}

Value ApplicationObject::Invoke(std::string_view member, qorcred::InvokeKind kind,
                                Arguments arguments) {
  using Self = ApplicationObject;
  static constexpr std::array kMethods{
      Method<Self>{"pbGetUnitStatus", 9, 9, &Self::GetUnitStatus},
  };
  return RunMethod<Self>(*this, "The application component", kMethods, member, kind, arguments);
}

Value ApplicationObject::GetUnitStatus(Arguments arguments) {
  const UnitStatus status = ReadUnitStatus(SessionOf(arguments[0]), qorcred::ToLong(arguments[1]));
  arguments[2] = static_cast<std::int16_t>(status.known ? -1 : 0);
  arguments[3] = status.name;
  arguments[4] = status.type;
  arguments[5] = std::to_string(status.credentials);
  arguments[6] = std::to_string(status.entryCodes);
  arguments[7] = std::to_string(status.directoryCodes);
  arguments[8] = std::to_string(status.pendingSteps);
  return {};
}

}  // namespace qorhost
