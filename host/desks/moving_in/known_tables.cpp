#include "host/desks/moving_in/known_tables.h"

#include "frame/text.h"

namespace qorhost {

namespace {

using enum Identity;

constexpr std::array kTables{
    KnownTable{"Units", kOwn, {"UnitKey"}, "there is nothing to bring in without units"},
    KnownTable{"UNITTYPES",
               kOwn,
               {"DESCRIPTION"},
               "how many codes a unit takes is not known, and nothing can be added to one"},
    KnownTable{"UnitSettings", kOwn, {"UnitKey"}, "the units have no settings"},
    KnownTable{"DOORS", kOwn, {"UNITKEY", "DOORID"}, "the units have no doors"},
    KnownTable{"Schedules",
               kOwn,
               {"UnitKey", "ScheduleID"},
               "the units have the two fixed schedules alone"},
    KnownTable{"TenantGroup",
               kReferred,
               {"RID", "UnitKey", "IsGroupZero"},
               "the units have no groups, and their tenants group 0"},
    KnownTable{"CredentialBank",
               kReferred,
               {"UnitKey", "CredentialType", "PINNo"},
               "there are no credentials"},
    KnownTable{"DirectoryCode",
               kReferred,
               {"RID", "UNITKEY", "DIRECTORYCODE"},
               "there are no directory codes"},
    KnownTable{"Tenants", kReferred, {"UnitKey", "LastName"}, "there are no tenants"},
    KnownTable{"TenantsBackup",
               kOwn,
               {"UnitKey", "TenantID"},
               "nothing is noted of tenants that were made with their credentials"},
    KnownTable{"TenantSelectionFields",
               kReferred,
               {"RID", "FieldName"},
               "the directory-code report has the fields of a new store"},
};

}  // namespace

std::span<const KnownTable> KnownTables() {
  return kTables;
}

const KnownTable* FindKnownTable(std::string_view name) {
  for (const KnownTable& table : kTables) {
    if (qorcred::UpperAscii(table.name) == qorcred::UpperAscii(name)) return &table;
  }
  return nullptr;
}

const dialect::Table& LayoutOf(const KnownTable& table) {
  return *dialect::FindTable(table.name);
}

}  // namespace qorhost
