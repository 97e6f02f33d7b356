#include "host/store/sqlite/database.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <numeric>
#include <system_error>
#include <thread>
#include <utility>

#include "host/store/sqlite/engine_error.h"
#include "host/store/sqlite/path_to_open.h"
#include "host/store/sqlite/sql_functions.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

constexpr int kLongestStatement = 16 * 1024 * 1024;
constexpr int kLongestValue = 64 * 1024 * 1024;
constexpr int kDeepestExpression = 1000;
constexpr int kMostCompoundSelects = 100;
constexpr int kLongestPattern = 1000;
constexpr int kCacheSize = -32 * 1024;  // page cache of 32 MiB: a full range save stays in it

constexpr int kStepsBetweenLooks = 20'000;  // of the engine: a few milliseconds

void Limit(sqlite3* handle, int what, int value) {
  sqlite3_limit(handle, what, value);
}

void Configure(sqlite3* handle) {
  sqlite3_extended_result_codes(handle, 1);
  Limit(handle, SQLITE_LIMIT_SQL_LENGTH, kLongestStatement);
  Limit(handle, SQLITE_LIMIT_LENGTH, kLongestValue);
  Limit(handle, SQLITE_LIMIT_EXPR_DEPTH, kDeepestExpression);
  Limit(handle, SQLITE_LIMIT_COMPOUND_SELECT, kMostCompoundSelects);
  Limit(handle, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, kLongestPattern);
  Limit(handle, SQLITE_LIMIT_ATTACHED, 0);
  // A file from elsewhere may carry triggers or views that call functions: they must not.
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
}

StoreError FailureOf(const Database& database) {
  return LastError(database.handle(), fmt::format("The store '{}'", database.name()));
}

/// What holds for the engine in this process. Where somebody else has begun to use it, it stays as
/// it is: only slower.
void SetUpEngine() {
  constexpr int kSavepointBlock = 512 * 1024;  // more than a hundred pages that a savepoint changes
  static const int done = sqlite3_config(SQLITE_CONFIG_STMTJRNL_SPILL, kSavepointBlock);
  static_cast<void>(done);
}

int FlagsOf(OpenMode mode) {
  switch (mode) {
    case OpenMode::kReadOnly:
      return SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    case OpenMode::kReadWrite:
      return SQLITE_OPEN_READWRITE;
    case OpenMode::kCreate:
      break;
  }
  return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
}

/// Empty where it may write to it, it has none, or memory is out.
std::filesystem::path FileThatIsOnlyRead(sqlite3* handle) noexcept {
  try {
    const bool isOnlyRead = sqlite3_db_readonly(handle, "main") == 1;
    const char* const name = isOnlyRead ? sqlite3_db_filename(handle, "main") : nullptr;
    return name == nullptr ? "" : name;
  } catch (...) {
    return {};
  }
}

/// Whoever only reads puts an empty log and an index beside a store and cannot take them away. One
/// who may write takes them away when he is the last to close it.
void TakeAwayEmptyLog(const std::filesystem::path& file) noexcept {
  try {
    std::filesystem::path log = file;
    log += "-wal";
    std::error_code missing;
    if (std::filesystem::file_size(log, missing) != 0 || missing ||
        std::filesystem::hard_link_count(file, missing) != 1) {
      return;
    }
    sqlite3* handle = nullptr;
    if (sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                        nullptr) == SQLITE_OK) {
      sqlite3_exec(handle, "PRAGMA user_version", nullptr, nullptr, nullptr);
    }
    sqlite3_close_v2(handle);
  } catch (...) {  // it stays then, and harms nobody
  }
}

}  // namespace

/// Asked by SQLite each time it meets another one's lock: 1 to try again.
int Database::WaitForOther(void* asked, int attempts) {
  using std::chrono::milliseconds;
  // Short waits at first: most writers are gone in a moment.
  constexpr std::array kPauses{1, 2, 5, 10, 15, 20, 25};
  constexpr int kLongestPause = 50;
  const Patience& patience = static_cast<const Asked*>(asked)->patience;
  const auto nth = static_cast<std::size_t>(attempts);
  // Counted by what was slept, which is never more than what has passed.
  const int shortOnes = std::accumulate(
      kPauses.begin(), kPauses.begin() + static_cast<std::ptrdiff_t>(std::min(nth, kPauses.size())),
      0);
  const int longOnes =
      nth > kPauses.size() ? static_cast<int>(nth - kPauses.size()) * kLongestPause : 0;
  const milliseconds waited(shortOnes + longOnes);
  if (waited >= patience.limit) {
    return 0;
  }
  try {
    if (patience.waiting && !patience.waiting(waited)) {
      return 0;
    }
  } catch (...) {
    return 0;
  }
  const milliseconds pause(nth < kPauses.size() ? kPauses[nth] : kLongestPause);
  std::this_thread::sleep_for(std::min(pause, patience.limit - waited));
  return 1;
}

/// Called by SQLite while a statement works: anything but 0 interrupts it.
int Database::LookUp(void* asked) {
  auto& [patience, stepsLeft] = *static_cast<Asked*>(asked);
  if (stepsLeft) {
    *stepsLeft -= kStepsBetweenLooks;
    if (*stepsLeft < 0) {
      return 1;
    }
  }
  try {
    return patience.working && !patience.working() ? 1 : 0;
  } catch (...) {
    return 1;
  }
}

void Database::Closer::operator()(sqlite3* handle) noexcept {
  try {
    if (watch != nullptr && watch->Look() == LogVerdict::kForeign) {
      sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
  } catch (...) {  // memory is out: the log stays, the next one who opens the store finds it
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  }
  watch.reset();
  const std::filesystem::path file = FileThatIsOnlyRead(handle);
  sqlite3_close_v2(handle);
  if (!file.empty()) {
    TakeAwayEmptyLog(file);
  }
}

Database::Database(const std::filesystem::path& file, OpenMode mode, Patience patience)
    : Database(file.string(), PathToOpen(file, mode), FlagsOf(mode), mode == OpenMode::kReadOnly,
               std::move(patience)) {}

Database::Database(std::string name, const std::string& path, int flags, bool readOnly,
                   Patience patience)
    : name_(std::move(name)),
      readOnly_(readOnly),
      asked_(std::make_unique<Asked>(Asked{std::move(patience), std::nullopt})) {
  SetUpEngine();
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) {
    throw LastError(opened, fmt::format("Cannot open the store '{}'", name_));
  }
  // SQLite falls back to reading only when the file may not be written.
  if (!readOnly && sqlite3_db_readonly(opened, "main") == 1) {
    throw StoreError(fmt::format("The store '{}' cannot be written: {}", name_,
                                 AdviceFor(StoreFault::kNoRights)),
                     StoreFault::kReadOnly);
  }
  Configure(opened);
  sqlite3_busy_handler(opened, &WaitForOther, asked_.get());
  sqlite3_progress_handler(opened, kStepsBetweenLooks, &LookUp, asked_.get());
  RegisterSqlFunctions(opened);
  Run(
      fmt::format("PRAGMA foreign_keys=ON; PRAGMA temp_store=MEMORY; PRAGMA cell_size_check=ON;"
                  "PRAGMA cache_size={}",
                  kCacheSize));
}

Database Database::InMemory() {
  return {":memory:", ":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY,
          false, Patience{}};
}

void Database::KeepSavepoints(SavepointRoom room) noexcept {
  const char* const setting =
      room == SavepointRoom::kOneBlock ? "PRAGMA temp_store=DEFAULT" : "PRAGMA temp_store=MEMORY";
  sqlite3_exec(handle(), setting, nullptr, nullptr, nullptr);
}

void Database::Run(const std::string& sql) {
  if (sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw FailureOf(*this);
  }
}

std::int64_t Database::Number(std::string_view sql) {
  Statement statement(*this, sql);
  return statement.Step() ? statement.Number(0) : 0;
}

bool Database::inTransaction() const noexcept {
  return sqlite3_get_autocommit(handle()) == 0;
}

void Database::UndoWhatIsOpen(const char* undo) noexcept {
  if (inTransaction()) {
    sqlite3_exec(handle(), undo, nullptr, nullptr, nullptr);
  }
}

std::uint32_t Database::PageOfSeals() {
  try {
    return static_cast<std::uint32_t>(
        Number("SELECT rootpage FROM sqlite_schema WHERE type='table' AND name='StoreSeal'"));
  } catch (const StoreError&) {
    return 0;  // of another file's log nothing may be readable
  }
}

void Database::WatchLog() {
  handle_.get_deleter().watch = std::make_unique<LogWatch>(handle(), PageOfSeals());
}

bool Database::RequireOwnLog() {
  LogWatch* const watch = handle_.get_deleter().watch.get();
  if (watch == nullptr) {
    return true;
  }
  LogVerdict verdict = watch->Look();
  if (verdict == LogVerdict::kForeign) {
    watch->LookForSealsOn(PageOfSeals());
    verdict = watch->Look();
  }
  if (verdict == LogVerdict::kForeign) {
    RefuseOtherFile();
  }
  return verdict == LogVerdict::kBelongs;
}

void Database::RequireSameFile() {
  LogWatch* const watch = handle_.get_deleter().watch.get();
  if (watch != nullptr && !watch->IsFileAsBefore() && watch->Look() != LogVerdict::kBelongs) {
    RefuseOtherFile();
  }
}

void Database::RefuseOtherFile() const {
  std::error_code ignored;
  const bool isLink = std::filesystem::is_symlink(name_, ignored);
  throw StoreError(fmt::format(
      "The store '{0}' and its log '{1}-wal' do not belong together: another file was put over "
      "one of them. Nothing was changed. Close every program that has the store open, move the "
      "log and '{1}-shm' away, put the copy that you want in the store's place again and open "
      "it",
      name_, isLink ? std::filesystem::weakly_canonical(name_, ignored).string() : name_));
}

void Database::ForgetPages() noexcept {
  sqlite3_file_control(handle(), "main", SQLITE_FCNTL_RESET_CACHE, nullptr);
}

int Database::busyStatements() const noexcept {
  int busy = 0;
  for (sqlite3_stmt* one = sqlite3_next_stmt(handle(), nullptr); one != nullptr;
       one = sqlite3_next_stmt(handle(), one)) {
    busy += sqlite3_stmt_busy(one) != 0 ? 1 : 0;
  }
  return busy;
}

void Statement::Finalizer::operator()(sqlite3_stmt* handle) const noexcept {
  sqlite3_finalize(handle);
}

Statement::Statement(const Database& database, std::string_view sql) {
  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v3(database.handle(), sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  handle_.reset(prepared);
  if (code != SQLITE_OK) {
    throw LastError(database.handle(), "The statement cannot be run");
  }
  if (prepared == nullptr) {
    throw StoreError("There is no statement to run");
  }
}

void Statement::Check(int code, const char* doing) const {
  if (code != SQLITE_OK) {
    throw LastError(sqlite3_db_handle(handle()), doing);
  }
}

void Statement::Bind(int parameter, const qorcred::Value& value) {
  switch (value.type()) {
    case qorcred::ValueType::kLong:
      return BindNumber(parameter, *value.As<std::int32_t>());
    case qorcred::ValueType::kInteger:
      return BindNumber(parameter, *value.As<std::int16_t>());
    case qorcred::ValueType::kBoolean:
      return BindNumber(parameter, *value.As<bool>() ? -1 : 0);
    case qorcred::ValueType::kDouble:
      return Check(sqlite3_bind_double(handle(), parameter, *value.As<double>()),
                   "A number cannot be handed to the statement");
    case qorcred::ValueType::kString:
      return BindText(parameter, *value.As<std::string>());
    case qorcred::ValueType::kNull:
    case qorcred::ValueType::kEmpty:
      return Check(sqlite3_bind_null(handle(), parameter),
                   "Null cannot be handed to the statement");
    default:
      throw StoreError("A value of this kind cannot be stored: use a number, a text or Null");
  }
}

void Statement::BindNumber(int parameter, std::int64_t number) {
  Check(sqlite3_bind_int64(handle(), parameter, number),
        "A number cannot be handed to the statement");
}

void Statement::BindText(int parameter, std::string_view text) {
  // A null pointer would bind Null instead of an empty text.
  const char* bytes = text.data() == nullptr ? "" : text.data();
  Check(sqlite3_bind_text64(handle(), parameter, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8),
        "A text cannot be handed to the statement");
}

bool Statement::Step() {
  switch (sqlite3_step(handle())) {
    case SQLITE_ROW:
      return true;
    case SQLITE_DONE:
      return false;
    default:
      throw LastError(sqlite3_db_handle(handle()), "The statement failed");
  }
}

void Statement::Reset() noexcept {
  sqlite3_reset(handle());
  sqlite3_clear_bindings(handle());
}

int Statement::columnCount() const noexcept {
  return sqlite3_column_count(handle());
}

bool Statement::changesNothing() const noexcept {
  return sqlite3_stmt_readonly(handle()) != 0;
}

std::int64_t Statement::Number(int column) const noexcept {
  return sqlite3_column_int64(handle(), column);
}

bool Statement::IsNull(int column) const noexcept {
  return sqlite3_column_type(handle(), column) == SQLITE_NULL;
}

std::string_view Statement::Text(int column) const noexcept {
  const void* text = sqlite3_column_blob(handle(), column);
  const int size = sqlite3_column_bytes(handle(), column);
  return text == nullptr
             ? std::string_view()
             : std::string_view(static_cast<const char*>(text), static_cast<std::size_t>(size));
}

void OftenRun::Run(const Database& database) {
  if (!statement_) {
    statement_.emplace(database, sql_);
  }
  const StatementUse run(*statement_);
  if (sqlite3_step(run->handle()) != SQLITE_DONE) {
    throw FailureOf(database);
  }
}

}  // namespace qorhost::sqlite
