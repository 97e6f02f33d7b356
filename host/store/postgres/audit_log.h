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
  /// The last entry of a unit; 0 for none. The hash is "" where it was not read.
  struct Previous {
    std::int64_t entry = 0;
    std::string hash;
  };
  /// Asks for the number of the entry to come with the message that takes the right to write one
  /// unit; where nothing is added, the number is left out.
  void AskForNumber(std::int32_t unitKey);
  /// Adds an entry. The right to write is held: it gets its number behind all those of its unit,
  /// and one of the whole store behind all. What it says of where it comes from ends with the login
  /// at the server. The server is sent it with the commit. `previous` is of no meaning for an entry
  /// of the whole store.
  Added Append(WorkEntry entry, const Previous& previous, const std::vector<RowChange>& changes);

 private:
  [[nodiscard]] std::string HashOfPrevious(std::int64_t entry, std::int32_t unitKey);
  [[nodiscard]] std::vector<std::string> HashesBehind(const WorkEntry& entry,
                                                      const Previous& previous);

  Session& session_;
};

}  // namespace qorhost::postgres
