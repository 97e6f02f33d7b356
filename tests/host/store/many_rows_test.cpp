// Many rows at once: the same as each on its own, whatever they hold.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "host/store/store_error.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Null;
using qorcred::Value;
using testing::ElementsAre;

class ManyRows : public StoreFixture {
 protected:
  [[nodiscard]] SqlSession& Session() { return connection_->session(); }
  std::vector<std::int32_t> Add(std::string_view table,
                                const std::vector<std::string_view>& columns,
                                const std::vector<RowCells>& rows) {
    return Session().AddRows(table, columns, rows);
  }
  /// Adds tenants, whose names have to come back as they are.
  std::vector<std::string> NamesBehind(const std::vector<Value>& names) {
    std::vector<RowCells> rows;
    for (const Value& name : names) rows.push_back({1, name});
    Add("Tenants", {"UnitKey", "LastName"}, rows);
    const QueryResult result = Session().Select("SELECT LastName FROM Tenants ORDER BY RID");
    std::vector<std::string> read;
    for (const ResultRow row : result.rows()) {
      read.push_back(row[0].Is(qorcred::ValueType::kNull) ? "Null" : qorcred::TextOrEmpty(row[0]));
    }
    return read;
  }
};

TEST_F(ManyRows, HaveNewIdentitiesInTheirOrder) {
  std::vector<RowCells> rows;
  for (int number = 5000; number > 0; --number) rows.push_back({1, 1, number});
  const std::vector<std::int32_t> added =
      Add("CredentialBank", {"UnitKey", "CredentialType", "PINNo"}, rows);
  ASSERT_EQ(added.size(), 5000U);
  EXPECT_TRUE(std::is_sorted(added.begin(), added.end()));
  EXPECT_EQ(Number("SELECT count(*) FROM CredentialBank"), 5000);
  const QueryResult stored = Session().Select("SELECT RID, PINNo FROM CredentialBank ORDER BY RID");
  std::size_t at = 0;
  for (const ResultRow row : stored.rows()) {
    ASSERT_EQ(row[0], Value(added[at]));
    ASSERT_EQ(row[1], rows[at][2]);
    ++at;
  }
}

TEST_F(ManyRows, ThatComeWithIdentitiesKeepThemAndTheNextOneIsBehindThem) {
  EXPECT_THAT(Add("TenantGroup", {"RID", "UnitKey", "IsGroupZero"}, {{40, 1, 0}, {7, 1, -1}}),
              ElementsAre(40, 7));
  EXPECT_THAT(Add("TenantGroup", {"UnitKey"}, {{1}}), ElementsAre(41));
  EXPECT_EQ(Session().Change("INSERT INTO TenantGroup (UnitKey) VALUES (1)", {}).newRow, 42);
}

TEST_F(ManyRows, KeepTextsLetterForLetter) {
  EXPECT_THAT(NamesBehind({"a,b", "{}", "\"quoted\"", "back\\slash", "NULL", "", Null{}, " blank ",
                           "O'Brien", "line\nend\ttab", "\xF0\x9F\x98\x80 Gro\xC3\x9F", "\\"}),
              ElementsAre("a,b", "{}", "\"quoted\"", "back\\slash", "NULL", "", "Null", " blank ",
                          "O'Brien", "line\nend\ttab", "\xF0\x9F\x98\x80 Gro\xC3\x9F", "\\"));
}

TEST_F(ManyRows, KeepNumbersDatesAndTimeStamps) {
  Add("DirectoryCode", {"UNITKEY", "DIRECTORYCODE", "ACTIVE", "STARTDATE", "MODIFIED"},
      {{1, 123456789012345.0, -1, "2026-01-31 14:05:09", 2}, {1, -1.0, 0, Null{}, Null{}}});
  const QueryResult codes = Session().Select(
      "SELECT DIRECTORYCODE, ACTIVE, STARTDATE, MODIFIED FROM DirectoryCode "
      "ORDER BY RID");
  EXPECT_EQ(codes.table->At(0, 0), Value(123456789012345.0));
  EXPECT_EQ(codes.table->At(0, 1), Value(true));
  EXPECT_EQ(codes.table->At(0, 2), Value(now_));
  EXPECT_EQ(codes.table->At(0, 3), Value(2));
  EXPECT_EQ(codes.table->At(1, 2), Value(Null{}));
  Add("Tenants", {"UnitKey", "MODIFIED"}, {{1, "2026-01-31 14:05:09"}, {1, 2}, {1, Null{}}});
  EXPECT_THAT(RowsOfRaw(connection_->store(), "SELECT MODIFIED FROM Tenants ORDER BY RID"),
              ElementsAre("2026-01-31 14:05:09", "2", "-"));
}

TEST_F(ManyRows, AreToldInTheHistoryAsEachOnItsOwn) {
  const std::vector<RowCells> rows{{1, "Doe"}, {1, "Roe"}, {1, "Poe"}};
  Session().work().Begin({{1}, "all", {}});
  Add("Tenants", {"UnitKey", "LastName"}, rows);
  EXPECT_TRUE(Session().work().Commit());
  Session().work().Begin({{1}, "each", {}});
  for (const RowCells& row : rows) {
    const std::vector<Field> fields{{"UnitKey", row[0]}, {"LastName", row[1]}};
    Session().AddRow("Tenants", fields);
  }
  EXPECT_TRUE(Session().work().Commit());
  const std::vector<RowChange> all = Session().audit().RowsOf(1);
  const std::vector<RowChange> each = Session().audit().RowsOf(2);
  ASSERT_EQ(all.size(), 1U);
  ASSERT_EQ(each.size(), 1U);
  EXPECT_EQ(all[0].lastRid - all[0].rid, 2);
  EXPECT_EQ(each[0].lastRid - each[0].rid, 2);
}

TEST_F(ManyRows, AreAddedAllOrNotAtAllInAUnitOfWork) {
  Session().work().Begin({{1}, "doors", {}});
  EXPECT_THROW(Add("DOORS", {"UNITKEY", "DOORID"}, {{1, 1}, {1, 2}, {99, 3}}), StoreError);
  EXPECT_THROW(Session().work().Commit(), StoreError);
  EXPECT_EQ(Number("SELECT count(*) FROM DOORS"), 0);
}

TEST_F(ManyRows, OfNoneIsNothing) {
  EXPECT_THAT(Add("DOORS", {"UNITKEY"}, {}), testing::IsEmpty());
  EXPECT_THROW(Add("Nowhere", {"UNITKEY"}, {{1}}), StoreError);
  EXPECT_THROW(Add("DOORS", {"Nothing"}, {{1}}), StoreError);
}

}  // namespace
}  // namespace qorhost::test
