// Makes controllers for clients.
#pragma once

#include <windows.h>

#include <atomic>

#include "com/classes.h"
#include "com/module.h"

namespace qorcred::com {

/// The factory of one class. Gives no aggregated objects.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ComClass& comClass) : class_(comClass) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ~ClassFactory() = default;

  KeepLoaded keepLoaded_;
  const ComClass& class_;
  std::atomic<ULONG> references_{1};
};

}  // namespace qorcred::com
