#include "host/dialect/catalog.h"

#include <algorithm>
#include <array>

#include "host/dialect/names.h"

namespace qorhost::dialect {

namespace {

using enum ColumnType;

constexpr Column kRowIdentity{"RID", kIdentity};

constexpr std::array kCredentialBank{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"CredentialType", kLong},
    Column{"PINNo", kLong},
    Column{"FacilityCode", kLong},
    Column{"IDCode", kLong},
    Column{"SequenceNumber", kLong},
    Column{"ButtonNumber", kLong},
    Column{"DOORCODE", kLong},
    Column{"LASTMODIFIEDDATE", kDate},
};

constexpr std::array kTenants{
    kRowIdentity,
    Column{"TenantID", kLong, true},
    Column{"UnitKey", kLong},
    Column{"LastName", kText},
    Column{"FirstName", kText},
    Column{"MiddleInitial", kText},
    Column{"NameAtUnit", kText},
    Column{"Resident", kLong},
    Column{"GROUPID", kLong},
    Column{"LINKCODE", kLong},
    Column{"ACTIVETENANT", kBoolean},
    Column{"ACTIVESTARTTIME", kDate},
    Column{"ACTIVEENDTIME", kDate},
    Column{"DOORSCHEDULE1", kLong},
    Column{"DOORSCHEDULE2", kLong},
    Column{"DOORSCHEDULE3", kLong},
    Column{"DOORSCHEDULE4", kLong},
    Column{"CREDENTIALID1", kLong},
    Column{"CREDENTIALID2", kLong},
    Column{"DIRECTORYCODE", kLong},
    Column{"MODIFIED", kLong},
    Column{"LASTMODIFIEDDATE", kDate},
};

constexpr std::array kTenantGroup{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"IsGroupZero", kBoolean},
};

constexpr std::array kTenantsBackup{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"TenantID", kLong},
};

constexpr std::array kSchedules{
    kRowIdentity,
    Column{"ScheduleID", kLong},
    Column{"ScheduleName", kText},
    Column{"UnitKey", kLong},
    Column{"Modified", kLong},
};

constexpr std::array kUnitSettings{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"UNITTYPE", kText},
    Column{"IGNOREFACILITYCODE", kBoolean},
    Column{"RECORDDEACTIVATION", kLong},
    Column{"DEACTIVATIONDATE", kDate},
    Column{"DEACTIVATIONDAYS", kLong},
    Column{"MaxDigitsDirectoryCode", kLong},
    Column{"MaxDigitsEntryCode", kLong},
    Column{"CARDDEFAULTFACILITYCODE", kLong},
    Column{"RFDEFAULTFACILITYCODE", kLong},
    Column{"CARDTYPE", kLong},
    Column{"RFTYPE", kLong},
};

constexpr std::array kUnitTypes{
    kRowIdentity,
    Column{"DESCRIPTION", kText},
    Column{"TOTAL", kText},
};

constexpr std::array kUnits{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"UnitName", kText},
};

// Directory codes have up to 15 digits: more than a Long holds, exact in a Double.
constexpr std::array kDirectoryCode{
    kRowIdentity,
    Column{"UNITKEY", kLong},
    Column{"DIRECTORYCODE", kDouble},
    Column{"PHONENUMBER", kText},
    Column{"EXTENSION", kText},
    Column{"TIMEDELAY", kLong},
    Column{"DNDSCHEDULEID", kLong},
    Column{"ISDNDCHECKED", kBoolean},
    Column{"CFSCHEDULEID", kLong},
    Column{"ISCFCHECKED", kBoolean},
    Column{"CFPHONENUMBER", kText},
    Column{"CFEXTENSION", kText},
    Column{"CFTIMEDELAY", kLong},
    Column{"LASTMODIFIEDDATE", kDate},
    Column{"ACTIVE", kBoolean},
    Column{"STARTDATE", kDate},
    Column{"ENDDATE", kDate},
    Column{"DISPLAYNAME", kText},
    Column{"SHOWDISPLAYNAME", kBoolean},
    Column{"SHOWDIRECTORYCODE", kBoolean},
    Column{"MODIFIED", kLong},
    Column{"OLDDIRECTORYCODE", kDouble},
};

constexpr std::array kTenantSelectionFields{
    kRowIdentity,
    Column{"FieldName", kText},
    Column{"FieldNameDisplay", kText},
    Column{"DisplayWidth", kLong},
    Column{"GridType", kLong},
    Column{"Display", kLong},
    Column{"DisplaySeq", kLong},
};

constexpr std::array kDoors{
    kRowIdentity,
    Column{"UNITKEY", kLong},
    Column{"DOORID", kLong},
    Column{"DOORNAME", kText},
};

// The programming steps that wait to be sent to a unit.
constexpr std::array kProgramSteps{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"Kind", kText},
    Column{"SubjectRID", kLong},
    Column{"Code", kText},
    Column{"QueuedAt", kDate},
    Column{"Sent", kBoolean},
};

// Running numbers of a unit that outlive the rows they were given to.
constexpr std::array kUnitCounters{
    kRowIdentity,
    Column{"UnitKey", kLong},
    Column{"NextLinkCode", kLong},
};

constexpr std::array kTables{
    Table{"CredentialBank", kCredentialBank},
    Table{"Tenants", kTenants},
    Table{"TenantGroup", kTenantGroup},
    Table{"TenantsBackup", kTenantsBackup},
    Table{"Schedules", kSchedules},
    Table{"UnitSettings", kUnitSettings},
    Table{"UNITTYPES", kUnitTypes},
    Table{"Units", kUnits},
    Table{"DirectoryCode", kDirectoryCode},
    Table{"TenantSelectionFields", kTenantSelectionFields},
    Table{"DOORS", kDoors},
    Table{"ProgramSteps", kProgramSteps},
    Table{"UnitCounters", kUnitCounters},
};

template <typename Entry>
const Entry* FindByName(std::span<const Entry> entries, std::string_view name) {
  const auto found = std::find_if(entries.begin(), entries.end(), [name](const Entry& entry) {
    return SameName(entry.name, name);
  });
  return found == entries.end() ? nullptr : &*found;
}

}  // namespace

std::span<const Table> Tables() {
  return kTables;
}

const Table* FindTable(std::string_view name) {
  return FindByName(std::span<const Table>(kTables), name);
}

const Column* FindColumn(const Table& table, std::string_view name) {
  return FindByName(table.columns, name);
}

}  // namespace qorhost::dialect
