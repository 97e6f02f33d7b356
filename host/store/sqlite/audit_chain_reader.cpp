#include "host/store/sqlite/audit_chain_reader.h"

namespace qorhost::sqlite {

WorkEntry EntryIn(const Statement& read) {
  WorkEntry entry;
  entry.entry = read.Number(0);
  entry.at = read.Text(1);
  entry.who = read.Text(2);
  entry.origin = read.Text(3);
  if (!read.IsNull(4)) {
    entry.unitKey = static_cast<std::int32_t>(read.Number(4));
  }
  entry.what = read.Text(5);
  return entry;
}

AuditChainCheck ReadAudit(const Database& database, bool useExpected,
                          const std::function<void(const ReadEntry&)>& use) {
  Statement entries(database,
                    "SELECT RID, At, Who, Origin, UnitKey, What, Previous, Rows, Hash "
                    "FROM AuditEntries ORDER BY RID");
  Statement pieces(database, "SELECT Rows FROM AuditRows WHERE Entry=?1 ORDER BY Piece");
  AuditChainCheck check(useExpected);
  while (entries.Step()) {
    ReadEntry read;
    read.entry = EntryIn(entries);
    if (!entries.IsNull(6)) {
      read.previous = entries.Number(6);
    }
    read.rows.emplace_back(entries.Text(7));
    read.hash = entries.Text(8);
    const StatementUse further(pieces);
    further->BindNumber(1, read.entry.entry);
    while (further->Step()) {
      read.rows.emplace_back(further->Text(0));
    }
    check.Take(read);
    use(read);
  }
  return check;
}

}  // namespace qorhost::sqlite
