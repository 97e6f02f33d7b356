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
  const Outcome outcome = Sync(unit);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "1 inserted, 1 updated, 1 deleted, 4 unchanged in unit 2, Linden Park.\n"
            "1 tenant is without a directory code now.\n");
}

TEST_F(Exchange, SyncReportsAsJson) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  const nlohmann::json report = nlohmann::json::parse(Sync(unit, {"--json"}).out);
  EXPECT_EQ(report["deleted"], 1);
  EXPECT_EQ(report["unchanged"], 5);
  EXPECT_EQ(report["tenants_released"], 1);
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

  const nlohmann::json plan = nlohmann::json::parse(Sync(unit, {"--dry-run", "--json"}).out);
  ASSERT_EQ(plan.size(), 2U);
  EXPECT_EQ(plan[0]["action"], "delete");
  EXPECT_EQ(plan[0]["rid"], 11);
  EXPECT_EQ(plan[1]["action"], "update");
  EXPECT_EQ(plan[1]["code"], 102);
}

TEST_F(Exchange, ABadLineIsNamedAndNothingIsChanged) {
  UnitFile unit = Exported();
  Drop(unit, 101);
  const std::string text = TextOf(unit) + "nonsense\n# a comment\n" + std::string(5000, 'x');
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
      Do({"sync", "--from", "-", "--skip-bad-lines"}, TextOf(unit) + "nonsense\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "0 inserted, 0 updated, 0 deleted, 5 unchanged in unit 2, Linden Park.\n");
  EXPECT_THAT(outcome.err, HasSubstr("line 8"));
  EXPECT_THAT(outcome.err, HasSubstr("1 stored code was not deleted"));
}

TEST_F(Exchange, AFileThatIsNoUnitFileChangesNothing) {
  for (const char* text : {"", "code;phone\n", "\xEF\xBB\xBF\n"}) {
    const Outcome outcome = Do({"sync", "--from", "-"}, text);
    EXPECT_EQ(outcome.status, 1) << text;
    EXPECT_THAT(outcome.err, HasSubstr("line 1: a unit file begins with the line")) << text;
  }
  EXPECT_EQ(Rows({"--unit", "2", "dircodes", "list"}).size(), 6U);
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

TEST_F(Exchange, ExportReplacesAFileOnlyByAWholeOne) {
  Write("unit.txt", "old");
  EXPECT_EQ(Do({"export", "--to", File("unit.txt")}).status, 0);
  EXPECT_EQ(Read("unit.txt"), TextOf(Exported()));
  EXPECT_FALSE(std::filesystem::exists(File("unit.txt.new")));
  EXPECT_EQ(Do({"export", "--to", File("nowhere/unit.txt")}).status, 3);
  EXPECT_EQ(Do({"export", "--to", File(".")}).status, 1);
  EXPECT_EQ(Do({"export", "--to", "/dev/null"}).status, 1);
}

TEST_F(Exchange, ExportKeepsALinkAndReplacesWhatItLeadsTo) {
  Write("unit.txt", "old");
  std::filesystem::create_symlink("unit.txt", File("link.txt"));
  EXPECT_EQ(Do({"export", "--to", File("link.txt")}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(File("link.txt")));
  EXPECT_EQ(Read("unit.txt"), TextOf(Exported()));
}

TEST_F(Exchange, ExportNamesTheFirmware) {
  EXPECT_THAT(Do({"export", "--to", "-"}).out, HasSubstr("\nfirmware FC02.010\n"));
  const Outcome outcome = Do({"export", "--to", "-", "--firmware", "FC01.005"});
  EXPECT_THAT(outcome.out, HasSubstr("\nfirmware FC01.005\n"));
}

}  // namespace
}  // namespace qorhost::test
