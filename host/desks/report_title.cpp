#include "host/desks/report_title.h"

#include <fmt/format.h>

#include "reports/cls_dir_code_report.h"

namespace qorhost {

std::string ReportTitle(DeskSession& session, std::int32_t unitKey) {
  qorcred::clsDirCodeReport lookups(session.host());
  const std::string name = lookups.pbGetUnitName(session.connection(), unitKey);
  return name.empty() ? fmt::format("Unit {}", unitKey) : name;
}

}  // namespace qorhost
