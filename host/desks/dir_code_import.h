// Entering directory codes from a CSV file.
#pragma once

#include <cstdint>
#include <span>

#include "host/desks/import_run.h"

namespace qorhost {

/// The columns of the file, named as the report of directory codes names its own.
[[nodiscard]] std::span<const ImportColumn> DirCodeImportColumns();

/// Every line is a new directory code, saved through the screen. The file has been opened with the
/// columns above. Raises as ImportRun does.
[[nodiscard]] ImportReport ImportDirCodes(DeskSession& session, std::int32_t unitKey,
                                          ImportFile& file, const ImportRules& rules,
                                          const Progress& progress);

}  // namespace qorhost
