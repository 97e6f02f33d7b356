#include "host/store/sqlite/sql_functions.h"

#include <sqlite3.h>

#include <span>
#include <stdexcept>
#include <string>

#include "host/dialect/folding.h"
#include "host/store/sqlite/sql_call.h"
#include "host/store/sqlite/text_functions.h"
#include "host/store/sqlite/value_functions.h"

namespace qorhost::sqlite {

namespace {

int Collate(void* /*unused*/, int leftSize, const void* left, int rightSize, const void* right) {
  return dialect::CompareFolded(
      {static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
      {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

void RequireOk(sqlite3* database, int result) {
  if (result != SQLITE_OK) {
    throw std::runtime_error(std::string("the engine refuses the dialect's functions: ") +
                             sqlite3_errmsg(database));
  }
}

void RegisterAll(sqlite3* database, std::span<const SqlFunction> functions) {
  for (const SqlFunction& function : functions) {
    RequireOk(database,
              sqlite3_create_function_v2(database, function.name, function.arguments,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                         nullptr, function.callback, nullptr, nullptr, nullptr));
  }
}

}  // namespace

void RegisterSqlFunctions(sqlite3* database) {
  RequireOk(database, sqlite3_create_collation_v2(database, "DESKTOP", SQLITE_UTF8, nullptr,
                                                  &Collate, nullptr));
  RegisterAll(database, TextFunctions());
  RegisterAll(database, ValueFunctions());
}

}  // namespace qorhost::sqlite
