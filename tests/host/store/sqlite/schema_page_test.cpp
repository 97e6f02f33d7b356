// docs/schema.md against the store that `init` makes: tables, columns, types and indexes.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/sqlite/database.h"
#include "host/store/sqlite/schema.h"

namespace qorhost::sqlite {
namespace {

using Columns = std::map<std::string, std::string>;  ///< types by names
using Tables = std::map<std::string, Columns>;

std::string SchemaPage() {
  std::ifstream file(QORCRED_DOCS_DIR "/schema.md", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The names between backticks. "`A1` to `A4`" stands for four.
std::vector<std::string> NamesIn(const std::string& text) {
  static const std::regex quoted("`([^`]+)`");
  std::vector<std::string> names;
  for (std::sregex_iterator one(text.begin(), text.end(), quoted), end; one != end; ++one) {
    names.push_back((*one)[1]);
  }
  if (names.size() == 2 && text.find("` to `") != std::string::npos) {
    std::string stem = names[0];
    const char last = names[1].back();
    names.clear();
    for (char number = stem.back(); number <= last; ++number) {
      stem.back() = number;
      names.push_back(stem);
    }
  }
  return names;
}

std::vector<std::string> CellsOf(const std::string& row) {
  std::vector<std::string> cells;
  std::istringstream parts(row.substr(2));
  for (std::string cell; std::getline(parts, cell, '|');) {
    const std::size_t first = cell.find_first_not_of(' ');
    const std::size_t last = cell.find_last_not_of(' ');
    cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
  }
  return cells;
}

/// "`A` Long, `B` text"
void TakeTyped(const std::string& text, Columns& columns) {
  static const std::regex typed("`([^`]+)` (\\w+)");
  for (std::sregex_iterator one(text.begin(), text.end(), typed), end; one != end; ++one) {
    columns[(*one)[1]] = (*one)[2];
  }
}

/// What the page tells: of the tables that controllers use each in a table of its own, of the
/// others in one row each.
struct Told {
  Tables tables;
  Tables ofTheStore;
  std::map<std::string, std::string> indexes;
};

Told ToldByThePage() {
  Told told;
  std::istringstream page(SchemaPage());
  std::vector<std::string> lines;
  for (std::string line; std::getline(page, line);) lines.push_back(line);
  std::string table;
  std::string heading;
  for (std::size_t at = 0; at < lines.size(); ++at) {
    const std::string& line = lines[at];
    if (line.starts_with("#")) table = line.starts_with("### `") ? NamesIn(line).front() : "";
    const bool isHeading = at + 1 < lines.size() && lines[at + 1].starts_with("|---");
    if (isHeading) heading = line;
    if (isHeading || !line.starts_with("| `")) continue;
    const std::vector<std::string> cells = CellsOf(line);
    if (!table.empty() && heading.starts_with("| Column | Type |")) {
      for (const std::string& name : NamesIn(cells[0])) told.tables[table][name] = cells[1];
    } else if (heading.starts_with("| Table | Columns |")) {
      TakeTyped(cells[1], told.ofTheStore[NamesIn(cells[0]).front()]);
    } else if (heading.starts_with("| Index | Of |")) {
      told.indexes[NamesIn(cells[0]).front()] = cells[1] + ": " + cells[2];
    }
  }
  return told;
}

/// The columns that the page tells of a table in a sentence of its own.
std::vector<std::string> FurtherSettings() {
  const std::string page = SchemaPage();
  const std::size_t start = page.find("`UnitSettings` also has ");
  if (start == std::string::npos) return {};
  std::vector<std::string> names =
      NamesIn(page.substr(start, page.find(", all Long", start) - start));
  names.erase(names.begin());
  return names;
}

/// The page's word for a declared type.
std::string WordFor(const std::string& declared) {
  static const std::map<std::string, std::string> words{
      {"LONG", "Long"},     {"INTEGER", "Long"},  {"TEXT", "text"}, {"BOOLEAN", "Boolean"},
      {"DATETIME", "Date"}, {"DOUBLE", "Double"}, {"BLOB", "bytes"}};
  const auto found = words.find(declared);
  return found == words.end() ? "? " + declared : found->second;
}

Tables StoredTables() {
  const Database store = OpenMemoryDatabase();
  Statement list(store,
                 "SELECT t.name, c.name, c.type FROM sqlite_schema t, pragma_table_xinfo(t.name) c "
                 "WHERE t.type='table' AND t.name NOT LIKE 'sqlite%'");
  Tables tables;
  while (list.Step()) {
    tables[std::string(list.Text(0))][std::string(list.Text(1))] =
        WordFor(std::string(list.Text(2)));
  }
  return tables;
}

/// "`Table`: `A`, `B`", and whether it leaves out rows.
std::map<std::string, std::string> StoredIndexes() {
  const Database store = OpenMemoryDatabase();
  Statement list(store,
                 "SELECT i.name, t.name, c.name, i.partial FROM sqlite_schema t, "
                 "pragma_index_list(t.name) i, pragma_index_info(i.name) c "
                 "WHERE t.type='table' AND i.origin='c' ORDER BY i.name, c.seqno");
  std::map<std::string, std::string> indexes;
  std::set<std::string> partial;
  while (list.Step()) {
    const std::string name(list.Text(0));
    std::string& text = indexes[name];
    text += (text.empty() ? "`" + std::string(list.Text(1)) + "`: `" : ", `") +
            std::string(list.Text(2)) + "`";
    if (list.Number(3) != 0) partial.insert(name);
  }
  for (const std::string& name : partial) {
    std::string& text = indexes[name];
    text += ", where " + text.substr(text.rfind(' ') + 1) + " is not Null";
  }
  return indexes;
}

TEST(SchemaPage, HasTheTablesAndColumnsOfTheStoreWithTheirTypes) {
  const Told told = ToldByThePage();
  Tables all = told.tables;
  // Every table that controllers use has an identity, also where they do not name it.
  for (auto& [table, columns] : all) columns.emplace("RID", "Long");
  for (const std::string& name : FurtherSettings()) all["UnitSettings"][name] = "Long";
  for (const auto& [table, columns] : told.ofTheStore) {
    EXPECT_TRUE(all.emplace(table, columns).second) << table << " is told twice";
  }

  const Tables stored = StoredTables();
  EXPECT_GE(stored.size(), 17U);
  for (const auto& [table, columns] : stored) {
    EXPECT_EQ(all[table], columns) << table;
  }
  for (const auto& [table, columns] : all) {
    EXPECT_EQ(stored.count(table), 1U) << table << " is in no store";
  }
}

TEST(SchemaPage, HasTheIndexesOfTheStore) {
  EXPECT_EQ(ToldByThePage().indexes, StoredIndexes());
}

TEST(SchemaPage, NamesTheVersionOfTheSchema) {
  EXPECT_THAT(SchemaPage(), testing::HasSubstr("the form is version " +
                                               std::to_string(SchemaVersion()) + " of its schema"));
}

}  // namespace
}  // namespace qorhost::sqlite
