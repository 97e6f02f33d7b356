#include "bench/hand_written.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string_view>

#include "bench/check.h"
#include "bench/save_screen.h"

namespace qorbench::by_hand {

namespace {

constexpr std::size_t kLongestText = 640;

void CheckDone(sqlite3* database, bool done) {
  Check(done, sqlite3_errmsg(database));
}

void Run(sqlite3* database, const char* sql) {
  CheckDone(database, sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
}

// Runs a query of one row and gives the whole number in its first column.
std::int64_t NumberOf(sqlite3* database, const char* sql) {
  std::int64_t number = 0;
  const auto keep = [](void* into, int /*columns*/, char** texts, char** /*names*/) {
    *static_cast<std::int64_t*>(into) = std::strtoll(texts[0], nullptr, 10);
    return 0;
  };
  CheckDone(database, sqlite3_exec(database, sql, keep, &number, nullptr) == SQLITE_OK);
  return number;
}

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

Statement Prepare(sqlite3* database, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  CheckDone(database,
            sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                               SQLITE_PREPARE_PERSISTENT, &statement, nullptr) == SQLITE_OK);
  return Statement(statement);
}

void BindAll(const Statement& statement, std::span<const std::int64_t> numbers) {
  int parameter = 0;
  for (const std::int64_t number : numbers) {
    sqlite3_bind_int64(statement.get(), ++parameter, number);
  }
}

void BindText(const Statement& statement, int parameter, std::string_view text) {
  sqlite3_bind_text(statement.get(), parameter, text.data(), static_cast<int>(text.size()),
                    SQLITE_STATIC);
}

void Change(sqlite3* database, const Statement& statement) {
  CheckDone(database, sqlite3_step(statement.get()) == SQLITE_DONE);
  sqlite3_reset(statement.get());
}

std::int64_t Read(sqlite3* database, const Statement& statement) {
  CheckDone(database, sqlite3_step(statement.get()) == SQLITE_ROW);
  const std::int64_t number = sqlite3_column_int64(statement.get(), 0);
  sqlite3_reset(statement.get());
  return number;
}

std::string TextIn(const Statement& statement, int column) {
  const void* text = sqlite3_column_blob(statement.get(), column);
  if (text == nullptr) return {};
  const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
  return {static_cast<const char*>(text), length};
}

// Reads the columns into the numbers and texts of a row.
template <std::size_t kCount>
void ReadNumbers(const Statement& statement, const std::array<int, kCount>& columns,
                 std::array<std::int32_t, kCount>& numbers) {
  for (std::size_t place = 0; place < kCount; ++place) {
    numbers.at(place) = sqlite3_column_int(statement.get(), columns.at(place));
  }
}

template <std::size_t kCount>
void ReadTexts(const Statement& statement, const std::array<int, kCount>& columns,
               std::array<std::string, kCount>& texts) {
  for (std::size_t place = 0; place < kCount; ++place) {
    texts.at(place) = TextIn(statement, columns.at(place));
  }
}

// The time stamp of a transaction's rows, made once.
std::string Stamp() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  std::array<char, 32> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return {text.data(), length};
}

template <typename... Arguments>
void Print(std::array<char, kLongestText>& text, const char* format, Arguments... arguments) {
  const int length = std::snprintf(text.data(), text.size(), format, arguments...);
  Check(length > 0 && static_cast<std::size_t>(length) < text.size(), "the statement fits");
}

constexpr const char* kCredentialText =
    "INSERT INTO CredentialBank (UnitKey,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,"
    "ButtonNumber,LASTMODIFIEDDATE) VALUES (%d,%d,%d,%d,0,0,1,'%s')";
constexpr const char* kNextLinkCodeText =
    "SELECT max(coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=%d),0),"
    "coalesce((SELECT max(LINKCODE) FROM Tenants WHERE UnitKey=%d),0)+1)";
constexpr const char* kTenantText =
    "INSERT INTO Tenants (UnitKey,LastName,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,"
    "DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,LASTMODIFIEDDATE,GROUPID,LINKCODE,"
    "ACTIVETENANT) VALUES (%d,'No Name%d%d',%lld,1,1,0,0,'2026-01-01 08:00:00',"
    "'2026-12-31 23:59:59','%s',%d,%lld,-1)";
constexpr const char* kReadCounterText =
    "SELECT coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=%d),%lld)";
constexpr const char* kKeepCounterText =
    "INSERT INTO UnitCounters (UnitKey,NextLinkCode) VALUES (%d,%lld) ON CONFLICT (UnitKey) DO "
    "UPDATE SET NextLinkCode=excluded.NextLinkCode";
constexpr const char* kTenantIdText = "SELECT TenantID FROM Tenants WHERE RID=%lld AND UnitKey=%d";
constexpr const char* kBackupText = "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (%d,%lld)";
constexpr const char* kStepText =
    "INSERT INTO ProgramSteps (UnitKey,Kind,SubjectRID,QueuedAt,Sent) VALUES "
    "(%d,'program tenant',%lld,'%s',0)";

void AppendId(std::string& ids, std::int64_t id) {
  ids += std::to_string(id);
  ids += ',';
}

// The statements of one number of a save with tenants.
class PreparedTenants {
 public:
  explicit PreparedTenants(sqlite3* database)
      : database_(database),
        credential_(Prepare(database,
                            "INSERT INTO CredentialBank (UnitKey,CredentialType,PINNo,FacilityCode,"
                            "IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE) VALUES "
                            "(?1,?2,?3,?4,?5,?6,?7,?8)")),
        nextLinkCode_(
            Prepare(database,
                    "SELECT max(coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=?1),"
                    "0),coalesce((SELECT max(LINKCODE) FROM Tenants WHERE UnitKey=?1),0)+1)")),
        tenant_(Prepare(database,
                        "INSERT INTO Tenants (UnitKey,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,"
                        "DOORSCHEDULE3,DOORSCHEDULE4,GROUPID,LINKCODE,ACTIVETENANT,LastName,"
                        "ACTIVESTARTTIME,ACTIVEENDTIME,LASTMODIFIEDDATE) VALUES "
                        "(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12,?13)")),
        readCounter_(Prepare(database,
                             "SELECT coalesce((SELECT NextLinkCode FROM UnitCounters WHERE "
                             "UnitKey=?1),?2)")),
        keepCounter_(Prepare(database,
                             "INSERT INTO UnitCounters (UnitKey,NextLinkCode) VALUES (?1,?2) ON "
                             "CONFLICT (UnitKey) DO UPDATE SET NextLinkCode=?2")),
        tenantId_(Prepare(database, "SELECT TenantID FROM Tenants WHERE RID=?1 AND UnitKey=?2")),
        backup_(Prepare(database, "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (?1,?2)")),
        step_(Prepare(database,
                      "INSERT INTO ProgramSteps (UnitKey,SubjectRID,Sent,Kind,QueuedAt) VALUES "
                      "(?1,?2,?3,?4,?5)")) {}

  // Returns the tenant's id.
  std::int64_t Issue(std::int32_t unit, std::int32_t number, std::string_view stamp) {
    constexpr int kStampOfCredential = 8;
    constexpr int kNameOfTenant = 10;
    constexpr int kStartOfTenant = 11;
    constexpr int kEndOfTenant = 12;
    constexpr int kStampOfTenant = 13;
    constexpr int kKindOfStep = 4;
    constexpr int kStampOfStep = 5;
    BindAll(credential_,
            std::array<std::int64_t, 7>{unit, kCardType, number, kFacilityCode, 0, 0, 1});
    BindText(credential_, kStampOfCredential, stamp);
    Change(database_, credential_);
    const std::int64_t credential = sqlite3_last_insert_rowid(database_);

    BindAll(nextLinkCode_, std::array<std::int64_t, 1>{unit});
    const std::int64_t linkCode = Read(database_, nextLinkCode_);

    std::array<char, 32> name{};
    const int length =
        std::snprintf(name.data(), name.size(), "No Name%d%d", int{kCardType}, int{number});
    BindAll(tenant_, std::array<std::int64_t, 9>{unit, credential, 1, 1, 0, 0, unit, linkCode, -1});
    BindText(tenant_, kNameOfTenant, {name.data(), static_cast<std::size_t>(length)});
    BindText(tenant_, kStartOfTenant, "2026-01-01 08:00:00");
    BindText(tenant_, kEndOfTenant, "2026-12-31 23:59:59");
    BindText(tenant_, kStampOfTenant, stamp);
    Change(database_, tenant_);
    const std::int64_t tenant = sqlite3_last_insert_rowid(database_);

    BindAll(readCounter_, std::array<std::int64_t, 2>{unit, linkCode});
    const std::int64_t counter = Read(database_, readCounter_);
    BindAll(keepCounter_, std::array<std::int64_t, 2>{unit, counter + 1});
    Change(database_, keepCounter_);

    BindAll(tenantId_, std::array<std::int64_t, 2>{tenant, unit});
    const std::int64_t tenantId = Read(database_, tenantId_);
    BindAll(backup_, std::array<std::int64_t, 2>{unit, tenantId});
    Change(database_, backup_);
    BindAll(step_, std::array<std::int64_t, 3>{unit, tenant, 0});
    BindText(step_, kKindOfStep, "program tenant");
    BindText(step_, kStampOfStep, stamp);
    Change(database_, step_);
    return tenantId;
  }

 private:
  sqlite3* database_;
  Statement credential_;
  Statement nextLinkCode_;
  Statement tenant_;
  Statement readCounter_;
  Statement keepCounter_;
  Statement tenantId_;
  Statement backup_;
  Statement step_;
};

std::int64_t IssueTenantWithTexts(sqlite3* database, std::int32_t unit, std::int32_t number,
                                  const char* stamp) {
  std::array<char, kLongestText> text{};
  Print(text, kCredentialText, unit, kCardType, number, kFacilityCode, stamp);
  Run(database, text.data());
  const long long credential = sqlite3_last_insert_rowid(database);
  Print(text, kNextLinkCodeText, unit, unit);
  const long long linkCode = NumberOf(database, text.data());
  Print(text, kTenantText, unit, kCardType, number, credential, stamp, unit, linkCode);
  Run(database, text.data());
  const long long tenant = sqlite3_last_insert_rowid(database);
  Print(text, kReadCounterText, unit, linkCode);
  const long long counter = NumberOf(database, text.data());
  Print(text, kKeepCounterText, unit, counter + 1);
  Run(database, text.data());
  Print(text, kTenantIdText, tenant, unit);
  const long long tenantId = NumberOf(database, text.data());
  Print(text, kBackupText, unit, tenantId);
  Run(database, text.data());
  Print(text, kStepText, unit, tenant, stamp);
  Run(database, text.data());
  return tenantId;
}

}  // namespace

std::int64_t IssueWithTexts(sqlite3* database, std::span<const RangeSave> saves) {
  std::int64_t last = 0;
  for (const RangeSave& save : saves) {
    const std::string stamp = Stamp();
    std::array<char, kLongestText> text{};
    Run(database, "BEGIN IMMEDIATE");
    for (std::int32_t number = save.start; number <= save.end; ++number) {
      Print(text, kCredentialText, save.unit, kCardType, number, kFacilityCode, stamp.c_str());
      Run(database, text.data());
      last = sqlite3_last_insert_rowid(database);
    }
    Run(database, "COMMIT");
  }
  return last;
}

std::int64_t IssuePrepared(sqlite3* database, std::span<const RangeSave> saves) {
  const Statement insert =
      Prepare(database,
              "INSERT INTO CredentialBank (UnitKey,CredentialType,PINNo,FacilityCode,IDCode,"
              "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE) VALUES (?1,?2,?3,?4,?5,?6,?7,?8)");
  constexpr int kStampParameter = 8;
  std::int64_t last = 0;
  for (const RangeSave& save : saves) {
    const std::string stamp = Stamp();
    Run(database, "BEGIN IMMEDIATE");
    for (std::int32_t number = save.start; number <= save.end; ++number) {
      BindAll(insert,
              std::array<std::int64_t, 7>{save.unit, kCardType, number, kFacilityCode, 0, 0, 1});
      BindText(insert, kStampParameter, stamp);
      Change(database, insert);
      last = sqlite3_last_insert_rowid(database);
    }
    Run(database, "COMMIT");
  }
  return last;
}

void Renumber(sqlite3* database, std::int32_t unit, std::int32_t rows, std::int32_t times) {
  const Statement find = Prepare(database,
                                 "SELECT PINNo FROM CredentialBank WHERE UnitKey=?1 AND "
                                 "CredentialType=?2 AND desktop_val(PINNo)=?3 AND RID<>?4");
  const Statement read =
      Prepare(database, "SELECT LASTMODIFIEDDATE FROM CredentialBank WHERE RID=?1");
  const Statement change = Prepare(database,
                                   "UPDATE CredentialBank SET PINNo=?1,LASTMODIFIEDDATE=?4 WHERE "
                                   "UnitKey=?2 AND RID=?3");
  constexpr int kStampParameter = 4;
  for (std::int32_t time = 1; time <= times; ++time) {
    for (std::int32_t rid = 1; rid <= rows; ++rid) {
      const std::int64_t number = rid + std::int64_t{time} * rows;
      const std::string stamp = Stamp();
      Run(database, "BEGIN IMMEDIATE");
      BindAll(find, std::array<std::int64_t, 4>{unit, kCardType, number, rid});
      CheckDone(database, sqlite3_step(find.get()) == SQLITE_DONE);
      sqlite3_reset(find.get());
      BindAll(read, std::array<std::int64_t, 1>{rid});
      CheckDone(database, sqlite3_step(read.get()) == SQLITE_ROW);
      sqlite3_reset(read.get());
      BindAll(change, std::array<std::int64_t, 3>{number, unit, rid});
      BindText(change, kStampParameter, stamp);
      Change(database, change);
      Run(database, "COMMIT");
    }
  }
}

std::string IssueTenantsWithTexts(sqlite3* database, std::span<const RangeSave> saves) {
  std::string ids;
  for (const RangeSave& save : saves) {
    const std::string stamp = Stamp();
    Run(database, "BEGIN IMMEDIATE");
    for (std::int32_t number = save.start; number <= save.end; ++number) {
      AppendId(ids, IssueTenantWithTexts(database, save.unit, number, stamp.c_str()));
    }
    Run(database, "COMMIT");
  }
  return ids;
}

std::string IssueTenantsPrepared(sqlite3* database, std::span<const RangeSave> saves) {
  PreparedTenants tenants(database);
  std::string ids;
  for (const RangeSave& save : saves) {
    const std::string stamp = Stamp();
    Run(database, "BEGIN IMMEDIATE");
    for (std::int32_t number = save.start; number <= save.end; ++number) {
      AppendId(ids, tenants.Issue(save.unit, number, stamp));
    }
    Run(database, "COMMIT");
  }
  return ids;
}

void EditTenants(sqlite3* database, std::int32_t unit) {
  constexpr std::size_t kAtOnce = 500;
  const std::string stamp = Stamp();
  Run(database, "BEGIN IMMEDIATE");
  std::vector<std::int64_t> rids;
  {
    const Statement read =
        Prepare(database, "SELECT RID FROM Tenants WHERE UnitKey=?1 AND DOORSCHEDULE3=1");
    BindAll(read, std::array<std::int64_t, 1>{unit});
    while (sqlite3_step(read.get()) == SQLITE_ROW) {
      rids.push_back(sqlite3_column_int64(read.get(), 0));
    }
  }
  for (std::size_t first = 0; first < rids.size(); first += kAtOnce) {
    std::string some;
    for (std::size_t at = first; at < std::min(first + kAtOnce, rids.size()); ++at) {
      some += (some.empty() ? "" : ",") + std::to_string(rids[at]);
    }
    Run(database, ("UPDATE Tenants SET DOORSCHEDULE3=0, LASTMODIFIEDDATE='" + stamp +
                   "' WHERE UnitKey=" + std::to_string(unit) + " AND RID IN (" + some + ")")
                      .c_str());
  }
  const Statement withdraw =
      Prepare(database,
              "DELETE FROM ProgramSteps WHERE UnitKey=?1 AND SubjectRID=?2 AND "
              "Kind='program tenant' AND Sent=0");
  const Statement queue = Prepare(
      database, ("INSERT INTO ProgramSteps (UnitKey, Kind, SubjectRID, QueuedAt, Sent) VALUES (?1, "
                 "'program tenant', ?2, '" +
                 stamp + "', 0)")
                    .c_str());
  for (const std::int64_t rid : rids) {
    for (const Statement* statement : {&withdraw, &queue}) {
      BindAll(*statement, std::array<std::int64_t, 2>{unit, rid});
      CheckDone(database, sqlite3_step(statement->get()) == SQLITE_DONE);
      sqlite3_reset(statement->get());
    }
  }
  Run(database, "COMMIT");
}

std::vector<ListedCredential> ListCredentials(sqlite3* database, std::int32_t unit) {
  const Statement list =
      Prepare(database,
              "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,"
              "ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CredentialBank WHERE UnitKey=?1 "
              "ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber");
  enum Column { kUnit, kRid, kType, kNumber, kFacility, kId, kSequence, kButton, kStamp, kDoor };
  BindAll(list, std::array<std::int64_t, 1>{unit});
  std::vector<ListedCredential> rows;
  int code = SQLITE_OK;
  while ((code = sqlite3_step(list.get())) == SQLITE_ROW) {
    const auto number = [&list](Column column) { return sqlite3_column_int(list.get(), column); };
    rows.push_back({number(kUnit), number(kRid), number(kType), number(kNumber), number(kFacility),
                    number(kId), number(kSequence), number(kButton), TextIn(list, kStamp),
                    number(kDoor)});
  }
  CheckDone(database, code == SQLITE_DONE);
  return rows;
}

std::vector<ListedCode> ListCodes(sqlite3* database, std::int32_t unit, int digits) {
  const Statement list = Prepare(
      database,
      "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,"
      "CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,"
      "STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DirectoryCode "
      "WHERE UNITKEY=?1 AND DIRECTORYCODE>=0 ORDER BY DIRECTORYCODE");
  constexpr int kRid = 1;
  constexpr int kCode = 2;
  constexpr std::array kNumbers{0, 5, 6, 7, 8, 9, 12, 14, 18, 19};
  constexpr std::array kTexts{3, 4, 10, 11, 13, 15, 16, 17};
  BindAll(list, std::array<std::int64_t, 1>{unit});
  std::vector<ListedCode> rows;
  int code = SQLITE_OK;
  while ((code = sqlite3_step(list.get())) == SQLITE_ROW) {
    ListedCode& row = rows.emplace_back();
    row.rid = sqlite3_column_int(list.get(), kRid);
    row.shown = std::to_string(sqlite3_column_int64(list.get(), kCode));
    const auto length = static_cast<std::size_t>(digits);
    if (row.shown.size() < length) row.shown.insert(0, length - row.shown.size(), '0');
    ReadNumbers(list, kNumbers, row.numbers);
    ReadTexts(list, kTexts, row.texts);
  }
  CheckDone(database, code == SQLITE_DONE);
  return rows;
}

std::vector<ReportedCode> ReportCodes(sqlite3* database, std::int32_t unit) {
  const Statement report = Prepare(
      database,
      "SELECT DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DISPLAYNAME,ACTIVE,STARTDATE,ENDDATE,"
      "ISDNDCHECKED,DNDSCHEDULEID,ISCFCHECKED,CFSCHEDULEID,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
      "SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DirectoryCode WHERE UNITKEY=?1 AND DIRECTORYCODE>=0 "
      "AND DISPLAYNAME LIKE 'Name%' AND ACTIVE=-1 "
      "ORDER BY DISPLAYNAME");
  constexpr std::array kNumbers{3, 5, 8, 9, 10, 11, 14, 15, 16};
  constexpr std::array kTexts{1, 2, 4, 6, 7, 12, 13};
  BindAll(report, std::array<std::int64_t, 1>{unit});
  std::vector<ReportedCode> rows;
  int code = SQLITE_OK;
  while ((code = sqlite3_step(report.get())) == SQLITE_ROW) {
    ReportedCode& row = rows.emplace_back();
    row.code = sqlite3_column_double(report.get(), 0);
    ReadNumbers(report, kNumbers, row.numbers);
    ReadTexts(report, kTexts, row.texts);
  }
  CheckDone(database, code == SQLITE_DONE);
  return rows;
}

std::vector<ReportedCredential> ReportCredentials(sqlite3* database, std::int32_t unit,
                                                  std::int32_t facility) {
  const Statement report = Prepare(
      database,
      "SELECT CASE CredentialType WHEN 0 THEN 'Corvin 30 Bit card' WHEN 1 THEN 'Standard 26 Bit "
      "card' WHEN 2 THEN 'Transmitter' ELSE 'Corporate 1000 35-Bit Card' END COLLATE DESKTOP,"
      "PINNo,FacilityCode,CASE WHEN CredentialType=2 THEN IDCode END,"
      "CASE WHEN CredentialType=2 THEN SequenceNumber END,"
      "CASE WHEN CredentialType=2 THEN ButtonNumber END,(ifnull(b.LastName,'')||' '||"
      "ifnull(b.FirstName,'')||' '||ifnull(b.MiddleInitial,'')) COLLATE DESKTOP,CredentialType,"
      "a.RID,b.RID FROM CredentialBank a,Tenants b "
      "WHERE (a.RID=b.CREDENTIALID1 OR a.RID=b.CREDENTIALID2) AND a.UnitKey=?1 "
      "AND FacilityCode=?2 "
      "UNION SELECT CASE CredentialType WHEN 0 THEN 'Corvin 30 Bit card' WHEN 1 THEN 'Standard 26 "
      "Bit card' WHEN 2 THEN 'Transmitter' ELSE 'Corporate 1000 35-Bit Card' END COLLATE DESKTOP,"
      "PINNo,FacilityCode,CASE WHEN CredentialType=2 THEN IDCode END,"
      "CASE WHEN CredentialType=2 THEN SequenceNumber END,"
      "CASE WHEN CredentialType=2 THEN ButtonNumber END,'Unassigned' COLLATE DESKTOP,"
      "CredentialType,RID,-1 FROM CredentialBank WHERE UnitKey=?1 AND RID NOT IN (SELECT "
      "CREDENTIALID1 FROM Tenants WHERE UnitKey=?1 AND Resident=0 AND CREDENTIALID1 IS NOT NULL) "
      "AND RID NOT IN (SELECT CREDENTIALID2 FROM Tenants WHERE UnitKey=?1 AND Resident=0 AND "
      "CREDENTIALID2 IS NOT NULL) AND FacilityCode=?2");
  constexpr int kType = 0;
  constexpr int kHolder = 6;
  constexpr std::array kNumbers{1, 2, 3, 4, 5, 7, 8, 9};
  BindAll(report, std::array<std::int64_t, 2>{unit, facility});
  std::vector<ReportedCredential> rows;
  int code = SQLITE_OK;
  while ((code = sqlite3_step(report.get())) == SQLITE_ROW) {
    ReportedCredential& row = rows.emplace_back();
    row.type = TextIn(report, kType);
    row.holder = TextIn(report, kHolder);
    ReadNumbers(report, kNumbers, row.numbers);
  }
  CheckDone(database, code == SQLITE_DONE);
  return rows;
}

}  // namespace qorbench::by_hand
