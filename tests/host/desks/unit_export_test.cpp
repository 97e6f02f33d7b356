// Exporting a unit's codes without a command line: what comes out, and that it goes back in.
#include "host/desks/unit_export.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/files/file_error.h"
#include "host/unit/unit_generator.h"
#include "tests/host/desks/unit_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using qorcred::unit_place::Place;
using testing::HasSubstr;
using testing::IsEmpty;

class UnitExports : public UnitFixture {
 protected:
  // Every row is the same operation, which the tests of the merge run again.
  UnitExports() { replays_ = false; }
};

TEST_F(UnitExports, MergedAndExportedAgainGiveTheSameBytes) {
  const UnitFile made = GenerateUnit(1800, 7);
  ASSERT_TRUE(Merge(made).done());
  const UnitFile first = Exported();
  EXPECT_EQ(TextOf(first), TextOf(made));

  constexpr std::int32_t kOther = 3;
  Run("DELETE FROM DirectoryCode WHERE UNITKEY=3");
  const MergeReport report = Merge(first, kOther);
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_EQ(CountsOf(report), "1800 inserted, 0 updated, 0 deleted, 0 unchanged");
  EXPECT_EQ(TextOf(Exported(kOther)), TextOf(first));
}

TEST_F(UnitExports, TellWhatAUnitCannotHold) {
  Run("UPDATE DirectoryCode SET STARTDATE='1999-01-01 00:00:00' WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=102");
  Run("UPDATE DirectoryCode SET DIRECTORYCODE=104 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  const ExportedUnit exported = ExportUnit(session(), kUnit, "", Unholdable::kLeftOut);
  EXPECT_EQ(exported.file.codes.size(), 4U);
  ASSERT_EQ(exported.obstacles.size(), 2U);
  EXPECT_EQ(exported.obstacles[0].number, 102);
  EXPECT_EQ(exported.obstacles[0].rid, 12);
  EXPECT_THAT(exported.obstacles[0].reason, HasSubstr("its start date lies in the year 1999"));
  EXPECT_EQ(exported.obstacles[1].number, 104);
  EXPECT_EQ(exported.obstacles[1].rid, 15);
  EXPECT_EQ(exported.obstacles[1].reason, "another row has the same code");
}

TEST_F(UnitExports, AreRefusedForWhatAUnitCannotHoldUnlessItIsLeftOut) {
  Run("UPDATE DirectoryCode SET STARTDATE='1999-01-01 00:00:00' WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=102");
  try {
    (void)ExportUnit(session(), kUnit, "", Unholdable::kRefused);
    ADD_FAILURE() << "exported";
  } catch (const UnholdableCodes& refusal) {
    EXPECT_STREQ(refusal.what(),
                 "a unit cannot hold 1 of the codes, so nothing was written: change them");
    ASSERT_EQ(refusal.obstacles().size(), 1U);
    EXPECT_EQ(refusal.obstacles()[0].number, 102);
  }
}

TEST_F(UnitExports, AreNeverWrittenOverTheStore) {
  const TemporaryFolder folder;
  const std::filesystem::path store = folder.File("building.db");
  std::ofstream(store) << "a store";
  for (const char* name : {"building.db", "building.db-wal"}) {
    try {
      WriteExport(Exported(), folder.File(name), Standing::kReplaced, store);
      ADD_FAILURE() << name;
    } catch (const FileError& failure) {
      EXPECT_EQ(failure.problem(), FileProblem::kOccupied) << name;
    }
  }
  EXPECT_EQ(std::filesystem::file_size(store), 7U);
  WriteExport(Exported(), folder.File("unit.txt"), Standing::kStays, store);
  std::ifstream written(folder.File("unit.txt"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), TextOf(Exported()));
}

TEST_F(UnitExports, NameTheFirmware) {
  EXPECT_EQ(Exported().firmware, "FC02.010");
  EXPECT_THAT(TextOf(Exported()), HasSubstr("\nfirmware FC02.010\n"));
}

TEST_F(UnitExports, HaveNoDisplayOptionsForAFirmwareWithoutThem) {
  const std::string firmware(kFirmwareWithoutDisplay);
  const UnitFile unit = Exported(kUnit, firmware);
  EXPECT_EQ(unit.firmware, kFirmwareWithoutDisplay);
  ASSERT_EQ(unit.codes.size(), 6U);
  for (const UnitCode& code : unit.codes) {
    EXPECT_EQ(code[Place::kDisplayMode], "0");
  }
  Run("DELETE FROM DirectoryCode WHERE UNITKEY=2");
  ASSERT_TRUE(Merge(unit).done());
  EXPECT_EQ(RowOf("101")["SHOWDISPLAYNAME"], "Null");
  EXPECT_EQ(TextOf(Exported(kUnit, firmware)), TextOf(unit));
}

TEST_F(UnitExports, HoldNothingOfAUnitWithoutCodes) {
  Run("DELETE FROM DirectoryCode WHERE UNITKEY=2");
  const ExportedUnit exported = ExportUnit(session(), kUnit, "", Unholdable::kLeftOut);
  EXPECT_THAT(exported.file.codes, IsEmpty());
  EXPECT_THAT(exported.obstacles, IsEmpty());
}

}  // namespace
}  // namespace qorhost::test
