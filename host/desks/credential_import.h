// Entering credentials from a CSV file.
#pragma once

#include <cstdint>
#include <span>

#include "host/desks/import_run.h"

namespace qorhost {

/// The columns of the file.
[[nodiscard]] std::span<const ImportColumn> CredentialImportColumns();

/// Every line is a new credential, saved through the screen and, where the line names a tenant,
/// assigned through it. The file has been opened with the columns above. Raises as ImportRun does.
[[nodiscard]] ImportReport ImportCredentials(DeskSession& session, std::int32_t unitKey,
                                             ImportFile& file, const ImportRules& rules,
                                             const Progress& progress);

}  // namespace qorhost
