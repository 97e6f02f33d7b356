// Taking in a spreadsheet of tenants with a card and a directory code each, against the same rows
// by hand.
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/desks/session.h"
#include "host/desks/store_file.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import.h"
#include "host/files/input_file.h"

namespace qorbench {

namespace {

using qorhost::sqlite::Database;
using qorhost::sqlite::Statement;
using qorhost::sqlite::StatementUse;

constexpr const char* kOurs = "import-tenants/10000";
constexpr const char* kOursTenth = "import-tenants/1000";
constexpr const char* kByHand = "import-tenants/by-hand";
constexpr const char* kCheckedByHand = "import-tenants/checked-by-hand";
constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kLines = 10000;
constexpr std::int32_t kTenth = 1000;

std::string NumberText(std::int32_t line) {
  return fmt::format("{:05}", line);
}

void WriteSheet(const std::filesystem::path& file, std::int32_t lines) {
  std::ofstream sheet(file, std::ios::binary);
  sheet << "Last Name,First Name,Directory Code,Phone,Card Type,Card Number,Facility "
           "Code,Start,End,Schedules\n";
  for (std::int32_t line = 1; line <= lines; ++line) {
    sheet << fmt::format(
        "Tenant {0},Number,{1},555{0},card26,{1},7,2026-01-01,2026-12-31,\"Full Access,1,0,0\"\n",
        NumberText(line), line);
  }
}

/// Whoever wrote them: what each line says stands in the store.
void CheckRows(Database& database, std::int32_t lines) {
  const auto count = [&](const std::string& query) {
    const std::int64_t found = database.Number("SELECT count(*) FROM " + query);
    Check(found == lines, fmt::format("{} has {} rows instead of {}", query, found, lines));
  };
  count(
      "Tenants JOIN CredentialBank c ON c.RID=CREDENTIALID1 JOIN DirectoryCode d ON "
      "d.RID=Tenants.DIRECTORYCODE WHERE LastName='Tenant '||printf('%05d',c.PINNo) AND "
      "FirstName='Number' AND NameAtUnit='Number '||LastName AND d.DIRECTORYCODE=c.PINNo AND "
      "d.DISPLAYNAME=NameAtUnit AND d.PHONENUMBER='555'||printf('%05d',c.PINNo) AND "
      "c.CredentialType=1 AND c.FacilityCode=7 AND DOORSCHEDULE1=1 AND DOORSCHEDULE2=1 AND "
      "DOORSCHEDULE3=0 AND DOORSCHEDULE4=0 AND ACTIVESTARTTIME='2026-01-01 00:00:00' AND "
      "ACTIVEENDTIME='2026-12-31 23:59:59' AND ACTIVETENANT<>0 AND GROUPID=1");
  for (const char* table : {"Tenants", "CredentialBank", "DirectoryCode", "TenantsBackup"}) {
    count(table);
  }
  count("(SELECT DISTINCT LINKCODE FROM Tenants)");
  count("ProgramSteps WHERE Kind='program tenant' AND Sent=0");
  count("ProgramSteps WHERE Kind='program directory code' AND Sent=0");
}

void TakeIn(benchmark::State& state, std::int32_t lines) {
  const BenchStore store;
  const std::filesystem::path sheet = store.File().replace_filename("tenants.csv");
  WriteSheet(sheet, lines);
  qorhost::ImportReport report;
  for ([[maybe_unused]] auto iteration : state) {
    qorhost::ImportFile file(qorhost::ReadWholeFile(sheet), qorhost::TenantFileColumns());
    qorhost::DeskSession session(qorhost::OpenStoreFile(store.File(), qorhost::Access::kChange),
                                 {});
    report = qorhost::ImportTenants(session, kUnit, file, {}, nullptr);
  }
  Check(report.done == static_cast<std::size_t>(lines) && report.remarks.empty(),
        "every line is stored");
  Database database = store.OpenDatabase();
  CheckRows(database, lines);
  Check(database.Number("SELECT count(*) FROM AuditEntries") == 1, "the import is one entry");
  state.counters[kItems] = lines;
}

/// The inserts of one line.
class Rows {
 public:
  explicit Rows(Database& database)
      : database_(database),
        credential_(database,
                    "INSERT INTO CredentialBank (UnitKey,CredentialType,PINNo,FacilityCode,IDCode,"
                    "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE) VALUES (1,1,?1,7,0,0,1,?2)"),
        code_(database,
              "INSERT INTO DirectoryCode (UNITKEY,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
              "ISDNDCHECKED,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,"
              "ACTIVE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE,MODIFIED,OLDDIRECTORYCODE) "
              "VALUES (1,?1,?2,'',2,0,0,'','',2,?3,-1,?4,-1,-1,1,?1)"),
        tenant_(database,
                "INSERT INTO Tenants (UnitKey,LastName,FirstName,NameAtUnit,GROUPID,LINKCODE,"
                "ACTIVETENANT,ACTIVESTARTTIME,ACTIVEENDTIME,DOORSCHEDULE1,DOORSCHEDULE2,"
                "DOORSCHEDULE3,DOORSCHEDULE4,CREDENTIALID1,DIRECTORYCODE,Resident,"
                "LASTMODIFIEDDATE) VALUES (1,?1,'Number',?2,1,?3,-1,'2026-01-01 00:00:00',"
                "'2026-12-31 23:59:59',1,1,0,0,?4,?5,0,?6)"),
        backup_(database, "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (1,?1)"),
        step_(database,
              "INSERT INTO ProgramSteps (UnitKey,Kind,SubjectRID,QueuedAt,Sent) VALUES "
              "(1,?1,?2,?3,0)"),
        sameCredential_(database,
                        "SELECT count(*) FROM CredentialBank WHERE UnitKey=1 AND CredentialType=1 "
                        "AND PINNo=?1 AND FacilityCode=7"),
        sameCode_(database,
                  "SELECT count(*) FROM DirectoryCode WHERE UNITKEY=1 AND DIRECTORYCODE=?1"),
        linkCode_(database,
                  "SELECT max(coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=1),0),"
                  "coalesce((SELECT max(LINKCODE) FROM Tenants WHERE UnitKey=1),0)+1)"),
        keepCounter_(database,
                     "INSERT INTO UnitCounters (UnitKey,NextLinkCode) VALUES (1,?1) ON CONFLICT "
                     "(UnitKey) DO UPDATE SET NextLinkCode=?1"),
        tenantId_(database, "SELECT TenantID FROM Tenants WHERE RID=?1 AND UnitKey=1") {}

  /// The same behind what a save asks: whether both numbers are free, and for the link code.
  void WriteChecked(std::int32_t line, std::string_view stamp) {
    Check(Read(sameCredential_, line) == 0 && Read(sameCode_, line) == 0, "the numbers are free");
    Check(Read(linkCode_, std::nullopt) == line, "the link code is the next one");
    Write(line, stamp);
    const StatementUse keep(keepCounter_);
    keep->BindNumber(1, line + 1);
    keep->Step();
    Check(Read(tenantId_, line) == line, "the tenant has an id");
  }

  void Write(std::int32_t line, std::string_view stamp) {
    const std::string number = NumberText(line);
    const std::string name = "Tenant " + number;
    const std::string shown = "Number " + name;
    const std::string phone = "555" + number;
    const std::int64_t credential = Insert(credential_, [&](Statement& row) {
      row.BindNumber(1, line);
      row.BindText(2, stamp);
    });
    const std::int64_t code = Insert(code_, [&](Statement& row) {
      row.BindNumber(1, line);
      row.BindText(2, phone);
      row.BindText(3, stamp);
      row.BindText(4, shown);
    });
    Queue("program directory code", code, stamp);
    const std::int64_t tenant = Insert(tenant_, [&](Statement& row) {
      row.BindText(1, name);
      row.BindText(2, shown);
      row.BindNumber(3, line);
      row.BindNumber(4, credential);
      row.BindNumber(5, code);
      row.BindText(6, stamp);
    });
    (void)Insert(backup_, [&](Statement& row) { row.BindNumber(1, tenant); });
    Queue("program tenant", tenant, stamp);
  }

 private:
  template <typename Binding>
  std::int64_t Insert(Statement& statement, Binding&& bind) {
    const StatementUse use(statement);
    bind(statement);
    use->Step();
    return sqlite3_last_insert_rowid(database_.handle());
  }
  static std::int64_t Read(Statement& statement, std::optional<std::int64_t> about) {
    const StatementUse use(statement);
    if (about) {
      use->BindNumber(1, *about);
    }
    return use->Step() ? use->Number(0) : -1;
  }
  void Queue(std::string_view kind, std::int64_t subject, std::string_view stamp) {
    (void)Insert(step_, [&](Statement& row) {
      row.BindText(1, kind);
      row.BindNumber(2, subject);
      row.BindText(3, stamp);
    });
  }

  Database& database_;
  Statement credential_;
  Statement code_;
  Statement tenant_;
  Statement backup_;
  Statement step_;
  Statement sameCredential_;
  Statement sameCode_;
  Statement linkCode_;
  Statement keepCounter_;
  Statement tenantId_;
};

using WriteLine = void (Rows::*)(std::int32_t line, std::string_view stamp);

void TakeInByHand(benchmark::State& state, WriteLine write) {
  const BenchStore store;
  for ([[maybe_unused]] auto iteration : state) {
    Database database = store.OpenDatabase();
    database.Run("BEGIN IMMEDIATE");
    {
      Rows rows(database);
      for (std::int32_t line = 1; line <= kLines; ++line) {
        (rows.*write)(line, "2026-01-15 09:30:00");
      }
    }
    database.Run("COMMIT");
  }
  Database database = store.OpenDatabase();
  CheckRows(database, kLines);
  state.counters[kItems] = kLines;
}

}  // namespace

std::vector<Comparison> AddImportBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kOurs, TakeIn, kLines)->Iterations(1);
  benchmark::RegisterBenchmark(kOursTenth, TakeIn, kTenth)->Iterations(1);
  benchmark::RegisterBenchmark(kByHand, TakeInByHand, &Rows::Write)->Iterations(1);
  benchmark::RegisterBenchmark(kCheckedByHand, TakeInByHand, &Rows::WriteChecked)->Iterations(1);
  constexpr double kGoal = 3.0;
  constexpr double kGrowthGoal = 1.2;  // ten times the lines take at most twelve times as long
  return {{"import-tenants", kOurs, kByHand, kGoal},
          {"import-tenants-checked", kOurs, kCheckedByHand, kGoal},
          {"import-tenants-growth", kOurs, kOursTenth, kGrowthGoal}};
}

}  // namespace qorbench
