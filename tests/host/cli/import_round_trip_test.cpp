// What a report writes as CSV, an import takes back: the same report again, but for identities.
#include <gmock/gmock.h>

#include <random>
#include <sstream>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::IsEmpty;

class RoundTrip : public ImportFixture {
 protected:
  /// The same words on another store.
  [[nodiscard]] Outcome RunOnOther(std::vector<std::string> words, const std::string& input = "") {
    words.insert(words.begin(), {"--db", File("other.db")});
    return Run(std::move(words), input);
  }
  void InitOther() { ASSERT_EQ(RunOnOther({"init", "--demo"}).status, 0); }
  void Empty(const std::string& table) {
    ASSERT_EQ(RunOnOther({"sql", "--write", "DELETE FROM " + table + " WHERE UNITKEY=2"}).status,
              0);
  }
  [[nodiscard]] std::string Report(const std::string& what) {
    return Run({"--unit", "2", "report", what, "--format", "csv"}).out;
  }
  [[nodiscard]] std::string ReportOfOther(const std::string& what) {
    return RunOnOther({"--unit", "2", "report", what, "--format", "csv"}).out;
  }
};

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
  const Outcome filled = Import("dircodes", VariedCodes());
  ASSERT_EQ(filled.status, 0) << filled.err;
  const std::string exported = Report("dircodes");
  EXPECT_EQ(std::count(exported.begin(), exported.end(), '\n'), 1 + 6 + 400);

  InitOther();
  Empty("DIRECTORYCODE");
  const Outcome outcome = RunOnOther({"--unit", "2", "dircodes", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(ReportOfOther("dircodes"), exported);
}

TEST_F(RoundTrip, StoredDatesComeBackToTheSecond) {
  ASSERT_EQ(Import("dircodes", VariedCodes()).status, 0);
  const std::string exported = Report("dircodes");
  const std::string statement =
      "SELECT DIRECTORYCODE,STARTDATE,ENDDATE FROM DIRECTORYCODE WHERE UNITKEY=2 ORDER BY "
      "DIRECTORYCODE";
  const nlohmann::json before = Query(statement);
  InitOther();
  Empty("DIRECTORYCODE");
  ASSERT_EQ(RunOnOther({"--unit", "2", "dircodes", "import", "-"}, exported).status, 0);
  EXPECT_EQ(nlohmann::json::parse(RunOnOther({"sql", statement, "--json"}).out), before);
}

TEST_F(RoundTrip, CredentialsComeOutAsTheyWentInButForTheirRids) {
  // Residents are not on the screen, so their credentials could not be assigned.
  Change("UPDATE Tenants SET Resident=0 WHERE UnitKey=2");
  const Outcome more =
      Import("credentials",
             "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button Number\n"
             "transmitter,901,255,26,2,4\ntransmitter,901,255,26,2,1\ncard30,65535,63,,,\n"
             "card26,65535,0,,,\ncard26,1,,,,\n");
  ASSERT_EQ(more.status, 0) << more.err;
  const std::string exported = Report("credentials");
  EXPECT_EQ(std::count(exported.begin(), exported.end(), '\n'), 1 + 145 + 5);

  InitOther();
  Empty("CREDENTIALBANK");
  ASSERT_EQ(RunOnOther({"sql", "--write",
                        "UPDATE Tenants SET CREDENTIALID1=NULL,CREDENTIALID2=NULL,Resident=0 WHERE "
                        "UNITKEY=2"})
                .status,
            0);
  const Outcome outcome = RunOnOther({"--unit", "2", "credentials", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(WithoutRids(ReportOfOther("credentials")), WithoutRids(exported));
}

}  // namespace
}  // namespace qorhost::test
