#include "host/store/sqlite/carried_history.h"

#include "host/store/sqlite/audit_chain_reader.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

void CarriedHistory::EachEntry(const std::function<void(const CarriedEntry&)>& take) {
  ReadAudit(session_.database(), false, [&take](const ReadEntry& read) {
    take({read.entry, read.previous, read.rows, read.hash});
  });
}

std::vector<std::pair<std::int32_t, UnitVersion>> CarriedHistory::Versions() {
  const StatementUse read(
      session_.Own("SELECT UnitKey, Entry, Mark FROM CurrentVersions ORDER BY UnitKey"));
  std::vector<std::pair<std::int32_t, UnitVersion>> versions;
  while (read->Step()) {
    versions.emplace_back(static_cast<std::int32_t>(read->Number(0)),
                          UnitVersion{read->Number(1), read->Number(2)});
  }
  return versions;
}

void CarriedHistory::Add(const CarriedEntry& carried) {
  const WorkEntry& entry = carried.entry;
  {
    const StatementUse store(session_.Own(
        "INSERT INTO AuditEntries (RID, At, Who, Origin, UnitKey, Previous, What, Rows, Hash) "
        "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)"));
    store->BindNumber(1, entry.entry);
    store->BindText(2, entry.at);
    store->BindText(3, entry.who);
    store->BindText(4, entry.origin);
    if (entry.unitKey) store->BindNumber(5, *entry.unitKey);
    if (carried.previous) store->BindNumber(6, *carried.previous);
    store->BindText(7, entry.what);
    store->BindText(8, carried.rows.front());
    store->BindText(9, carried.hash);
    store->Step();
  }
  for (std::size_t piece = 1; piece < carried.rows.size(); ++piece) {
    const StatementUse insert(
        session_.Own("INSERT INTO AuditRows (Entry, Piece, Rows) VALUES (?1, ?2, ?3)"));
    insert->BindNumber(1, entry.entry);
    insert->BindNumber(2, static_cast<std::int64_t>(piece));
    insert->BindText(3, carried.rows[piece]);
    insert->Step();
  }
}

void CarriedHistory::AddVersion(std::int32_t unitKey, const UnitVersion& version) {
  const StatementUse insert(
      session_.Own("INSERT INTO UnitVersions (UnitKey, Entry, Mark) VALUES (?1, ?2, ?3)"));
  insert->BindNumber(1, unitKey);
  insert->BindNumber(2, version.entry);
  insert->BindNumber(3, version.mark);
  insert->Step();
}

}  // namespace qorhost::sqlite
