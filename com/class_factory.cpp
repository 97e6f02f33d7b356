#include "com/class_factory.h"

#include <new>

#include "com/controller_dispatch.h"

namespace qorcred::com {

bool ClassFactory::Answers(REFIID iid) const {
  return IsEqualIID(iid, IID_IClassFactory);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  try {
    return ControllerDispatch::Create(class_, iid, object);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock != FALSE) {
    LockModule();
  } else {
    UnlockModule();
  }
  return S_OK;
}

}  // namespace qorcred::com
