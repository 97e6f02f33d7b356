#include "host/store/sqlite/unit_of_work.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <string_view>
#include <utility>

#include "host/dialect/canonical_date.h"
#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/session.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

// A table's row holds no more than the engine's longest value: the rows of an entry come in pieces.
constexpr std::size_t kLongestPiece = std::size_t{1024} * 1024;

std::string_view TextOf(VoidReason reason) {
  switch (reason) {
    case VoidReason::kStale:
      return "Somebody else has changed the unit meanwhile: nothing was stored";
    case VoidReason::kCancelled:
      return "The operation was cancelled: nothing was stored";
    case VoidReason::kFailed:
    case VoidReason::kNone:
      break;
  }
  return "The operation was given up after an earlier failure: nothing was stored";
}

void RequireInPlace(const Database& database) {
  if (HasMoved(database)) {
    throw StoreError(
        fmt::format("The store '{}' was moved or replaced while it was open: open it "
                    "again",
                    database.name()));
  }
}

}  // namespace

UnitOfWork::UnitOfWork(Session& session) : session_(session), log_(session.database()) {}

UnitOfWork::~UnitOfWork() {
  Undo();
}

UnitVersion UnitOfWork::VersionOf(std::int32_t unitKey) {
  const StatementUse read(session_.Own("SELECT Entry, Mark FROM UnitVersions WHERE UnitKey=?1"));
  read->BindNumber(1, unitKey);
  return read->Step() ? UnitVersion{read->Number(0), read->Number(1)} : UnitVersion{};
}

std::vector<WorkEntry> UnitOfWork::Since(std::int32_t unitKey, const UnitVersion& version) {
  const StatementUse read(
      session_.Own("SELECT RID, At, Who, Origin, UnitKey, What FROM AuditEntries "
                   "WHERE RID>?2 AND (UnitKey=?1 OR UnitKey IS NULL) ORDER BY RID"));
  read->BindNumber(1, unitKey);
  read->BindNumber(2, version.entry);
  std::vector<WorkEntry> entries;
  while (read->Step()) {
    WorkEntry one;
    one.entry = read->Number(0);
    one.at = read->Text(1);
    one.who = read->Text(2);
    one.origin = read->Text(3);
    if (!read->IsNull(4)) {
      one.unitKey = static_cast<std::int32_t>(read->Number(4));
    }
    one.what = read->Text(5);
    entries.push_back(std::move(one));
  }
  return entries;
}

std::vector<RowChange> UnitOfWork::RowsOf(std::int64_t entry) {
  const StatementUse read(
      session_.Own("SELECT Rows, 0 AS Piece FROM AuditEntries WHERE RID=?1 UNION ALL "
                   "SELECT Rows, Piece FROM AuditRows WHERE Entry=?1 ORDER BY Piece"));
  read->BindNumber(1, entry);
  std::vector<RowChange> changes;
  while (read->Step()) {
    std::string_view lines = read->Text(0);
    while (!lines.empty()) {
      const std::size_t end = std::min(lines.find('\n'), lines.size());
      changes.push_back(ChangeFromText(lines.substr(0, end)));
      lines.remove_prefix(std::min(end + 1, lines.size()));
    }
  }
  return changes;
}

void UnitOfWork::SignAs(Author author) {
  author_ = std::move(author);
}

void UnitOfWork::Begin(WorkOrder order) {
  if (open_ || session_.database().inTransaction()) {
    throw StoreError("An operation is under way already: end it first");
  }
  order_ = std::move(order);
  committed_.clear();
  void_ = VoidReason::kNone;
  open_ = true;
}

void UnitOfWork::Lock() {
  if (locked_) {
    return;
  }
  order_.filled.reset();
  TakeRightToWrite();
}

void UnitOfWork::TakeRightToWrite() {
  Database& database = session_.database();
  try {
    database.Run("BEGIN IMMEDIATE");
    locked_ = true;
    RequireInPlace(database);
    if (!database.RequireOwnLog()) {
      database.Run("ROLLBACK");
      database.ForgetPages();
      database.Run("BEGIN IMMEDIATE");
      database.RequireOwnLog();
    }
    if (order_.filled.has_value() && VersionOf(order_.units.front()) != *order_.filled) {
      Void(VoidReason::kStale);
      throw StoreError(std::string(TextOf(VoidReason::kStale)));
    }
    log_.Start();
  } catch (const StoreError&) {
    Void(VoidReason::kFailed);
    ReleaseRightToWrite();
    throw;
  }
}

void UnitOfWork::RequireUsable() {
  if (!open_) {
    return;
  }
  if (locked_ && !session_.database().inTransaction()) {
    Void(VoidReason::kFailed);  // SQLite gave it up by itself (a full disk, for example)
  }
  if (void_ != VoidReason::kNone) {
    throw StoreError(std::string(TextOf(void_)));
  }
}

void UnitOfWork::BeforeWrite() {
  RequireUsable();
  if (open_ && !locked_) {
    TakeRightToWrite();
  }
}

void UnitOfWork::AfterFailedWrite() noexcept {
  if (open_) {
    Void(VoidReason::kFailed);
  }
}

void UnitOfWork::Void(VoidReason reason) noexcept {
  if (void_ == VoidReason::kNone) {
    void_ = reason;
  }
}

void UnitOfWork::Forgive() noexcept {
  // What SQLite gave up as a whole is lost for every part of it.
  if (locked_ && session_.database().inTransaction()) {
    void_ = VoidReason::kNone;
  }
}

bool UnitOfWork::Commit() {
  if (!open_) {
    throw StoreError("There is no operation to store: begin one first");
  }
  try {
    RequireUsable();
    const bool stored = locked_ && written() > 0;
    if (stored) {
      log_.RequireComplete();
      log_.Stop();
      StoreEntry();
      session_.database().RequireSameFile();
      session_.database().Run("COMMIT");
    }
    Undo();
    return stored;
  } catch (...) {
    Undo();
    throw;
  }
}

void UnitOfWork::StoreEntry() {
  const qorcred::Date now = author_.utc ? author_.utc() : session_.timeStamp().Clocked();
  const std::string at = dialect::CanonicalDate(now);
  const bool oneUnit = order_.units.size() == 1;
  const std::vector<std::string> rows = RowsInPieces();
  {
    const StatementUse store(
        session_.Own("INSERT INTO AuditEntries (At, Who, Origin, UnitKey, Previous, What, Rows) "
                     "VALUES (?1, ?2, ?3, ?4, "
                     "(SELECT Entry FROM UnitVersions WHERE UnitKey=?4), ?5, ?6)"));
    store->BindText(1, at);
    store->BindText(2, author_.who);
    store->BindText(3, author_.origin);
    if (oneUnit) {
      store->BindNumber(4, order_.units.front());
    }
    store->BindText(5, order_.what);
    store->BindText(6, rows.front());
    store->Step();
  }
  const std::int64_t entry = sqlite3_last_insert_rowid(session_.database().handle());
  StoreFurtherRows(entry, rows);
  RaiseVersions(entry);
  const StatementUse seal(
      session_.Own("UPDATE StoreSeal SET Previous=Mark, Mark=randomblob(16) WHERE rowid=1"));
  seal->Step();
}

std::vector<std::string> UnitOfWork::RowsInPieces() const {
  std::vector<std::string> pieces(1);
  for (const RowChange& change : log_.changes()) {
    const std::string line = TextOfChange(change) + '\n';
    if (!pieces.back().empty() && pieces.back().size() + line.size() > kLongestPiece) {
      pieces.emplace_back();
    }
    pieces.back() += line;
  }
  return pieces;
}

void UnitOfWork::StoreFurtherRows(std::int64_t entry, const std::vector<std::string>& pieces) {
  for (std::size_t piece = 1; piece < pieces.size(); ++piece) {
    const StatementUse insert(
        session_.Own("INSERT INTO AuditRows (Entry, Piece, Rows) VALUES (?1, ?2, ?3)"));
    insert->BindNumber(1, entry);
    insert->BindNumber(2, static_cast<std::int64_t>(piece));
    insert->BindText(3, pieces[piece]);
    insert->Step();
  }
}

void UnitOfWork::KeepVersions(Statement& raised) {
  while (raised.Step()) {
    committed_[static_cast<std::int32_t>(raised.Number(0))] = {raised.Number(1), raised.Number(2)};
  }
}

std::optional<UnitVersion> UnitOfWork::Committed(std::int32_t unitKey) const {
  const auto found = committed_.find(unitKey);
  return found == committed_.end() ? std::nullopt : std::optional(found->second);
}

void UnitOfWork::RaiseVersions(std::int64_t entry) {
  const auto raising = [this, entry](std::string_view rows, std::optional<std::int32_t> unitKey) {
    const StatementUse raise(session_.Own(
        fmt::format("INSERT INTO UnitVersions (UnitKey, Entry, Mark) {} ON CONFLICT (UnitKey) DO "
                    "UPDATE SET Entry=excluded.Entry, Mark=excluded.Mark "
                    "RETURNING UnitKey, Entry, Mark",
                    rows)));
    raise->BindNumber(1, entry);
    if (unitKey) {
      raise->BindNumber(2, *unitKey);
    }
    KeepVersions(*raise);
  };
  if (order_.units.empty()) {
    raising(
        "SELECT UnitKey, ?1, random() FROM Units WHERE true "
        "UNION SELECT UnitKey, ?1, random() FROM UnitVersions WHERE true",
        std::nullopt);
  }
  for (const std::int32_t unitKey : order_.units) {
    raising("VALUES (?2, ?1, random())", unitKey);
  }
}

void UnitOfWork::Undo() noexcept {
  if (!open_) {
    return;
  }
  ReleaseRightToWrite();
  open_ = false;
}

void UnitOfWork::ReleaseRightToWrite() noexcept {
  log_.Stop();
  locked_ = false;
  if (session_.database().inTransaction()) {
    sqlite3_exec(session_.database().handle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

}  // namespace qorhost::sqlite
