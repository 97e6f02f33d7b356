#include "host/store/audit_chain_check.h"

#include "host/store/audit_chain.h"
#include "host/store/audit_rows.h"

namespace qorhost {

std::optional<ChainFault> FaultIn(const ReadEntry& read) {
  using Kind = ChainFault::Kind;
  if (read.missing) {
    return ChainFault{Kind::kMissing, *read.missing, read.entry.unitKey};
  }
  if (read.hash != read.expected) {
    return ChainFault{Kind::kAltered, read.entry.entry, read.entry.unitKey};
  }
  if (!CanBeRead(read.rows)) {
    return ChainFault{Kind::kUnreadable, read.entry.entry, read.entry.unitKey};
  }
  return std::nullopt;
}

void AuditChainCheck::Take(ReadEntry& read) {
  // Numbers are given one after the other, and none is given back.
  if (read.entry.entry != last_ + 1) {
    read.missing = last_ + 1;
  }
  last_ = read.entry.entry;
  read.expected = HashOf(read.entry, Before(read, read.missing), read.rows);
  Add(read.entry, useExpected_ ? read.expected : read.hash);
}

/// The hashes that an entry is made of; `missing` gets an entry that it names and that is not
/// there.
std::vector<std::string> AuditChainCheck::Before(const ReadEntry& read,
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

void AuditChainCheck::Add(const WorkEntry& entry, const std::string& hash) {
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

}  // namespace qorhost
