#include "bench/bench_store.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>
#include <system_error>
#include <utility>

#include "bench/check.h"
#include "bench/save_screen.h"
#include "frame/capacity.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/schema.h"

namespace qorbench {

namespace {

using qorhost::OpenMode;
using qorhost::sqlite::Database;

std::filesystem::path NewFolder() {
  static int count = 0;
  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / fmt::format("qorbench-{}-{}", getpid(), ++count);
  std::filesystem::create_directory(folder);
  return folder;
}

void CheckCount(Database& database, const std::string& query, std::int64_t expected) {
  const std::int64_t found = database.Number(query);
  Check(found == expected, fmt::format("{} gives {} instead of {}", query, found, expected));
}

void CheckUnitCredentials(Database& database, const RangeSave& save) {
  CheckCount(database,
             fmt::format("SELECT count(*) FROM CredentialBank WHERE UnitKey={} AND PINNo BETWEEN "
                         "{} AND {} AND RID=PINNo AND CredentialType={} AND FacilityCode={} AND "
                         "IDCode=0 AND SequenceNumber=0 AND ButtonNumber=1 AND DOORCODE IS NULL "
                         "AND LASTMODIFIEDDATE LIKE '____-__-__ __:__:__'",
                         save.unit, save.start, save.end, kCardType, kFacilityCode),
             save.Count());
}

void CheckUnitTenants(Database& database, const RangeSave& save) {
  CheckCount(
      database,
      fmt::format(
          "SELECT count(*) FROM Tenants WHERE UnitKey={0} AND RID BETWEEN {1} AND {2} AND "
          "TenantID=RID AND CREDENTIALID1=RID AND CREDENTIALID2 IS NULL AND LINKCODE=RID-{1}+1 "
          "AND LastName='No Name{3}'||RID AND GROUPID={0} AND ACTIVETENANT=-1 AND "
          "DOORSCHEDULE1=1 AND DOORSCHEDULE2=1 AND DOORSCHEDULE3=0 AND DOORSCHEDULE4=0 AND "
          "ACTIVESTARTTIME='2026-01-01 08:00:00' AND ACTIVEENDTIME='2026-12-31 23:59:59' AND "
          "LASTMODIFIEDDATE LIKE '____-__-__ __:__:__'",
          save.unit, save.start, save.end, kCardType),
      save.Count());
  CheckCount(database,
             fmt::format("SELECT count(*) FROM TenantsBackup WHERE UnitKey={} AND TenantID "
                         "BETWEEN {} AND {} AND TenantID=RID",
                         save.unit, save.start, save.end),
             save.Count());
  CheckCount(database,
             fmt::format("SELECT count(*) FROM ProgramSteps WHERE UnitKey={} AND SubjectRID "
                         "BETWEEN {} AND {} AND RID=SubjectRID AND Kind='program tenant' AND "
                         "Sent=0 AND QueuedAt LIKE '____-__-__ __:__:__'",
                         save.unit, save.start, save.end),
             save.Count());
  CheckCount(database,
             fmt::format("SELECT NextLinkCode FROM UnitCounters WHERE UnitKey={}", save.unit),
             save.Count() + 1);
}

}  // namespace

std::int32_t CountOf(std::span<const RangeSave> saves) {
  return std::accumulate(
      saves.begin(), saves.end(), 0,
      [](std::int32_t count, const RangeSave& save) { return count + save.Count(); });
}

BenchStore::BenchStore() : folder_(NewFolder()) {
  Database database = qorhost::sqlite::OpenDatabase(File(), OpenMode::kCreate);
  database.Run(
      fmt::format("INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Largest', '{}');"
                  "INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'A'), (2, 'B'), (3, 'C');"
                  "INSERT INTO UnitSettings (UnitKey, UNITTYPE) VALUES (1, 'Largest'), "
                  "(2, 'Largest'), (3, 'Largest');"
                  "INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (1, -1), (2, -1), (3, -1)",
                  qorcred::CapacityText(std::numeric_limits<std::int16_t>::max())));
}

BenchStore::~BenchStore() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path BenchStore::File() const {
  return folder_ / "bench.db";
}

std::unique_ptr<qorhost::Store> BenchStore::Open() const {
  return qorhost::OpenStore(File(), OpenMode::kReadWrite);
}

Database BenchStore::OpenDatabase() const {
  return qorhost::sqlite::OpenDatabase(File(), OpenMode::kReadWrite);
}

void PutDirCodes(Database& database, std::int32_t count) {
  constexpr std::int32_t kUnit = 1;
  database.Run(fmt::format(
      "WITH RECURSIVE numbers(n) AS (VALUES ({0}) UNION ALL SELECT n - 1 FROM numbers WHERE n > 1) "
      "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, PHONENUMBER, TIMEDELAY, ISDNDCHECKED, "
      "ISCFCHECKED, CFTIMEDELAY, LASTMODIFIEDDATE, ACTIVE, DISPLAYNAME, SHOWDISPLAYNAME, "
      "SHOWDIRECTORYCODE, MODIFIED, OLDDIRECTORYCODE) SELECT {1}, n, '5550100', 2, 0, 0, 2, "
      "datetime('2026-01-15 09:30:00', (n % 86400) || ' seconds'), -1, 'Name ' || n, -1, 0, 2, "
      "n + {0} FROM numbers",
      count, kUnit));
}

std::unique_ptr<qorhost::StoreHost> StrictHost() {
  qorhost::StoreHost::Services services;
  services.messageBox = [](std::string_view text, qorcred::MessageStyle, std::string_view) {
    Check(false, fmt::format("a save without the message \"{}\"", text));
    return qorcred::MessageButton::kOk;
  };
  services.failureLog = [](std::string_view operation, const qorcred::RuntimeError& failure) {
    Check(false, fmt::format("{} without the failure \"{}\"", operation, failure.description()));
  };
  return std::make_unique<qorhost::StoreHost>(std::move(services));
}

void CheckCredentials(Database& database, std::span<const RangeSave> saves) {
  CheckCount(database, "SELECT count(*) FROM CredentialBank", CountOf(saves));
  for (const RangeSave& save : saves) {
    CheckUnitCredentials(database, save);
  }
}

void CheckTenants(Database& database, std::span<const RangeSave> saves) {
  CheckCredentials(database, saves);
  for (const char* table : {"Tenants", "TenantsBackup", "ProgramSteps"}) {
    CheckCount(database, fmt::format("SELECT count(*) FROM {}", table), CountOf(saves));
  }
  for (const RangeSave& save : saves) {
    CheckUnitTenants(database, save);
  }
}

}  // namespace qorbench
