// The command that replaces a lost credential.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class CredentialReplaceCommand : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] Outcome Replace(std::vector<std::string> words) {
    words.insert(words.begin(), {"--unit", "2", "credentials", "replace"});
    return Run(std::move(words));
  }
  [[nodiscard]] std::string Number() {
    return Rows({"sql",
                 "SELECT C.PINNo FROM CredentialBank C, Tenants T WHERE T.RID=61 AND "
                 "C.RID=T.CREDENTIALID1"})[0]["PINNo"]
        .dump();
  }
};

TEST_F(CredentialReplaceCommand, TellsWhatBecameOfBoth) {
  const Outcome outcome = Replace({"1001", "1900"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "Corvin 30-Bit Card-1001 (RID 489) is replaced by the new Corvin 30-Bit Card-1900 (RID "
            "744), in unit 2, Linden Park.\n"
            "Holder: Hollis Elena G, whose step is queued.\n"
            "The old one is deleted.\n");
  EXPECT_EQ(Number(), "1900");
}

TEST_F(CredentialReplaceCommand, ADryRunTellsTheSameAndChangesNothing) {
  const Outcome outcome = Replace({"1001", "1900", "-n"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("would be deleted. Nothing was changed.\n"));
  EXPECT_EQ(Number(), "1001");
}

TEST_F(CredentialReplaceCommand, PrintsOneObjectAsJson) {
  const auto object = nlohmann::json::parse(Replace({"1001", "1900", "--keep-old", "--json"}).out);
  EXPECT_EQ(object["changed"].size(), 1U);
  EXPECT_EQ(object["changed"][0]["id"], 489);
  EXPECT_EQ(object["deleted"].size(), 0U);
  EXPECT_EQ(object["added"][0]["id"], 744);
  EXPECT_EQ(object["holder"], "Hollis Elena G");
  EXPECT_EQ(object["stored"], true);
}

TEST_F(CredentialReplaceCommand, AHeldSuccessorIsRefused) {
  const Outcome outcome = Replace({"1001", "1002"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Corvin 30-Bit Card-1002 (RID 490) is held by O'Brien Paula"));
}

TEST_F(CredentialReplaceCommand, WrongNumbersAreMistakesOfUsage) {
  EXPECT_EQ(Replace({"1001", "1001"}).status, 2);
  EXPECT_EQ(Replace({"1001", "rid:99999"}).status, 2);
  const Outcome outcome = Replace({"1001", "70000"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "qorhost: NEW '70000' must be a whole number from 1 to 65535, in digits alone\n");
}

TEST_F(CredentialReplaceCommand, NoDeletesNothing) {
  EXPECT_EQ(Replace({"1001", "1900", "--no"}).status, 1);
  EXPECT_EQ(Number(), "1001");
  EXPECT_EQ(Replace({"1001", "1900", "--no", "--keep-old"}).status, 0);
}

}  // namespace
}  // namespace qorhost::test
