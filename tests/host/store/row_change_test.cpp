#include "host/store/row_change.h"

#include <gtest/gtest.h>

#include "host/store/store_error.h"

namespace qorhost::test {
namespace {

using qorcred::Null;
using qorcred::Value;

void ExpectSame(const RowChange& one, const RowChange& other) {
  EXPECT_EQ(one.kind, other.kind);
  EXPECT_EQ(one.table, other.table);
  EXPECT_EQ(one.rid, other.rid);
  EXPECT_EQ(one.lastRid, other.lastRid);
  EXPECT_EQ(one.before, other.before);
  EXPECT_EQ(one.after, other.after);
}

TEST(RowChangeTest, TextsOfChangesAreReadBack) {
  const RowChange changes[] = {
      {RowChangeKind::kInserted,
       "DOORS",
       3,
       20'000,
       {},
       {{"RID", 3}, {"DOORNAME", Value("Tür\n\"1\"")}}},
      {RowChangeKind::kUpdated, "Tenants", 5, 5, {{"DOOR", Value(Null{})}}, {{"DOOR", 2}}},
      {RowChangeKind::kDeleted, "Tenants", 6, 6, {{"NAME", Value("")}, {"TOTAL", Value(1.5)}}, {}},
  };
  for (const RowChange& change : changes) {
    const std::string text = TextOfChange(change);
    EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    ExpectSame(ChangeFromText(text), change);
  }
}

TEST(RowChangeTest, WholeNumbersStayApartFromOthers) {
  const RowChange change{RowChangeKind::kDeleted, "T", 1, 1, {{"A", 1}, {"B", Value(1.0)}}, {}};
  const RowChange read = ChangeFromText(TextOfChange(change));
  EXPECT_TRUE(read.before[0].value.Is(qorcred::ValueType::kLong));
  EXPECT_TRUE(read.before[1].value.Is(qorcred::ValueType::kDouble));
}

TEST(RowChangeTest, BytesThatAreNoUtf8AreKept) {
  const std::string bytes("\xff\x00\xc3", 3);
  const RowChange change{RowChangeKind::kDeleted, "T", 1, 1, {{"A", Value(bytes)}}, {}};
  EXPECT_EQ(ChangeFromText(TextOfChange(change)).before[0].value, Value(bytes));
}

TEST(RowChangeTest, OtherTextsAreRefused) {
  for (const char* text : {"", "{}", "[1]", R"({"table":"T","deleted":[1]})",
                           R"({"table":"T","deleted":[1,1],"row":{"A":{"hex":"zz"}}})",
                           R"({"table":"T","deleted":["x",1],"row":{}})"}) {
    EXPECT_THROW((void)ChangeFromText(text), StoreError) << text;
  }
}

}  // namespace
}  // namespace qorhost::test
