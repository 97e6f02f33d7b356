// What can be imported, and which of the desks does it.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "host/desks/import_run.h"
#include "host/desks/tenant_import.h"

namespace qorhost {

enum class ImportKind : std::uint8_t { kTenants, kCredentials, kDirCodes };

inline constexpr std::array kImportKinds{ImportKind::kTenants, ImportKind::kCredentials,
                                         ImportKind::kDirCodes};

[[nodiscard]] QString NameOf(ImportKind kind);
[[nodiscard]] std::span<const ImportColumn> ColumnsOf(ImportKind kind);

/// Imports a file of that kind into a unit; of the rules those that hold for its kind.
[[nodiscard]] ImportReport ImportAs(ImportKind kind, DeskSession& session, std::int32_t unitKey,
                                    ImportFile& file, const TenantImportRules& rules,
                                    const Progress& progress);

}  // namespace qorhost
