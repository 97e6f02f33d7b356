#include "frame/controls.h"

#include "frame/runtime_error.h"

namespace qorcred {

View::View(ObjectRef object) : object_(std::move(object)) {
  if (object_ == nullptr) throw RuntimeError(ErrorNumber::kObjectNotSet);
}

void DatePicker::SetEndOfDay() const {
  Put(object(), "Hour", 23);
  Put(object(), "Minute", 59);
  Put(object(), "Second", 59);
}

}  // namespace qorcred
