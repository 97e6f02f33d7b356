#include "host/store/sqlite/audit_chain_reader.h"

#include "host/store/audit_chain.h"

namespace qorhost::sqlite {

namespace {

/// Which entries no other one follows yet, and the hashes of all.
class OpenEnds {
 public:
  /// The hashes that an entry is made of; `missing` gets an entry that it names and that is not
  /// there.
  [[nodiscard]] std::vector<std::string> Before(const ReadEntry& read,
                                                std::optional<std::int64_t>& missing) const {
    if (!read.entry.unitKey) {
      std::vector<std::string> hashes;
      for (const std::int64_t entry : ends_) {
        hashes.push_back(hashes_.at(entry));
      }
      return hashes;
    }
    if (!read.previous) {
      return {};
    }
    const auto found = hashes_.find(*read.previous);
    if (found == hashes_.end()) {
      missing = read.previous;
      return {std::string()};
    }
    return {found->second};
  }

  void Add(const WorkEntry& entry, const std::string& hash) {
    hashes_[entry.entry] = hash;
    if (!entry.unitKey) {
      ends_ = {entry.entry};
      ofUnits_.clear();
      return;
    }
    const auto [place, isFirst] = ofUnits_.try_emplace(*entry.unitKey, entry.entry);
    if (!isFirst) {
      ends_.erase(place->second);
      place->second = entry.entry;
    }
    ends_.insert(entry.entry);
  }

 private:
  std::map<std::int64_t, std::string> hashes_;
  std::set<std::int64_t> ends_;                   // the last of the store, and those behind it
  std::map<std::int32_t, std::int64_t> ofUnits_;  // behind the last one of the whole store
};

}  // namespace

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

void ReadAudit(const Database& database, bool useExpected,
               const std::function<void(const ReadEntry&)>& use) {
  Statement entries(database,
                    "SELECT RID, At, Who, Origin, UnitKey, What, Previous, Rows, Hash "
                    "FROM AuditEntries ORDER BY RID");
  Statement pieces(database, "SELECT Rows FROM AuditRows WHERE Entry=?1 ORDER BY Piece");
  OpenEnds ends;
  std::int64_t last = 0;
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
    // Numbers are given one after the other, and none is given back.
    if (read.entry.entry != last + 1) {
      read.missing = last + 1;
    }
    last = read.entry.entry;
    read.expected = HashOf(read.entry, ends.Before(read, read.missing), read.rows);
    ends.Add(read.entry, useExpected ? read.expected : read.hash);
    use(read);
  }
}

}  // namespace qorhost::sqlite
