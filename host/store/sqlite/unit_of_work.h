// A unit of work as one transaction of SQLite.
#pragma once

#include <cstdint>
#include <optional>

#include "host/store/sqlite/change_log.h"
#include "host/store/sqlite/database.h"
#include "host/store/work_course.h"

namespace qorhost::sqlite {

class Session;

class UnitOfWork final : public WorkCourse {
 public:
  explicit UnitOfWork(Session& session);
  ~UnitOfWork() override;

  [[nodiscard]] UnitVersion VersionOf(std::int32_t unitKey) override;

 private:
  [[nodiscard]] bool isInTransaction() const noexcept override;
  [[nodiscard]] std::optional<UnitVersion> TakeRight() override;
  Versions Store(WorkEntry entry, std::int64_t previous) override;
  void GiveRightBack() noexcept override;

  void RequireInPlace();
  Versions RaiseVersions(std::int64_t entry);
  Versions RaiseVersion(std::int32_t unitKey, std::int64_t entry);

  Session& session_;
  OftenRun begin_{"BEGIN IMMEDIATE"};
  OftenRun commit_{"COMMIT"};
  ChangeLog log_;
};

}  // namespace qorhost::sqlite
