// dircodes sync and export: their files, what they print and their exit statuses.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/unit/unit_generator.h"
#include "tests/host/cli/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::unit_place::Place;
using testing::HasSubstr;

class Exchange : public DirCodeFixture {
 protected:
  static std::string TextOf(const UnitFile& unit) {
    std::ostringstream out;
    WriteUnitFile(out, unit);
    return out.str();
  }
  /// The text of a unit file with lines more in front of its end line, which counts `count` then.
  static std::string WithLines(const std::string& text, const std::string& lines,
                               std::size_t count) {
    return text.substr(0, text.rfind("end ")) + lines + "end " + std::to_string(count) + "\n";
  }
  /// What unit 2 of the store would hold.
  [[nodiscard]] UnitFile Exported() {
    std::istringstream in(Do({"export", "--to", "-"}).out);
    return ReadUnitFile(in).file;
  }
  [[nodiscard]] Outcome Sync(const UnitFile& unit, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"sync", "--from", "-"});
    return Do(std::move(options), TextOf(unit));
  }
  /// The unit's code with that number.
  static UnitCode& CodeIn(UnitFile& unit, std::int64_t number) {
    for (UnitCode& code : unit.codes) {
      if (NumberOf(code) == number) return code;
    }
    throw std::out_of_range("no such code");
  }
  static void Drop(UnitFile& unit, std::int64_t number) {
    std::erase_if(unit.codes, [&](const UnitCode& code) { return NumberOf(code) == number; });
  }
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream file(File(name), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(File(name), std::ios::binary) << text;
  }
};

TEST_F(Exchange, SyncPrintsWhatItDid) {
  UnitFile unit = Exported();
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  Drop(unit, 106);
  UnitCode fresh = CodeIn(unit, 101);
  fresh[Place::kCode] = "300";
  unit.codes.push_back(fresh);
  const Outcome outcome = Sync(unit, {"--yes"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "1 inserted, 1 updated, 1 deleted, 4 unchanged in unit 2, Linden Park.\n"
            "1 tenant is without a directory code now.\n");
}

// It was deleted, with --no and without anybody to ask.
TEST_F(Exchange, SyncDeletesNothingWithoutConsent) {
  UnitFile unit = Exported();
  Drop(unit, 106);
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--no"}}) {
    const Outcome outcome = Sync(unit, options);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err,
                HasSubstr("1 of the unit's 6 directory codes will be deleted. Go on?\n"));
    EXPECT_THAT(outcome.err, HasSubstr("nothing was changed"));
    EXPECT_FALSE(Row("106").is_null());
    EXPECT_NE(Row("102")["PHONENUMBER"], "555-9999");
  }
}

TEST_F(Exchange, SyncReportsAsJson) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  const nlohmann::json report = nlohmann::json::parse(Sync(unit, {"--yes", "--json"}).out);
  EXPECT_EQ(report["deleted"].size(), 1U);
  EXPECT_EQ(report["unchanged"], 5);
  EXPECT_EQ(report["tenants_released"], 1);
}

// The rows were looked up in what the store held behind the merge: others were named, or the
// program ended.
TEST_F(Exchange, SyncTellsProgramsTheRowsThatItChanged) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  Drop(unit, 106);
  CodeIn(unit, 103)[Place::kPhone] = "555-9999";
  const nlohmann::json report = nlohmann::json::parse(Sync(unit, {"--yes", "--json"}).out);
  ASSERT_EQ(report["deleted"].size(), 2U);
  EXPECT_EQ(report["deleted"][0]["id"], 11);
  EXPECT_EQ(report["deleted"][0]["name"], "101");
  EXPECT_EQ(report["deleted"][1]["id"], 16);
  EXPECT_EQ(report["deleted"][1]["name"], "106");
  ASSERT_EQ(report["changed"].size(), 1U);
  EXPECT_EQ(report["changed"][0]["id"], 13);
  EXPECT_EQ(report["changed"][0]["name"], "103");
}

TEST_F(Exchange, DryRunPrintsThePlan) {
  UnitFile unit = Exported();
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  CodeIn(unit, 102)[Place::kActive] = "0";
  Drop(unit, 101);
  const Outcome outcome = Sync(unit, {"--dry-run"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("taken from Hollis Elena\n"));
  EXPECT_THAT(outcome.out, HasSubstr("phone, active\n"));
  EXPECT_THAT(
      outcome.out,
      HasSubstr("Would be 0 inserted, 1 updated, 1 deleted, 4 unchanged in unit 2, Linden Park. "
                "Nothing was written.\n"));

  const nlohmann::json plan =
      nlohmann::json::parse(Sync(unit, {"--dry-run", "--json"}).out)["plan"];
  ASSERT_EQ(plan.size(), 2U);
  EXPECT_EQ(plan[0]["action"], "delete");
  EXPECT_EQ(plan[0]["rid"], 11);
  EXPECT_EQ(plan[1]["action"], "update");
  EXPECT_EQ(plan[1]["code"], 102);
}

TEST_F(Exchange, ABadLineIsNamedAndNothingIsChanged) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  const std::string text =
      WithLines(TextOf(unit), "nonsense\n# a comment\n" + std::string(5000, 'x') + "\n", 7);
  const Outcome outcome = Do({"sync", "--from", "-"}, text);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: standard input, line 8: 1 fields instead of 24\n"));
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: standard input, line 10: the line is longer"));
  EXPECT_THAT(outcome.err, HasSubstr("2 bad lines, so nothing was changed"));
  EXPECT_THAT(outcome.err, HasSubstr(": mend the file, or say --skip-bad-lines\n"));
  EXPECT_FALSE(Row("101").is_null());
}

TEST_F(Exchange, SkippedLinesAreNamedAndTheCodesThatWereNotDeletedCounted) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  const Outcome outcome =
      Do({"sync", "--from", "-", "--skip-bad-lines"}, WithLines(TextOf(unit), "nonsense\n", 6));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "0 inserted, 0 updated, 0 deleted, 5 unchanged in unit 2, Linden Park.\n");
  EXPECT_THAT(outcome.err, HasSubstr("line 8"));
  EXPECT_THAT(outcome.err, HasSubstr("1 stored code was not deleted"));
}

TEST_F(Exchange, ALineThatTheScreenRefusesIsNamedAsABadOne) {
  UnitFile unit = Exported();
  CodeIn(unit, 103)[Place::kPhone] = "";
  for (const char* option : {"--dry-run", "--yes"}) {
    const Outcome outcome = Sync(unit, {option});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "qorhost: standard input, line 5: the phone number is empty\n"
              "qorhost: 1 bad line, so nothing was changed: mend the file, or say "
              "--skip-bad-lines\n");
  }
  const Outcome skipped = Sync(unit, {"--skip-bad-lines"});
  EXPECT_EQ(skipped.status, 0);
  EXPECT_THAT(skipped.err, HasSubstr("line 5: the phone number is empty\n"));
  EXPECT_EQ(skipped.out, "0 inserted, 0 updated, 0 deleted, 5 unchanged in unit 2, Linden Park.\n");
}

TEST_F(Exchange, OfManyBadLinesAFewAreNamed) {
  std::string lines;
  for (int line = 0; line < 30; ++line) {
    lines += "nonsense\n";
  }
  const Outcome outcome = Do({"sync", "--from", "-"}, WithLines(TextOf(Exported()), lines, 36));
  EXPECT_THAT(outcome.err, HasSubstr("line 28: "));
  EXPECT_THAT(outcome.err, Not(HasSubstr("line 29: ")));
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: ... and 10 more bad lines\nqorhost: 30 bad lines"));
}

TEST_F(Exchange, AFileThatIsNoUnitFileChangesNothing) {
  for (const char* text : {"", "code;phone\n", "\xEF\xBB\xBF\n"}) {
    const Outcome outcome = Do({"sync", "--from", "-"}, text);
    EXPECT_EQ(outcome.status, 1) << text;
    EXPECT_THAT(outcome.err, HasSubstr("line 1: a unit file begins with the line")) << text;
    const Outcome skipped = Do({"sync", "--from", "-", "--skip-bad-lines"}, text);
    EXPECT_EQ(skipped.status, 1) << text;
    EXPECT_THAT(skipped.err, HasSubstr("standard input is no unit file, so nothing was changed"));
  }
  EXPECT_EQ(Rows({"--unit", "2", "dircodes", "list"}).size(), 6U);
}

// Once such a file deleted every code without a word.
TEST_F(Exchange, AFileThatIsCutOffChangesNothing) {
  const std::string whole = TextOf(Exported());
  const std::size_t behindHeader = whole.find('\n', whole.find("firmware")) + 1;
  for (const std::size_t length : {behindHeader, whole.find("103;"), whole.rfind("end ")}) {
    const Outcome outcome = Do({"sync", "--from", "-"}, whole.substr(0, length));
    EXPECT_EQ(outcome.status, 1) << length;
    EXPECT_THAT(outcome.err, HasSubstr("cut off")) << length;
    const Outcome skipped =
        Do({"sync", "--from", "-", "--skip-bad-lines"}, whole.substr(0, length));
    EXPECT_THAT(skipped.out, HasSubstr(" 0 deleted,")) << length;
  }
  EXPECT_EQ(TextOf(Exported()), whole);
}

TEST_F(Exchange, AFileOfAnOlderVersionIsTakenAndSaidToBeSo) {
  std::string text = TextOf(Exported());
  text.replace(text.find("file 2"), 6, "file 1");
  text.erase(text.rfind("end "));
  const Outcome outcome = Do({"sync", "--from", "-"}, text);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "0 inserted, 0 updated, 0 deleted, 6 unchanged in unit 2, Linden Park.\n");
  EXPECT_THAT(outcome.err, HasSubstr("standard input has no end line"));
  EXPECT_EQ(Sync(Exported()).err, "");
}

TEST_F(Exchange, AFileThatCannotBeReadIsAFailure) {
  const Outcome missing = Do({"sync", "--from", File("nowhere.txt")});
  EXPECT_EQ(missing.status, 3);
  EXPECT_THAT(missing.err, HasSubstr("nowhere.txt"));
  EXPECT_EQ(Do({"sync", "--from", File(".")}).status, 3);
}

TEST_F(Exchange, SyncCountsTheStepsThatItWithdrew) {
  const UnitFile unit = Exported();
  ASSERT_EQ(Do({"renumber", "101", "180"}).status, 0);
  const Outcome outcome = Sync(unit);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "0 inserted, 1 updated, 0 deleted, 5 unchanged in unit 2, Linden Park.\n"
            "1 waiting step was withdrawn: the unit's codes hold.\n");
}

TEST_F(Exchange, AMergeThatFailsIsAFailure) {
  AddTrigger("Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); END");
  UnitFile unit = Exported();
  UnitCode fresh = CodeIn(unit, 101);
  fresh[Place::kCode] = "300";
  unit.codes.push_back(fresh);
  const Outcome outcome = Sync(unit);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("cannot write the directory code 300: "));
  EXPECT_THAT(outcome.err, HasSubstr("no room"));
  EXPECT_THAT(outcome.err, HasSubstr("nothing was changed"));
}

TEST_F(Exchange, SyncDrawsABarOnATerminalWhenThereIsMuchToDo) {
  Write("few.txt", TextOf(GenerateUnit(20, 1)));
  Write("many.txt", TextOf(GenerateUnit(1500, 1)));
  const auto drawn = [&](const std::string& name) {
    return Run({"--unit", "2", "--yes", "dircodes", "sync", "--from", File(name)}, "", true).err;
  };
  EXPECT_THAT(drawn("few.txt"), Not(HasSubstr("[#")));
  EXPECT_THAT(drawn("many.txt"), HasSubstr("of 1480"));
}

TEST_F(Exchange, ExportNamesWhatAUnitCannotHoldAndWritesNothing) {
  Change("UPDATE DIRECTORYCODE SET STARTDATE=#1/1/1999# WHERE UNITKEY=2 AND DIRECTORYCODE=102");
  Change("UPDATE DIRECTORYCODE SET DIRECTORYCODE=104 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  const Outcome outcome = Do({"export", "--to", File("unit.txt")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: directory code 102 (RID 12): its start date lies "
                                     "in the year 1999"));
  EXPECT_THAT(outcome.err,
              HasSubstr("qorhost: directory code 104 (RID 15): another row has the same code"));
  EXPECT_THAT(outcome.err, HasSubstr("--skip"));
  EXPECT_FALSE(std::filesystem::exists(File("unit.txt")));

  const Outcome skipped = Do({"export", "--skip", "--to", File("unit.txt")});
  EXPECT_EQ(skipped.status, 0);
  EXPECT_THAT(skipped.out, HasSubstr("Wrote 4 directory codes to "));
}

TEST_F(Exchange, ExportReplacesAFileOnlyWhenForcedAndByAWholeOne) {
  Write("unit.txt", "old");
  const Outcome refused = Do({"export", "--to", File("unit.txt")});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("exists already"));
  EXPECT_THAT(refused.err, HasSubstr("--force"));
  EXPECT_EQ(Read("unit.txt"), "old");
  EXPECT_EQ(Do({"export", "--force", "--to", File("unit.txt")}).status, 0);
  EXPECT_EQ(Read("unit.txt"), TextOf(Exported()));
  EXPECT_EQ(Do({"export", "--to", File("nowhere/unit.txt")}).status, 3);
  EXPECT_EQ(Do({"export", "--to", File(".")}).status, 1);
  EXPECT_EQ(Do({"export", "--to", "/dev/null"}).status, 1);
}

TEST_F(Exchange, ADryRunOfAnExportTellsWhatItWouldWriteAndWritesNothing) {
  const std::string file = File("unit.txt");
  const Outcome tried = Do({"export", "--to", file, "-n"});
  EXPECT_EQ(tried.status, 0) << tried.err;
  EXPECT_EQ(tried.out, "Would write 6 directory codes to " + file +
                           " (unit 2, Linden Park). Nothing was written.\n");
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(nlohmann::json::parse(Do({"export", "--to", file, "-n", "--json"}).out)["dry_run"],
            true);
  const Outcome shown = Do({"export", "--to", "-", "-n"});
  EXPECT_EQ(shown.out,
            "Would write 6 directory codes to - (unit 2, Linden Park). Nothing was written.\n");

  Write("unit.txt", "old");
  const Outcome refused = Do({"export", "--to", file, "-n"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "qorhost: '" + file +
                             "' exists already: name another file with --to, or replace it with "
                             "--force\n");
  EXPECT_EQ(Do({"export", "--to", file, "-n", "--force"}).status, 0);
  EXPECT_EQ(Read("unit.txt"), "old");
}

// The export was told as written, and the trace took its place.
TEST_F(Exchange, ExportAndTraceNeedFilesOfTheirOwn) {
  std::filesystem::create_directory_symlink(".", File("here"));
  for (const char* name : {"unit.txt", "here/unit.txt"}) {
    const Outcome outcome = Run({"--force", "--trace-file", File(name), "--unit", "2", "dircodes",
                                 "export", "--force", "--to", File("unit.txt")});
    EXPECT_EQ(outcome.status, 2) << name;
    EXPECT_EQ(outcome.out, "") << name;
    EXPECT_THAT(outcome.err, HasSubstr("--to and --trace-file name the same file")) << name;
  }
}

TEST_F(Exchange, ExportNeverGoesThroughALink) {
  Write("unit.txt", "old");
  std::filesystem::create_symlink("unit.txt", File("link.txt"));
  const Outcome outcome = Do({"export", "--force", "--to", File("link.txt")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("is a link"));
  EXPECT_TRUE(std::filesystem::is_symlink(File("link.txt")));
  EXPECT_EQ(Read("unit.txt"), "old");
}

// Once this replaced the store.
TEST_F(Exchange, ExportNeverReplacesTheStoreUnderAnyOfItsNames) {
  namespace fs = std::filesystem;
  fs::create_symlink("building.db", File("link.db"));
  fs::create_hard_link(File("building.db"), File("hard.db"));
  fs::create_directory_symlink(".", File("here"));
  const std::string before = Read("building.db");
  for (const char* name :
       {"building.db", "building.db-wal", "building.db-shm", "building.db-journal", "link.db",
        "hard.db", "here/building.db", "here/building.db-wal", "here/./here/building.db"}) {
    for (const char* db : {"building.db", "link.db", "here/building.db"}) {
      const Outcome outcome = Run(
          {"--db", File(db), "--unit", "2", "dircodes", "export", "--force", "--to", File(name)});
      EXPECT_EQ(outcome.status, 1) << db << " " << name;
      EXPECT_THAT(outcome.err, HasSubstr("belongs to the store")) << db << " " << name;
    }
  }
  EXPECT_TRUE(Read("building.db") == before);
  EXPECT_EQ(Rows({"--unit", "2", "dircodes", "list"}).size(), 6U);
}

TEST_F(Exchange, ExportNamesTheFirmware) {
  EXPECT_THAT(Do({"export", "--to", "-"}).out, HasSubstr("\nfirmware FC02.010\n"));
  const Outcome outcome = Do({"export", "--to", "-", "--firmware", "FC01.005"});
  EXPECT_THAT(outcome.out, HasSubstr("\nfirmware FC01.005\n"));
}

}  // namespace
}  // namespace qorhost::test
