#include "host/desks/report_title.h"

#include <fmt/format.h>

#include "reports/cls_dir_code_report.h"

namespace qorhost {

std::string ReportTitle(DeskSession& session, std::int32_t unitKey) {
  Controlled<qorcred::clsDirCodeReport> lookups("clsDirCodeReport", session.host(),
                                                session.tracer());
  const std::string name =
      lookups.Run<&qorcred::clsDirCodeReport::pbGetUnitName>(session.connection(), unitKey);
  return name.empty() ? fmt::format("Unit {}", unitKey) : name;
}

}  // namespace qorhost
