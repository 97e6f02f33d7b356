// A merge without a command line: what its report tells, and that it is all or nothing.
#include "host/desks/unit_merge.h"

#include <gmock/gmock.h>

#include "host/desks/unit_export.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::unit_place::Place;
using testing::ElementsAre;
using testing::HasSubstr;

class UnitMerges : public DeskFixture {
 protected:
  /// What the unit holds: all that the store has, but another phone for 102, no 106, and 300.
  [[nodiscard]] UnitReading Changed() {
    UnitFile unit = ExportUnit(session(), kUnit, "").file;
    unit.codes[1][Place::kPhone] = "555-9999";
    unit.codes.pop_back();
    unit.codes.push_back(unit.codes.front());
    unit.codes.back()[Place::kCode] = "300";
    return {unit, {}};
  }
  [[nodiscard]] bool IsAsBefore() {
    return CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2") == 6 &&
           CountOf("SELECT RID FROM DIRECTORYCODE WHERE PHONENUMBER='555-9999'") == 0;
  }
};

TEST_F(UnitMerges, TheReportCountsWhatWasDone) {
  const UnitReading unit = Changed();
  UnitMerge merge(session(), kUnit, unit, BadLines::kRefused);
  std::vector<std::int64_t> told;
  const MergeReport report = merge.Apply([&told](std::int64_t done, std::int64_t total) {
    EXPECT_EQ(total, 3);
    told.push_back(done);
    return true;
  });
  EXPECT_TRUE(report.done());
  EXPECT_EQ(report.inserted, 1U);
  EXPECT_EQ(report.updated, 1U);
  EXPECT_EQ(report.deleted, 1U);
  EXPECT_EQ(report.unchanged, 4U);
  EXPECT_EQ(report.aftermath.tenantsReleased, 1U);
  EXPECT_THAT(told, ElementsAre(0, 1, 2, 3));
  EXPECT_TRUE(UnitMerge(session(), kUnit, unit, BadLines::kRefused).Plan().steps.empty());
}

TEST_F(UnitMerges, APlanWritesNothing) {
  const UnitReading unit = Changed();
  EXPECT_EQ(UnitMerge(session(), kUnit, unit, BadLines::kRefused).Plan().steps.size(), 3U);
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, AStepThatFailsUndoesAllAndIsTold) {
  Run("CREATE TRIGGER Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); "
      "END");
  const UnitReading unit = Changed();
  const MergeReport report = UnitMerge(session(), kUnit, unit, BadLines::kRefused).Apply(nullptr);
  EXPECT_EQ(report.ending, Ending::kFailed);
  ASSERT_EQ(report.failures.size(), 1U);
  EXPECT_THAT(report.failures[0], HasSubstr("cannot write the directory code 300: "));
  EXPECT_THAT(report.failures[0], HasSubstr("no room; nothing was changed"));
  EXPECT_EQ(report.inserted, 0U);
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, AReleaseThatFailsUndoesAllAndIsToldAsWell) {
  Run("CREATE TRIGGER Refuse BEFORE UPDATE ON Tenants BEGIN SELECT RAISE(ABORT, 'no room'); END");
  const UnitReading unit = Changed();
  const MergeReport report = UnitMerge(session(), kUnit, unit, BadLines::kRefused).Apply(nullptr);
  EXPECT_EQ(report.ending, Ending::kFailed);
  ASSERT_EQ(report.failures.size(), 1U);
  EXPECT_THAT(report.failures[0], HasSubstr("no room"));
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, ACancelledMergeChangesNothing) {
  const UnitReading unit = Changed();
  const MergeReport report = UnitMerge(session(), kUnit, unit, BadLines::kRefused)
                                 .Apply([](std::int64_t done, std::int64_t) { return done < 2; });
  EXPECT_EQ(report.ending, Ending::kCancelled);
  EXPECT_TRUE(IsAsBefore());
}

TEST_F(UnitMerges, AUnitFileOfAFirmwareWithoutDisplayOptionsHasNone) {
  const UnitFile unit = ExportUnit(session(), kUnit, std::string(kFirmwareWithoutDisplay)).file;
  EXPECT_EQ(unit.firmware, kFirmwareWithoutDisplay);
  ASSERT_EQ(unit.codes.size(), 6U);
  for (const UnitCode& code : unit.codes) {
    EXPECT_EQ(code[Place::kDisplayMode], "0");
  }
}

}  // namespace
}  // namespace qorhost::test
