// Whether the entries of the audit are as they were written, read one after the other.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/store/audit_log.h"

namespace qorhost {

/// An entry as it stands in the store, and what its hash must be.
struct ReadEntry {
  WorkEntry entry;
  std::optional<std::int64_t> previous;
  std::vector<std::string> rows;  ///< in pieces
  std::string hash;               ///< as it is stored
  std::string expected;           ///< made of the entry and of the hashes that stand before it
  /// An entry that it follows or that stands before it is not there.
  std::optional<std::int64_t> missing;
};

/// What is wrong with an entry that was checked; nothing when it is as it was written.
[[nodiscard]] std::optional<ChainFault> FaultIn(const ReadEntry& read);

/// Takes every entry, oldest first.
class AuditChainCheck {
 public:
  /// With `useExpected` an entry's hash is made of those that the entries before it must have
  /// instead of those that are stored: an entry that was altered is told once otherwise, and not
  /// with every one behind it.
  explicit AuditChainCheck(bool useExpected) : useExpected_(useExpected) {}

  /// Sets what the entry's hash must be, and what is missing.
  void Take(ReadEntry& read);
  /// The number of the last one that was taken.
  [[nodiscard]] std::int64_t last() const noexcept { return last_; }

 private:
  [[nodiscard]] std::vector<std::string> Before(const ReadEntry& read,
                                                std::optional<std::int64_t>& missing) const;
  void Add(const WorkEntry& entry, const std::string& hash);

  bool useExpected_;
  std::int64_t last_ = 0;
  std::map<std::int64_t, std::string> hashes_;
  // Which entries no other one follows yet: the last of the store, and those behind it.
  std::set<std::int64_t> ends_;
  std::map<std::int32_t, std::int64_t> ofUnits_;  // behind the last one of the whole store
};

}  // namespace qorhost
