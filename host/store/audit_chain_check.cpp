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
  read.expected = HashOf(read.entry, Before(read, read.missing), read.rows);
  Add(read.entry, useExpected_ ? read.expected : read.hash);
}

/// The last entry that concerns the unit, 0 for none.
std::int64_t AuditChainCheck::EndOf(std::int32_t unitKey) const {
  const auto found = ofUnits_.find(unitKey);
  return found == ofUnits_.end() ? ofStore_ : found->second;
}

/// The hashes that an entry is made of; `missing` gets an entry that it names and that is not
/// there. One that names another one than the last has followed a chain of its own: its hash is
/// none of these.
std::vector<std::string> AuditChainCheck::Before(const ReadEntry& read,
                                                 std::optional<std::int64_t>& missing) const {
  std::vector<std::string> hashes;
  if (!read.entry.unitKey) {
    for (const auto& [entry, hash] : ends_) {
      hashes.push_back(hash);
    }
    return hashes;
  }
  const std::int64_t end = EndOf(*read.entry.unitKey);
  if (read.previous > end) {
    missing = read.previous;
  }
  // A unit that came past the program follows nothing with its first.
  if (read.previous || units_.contains(*read.entry.unitKey)) {
    const auto found = ends_.find(end);
    hashes.push_back(found == ends_.end() ? std::string() : found->second);
  }
  return hashes;
}

void AuditChainCheck::Add(const WorkEntry& entry, const std::string& hash) {
  if (!entry.unitKey) {
    ofStore_ = entry.entry;
    ofUnits_.clear();
    ends_.clear();
  } else {
    const auto [place, isFirst] = ofUnits_.try_emplace(*entry.unitKey, entry.entry);
    if (!isFirst) {
      ends_.erase(place->second);
      place->second = entry.entry;
    }
    units_.insert(*entry.unitKey);
  }
  ends_[entry.entry] = hash;
}

std::optional<ChainFault> AuditChainCheck::FaultOfVersion(std::int32_t unitKey,
                                                          std::int64_t entry) const {
  using Kind = ChainFault::Kind;
  const std::int64_t end = EndOf(unitKey);
  if (entry == end) {
    return std::nullopt;
  }
  // A version that stands before the last entry was set back, or left behind by that entry.
  return entry > end ? ChainFault{Kind::kMissing, entry, unitKey}
                     : ChainFault{Kind::kAltered, end, unitKey};
}

}  // namespace qorhost
