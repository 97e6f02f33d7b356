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
  std::optional<std::int64_t> missing;  ///< an entry that it follows and that is not there
};

/// What is wrong with an entry that was checked; nothing when it is as it was written.
[[nodiscard]] std::optional<ChainFault> FaultIn(const ReadEntry& read);

/// Takes every entry, in the order of their numbers. That is the order in which those of a unit
/// were stored, and those of the whole store among all; numbers may be left out.
class AuditChainCheck {
 public:
  /// With `useExpected` an entry's hash is made of those that the entries before it must have
  /// instead of those that are stored: an entry that was altered is told once otherwise, and not
  /// with every one behind it.
  explicit AuditChainCheck(bool useExpected) : useExpected_(useExpected) {}

  /// Sets what the entry's hash must be, and what is missing.
  void Take(ReadEntry& read);
  /// Once all were taken: what is wrong with the entry by which a unit's version goes.
  [[nodiscard]] std::optional<ChainFault> FaultOfVersion(std::int32_t unitKey,
                                                         std::int64_t entry) const;

 private:
  [[nodiscard]] std::int64_t EndOf(std::int32_t unitKey) const;
  [[nodiscard]] std::vector<std::string> Before(const ReadEntry& read,
                                                std::optional<std::int64_t>& missing) const;
  void Add(const WorkEntry& entry, const std::string& hash);

  bool useExpected_;
  // The hashes of those that no other one follows yet: the last of the store, and those behind it.
  std::map<std::int64_t, std::string> ends_;
  std::int64_t ofStore_ = 0;                      // the last one of the whole store
  std::map<std::int32_t, std::int64_t> ofUnits_;  // behind that
  std::set<std::int32_t> units_;                  // that have one of their own
};

}  // namespace qorhost
