// Any text into the translator: it must either refuse it with an SqlError, or give a statement that
// the engine prepares, of the kind it names, with as many parameters as values. An empty line parts
// two statements. Whatever a translator has seen before, it must give what a new one gives.
#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/catalog.h"
#include "host/dialect/translator.h"
#include "host/store/sqlite/printer.h"
#include "host/store/sqlite/sql_functions.h"
#include "host/store/sqlite/table_text.h"

namespace {

using namespace qorhost::dialect;

constexpr std::string_view kNow = "2026-01-31 14:05:09";
// Running a statement is bounded by the engine's own count of steps.
constexpr int kMostSteps = 20'000;

void Require(bool holds, std::string_view what, std::string_view sql) {
  if (!holds) {
    std::cerr << what << ": " << sql << '\n';
    std::abort();
  }
}

class Engine {
 public:
  Engine() {
    sqlite3_open(":memory:", &database_);
    qorhost::sqlite::RegisterSqlFunctions(database_);
    for (const Table& table : Tables()) {
      sqlite3_exec(database_, qorhost::sqlite::CreateTableText(table).c_str(), nullptr, nullptr,
                   nullptr);
    }
    Translator translator(&qorhost::sqlite::Print);
    for (const char* row :
         {"INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Gate')",
          "INSERT INTO Tenants (UnitKey, LastName, ACTIVESTARTTIME) VALUES (1, 'x', '1/1/2026')",
          "INSERT INTO CredentialBank (UnitKey, PINNo) VALUES (1, 5)"}) {
      Run(translator.Translate(row, kNow), row);
    }
    sqlite3_exec(database_, "BEGIN", nullptr, nullptr, nullptr);
  }

  // Prepares and runs a translation; what it changes is taken back.
  void Run(const Translation& translation, std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    const std::string& text = translation.shape->sql;
    const int prepared = sqlite3_prepare_v2(database_, text.c_str(), -1, &statement, nullptr);
    Require(prepared == SQLITE_OK, sqlite3_errmsg(database_), text);
    Require(
        sqlite3_bind_parameter_count(statement) == static_cast<int>(translation.parameters.size()),
        "another number of parameters", sql);
    const bool reads = translation.shape->kind == StatementKind::kSelect;
    Require((sqlite3_stmt_readonly(statement) != 0) == reads, "another kind of statement", sql);
    Require(!reads || sqlite3_column_count(statement) ==
                          static_cast<int>(translation.shape->resultTypes.size()),
            "another number of columns", sql);
    BindAll(statement, translation, sql);
    int steps = 0;
    while (sqlite3_step(statement) == SQLITE_ROW && steps < kMostSteps) {
      ++steps;
    }
    sqlite3_finalize(statement);
  }

  void TakeBack() { sqlite3_exec(database_, "ROLLBACK; BEGIN", nullptr, nullptr, nullptr); }

  void StopLongRuns() {
    // A join of many tables may take for ever: the engine asks now and then whether to go on.
    sqlite3_progress_handler(
        database_, kMostSteps, [](void* /*unused*/) { return 1; }, nullptr);
  }

 private:
  static void BindAll(sqlite3_stmt* statement, const Translation& translation,
                      std::string_view sql) {
    int index = 0;
    for (const qorcred::Value& value : translation.parameters) {
      ++index;
      if (const auto* number = value.As<std::int32_t>(); number != nullptr) {
        sqlite3_bind_int64(statement, index, *number);
      } else if (const auto* real = value.As<double>(); real != nullptr) {
        sqlite3_bind_double(statement, index, *real);
      } else {
        const auto* content = value.As<std::string>();
        Require(content != nullptr, "a value of another type", sql);
        sqlite3_bind_text64(statement, index, content->data(), content->size(), SQLITE_TRANSIENT,
                            SQLITE_UTF8);
      }
    }
  }

  sqlite3* database_ = nullptr;
};

Engine& SharedEngine() {
  static Engine engine = [] {
    Engine fresh;
    fresh.StopLongRuns();
    return fresh;
  }();
  return engine;
}

struct Told {
  std::string sql;
  std::vector<qorcred::Value> values;
  std::string refusal;
  friend bool operator==(const Told&, const Told&) = default;
};

Told Tell(Translator& translator, std::string_view sql) {
  Told told;
  try {
    const Translation translation = translator.Translate(sql, kNow);
    told.sql = translation.shape->sql;
    told.values.assign(translation.parameters.begin(), translation.parameters.end());
  } catch (const SqlError& error) {
    Require(error.line() > 0 && error.column() > 0, "a refusal without a place", sql);
    told.refusal = error.what();
  }
  return told;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Translator seasoned(&qorhost::sqlite::Print);
  const std::string input(data, data + size);
  const std::size_t parting = input.find("\n\n");
  const std::string sql = input.substr(0, parting);
  const std::string other = parting == std::string::npos ? sql : input.substr(parting + 2);

  Translator fresh(&qorhost::sqlite::Print);
  const Told told = Tell(fresh, sql);
  // Three times: by its shape, and then as the one that followed the last time.
  for (int round = 0; round < 3; ++round) {
    Require(Tell(seasoned, sql) == told, "another translation than before", sql);
  }
  Translator afresh(&qorhost::sqlite::Print);
  Require(Tell(seasoned, other) == Tell(afresh, other), "another translation behind another",
          input);
  if (told.refusal.empty()) {
    SharedEngine().Run(fresh.Translate(sql, kNow), sql);
    SharedEngine().TakeBack();
  }
  return 0;
}
