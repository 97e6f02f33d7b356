// SQLite's connection and statement, owned. Everything here raises StoreError on failure.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"
#include "host/store/sqlite/log_watch.h"
#include "host/store/store.h"

struct sqlite3;
struct sqlite3_stmt;

namespace qorhost::sqlite {

class Statement;

/// Where the engine keeps what going back to a savepoint takes: in small pieces, all of it in
/// memory; or in one block, which many small savepoints take much less time for, and beyond it in a
/// file without a name. The other setting holds for what large sorts need, too.
enum class SavepointRoom : std::uint8_t { kPieces, kOneBlock };

/// One open database file, used by one thread. Statements must end before it.
class Database {
 public:
  /// Opens a file with the dialect's functions and collation, limits against hostile statements and
  /// a busy timeout. Looks neither at its schema nor changes the file; see OpenDatabase().
  Database(const std::filesystem::path& file, OpenMode mode, Patience patience = {});
  /// A database in memory, gone with this object.
  static Database InMemory();

  /// How long it waits for another one that writes.
  void SetPatience(Patience patience) { asked_->patience = std::move(patience); }
  [[nodiscard]] const Patience& patience() const noexcept { return asked_->patience; }
  /// How many more steps of the engine its statements may take from now on; none: as many as they
  /// need. One that would take more fails with SQLITE_INTERRUPT, as one that patience ends.
  void BoundSteps(std::optional<std::int64_t> most) noexcept { asked_->stepsLeft = most; }

  /// To be called outside a transaction, for those that begin then.
  void KeepSavepoints(SavepointRoom room) noexcept;

  /// Runs SQLite text (one or more statements) that gives no rows.
  void Run(const std::string& sql);
  /// The first column of the first row as a whole number, 0 without rows.
  [[nodiscard]] std::int64_t Number(std::string_view sql);

  [[nodiscard]] sqlite3* handle() const noexcept { return handle_.get(); }
  [[nodiscard]] bool readOnly() const noexcept { return readOnly_; }
  /// How the file is called in messages; ":memory:" in memory.
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  /// Whether SQLite holds a transaction open.
  [[nodiscard]] bool inTransaction() const noexcept;
  /// Undoes what is open, if anything is, where a failure has nobody to be told to.
  void UndoWhatIsOpen(const char* undo = "ROLLBACK") noexcept;
  /// From now on, the file and its log are looked at; to be called when something was read.
  void WatchLog();
  /// Raises when the log was not written for the file that stands beside it, or is not the one that
  /// was opened: what is written then would be mixed of two stores. True when all that was read
  /// before holds; else the pages in memory may be those of another file.
  bool RequireOwnLog();
  /// The same, short, of the file alone: raises unless it holds what it held at the last look, or
  /// more of the log.
  void RequireSameFile();
  /// Forgets the pages in memory; outside a transaction.
  void ForgetPages() noexcept;
  /// Statements that were started and not yet reset.
  [[nodiscard]] int busyStatements() const noexcept;

 private:
  /// What closes the last connection puts the log into the file: never one that is another's.
  struct Closer {
    std::unique_ptr<LogWatch> watch;
    void operator()(sqlite3* handle) noexcept;
  };

  /// What SQLite asks while it works or waits.
  struct Asked {
    Patience patience;
    std::optional<std::int64_t> stepsLeft;
  };

  static int WaitForOther(void* asked, int attempts);
  static int LookUp(void* asked);
  [[nodiscard]] std::uint32_t PageOfSeals();
  [[noreturn]] void RefuseOtherFile() const;
  Database(std::string name, const std::string& path, int flags, bool readOnly, Patience patience);

  std::string name_;
  bool readOnly_;
  // Where SQLite finds it, wherever this object is moved to.
  std::unique_ptr<Asked> asked_;
  std::unique_ptr<sqlite3, Closer> handle_;
};

/// A prepared statement. Columns count from 0, parameters from 1.
class Statement {
 public:
  Statement(const Database& database, std::string_view sql);

  /// Texts are not copied: they must live until the statement is reset or bound anew.
  void Bind(int parameter, const qorcred::Value& value);
  void BindNumber(int parameter, std::int64_t number);
  void BindText(int parameter, std::string_view text);

  /// Runs to the next row; false at the end.
  bool Step();
  /// Ends the run and forgets the bound values.
  void Reset() noexcept;

  [[nodiscard]] int columnCount() const noexcept;
  [[nodiscard]] bool changesNothing() const noexcept;
  [[nodiscard]] std::int64_t Number(int column) const noexcept;
  [[nodiscard]] bool IsNull(int column) const noexcept;
  /// Valid until the next step or reset.
  [[nodiscard]] std::string_view Text(int column) const noexcept;
  [[nodiscard]] sqlite3_stmt* handle() const noexcept { return handle_.get(); }

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* handle) const noexcept;
  };

  void Check(int code, const char* doing) const;

  std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

/// Resets a statement when the use of it ends, however it ends.
class StatementUse {
 public:
  explicit StatementUse(Statement& statement) : statement_(statement) {}
  ~StatementUse() { statement_.Reset(); }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;

  Statement* operator->() const noexcept { return &statement_; }
  Statement& operator*() const noexcept { return statement_; }

 private:
  Statement& statement_;
};

/// A text without parameters and rows that runs many thousand times: prepared when it runs first.
/// Must end before the database.
class OftenRun {
 public:
  explicit OftenRun(std::string_view sql) : sql_(sql) {}
  /// Fails as Database::Run() does.
  void Run(const Database& database);

 private:
  std::string_view sql_;
  std::optional<Statement> statement_;
};

}  // namespace qorhost::sqlite
