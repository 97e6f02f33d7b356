#include "test_database.h"

#include <cstdint>
#include <stdexcept>
#include <string>

#include "frame/convert.h"
#include "host/dialect/catalog.h"
#include "host/store/sqlite/sql_functions.h"
#include "host/store/sqlite/table_text.h"

namespace qorhost::dialect::test {

namespace {

struct Finalize {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using StatementPtr = std::unique_ptr<sqlite3_stmt, Finalize>;

StatementPtr Prepare(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
  return StatementPtr(statement);
}

void BindValue(sqlite3_stmt* statement, int index, const qorcred::Value& value) {
  if (const auto* number = value.As<std::int32_t>(); number != nullptr) {
    sqlite3_bind_int64(statement, index, *number);
  } else if (const auto* real = value.As<double>(); real != nullptr) {
    sqlite3_bind_double(statement, index, *real);
  } else if (const auto* text = value.As<std::string>(); text != nullptr) {
    sqlite3_bind_text64(statement, index, text->data(), text->size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
  } else {
    throw std::logic_error("a parameter of an unexpected type");
  }
}

void CopyAll(sqlite3* from, sqlite3* to) {
  constexpr int kAllPages = -1;
  sqlite3_backup* const copying = sqlite3_backup_init(to, "main", from, "main");
  if (copying == nullptr || sqlite3_backup_step(copying, kAllPages) != SQLITE_DONE ||
      sqlite3_backup_finish(copying) != SQLITE_OK) {
    throw std::runtime_error("the tables cannot be copied");
  }
}

std::string CellOf(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return "Null";
    case SQLITE_INTEGER:
      return std::to_string(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
      return qorcred::NumberText(sqlite3_column_double(statement, column));
    default: {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return "'" + (bytes == nullptr ? std::string() : std::string(bytes, size)) + "'";
    }
  }
}

}  // namespace

TestDatabase::Handle TestDatabase::OpenEmpty() {
  sqlite3* database = nullptr;
  const int opened = sqlite3_open(":memory:", &database);
  Handle handle(database);
  if (opened != SQLITE_OK) {
    throw std::runtime_error("cannot open a database in memory");
  }
  sqlite::RegisterSqlFunctions(database);
  return handle;
}

TestDatabase::TestDatabase(Anew /*tag*/) : database_(OpenEmpty()) {
  for (const Table& table : Tables()) {
    const StatementPtr create = Prepare(handle(), sqlite::CreateTableText(table));
    sqlite3_step(create.get());
  }
  RunSeed(*this);
}

// A copy is made in a tenth of the time in which tables and rows are.
TestDatabase::TestDatabase() : database_(OpenEmpty()) {
  static const TestDatabase seeded{Anew()};
  CopyAll(seeded.handle(), handle());
}

Outcome TestDatabase::Run(std::string_view sql) {
  const Translation translation = translator_.Translate(sql, kNow);
  const StatementPtr statement = Prepare(handle(), translation.shape->sql);
  int index = 0;
  for (const qorcred::Value& value : translation.parameters) {
    ++index;
    BindValue(statement.get(), index, value);
  }
  const int columns = sqlite3_column_count(statement.get());
  Outcome outcome;
  int step = sqlite3_step(statement.get());
  for (; step == SQLITE_ROW; step = sqlite3_step(statement.get())) {
    std::vector<std::string>& row = outcome.rows.emplace_back();
    for (int column = 0; column < columns; ++column) {
      row.push_back(CellOf(statement.get(), column));
    }
  }
  if (step != SQLITE_DONE) {
    throw std::runtime_error(sqlite3_errmsg(handle()));
  }
  outcome.changes = sqlite3_changes(handle());
  return outcome;
}

}  // namespace qorhost::dialect::test
