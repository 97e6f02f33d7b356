#include "host/store/sqlite/change_log.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "host/store/audited_tables.h"
#include "host/store/sqlite/result_reader.h"
#include "host/store/store_error.h"

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
    if (!log.on_ || std::string_view(schema) != "main") {
      return;
    }
    ++log.touched_;
    try {
      log.counts_.OnChange(operation, name);
      WatchedTable* const table = log.Find(name);
      if (table == nullptr) {
        log.CountStep(operation, name, operation == SQLITE_INSERT ? after : before);
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
      log.incomplete_ = true;
    }
  }

  static std::vector<StoredCell> Row(const ChangeLog& log, const WatchedTable& table, Reader read) {
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

ChangeLog::ChangeLog(Database& database) : database_(database), counts_(database) {
  sqlite3_preupdate_hook(database_.handle(), &Hook::Called, this);
}

ChangeLog::~ChangeLog() {
  sqlite3_preupdate_hook(database_.handle(), nullptr, nullptr);
}

void ChangeLog::Start() {
  if (tables_.empty()) {
    ReadTables();
  }
  for (WatchedTable& table : tables_) {
    table.run.reset();
  }
  changes_.clear();
  touched_ = 0;
  steps_ = 0;
  firstStep_ = 0;
  incomplete_ = false;
  on_ = true;
}

void ChangeLog::Stop() noexcept {
  on_ = false;
  counts_.ForgetAll();
}

void ChangeLog::ReadTables() {
  // The hook itself must not run statements.
  Statement columns(database_,
                    "SELECT T.name, C.name FROM sqlite_schema T, pragma_table_info(T.name) C "
                    "WHERE T.type='table' AND T.name NOT LIKE 'sqlite!_%' ESCAPE '!' "
                    "ORDER BY T.name, C.cid");
  while (columns.Step()) {
    const std::string_view name = columns.Text(0);
    if (!IsAudited(name)) {
      continue;
    }
    if (tables_.empty() || tables_.back().name != name) {
      tables_.push_back({std::string(name), {}, {}});
    }
    tables_.back().columns.emplace_back(columns.Text(1));
  }
}

ChangeLog::WatchedTable* ChangeLog::Find(std::string_view name) {
  if (latest_ < tables_.size() && tables_[latest_].name == name) {
    return &tables_[latest_];
  }
  for (std::size_t at = 0; at < tables_.size(); ++at) {
    if (tables_[at].name == name) {
      latest_ = at;
      return &tables_[at];
    }
  }
  return nullptr;
}

void ChangeLog::NoteHere(Place& place) const {
  place.touched = touched_;
  place.steps = steps_;
  place.changes = changes_.size();
  place.counts = counts_.Here();
  place.runs.clear();
  for (const WatchedTable& table : tables_) {
    place.runs.push_back({table.run, table.run ? changes_[*table.run].lastRid : 0});
  }
}

void ChangeLog::GoBackTo(const Place& place) {
  touched_ = place.touched;
  steps_ = place.steps;
  counts_.GoBackTo(place.counts);
  changes_.resize(std::min(changes_.size(), place.changes));
  for (std::size_t at = 0; at < tables_.size(); ++at) {
    const Place::Run run = at < place.runs.size() ? place.runs[at] : Place::Run{};
    tables_[at].run = run.change;
    if (run.change) {
      changes_[*run.change].lastRid = run.end;
    }
  }
}

void ChangeLog::RequireComplete() const {
  if (incomplete_) {
    throw StoreError("The changes could not be written down for the audit: nothing was stored",
                     StoreFault::kNoMemory);
  }
}

void ChangeLog::CountStep(int operation, std::string_view table, std::int64_t rid) noexcept {
  if (operation == SQLITE_UPDATE || table != "ProgramSteps") {
    return;
  }
  if (operation == SQLITE_INSERT) {
    firstStep_ = firstStep_ == 0 ? rid : firstStep_;
    ++steps_;
  } else if (firstStep_ != 0 && rid >= firstStep_) {
    --steps_;  // those of others have lower numbers, for none comes twice
  }
}

void ChangeLog::OnInsert(WatchedTable& table, std::int64_t rid) {
  if (table.run && changes_[*table.run].lastRid + 1 == rid) {
    changes_[*table.run].lastRid = rid;
    return;
  }
  RowChange change{RowChangeKind::kInserted, table.name, rid, rid, {}, {}};
  change.after = Hook::Row(*this, table, &sqlite3_preupdate_new);
  changes_.push_back(std::move(change));
  table.run = changes_.size() - 1;
}

void ChangeLog::OnUpdate(const WatchedTable& table, std::int64_t rid) {
  constexpr std::size_t kUsual = 4;  // columns that a change changes
  RowChange change{RowChangeKind::kUpdated, table.name, rid, rid, {}, {}};
  change.before.reserve(kUsual);
  change.after.reserve(kUsual);
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
      change.before.push_back({table.columns[at], was});
      change.after.push_back({table.columns[at], is});
    }
  }
  if (!change.before.empty()) {
    changes_.push_back(std::move(change));
  }
}

void ChangeLog::OnDelete(const WatchedTable& table, std::int64_t rid) {
  RowChange change{RowChangeKind::kDeleted, table.name, rid, rid, {}, {}};
  change.before = Hook::Row(*this, table, &sqlite3_preupdate_old);
  changes_.push_back(std::move(change));
}

}  // namespace qorhost::sqlite
