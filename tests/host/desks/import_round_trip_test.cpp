// What a report writes as CSV, an import takes back: the same report again, but for identities.
#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "host/desks/credential_import.h"
#include "host/desks/dir_code_import.h"
#include "tests/host/desks/import_told.h"
#include "tests/host/desks/report_fixture.h"

namespace qorhost::test {
namespace {

using testing::IsEmpty;

class RoundTrip : public ReportFixture {
 protected:
  // Every line is the same operation, which the tests of its desk run again.
  RoundTrip() { replays_ = false; }

  [[nodiscard]] ImportReport ImportCodes(const std::string& csv) {
    ImportFile file(csv, DirCodeImportColumns());
    return ImportDirCodes(session(), kUnit, file, {}, nullptr);
  }
  [[nodiscard]] ImportReport ImportCards(const std::string& csv) {
    ImportFile file(csv, CredentialImportColumns());
    return ImportCredentials(session(), kUnit, file, {}, nullptr);
  }
  /// The stored codes with their periods.
  [[nodiscard]] std::vector<std::vector<qorcred::Value>> StoredDates() {
    const QueryResult result = session().sql().Select(
        "SELECT DIRECTORYCODE,STARTDATE,ENDDATE FROM DIRECTORYCODE WHERE UNITKEY=2 ORDER BY "
        "DIRECTORYCODE");
    std::vector<std::vector<qorcred::Value>> rows;
    for (const ResultRow row : result.rows()) {
      rows.push_back({row[0], row[1], row[2]});
    }
    return rows;
  }
  /// Goes on in another building, whose unit has no codes.
  void OpenOtherWithoutCodes() {
    Open(false);
    Run("DELETE FROM DIRECTORYCODE WHERE UNITKEY=2");
  }
};

TEST_F(RoundTrip, TheFieldsOfANewStoreAreTheHeadingsOfAnImport) {
  const QueryResult fields = session().sql().Select(
      "SELECT FieldNameDisplay FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' "
      "ORDER BY DisplaySeq");
  std::vector<std::string> captions;
  for (const ResultRow row : fields.rows()) {
    captions.push_back(qorcred::TextOrEmpty(row[0]));
  }
  std::vector<std::string> headings;
  for (const ImportColumn& column : DirCodeImportColumns()) {
    if (!column.passedOver) {
      headings.emplace_back(column.heading);
    }
  }
  EXPECT_EQ(captions, headings);
}

/// Every line without its last two cells, which hold no quotes and commas.
std::string WithoutRids(const std::string& csv) {
  std::istringstream lines(csv);
  std::string kept;
  for (std::string line; std::getline(lines, line);) {
    line.erase(line.rfind(',', line.rfind(',') - 1));
    kept += line + "\n";
  }
  return kept;
}

/// A few hundred codes with all that a code can have, as a CSV file.
std::string VariedCodes() {
  constexpr unsigned kSeed = 20260131;
  std::mt19937 random(kSeed);
  const auto chance = [&random](unsigned of) { return random() % of == 0; };
  const std::vector<std::string> names{"Karin Abel",
                                       "\"Baker, Ruth\"",
                                       "Émile Söderberg",
                                       "名前",
                                       "\"Say \"\"hi\"\"\"",
                                       "\" \"",
                                       "'=1+2",
                                       "'-dash",
                                       "'@home",
                                       "Ωmega & Co.",
                                       "50% off",
                                       ""};
  const std::vector<std::string> schedules{"Night Shift", "Full Access", "No Access", "Management"};
  const std::vector<std::string> days{"01 Jan 2025 00:00", "29 Feb 2028 12:34", "31 Dec 2026 23:59",
                                      ""};
  std::string csv =
      "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
      "Status,Directory Start Date,Directory End Date,DND Schedule,CF Schedule,CF Phone No.,CF "
      "Extension,CF Time Delay,Show Display Name,Show Directory Code\n";
  for (int code = 0; code < 400; ++code) {
    const auto any = [&random](const std::vector<std::string>& of) {
      return of[random() % of.size()];
    };
    const bool active = !chance(4);
    const bool forwarded = chance(3);
    // A start late enough stands before no end.
    const std::string end = active ? any(days) : "";
    const std::string start = active && end != days[0] ? days[0] : "";
    csv += std::to_string(code * 23 + 1) + ",'+49 555-" + std::to_string(code) + "," +
           (chance(2) ? "12,5" : ",") + "," + any(names) + "," + (active ? "Active" : "Inactive") +
           "," + start + "," + end + "," + (chance(3) ? any(schedules) : "") + "," +
           (forwarded ? any(schedules) + ",\"555 0200, 7\"," + (chance(2) ? "3,9" : ",")
                      : std::string(",,,")) +
           "," + (chance(2) ? "True" : "False") + "," + (chance(2) ? "True" : "False") + "\n";
  }
  return csv;
}

TEST_F(RoundTrip, DirectoryCodesComeOutByteByByteAsTheyWentIn) {
  const ImportReport filled = ImportCodes(VariedCodes());
  ASSERT_EQ(filled.ending, Ending::kDone) << testing::PrintToString(Told(filled));
  const std::string exported = CsvOf(Codes());
  EXPECT_EQ(std::count(exported.begin(), exported.end(), '\n'), 1 + 6 + 400);

  OpenOtherWithoutCodes();
  const ImportReport report = ImportCodes(exported);
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(CsvOf(Codes()), exported);
}

TEST_F(RoundTrip, StoredDatesComeBackToTheSecond) {
  ASSERT_EQ(ImportCodes(VariedCodes()).ending, Ending::kDone);
  const std::string exported = CsvOf(Codes());
  const auto before = StoredDates();
  EXPECT_EQ(before.size(), 406U);

  OpenOtherWithoutCodes();
  ASSERT_EQ(ImportCodes(exported).ending, Ending::kDone);
  EXPECT_EQ(StoredDates(), before);
}

TEST_F(RoundTrip, CredentialsComeOutAsTheyWentInButForTheirRids) {
  // Residents are not on the screen, so their credentials could not be assigned.
  Run("UPDATE Tenants SET Resident=0 WHERE UnitKey=2");
  const ImportReport more = ImportCards(
      "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button Number\n"
      "transmitter,901,255,26,2,4\ntransmitter,901,255,26,2,1\ncard30,65535,63,,,\n"
      "card26,65535,0,,,\ncard26,1,,,,\n");
  ASSERT_EQ(more.ending, Ending::kDone) << testing::PrintToString(Told(more));
  const std::string exported = CsvOf(Credentials());
  EXPECT_EQ(std::count(exported.begin(), exported.end(), '\n'), 1 + 145 + 5);

  Open(false);
  Run("UPDATE Tenants SET CREDENTIALID1=NULL,CREDENTIALID2=NULL,Resident=0 WHERE UNITKEY=2");
  Run("DELETE FROM CREDENTIALBANK WHERE UNITKEY=2");
  const ImportReport report = ImportCards(exported);
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(WithoutRids(CsvOf(Credentials())), WithoutRids(exported));
}

}  // namespace
}  // namespace qorhost::test
