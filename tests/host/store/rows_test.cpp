#include "host/store/rows.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;

class RowsTest : public StoreFixture {};

TEST_F(RowsTest, AResultIsGoneThroughInItsOrder) {
  Run("INSERT INTO DOORS (UNITKEY, DOORID, DOORNAME) VALUES (1, 2, 'Back'), (1, 1, 'Main')");
  const QueryResult result =
      connection_->session().Select("SELECT DOORID, DOORNAME FROM DOORS ORDER BY DOORID");
  std::vector<Value> names;
  std::vector<std::int32_t> numbers;
  for (const ResultRow row : result.rows()) {
    names.push_back(row[1]);
    numbers.push_back(row.number());
  }
  EXPECT_EQ(names, (std::vector<Value>{Value("Main"), Value("Back")}));
  EXPECT_EQ(numbers, (std::vector<std::int32_t>{0, 1}));
}

TEST_F(RowsTest, AResultWithoutRowsHasNoneAlthoughItsTableHasACell) {
  const QueryResult result = connection_->session().Select("SELECT DOORID FROM DOORS");
  EXPECT_TRUE(result.rows().begin() == result.rows().end());
}

TEST(RowNumbersTest, FollowTheTablesOwnBounds) {
  const auto table = std::make_shared<qorcred::ResultTable>();
  table->ReDim(3, 5, 0, 0);
  std::vector<std::int32_t> numbers;
  for (const std::int32_t row : RowNumbersOf(qorcred::TableView(table))) numbers.push_back(row);
  EXPECT_EQ(numbers, (std::vector<std::int32_t>{3, 4, 5}));
}

TEST(RowNumbersTest, ATableWithoutRowsHasNone) {
  const auto table = std::make_shared<qorcred::ResultTable>();
  table->ReDim(0, -1, 0, 0);
  for (const std::int32_t row : RowNumbersOf(qorcred::TableView(table))) ADD_FAILURE() << row;
}

}  // namespace
}  // namespace qorhost::test
