#include "host/store/sqlite/audit_log.h"

#include <algorithm>
#include <iterator>

#include "host/store/audit_chain.h"
#include "host/store/audit_rows.h"
#include "host/store/sqlite/audit_chain_reader.h"
#include "host/store/sqlite/put_back.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

namespace {

std::vector<WorkEntry> EntriesOf(Statement& read) {
  std::vector<WorkEntry> entries;
  while (read.Step()) {
    entries.push_back(EntryIn(read));
  }
  return entries;
}

}  // namespace

std::vector<WorkEntry> AuditLog::After(std::int64_t entry, std::optional<std::int32_t> unitKey) {
  const StatementUse read(
      session_.Own("SELECT RID, At, Who, Origin, UnitKey, What FROM AuditEntries "
                   "WHERE RID>?2 AND (?1 IS NULL OR UnitKey=?1 OR UnitKey IS NULL) ORDER BY RID"));
  if (unitKey) {
    read->BindNumber(1, *unitKey);
  }
  read->BindNumber(2, entry);
  return EntriesOf(*read);
}

std::optional<WorkEntry> AuditLog::Find(std::int64_t entry) {
  const StatementUse read(
      session_.Own("SELECT RID, At, Who, Origin, UnitKey, What FROM AuditEntries WHERE RID=?1"));
  read->BindNumber(1, entry);
  std::vector<WorkEntry> found = EntriesOf(*read);
  return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

std::vector<RowChange> AuditLog::RowsOf(std::int64_t entry) {
  const StatementUse read(
      session_.Own("SELECT Rows, 0 AS Piece FROM AuditEntries WHERE RID=?1 UNION ALL "
                   "SELECT Rows, Piece FROM AuditRows WHERE Entry=?1 ORDER BY Piece"));
  read->BindNumber(1, entry);
  std::vector<RowChange> changes;
  while (read->Step()) {
    std::vector<RowChange> piece = RowsInPiece(read->Text(0));
    std::move(piece.begin(), piece.end(), std::back_inserter(changes));
  }
  return changes;
}

std::vector<ChainHead> AuditLog::Heads() {
  const StatementUse read(
      session_.Own("SELECT V.UnitKey, V.Entry, A.Hash FROM CurrentVersions V JOIN AuditEntries A "
                   "ON A.RID = V.Entry ORDER BY V.UnitKey"));
  std::vector<ChainHead> heads;
  while (read->Step()) {
    heads.push_back(
        {static_cast<std::int32_t>(read->Number(0)), read->Number(1), std::string(read->Text(2))});
  }
  return heads;
}

std::vector<ChainFault> AuditLog::Check() {
  std::vector<ChainFault> faults;
  const AuditChainCheck check = ReadAudit(session_.database(), false, [&](const ReadEntry& read) {
    if (const std::optional<ChainFault> fault = FaultIn(read)) {
      faults.push_back(*fault);
    }
  });
  const StatementUse versions(
      session_.Own("SELECT UnitKey, Entry FROM CurrentVersions WHERE Entry>0 ORDER BY Entry"));
  while (versions->Step()) {
    if (const std::optional<ChainFault> fault = check.FaultOfVersion(
            static_cast<std::int32_t>(versions->Number(0)), versions->Number(1))) {
      faults.push_back(*fault);
    }
  }
  return faults;
}

std::string AuditLog::HashOf(std::int64_t entry) {
  const StatementUse read(session_.Own("SELECT Hash FROM AuditEntries WHERE RID=?1"));
  read->BindNumber(1, entry);
  return read->Step() ? std::string(read->Text(0)) : std::string();
}

AuditLog::ChainEnd AuditLog::EndBehind(std::int64_t previous) {
  // One statement: an operation of one row is made of few.
  const StatementUse read(session_.Own(
      "SELECT max(RID), (SELECT Hash FROM AuditEntries WHERE RID=?1) FROM AuditEntries"));
  read->BindNumber(1, previous);
  read->Step();
  ChainEnd end;
  end.last = read->Number(0);
  if (previous != 0) {
    end.previous = previous;
    end.hashes.emplace_back(read->Text(1));
  }
  return end;
}

AuditLog::ChainEnd AuditLog::EndForAll() {
  ChainEnd end;
  const StatementUse last(session_.Own("SELECT max(RID) FROM AuditEntries"));
  last->Step();
  end.last = last->Number(0);
  const StatementUse read(session_.Own(
      "SELECT Hash FROM AuditEntries WHERE RID IN (SELECT Entry FROM CurrentVersions) OR "
      "RID = (SELECT max(RID) FROM AuditEntries WHERE UnitKey IS NULL) ORDER BY RID"));
  while (read->Step()) {
    end.hashes.emplace_back(read->Text(0));
  }
  return end;
}

std::int64_t AuditLog::Append(WorkEntry entry, std::int64_t previous,
                              const std::vector<RowChange>& changes) {
  const std::vector<std::string> rows = RowsInPieces(changes);
  const ChainEnd end = entry.unitKey ? EndBehind(previous) : EndForAll();
  entry.entry = end.last + 1;
  const std::string hash = qorhost::HashOf(entry, end.hashes, rows);
  {
    const StatementUse store(session_.Own(
        "INSERT INTO AuditEntries (RID, At, Who, Origin, UnitKey, Previous, What, Rows, Hash) "
        "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)"));
    store->BindNumber(1, entry.entry);
    store->BindText(2, entry.at);
    store->BindText(3, entry.who);
    store->BindText(4, entry.origin);
    if (entry.unitKey) {
      store->BindNumber(5, *entry.unitKey);
    }
    if (end.previous) {
      store->BindNumber(6, *end.previous);
    }
    store->BindText(7, entry.what);
    store->BindText(8, rows.front());
    store->BindText(9, hash);
    store->Step();
  }
  for (std::size_t piece = 1; piece < rows.size(); ++piece) {
    const StatementUse insert(
        session_.Own("INSERT INTO AuditRows (Entry, Piece, Rows) VALUES (?1, ?2, ?3)"));
    insert->BindNumber(1, entry.entry);
    insert->BindNumber(2, static_cast<std::int64_t>(piece));
    insert->BindText(3, rows[piece]);
    insert->Step();
  }
  return entry.entry;
}

std::optional<std::int64_t> AuditLog::PutBack(const RowChange& change) {
  return session_.Writing([&] { return PutRowBack(session_, change); });
}

void HashEarlierEntries(Database& database) {
  std::vector<std::pair<std::int64_t, std::string>> hashes;
  ReadAudit(database, true, [&hashes](const ReadEntry& read) {
    hashes.emplace_back(read.entry.entry, read.expected);
  });
  Statement update(database, "UPDATE AuditEntries SET Hash=?2 WHERE RID=?1");
  for (const auto& [entry, hash] : hashes) {
    const StatementUse use(update);
    use->BindNumber(1, entry);
    use->BindText(2, hash);
    use->Step();
  }
}

}  // namespace qorhost::sqlite
