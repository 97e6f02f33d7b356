// What a desk itself writes, past every controller, as one unit of work.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// A unit of work beside nobody else: everything is read and written while others wait. Undone
/// unless it is ended. Inside a unit of work of many operations it is a part of that, which ends
/// it. The session must outlive it.
class OwnWork {
 public:
  /// `what` it does, as the audit names it. No units, or several, mean the whole store.
  OwnWork(DeskSession& session, std::vector<std::int32_t> units, std::string what) {
    UnitOfWork& work = session.sql().work();
    if (!work.open()) {
      guard_.emplace(work, WorkOrder{std::move(units), std::move(what), {}});
    }
    work.Lock();
  }

  /// Stores what was written; of a trial nothing. Raises StoreError, and nothing is stored then.
  void End(Trial trial) {
    if (!guard_) {
      return;
    }
    if (trial == Trial::kYes) {
      guard_->Undo();
    } else {
      guard_->Commit();
    }
  }

 private:
  std::optional<WorkGuard> guard_;
};

}  // namespace qorhost
