#include "host/store/sqlite/change_log.h"

#include <sqlite3.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "host/store/audited_tables.h"
#include "host/store/sqlite/result_reader.h"

namespace qorhost::sqlite {

namespace {

using Reader = int (*)(sqlite3*, int, sqlite3_value**);

qorcred::Value ValueOf(sqlite3_value* cell) {
  return cell == nullptr ? qorcred::Value(qorcred::Null{}) : PlainValue(cell);
}

/// Whether two cells hold the same of the same type.
bool IsTheSame(sqlite3_value* one, sqlite3_value* other) {
  if (one == nullptr || other == nullptr) {
    return one == other;
  }
  const int type = sqlite3_value_type(one);
  if (type != sqlite3_value_type(other)) {
    return false;
  }
  switch (type) {
    case SQLITE_NULL:
      return true;
    case SQLITE_INTEGER:
      return sqlite3_value_int64(one) == sqlite3_value_int64(other);
    case SQLITE_FLOAT:
      return sqlite3_value_double(one) == sqlite3_value_double(other);
    default:
      break;
  }
  const void* const bytes = sqlite3_value_blob(one);
  const void* const otherBytes = sqlite3_value_blob(other);
  const int size = sqlite3_value_bytes(one);
  return size == sqlite3_value_bytes(other) &&
         (size == 0 || std::memcmp(bytes, otherBytes, static_cast<std::size_t>(size)) == 0);
}

}  // namespace

/// What SQLite calls back. It may not be left by an exception.
struct ChangeLog::Hook {
  static void Called(void* context, sqlite3* /*handle*/, int operation, const char* schema,
                     const char* name, sqlite3_int64 before, sqlite3_int64 after) {
    auto& log = *static_cast<ChangeLog*>(context);
    if (!log.on() || std::string_view(schema) != "main") {
      return;
    }
    log.list().Touch();
    try {
      log.counts_.OnChange(operation, name);
      Watched* const table = log.list().Find(name);
      if (table == nullptr) {
        if (operation != SQLITE_UPDATE && std::string_view(name) == "ProgramSteps") {
          const bool isNew = operation == SQLITE_INSERT;
          log.list().CountStep(isNew, isNew ? after : before);
        }
        return;
      }
      switch (operation) {
        case SQLITE_INSERT:
          return log.OnInsert(*table, after);
        case SQLITE_UPDATE:
          return log.OnUpdate(*table, before);
        default:
          return log.OnDelete(*table, before);
      }
    } catch (...) {
      log.MissOne(Missed::kNoMemory);
    }
  }

  static std::vector<StoredCell> Row(const ChangeLog& log, const Watched& table, Reader read) {
    std::vector<StoredCell> cells;
    cells.reserve(table.columns.size());
    for (const std::string& column : table.columns) {
      sqlite3_value* value = nullptr;
      read(log.database_.handle(), static_cast<int>(cells.size()), &value);
      cells.push_back({column, ValueOf(value)});
    }
    return cells;
  }
};

ChangeLog::ChangeLog(Database& database) : database_(database), counts_(database, units()) {
  sqlite3_preupdate_hook(database_.handle(), &Hook::Called, this);
}

ChangeLog::~ChangeLog() {
  sqlite3_preupdate_hook(database_.handle(), nullptr, nullptr);
}

void ChangeLog::Start() {
  if (list().empty()) {
    ReadTables();
  }
  qorhost::ChangeLog::Start();
}

void ChangeLog::Follow(std::int32_t unitKey, const UnitCounts& now) {
  counts_.ReadColumns();
  qorhost::ChangeLog::Follow(unitKey, now);
}

void ChangeLog::ReadTables() {
  // The hook itself must not run statements.
  Statement columns(database_,
                    "SELECT T.name, C.name FROM sqlite_schema T, pragma_table_info(T.name) C "
                    "WHERE T.type='table' AND T.name NOT LIKE 'sqlite!_%' ESCAPE '!' "
                    "ORDER BY T.name, C.cid");
  std::string table;
  std::vector<std::string> names;
  const auto watch = [&] {
    if (!names.empty()) {
      list().Watch(std::exchange(table, {}), std::exchange(names, {}));
    }
  };
  while (columns.Step()) {
    const std::string_view name = columns.Text(0);
    if (!IsAudited(name)) {
      continue;
    }
    if (table != name) {
      watch();
      table = name;
    }
    names.emplace_back(columns.Text(1));
  }
  watch();
}

void ChangeLog::OnInsert(Watched& table, std::int64_t rid) {
  if (!list().JoinsRun(table, rid)) {
    list().AddInserted(table, rid, Hook::Row(*this, table, &sqlite3_preupdate_new));
  }
}

void ChangeLog::OnUpdate(const Watched& table, std::int64_t rid) {
  constexpr std::size_t kUsual = 4;  // columns that a change changes
  std::vector<StoredCell> former;
  std::vector<StoredCell> present;
  former.reserve(kUsual);
  present.reserve(kUsual);
  for (std::size_t at = 0; at < table.columns.size(); ++at) {
    sqlite3_value* before = nullptr;
    sqlite3_value* after = nullptr;
    sqlite3_preupdate_old(database_.handle(), static_cast<int>(at), &before);
    sqlite3_preupdate_new(database_.handle(), static_cast<int>(at), &after);
    if (IsTheSame(before, after)) {
      continue;  // most are, of many rows
    }
    const qorcred::Value was = ValueOf(before);
    const qorcred::Value is = ValueOf(after);
    if (was != is) {
      former.push_back({table.columns[at], was});
      present.push_back({table.columns[at], is});
    }
  }
  list().AddUpdated(table, rid, std::move(former), std::move(present));
}

void ChangeLog::OnDelete(const Watched& table, std::int64_t rid) {
  list().AddDeleted(table, rid, Hook::Row(*this, table, &sqlite3_preupdate_old));
}

}  // namespace qorhost::sqlite
