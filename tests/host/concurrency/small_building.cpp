#include "tests/host/concurrency/small_building.h"

#include <fmt/format.h>

#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "frame/capacity.h"
#include "host/store/sqlite/schema.h"

namespace qorhost::test {

namespace {

constexpr std::string_view kRows = R"sql(
INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court');
INSERT INTO UnitSettings (UnitKey, UNITTYPE, IGNOREFACILITYCODE, MaxDigitsDirectoryCode,
  MaxDigitsEntryCode, CARDDEFAULTFACILITYCODE, RFDEFAULTFACILITYCODE, CARDTYPE, RFTYPE)
  VALUES (1, 'Small Panel', 0, 4, 4, 7, 7, 0, 2);
INSERT INTO DOORS (UNITKEY, DOORID, DOORNAME)
  VALUES (1, 1, 'Main'), (1, 2, 'Garage'), (1, 3, 'Roof'), (1, 4, 'Cellar');
INSERT INTO Schedules (ScheduleID, ScheduleName, UnitKey)
  VALUES (0, 'No Access', 1), (1, 'Full Access', 1), (2, 'Weekdays', 1);
INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (1, -1);
INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (1, 4);
INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber,
  ButtonNumber, DOORCODE, LASTMODIFIEDDATE)
  SELECT 1, 1, 100 + value, 7, 0, 0, 1, 0, '2026-01-15 09:30:00' FROM Numbers WHERE value <= 4;
INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, PHONENUMBER, TIMEDELAY, ISDNDCHECKED,
  ISCFCHECKED, CFTIMEDELAY, LASTMODIFIEDDATE, ACTIVE, DISPLAYNAME, SHOWDISPLAYNAME,
  SHOWDIRECTORYCODE, MODIFIED, OLDDIRECTORYCODE)
  SELECT 1, 100 + value, '555-010' || value, 2, 0, 0, 2, '2026-01-15 09:30:00', -1,
    'Apartment ' || value, -1, -1, 0, 100 + value FROM Numbers WHERE value <= 3;
INSERT INTO Tenants (UnitKey, LastName, FirstName, NameAtUnit, Resident, GROUPID, LINKCODE,
  CREDENTIALID1, DIRECTORYCODE, LASTMODIFIEDDATE)
  VALUES (1, 'Adam', 'Ann', 'Ann Adam', 0, 1, 1, 1, 1, '2026-01-15 09:30:00'),
         (1, 'Berg', 'Bea', 'Bea Berg', 0, 1, 2, NULL, NULL, '2026-01-15 09:30:00'),
         (1, 'Cole', 'Cem', 'Cem Cole', 0, 1, 3, 2, NULL, '2026-01-15 09:30:00');
)sql";

std::vector<std::string> Column(sqlite::Database& database, std::string_view sql) {
  std::vector<std::string> cells;
  sqlite::Statement statement(database, sql);
  while (statement.Step()) {
    cells.emplace_back(statement.Text(0));
  }
  return cells;
}

/// A SELECT for each table; all stores have the same.
std::vector<std::string> SelectsOfContent(sqlite::Database& database) {
  std::vector<std::string> selects;
  for (const std::string& table :
       Column(database,
              "SELECT name FROM sqlite_schema WHERE type='table' AND (name NOT LIKE "
              "'sqlite!_%' ESCAPE '!' OR name = 'sqlite_sequence') AND name NOT IN "
              "('AuditRows', 'StoreSeal', 'UnitVersions') OR name = 'CurrentVersions' ORDER BY "
              "name")) {
    std::string cells;
    for (const std::string& column :
         Column(database, fmt::format("SELECT name FROM pragma_table_info('{}') WHERE lower(name) "
                                      "NOT IN ('lastmodifieddate', 'queuedat', 'mark')",
                                      table))) {
      cells += fmt::format("|| ' {0}=' || quote({0})", column);
    }
    selects.push_back(fmt::format("SELECT '{0}' {1} FROM {0} ORDER BY 1", table, cells));
  }
  return selects;
}

constexpr std::array kWrong{
    Wrong{"number twice",
          "SELECT CredentialType || '-' || PINNo FROM CredentialBank "
          "GROUP BY UnitKey, CredentialType, PINNo HAVING count(*) > 1"},
    Wrong{"code twice",
          "SELECT DIRECTORYCODE FROM DirectoryCode WHERE DIRECTORYCODE >= 0 "
          "GROUP BY UNITKEY, DIRECTORYCODE HAVING count(*) > 1"},
    Wrong{
        "tenant holds a credential that is not there",
        "SELECT LastName FROM Tenants T JOIN (SELECT RID AS Holder, CREDENTIALID1 AS Held FROM "
        "Tenants UNION SELECT RID, CREDENTIALID2 FROM Tenants) AS Cards ON Holder = T.RID WHERE "
        "Held IS "
        "NOT NULL AND Held NOT IN (SELECT RID FROM CredentialBank C WHERE C.UnitKey = T.UnitKey)"},
    Wrong{"tenant holds a directory code that is not there",
          "SELECT LastName FROM Tenants T WHERE DIRECTORYCODE IS NOT NULL AND DIRECTORYCODE NOT IN "
          "(SELECT RID FROM DirectoryCode D WHERE D.UNITKEY = T.UnitKey)"},
    Wrong{"credential with two holders",
          "SELECT Held FROM (SELECT CREDENTIALID1 AS Held FROM Tenants UNION ALL "
          "SELECT CREDENTIALID2 FROM Tenants) AS Cards WHERE Held IS NOT NULL GROUP BY Held "
          "HAVING count(*) > 1"},
    Wrong{"changed code without a step",
          "SELECT DIRECTORYCODE FROM DirectoryCode D WHERE MODIFIED IN (1, 2) AND NOT EXISTS "
          "(SELECT 1 FROM ProgramSteps S WHERE S.UnitKey = D.UNITKEY AND S.SubjectRID = D.RID AND "
          "S.Sent = 0 AND "
          "S.Kind IN ('program directory code', 'change directory code'))"},
    Wrong{"step without a changed code",
          "SELECT Kind || ' ' || SubjectRID FROM ProgramSteps S WHERE S.Sent = 0 AND "
          "Kind IN ('program directory code', 'change directory code') AND NOT EXISTS "
          "(SELECT 1 FROM DirectoryCode D WHERE D.RID = S.SubjectRID AND D.MODIFIED IN (1, 2))"},
    // An undo brings a code back behind the step that deletes it, with one that programs it.
    Wrong{"step that deletes a code that is there",
          "SELECT Code FROM ProgramSteps S WHERE Kind = 'delete directory code' AND EXISTS "
          "(SELECT 1 FROM DirectoryCode D WHERE D.RID = S.SubjectRID) AND NOT EXISTS "
          "(SELECT 1 FROM ProgramSteps P WHERE P.SubjectRID = S.SubjectRID AND P.RID > S.RID AND "
          "P.Kind IN ('program directory code', 'change directory code'))"},
    Wrong{"broken chain of the audit",
          "SELECT RID || '<' || coalesce(CAST(Previous AS TEXT), '') FROM AuditEntries A WHERE "
          "UnitKey IS NOT "
          "NULL AND Previous IS DISTINCT FROM (SELECT max(RID) FROM AuditEntries B WHERE B.RID < "
          "A.RID AND "
          "(B.UnitKey = A.UnitKey OR B.UnitKey IS NULL))"},
    Wrong{"version that is not the last entry's",
          "SELECT UnitKey FROM UnitVersions V WHERE Entry IS DISTINCT FROM (SELECT max(RID) FROM "
          "AuditEntries A WHERE A.UnitKey = V.UnitKey OR A.UnitKey IS NULL)"},
    Wrong{"entry without rows", "SELECT RID FROM AuditEntries WHERE Rows=''"},
};

}  // namespace

std::string RowsOfBuilding(int capacity) {
  return fmt::format(
      "CREATE TEMP TABLE Numbers (value integer);"
      "INSERT INTO Numbers VALUES (1), (2), (3), (4);"
      "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Small Panel', '{}');{}"
      "DROP TABLE Numbers",
      qorcred::CapacityText(capacity), kRows);
}

std::span<const Wrong> AllThatIsWrong() {
  return kWrong;
}

void MakeBuilding(const std::filesystem::path& file, int capacity) {
  sqlite::Database database = sqlite::OpenDatabase(file, OpenMode::kCreate);
  database.Run("PRAGMA synchronous=OFF; BEGIN; " + RowsOfBuilding(capacity) + "; COMMIT");
}

std::vector<std::string> ContentOf(sqlite::Database& database) {
  static const std::vector<std::string> kSelects = SelectsOfContent(database);
  std::vector<std::string> lines;
  for (const std::string& select : kSelects) {
    for (std::string& line : Column(database, select)) {
      lines.push_back(std::move(line));
    }
  }
  return lines;
}

std::vector<std::string> WrongIn(sqlite::Database& database, int capacity) {
  std::vector<std::string> wrong;
  constexpr std::string_view kVersions = "UnitVersions V";
  for (const Wrong& one : kWrong) {
    std::string select(one.select);
    // One version stands elsewhere in a file; this view knows all.
    if (const std::size_t at = select.find(kVersions); at != std::string::npos) {
      select.replace(at, kVersions.size(), "CurrentVersions V");
    }
    for (const std::string& found : Column(database, select)) {
      wrong.push_back(fmt::format("{}: {}", one.what, found));
    }
  }
  for (const std::string& found :
       Column(database,
              "SELECT integrity_check FROM pragma_integrity_check WHERE integrity_check "
              "<> 'ok'")) {
    wrong.push_back("damage: " + found);
  }
  const std::int64_t inUse = database.Number(
      "SELECT (SELECT count(*) FROM CredentialBank) + "
      "(SELECT count(*) FROM DirectoryCode)");
  if (inUse > capacity) {
    wrong.push_back(fmt::format("{} codes in a unit of {}", inUse, capacity));
  }
  return wrong;
}

}  // namespace qorhost::test
