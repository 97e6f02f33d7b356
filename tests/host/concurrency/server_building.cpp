#include "tests/host/concurrency/server_building.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "host/dialect/catalog.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/postgres/quoted_names.h"

namespace qorhost::test {

namespace {

using postgres::test::WithQuotedNames;

// Links are told by what they lead to; steps and entries by their place: an identity may be left
// out.
constexpr std::array<std::string_view, 9> kContent{
    R"sql(SELECT 'Units ' || (to_jsonb(U) - 'RID')::text FROM "Units" U)sql",
    R"sql(SELECT 'UnitSettings ' || (to_jsonb(S) - 'RID')::text FROM "UnitSettings" S)sql",
    R"sql(SELECT 'Schedules ' || (to_jsonb(S) - 'RID')::text FROM "Schedules" S)sql",
    R"sql(SELECT 'UnitCounters ' || (to_jsonb(C) - 'RID')::text FROM "UnitCounters" C)sql",
    R"sql(SELECT 'CredentialBank ' || (to_jsonb(C) - 'RID' - 'LASTMODIFIEDDATE')::text
          FROM "CredentialBank" C)sql",
    R"sql(SELECT 'Tenants ' || (to_jsonb(T) - 'RID' - 'TenantID' - 'LASTMODIFIEDDATE' ||
            jsonb_build_object(
              'CREDENTIALID1', (SELECT C."PINNo" FROM "CredentialBank" C
                                WHERE C."RID" = T."CREDENTIALID1"),
              'CREDENTIALID2', (SELECT C."PINNo" FROM "CredentialBank" C
                                WHERE C."RID" = T."CREDENTIALID2"),
              'DIRECTORYCODE', (SELECT D."DIRECTORYCODE" FROM "DirectoryCode" D
                                WHERE D."RID" = T."DIRECTORYCODE"),
              'dangling', T."CREDENTIALID1" NOT IN (SELECT "RID" FROM "CredentialBank")))::text
          FROM "Tenants" T)sql",
    R"sql(SELECT 'DirectoryCode ' || (to_jsonb(D) - 'RID' - 'LASTMODIFIEDDATE')::text
          FROM "DirectoryCode" D)sql",
    R"sql(SELECT 'ProgramSteps ' || (to_jsonb(S) - 'RID' - 'SubjectRID' - 'QueuedAt' ||
            jsonb_build_object(
              'place', rank() OVER (ORDER BY S."RID"),
              'tenant', (SELECT T."NameAtUnit" FROM "Tenants" T
                         WHERE T."RID" = S."SubjectRID" AND S."Kind" LIKE '%tenant%'),
              'code', (SELECT D."DIRECTORYCODE" FROM "DirectoryCode" D
                       WHERE D."RID" = S."SubjectRID" AND S."Kind" LIKE '%code%')))::text
          FROM "ProgramSteps" S)sql",
    R"sql(SELECT 'AuditEntries ' || (to_jsonb(A) - 'At' - 'Rows' - 'Hash' ||
            jsonb_build_object(
              'RID', rank() OVER (ORDER BY A."RID"),
              'Previous', (SELECT count(*) FROM "AuditEntries" B
                           WHERE B."RID" <= A."Previous")))::text
          FROM "AuditEntries" A)sql",
};

std::vector<std::string> Column(postgres::Connection& connection, const std::string& sql) {
  std::vector<std::string> cells;
  const postgres::Result result = connection.Run(sql);
  for (int row = 0; row < result.rows(); ++row) {
    cells.emplace_back(result.Text(row, 0));
  }
  return cells;
}

std::string TextToEmpty() {
  // Without the triggers that tell of each row, and without the checks between the tables.
  std::string text = "SET LOCAL session_replication_role = replica;";
  for (const dialect::Table& table : dialect::Tables()) {
    if (table.name != "TenantSelectionFields") {
      text += fmt::format(
          R"(DELETE FROM "{0}"; SELECT setval(pg_get_serial_sequence('"{0}"', 'RID'), 1, false);)",
          table.name);
    }
  }
  return text +
         R"(DELETE FROM "AuditEntries"; DELETE FROM "AuditRows"; DELETE FROM "UnitVersions";)"
         R"(SELECT setval('"AuditNumbers"', 1, false);)";
}

}  // namespace

void RenewBuilding(postgres::Connection& connection, int capacity) {
  static const std::string kToEmpty = TextToEmpty();
  connection.RunAll("BEGIN;" + kToEmpty + WithQuotedNames(RowsOfBuilding(capacity)) + "; COMMIT");
}

std::vector<std::string> ContentOf(postgres::Connection& connection) {
  static const std::string kSelect = [] {
    std::string all;
    for (const std::string_view one : kContent) {
      all.append(all.empty() ? "" : " UNION ALL ").append(one);
    }
    return all + " ORDER BY 1";
  }();
  return Column(connection, kSelect);
}

std::vector<std::string> WrongIn(postgres::Connection& connection) {
  std::vector<std::string> wrong;
  for (const Wrong& one : AllThatIsWrong()) {
    for (const std::string& found : Column(connection, WithQuotedNames(one.select))) {
      wrong.push_back(fmt::format("{}: {}", one.what, found));
    }
  }
  return wrong;
}

}  // namespace qorhost::test
