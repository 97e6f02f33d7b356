// The audit, in the tables AuditEntries and AuditRows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/store/audit_log.h"

namespace qorhost::postgres {

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

  struct Added {
    std::int64_t entry = 0;
    std::string hash;
  };
  /// What came with the lock of the one unit that the entry is of; where it has not, it is asked
  /// for.
  struct Known {
    std::int64_t number = 0;     ///< of the entry; 0: not known, and the login neither
    std::string login;           ///< by which the server knows who stores it
    std::string hashOfPrevious;  ///< of the unit's last entry; "": not known
  };
  /// Adds an entry. The right to write is held: it gets its number behind all those of its unit,
  /// and one of the whole store behind all. What it says of where it comes from ends with the login
  /// at the server. The server is sent it with the commit. `previous` is the unit's last entry, 0
  /// for none; of no meaning for an entry of the whole store.
  Added Append(WorkEntry entry, std::int64_t previous, const Known& known,
               const std::vector<RowChange>& changes);

 private:
  [[nodiscard]] std::string HashOfPrevious(std::int64_t entry, std::int32_t unitKey);
  [[nodiscard]] std::vector<std::string> HashesBehind(const WorkEntry& entry, std::int64_t previous,
                                                      const Known& known);

  Session& session_;
};

}  // namespace qorhost::postgres
