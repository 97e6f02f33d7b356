// Owners of what automation counts, allocates or wants cleared.
#pragma once

#include <windows.h>

#include <utility>

namespace qorcred::com {

/// A counted reference to an interface.
template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  /// Adds a reference of its own.
  explicit ComPtr(Interface* pointer) : pointer_(pointer) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.pointer_) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() {
    if (pointer_ != nullptr) pointer_->Release();
  }

  [[nodiscard]] Interface* get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }
  /// Where a call leaves a reference that is then owned here. What was held is released.
  [[nodiscard]] Interface** Receive() {
    *this = ComPtr();
    return &pointer_;
  }
  [[nodiscard]] void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }
  /// Gives the reference away.
  [[nodiscard]] Interface* Detach() { return std::exchange(pointer_, nullptr); }

 private:
  Interface* pointer_ = nullptr;
};

/// Frees what a variant holds, for good: what it held is not to be looked at again. Numbers, which
/// most are, cost no call.
inline void Clear(VARIANT& variant) {
  switch (V_VT(&variant)) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_BOOL:
    case VT_I2:
    case VT_I4:
    case VT_R8:
    case VT_DATE:
    case VT_ERROR:
      return;
    case VT_BSTR:
      SysFreeString(V_BSTR(&variant));
      return;
    default:
      VariantClear(&variant);
  }
}

/// A variant that is cleared at its end.
struct OwnedVariant : VARIANT {
  OwnedVariant() { V_VT(this) = VT_EMPTY; }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { Clear(*this); }
};

/// What a failed call tells of its failure.
struct OwnedExcepInfo : EXCEPINFO {
  OwnedExcepInfo() : EXCEPINFO{} {}
  OwnedExcepInfo(const OwnedExcepInfo&) = delete;
  OwnedExcepInfo& operator=(const OwnedExcepInfo&) = delete;
  // One by one: gathered in a list they would be copied first, at every call.
  ~OwnedExcepInfo() {
    if (bstrSource != nullptr) SysFreeString(bstrSource);
    if (bstrDescription != nullptr) SysFreeString(bstrDescription);
    if (bstrHelpFile != nullptr) SysFreeString(bstrHelpFile);
  }
};

}  // namespace qorcred::com
