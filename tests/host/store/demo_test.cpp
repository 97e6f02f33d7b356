#include "host/store/demo.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/store/sql_session.h"
#include "host/store/store_error.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {
namespace {

qorcred::Date SomeDay() {
  return qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
}

class DemoTest : public testing::Test {
 protected:
  void SetUp() override { CreateDemoData(*store_->StartSession(SomeDay)); }
  [[nodiscard]] std::int64_t Number(const std::string& sql) { return NumberOfRaw(*store_, sql); }

  std::unique_ptr<Store> store_ = FreshStore();
};

/// The rows of a table, all columns of each.
std::string Content(Store& store, std::string_view table) {
  const QueryResult result =
      store.StartSession(SomeDay)->Select("SELECT * FROM " + std::string(table) + " ORDER BY RID");
  std::string text;
  for (const ResultRow row : result.rows()) {
    for (std::size_t column = 0; column < result.columns.size(); ++column) {
      text.append(qorcred::TextOrEmpty(row[static_cast<std::int32_t>(column)])).append("|");
    }
  }
  return text;
}

TEST_F(DemoTest, HasThreeUnitsOfDifferentTypesAndCapacities) {
  EXPECT_EQ(Number("SELECT count(*) FROM Units"), 3);
  EXPECT_EQ(Number("SELECT count(DISTINCT T.TOTAL) FROM UnitSettings S JOIN UNITTYPES T "
                   "ON T.DESCRIPTION = S.UNITTYPE"),
            3);
}

TEST_F(DemoTest, LeavesRoomForTwoCodesInTheNearlyFullUnit) {
  EXPECT_EQ(Number("SELECT (SELECT count(*) FROM CredentialBank WHERE UnitKey=1) + "
                   "(SELECT count(*) FROM DirectoryCode WHERE UNITKEY=1)"),
            498);
}

TEST_F(DemoTest, GivesEveryUnitFourDoorsTheFixedSchedulesAndAGroupZero) {
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS"), 12);
  EXPECT_EQ(Number("SELECT count(*) FROM Schedules WHERE ScheduleID IN (0, 1)"), 6);
  EXPECT_EQ(Number("SELECT count(*) FROM Schedules WHERE ScheduleID > 1"), 12);
  EXPECT_EQ(Number("SELECT count(DISTINCT UnitKey) FROM TenantGroup WHERE IsGroupZero=-1"), 3);
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS WHERE UNITKEY=2 AND length(DOORNAME) > 14"), 4);
}

TEST_F(DemoTest, HasTwoHundredTenantsWithDifferentNames) {
  EXPECT_EQ(Number("SELECT count(*) FROM Tenants"), 200);
  EXPECT_EQ(Number("SELECT count(DISTINCT LastName || '/' || FirstName) FROM Tenants"), 200);
  EXPECT_GT(Number("SELECT count(*) FROM Tenants WHERE MiddleInitial IS NULL"), 10);
  EXPECT_GT(Number("SELECT count(*) FROM Tenants WHERE Resident<>0"), 5);
}

TEST_F(DemoTest, AssignsOnlyCredentialsThatExistInTheSameUnit) {
  EXPECT_EQ(Number("SELECT count(*) FROM Tenants WHERE CREDENTIALID1 IS NULL"), 0);
  EXPECT_GT(Number("SELECT count(*) FROM Tenants WHERE CREDENTIALID2 IS NOT NULL"), 30);
  EXPECT_EQ(Number("SELECT count(*) FROM Tenants T WHERE NOT EXISTS (SELECT 1 FROM CredentialBank "
                   "C WHERE C.RID = T.CREDENTIALID1 AND C.UnitKey = T.UnitKey)"),
            0);
  EXPECT_EQ(Number("SELECT count(*) FROM Tenants T WHERE CREDENTIALID2 IS NOT NULL AND NOT EXISTS "
                   "(SELECT 1 FROM CredentialBank C WHERE C.RID = T.CREDENTIALID2 AND "
                   "C.UnitKey = T.UnitKey AND C.CredentialType = 2)"),
            0);
}

TEST_F(DemoTest, HasCredentialsOfAllTypesWithinTheirBounds) {
  EXPECT_EQ(Number("SELECT count(DISTINCT UnitKey * 10 + CredentialType) FROM CredentialBank"), 9);
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank WHERE PINNo NOT BETWEEN 1 AND 65535 OR "
                   "FacilityCode NOT BETWEEN 0 AND 63 OR IDCode NOT BETWEEN 0 AND 26 OR "
                   "SequenceNumber NOT BETWEEN 0 AND 2 OR ButtonNumber NOT IN (1, 4)"),
            0);
}

TEST_F(DemoTest, IsTheSameAtEveryCall) {
  const std::unique_ptr<Store> other = FreshStore();
  CreateDemoData(*other->StartSession(SomeDay));
  for (const char* table : {"Units", "UnitSettings", "Tenants", "CredentialBank", "DirectoryCode",
                            "Schedules", "DOORS", "TenantGroup", "UnitCounters"}) {
    EXPECT_EQ(Content(*store_, table), Content(*other, table)) << table;
    EXPECT_NE(Content(*store_, table), "") << table;
  }
}

TEST_F(DemoTest, RefusesAStoreThatIsInUse) {
  const std::string before = Content(*store_, "Units");
  EXPECT_THROW(CreateDemoData(*store_->StartSession(SomeDay)), StoreError);
  EXPECT_EQ(Content(*store_, "Units"), before);
  EXPECT_FALSE(store_->StartSession(SomeDay)->inTransaction());
}

}  // namespace
}  // namespace qorhost::test
