#include "host/store/change_log.h"

#include "host/store/store_error.h"

namespace qorhost {

void ChangeLog::Start() {
  list_.Start();
  units_.ForgetAll();
  incomplete_ = false;
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
  if (incomplete_) {
    throw StoreError("The changes could not be written down for the audit: nothing was stored",
                     StoreFault::kNoMemory);
  }
}

void ChangeLog::Follow(std::int32_t unitKey, const UnitCounts& now) {
  units_.Follow(unitKey, now);
}

}  // namespace qorhost
