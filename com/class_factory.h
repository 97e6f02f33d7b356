// Makes controllers for clients.
#pragma once

#include <windows.h>

#include "com/classes.h"
#include "com/counted.h"
#include "com/module.h"

namespace qorcred::com {

/// The factory of one class. Gives no aggregated objects.
class ClassFactory final : public Counted<IClassFactory> {
 public:
  explicit ClassFactory(const ComClass& comClass) : class_(comClass) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override;

  KeepLoaded keepLoaded_;
  const ComClass& class_;
};

}  // namespace qorcred::com
