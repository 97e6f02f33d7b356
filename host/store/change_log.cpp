#include "host/store/change_log.h"

#include "host/store/store_error.h"

namespace qorhost {

void ChangeLog::Start() {
  list_.Start();
  units_.ForgetAll();
  missed_ = Missed::kNone;
  on_ = true;
}

void ChangeLog::Stop() noexcept {
  on_ = false;
  units_.ForgetAll();
}

void ChangeLog::NoteHere(Place& place) const {
  list_.NoteHere(place.list);
  place.units = units_.Here();
}

void ChangeLog::GoBackTo(const Place& place) {
  list_.GoBackTo(place.list);
  units_.GoBackTo(place.units);
}

void ChangeLog::RequireComplete() const {
  switch (missed_) {
    case Missed::kNone:
      return;
    case Missed::kNoMemory:
      throw StoreError("The changes could not be written down for the audit: nothing was stored",
                       StoreFault::kNoMemory);
    case Missed::kNotUnderstood:
      throw StoreError(
          "The server tells of a changed row in other words than the store's own: nothing was "
          "stored; ask its administrator who has altered the store's triggers");
  }
}

void ChangeLog::Follow(std::int32_t unitKey, const UnitCounts& now) {
  units_.Follow(unitKey, now);
}

}  // namespace qorhost
