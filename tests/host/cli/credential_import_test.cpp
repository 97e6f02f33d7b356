// credentials import at the command line: what is printed of its report, and how it ends.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class CredentialImport : public ImportFixture {};

TEST_F(CredentialImport, TellsHowManyWereImported) {
  const Outcome outcome = Import("credentials", "Credential Type,Card Number\ncard26,901\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "Imported 1 credential, 0 lines refused, in unit 2, Linden Park.\n");
}

TEST_F(CredentialImport, NamesARefusedLineOnStandardErrorAndIsRefused) {
  const std::size_t credentials = CountOf("CREDENTIALBANK");
  const std::string text =
      "Credential Type,Card Number,ID Code\ncard26,901,\ncard26,90\t3,\ncard26,903,2\n"
      "card26,902,\n";
  for (const bool dryRun : {true, false}) {
    const Outcome outcome = Import("credentials", text, {dryRun ? "--dry-run" : "--no"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "qorhost: line 3: Card Number '90\\t3' cannot be typed into a box: it has control "
              "characters or bytes that are not UTF-8\n"
              "qorhost: line 4: ID Code '2' must be left empty: only transmitters have one\n");
    EXPECT_EQ(outcome.out,
              dryRun ? "Would import 2 credentials, 2 lines refused, in unit 2, Linden Park. "
                       "Nothing was written.\n"
                     : "Imported 2 credentials, 2 lines refused, in unit 2, Linden Park.\n");
    EXPECT_EQ(CountOf("CREDENTIALBANK"), credentials + (dryRun ? 0 : 2));
  }
}

TEST_F(CredentialImport, AFailedStatementIsAFailure) {
  AddTrigger(
      "broken BEFORE UPDATE OF CREDENTIALID2 ON Tenants BEGIN SELECT raise(ABORT, 'stuck'); END");
  const Outcome outcome =
      Import("credentials",
             "Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\ncard26,902,\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 2: "));
  EXPECT_THAT(outcome.err, HasSubstr("stuck"));
}

TEST_F(CredentialImport, JsonHasTheCountsAndEveryRefusedLine) {
  const Outcome outcome =
      Import("credentials", "Credential Type,Card Number\ncard26,901\ncard26,0\n", {"--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(
      nlohmann::json::parse(outcome.out),
      (nlohmann::json{
          {"unit", 2},
          {"dry_run", false},
          {"done", 1},
          {"refused", 1},
          {"lines",
           {{{"line", 3},
             {"message",
              "Card Number '0' must be a whole number from 1 to 65535, in digits alone"}}}}}));
}

TEST_F(CredentialImport, TheSampleIsImportedWhole) {
  const std::string sample = QORHOST_SAMPLES "/credentials.csv";
  const Outcome outcome = Run({"--unit", "2", "credentials", "import", sample});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(outcome.out, "Imported 6 credentials, 0 lines refused, in unit 2, Linden Park.\n");
}

}  // namespace
}  // namespace qorhost::test
