#include "frame/controls.h"

#include "frame/runtime_error.h"

namespace qorcred {

View::View(ObjectRef object) : object_(std::move(object)) {
  if (object_ == nullptr) throw RuntimeError(ErrorNumber::kObjectNotSet);
}

void DatePicker::SetEndOfDay() const {
  SetHour(23);
  SetMinute(59);
  SetSecond(59);
}

}  // namespace qorcred
