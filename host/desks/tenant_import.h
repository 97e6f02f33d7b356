// Tenants with their cards and directory codes from a spreadsheet, one of them in each line.
#pragma once

#include <cstdint>

#include "host/desks/credential_line.h"
#include "host/desks/import_run.h"

namespace qorhost {

/// What becomes of a line whose tenant is there already.
enum class StoredTenants : std::uint8_t {
  kRefused,
  kSkipped,
  kUpdated,  ///< what stands in the line's cells is stored; empty ones leave what there is
};

struct TenantImportRules : ImportRules {
  StoredTenants stored = StoredTenants::kRefused;
  CredentialDefaults cards;  ///< of lines that do not say it
};

/// Every line is a tenant, or a card or directory code that nobody has. Cards and codes that the
/// unit does not have are saved through their screens; tenants are the host's own rows, as at the
/// tenants' desk. Each line leaves all that it says or nothing; the lines are one unit of work. The
/// file has been opened with TenantFileColumns(). Takes as long as the unit's tenants and the
/// file's lines together. Raises as ImportRun does.
[[nodiscard]] ImportReport ImportTenants(DeskSession& session, std::int32_t unitKey,
                                         ImportFile& file, const TenantImportRules& rules,
                                         const Progress& progress);

}  // namespace qorhost
