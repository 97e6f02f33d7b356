// A merge without a command line: what it does, what its report tells, and that it is all or
// nothing.
#include "host/desks/unit_merge.h"

#include <gmock/gmock.h>

#include "host/desks/desk_error.h"
#include "host/unit/unit_generator.h"
#include "tests/host/desks/unit_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::unit_place::Place;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class UnitMerges : public UnitFixture {
 protected:
  /// What the unit holds: all that the store has, but another phone for 102, no 106, and 300.
  [[nodiscard]] UnitReading Changed() {
    UnitFile unit = Exported();
    CodeIn(unit, 102)[Place::kPhone] = "555-9999";
    Drop(unit, 106);
    AddCopy(unit, "300");
    return {unit, {}};
  }
  /// The same with a line that could not be read.
  [[nodiscard]] UnitReading ChangedWithABadLine() {
    UnitReading reading = Changed();
    reading.faults.push_back({9, "1 fields instead of 24"});
    return reading;
  }
  [[nodiscard]] bool IsAsBefore() {
    return CodeCount() == 6 &&
           CountOf("SELECT RID FROM DIRECTORYCODE WHERE PHONENUMBER='555-9999'") == 0;
  }
  /// The rows of a plan: "update 102: phone".
  [[nodiscard]] std::vector<std::string> PlanOf(UnitFile unit) {
    const UnitReading reading{std::move(unit), {}};
    UnitMerge merge(session(), kUnit, reading, BadLines::kRefused);
    const MergePlan& plan = merge.Plan();
    std::vector<std::string> rows;
    for (const auto& row : PlanTable(plan, reading.file.codes, merge.stored()).rows) {
      rows.push_back(qorcred::ToText(row[0]) + " " + qorcred::ToText(row[1]) + ": " +
                     qorcred::TextOrEmpty(row.back()));
    }
    return rows;
  }
};

TEST_F(UnitMerges, OfDifferencesThatAreAcceptedOneByOneNoOthersAreMade) {
  const UnitReading unit = Changed();
  UnitMerge merge(session(), kUnit, unit, BadLines::kRefused);
  ASSERT_EQ(merge.Look().steps.size(), 3U);  // 106 deleted, 102 updated, 300 inserted
  const MergeReport report = merge.ApplyAccepted({1}, nullptr);
  EXPECT_TRUE(report.done());
  EXPECT_EQ(CountsOf(report), "0 inserted, 1 updated, 0 deleted, 4 unchanged");
  EXPECT_EQ(CodeCount(), 6);
  ASSERT_EQ(merge.Look().steps.size(), 2U);
  EXPECT_TRUE(merge.ApplyAccepted({0, 1}, nullptr).done());
  EXPECT_THAT(merge.Look().steps, IsEmpty());
}

TEST_F(UnitMerges, ADifferenceWhoseRowOthersHaveChangedIsNotMade) {
  const UnitReading unit = Changed();
  UnitMerge merge(session(), kUnit, unit, BadLines::kRefused);
  ASSERT_EQ(merge.Look().steps.size(), 3U);
  (void)session().sql().Change(
      "UPDATE DIRECTORYCODE SET PHONENUMBER='555-7777' WHERE UNITKEY=2 AND PHONENUMBER IN (SELECT "
      "PHONENUMBER FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=102)",
      dialect::StatementKind::kUpdate);
  EXPECT_EQ(merge.ApplyAccepted({1}, nullptr).ending, Ending::kStale);
  EXPECT_EQ(CountOf("SELECT RID FROM DIRECTORYCODE WHERE PHONENUMBER='555-9999'"), 0U);
  ASSERT_EQ(merge.Look().steps.size(), 3U);
  EXPECT_TRUE(merge.ApplyAccepted({1, 2}, nullptr).done());
}

TEST_F(UnitMerges, TheSidesOfADifferenceAreToldFieldByField) {
  const UnitReading unit = Changed();
  UnitMerge merge(session(), kUnit, unit, BadLines::kRefused);
  const MergePlan& plan = merge.Look();
  std::vector<std::string> told;
  for (const auto& row : StepTable(plan.steps[1], unit.file.codes, merge.stored()).rows) {
    if (!qorcred::TextOrEmpty(row[3]).empty()) {
      told.push_back(qorcred::TextOrEmpty(row[0]) + ": " + qorcred::TextOrEmpty(row[2]));
    }
  }
  EXPECT_THAT(told, ElementsAre("phone: 555-9999"));
  for (const auto& row : StepTable(plan.steps[0], unit.file.codes, merge.stored()).rows) {
    EXPECT_EQ(qorcred::TextOrEmpty(row[2]), "");
  }
}

TEST_F(UnitMerges, TheReportCountsWhatWasDone) {
  const UnitReading unit = Changed();
  UnitMerge merge(session(), kUnit, unit, BadLines::kRefused, Deletions::kAll);
  std::vector<std::int64_t> told;
  const MergeReport report = merge.Apply([&told](std::int64_t done, std::int64_t total) {
    EXPECT_EQ(total, 3);
    told.push_back(done);
    return true;
  });
  EXPECT_TRUE(report.done());
  EXPECT_EQ(CountsOf(report), "1 inserted, 1 updated, 1 deleted, 4 unchanged");
  EXPECT_EQ(report.aftermath.tenantsReleased, 1U);
  EXPECT_THAT(told, ElementsAre(0, 1, 2, 3));
  EXPECT_TRUE(UnitMerge(session(), kUnit, unit, BadLines::kRefused).Plan().steps.empty());
}

TEST_F(UnitMerges, EachDifferenceIsWrittenAndNothingElse) {
  const Row untouched = RowOf("101");
  const UnitReading unit = Changed();
  EXPECT_TRUE(Merge(unit.file).done());
  EXPECT_EQ(RowOf("101"), untouched);
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-9999");
  EXPECT_EQ(Stored("RID", "102"), "12");
  EXPECT_THAT(RowOf("106"), IsEmpty());
  EXPECT_EQ(Stored("MODIFIED", "300"), "0");
  EXPECT_EQ(Stored("OLDDIRECTORYCODE", "300"), "300");
  EXPECT_EQ(CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=1"), 10U);
}

TEST_F(UnitMerges, EqualCodesCallNoStatementThatWrites) {
  Open(true);
  const MergeReport report = Merge(Exported());
  EXPECT_EQ(CountsOf(report), "0 inserted, 0 updated, 0 deleted, 6 unchanged");
  EXPECT_THAT(calls_, Contains(HasSubstr(".pbFetchDirForMerge(")));
  for (const char* call :
       {".pbMergeSave(", ".ExecuteUpdate(", ".ExecuteInsert(", ".ExecuteQueryDelete(",
        "host \"UPDATE", "host \"INSERT", "host \"DELETE"}) {
    EXPECT_THAT(calls_, Each(Not(HasSubstr(call))));
  }
}

TEST_F(UnitMerges, APlanTellsWhatDiffersAndWritesNothing) {
  UnitFile unit = Exported();
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  CodeIn(unit, 102)[Place::kActive] = "0";
  Drop(unit, 101);
  EXPECT_THAT(PlanOf(unit),
              ElementsAre("delete 101: taken from Hollis Elena", "update 102: phone, active"));
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-0101");
  EXPECT_FALSE(RowOf("101").empty());
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, APlanTellsOfCodesThatWereNeverSent) {
  ASSERT_TRUE(Add("250", WithPhone("1")).done());
  UnitFile unit = Exported();
  Drop(unit, 250);
  EXPECT_THAT(PlanOf(unit), ElementsAre(HasSubstr("never sent to the unit")));
}

TEST_F(UnitMerges, CodesAreDeletedOnlyWhenThatWasAgreedTo) {
  UnitFile unit = Exported();
  unit.codes.resize(4);
  const UnitReading four{unit, {}};
  UnitMerge merge(session(), kUnit, four, BadLines::kRefused);
  const MergeReport refused = merge.Apply(nullptr);
  EXPECT_EQ(refused.ending, Ending::kRefused);
  ASSERT_TRUE(refused.losses);
  EXPECT_EQ(refused.losses->stored, 6U);
  EXPECT_EQ(refused.losses->Question(),
            "2 of the unit's 6 directory codes will be deleted. Go on?");
  EXPECT_TRUE(IsAsBefore());

  ASSERT_EQ(refused.losses->codes.size(), 2U);
  LostCodes fewer = refused.losses->codes;
  fewer.erase(fewer.begin());
  EXPECT_TRUE(merge.Apply(nullptr, fewer).losses) << "more than was agreed to";
  EXPECT_TRUE(IsAsBefore());

  const MergeReport agreed = merge.Apply(nullptr, refused.losses->codes);
  EXPECT_TRUE(agreed.done());
  EXPECT_EQ(agreed.deleted, 2U);
  EXPECT_EQ(CodeCount(), 4);
}

// Fewer than half of the codes once went without a question.
TEST_F(UnitMerges, ASingleCodeIsDeletedOnlyWhenThatWasAgreedTo) {
  UnitFile unit = Exported();
  Drop(unit, 106);
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  const UnitReading five{unit, {}};
  EXPECT_TRUE(UnitMerge(session(), kUnit, five, BadLines::kRefused).Apply(nullptr).losses);
  EXPECT_TRUE(IsAsBefore());
  EXPECT_TRUE(Merge(unit).done()) << "by a merge that may delete all";
  EXPECT_EQ(CodeCount(), 5);
}

TEST_F(UnitMerges, AsManyOtherCodesAreNotWhatWasAgreedTo) {
  UnitFile unit = Exported();
  unit.codes.resize(2);
  const UnitReading two{unit, {}};
  UnitMerge merge(session(), kUnit, two, BadLines::kRefused);
  const MergeReport refused = merge.Apply(nullptr);
  ASSERT_TRUE(refused.losses);
  // Somebody else gives one of them another number while the question is open.
  Run("UPDATE DIRECTORYCODE SET DIRECTORYCODE=777 WHERE RID=" +
      std::to_string(refused.losses->codes.begin()->first));
  const MergeReport again = merge.Apply(nullptr, refused.losses->codes);
  ASSERT_TRUE(again.losses);
  EXPECT_EQ(again.losses->codes.size(), refused.losses->codes.size());
  EXPECT_EQ(CodeCount(), 6);
  EXPECT_TRUE(merge.Apply(nullptr, again.losses->codes).done());
  EXPECT_EQ(CodeCount(), 2);
}

TEST_F(UnitMerges, CodesLongerThanTheUnitsAreRefusedBeforeAnythingIsWritten) {
  UnitFile unit = Exported();
  AddCopy(unit, "123456");
  CodeIn(unit, 102)[Place::kPhone] = "555-9999";
  const UnitReading reading{unit, {}};
  UnitMerge merge(session(), kUnit, reading, BadLines::kRefused);
  const MergeReport report = merge.Apply(nullptr);
  EXPECT_EQ(report.ending, Ending::kRefused);
  ASSERT_THAT(report.failures, SizeIs(1));
  EXPECT_THAT(report.failures[0], HasSubstr("the directory code 123456 is longer than the"));
  EXPECT_TRUE(IsAsBefore());
  EXPECT_THROW(merge.Plan(), RefusedError);
}

TEST_F(UnitMerges, MoreCodesThanTheUnitsTypeAllowsAreRefusedBeforeAnythingIsWritten) {
  UnitFile unit = Exported();
  AddCopy(unit, "300");
  const UnitReading reading{unit, {}};
  // As many as there are: 145 credentials and 6 directory codes.
  Run("UPDATE UNITTYPES SET TOTAL='MTUx'");
  UnitMerge full(session(), kUnit, reading, BadLines::kRefused);
  const MergeReport refused = full.Apply(nullptr);
  EXPECT_EQ(refused.ending, Ending::kRefused);
  ASSERT_THAT(refused.failures, SizeIs(1));
  EXPECT_EQ(refused.failures[0],
            "the unit would hold 152 combined codes, and its type allows 151; nothing was changed");
  EXPECT_TRUE(IsAsBefore());
  Run("UPDATE UNITTYPES SET TOTAL='MTUy'");
  EXPECT_TRUE(full.Apply(nullptr).done());
}

TEST_F(UnitMerges, AFileThatIsNoUnitFileIsNotMergedWhateverMayBeLeftOut) {
  UnitReading reading;
  reading.isUnitFile = false;
  for (const BadLines badLines : {BadLines::kRefused, BadLines::kLeftOut}) {
    EXPECT_THROW(UnitMerge(session(), kUnit, reading, badLines), RefusedError);
  }
}

TEST_F(UnitMerges, ABadLineForbidsTheMerge) {
  const auto refusal = [this](const UnitReading& reading, BadLines badLines) -> std::string {
    try {
      const UnitMerge merge(session(), kUnit, reading, badLines);
    } catch (const UnusableReading& refused) {
      EXPECT_TRUE(refused.isUnitFile());
      return refused.what();
    }
    return "";
  };
  UnitReading reading = ChangedWithABadLine();
  EXPECT_EQ(refusal(reading, BadLines::kRefused),
            "1 bad line, so nothing was changed: mend the file");
  reading.faults.push_back({10, "the line is longer"});
  EXPECT_EQ(refusal(reading, BadLines::kRefused),
            "2 bad lines, so nothing was changed: mend the file");
  EXPECT_EQ(refusal(reading, BadLines::kLeftOut), "");
  EXPECT_EQ(refusal(Changed(), BadLines::kRefused), "");
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, WithBadLinesLeftOutNoStoredCodeIsDeleted) {
  const UnitReading reading = ChangedWithABadLine();
  const MergeReport report =
      UnitMerge(session(), kUnit, reading, BadLines::kLeftOut).Apply(nullptr);
  EXPECT_TRUE(report.done());
  EXPECT_EQ(CountsOf(report), "1 inserted, 1 updated, 0 deleted, 4 unchanged");
  EXPECT_EQ(report.kept, 1U);
  EXPECT_FALSE(RowOf("106").empty());
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-9999");
}

struct RefusedCode {
  const char* name;
  Place place;
  const char* text;
  const char* reason;
};

class RefusedCodes : public UnitFixture, public testing::WithParamInterface<RefusedCode> {};

// The controller's merge stored each of these, and the screen could not show or save it.
TEST_P(RefusedCodes, AreBadLinesAndNothingIsChanged) {
  UnitFile unit = Exported();
  UnitCode& code = CodeIn(unit, 102);
  code[Place::kIsDndChecked] = code[Place::kIsCfChecked] = "1";
  code[Place::kDndSchedule] = code[Place::kCfSchedule] = "2";
  code[Place::kCfPhone] = "555-0290";
  code[Place::kStartDateUsed] = code[Place::kEndDateUsed] = "1";
  code[Place::kStartDate] = "260501";
  code[Place::kEndDate] = "260502";
  code[Place::kStartTime] = code[Place::kEndTime] = "0800";
  UnitFile good = unit;
  code[GetParam().place] = GetParam().text;
  UnitReading reading{unit, {}};
  reading.lines = {3, 4, 5, 6, 7, 8};

  UnitMerge merge(session(), kUnit, reading, BadLines::kRefused);
  const MergeReport report = merge.Apply(nullptr);
  EXPECT_EQ(report.ending, Ending::kRefused);
  EXPECT_THAT(report.failures, ElementsAre("1 bad line, so nothing was changed: mend the file"));
  ASSERT_THAT(report.faults, SizeIs(1));
  EXPECT_EQ(report.faults[0].line, 4U);
  EXPECT_EQ(report.faults[0].reason, GetParam().reason);
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-0101");
  EXPECT_EQ(merge.Plan().faults.size(), 1U);
  EXPECT_TRUE(Merge(good).done());
}

INSTANTIATE_TEST_SUITE_P(
    Fields, RefusedCodes,
    testing::Values(RefusedCode{"Escape", Place::kDisplayName, "a\x1B[2J",
                                "the display name holds control characters"},
                    RefusedCode{"LineBreak", Place::kPhone, "555\n0101",
                                "the phone number holds control characters"},
                    RefusedCode{"UpperControl", Place::kCfExtension, "\xC2\x9B",
                                "the call-forward extension holds control characters"},
                    RefusedCode{"EmptyPhone", Place::kPhone, "", "the phone number is empty"},
                    RefusedCode{"BlankPhone", Place::kPhone, "  ", "the phone number is empty"},
                    RefusedCode{"UnknownSchedule", Place::kDndSchedule, "99",
                                "the do-not-disturb schedule 99 is none of this unit's schedules"},
                    RefusedCode{"UnknownForwardSchedule", Place::kCfSchedule, "6",
                                "the call-forward schedule 6 is none of this unit's schedules"},
                    RefusedCode{"NoSchedule", Place::kDndSchedule, "",
                                "do not disturb is on, but has no schedule"},
                    RefusedCode{"NoForwardSchedule", Place::kCfSchedule, "",
                                "call forwarding is on, but has no schedule"},
                    RefusedCode{"NoForwardPhone", Place::kCfPhone, "",
                                "call forwarding is on, but has no phone number"},
                    RefusedCode{"EndsAsItBegins", Place::kEndDate, "260501",
                                "the end date is not later than the start date"},
                    RefusedCode{"EndsBefore", Place::kEndDate, "260430",
                                "the end date is not later than the start date"}),
    [](const auto& refused) { return std::string(refused.param.name); });

TEST_F(UnitMerges, ACodeThatTheScreenRefusesIsLeftOutAsABadLineIs) {
  UnitFile unit = Exported();
  CodeIn(unit, 101)[Place::kPhone] = "555-9999";
  CodeIn(unit, 102)[Place::kPhone] = "";
  Drop(unit, 106);
  AddCopy(unit, "300");
  unit.codes.back()[Place::kDisplayName] = "\x1B";
  const UnitReading reading{unit, {}};
  UnitMerge merge(session(), kUnit, reading, BadLines::kLeftOut);
  const MergeReport report = merge.Apply(nullptr);
  EXPECT_TRUE(report.done());
  EXPECT_EQ(CountsOf(report), "0 inserted, 1 updated, 0 deleted, 3 unchanged");
  EXPECT_EQ(report.faults.size(), 2U);
  EXPECT_EQ(report.kept, 1U);
  EXPECT_EQ(Stored("PHONENUMBER", "101"), "555-9999");
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-0101");
  EXPECT_THAT(RowOf("300"), IsEmpty());
  EXPECT_FALSE(RowOf("106").empty());
}

TEST_F(UnitMerges, WhatIsStoredAlreadyIsNoFault) {
  Run("UPDATE DirectoryCode SET PHONENUMBER=NULL, DNDSCHEDULEID=99 WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=102");
  UnitFile unit = Exported();
  CodeIn(unit, 101)[Place::kPhone] = "555-9999";
  EXPECT_EQ(CountsOf(Merge(unit)), "0 inserted, 1 updated, 0 deleted, 5 unchanged");
}

TEST_F(UnitMerges, ARenumberedCodeIsFoundByItsPreviousNumber) {
  const UnitFile unit = Exported();
  ASSERT_TRUE(Renumber("101", "180").done());
  ASSERT_THAT(Steps(), SizeIs(1));
  const MergeReport report = Merge(unit);
  EXPECT_EQ(CountsOf(report), "0 inserted, 1 updated, 0 deleted, 5 unchanged");
  EXPECT_EQ(report.aftermath.stepsWithdrawn, 1U);
  EXPECT_EQ(Stored("RID", "101"), "11");
  EXPECT_EQ(Stored("MODIFIED", "101"), "0");
  EXPECT_THAT(TenantsOf(11), SizeIs(1));
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(UnitMerges, TheCodeOfNowGoesBeforeThePreviousOne) {
  UnitFile unit = Exported();
  ASSERT_TRUE(Renumber("101", "180").done());
  ASSERT_TRUE(Renumber("102", "101").done());
  Drop(unit, 102);
  EXPECT_TRUE(Merge(unit).done());
  // Row 12 has the code 101 now; row 11 had it before and is left without a code in the unit.
  EXPECT_EQ(Stored("RID", "101"), "12");
  EXPECT_THAT(RowOf("180"), IsEmpty());
}

TEST_F(UnitMerges, ACodeThatTheUnitStillHasComesBackWithoutItsDeletion) {
  const UnitFile unit = Exported();
  yes_ = true;
  ASSERT_TRUE(Delete("101").done());
  ASSERT_THAT(Steps(), SizeIs(1));
  EXPECT_TRUE(Merge(unit).done());
  EXPECT_FALSE(RowOf("101").empty());
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(UnitMerges, ADeletionTakesTheCodeFromItsTenantsAndFromNobodyElse) {
  constexpr std::int32_t kFirst = 1;
  // The tenants of row 1 are those whom the library's own statement would meet.
  const std::vector<Row> ofFirst = TenantsOf(1);
  ASSERT_THAT(ofFirst, SizeIs(1));
  ASSERT_THAT(TenantsOf(5), SizeIs(1));
  UnitFile unit = Exported(kFirst);
  Drop(unit, 105);
  EXPECT_TRUE(Merge(unit, kFirst).done());
  EXPECT_THAT(TenantsOf(5), IsEmpty());
  EXPECT_EQ(TenantsOf(1), ofFirst);

  Drop(unit, 101);
  EXPECT_TRUE(Merge(unit, kFirst).done());
  EXPECT_THAT(TenantsOf(1), IsEmpty());
  EXPECT_THAT(TenantsOf(2), SizeIs(1));
}

TEST_F(UnitMerges, AUnitWithoutDisplayOptionsLeavesThoseOfTheStoreAlone) {
  UnitFile unit = Exported();
  unit.firmware = kFirmwareWithoutDisplay;
  for (UnitCode& code : unit.codes) {
    code[Place::kDisplayMode] = "3";
  }
  EXPECT_EQ(CountsOf(Merge(unit)), "0 inserted, 0 updated, 0 deleted, 6 unchanged");
  CodeIn(unit, 101)[Place::kPhone] = "555-9999";
  EXPECT_EQ(CountsOf(Merge(unit)), "0 inserted, 1 updated, 0 deleted, 5 unchanged");
  EXPECT_EQ(Stored("SHOWDISPLAYNAME", "101"), "True");
  EXPECT_EQ(Stored("PHONENUMBER", "101"), "555-9999");
}

TEST_F(UnitMerges, AStepThatFailsUndoesAllAndIsTold) {
  const UnitFile before = Exported();
  Run("CREATE TRIGGER Refuse BEFORE INSERT ON DirectoryCode WHEN NEW.DIRECTORYCODE = 1500 BEGIN "
      "SELECT RAISE(ABORT, 'no room'); END");
  const MergeReport report = Merge(GenerateUnit(1800, 1));
  EXPECT_EQ(report.ending, Ending::kFailed);
  ASSERT_THAT(report.failures, SizeIs(1));
  EXPECT_THAT(report.failures[0], HasSubstr("cannot write the directory code 1500: "));
  EXPECT_THAT(report.failures[0], HasSubstr("no room; nothing was changed"));
  EXPECT_EQ(CountsOf(report), "0 inserted, 0 updated, 0 deleted, 0 unchanged");
  EXPECT_EQ(TextOf(Exported()), TextOf(before));
  EXPECT_THAT(TenantsOf(11), SizeIs(1));
}

TEST_F(UnitMerges, AReleaseThatFailsUndoesAllAndIsToldAsWell) {
  Run("CREATE TRIGGER Refuse BEFORE UPDATE ON Tenants BEGIN SELECT RAISE(ABORT, 'no room'); END");
  const MergeReport report = Merge(Changed().file);
  EXPECT_EQ(report.ending, Ending::kFailed);
  ASSERT_THAT(report.failures, SizeIs(1));
  EXPECT_THAT(report.failures[0], HasSubstr("no room"));
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, AStoreThatHoldsSomethingElseAfterwardsUndoesAll) {
  Run("CREATE TRIGGER Spoil AFTER INSERT ON DirectoryCode BEGIN UPDATE DirectoryCode SET "
      "PHONENUMBER='0' WHERE RID=NEW.RID; END");
  UnitFile unit = Exported();
  AddCopy(unit, "300");
  const MergeReport report = Merge(unit);
  EXPECT_EQ(report.ending, Ending::kFailed);
  EXPECT_THAT(report.failures,
              ElementsAre("the directory code 300 did not come out as the unit has it: phone; "
                          "nothing was changed"));
  EXPECT_THAT(RowOf("300"), IsEmpty());
}

TEST_F(UnitMerges, ACancelledMergeChangesNothing) {
  const UnitReading unit = Changed();
  const MergeReport report = UnitMerge(session(), kUnit, unit, BadLines::kRefused, Deletions::kAll)
                                 .Apply([](std::int64_t done, std::int64_t) { return done < 2; });
  EXPECT_EQ(report.ending, Ending::kCancelled);
  EXPECT_TRUE(IsAsBefore());
}

}  // namespace
}  // namespace qorhost::test
