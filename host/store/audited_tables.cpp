#include "host/store/audited_tables.h"

#include <algorithm>
#include <array>

namespace qorhost {

bool IsAudited(std::string_view table) {
  static constexpr std::array<std::string_view, 7> kLeftOut{
      "ProgramSteps", "UnitCounters", "TenantsBackup", "AuditEntries",
      "AuditRows",    "UnitVersions", "StoreSeal"};
  return std::find(kLeftOut.begin(), kLeftOut.end(), table) == kLeftOut.end();
}

}  // namespace qorhost
