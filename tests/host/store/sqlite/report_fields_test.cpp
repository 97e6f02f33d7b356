#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/sqlite/schema.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::sqlite {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Texts(const Database& store, std::string_view sql) {
  Statement statement(store, sql);
  std::vector<std::string> texts;
  while (statement.Step()) {
    texts.emplace_back(statement.Text(0));
  }
  return texts;
}

constexpr std::string_view kFields =
    "SELECT RID || ' ' || FieldName || '=' || FieldNameDisplay FROM TenantSelectionFields "
    "ORDER BY DisplaySeq";

class ReportFieldsTest : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path File() const { return folder_.path() / "building.db"; }

  /// A store as it was before there were reports, changed by `sql`.
  void MakeOldStore(const std::string& sql) const {
    Database old(File(), OpenMode::kCreate);
    old.Run("PRAGMA application_id=" + std::to_string(kApplicationId));
    old.Run(std::string(Migrations().front().sql));
    old.Run("PRAGMA user_version=1; " + sql);
  }

 private:
  test::TemporaryFolder folder_;
};

TEST_F(ReportFieldsTest, ANewStoreHasThemInTheOrderOfTheGrid) {
  const Database store = OpenMemoryDatabase();
  EXPECT_THAT(
      Texts(store, kFields),
      ElementsAre(
          "51 DirectoryCode.DirectoryCode=Directory Code", "52 DirectoryCode.PhoneNumber=Phone No.",
          "53 DirectoryCode.Extension=Phone No. Extension",
          "54 DirectoryCode.TimeDelay=Phone No. Delay", "65 DirectoryCode.DisplayName=Display Name",
          "62 DirectoryCode.Active=Directory Status",
          "63 DirectoryCode.StartDate=Directory Start Date",
          "64 DirectoryCode.EndDate=Directory End Date",
          "55 DirectoryCode.IsDNDChecked=Do Not Disturb",
          "56 DirectoryCode.DNDScheduleID=DND Schedule",
          "57 DirectoryCode.IsCFChecked=Call Forwarding",
          "58 DirectoryCode.CFScheduleID=CF Schedule",
          "59 DirectoryCode.CFPhoneNumber=CF Phone No.",
          "60 DirectoryCode.CFExtension=CF Extension", "61 DirectoryCode.CFTimeDelay=CF Time Delay",
          "66 DirectoryCode.ShowDisplayName=Show Display Name",
          "67 DirectoryCode.ShowDirectoryCode=Show Directory Code"));
}

TEST_F(ReportFieldsTest, TheLastTwoAreNotDisplayed) {
  const Database store = OpenMemoryDatabase();
  EXPECT_THAT(Texts(store,
                    "SELECT RID || ' at ' || DisplaySeq FROM TenantSelectionFields WHERE "
                    "Display = 0 ORDER BY DisplaySeq"),
              ElementsAre("66 at 16", "67 at 17"));
  EXPECT_THAT(Texts(store,
                    "SELECT RID FROM TenantSelectionFields WHERE Display NOT IN (0, 1) OR "
                    "GridType <> 0 OR DisplayWidth NOT BETWEEN 1000 AND 4000"),
              IsEmpty());
}

TEST_F(ReportFieldsTest, AnOlderStoreGetsThem) {
  MakeOldStore("INSERT INTO Units (UnitKey, UnitName) VALUES (3, 'Court')");
  Database store = OpenDatabase(File(), OpenMode::kReadWrite);
  EXPECT_EQ(Texts(store, kFields), Texts(OpenMemoryDatabase(), kFields));
  EXPECT_EQ(store.Number("PRAGMA user_version"), SchemaVersion());
  EXPECT_EQ(store.Number("SELECT UnitKey FROM Units"), 3);
}

TEST_F(ReportFieldsTest, RowsThatAreThereAlreadyStay) {
  MakeOldStore(
      "INSERT INTO TenantSelectionFields (RID, FieldName, FieldNameDisplay, DisplaySeq) VALUES "
      "(1, 'Tenants.LastName', 'Last Name', 1), (52, 'DirectoryCode.PhoneNumber', 'Telephone', 40),"
      "(54, 'Tenants.GroupID', 'Group', 2), (90, 'DirectoryCode.DISPLAYNAME', 'Shown as', 41),"
      "(91, Null, 'Nothing', 42)");
  const Database store = OpenDatabase(File(), OpenMode::kReadWrite);
  EXPECT_THAT(Texts(store,
                    "SELECT RID || ' ' || FieldNameDisplay FROM TenantSelectionFields WHERE RID IN "
                    "(1, 52, 54, 65, 90, 91) ORDER BY RID"),
              ElementsAre("1 Last Name", "52 Telephone", "54 Group", "90 Shown as", "91 Nothing"));
  EXPECT_THAT(Texts(store, "SELECT count(*) FROM TenantSelectionFields"), ElementsAre("19"));
}

TEST_F(ReportFieldsTest, WhatIsRemovedLaterStaysRemoved) {
  {
    Database store = OpenDatabase(File(), OpenMode::kCreate);
    store.Run("DELETE FROM TenantSelectionFields WHERE RID <> 51");
  }
  EXPECT_THAT(Texts(OpenDatabase(File(), OpenMode::kReadWrite), kFields),
              ElementsAre("51 DirectoryCode.DirectoryCode=Directory Code"));
}

}  // namespace
}  // namespace qorhost::sqlite
