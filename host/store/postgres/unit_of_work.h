// A unit of work as one transaction on the server.
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "host/store/postgres/audit_log.h"
#include "host/store/postgres/change_log.h"
#include "host/store/work_course.h"

namespace qorhost::postgres {

class Session;

/// The right to write is a unit's row, locked, or the table of all units. What the work has read
/// before that is compared by the version and never locked.
class UnitOfWork final : public WorkCourse {
 public:
  explicit UnitOfWork(Session& session);
  ~UnitOfWork() override;

  [[nodiscard]] UnitVersion VersionOf(std::int32_t unitKey) override;
  void DropHeld() noexcept override;

 private:
  [[nodiscard]] bool isInTransaction() const noexcept override;
  [[nodiscard]] std::optional<UnitVersion> TakeRight() override;
  Versions Store(WorkEntry entry, std::int64_t previous) override;
  void GiveRightBack() noexcept override;

  [[nodiscard]] std::optional<UnitVersion> LockUnit(std::int32_t unitKey);
  void LockNewUnit(std::int32_t unitKey);
  Versions RaiseVersions(std::int64_t entry);
  Versions RaiseVersion(std::int32_t unitKey, std::int64_t entry);

  Session& session_;
  ChangeLog log_;
  std::string number_;  // of its transaction
  std::random_device random_;
  AuditLog::Known known_;  // what came with the lock
};

}  // namespace qorhost::postgres
