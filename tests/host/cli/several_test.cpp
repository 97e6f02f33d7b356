// Several rows named in one command: all of them are changed, or none.
#include <gmock/gmock.h>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Several : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    unitOfEnvironment_ = "2";
    ASSERT_EQ(Run({"credentials", "add", "--type", "card26", "--start", "9100", "--end", "9104",
                   "--facility", "7"})
                  .status,
              0);
    ASSERT_EQ(Run({"tenants", "add", "--last", "Byrne", "--first", "Ana"}).status, 0);
    ASSERT_EQ(Run({"tenants", "add", "--last", "Okoro", "--first", "Ben"}).status, 0);
  }

  [[nodiscard]] std::size_t Cards() {
    return Rows({"sql",
                 "SELECT RID FROM CredentialBank WHERE UnitKey=2 AND PINNo Between 9100 AND "
                 "9104"})
        .size();
  }
  [[nodiscard]] std::size_t HeldBy(const std::string& lastName) {
    const nlohmann::json rows =
        Rows({"sql", "SELECT CREDENTIALID1, CREDENTIALID2 FROM Tenants WHERE LastName='" +
                         lastName + "'"});
    return (rows[0]["CREDENTIALID1"].is_null() ? 0U : 1U) +
           (rows[0]["CREDENTIALID2"].is_null() ? 0U : 1U);
  }
  [[nodiscard]] std::size_t Entries() { return Rows({"history", "list"}).size(); }
};

TEST_F(Several, CardsAreDeletedAsOneUnitOfWork) {
  const std::size_t before = Entries();
  const Outcome outcome = Run({"credentials", "delete", "9100", "9101", "9100", "9104"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Card-9100"));
  EXPECT_THAT(outcome.out, HasSubstr("Card-9104"));
  EXPECT_EQ(Cards(), 2U);
  EXPECT_EQ(Entries(), before + 1);
}

TEST_F(Several, UnitsAreCopiedAsOneUnitOfWork) {
  const std::string to = File("other.db");
  const Outcome copied = Run({"copy", "--to", to, "--units", "3,1", "--units", "3"});
  EXPECT_EQ(copied.status, 0) << copied.err;
  const nlohmann::json units = Rows({"--db", to, "units", "list"});
  ASSERT_EQ(units.size(), 2U);
  EXPECT_EQ(units[0]["unit"], 1);
  EXPECT_EQ(units[1]["unit"], 3);
  EXPECT_EQ(Rows({"--db", to, "history", "list"}).size(), 1U);
  const Outcome again = Run({"copy", "--to", to, "--units", "2,3"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(Rows({"--db", to, "units", "list"}).size(), 2U);
  EXPECT_EQ(Run({"--unit", "2", "copy", "--to", to, "--units", "2"}).status, 2);
  EXPECT_EQ(Run({"copy", "--to", to, "--units", "2,x"}).status, 2);
}

TEST_F(Several, OneThatIsNotThereKeepsAllOfThem) {
  const Outcome outcome = Run({"credentials", "delete", "9100", "9101", "9999"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("9999"));
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(Cards(), 5U);
}

TEST_F(Several, ACardThatIsHeldIsAskedForOnce) {
  ASSERT_EQ(Run({"credentials", "assign", "9100", "9101", "Byrne Ana"}).status, 0);
  const Outcome refused = Run({"credentials", "delete", "9100", "9101", "9102"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("nothing was changed"));
  EXPECT_EQ(Cards(), 5U);
  const Outcome done = Run({"credentials", "delete", "9100", "9101", "9102", "--yes"});
  EXPECT_EQ(done.status, 0) << done.err;
  EXPECT_EQ(Cards(), 2U);
  EXPECT_EQ(HeldBy("Byrne"), 0U);
}

TEST_F(Several, CardsAreAssignedAndReleasedTogether) {
  const Outcome assigned = Run({"credentials", "assign", "9100", "9101", "Byrne Ana"});
  EXPECT_EQ(assigned.status, 0) << assigned.err;
  EXPECT_EQ(HeldBy("Byrne"), 2U);
  const Outcome again = Run({"credentials", "assign", "9100", "9101", "Byrne Ana"});
  EXPECT_THAT(again.out, HasSubstr("as before; nothing was changed"));
  const Outcome moved = Run({"credentials", "assign", "9100", "9101", "Okoro Ben"});
  EXPECT_EQ(moved.status, 1) << "somebody loses them";
  EXPECT_THAT(moved.err, HasSubstr("loses"));
  EXPECT_EQ(HeldBy("Byrne"), 2U);
  EXPECT_EQ(Run({"credentials", "assign", "9100", "9101", "Okoro Ben", "--yes"}).status, 0);
  EXPECT_EQ(HeldBy("Okoro"), 2U);
  EXPECT_EQ(HeldBy("Byrne"), 0U);
  EXPECT_EQ(Run({"credentials", "assign", "9100", "9101", "--release"}).status, 0);
  EXPECT_EQ(HeldBy("Okoro"), 0U);
}

TEST_F(Several, MoreThanATenantHoldsAreRefused) {
  const Outcome outcome =
      Run({"credentials", "assign", "9100", "9101", "9102", "Byrne Ana", "--yes"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("two credentials at most"));
  EXPECT_EQ(HeldBy("Byrne"), 0U);
}

TEST_F(Several, CodesAreEditedAndDeletedTogether) {
  const Outcome edited = Run({"dircodes", "edit", "101", "102", "--phone", "555-9999"});
  EXPECT_EQ(edited.status, 0) << edited.err;
  const std::string count =
      "SELECT RID FROM DirectoryCode WHERE UNITKEY=2 AND PHONENUMBER='555-9999'";
  EXPECT_EQ(Rows({"sql", count}).size(), 2U);
  EXPECT_EQ(Run({"dircodes", "delete", "101", "102"}).status, 1) << "nobody could be asked";
  EXPECT_EQ(Rows({"sql", count}).size(), 2U);
  const Outcome deleted = Run({"dircodes", "delete", "101", "102", "--yes"});
  EXPECT_EQ(deleted.status, 0) << deleted.err;
  EXPECT_EQ(Rows({"sql", count}).size(), 0U);
}

TEST_F(Several, AreShownOneBehindTheOtherOrNotAtAll) {
  const Outcome codes = Run({"dircodes", "show", "101", "102"});
  EXPECT_EQ(codes.status, 0) << codes.err;
  EXPECT_LT(codes.out.find("101"), codes.out.find("102"));
  const Outcome tenants = Run({"tenants", "show", "Byrne Ana", "Okoro Ben", "--json"});
  EXPECT_EQ(tenants.status, 0) << tenants.err;
  EXPECT_THAT(tenants.out, HasSubstr("Byrne"));
  EXPECT_THAT(tenants.out, HasSubstr("Okoro"));
  const Outcome missing = Run({"dircodes", "show", "101", "9999"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.out, "");
}

TEST_F(Several, UnitsAreDeletedTogetherOrNotAtAll) {
  ASSERT_EQ(
      Run({"units", "add", "Annex", "--key", "11", "--type", "Box", "--capacity", "50"}).status, 0);
  ASSERT_EQ(Run({"units", "add", "Barn", "--key", "12", "--type", "Box"}).status, 0);
  EXPECT_EQ(Run({"units", "delete", "11", "99", "--yes"}).status, 2);
  EXPECT_EQ(Run({"units", "delete", "11", "2"}).status, 1) << "nobody could be asked";
  EXPECT_EQ(Rows({"sql", "SELECT UnitKey FROM Units WHERE UnitKey IN (11,12)"}).size(), 2U);
  const Outcome deleted = Run({"units", "delete", "11", "12", "11", "--yes"});
  EXPECT_EQ(deleted.status, 0) << deleted.err;
  EXPECT_EQ(Rows({"sql", "SELECT UnitKey FROM Units WHERE UnitKey IN (11,12)"}).size(), 0U);
}

TEST_F(Several, EntriesAreUndoneTheLatestFirstAsOne) {
  ASSERT_EQ(Run({"dircodes", "edit", "101", "--phone", "555-0001"}).status, 0);
  ASSERT_EQ(Run({"dircodes", "edit", "101", "--phone", "555-0002"}).status, 0);
  const auto history = Rows({"history", "list"});
  const std::string last = std::to_string(history.size());
  const std::string before = std::to_string(history.size() - 1);
  EXPECT_EQ(Run({"history", "undo", before}).status, 1) << "the later one builds on it";
  const Outcome shown = Run({"history", "show", before, last});
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_LT(shown.out.find("555-0001"), shown.out.find("555-0002"));
  const Outcome undone = Run({"history", "undo", before, last});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_EQ(Rows({"sql", "SELECT RID FROM DirectoryCode WHERE PHONENUMBER LIKE '555-000*'"}).size(),
            0U);
  EXPECT_EQ(Rows({"history", "list"}).size(), history.size() + 1);
}

TEST_F(Several, SchedulesAreDeletedTogetherOrNotAtAll) {
  ASSERT_EQ(Run({"schedules", "add", "Evenings"}).status, 0);
  const Outcome used = Run({"schedules", "delete", "Evenings", "Night Shift"});
  EXPECT_EQ(used.status, 1);
  EXPECT_THAT(Run({"schedules"}).out, HasSubstr("Evenings"));
  ASSERT_EQ(Run({"schedules", "add", "Mornings"}).status, 0);
  EXPECT_EQ(Run({"schedules", "delete", "Evenings", "Mornings"}).status, 0);
  EXPECT_THAT(Run({"schedules"}).out, testing::Not(HasSubstr("Evenings")));
}

TEST_F(Several, StepsThatAreNamedAreMarked) {
  const nlohmann::json waiting = Rows({"steps", "list", "--unit", "2"});
  ASSERT_GE(waiting.size(), 2U);
  const std::string last = waiting.back()["step"].dump();
  const Outcome outcome = Run({"steps", "done", last});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const nlohmann::json left = Rows({"steps", "list", "--unit", "2"});
  EXPECT_EQ(left.size(), waiting.size() - 1);
  EXPECT_NE(left.back()["step"].dump(), last);
  EXPECT_EQ(Run({"steps", "done", last}).status, 2) << "it waits no more";
  EXPECT_EQ(Run({"steps", "done", "1", "--upto", "2"}).status, 2);
}

class Scripts : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }
};

TEST_F(Scripts, FromStandardInputAreOneUnitOfWork) {
  const Outcome outcome =
      Run({"sql", "--write", "-"},
          "-- the doors; of the yard\n"
          "UPDATE DOORS SET DOORNAME='a;b--c' WHERE UNITKEY=2 AND DOORID=4;\n"
          "/* and\n the; others */ SELECT DOORNAME FROM DOORS WHERE UNITKEY=2 AND DOORID=4;;\n"
          "DELETE FROM DOORS WHERE UNITKEY=3 -- none\n AND DOORID=1\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("a;b--c"));
  EXPECT_THAT(outcome.out, HasSubstr("1 row changed"));
  EXPECT_EQ(Rows({"sql", "SELECT DOORID FROM DOORS WHERE UNITKEY=3"}).size(), 3U);
}

TEST_F(Scripts, NameTheStatementThatFailsAndChangeNothing) {
  struct Row {
    const char* script;
    const char* told;
    int status;
  };
  const std::string begin = "DELETE FROM DOORS WHERE UNITKEY=3;\n";
  for (const Row& row : std::vector<Row>{
           {"\n  DELETE FROM Nowhere;", "statement 2, line 3, column ", 1},
           {"SELECT nope\nFROM DOORS", "statement 2, line 2, column ", 1},
           {"UPDATE\n DOORS SET nope=1", "statement 2, line 3, column ", 1},
           {"DROP TABLE DOORS", "statement 2, line 2, column 1: ", 1},
           {"SELECT 'x", "line 2, column 8: a text that is not closed", 1},
           {"/* never", "line 2, column 1: a comment that is not closed", 1},
           {"INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'x')", "statement 2, line 2: ", 3}}) {
    const Outcome outcome = Run({"sql", "--write", "-"}, begin + row.script);
    EXPECT_EQ(outcome.status, row.status) << row.script << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(row.told)) << row.script;
    EXPECT_EQ(outcome.out, "") << row.script;
    EXPECT_EQ(Rows({"sql", "SELECT DOORID FROM DOORS WHERE UNITKEY=3"}).size(), 4U) << row.script;
  }
}

TEST_F(Scripts, OfSelectsNeedNoLeaveAndAreOneArrayAsJson) {
  const Outcome outcome =
      Run({"sql", "-", "--json"}, "SELECT UnitKey FROM Units; SELECT 1 FROM Units");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const nlohmann::json told = nlohmann::json::parse(outcome.out);
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0].size(), 3U);
}

TEST_F(Scripts, ThatChangeTellOneObjectEachAndOneOfATrial) {
  const std::string script =
      "UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=2;"
      "SELECT DOORID FROM DOORS WHERE UNITKEY=2;"
      "DELETE FROM DOORS WHERE UNITKEY=2 AND DOORID=4";
  const nlohmann::json tried = nlohmann::json::parse(Run({"sql", "-", "-n", "--json"}, script).out);
  EXPECT_EQ(tried["dry_run"], true);
  EXPECT_EQ(tried["stored"], false);
  EXPECT_EQ(tried["rows"], 5);
  EXPECT_FALSE(tried["changes"].empty());
  const nlohmann::json told =
      nlohmann::json::parse(Run({"sql", "-", "--write", "--json"}, script).out);
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[0]["rows"], 4);
  EXPECT_EQ(told[0]["stored"], true);
  EXPECT_EQ(told[1].size(), 4U);
  EXPECT_EQ(told[2]["rows"], 1);
}

TEST_F(Scripts, WithoutAStatementAreAMistake) {
  EXPECT_EQ(Run({"sql", "-"}, " ; -- nothing\n").status, 2);
  EXPECT_EQ(Run({"sql"}).status, 2);
  EXPECT_EQ(Run({"sql", "SELECT 1 FROM Units", "--file", File("x.sql")}).status, 2);
  EXPECT_EQ(Run({"sql", "--file", File("nowhere.sql")}).status, 3);
  EXPECT_EQ(Run({"sql", "-"}, "DELETE FROM DOORS; SELECT 1 FROM Units").status, 2) << "no leave";
}

}  // namespace
}  // namespace qorhost::test
