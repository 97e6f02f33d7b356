#include <sqlite3.h>

#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"
#include "tests/host/store/engine.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {

namespace {

class Folder final : public StorePlace {
 public:
  [[nodiscard]] std::unique_ptr<Store> Open(OpenMode mode) const override {
    return OpenStore(folder_.File("building.db"), mode);
  }

 private:
  TemporaryFolder folder_;
};

std::string TextOfCell(const sqlite::Statement& statement, int column) {
  if (statement.IsNull(column)) {
    return "-";
  }
  std::string text(statement.Text(column));
  const bool isDouble = sqlite3_column_type(statement.handle(), column) == SQLITE_FLOAT;
  return isDouble && text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

}  // namespace

std::unique_ptr<Store> FreshStore() {
  return OpenMemoryStore();
}

std::unique_ptr<StorePlace> NewPlace() {
  return std::make_unique<Folder>();
}

std::string OriginStored(const std::string& signedWith) {
  return signedWith;
}

bool KeepsRowsOfNoUnit() {
  return true;
}

bool FollowsLinksToOtherUnits() {
  return true;
}

bool GivesIdentitiesWithoutGaps() {
  return true;
}

bool ReadsBytesThatAreNoText() {
  return true;
}

std::int64_t RowsEverChanged(Store& store) {
  return sqlite::DatabaseOf(store).Number("SELECT total_changes()");
}

void RunRaw(Store& store, const std::string& sql) {
  sqlite::DatabaseOf(store).Run(sql);
}

std::string TextOfRaw(Store& store, const std::string& sql) {
  sqlite::Statement statement(sqlite::DatabaseOf(store), sql);
  return statement.Step() ? std::string(statement.Text(0)) : "no row";
}

std::int64_t NumberOfRaw(Store& store, const std::string& sql) {
  return sqlite::DatabaseOf(store).Number(sql);
}

std::vector<std::string> RowsOfRaw(Store& store, const std::string& sql) {
  sqlite::Statement statement(sqlite::DatabaseOf(store), sql);
  std::vector<std::string> rows;
  while (statement.Step()) {
    std::string& row = rows.emplace_back();
    for (int column = 0; column < statement.columnCount(); ++column) {
      row += (column == 0 ? "" : ",") + TextOfCell(statement, column);
    }
  }
  return rows;
}

void RefuseRows(Store& store, const std::string& table, const std::string& condition) {
  RunRaw(store, "CREATE TRIGGER Refuse BEFORE INSERT ON " + table + " WHEN " + condition +
                    " BEGIN SELECT RAISE(ABORT, 'no'); END");
}

std::string DumpOf(Store& store) {
  std::string dump;
  for (const std::string& text : RowsOfRaw(store, "SELECT sql FROM sqlite_schema ORDER BY name")) {
    dump += text + ";\n";
  }
  for (const std::string& table :
       RowsOfRaw(store, "SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name")) {
    dump += table + ":\n";
    sqlite::Statement rows(sqlite::DatabaseOf(store),
                           "SELECT * FROM \"" + table + "\" ORDER BY rowid");
    while (rows.Step()) {
      for (int column = 0; column < rows.columnCount(); ++column) {
        const std::string_view text = rows.Text(column);
        dump += rows.IsNull(column) ? "-" : std::to_string(text.size()) + ":" + std::string(text);
        dump += ',';
      }
      dump += '\n';
    }
  }
  return dump;
}

}  // namespace qorhost::test
