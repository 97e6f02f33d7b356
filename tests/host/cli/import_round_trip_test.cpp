// What a report prints as CSV, an import reads from standard input.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

class RoundTrip : public ImportFixture {
 protected:
  /// A list of unit 2 as CSV; its columns that are named.
  [[nodiscard]] std::string Listed(const std::string& what, const std::string& columns = {}) {
    std::vector<std::string> words{"--unit", "2", what, "list", "--format", "csv"};
    if (!columns.empty()) {
      words.insert(words.end(), {"--columns", columns});
    }
    const Outcome outcome = Run(std::move(words));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
  }
};

TEST_F(RoundTrip, APrintedReportIsImportedFromStandardInput) {
  const std::vector<std::string> report{"--unit", "2", "report", "dircodes", "--format", "csv"};
  const std::string exported = Run(report).out;
  EXPECT_NE(exported, "");
  Change("DELETE FROM DIRECTORYCODE WHERE UNITKEY=2");
  ASSERT_NE(Run(report).out, exported);

  const Outcome outcome = Run({"--unit", "2", "dircodes", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "Imported 6 directory codes, 0 lines refused, in unit 2, Linden Park.\n");
  EXPECT_EQ(Run(report).out, exported);
}

TEST_F(RoundTrip, AListOfDirectoryCodesIsImported) {
  ASSERT_EQ(Run({"--unit",      "2",
                 "dircodes",    "add",
                 "250",         "--phone",
                 "1",           "--extension",
                 "12",          "--delay",
                 "5",           "--dnd",
                 "Night Shift", "--forward-phone",
                 "2",           "--forward-extension",
                 "7",           "--forward-delay",
                 "4",           "--forward-schedule",
                 "1",           "--display-name",
                 "Karin Abel",  "--from",
                 "2026-02-01",  "--to",
                 "2026-12-31",  "--hide-code"})
                .status,
            0);
  ASSERT_EQ(Run({"--unit", "2", "dircodes", "add", "251", "--phone", "3", "--inactive"}).status, 0);
  const std::string kOwn =
      "code,phone,extension,delay,dnd,dnd_schedule,forwarding,forward_phone,forward_extension,"
      "forward_delay,forward_schedule,active,start,end,display_name,show_name,show_code";
  const std::string before = Listed("dircodes", kOwn);
  const std::string exported = Listed("dircodes");
  Change("DELETE FROM DIRECTORYCODE WHERE UNITKEY=2");
  ASSERT_NE(Listed("dircodes", kOwn), before);
  const Outcome outcome = Run({"--unit", "2", "dircodes", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Listed("dircodes", kOwn), before);
}

TEST_F(RoundTrip, AListOfCredentialsIsImported) {
  // Residents and tenants with two of them are not among those to whom the screen assigns.
  Change("UPDATE Tenants SET CREDENTIALID1=NULL WHERE Resident<>0 AND UnitKey=2");
  Change("UPDATE Tenants SET CREDENTIALID2=NULL WHERE UnitKey=2");
  Change(
      "UPDATE CredentialBank SET DOORCODE=3 WHERE CredentialType<>2 AND PINNo BETWEEN 1001 AND "
      "1012 AND UnitKey=2");
  const std::string kOwn = "type,number,facility,id_code,sequence,button,door,tenant";
  const std::string before = Listed("credentials", kOwn);
  const std::string exported = Listed("credentials");
  Change("UPDATE Tenants SET CREDENTIALID1=NULL WHERE UnitKey=2");
  Change("DELETE FROM CREDENTIALBANK WHERE UnitKey=2");
  const Outcome outcome = Run({"--unit", "2", "credentials", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Listed("credentials", kOwn), before);
}

TEST_F(RoundTrip, AListOfTenantsIsImported) {
  const std::string kOwn =
      "name,last_name,first_name,initial,name_at_unit,group,active,start,end,schedule1,schedule2,"
      "schedule3,schedule4,card1,card2,code,resident";
  const std::string before = Listed("tenants", kOwn);
  const std::string exported = Listed("tenants");
  const Outcome there = Run({"--unit", "2", "tenants", "import", "-", "--skip-existing"}, exported);
  EXPECT_EQ(there.out,
            "Imported 0 lines, 75 lines stored already, 0 lines refused, in unit 2, Linden "
            "Park.\n")
      << there.err;
  Change("DELETE FROM Tenants WHERE UnitKey=2");
  const Outcome outcome = Run({"--unit", "2", "tenants", "import", "-"}, exported);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Listed("tenants", kOwn), before);
}

TEST_F(RoundTrip, AListedCardThatIsNotThereRefusesItsLine) {
  const Outcome outcome =
      Run({"--unit", "2", "tenants", "import", "-"}, "Last name,Card 1\nOne,Transmitter-9999\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(
      outcome.err,
      "qorhost: line 2: Card 1: the unit has no credential 'Transmitter-9999': one that is to "
      "be issued needs its type and number in columns of their own\n");
}

}  // namespace
}  // namespace qorhost::test
