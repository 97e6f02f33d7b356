// What a field is called: in lists, in reports and files, in the store.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/report_words.h"

namespace qorhost {

/// One field by all its names; "" where it has none of a kind.
struct FieldNames {
  std::string_view key;      ///< for programs: "phone"
  std::string_view title;    ///< heads the column of a list: "Phone"
  std::string_view heading;  ///< of the reports and of the files that imports read: "Phone No."
  std::string_view column;   ///< of the table: "PHONENUMBER"
};

/// What has fields of several names.
struct NamedThing {
  std::string_view name;   ///< "directory code"
  std::string_view table;  ///< where it is stored
  std::span<const FieldNames> fields;
};

[[nodiscard]] const NamedThing& CredentialNames();
[[nodiscard]] const NamedThing& DirCodeNames();
[[nodiscard]] const NamedThing& TenantNames();

/// A field of a list, which goes by all of its names. `key` is one of the thing's.
[[nodiscard]] ListField NamedField(const NamedThing& thing, std::string_view key,
                                   FieldKind kind = FieldKind::kText);

/// The names beside this one by which a field is known, whichever of them it is; none for an
/// unknown one.
[[nodiscard]] std::vector<std::string> OtherNames(const NamedThing& thing, std::string_view name);

/// Who reads the name of a field.
enum class NamedFor : bool { kPeople, kPrograms };

/// What lists call a column of a table; the column itself where they do not have it.
[[nodiscard]] std::string_view NameOfColumn(std::string_view table, std::string_view column,
                                            NamedFor reader);

}  // namespace qorhost
