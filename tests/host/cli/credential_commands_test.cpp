// The commands for credentials: their options and questions, what they print and how they end.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Credentials : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] Outcome Add(std::vector<std::string> options) {
    options.insert(options.begin(), {"--unit", "2", "credentials", "add"});
    return Run(std::move(options));
  }
  [[nodiscard]] nlohmann::json Find(const std::string& condition) {
    return Rows({"sql", "SELECT RID, PINNo, FacilityCode, DOORCODE FROM CredentialBank WHERE " +
                            condition + " ORDER BY RID"});
  }
  /// A card of unit 2 that nobody holds: its RID.
  [[nodiscard]] std::string FreeCard() {
    EXPECT_EQ(Add({"--type", "card26", "--start", "9100", "--facility", "7"}).status, 0);
    return Find("UnitKey=2 AND PINNo=9100")[0]["RID"].dump();
  }
  [[nodiscard]] std::string TenantOf(const std::string& rid) {
    const nlohmann::json rows =
        Rows({"sql", "SELECT TenantID FROM Tenants WHERE CREDENTIALID1=" + rid +
                         " OR CREDENTIALID2=" + rid});
    return rows.empty() ? "" : rows[0]["TenantID"].dump();
  }
  [[nodiscard]] std::string SomeTenant() {
    return Rows({"sql",
                 "SELECT Top 1 TenantID FROM Tenants WHERE UnitKey=2 AND Resident=0 AND "
                 "CREDENTIALID2 = NULL ORDER BY TenantID"})[0]["TenantID"]
        .dump();
  }
};

TEST_F(Credentials, ListPrintsEveryCredential) {
  const nlohmann::json rows = Rows({"--unit", "1", "credentials", "list"});
  EXPECT_EQ(rows.size(), 488U);
  EXPECT_TRUE(rows[0]["number"].is_number_integer());
}

TEST_F(Credentials, AddIssuesARange) {
  const Outcome outcome =
      Add({"--type", "card26", "--start", "9001", "--end", "9003", "--facility", "7"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out,
              testing::ContainsRegex("Issued 3 credentials: Standard 26-Bit Card 9001 to 9003 "
                                     "\\(last RID [0-9]+\\) in unit 2, Linden Park"));
  EXPECT_EQ(Find("UnitKey=2 AND PINNo Between 9001 AND 9003 AND FacilityCode=7").size(), 3U);
}

TEST_F(Credentials, AddTakesATransmittersOptions) {
  const Outcome outcome = Add({"--type", "transmitter", "--start", "777", "--facility", "7",
                               "--id-code", "26", "--sequence", "2", "--button", "4"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Find("UnitKey=2 AND PINNo=777 AND IDCode=26 AND SequenceNumber=2 AND ButtonNumber=4 "
                 "AND CredentialType=2")
                .size(),
            1U);
}

TEST_F(Credentials, AddTakesTheOptionsOfNewTenants) {
  const Outcome outcome =
      Add({"--type", "card26", "--start", "9001", "--facility", "7", "--with-tenants",
           "--schedules", "1,1,0,0", "--from", "2026-02-01", "--to", "2026-12-31"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Issued Standard 26-Bit Card 9001 (RID "));
  EXPECT_THAT(outcome.out,
              HasSubstr("Created 1 tenant, ready to be named; their steps are queued.\n"));
  const nlohmann::json rows =
      Rows({"sql",
            "SELECT DOORSCHEDULE1, DOORSCHEDULE4, ACTIVESTARTTIME, ACTIVEENDTIME FROM Tenants "
            "WHERE LastName='No Name19001'"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["DOORSCHEDULE1"], 1);
  EXPECT_EQ(rows[0]["DOORSCHEDULE4"], 0);
  EXPECT_EQ(rows[0]["ACTIVESTARTTIME"], "2026-02-01T00:00:00");
  EXPECT_EQ(rows[0]["ACTIVEENDTIME"], "2026-12-31T23:59:59");
}

TEST_F(Credentials, EmptySchedulesOpenNoDoor) {
  const Outcome outcome = Add({"--type", "card26", "--start", "9001", "--facility", "7",
                               "--with-tenants", "--schedules", ""});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--schedules '' has an empty schedule"));
  EXPECT_EQ(Find("UnitKey=2 AND PINNo=9001").size(), 0U);
}

TEST_F(Credentials, AFaultNamesTheOptions) {
  EXPECT_EQ(Add({"--type", "key", "--start", "1"}).err,
            "qorhost: --type 'key' is none of card30, card26 and transmitter\n");
  const Outcome limits = Add({"--type", "card26", "--start", "1", "--to", "2026-12-31"});
  EXPECT_EQ(limits.status, 2);
  EXPECT_EQ(limits.err,
            "qorhost: --schedules, --from and --to go with --with-tenants: without new tenants "
            "there is nobody to give them to\n");
}

TEST_F(Credentials, AddPrintsTheControllersMessageWhenItIsRefused) {
  const Outcome outcome = Add({"--type", "card30", "--start", "20", "--facility", "64"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Pello RT [information]: Please enter a Facility Code between 0 and 63.\n");
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Credentials, AddReportsAsJson) {
  const nlohmann::json report = Rows({"--unit", "2", "credentials", "add", "--type", "card26",
                                      "--start", "9001", "--end", "9002", "--facility", "7"});
  EXPECT_EQ(report["added"].size(), 2U);
  EXPECT_EQ(report["unit"], 2);
}

TEST_F(Credentials, ATenantsNameCannotSteerTheTerminal) {
  ASSERT_EQ(
      Run({"sql", "--write", "UPDATE Tenants SET LastName='\x1B[2JGone' WHERE CREDENTIALID1=1"})
          .status,
      0);
  const Outcome outcome = Run({"credentials", "list"});
  EXPECT_EQ(outcome.out.find('\x1B'), std::string::npos);
  EXPECT_THAT(outcome.out, HasSubstr("\\x1B[2JGone"));
}

TEST_F(Credentials, AFaultInATenantGoesWithoutAnOptionsName) {
  ASSERT_EQ(Run({"sql", "--write",
                 "UPDATE Tenants SET LastName='Doe', FirstName='Jane', MiddleInitial=NULL WHERE "
                 "UnitKey=2 AND TenantID IN (61,62)"})
                .status,
            0);
  const Outcome outcome = Run({"--unit", "2", "credentials", "assign", "rid:489", "doe jane"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "qorhost: 2 tenants are called 'doe jane': give the id instead (61, 62)\n");
}

TEST_F(Credentials, AddDrawsABarOnATerminalForLongRangesOnly) {
  const std::vector<std::string> range = {"--unit", "3",       "credentials", "add",  "--type",
                                          "card26", "--start", "50000",       "--end"};
  std::vector<std::string> small = range;
  small.emplace_back("50005");
  std::vector<std::string> large = range;
  large[7] = "51000";
  large.emplace_back("52999");
  EXPECT_EQ(Run(small, "", true).err, "");
  const Outcome drawn = Run(large, "", true);
  EXPECT_EQ(drawn.status, 0);
  EXPECT_THAT(drawn.err, HasSubstr("\r[-------------------------]   0 %  0 of 2000"));
  columns_ = 40;
  large[7] = "53000";
  large.back() = "54999";
  EXPECT_THAT(Run(large, "", true).err, HasSubstr("\r[-----------------]   0 %  0 of 2000"));
  columns_ = 20;
  large[7] = "55000";
  large.back() = "56999";
  const Outcome narrow = Run(large, "", true);
  EXPECT_THAT(narrow.err, HasSubstr("\r  0 %\r"));
  EXPECT_THAT(narrow.err, testing::Not(HasSubstr("of 2000"))) << "nothing but percents";
}

TEST_F(Credentials, AssignGivesACredentialToATenantAndReleaseTakesIt) {
  const std::string card = FreeCard();
  const std::string tenant = SomeTenant();
  EXPECT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, tenant}).status, 0);
  EXPECT_EQ(TenantOf(card), tenant);
  EXPECT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, "--release"}).status, 0);
  EXPECT_EQ(TenantOf(card), "");
}

TEST_F(Credentials, ACredentialIsNamedByTheNumberOnIt) {
  ASSERT_EQ(Add({"--type", "card26", "--start", "301", "--facility", "7"}).status, 0);
  const Outcome several = Run({"--unit", "2", "credentials", "delete", "301", "--yes"});
  EXPECT_EQ(several.status, 2);
  EXPECT_THAT(several.err, HasSubstr("2 credentials are called '301', say rid:N: Transmitter 301, "
                                     "facility code 7 (rid:609); Standard 26-Bit Card 301, "));
  EXPECT_EQ(Run({"--unit", "2", "credentials", "delete", "609", "--yes"}).status, 2)
      << "a row, which no card shows";
  EXPECT_EQ(Find("RID=609").size(), 1U);
  EXPECT_EQ(Run({"--unit", "2", "credentials", "delete", "rid:609", "--yes"}).status, 0);
  EXPECT_EQ(Find("RID=609").size(), 0U);
}

TEST_F(Credentials, AssigningAsksWhenSomebodyLosesACredential) {
  const std::string card = FreeCard();
  ASSERT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, "62"}).status, 0)
      << "nobody loses anything: nobody is asked";
  const std::vector<std::string> taking = {"--unit", "2",           "credentials",
                                           "assign", "rid:" + card, "63"};
  const Outcome unasked = Run(taking);
  EXPECT_EQ(unasked.status, 1);
  EXPECT_EQ(unasked.out, "");
  EXPECT_THAT(unasked.err, HasSubstr("O'Brien Paula H loses Standard 26-Bit Card-9100 (RID " +
                                     card + "). Go on?\nAnswered No: "));
  EXPECT_THAT(unasked.err, HasSubstr("qorhost: nothing was changed\n"));
  EXPECT_EQ(Run(taking, "n\n", true).status, 1);
  EXPECT_EQ(TenantOf(card), "62");

  const Outcome taken = Run(taking, "y\n", true);
  EXPECT_EQ(taken.status, 0) << taken.err;
  EXPECT_THAT(taken.out, HasSubstr("Without it now: O'Brien Paula H.\n"));
  EXPECT_EQ(TenantOf(card), "63");
}

TEST_F(Credentials, AssigningToATenantWithTwoCredentialsTellsWhichIsReplaced) {
  const std::string card = FreeCard();
  ASSERT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, "62"}).status, 0);
  ASSERT_EQ(Add({"--type", "card26", "--start", "9101", "--facility", "7"}).status, 0);
  const std::vector<std::string> replacing = {"--unit", "2", "credentials", "assign", "9101", "62"};
  const Outcome unasked = Run(replacing);
  EXPECT_EQ(unasked.status, 1);
  EXPECT_THAT(unasked.err, HasSubstr("O'Brien Paula H has two credentials and loses Corvin 30-Bit "
                                     "Card-1002 (RID 490). Go on?"));
  EXPECT_EQ(TenantOf("490"), "62");
  std::vector<std::string> yes = replacing;
  yes.emplace_back("--yes");
  EXPECT_THAT(Run(yes).out,
              HasSubstr("Taken from the tenant: Corvin 30-Bit Card-1002 (RID 490).\n"));
  EXPECT_EQ(TenantOf("490"), "");
}

TEST_F(Credentials, EditTakesADoorAndTellsWhatIsStored) {
  const std::string card = FreeCard();
  const Outcome outcome = Run({"--unit", "2", "credentials", "edit", "rid:" + card, "--door", "2"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "Standard 26-Bit Card-9100 (RID " + card +
                ") in unit 2, Linden Park: door Underground Car Park, assigned to nobody.\n");
  EXPECT_EQ(Find("RID=" + card)[0]["DOORCODE"], 2);
}

TEST_F(Credentials, ARefusedEditChangesNothingAndTellsWhoHoldsTheCredential) {
  ASSERT_EQ(Run({"--unit", "1", "credentials", "add", "--type", "card26", "--start", "1", "--end",
                 "2", "--facility", "12"})
                .status,
            0);
  const Outcome outcome =
      Run({"--unit", "1", "credentials", "edit", "rid:1", "--tenant", "2", "--yes"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(
      outcome.err,
      "qorhost [exclamation]: Abbott Amelia A loses Corvin 30-Bit Card-1001 (RID 1). Go on?\n"
      "Answered Yes by --yes.\n"
      "Pello RT [information]: You cannot enter more than 500 combined codes.\n"
      "qorhost: Corvin 30-Bit Card-1001 (RID 1) is assigned to Abbott Amelia A now, in unit 1, "
      "Harbour Court.\n");
}

TEST_F(Credentials, RenumberTellsTheNewNumberAndTheControllersMessages) {
  const std::string card = FreeCard();
  const Outcome renumbered = Run({"--unit", "2", "credentials", "renumber", "rid:" + card, "9200"});
  EXPECT_EQ(renumbered.status, 0);
  EXPECT_EQ(renumbered.out, "Standard 26-Bit Card-9100 is Standard 26-Bit Card-9200 (RID " + card +
                                ") now, in unit 2, Linden Park.\n");
  const Outcome zero = Run({"--unit", "2", "credentials", "renumber", "rid:" + card, "0"});
  EXPECT_EQ(zero.status, 1);
  EXPECT_EQ(zero.err,
            "Pello RT [exclamation]: Please enter a Credential Number between 1 and 65535.\n");
  const Outcome taken = Run({"--unit", "2", "credentials", "renumber", "rid:" + card, "20001"});
  EXPECT_EQ(taken.status, 1);
  EXPECT_EQ(taken.err, "Pello RT [information]: Credential Number already exists.\n");
}

TEST_F(Credentials, RenumberTakesNumbersOfCredentialsAlone) {
  const std::string card = FreeCard();
  for (const char* number : {"-1", "-5", "70000", "65536", "1.5", "9e3", "x", ""}) {
    const Outcome outcome =
        Run({"--unit", "2", "credentials", "renumber", "rid:" + card, "--", number});
    EXPECT_EQ(outcome.status, 2) << number;
    EXPECT_EQ(outcome.err, "qorhost: the new number '" + std::string(number) +
                               "' must be a whole number from 1 to 65535, in digits alone\n");
  }
  EXPECT_EQ(Find("RID=" + card)[0]["PINNo"], 9100);
}

TEST_F(Credentials, DeleteAsksWhenATenantHoldsIt) {
  const std::string card = FreeCard();
  ASSERT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, SomeTenant()}).status, 0);
  const std::vector<std::string> words = {"--unit", "2", "credentials", "delete", "rid:" + card};

  const Outcome unasked = Run(words);
  EXPECT_EQ(unasked.status, 1);
  EXPECT_THAT(unasked.err, HasSubstr("Do you want to continue?"));
  EXPECT_THAT(unasked.err, HasSubstr("Say --yes to answer Yes."));
  EXPECT_THAT(unasked.err, HasSubstr(" was not deleted in unit 2, Linden Park.\n"));
  EXPECT_EQ(Run(words, "no\n", true).status, 1);
  EXPECT_EQ(Run(words, "", true).status, 1);
  ASSERT_EQ(Find("RID=" + card).size(), 1U);

  EXPECT_EQ(Run(words, "what\nY\n", true).status, 0);
  EXPECT_EQ(Find("RID=" + card).size(), 0U);
  EXPECT_EQ(TenantOf(card), "");
}

TEST_F(Credentials, WhatIsSoAlreadyIsToldAndQueuesNothing) {
  const std::string card = FreeCard();
  const std::vector<std::string> words = {"--unit", "2",           "credentials",
                                          "assign", "rid:" + card, "62"};
  ASSERT_EQ(Run(words).status, 0);
  const std::size_t steps = Rows({"steps"}).size();
  const Outcome again = Run(words);
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.out, "Standard 26-Bit Card-9100 (RID " + card +
                           ") in unit 2, Linden Park: door <None>, assigned to O'Brien Paula H, "
                           "as before; nothing was changed.\n");
  EXPECT_EQ(Run({"--unit", "2", "credentials", "renumber", "9100", "9100"}).out,
            "Standard 26-Bit Card-9100 (RID " + card +
                ") in unit 2, Linden Park, has that number already; nothing was changed.\n");
  EXPECT_EQ(Rows({"steps"}).size(), steps);
}

// Once a credential that nobody held was deleted all the same.
TEST_F(Credentials, NoMeansNoAlsoWhereNobodyIsAsked) {
  const std::string card = FreeCard();
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"credentials", "delete", "9100"},
                                             {"report", "credentials", "--delete", "rid:" + card},
                                             {"dircodes", "delete", "101"}}) {
    std::vector<std::string> all = {"--unit", "2", "--no"};
    all.insert(all.end(), words.begin(), words.end());
    const Outcome outcome = Run(all);
    EXPECT_EQ(outcome.status, 1) << words[0];
    EXPECT_EQ(outcome.out, "") << words[0];
    EXPECT_EQ(outcome.err, "qorhost: nothing was deleted: --no says so\n") << words[0];
  }
  EXPECT_EQ(Find("RID=" + card).size(), 1U);
  EXPECT_EQ(Run({"init", "--force", "--no"}).status, 2);
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(Credentials, AnEmptyNumberIsRefused) {
  const Outcome facility = Add({"--type", "card26", "--start", "9001", "--facility", ""});
  EXPECT_EQ(facility.status, 2);
  EXPECT_EQ(facility.err, "qorhost: --facility '' is empty: give a number, or leave it out\n");
  EXPECT_EQ(Add({"--type", "card26", "--start", "9001", "--end="}).status, 2);
  EXPECT_EQ(Find("UnitKey=2 AND PINNo=9001").size(), 0U);
}

TEST_F(Credentials, DeleteTakesTheAnswerFromTheOptions) {
  const std::string card = FreeCard();
  ASSERT_EQ(Run({"--unit", "2", "credentials", "assign", "rid:" + card, SomeTenant()}).status, 0);
  EXPECT_EQ(Run({"--no", "--unit", "2", "credentials", "delete", "rid:" + card}).status, 1);
  EXPECT_EQ(Run({"--yes", "--unit", "2", "credentials", "delete", "rid:" + card}).status, 0);
  EXPECT_EQ(Find("RID=" + card).size(), 0U);
}

}  // namespace
}  // namespace qorhost::test
