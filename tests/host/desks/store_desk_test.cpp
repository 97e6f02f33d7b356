// Stores as a desk opens, makes and replaces them, looks them over, and runs a statement by hand.
#include <gmock/gmock.h>

#include <fstream>

#include "host/desks/desk_error.h"
#include "host/desks/store_file.h"
#include "host/desks/store_overview.h"
#include "host/desks/store_statement.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

std::size_t UnitsIn(const fs::path& file) {
  return DeskSession(OpenStoreFile(file, Access::kRead), {}).Units().size();
}

TEST(StoreFiles, AreMadeReplacedAndSeen) {
  const TemporaryFolder folder;
  const fs::path file = folder.File("building.db");
  EXPECT_EQ(LookAt(file), StorePlace::kFree);
  EXPECT_EQ(LookAt(folder.path()), StorePlace::kFolder);
  CreateStore(file, true);
  EXPECT_EQ(LookAt(file), StorePlace::kFile);
  EXPECT_EQ(UnitsIn(file), 3U);
  ReplaceStore(file, false);
  EXPECT_EQ(UnitsIn(file), 0U);
  EXPECT_FALSE(fs::exists(folder.File("building.db.new")));
}

TEST(StoreFiles, NeverTakeThePlaceOfSomethingElse) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("notes.txt")) << "these are notes, not a database";
  EXPECT_THROW(ReplaceStore(folder.File("notes.txt"), true), ForeignFile);
  CreateStore(folder.File("building.db"), true);
  std::ofstream(folder.File("building.db.new")) << "notes about the new building";
  EXPECT_THROW(ReplaceStore(folder.File("building.db"), false), ForeignFile);
  EXPECT_EQ(UnitsIn(folder.File("building.db")), 3U);
}

class Overview : public DeskFixture {};

TEST_F(Overview, HasTheUnitsTheirDoorsAndTheirSteps) {
  const Table units = UnitTable(session(), session().Units());
  ASSERT_EQ(units.rows.size(), 3U);
  EXPECT_EQ(units.rows[0][1], qorcred::Value("Harbour Court"));
  const Table doors = DoorTable(session(), {{2, ""}});
  ASSERT_GE(doors.rows.size(), 4U);
  EXPECT_EQ(qorcred::TextOrEmpty(doors.rows[0][3]).size(), 12U) << "a caption is cut";
  EXPECT_TRUE(StepTable(session(), std::nullopt).rows.empty());
}

class Statements : public DeskFixture {};

TEST_F(Statements, ReadRowsWithTheirTypes) {
  const StoreStatement statement("SELECT Top 1 IsGroupZero, RID, NULL FROM TenantGroup");
  EXPECT_TRUE(statement.reads());
  const Table rows = statement.Read(session());
  ASSERT_EQ(rows.rows.size(), 1U);
  EXPECT_TRUE(rows.rows[0][0].Is(qorcred::ValueType::kBoolean));
  EXPECT_TRUE(rows.rows[0][2].Is(qorcred::ValueType::kNull));
}

TEST_F(Statements, TellHowManyRowsTheyChanged) {
  const StoreStatement statement("UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4");
  EXPECT_FALSE(statement.reads());
  EXPECT_EQ(statement.Change(session()).rows, 1);
  EXPECT_EQ(Cell("SELECT DOORID FROM DOORS WHERE UNITKEY=1 AND DOORNAME='Yard'"), "4");
}

TEST_F(Statements, AreRefusedWithLineAndColumn) {
  for (const char* text : {"", "DROP TABLE Tenants", "SELECT 'x", "SELECT nope FROM Tenants"}) {
    try {
      (void)StoreStatement(text).Read(session());
      ADD_FAILURE() << text;
    } catch (const RefusedError& error) {
      EXPECT_THAT(error.what(), HasSubstr("line 1, column ")) << text;
    }
  }
}

}  // namespace
}  // namespace qorhost::test
