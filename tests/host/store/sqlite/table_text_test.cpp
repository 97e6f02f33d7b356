#include "host/store/sqlite/table_text.h"

#include <gtest/gtest.h>

namespace qorhost::sqlite {
namespace {

TEST(TableTextTest, PrintsTheTableOfUnits) {
  EXPECT_EQ(CreateTableText(*dialect::FindTable("Units")),
            "CREATE TABLE \"Units\" (\"RID\" INTEGER PRIMARY KEY AUTOINCREMENT, \"UnitKey\" LONG, "
            "\"UnitName\" TEXT COLLATE \"DESKTOP\")");
}

}  // namespace
}  // namespace qorhost::sqlite
