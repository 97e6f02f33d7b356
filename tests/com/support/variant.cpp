#include "tests/com/support/variant.h"

#include <gtest/gtest.h>

namespace qortest {

Variant::Variant(bool flag) : Variant() {
  V_VT(this) = VT_BOOL;
  V_BOOL(this) = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(short number) : Variant() {
  V_VT(this) = VT_I2;
  V_I2(this) = number;
}

Variant::Variant(int number) : Variant() {
  V_VT(this) = VT_I4;
  V_I4(this) = number;
}

Variant::Variant(double number) : Variant() {
  V_VT(this) = VT_R8;
  V_R8(this) = number;
}

Variant::Variant(const std::wstring& text) : Variant() {
  V_VT(this) = VT_BSTR;
  V_BSTR(this) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

Variant::Variant(IDispatch* object) : Variant() {
  V_VT(this) = VT_DISPATCH;
  V_DISPATCH(this) = object;
  if (object != nullptr) object->AddRef();
}

Variant::Variant(const Variant& other) : VARIANT{} {
  VariantInit(this);
  VARIANT source = other;  // automation wants it writable and leaves it alone
  EXPECT_EQ(VariantCopy(this, &source), S_OK);
}

Variant Variant::From(const VARIANT& variant) {
  Variant copy;
  VARIANT source = variant;
  EXPECT_EQ(VariantCopyInd(&copy, &source), S_OK);
  return copy;
}

Variant Variant::Null() {
  Variant null;
  V_VT(&null) = VT_NULL;
  return null;
}

Variant Variant::Omitted() {
  Variant omitted;
  V_VT(&omitted) = VT_ERROR;
  V_ERROR(&omitted) = DISP_E_PARAMNOTFOUND;
  return omitted;
}

Variant Variant::Unknown(IUnknown* object) {
  Variant unknown;
  V_VT(&unknown) = VT_UNKNOWN;
  V_UNKNOWN(&unknown) = object;
  if (object != nullptr) object->AddRef();
  return unknown;
}

Variant Variant::Day(double serial) {
  Variant date;
  V_VT(&date) = VT_DATE;
  V_DATE(&date) = serial;
  return date;
}

Variant Variant::As(VARTYPE type, const Variant& content) {
  Variant converted;
  VARIANT source = content;
  EXPECT_EQ(VariantChangeType(&converted, &source, 0, type), S_OK) << "type " << type;
  return converted;
}

Variant Variant::Reference(VARTYPE type, void* place) {
  Variant reference;
  V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | type);
  V_BYREF(&reference) = place;
  return reference;
}

std::wstring TextIn(const VARIANT& variant) {
  if (V_VT(&variant) != VT_BSTR) {
    ADD_FAILURE() << "no text but type " << V_VT(&variant);
    return {};
  }
  const BSTR text = V_BSTR(&variant);
  return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

int NumberIn(const VARIANT& variant) {
  Variant number;
  VARIANT source = variant;
  const bool isText = V_VT(&variant) == VT_BSTR;
  if (isText || FAILED(VariantChangeType(&number, &source, 0, VT_I4))) {
    ADD_FAILURE() << "no number but type " << V_VT(&variant);
    return 0;
  }
  return V_I4(&number);
}

IDispatch* ObjectIn(const VARIANT& variant) {
  return V_VT(&variant) == VT_DISPATCH ? V_DISPATCH(&variant) : nullptr;
}

}  // namespace qortest
