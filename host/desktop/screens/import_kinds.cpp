#include "host/desktop/screens/import_kinds.h"

#include <QCoreApplication>

#include "host/desks/credential_import.h"
#include "host/desks/dir_code_import.h"
#include "host/desks/tenant_file.h"

namespace qorhost {

QString NameOf(ImportKind kind) {
  switch (kind) {
    case ImportKind::kTenants:
      return QCoreApplication::translate("Import", "Tenants with their cards and codes");
    case ImportKind::kCredentials:
      return QCoreApplication::translate("Import", "Credentials");
    case ImportKind::kDirCodes:
      break;
  }
  return QCoreApplication::translate("Import", "Directory codes");
}

std::span<const ImportColumn> ColumnsOf(ImportKind kind) {
  switch (kind) {
    case ImportKind::kTenants:
      return TenantFileColumns();
    case ImportKind::kCredentials:
      return CredentialImportColumns();
    case ImportKind::kDirCodes:
      break;
  }
  return DirCodeImportColumns();
}

ImportReport ImportAs(ImportKind kind, DeskSession& session, std::int32_t unitKey, ImportFile& file,
                      const TenantImportRules& rules, const Progress& progress) {
  switch (kind) {
    case ImportKind::kTenants:
      return ImportTenants(session, unitKey, file, rules, progress);
    case ImportKind::kCredentials:
      return ImportCredentials(session, unitKey, file, rules, progress);
    case ImportKind::kDirCodes:
      break;
  }
  return ImportDirCodes(session, unitKey, file, rules, progress);
}

}  // namespace qorhost
