// What is exported of a unit's tenants gives the same store again.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "frame/text.h"
#include "host/desks/door_desk.h"
#include "host/desks/store_overview.h"
#include "host/desks/tenant_export.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import.h"
#include "host/files/csv_writer.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/desks/import_told.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// All that is stored of unit 2, but for identities, time stamps, counters and what the unit knows
/// already; what refers to rows says what stands in them.
class WholeStore {
 public:
  explicit WholeStore(DeskSession& session) : session_(session) {
    Read("CREDENTIALBANK", {"RID", "LASTMODIFIEDDATE"});
    Read("DIRECTORYCODE", {"RID", "LASTMODIFIEDDATE", "MODIFIED", "OLDDIRECTORYCODE"});
    Read("TENANTS", {"RID", "TENANTID", "LINKCODE", "LASTMODIFIEDDATE"});
    Read("DOORS", {});
  }
  [[nodiscard]] const std::vector<std::string>& rows() const { return rows_; }

 private:
  void Read(const std::string& table, const std::vector<std::string>& leftOut) {
    const QueryResult result =
        session_.sql().Select("SELECT * FROM " + table + " WHERE UNITKEY=2 ORDER BY RID");
    std::vector<std::string> rows;
    for (const ResultRow row : result.rows()) {
      std::string text = table;
      std::string rid;
      for (std::size_t at = 0; at < result.columns.size(); ++at) {
        std::string column = result.columns[at];
        std::transform(column.begin(), column.end(), column.begin(), qorcred::LowerAscii);
        const std::string cell = qorcred::TextOrEmpty(row[static_cast<std::int32_t>(at)]);
        rid = column == "rid" ? cell : rid;
        const bool isOut = std::any_of(leftOut.begin(), leftOut.end(), [&](const auto& out) {
          return qorcred::CompareIgnoringCase(out, column) == 0;
        });
        const bool isCard = column.starts_with("credentialid");
        const bool isCode = table == "TENANTS" && column == "directorycode";
        if (!isOut) {
          text += "\n  " + column + "=" +
                  (isCard || isCode ? referred_[(isCard ? "C" : "D") + cell] : cell);
        }
      }
      if (table == "CREDENTIALBANK" || table == "DIRECTORYCODE") {
        referred_[table.substr(0, 1) + rid] = text;
      }
      rows.push_back(text);
    }
    if (table != "TENANTS") {
      std::sort(rows.begin(), rows.end());
    }
    rows_.insert(rows_.end(), rows.begin(), rows.end());
  }

  DeskSession& session_;
  std::vector<std::string> rows_;
  std::map<std::string, std::string> referred_;
};

class TenantRoundTrip : public DeskFixture {
 protected:
  [[nodiscard]] ImportReport Import(const std::string& text, const TenantImportRules& rules = {}) {
    ImportFile file(text, TenantFileColumns());
    return ImportTenants(session(), kUnit, file, rules, nullptr);
  }
  [[nodiscard]] std::string Exported() {
    std::ostringstream csv;
    PrintCsv(csv, ExportedTenants(session(), kUnit));
    return csv.str();
  }
  /// The names of the doors, as the list of doors has them.
  [[nodiscard]] std::vector<std::string> Doors() {
    constexpr std::size_t kName = 2;
    std::vector<std::string> names;
    for (const auto& row : DoorList(session(), {{kUnit, {}}}).rows) {
      names.push_back(qorcred::TextOrEmpty(row[kName]));
    }
    return names;
  }
};

TEST_F(TenantRoundTrip, WhatIsExportedGivesTheSameStoreAgain) {
  // Something of all that there can be, residents and lone second cards among it.
  TenantImportRules adding;
  adding.apostrophes = Apostrophes::kReplaced;
  const std::string more =
      "Last Name,First Name,Name at Unit,Card 2 Type,Card 2 Number,Card 2 ID Code,Card 2 Sequence "
      "Number,Card 2 Door,Resident,Start,End,Active,Group,Directory Code,Phone,Phone No. "
      "Extension,Phone No. Delay,Directory Status,Directory Start Date,Directory End Date,DND "
      "Schedule,CF Schedule,CF Phone No.,Show Display Name\n"
      "'t Hooft,=Jo,\"Jo, \"\"the\"\" one\",card26,40001,,,Garden Gate North Side,yes,2026-05-06 "
      "07:08:09,2028-01-01 12:00,no,4,3001,+49 30 1,12,7,Active,2026-02-03 04:05:06,2027-01-01 "
      "23:59:00,Management,Late Shift,555-1,no\n"
      "O'Brien,Ann,<None>,transmitter,777,3,2,,no,,,yes,,3002,2,,,Inactive,,,,,,yes\n"
      "Same,Sam,,,,,,,no,,,,,3002,,,,,,,,,,\n"
      "<Unassigned>,,,,,,,,,,,,,3003,3,,,,,,No Access,,,\n"
      "<Unassigned>,,,card30,4002,,,2,,,,,,,,,,,,,,,,\n";
  ASSERT_THAT(Told(Import(more, adding)), IsEmpty());
  Run("UPDATE Tenants SET CREDENTIALID2=NULL WHERE RID=61; INSERT INTO Tenants (UnitKey, LastName, "
      "FirstName, NameAtUnit, GROUPID, LINKCODE, DOORSCHEDULE1, DOORSCHEDULE2, DOORSCHEDULE3, "
      "DOORSCHEDULE4) VALUES (2, 'Same', 'Sam', 'Sam Same', 3, 500, 0, 0, 0, 0)");
  const std::vector<std::string> before = WholeStore(session()).rows();
  const std::string exported = Exported();
  const std::vector<std::string> doors = Doors();

  // Doors are no rows that come and go: they are emptied, and named again before their cards come.
  Run("UPDATE DOORS SET DOORNAME='' WHERE UNITKEY=2");
  ASSERT_NE(Doors(), doors);
  std::vector<NewDoorName> named;
  for (std::size_t at = 0; at < doors.size(); ++at) {
    named.push_back({std::to_string(at + 1), doors[at]});
  }
  ASSERT_EQ(RenameDoors(session(), kUnit, named, Trial::kNo).size(), doors.size());

  Run("DELETE FROM Tenants WHERE UnitKey=2; DELETE FROM CredentialBank WHERE UnitKey=2; DELETE "
      "FROM DirectoryCode WHERE UNITKEY=2; DELETE FROM ProgramSteps");
  const ImportReport report = Import(exported);
  EXPECT_EQ(report.ending, Ending::kDone);
  for (const std::string& told : Told(report)) {
    EXPECT_THAT(told, HasSubstr("somebody else of the same name"));
  }
  EXPECT_EQ(WholeStore(session()).rows(), before);

  TenantImportRules skipping;
  skipping.stored = StoredTenants::kSkipped;
  const ImportReport again = Import(Exported(), skipping);
  EXPECT_EQ(again.unchanged, report.done) << "there already";
}

}  // namespace
}  // namespace qorhost::test
