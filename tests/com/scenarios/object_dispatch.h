// The library's own objects as automation objects, so that a recording host can stand behind the
// component.
#pragma once

#include <windows.h>

#include "com/ownership.h"
#include "frame/object.h"

namespace qortest {

/// Raised by an object: the call ends with this code, and nothing is told beside it.
struct BareCode {
  HRESULT code;
};

/// An automation object whose members are those of `object`; null for null. The same object comes
/// back when it is handed over as an argument. METHOD alone is a call, with PROPERTYGET a read.
[[nodiscard]] qorcred::com::ComPtr<IDispatch> AsAutomationObject(const qorcred::ObjectRef& object);

/// Automation objects made by AsAutomationObject() that are alive.
[[nodiscard]] int LiveAutomationObjects();

}  // namespace qortest
