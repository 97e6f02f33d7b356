// The rows that a unit of work changes, as SQLite tells them while it changes them.
#pragma once

#include <cstdint>

#include "host/store/change_log.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/kept_counts.h"

namespace qorhost::sqlite {

/// Watches the audited tables of a database from its beginning to its end.
class ChangeLog final : public qorhost::ChangeLog {
 public:
  explicit ChangeLog(Database& database);
  ~ChangeLog() override;

  void Start() override;
  void Follow(std::int32_t unitKey, const UnitCounts& now) override;

 private:
  struct Hook;
  friend struct Hook;

  using Watched = ChangeList::Watched;

  void ReadTables();
  void OnInsert(Watched& table, std::int64_t rid);
  void OnUpdate(const Watched& table, std::int64_t rid);
  void OnDelete(const Watched& table, std::int64_t rid);

  Database& database_;
  KeptCounts counts_;
};

}  // namespace qorhost::sqlite
