#include "host/store/sqlite/result_reader.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/convert.h"
#include "host/store/store_error.h"
#include "tests/host/store/sqlite/sqlite_fixture.h"

namespace qorhost::test {

using namespace sqlite;

namespace {

using qorcred::Date;
using qorcred::Null;
using qorcred::Value;

class ResultReaderTest : public SqliteFixture {
 protected:
  [[nodiscard]] Value Cell(std::string_view sql) { return connection_->session().Scalar(sql); }
};

TEST_F(ResultReaderTest, WithoutRowsTheTableIsOneEmptyText) {
  const QueryResult result = connection_->session().Select("SELECT RID, LastName FROM Tenants");
  EXPECT_EQ(result.rowCount, 0U);
  EXPECT_EQ(result.table->UpperBound(1), 0);
  EXPECT_EQ(result.table->UpperBound(2), 0);
  EXPECT_EQ(result.table->At(0, 0), Value(""));
}

TEST_F(ResultReaderTest, RowsAndColumnsCountFromZeroInTheirOrder) {
  Run("INSERT INTO DOORS (UNITKEY, DOORID, DOORNAME) VALUES (1, 2, 'Back'), (1, 1, 'Main')");
  const QueryResult result =
      connection_->session().Select("SELECT DOORNAME, DOORID FROM DOORS ORDER BY DOORID");
  EXPECT_EQ(result.rowCount, 2U);
  EXPECT_EQ(result.columns, (std::vector<std::string>{"DOORNAME", "DOORID"}));
  EXPECT_EQ(result.table->UpperBound(1), 1);
  EXPECT_EQ(result.table->UpperBound(2), 1);
  EXPECT_EQ(result.table->At(0, 0), Value("Main"));
  EXPECT_EQ(result.table->At(1, 1), Value(2));
}

TEST_F(ResultReaderTest, CellsHaveTheTypeOfTheirColumn) {
  Run("INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, ACTIVE, STARTDATE, DISPLAYNAME, "
      "SHOWDISPLAYNAME) VALUES (1, 123456789012345, -1, '2026-01-31 14:05:09', 'Ä', 0)");
  EXPECT_EQ(Cell("SELECT UNITKEY FROM DirectoryCode"), Value(1));
  EXPECT_EQ(Cell("SELECT DIRECTORYCODE FROM DirectoryCode"), Value(123456789012345.0));
  EXPECT_EQ(Cell("SELECT ACTIVE FROM DirectoryCode"), Value(true));
  EXPECT_EQ(Cell("SELECT SHOWDISPLAYNAME FROM DirectoryCode"), Value(false));
  EXPECT_EQ(Cell("SELECT STARTDATE FROM DirectoryCode"), Value(now_));
  EXPECT_EQ(Cell("SELECT DISPLAYNAME FROM DirectoryCode"), Value("Ä"));
  EXPECT_EQ(Cell("SELECT ENDDATE FROM DirectoryCode"), Value(Null{}));
  EXPECT_EQ(Cell("SELECT SHOWDIRECTORYCODE FROM DirectoryCode"), Value(Null{}));
}

TEST_F(ResultReaderTest, AColumnKeepsItsTypeUnderAnAliasAndInAUnion) {
  Run("INSERT INTO DirectoryCode (UNITKEY, ACTIVE, STARTDATE) VALUES (1, -1, '2026-01-31 "
      "00:00:00')");
  EXPECT_EQ(Cell("SELECT d.ACTIVE FROM DirectoryCode AS d"), Value(true));
  const Value date = Cell(
      "SELECT STARTDATE FROM DirectoryCode UNION SELECT ENDDATE FROM "
      "DirectoryCode WHERE UNITKEY=2");
  EXPECT_EQ(qorcred::ToText(date), "1/31/2026");
}

TEST_F(ResultReaderTest, NumbersBeyondALongAreDoubles) {
  Run("INSERT INTO CredentialBank (PINNo) VALUES (2147483647), (2147483648), (-2147483649)");
  const QueryResult result =
      connection_->session().Select("SELECT PINNo FROM CredentialBank ORDER BY RID");
  EXPECT_EQ(result.table->At(0, 0), Value(2147483647));
  EXPECT_EQ(result.table->At(1, 0), Value(2147483648.0));
  EXPECT_EQ(result.table->At(2, 0), Value(-2147483649.0));
}

TEST_F(ResultReaderTest, ADateColumnGivesBackWhatItHolds) {
  struct Case {
    const char* stored;
    Value wanted;
  };
  for (const Case& one :
       {Case{"'1/31/2026 2:05:09 PM'", Value(now_)}, Case{"'no date'", Value("no date")},
        Case{"'2026-02-30 00:00:00'", Value("2026-02-30 00:00:00")},
        Case{"46053", Value(Date{46053})}, Case{"46053.5", Value(Date{46053.5})},
        Case{"1e300", Value(1e300)}, Case{"9000000000000000000", Value(9e18)}}) {
    Run("DELETE FROM Tenants; INSERT INTO Tenants (ACTIVESTARTTIME) VALUES (" +
        std::string(one.stored) + ")");
    EXPECT_EQ(Cell("SELECT ACTIVESTARTTIME FROM Tenants"), one.wanted) << one.stored;
  }
}

TEST_F(ResultReaderTest, TimeStampsInTheModifiedColumnStayTexts) {
  Run("INSERT INTO Tenants (MODIFIED) VALUES ('2026-01-31 14:05:09')");
  EXPECT_EQ(Cell("SELECT MODIFIED FROM Tenants"), Value("2026-01-31 14:05:09"));
}

TEST_F(ResultReaderTest, TextsWithNulCharactersAreNotCut) {
  Run("INSERT INTO Tenants (LastName) VALUES ('A' || char(0) || 'B')");
  EXPECT_EQ(Cell("SELECT LastName FROM Tenants"), Value(std::string("A\0B", 3)));
}

TEST_F(ResultReaderTest, AResultIsBoundedInRowsAndBytes) {
  RequireBounded(kMostRows, kMostBytes);
  EXPECT_THROW(RequireBounded(kMostRows + 1, 0), StoreError);
  try {
    RequireBounded(1, kMostBytes + 1);
    ADD_FAILURE() << "nothing was refused";
  } catch (const StoreError& error) {
    EXPECT_NE(std::string(error.what()).find("more than 256 MiB: narrow it"), std::string::npos)
        << error.what();
  }
}

TEST_F(ResultReaderTest, ALongResultIsReadWhole) {
  constexpr int kRows = 20'000;
  Run("INSERT INTO CredentialBank (UnitKey, PINNo) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
      "SELECT i + 1 FROM n WHERE i < 20000) SELECT 1, i FROM n");
  const QueryResult result =
      connection_->session().Select("SELECT PINNo FROM CredentialBank ORDER BY PINNo");
  ASSERT_EQ(result.rowCount, std::size_t{kRows});
  EXPECT_EQ(result.table->UpperBound(1), kRows - 1);
  EXPECT_EQ(result.table->At(kRows - 1, 0), Value(kRows));
}

}  // namespace
}  // namespace qorhost::test
