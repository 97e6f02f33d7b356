#include "host/store/work_course.h"

#include <string>
#include <utility>

#include "host/dialect/canonical_date.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost {

void WorkCourse::SignAs(Author author) {
  author_ = std::move(author);
}

void WorkCourse::Begin(WorkOrder order) {
  if (open_ || isInTransaction()) {
    throw StoreError("An operation is under way already: end it first");
  }
  order_ = std::move(order);
  committed_.clear();
  void_ = VoidReason::kNone;
  open_ = true;
}

void WorkCourse::Lock() {
  if (locked_) {
    return;
  }
  order_.filled.reset();
  TakeRightToWrite();
}

void WorkCourse::TakeRightToWrite() {
  try {
    const std::optional<UnitVersion> version = TakeRight();
    locked_ = true;
    // A statement of its own: it sees what was stored while the right was waited for.
    before_ = version                ? *version
              : order_.units.empty() ? UnitVersion{}
                                     : VersionOf(order_.units.front());
    if (order_.filled.has_value() && before_ != *order_.filled) {
      Void(VoidReason::kStale);
      throw StoreError(std::string(WordsOf(VoidReason::kStale)));
    }
    log_.Start();
  } catch (...) {
    Void(VoidReason::kFailed);
    ReleaseRightToWrite();
    throw;
  }
}

void WorkCourse::RequireUsable() {
  if (!open_) {
    return;
  }
  if (locked_ && !isInTransaction()) {
    Void(VoidReason::kFailed);  // the engine gave it up by itself and has undone everything
  }
  if (void_ != VoidReason::kNone) {
    throw StoreError(std::string(WordsOf(void_)));
  }
}

void WorkCourse::BeforeWrite() {
  RequireUsable();
  if (open_ && !locked_) {
    TakeRightToWrite();
  }
}

void WorkCourse::AfterFailedWrite() noexcept {
  if (open_) {
    Void(VoidReason::kFailed);
  }
}

void WorkCourse::WriteHeld() {
  try {
    buffer_.Write();
  } catch (...) {
    AfterFailedWrite();
    throw;
  }
}

std::int64_t WorkCourse::written() const noexcept {
  return locked_ ? log_.touched() + buffer_.held() : 0;
}

std::int64_t WorkCourse::stepsQueued() const noexcept {
  const HeldRows* const steps = buffer_.RowsOf("ProgramSteps");
  return log_.steps() + (steps == nullptr ? 0 : static_cast<std::int64_t>(steps->count()));
}

void WorkCourse::KeepCounts(std::int32_t unitKey, const UnitCounts& now) {
  if (!locked_) {
    throw StoreError("Counts are kept while nobody else can write: take the right to write first");
  }
  log_.Follow(unitKey, now);
}

void WorkCourse::Void(VoidReason reason) noexcept {
  if (void_ == VoidReason::kNone) {
    void_ = reason;
  }
}

void WorkCourse::Forgive() noexcept {
  // What the engine gave up as a whole is lost for every part of it.
  if (locked_ && isInTransaction()) {
    void_ = VoidReason::kNone;
  }
}

bool WorkCourse::Commit() {
  if (!open_) {
    throw StoreError("There is no operation to store: begin one first");
  }
  try {
    RequireUsable();
    WriteHeld();
    if (locked_) {
      log_.RequireComplete();
    }
    const bool stored = locked_ && written() > 0;
    if (stored) {
      if (onlyTried_) {
        tried_.insert(tried_.end(), log_.changes().begin(), log_.changes().end());
      } else {
        log_.Stop();
        committed_ = Store(EntryNow(), before_.entry);
      }
    }
    Undo();
    return stored;
  } catch (...) {
    Undo();
    throw;
  }
}

WorkEntry WorkCourse::EntryNow() const {
  WorkEntry entry;
  entry.at = dialect::CanonicalDate(author_.utc ? author_.utc() : clock_.Clocked());
  entry.who = author_.who;
  entry.origin = author_.origin;
  entry.unitKey = unit();
  entry.what = order_.what;
  return entry;
}

std::optional<UnitVersion> WorkCourse::Committed(std::int32_t unitKey) const {
  const auto found = committed_.find(unitKey);
  return found == committed_.end() ? std::nullopt : std::optional(found->second);
}

void WorkCourse::Undo() noexcept {
  if (!open_) {
    return;
  }
  ReleaseRightToWrite();
  open_ = false;
}

void WorkCourse::ReleaseRightToWrite() noexcept {
  log_.Stop();
  locked_ = false;
  DropHeld();
  GiveRightBack();
}

}  // namespace qorhost
