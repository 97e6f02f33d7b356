#include "host/desks/unit_settings.h"

#include <fmt/format.h>

#include <string>

#include "frame/convert.h"
#include "host/desks/desk_error.h"

namespace qorhost {

void RequireSettings(DeskSession& session, std::int32_t unitKey) {
  const QueryResult settings = session.sql().Select(
      fmt::format("SELECT UnitKey FROM UnitSettings WHERE UnitKey={}", unitKey));
  if (settings.rowCount > 0) {
    return;
  }
  const std::string name = qorcred::TextOrEmpty(
      session.sql().Scalar(fmt::format("SELECT UnitName FROM Units WHERE UnitKey={}", unitKey)));
  throw FailureError(
      fmt::format("unit {}{} has no settings: the store's table UnitSettings needs a "
                  "row for it",
                  unitKey, name.empty() ? "" : ", " + name + ","));
}

}  // namespace qorhost
