// Who is meant by the names in the lines of a file of tenants.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/desks/import_words.h"
#include "host/desks/tenant_entry.h"
#include "host/desks/tenant_rows.h"
#include "host/files/import_file.h"

namespace qorhost {

/// The name in a line; nothing when it is nobody's line. Raises InputFault, under a heading of the
/// file, for a line without a name and for one that adds the others up.
struct LineName {
  std::string last;
  std::string first;
  std::string initial;
};
[[nodiscard]] std::optional<LineName> NameIn(const ImportLine& line, const ImportFile& file);

/// The inputs of the tenants' desk that the file's columns hold.
[[nodiscard]] std::vector<ColumnField> TenantFields(const ImportFile& file);

/// A tenant whom a line may mean.
struct KnownTenant {
  TenantRow row;
  double code = -1;      ///< the number that is dialled; below 0 for none
  std::size_t line = 0;  ///< that added the tenant; 0 for one who was there
  std::string tenantId;  ///< that this line gave

  /// "Tanaka Xenia M (RID 62)" or "Tanaka Xenia M (line 12)"
  [[nodiscard]] std::string Described() const;
};

/// The tenants of a unit by their names, without accents and letter case. Two of one name are one
/// person unless both have directory codes that differ, or lines gave them different ids.
class TenantImportPeople {
 public:
  /// `more` may be added.
  TenantImportPeople(const std::vector<TenantRow>& tenants, const TenantLinks& links,
                     std::size_t more);

  struct Match {
    KnownTenant* same = nullptr;         ///< the person that is meant, when there is one
    const KnownTenant* other = nullptr;  ///< else somebody else of the same name
    bool isDoubtful = false;             ///< several may be meant
  };
  /// Whom the line means. Who was there goes by the tenant's id first.
  [[nodiscard]] Match Find(const LineName& name, double code, std::string_view tenantId);

  void Add(KnownTenant tenant);

 private:
  std::unordered_map<std::string, std::vector<KnownTenant>> byName_;
};

}  // namespace qorhost
