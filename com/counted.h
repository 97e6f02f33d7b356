// What objects with one interface share.
#pragma once

#include <windows.h>

#include <atomic>

namespace qorcred::com {

/// Identity and references of an object that has `Interface` and nothing beside it. It is made with
/// one reference and deletes itself with the last.
template <typename Interface>
class Counted : public Interface {
 public:
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) final {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, IID_IUnknown) || Answers(iid);
    *object = known ? static_cast<Interface*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() final { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() final {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  Counted() = default;
  virtual ~Counted() = default;

 private:
  /// Whether `iid` names the interface, or one that it is made from.
  [[nodiscard]] virtual bool Answers(REFIID iid) const = 0;

  std::atomic<ULONG> references_{1};
};

}  // namespace qorcred::com
