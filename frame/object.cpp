#include "frame/object.h"

#include <algorithm>

#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
const ObjectRef& RequireObject(const Value& value) {
  const ObjectRef* object = value.As<ObjectRef>();
  if (object == nullptr) throw RuntimeError(ErrorNumber::kObjectRequired);
  if (*object == nullptr) throw RuntimeError(ErrorNumber::kObjectNotSet);
  return *object;
}

Object& RequireSet(const ObjectRef& object) {
  if (object == nullptr) throw RuntimeError(ErrorNumber::kObjectNotSet);
  return *object;
}

bool SameMember(std::string_view one, std::string_view other) noexcept {
  if (one.size() != other.size()) return false;
  // Nearly all callers write a name as it is.
  return one == other || std::equal(one.begin(), one.end(), other.begin(),
                                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

}  // namespace qorcred
