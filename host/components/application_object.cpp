#include "host/components/application_object.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "frame/convert.h"
#include "host/store/method_table.h"
#include "host/store/store_connection.h"

namespace qorhost {

namespace {

using qorcred::Arguments;
using qorcred::Value;

}  // namespace

UnitStatus ReadUnitStatus(SqlSession& session, std::int32_t unitKey) {
  UnitStatus status;
  if (std::optional<UnitFacts> facts = session.units().Find(unitKey)) {
    status.known = true;
    status.name = std::move(facts->name);
    status.type = std::move(facts->type);
  }
  const UnitCounts counts = session.units().Count(unitKey);
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
