// The merge of a unit's directory codes with a real store.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/convert.h"
#include "host/unit/unit_generator.h"
#include "host/unit/unit_rows.h"
#include "tests/host/end_to_end/dir_code_building.h"
#include "tests/host/unit/sample_code.h"

namespace qortest {
namespace {

using ::testing::IsEmpty;

std::string Stored(DirCodeBuilding& building) {
  return building.Rows(
      "SELECT DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, DNDSCHEDULEID, "
      "ISDNDCHECKED, CFSCHEDULEID, ISCFCHECKED, CFPHONENUMBER, CFEXTENSION, CFTIMEDELAY, ACTIVE, "
      "STARTDATE, ENDDATE, DISPLAYNAME, SHOWDISPLAYNAME, SHOWDIRECTORYCODE, MODIFIED, "
      "OLDDIRECTORYCODE FROM DirectoryCode");
}

constexpr const char* kSampleRow =
    "101,5550101,12,30,5,-1,7,-1,5550202,34,40,-1,2024-03-15 09:30:00,2030-12-31 23:59:00,"
    "Adler, K.,-1,0,0,101;";

// The table of a fetch as "RID:code" for each row.
std::string Fetched(DirCodeBuilding& building) {
  qorcred::ObjectRef table;
  EXPECT_TRUE(building.controller().pbFetchDirForMerge(building.connection(), kUnit, table));
  const qorcred::TableView rows(table);
  if (rows.HasNoRows() && rows.UpperRow() == 0) return "nothing";
  std::string text;
  for (std::int32_t row = rows.LowerRow(); row <= rows.UpperRow(); ++row) {
    text += qorcred::TextOrEmpty(rows.Cell(row, 1)) + ":" +
            qorcred::TextOrEmpty(rows.Cell(row, 2)) + " ";
  }
  return text;
}

TEST(DirCodeMergeOnStore, InsertsACode) {
  DirCodeBuilding building;
  EXPECT_TRUE(building.Merge("Insert", SampleCode()));
  EXPECT_EQ(Stored(building), kSampleRow);
  EXPECT_EQ(building.Steps(), "");
}

TEST(DirCodeMergeOnStore, UpdatesACode) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7", 2);
  EXPECT_TRUE(building.Merge("Update", SampleCode(), rid));
  EXPECT_EQ(Stored(building), kSampleRow);
}

TEST(DirCodeMergeOnStore, LeavesDisplayOptionsOutForUnitsWithoutThem) {
  DirCodeBuilding building;
  building.TellFirmware("FC01.005");
  EXPECT_TRUE(building.Merge("Insert", SampleCode()));
  const char* flags = "SELECT SHOWDISPLAYNAME, SHOWDIRECTORYCODE FROM DirectoryCode";
  EXPECT_EQ(building.Rows(flags), "-,-;");

  // The update's text then has a comma in front of WHERE.
  building.Run("UPDATE DirectoryCode SET SHOWDISPLAYNAME=0, SHOWDIRECTORYCODE=-1, PHONENUMBER='x'");
  EXPECT_TRUE(building.Merge("Update", SampleCode(), 1));
  EXPECT_EQ(building.Rows(flags), "0,-1;");
  EXPECT_EQ(building.Rows("SELECT PHONENUMBER FROM DirectoryCode"), "5550101;");
}

TEST(DirCodeMergeOnStore, DatesThatAreNotInUseAreNull) {
  DirCodeBuilding building;
  qorhost::UnitCode code = With(qorcred::unit_place::kStartDateUsed, "0");
  code[qorcred::unit_place::kEndTime] = "";
  EXPECT_TRUE(building.Merge("Insert", code));
  EXPECT_EQ(building.Rows("SELECT STARTDATE, ENDDATE FROM DirectoryCode"),
            "-,2030-12-31 00:00:00;");
}

TEST(DirCodeMergeOnStore, DeletingAllReleasesEveryTenant) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  building.Store("8");
  building.Run("UPDATE Tenants SET DIRECTORYCODE=" + std::to_string(rid));
  EXPECT_TRUE(building.Merge("Delete", {}, -1));
  EXPECT_EQ(building.Codes(), "");
  EXPECT_EQ(building.Number("SELECT count(DIRECTORYCODE) FROM Tenants"), 0);
}

TEST(DirCodeMergeOnStore, DeletingOneReleasesTheTenantsOfTheRowThatTheCountNames) {
  DirCodeBuilding building;
  building.Store("7");                              // RID 1
  const std::int32_t second = building.Store("8");  // RID 2
  building.Run("UPDATE Tenants SET DIRECTORYCODE=RID WHERE RID<=2");
  EXPECT_TRUE(building.Merge("Delete", {}, second));
  EXPECT_EQ(building.Codes(), "7,7,0;");
  EXPECT_EQ(building.Rows("SELECT RID, DIRECTORYCODE, MODIFIED "
                          "FROM Tenants WHERE RID<=2 ORDER BY RID"),
            "1,-,2026-01-31 14:05:09;2,2,0;");
}

TEST(DirCodeMergeOnStore, OtherModesWriteNothing) {
  DirCodeBuilding building;
  building.Store("7");
  const std::string before = building.Snapshot();
  for (const char* mode : {"delete", "INSERT", "", "Upsert"}) {
    EXPECT_TRUE(building.Merge(mode, SampleCode(), -1)) << mode;
  }
  EXPECT_EQ(building.Snapshot(), before);
}

TEST(DirCodeMergeOnStore, FetchesCurrentCodesAndThenPreviousOnes) {
  DirCodeBuilding building;
  building.Store("30");
  building.Store("20", 1);
  building.Run("UPDATE DirectoryCode SET OLDDIRECTORYCODE=5 WHERE RID=1");
  building.Run("INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE) VALUES (1, -4), (2, 9)");
  EXPECT_EQ(Fetched(building), "2:20 1:30 1:5 ");
}

TEST(DirCodeMergeOnStore, FetchesNothingFromAnEmptyUnit) {
  DirCodeBuilding building;
  EXPECT_EQ(Fetched(building), "nothing");
}

TEST(DirCodeMergeOnStore, WhatAUnitHoldsComesBackUnchanged) {
  DirCodeBuilding building;
  const auto codes = qorhost::GenerateUnit(300, 11).codes;
  for (const qorhost::UnitCode& code : codes) ASSERT_TRUE(building.Merge("Insert", code));
  EXPECT_THAT(building.trapped, IsEmpty());

  qorcred::DatabaseError error;
  const qorcred::DatabaseManager manager(
      building.host().CreateComponent(qorcred::component::kDatabaseManager));
  const qorcred::TableView rows = manager.ExecuteSelect(
      building.connection(),
      "SELECT " + std::string(qorhost::kUnitColumns) + " FROM DIRECTORYCODE ORDER BY DIRECTORYCODE",
      error);
  ASSERT_EQ(rows.UpperRow(), 299);
  for (std::int32_t row = 0; row <= rows.UpperRow(); ++row) {
    const qorhost::RowReading reading = qorhost::CodeFromRow(rows, row, 0);
    EXPECT_EQ(reading.obstacle, "");
    EXPECT_EQ(reading.code, codes[static_cast<std::size_t>(row)]);
  }
}

}  // namespace
}  // namespace qortest
