// The audit, in the tables AuditEntries and AuditRows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/store/audit_log.h"

namespace qorhost::sqlite {

class Session;

class AuditLog final : public qorhost::AuditLog {
 public:
  explicit AuditLog(Session& session) : session_(session) {}

  [[nodiscard]] std::vector<WorkEntry> After(std::int64_t entry,
                                             std::optional<std::int32_t> unitKey) override;
  [[nodiscard]] std::optional<WorkEntry> Find(std::int64_t entry) override;
  [[nodiscard]] std::vector<RowChange> RowsOf(std::int64_t entry) override;
  [[nodiscard]] std::string HashOf(std::int64_t entry) override;
  [[nodiscard]] std::vector<ChainHead> Heads() override;
  [[nodiscard]] std::vector<ChainFault> Check() override;
  [[nodiscard]] std::optional<std::int64_t> PutBack(const RowChange& change) override;

  // For the unit of work, at its end.

  /// Adds an entry behind the last one and returns its number. `previous` is the last one of its
  /// unit, 0 for none; of no meaning for an entry of the whole store.
  std::int64_t Append(WorkEntry entry, std::int64_t previous,
                      const std::vector<RowChange>& changes);

 private:
  /// What a new entry goes on from: the last entry's number (0 for none), the last of its unit, and
  /// the hashes that its own is made of.
  struct ChainEnd {
    std::int64_t last = 0;
    std::optional<std::int64_t> previous;
    std::vector<std::string> hashes;
  };
  [[nodiscard]] ChainEnd EndBehind(std::int64_t previous);
  [[nodiscard]] ChainEnd EndForAll();

  Session& session_;
};

class Database;

/// Gives hashes to the entries of a store that has none yet.
void HashEarlierEntries(Database& database);

}  // namespace qorhost::sqlite
