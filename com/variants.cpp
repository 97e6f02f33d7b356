#include "com/variants.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/text.h"
#include "com/windows_host.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorcred::com {

namespace {

[[noreturn]] void RaiseTypeMismatch() {
  throw RuntimeError(ErrorNumber::kTypeMismatch);
}

void Require(HRESULT result) {
  if (result == E_OUTOFMEMORY) throw RuntimeError(ErrorNumber::kOutOfMemory);
  if (result == DISP_E_OVERFLOW) throw RuntimeError(ErrorNumber::kOverflow);
  if (FAILED(result)) RaiseTypeMismatch();
}

// A whole number in the narrowest type that holds it.
template <typename Number>
Value WholeNumber(Number number) {
  if (number >= std::numeric_limits<std::int32_t>::min() &&
      number <= std::numeric_limits<std::int32_t>::max()) {
    return static_cast<std::int32_t>(number);
  }
  return static_cast<double>(number);
}

Value UnsignedNumber(std::uint64_t number) {
  if (number <= std::numeric_limits<std::int32_t>::max()) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

// A Single as its shortest text says it: 0.1, not 0.100000001490116.
Value SingleNumber(float number) {
  std::array<char, 32> text{};
  const std::to_chars_result written =
      std::to_chars(text.data(), text.data() + text.size(), number);
  double same = number;
  std::from_chars(text.data(), written.ptr, same);
  return same;
}

Value ObjectFrom(IUnknown* unknown) {
  if (unknown == nullptr) return ObjectRef();
  ComPtr<IDispatch> dispatch;
  if (FAILED(unknown->QueryInterface(IID_IDispatch, dispatch.ReceiveVoid()))) RaiseTypeMismatch();
  return Wrap(dispatch.get());
}

Value DecimalNumber(DECIMAL decimal) {
  double number = 0;
  Require(VarR8FromDec(&decimal, &number));
  return number;
}

Value CurrencyAmount(CY amount) {
  double number = 0;
  Require(VarR8FromCy(amount, &number));
  return number;
}

// Also by reference. Nothing of the array is looked at.
bool HoldsArray(const VARIANT& variant) {
  const VARIANT* place = &variant;
  if (V_VT(place) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(place) != nullptr) {
    place = V_VARIANTREF(place);
  }
  return (V_VT(place) & VT_ARRAY) != 0;
}

/// The elements of a one-dimensional array while they are locked.
class LockedArray {
 public:
  explicit LockedArray(SAFEARRAY* array) : array_(array) {
    if (array == nullptr || SafeArrayGetDim(array) != 1) RaiseTypeMismatch();
    Require(SafeArrayGetVartype(array, &type_));
    if (type_ != VT_BSTR && type_ != VT_VARIANT) RaiseTypeMismatch();
    // Counted, not reckoned from the bounds: near the ends of what a bound can be the upper one is
    // no number any more.
    size_ = array->rgsabound[0].cElements;
    // A description whose elements were never made, or are gone.
    if (size_ != 0 && array->pvData == nullptr) RaiseTypeMismatch();
    Require(SafeArrayAccessData(array, &data_));
  }
  ~LockedArray() { SafeArrayUnaccessData(array_); }
  LockedArray(const LockedArray&) = delete;
  LockedArray& operator=(const LockedArray&) = delete;

  [[nodiscard]] std::size_t size() const { return size_; }

  [[nodiscard]] std::string Text(std::size_t index) const {
    if (type_ == VT_BSTR) return FromBstr(static_cast<BSTR*>(data_)[index]);
    const VARIANT& element = static_cast<VARIANT*>(data_)[index];
    // Never a text, and one may hold itself by a reference: it is refused unread.
    if (HoldsArray(element)) RaiseTypeMismatch();
    return ToText(DateAsText(ToValue(element)));
  }

  void SetText(std::size_t index, const std::string& text) const {
    BSTR fresh = NewBstr(text);
    if (type_ == VT_BSTR) {
      BSTR& element = static_cast<BSTR*>(data_)[index];
      SysFreeString(element);
      element = fresh;
    } else {
      VARIANT& element = static_cast<VARIANT*>(data_)[index];
      VariantClear(&element);
      V_VT(&element) = VT_BSTR;
      V_BSTR(&element) = fresh;
    }
  }

 private:
  SAFEARRAY* array_;
  VARTYPE type_ = VT_EMPTY;
  std::size_t size_ = 0;
  void* data_ = nullptr;
};

Value TextsIn(SAFEARRAY* array) {
  const LockedArray elements(array);
  StringArray texts;
  texts.reserve(elements.size());
  for (std::size_t index = 0; index < elements.size(); ++index) {
    texts.push_back(elements.Text(index));
  }
  return texts;
}

// Texts keep the places that a client gave them; how many they are does not change.
void WriteTexts(SAFEARRAY* array, const StringArray& texts) {
  const LockedArray elements(array);
  if (elements.size() != texts.size()) RaiseTypeMismatch();
  for (std::size_t index = 0; index < texts.size(); ++index) {
    if (elements.Text(index) != texts[index]) elements.SetText(index, texts[index]);
  }
}

SAFEARRAY* NewArray(const StringArray& texts) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
  if (array == nullptr) throw RuntimeError(ErrorNumber::kOutOfMemory);
  try {
    const LockedArray elements(array);
    for (std::size_t index = 0; index < texts.size(); ++index) {
      elements.SetText(index, texts[index]);
    }
  } catch (...) {
    SafeArrayDestroy(array);
    throw;
  }
  return array;
}

Value ByReference(const VARIANT& variant) {
  if (V_BYREF(&variant) == nullptr) RaiseTypeMismatch();
  switch (V_VT(&variant) & ~VT_BYREF) {
    case VT_VARIANT: {
      const VARIANT& inner = *V_VARIANTREF(&variant);
      // A reference to a reference to a variant is not automation's.
      if (V_VT(&inner) == (VT_BYREF | VT_VARIANT)) RaiseTypeMismatch();
      return ToValue(inner);
    }
    case VT_DECIMAL:
      return DecimalNumber(*V_DECIMALREF(&variant));
    case VT_BSTR:
      return FromBstr(*V_BSTRREF(&variant));
    case VT_DISPATCH:
      return ObjectFrom(*V_DISPATCHREF(&variant));
    case VT_UNKNOWN:
      return ObjectFrom(*V_UNKNOWNREF(&variant));
    case VT_ARRAY | VT_BSTR:
    case VT_ARRAY | VT_VARIANT:
      return TextsIn(*V_ARRAYREF(&variant));
    default: {
      VARIANT reference = variant;
      OwnedVariant copy;
      Require(VariantCopyInd(&copy, &reference));
      return ToValue(copy);
    }
  }
}

// `Interface` is IDispatch or what every object has.
template <typename Interface>
void WriteObject(Interface*& place, const Value& value) {
  OwnedVariant fresh;
  PutInto(fresh, value);
  if (V_VT(&fresh) == VT_EMPTY) {
    V_VT(&fresh) = VT_DISPATCH;
    V_DISPATCH(&fresh) = nullptr;
  }
  if (V_VT(&fresh) != VT_DISPATCH) RaiseTypeMismatch();
  Interface* former = std::exchange(place, V_DISPATCH(&fresh));
  V_VT(&fresh) = VT_EMPTY;
  // Last: releasing may call back into the client.
  if (former != nullptr) former->Release();
}

// Writes a number of the type that `place` refers to.
void WriteNumber(VARIANT& place, const VARIANT& number) {
  switch (V_VT(&number)) {
    case VT_I1:
    case VT_UI1:
      *V_UI1REF(&place) = V_UI1(&number);
      return;
    case VT_UI2:
      *V_UI2REF(&place) = V_UI2(&number);
      return;
    case VT_UI4:
    case VT_UINT:
      *V_UI4REF(&place) = V_UI4(&number);
      return;
    case VT_I8:
    case VT_UI8:
      *V_I8REF(&place) = V_I8(&number);
      return;
    case VT_R4:
      *V_R4REF(&place) = V_R4(&number);
      return;
    case VT_CY:
      *V_CYREF(&place) = V_CY(&number);
      return;
    case VT_DECIMAL: {
      DECIMAL decimal = V_DECIMAL(&number);
      // Where a decimal stands in a variant, the variant's type lies in here.
      decimal.wReserved = V_DECIMALREF(&place)->wReserved;
      *V_DECIMALREF(&place) = decimal;
      return;
    }
    default:
      RaiseTypeMismatch();
  }
}

void WriteVariant(VARIANT& place, const Value& value) {
  const StringArray* texts = value.As<StringArray>();
  if (texts != nullptr && (V_VT(&place) & VT_ARRAY) != 0) {
    WriteTexts((V_VT(&place) & VT_BYREF) != 0 ? *V_ARRAYREF(&place) : V_ARRAY(&place), *texts);
    return;
  }
  if ((V_VT(&place) & VT_BYREF) != 0) {
    WriteBack(place, value);
    return;
  }
  OwnedVariant fresh;
  PutInto(fresh, value);
  std::swap(static_cast<VARIANT&>(fresh), place);
}

}  // namespace

Value ToValue(const VARIANT& variant) {
  if ((V_VT(&variant) & VT_BYREF) != 0) return ByReference(variant);
  switch (V_VT(&variant)) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Null{};
    case VT_BOOL:
      return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_I1:
      return static_cast<std::int16_t>(V_I1(&variant));
    case VT_UI1:
      return static_cast<std::int16_t>(V_UI1(&variant));
    case VT_I2:
      return static_cast<std::int16_t>(V_I2(&variant));
    case VT_UI2:
      return static_cast<std::int32_t>(V_UI2(&variant));
    case VT_I4:
      return static_cast<std::int32_t>(V_I4(&variant));
    case VT_INT:
      return static_cast<std::int32_t>(V_INT(&variant));
    case VT_UI4:
      return UnsignedNumber(V_UI4(&variant));
    case VT_UINT:
      return UnsignedNumber(V_UINT(&variant));
    case VT_I8:
      return WholeNumber(V_I8(&variant));
    case VT_UI8:
      return UnsignedNumber(V_UI8(&variant));
    case VT_R4:
      return SingleNumber(V_R4(&variant));
    case VT_R8:
      return V_R8(&variant);
    case VT_CY:
      return CurrencyAmount(V_CY(&variant));
    case VT_DECIMAL:
      return DecimalNumber(V_DECIMAL(&variant));
    case VT_DATE:
      return Date{V_DATE(&variant)};
    case VT_BSTR:
      return FromBstr(V_BSTR(&variant));
    case VT_DISPATCH:
      return ObjectFrom(V_DISPATCH(&variant));
    case VT_UNKNOWN:
      return ObjectFrom(V_UNKNOWN(&variant));
    case VT_ERROR:
      if (V_ERROR(&variant) == DISP_E_PARAMNOTFOUND) return Missing{};
      RaiseTypeMismatch();
    case VT_ARRAY | VT_BSTR:
    case VT_ARRAY | VT_VARIANT:
      return TextsIn(V_ARRAY(&variant));
    default:
      RaiseTypeMismatch();
  }
}

Value DateAsText(Value value) {
  const Date* date = value.As<Date>();
  return date == nullptr ? std::move(value) : Value(TheHost().DateText(*date));
}

void PutInto(VARIANT& variant, const Value& value) {
  V_VT(&variant) = VT_EMPTY;
  switch (value.type()) {
    case ValueType::kEmpty:
      return;
    case ValueType::kNull:
      V_VT(&variant) = VT_NULL;
      return;
    case ValueType::kBoolean:
      V_BOOL(&variant) = *value.As<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
      V_VT(&variant) = VT_BOOL;
      return;
    case ValueType::kInteger:
      V_I2(&variant) = *value.As<std::int16_t>();
      V_VT(&variant) = VT_I2;
      return;
    case ValueType::kLong:
      V_I4(&variant) = *value.As<std::int32_t>();
      V_VT(&variant) = VT_I4;
      return;
    case ValueType::kDouble:
      V_R8(&variant) = *value.As<double>();
      V_VT(&variant) = VT_R8;
      return;
    case ValueType::kDate:
      V_DATE(&variant) = value.As<Date>()->serial;
      V_VT(&variant) = VT_DATE;
      return;
    case ValueType::kString:
      V_BSTR(&variant) = NewBstr(*value.As<std::string>());
      V_VT(&variant) = VT_BSTR;
      return;
    case ValueType::kObject:
      V_DISPATCH(&variant) = Unwrap(*value.As<ObjectRef>()).Detach();
      V_VT(&variant) = VT_DISPATCH;
      return;
    case ValueType::kStringArray:
      V_ARRAY(&variant) = NewArray(*value.As<StringArray>());
      V_VT(&variant) = VT_ARRAY | VT_BSTR;
      return;
    case ValueType::kMissing:
      V_ERROR(&variant) = DISP_E_PARAMNOTFOUND;
      V_VT(&variant) = VT_ERROR;
      return;
  }
}

void WriteBack(VARIANT& argument, const Value& value) {
  if ((V_VT(&argument) & VT_BYREF) == 0) {
    // An array passed by value still shares its elements with the client; they stay as they are.
    return;
  }
  switch (V_VT(&argument) & ~VT_BYREF) {
    case VT_VARIANT:
      WriteVariant(*V_VARIANTREF(&argument), value);
      return;
    case VT_I2:
      *V_I2REF(&argument) = ToInteger(value);
      return;
    case VT_I4:
    case VT_INT:
      *V_I4REF(&argument) = ToLong(value);
      return;
    case VT_R8:
      *V_R8REF(&argument) = ToDouble(value);
      return;
    case VT_BOOL:
      *V_BOOLREF(&argument) = ToBoolean(value) ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case VT_DATE:
      *V_DATEREF(&argument) = ToDate(value).serial;
      return;
    case VT_BSTR: {
      BSTR fresh = NewBstr(TextOrEmpty(value));
      SysFreeString(*V_BSTRREF(&argument));
      *V_BSTRREF(&argument) = fresh;
      return;
    }
    case VT_DISPATCH:
      WriteObject(*V_DISPATCHREF(&argument), value);
      return;
    case VT_UNKNOWN:
      WriteObject(*V_UNKNOWNREF(&argument), value);
      return;
    case VT_ARRAY | VT_BSTR:
    case VT_ARRAY | VT_VARIANT:
      if (const StringArray* texts = value.As<StringArray>()) {
        WriteTexts(*V_ARRAYREF(&argument), *texts);
        return;
      }
      RaiseTypeMismatch();
    default: {
      // The other numbers, as automation converts them.
      OwnedVariant fresh;
      PutInto(fresh, value);
      const auto type = static_cast<VARTYPE>(V_VT(&argument) & ~VT_BYREF);
      Require(VariantChangeType(&fresh, &fresh, 0, type));
      WriteNumber(argument, fresh);
      return;
    }
  }
}

}  // namespace qorcred::com
