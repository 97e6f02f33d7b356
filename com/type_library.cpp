#include "com/type_library.h"

#include "com/module.h"
#include "com/ownership.h"

namespace qorcred::com {

HRESULT TypeInfoOf(REFIID dispinterface, ITypeInfo** info) noexcept {
  try {
    ComPtr<ITypeLib> library;
    const HRESULT loaded = LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Receive());
    return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(dispinterface, info);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace qorcred::com
