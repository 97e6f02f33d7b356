// A controller as automation clients see it.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>
#include <memory>

#include "com/call_trace.h"
#include "com/classes.h"
#include "com/module.h"
#include "com/ownership.h"

namespace qorcred::com {

/// IDispatch and ISupportErrorInfo over a controller's member table. Parameters have the
/// identifiers 0, 1, ... and may be named. A refused argument gives its own code and place; what an
/// operation raises comes as DISP_E_EXCEPTION with its number. Belongs to the apartment that made
/// it; lives until the last reference is released.
class alignas(kRoomAlignment) ControllerDispatch final : public IDispatch,
                                                         public ISupportErrorInfo {
 public:
  /// Makes one and gives its interface `iid`, or E_NOINTERFACE. Raises what creating the controller
  /// raises.
  static HRESULT Create(const ComClass& comClass, REFIID iid, void** object);
  ControllerDispatch(const ControllerDispatch&) = delete;
  ControllerDispatch& operator=(const ControllerDispatch&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT* badArgument) override;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

 private:
  explicit ControllerDispatch(const ComClass& comClass);
  ~ControllerDispatch() = default;

  /// With room for the controller behind the object.
  static void* operator new(std::size_t size, std::size_t room);
  static void operator delete(void* memory, std::size_t room);
  static void operator delete(void* memory);

  KeepLoaded keepLoaded_;
  const ComClass& class_;
  std::atomic<ULONG> references_{0};
  TraceableController controller_;
};

}  // namespace qorcred::com
