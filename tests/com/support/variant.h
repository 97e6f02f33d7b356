// Variants as tests write them down.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "com/ownership.h"

namespace qortest {

using qorcred::com::ComPtr;

/// A variant with its content: cleared at its end, copied as a whole.
struct Variant : VARIANT {
  Variant() { VariantInit(this); }
  Variant(bool flag);
  Variant(short number);
  Variant(int number);
  Variant(LONG number) : Variant(static_cast<int>(number)) {}
  Variant(double number);
  Variant(const wchar_t* text) : Variant(std::wstring(text)) {}
  Variant(const std::wstring& text);
  Variant(IDispatch* object);
  template <typename Interface>
  Variant(const ComPtr<Interface>& object) : Variant(static_cast<IDispatch*>(object.get())) {}
  Variant(const Variant& other);
  Variant(Variant&& other) noexcept : VARIANT(other) { V_VT(&other) = VT_EMPTY; }
  Variant& operator=(Variant other) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    return *this;
  }
  ~Variant() { VariantClear(this); }

  /// A copy of what `variant` holds, references followed.
  [[nodiscard]] static Variant From(const VARIANT& variant);
  [[nodiscard]] static Variant Null();
  [[nodiscard]] static Variant Omitted();
  [[nodiscard]] static Variant Unknown(IUnknown* object);
  [[nodiscard]] static Variant Day(double serial);
  /// A number, or the text of one, as any type that automation converts it to.
  [[nodiscard]] static Variant As(VARTYPE type, const Variant& content);
  /// A reference to `place`, which must hold what `type` says.
  [[nodiscard]] static Variant Reference(VARTYPE type, void* place);
  /// A reference to a variant.
  [[nodiscard]] static Variant Reference(VARIANT& place) { return Reference(VT_VARIANT, &place); }
};

/// Texts to compare with; zeros inside count. Any other type fails the test and gives "".
[[nodiscard]] std::wstring TextIn(const VARIANT& variant);
/// A whole number of whatever type. Any other content fails the test and gives 0.
[[nodiscard]] int NumberIn(const VARIANT& variant);
/// The object in `variant`, which stays there; null for any other content.
[[nodiscard]] IDispatch* ObjectIn(const VARIANT& variant);

/// A text of the automation allocator.
class Bstr {
 public:
  explicit Bstr(const std::wstring& text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;

  [[nodiscard]] BSTR* place() { return &text_; }
  [[nodiscard]] std::wstring text() const {
    return text_ == nullptr ? std::wstring() : std::wstring(text_, SysStringLen(text_));
  }

 private:
  BSTR text_;
};

}  // namespace qortest
