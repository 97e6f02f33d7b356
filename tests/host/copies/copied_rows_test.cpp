// The tables of a copy, and links on their way.
#include "host/desks/copied_rows.h"

#include <gmock/gmock.h>

#include <set>

#include "host/store/engines/opening.h"
#include "host/store/store_error.h"
#include "tests/host/copies/copy_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

TEST(CopiedTables, AreAllTablesOfAStoreEachBehindThoseThatItHasLinksTo) {
  std::set<std::string_view> before;
  for (const CopiedTable& table : CopiedTables()) {
    ASSERT_NE(dialect::FindTable(table.name), nullptr) << table.name;
    EXPECT_EQ(LayoutOf(table).name, table.name);
    EXPECT_EQ(CopiedColumns(table).front(), "RID");
    if (!table.unit.empty()) {
      EXPECT_NE(dialect::FindColumn(LayoutOf(table), table.unit), nullptr) << table.name;
    }
    for (const LinkColumn& link : table.links) {
      if (link.column.empty()) continue;
      EXPECT_NE(dialect::FindColumn(LayoutOf(table), link.column), nullptr) << link.column;
      EXPECT_TRUE(link.table.empty() || before.contains(link.table)) << link.column;
    }
    before.insert(table.name);
  }
  EXPECT_EQ(before.size(), dialect::Tables().size());
}

class CopiedRows : public testing::Test {
 protected:
  static const CopiedTable& Table(std::string_view name) {
    for (const CopiedTable& table : CopiedTables()) {
      if (table.name == name) return table;
    }
    throw std::out_of_range(std::string(name));
  }

  std::unique_ptr<Store> store_ = OpenMemoryStore();
  std::unique_ptr<SqlSession> session_ = store_->StartSession([] {
    return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
  });
};

TEST_F(CopiedRows, ComeInPagesWithEveryRowOnce) {
  std::vector<RowCells> rows;
  for (int tenant = 1; tenant <= 25'000; ++tenant) rows.push_back({1 + tenant % 3, tenant});
  const std::vector<std::string_view> columns{"UnitKey", "TenantID"};
  session_->AddRows("TenantsBackup", columns, rows);
  const auto count = [&](const UnitKeys& units) {
    RowPages pages(*session_, Table("TenantsBackup"), units);
    std::set<std::int32_t> seen;
    for (auto page = pages.Next(); !page.empty(); page = pages.Next()) {
      for (const RowCells& row : page) seen.insert(qorcred::ToLong(row[0]));
    }
    EXPECT_EQ(static_cast<std::int64_t>(seen.size()),
              CountRows(*session_, Table("TenantsBackup"), units));
    return seen.size();
  };
  EXPECT_EQ(count({}), 25'000U);
  EXPECT_EQ(count({2}), 8334U);
  EXPECT_EQ(count({1, 3}), 16'666U);
  EXPECT_EQ(count({9}), 0U);
  EXPECT_EQ(count({8, 9}), 0U);
}

TEST_F(CopiedRows, LeadToWhereTheRowsAreOrNowhere) {
  IdentityMap map;
  map.Add("CredentialBank", 5, 105);
  map.Add("DirectoryCode", 5, 205);
  map.Add("Tenants", 5, 305);
  const auto linked = [&](std::string_view table, std::string_view columns,
                          const std::string& values, std::vector<LostLink>& lost) {
    (void)session_->Change("DELETE FROM " + std::string(table), {});
    (void)session_->Change("INSERT INTO " + std::string(table) + " (" + std::string(columns) +
                               ") VALUES (" + values + ")",
                           {});
    RowPages pages(*session_, Table(table), {});
    const RowCells row = Linked(Table(table), pages.Next().front(), map, lost);
    std::string text;
    for (const qorcred::Value& cell : row) text += qorcred::TextOrEmpty(cell) + "|";
    return text;
  };
  std::vector<LostLink> lost;
  EXPECT_THAT(linked("Tenants", "UnitKey, CREDENTIALID1, CREDENTIALID2, DIRECTORYCODE, GROUPID",
                     "1, 5, 6, 5, 0", lost),
              HasSubstr("|105||205|"));
  ASSERT_EQ(lost.size(), 1U);
  EXPECT_EQ(lost[0].column, "CREDENTIALID2");
  EXPECT_EQ(lost[0].target, 6);
  EXPECT_THAT(linked("ProgramSteps", "UnitKey, Kind, SubjectRID", "1, 'program tenant', 5", lost),
              HasSubstr("|program tenant|305|"));
  EXPECT_THAT(
      linked("ProgramSteps", "UnitKey, Kind, SubjectRID", "1, 'change directory code', 5", lost),
      HasSubstr("|change directory code|205|"));
  EXPECT_EQ(lost.size(), 1U);
  EXPECT_THAT(linked("ProgramSteps", "UnitKey, Kind, SubjectRID, Code",
                     "1, 'delete directory code', 77, '101'", lost),
              HasSubstr("|delete directory code|0|101|"));
  EXPECT_EQ(lost.size(), 2U);
}

TEST_F(CopiedRows, AreToldWhereTheyDiffer) {
  const std::unique_ptr<Store> other = OpenMemoryStore();
  const std::unique_ptr<SqlSession> there = other->StartSession([] {
    return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
  });
  const auto difference = [&] {
    const CopiedTable& table = Table("Units");
    try {
      RequireSameRows({*session_, table, {}}, {*there, table, {}}, table,
                      [](RowCells row) { return row; });
    } catch (const StoreError& failure) {
      return std::string(failure.what());
    }
    return std::string();
  };
  EXPECT_EQ(difference(), "");
  (void)session_->Change("INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court')", {});
  EXPECT_THAT(difference(), HasSubstr("Units, RID 1 is not there"));
  (void)there->Change("INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'court')", {});
  EXPECT_THAT(difference(), HasSubstr("Units, RID 1, UnitName: 'court' instead of 'Court'"));
  (void)there->Change("UPDATE Units SET UnitName='Court'", {});
  EXPECT_EQ(difference(), "");
  (void)there->Change("INSERT INTO Units (UnitKey) VALUES (2)", {});
  EXPECT_THAT(difference(), HasSubstr("Units, RID 2 is one too many"));
}

}  // namespace
}  // namespace qorhost::test
