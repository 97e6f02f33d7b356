// dircodes import: what it prints, its questions and exit statuses.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class DirCodeImport : public ImportFixture {};

TEST_F(DirCodeImport, EveryRemarkIsPrintedWithItsLineAndTheCountsWithTheEnd) {
  const std::string text =
      "Directory Code,Phone No.,Phone No. Delay,Display Name\n"
      "250,1,7,\n252,1,,a\x1B[2Jb\n0101,1,,\n251,1,,\n";
  for (const bool dryRun : {true, false}) {
    const Outcome outcome =
        Import("dircodes", text,
               dryRun ? std::vector<std::string>{"--dry-run"} : std::vector<std::string>{});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.err,
        "qorhost: note on line 2: Phone No. Delay '7' was not taken over: without an extension it "
        "is 2\n"
        "qorhost: line 3: Display Name 'a\\x1B[2Jb' cannot be typed into a box: it has "
        "control characters or bytes that are not UTF-8\n"
        "qorhost: line 4: This Directory Code already exists. Please enter a different "
        "Directory Code.\n");
    EXPECT_EQ(outcome.out,
              dryRun ? "Would import 2 directory codes, 2 lines refused, in unit 2, Linden Park. "
                       "Nothing was written.\n"
                     : "Imported 2 directory codes, 2 lines refused, in unit 2, Linden Park.\n");
  }
}

TEST_F(DirCodeImport, OneCodeAndOneRefusedLineAreCountedAsOne) {
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n,1\n");
  EXPECT_EQ(outcome.out, "Imported 1 directory code, 1 line refused, in unit 2, Linden Park.\n");
  EXPECT_EQ(outcome.err, "qorhost: line 3: Please enter a Directory Code.\n");
}

TEST_F(DirCodeImport, AQuestionIsAnsweredNoUnlessYesIsSaid) {
  const std::string text =
      "Directory Code,Phone No.,CF Schedule,CF Phone No.\n250,1,Full Access,1\n";
  const Outcome no = Import("dircodes", text);
  EXPECT_EQ(no.status, 1);
  EXPECT_EQ(no.err,
            "qorhost: line 2: The phone numbers for the Directory Code and Call Forwarding are the "
            "same. Do you still want to proceed? (answered No: --yes answers Yes)\n");
  const Outcome yes = Import("dircodes", text, {"--yes"});
  EXPECT_EQ(yes.status, 0) << yes.err;
}

TEST_F(DirCodeImport, JsonHasTheCountsAndEveryRefusedLine) {
  const Outcome outcome =
      Import("dircodes", "Directory Code,Phone No.\n250,1\n\"25\n1\",1\n,1\n252,1\n", {"--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("\"message\":\"standard output tells what is wrong\""));
  const nlohmann::json report = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
  EXPECT_EQ(report["done"], 2);
  EXPECT_EQ(report["refused"], 2);
  EXPECT_EQ(report["lines"][0]["line"], 3);
  EXPECT_THAT(report["lines"][0]["message"], HasSubstr("is no number"));
  EXPECT_EQ(report["lines"][1],
            (nlohmann::json{{"line", 5}, {"message", "Please enter a Directory Code."}}));
}

TEST_F(DirCodeImport, AStatementThatFailsIsAFailure) {
  AddTrigger(
      "broken BEFORE INSERT ON ProgramSteps WHEN (SELECT DIRECTORYCODE FROM DirectoryCode WHERE "
      "RID=NEW.SubjectRID)=251 BEGIN SELECT raise(ABORT, 'no step today'); END");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: "));
  EXPECT_THAT(outcome.err, HasSubstr("no step today"));
  EXPECT_EQ(outcome.out, "Imported 2 directory codes, 1 line refused, in unit 2, Linden Park.\n");
}

TEST_F(DirCodeImport, AStoreThatGivesUpIsAFailure) {
  AddTrigger(
      "broken BEFORE INSERT ON DirectoryCode WHEN NEW.DIRECTORYCODE=251 BEGIN SELECT "
      "raise(ROLLBACK, 'gave up'); END");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: "));
  EXPECT_THAT(outcome.err, HasSubstr("nothing was imported"));
  EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(DirCodeImport, ALongImportShowsABarOnATerminalAndNoneElsewhere) {
  std::string text = "Directory Code,Phone No.\n";
  for (int code = 1000; code < 2000; ++code) {
    text += std::to_string(code) + ",1\n";
  }
  const std::vector<std::string> words{"--unit", "2",         "dircodes",
                                       "import", Write(text), "--dry-run"};
  EXPECT_THAT(Run(words, "", true).err, HasSubstr("100 %  1000 of 1000"));
  EXPECT_THAT(Run(words).err, IsEmpty());
}

TEST_F(DirCodeImport, StandardInputIsReadToo) {
  const Outcome outcome =
      Run({"--unit", "2", "dircodes", "import", "-"}, "Directory Code,Phone No.\n250,1\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Query("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250").size(),
            1U);
}

TEST_F(DirCodeImport, TheSampleIsImportedWhole) {
  const Outcome outcome =
      Run({"--unit", "2", "dircodes", "import", QORHOST_SAMPLES "/dir_codes.csv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(outcome.out, "Imported 6 directory codes, 0 lines refused, in unit 2, Linden Park.\n");
}

}  // namespace
}  // namespace qorhost::test
