#include "host/store/sqlite/schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "host/dialect/catalog.h"
#include "host/store/sqlite/table_text.h"
#include "host/store/store_error.h"
#include "host/store/write_buffer.h"

namespace qorhost::sqlite {
namespace {

struct StoredColumn {
  std::string type;
  bool primaryKey = false;
  bool generated = false;
  std::string defaultValue;
};

std::vector<std::pair<std::string, StoredColumn>> ColumnsOf(const Database& database,
                                                            std::string_view table) {
  Statement info(database,
                 "SELECT name, type, pk, hidden, coalesce(dflt_value, 'Null') "
                 "FROM pragma_table_xinfo(?1) ORDER BY cid");
  info.BindText(1, table);
  std::vector<std::pair<std::string, StoredColumn>> columns;
  constexpr int kVirtualGenerated = 2;
  while (info.Step()) {
    columns.emplace_back(
        std::string(info.Text(0)),
        StoredColumn{std::string(info.Text(1)), info.Number(2) != 0,
                     info.Number(3) == kVirtualGenerated, std::string(info.Text(4))});
  }
  return columns;
}

// "TEXT COLLATE "DESKTOP"" and "INTEGER PRIMARY KEY ..." without what follows the type.
std::string TypeWord(dialect::ColumnType type) {
  const std::string_view declared = DeclaredType(type);
  return std::string(declared.substr(0, declared.find(' ')));
}

// Rows that are held have been told as added: no rule may refuse them when they are written.
TEST(SchemaTest, TablesWhoseRowsAreHeldHaveNoRulesButTypesAndTheIdentity) {
  const Database store = OpenMemoryDatabase();
  const auto count = [&store](std::string_view sql, std::string_view table) {
    Statement read(store, sql);
    read.BindText(1, table);
    EXPECT_TRUE(read.Step());
    return read.Number(0);
  };
  const std::string isNoText = R"(typeof\(\w+\) <> 'text')";
  const std::regex known(R"(CHECK\s*\(\s*(RID BETWEEN 1 AND 2147483647|)" + isNoText +
                         R"((\s+AND\s+)" + isNoText + R"()*)\s*\))");
  int held = 0;
  for (const dialect::Table& table : dialect::Tables()) {
    if (!IsHeldTable(table.name)) {
      continue;
    }
    SCOPED_TRACE(table.name);
    ++held;
    EXPECT_EQ(count("SELECT count(*) FROM pragma_index_list(?1) WHERE \"unique\"", table.name), 0);
    EXPECT_EQ(count("SELECT count(*) FROM pragma_foreign_key_list(?1)", table.name), 0);
    EXPECT_EQ(count("SELECT count(*) FROM pragma_table_info(?1) WHERE \"notnull\"", table.name), 0);
    EXPECT_EQ(count("SELECT count(*) FROM sqlite_schema WHERE type='trigger' AND tbl_name=?1",
                    table.name),
              0);
    Statement read(store, "SELECT sql FROM sqlite_schema WHERE type='table' AND name=?1");
    read.BindText(1, table.name);
    ASSERT_TRUE(read.Step());
    const std::string rest = std::regex_replace(std::string(read.Text(0)), known, "");
    EXPECT_EQ(rest.find("CHECK ("), std::string::npos) << rest;
  }
  EXPECT_EQ(held, 5);
}

TEST(SchemaTest, HasExactlyTheTablesOfTheCatalogAndThoseOfTheAudit) {
  const Database store = OpenMemoryDatabase();
  Statement list(store,
                 "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite%' "
                 "ORDER BY name COLLATE NOCASE");
  std::vector<std::string> stored;
  while (list.Step()) {
    stored.emplace_back(list.Text(0));
  }
  // No statement of the dialect reaches these.
  std::vector<std::string> wanted{"AuditEntries", "AuditRows", "StoreSeal", "UnitVersions"};
  for (const std::string& name : wanted) {
    EXPECT_EQ(dialect::FindTable(name), nullptr) << name;
  }
  for (const dialect::Table& table : dialect::Tables()) {
    wanted.emplace_back(table.name);
  }
  EXPECT_EQ(stored.size(), wanted.size());
  for (const std::string& name : wanted) {
    EXPECT_NE(std::find(stored.begin(), stored.end(), name), stored.end()) << name;
  }
}

TEST(SchemaTest, GivesEveryColumnTheTypeThatTheCatalogSays) {
  const Database store = OpenMemoryDatabase();
  for (const dialect::Table& table : dialect::Tables()) {
    const auto stored = ColumnsOf(store, table.name);
    ASSERT_EQ(stored.size(), table.columns.size()) << table.name;
    for (std::size_t at = 0; at < stored.size(); ++at) {
      const dialect::Column& column = table.columns[at];
      const auto& [name, found] = stored[at];
      const std::string where = std::string(table.name) + "." + name;
      EXPECT_EQ(name, column.name);
      EXPECT_EQ(found.type, TypeWord(column.type)) << where;
      EXPECT_EQ(found.primaryKey, column.type == dialect::ColumnType::kIdentity) << where;
      EXPECT_EQ(found.generated, column.generated) << where;
    }
  }
}

TEST(SchemaTest, ComparesEveryTextColumnWithoutRegardToCase) {
  const Database store = OpenMemoryDatabase();
  for (const dialect::Table& table : dialect::Tables()) {
    Statement schema(store, "SELECT sql FROM sqlite_schema WHERE type='table' AND name=?1");
    schema.BindText(1, table.name);
    ASSERT_TRUE(schema.Step());
    const std::string sql(schema.Text(0));
    for (const dialect::Column& column : table.columns) {
      if (column.type == dialect::ColumnType::kText) {
        EXPECT_NE(sql.find(std::string(column.name) + " TEXT COLLATE DESKTOP"), std::string::npos)
            << table.name << "." << column.name;
      }
    }
  }
}

TEST(SchemaTest, DefaultsResidentAndModifiedToZeroAndCredentialSlotsToNull) {
  const Database store = OpenMemoryDatabase();
  std::map<std::string, std::string> defaults;
  for (const auto& [name, column] : ColumnsOf(store, "Tenants")) {
    defaults[name] = column.defaultValue;
  }
  EXPECT_EQ(defaults["Resident"], "0");
  EXPECT_EQ(defaults["MODIFIED"], "0");
  EXPECT_EQ(defaults["CREDENTIALID1"], "Null");
  EXPECT_EQ(defaults["CREDENTIALID2"], "Null");
}

TEST(SchemaTest, TenantIdIsTheRowsIdentity) {
  Database store = OpenMemoryDatabase();
  store.Run(
      "INSERT INTO Tenants (RID, LastName) VALUES (41, 'A'); "
      "INSERT INTO Tenants (LastName) VALUES ('B')");
  EXPECT_EQ(store.Number("SELECT TenantID FROM Tenants WHERE LastName='A'"), 41);
  EXPECT_EQ(store.Number("SELECT TenantID FROM Tenants WHERE LastName='B'"), 42);
}

TEST(SchemaTest, NeverGivesAnIdentityOutTwice) {
  Database store = OpenMemoryDatabase();
  for (const std::string table : {"CredentialBank", "Tenants", "DirectoryCode"}) {
    store.Run("INSERT INTO " + table + " (UNITKEY) VALUES (1), (1)");
    store.Run("DELETE FROM " + table + " WHERE RID=2");
    store.Run("INSERT INTO " + table + " (UNITKEY) VALUES (1)");
    EXPECT_EQ(store.Number("SELECT max(RID) FROM " + table), 3) << table;
  }
}

TEST(SchemaTest, IdentitiesFitThirtyTwoBits) {
  Database store = OpenMemoryDatabase();
  for (const std::string table : {"CredentialBank", "Tenants", "DirectoryCode"}) {
    store.Run("INSERT INTO " + table + " (RID) VALUES (2147483647)");
    EXPECT_THROW(store.Run("INSERT INTO " + table + " (UNITKEY) VALUES (1)"), StoreError) << table;
    EXPECT_THROW(store.Run("INSERT INTO " + table + " (RID) VALUES (0)"), StoreError) << table;
    EXPECT_EQ(store.Number("SELECT count(*) FROM " + table), 1);
  }
}

TEST(SchemaTest, ANumberColumnTakesNoText) {
  Database store = OpenMemoryDatabase();
  store.Run("INSERT INTO Tenants (LastName) VALUES ('Abbott')");
  EXPECT_THROW(store.Run("UPDATE Tenants SET GROUPID = LastName"), StoreError);
  EXPECT_THROW(store.Run("INSERT INTO CredentialBank (PINNo) VALUES ('seven')"), StoreError);
  store.Run("INSERT INTO CredentialBank (PINNo) VALUES ('7')");
  EXPECT_EQ(store.Number("SELECT count(*) FROM CredentialBank WHERE typeof(PINNo)='integer'"), 1);
}

TEST(SchemaTest, AUnitsSettingsNeedTheUnit) {
  Database store = OpenMemoryDatabase();
  EXPECT_THROW(store.Run("INSERT INTO UnitSettings (UnitKey) VALUES (9)"), StoreError);
  store.Run(
      "INSERT INTO Units (UnitKey) VALUES (9); INSERT INTO UnitSettings (UnitKey) VALUES (9)");
  EXPECT_THROW(store.Run("DELETE FROM Units"), StoreError);
}

TEST(SchemaTest, TenantsModifiedTakesATimeStampToo) {
  Database store = OpenMemoryDatabase();
  store.Run("INSERT INTO Tenants (MODIFIED) VALUES ('2026-01-31 14:05:09')");
  EXPECT_EQ(store.Number("SELECT count(*) FROM Tenants WHERE MODIFIED='2026-01-31 14:05:09'"), 1);
}

}  // namespace
}  // namespace qorhost::sqlite
