#include "tests/com/fuzz/odd_values.h"

#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>

namespace qortest {

namespace {

constexpr std::array<VARTYPE, 20> kSoundTypes{
    VT_EMPTY, VT_NULL, VT_I2, VT_I4,  VT_R4,  VT_R8,  VT_CY, VT_DATE, VT_BSTR,    VT_DISPATCH,
    VT_ERROR, VT_BOOL, VT_I1, VT_UI1, VT_UI2, VT_UI4, VT_I8, VT_UI8,  VT_DECIMAL, VT_UNKNOWN};

// What arrays hold; the two that the component takes stand there more than once.
constexpr std::array<VARTYPE, 23> kElements{
    VT_BSTR, VT_VARIANT, VT_BSTR, VT_VARIANT, VT_BSTR,  VT_I1,       VT_UI1,    VT_I2,
    VT_UI2,  VT_I4,      VT_UI4,  VT_I8,      VT_UI8,   VT_INT,      VT_R4,     VT_R8,
    VT_CY,   VT_DATE,    VT_BOOL, VT_DECIMAL, VT_ERROR, VT_DISPATCH, VT_UNKNOWN};

// What no variant holds: types of other structures, marks that stand alone, numbers beyond all.
constexpr std::array<VARTYPE, 14> kUnsoundTypes{
    VT_VARIANT, VT_VOID, VT_HRESULT,        VT_PTR,      VT_LPSTR,    VT_LPWSTR, VT_FILETIME,
    VT_CLSID,   99,      VT_VECTOR | VT_I4, VT_RESERVED, VT_TYPEMASK, VT_ARRAY,  VT_RECORD};

constexpr std::array<const wchar_t*, 22> kTexts{L"",
                                                L"0",
                                                L"1",
                                                L"-1",
                                                L" 12 ",
                                                L"1e3",
                                                L"2,5",
                                                L"&HFF",
                                                L"70000",
                                                L"2147483648",
                                                L"True",
                                                L"3/5/2024",
                                                L"12:30",
                                                L"O'Brien",
                                                L"1,2,3",
                                                L"NTAw",
                                                L"NTA",
                                                L"Range",
                                                L"Single",
                                                L"Insert",
                                                L"\xD83D\xDE00",
                                                L"n\x00E4"
                                                L"chte"};

template <typename Items>
auto OneOf(const Items& items, Random& random) {
  return items.at(random.Below(items.size()));
}

}  // namespace

bool IsSoundType(VARTYPE type) {
  if ((type & VT_ARRAY) != 0) return type != VT_ARRAY && (type & (VT_BYREF | VT_VECTOR)) == 0;
  for (const VARTYPE sound : kSoundTypes) {
    if (type == sound) return true;
  }
  return type == VT_INT || type == VT_UINT;
}

void Unlock(const VARIANT& value) {
  const bool isArray = (V_VT(&value) & VT_ARRAY) != 0 && IsSoundType(V_VT(&value));
  SAFEARRAY* array = isArray ? V_ARRAY(&value) : nullptr;
  while (array != nullptr && array->cLocks != 0) SafeArrayUnlock(array);
}

void Drop(VARIANT& value) {
  Unlock(value);
  if (IsSoundType(V_VT(&value))) VariantClear(&value);
  V_VT(&value) = VT_EMPTY;
}

std::size_t CountElements(const SAFEARRAY& array) {
  std::size_t count = 1;
  for (USHORT dimension = 0; dimension < array.cDims; ++dimension) {
    count *= array.rgsabound[dimension].cElements;
  }
  return count;
}

std::wstring OddValues::Text() {
  if (random_.Below(3) != 0) return OneOf(kTexts, random_);
  const std::size_t length = random_.Below(40) == 0 ? 100'000 : random_.Below(40);
  std::wstring text;
  text.reserve(length);
  while (text.size() < length) {
    switch (random_.Below(8)) {
      case 0:
        text.push_back(static_cast<wchar_t>(0xD800 + random_.Below(0x800)));
        break;
      case 1:
        text.push_back(static_cast<wchar_t>(random_.Below(0x10000)));
        break;
      case 2:
        text.push_back(static_cast<wchar_t>(random_.Below(0x20)));
        break;
      default:
        text.push_back(static_cast<wchar_t>(0x20 + random_.Below(0x5F)));
    }
  }
  return text;
}

double OddValues::Number() {
  constexpr std::array kBounds{0.5,           1.5,          2.5,          -0.5,
                               32767.0,       32767.5,      -32768.0,     -32769.0,
                               65535.0,       2147483647.0, 2147483647.5, -2147483648.0,
                               -2147483649.0, 4294967295.0, 1e15,         -1e300};
  if (random_.Below(3) != 0) return static_cast<double>(random_.Below(30)) - 2;
  if (random_.Below(20) == 0) return std::numeric_limits<double>::quiet_NaN();
  if (random_.Below(20) == 0) return -std::numeric_limits<double>::infinity();
  return OneOf(kBounds, random_);
}

VARIANT OddValues::Any() {
  if (random_.Below(12) == 0) return OfType(OneOf(kUnsoundTypes, random_));
  if (random_.Below(6) == 0) return AnyArray();
  if (random_.Below(8) == 0) return OfType(random_.Below(2) == 0 ? VT_INT : VT_UINT);
  return OfType(OneOf(kSoundTypes, random_));
}

VARIANT OddValues::AnyArray() {
  return OfType(static_cast<VARTYPE>(VT_ARRAY | OneOf(kElements, random_)));
}

VARIANT OddValues::Usual() {
  constexpr std::array<VARTYPE, 8> kUsual{VT_I4,   VT_I4,       VT_BSTR, VT_BSTR,
                                          VT_BOOL, VT_DISPATCH, VT_I2,   VT_R8};
  return OfType(OneOf(kUsual, random_));
}

VARIANT OddValues::OfType(VARTYPE type) {
  VARIANT value{};
  V_VT(&value) = type;
  if ((type & VT_ARRAY) != 0 && type != VT_ARRAY) {
    V_ARRAY(&value) = Array(static_cast<VARTYPE>(type & ~VT_ARRAY));
    return value;
  }
  const double number = Number();
  const bool isSmall = std::abs(number) < 1e9;
  switch (type) {
    case VT_BOOL:
      // What stands for True in other languages, too.
      V_BOOL(&value) = static_cast<VARIANT_BOOL>(OneOf(std::array{0, -1, 1, 2, 256}, random_));
      break;
    case VT_R4:
      V_R4(&value) = static_cast<float>(number);
      break;
    case VT_R8:
    case VT_DATE:
      V_R8(&value) = number;
      break;
    case VT_BSTR: {
      const std::wstring text = Text();
      V_BSTR(&value) = random_.Below(10) == 0
                           ? nullptr
                           : SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
      break;
    }
    case VT_DISPATCH:
    case VT_UNKNOWN: {
      const bool isAutomation = type == VT_DISPATCH || random_.Below(2) == 0;
      V_UNKNOWN(&value) = random_.Below(6) == 0 ? nullptr : makeObject_(isAutomation);
      break;
    }
    case VT_ERROR:
    case VT_HRESULT:
      V_ERROR(&value) = random_.Below(2) == 0 ? DISP_E_PARAMNOTFOUND : E_FAIL;
      break;
    case VT_DECIMAL:
      V_DECIMAL(&value).scale = static_cast<BYTE>(random_.Below(32));  // 28 is the most
      V_DECIMAL(&value).sign = random_.Below(2) == 0 ? 0 : DECIMAL_NEG;
      V_DECIMAL(&value).Hi32 = random_.Below(3) == 0 ? 0xFFFFFFFF : 0;
      V_DECIMAL(&value).Lo64 = random_.Below(3) == 0 ? ~0ULL : random_.Below(100'000);
      V_VT(&value) = type;  // lies in the decimal
      break;
    case VT_RECORD:
      break;  // no record, and no description of one
    default:
      // Whole numbers, and what of such a type means something else: no place that could be read.
      V_I8(&value) = isSmall ? static_cast<LONGLONG>(number)
                             : OneOf(std::array<LONGLONG, 6>{0x7FFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF,
                                                             LLONG_MAX, LLONG_MIN},
                                     random_);
      if (!IsSoundType(type)) V_I8(&value) = 0;
  }
  return value;
}

// One to three dimensions, some without elements, with bounds up to the ends of what a bound can
// be. Some are locked, some have lost their elements, and some are of another type than their
// variant says.
SAFEARRAY* OddValues::Array(VARTYPE type) {
  if (random_.Below(10) == 0) return nullptr;
  constexpr std::array<LONG, 8> kLowest{0, 0, 0, 1, -3, 7, LONG_MAX - 10, LONG_MIN};
  constexpr std::array<ULONG, 5> kSizes{0, 1, 24, 24, 40};
  const UINT dimensions = random_.Below(4) == 0 ? static_cast<UINT>(2 + random_.Below(2)) : 1;
  std::array<SAFEARRAYBOUND, 3> bounds{};
  for (SAFEARRAYBOUND& bound : bounds) {
    bound.cElements =
        dimensions == 1 ? OneOf(kSizes, random_) : static_cast<ULONG>(random_.Below(5));
    bound.lLbound = OneOf(kLowest, random_);
  }
  const VARTYPE own = random_.Below(12) == 0 ? OneOf(kElements, random_) : type;
  SAFEARRAY* array = SafeArrayCreate(own, dimensions, bounds.data());
  if (array == nullptr) return nullptr;
  Fill(array, own);
  if (random_.Below(12) == 0) SafeArrayDestroyData(array);
  // One within another could not be freed with it.
  if (depth_ == 0 && random_.Below(5) == 0) SafeArrayLock(array);
  return array;
}

void OddValues::Fill(SAFEARRAY* array, VARTYPE type) {
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) return;
  ++depth_;
  const std::size_t count = CountElements(*array);
  for (std::size_t at = 0; at < count; ++at) {
    FillElement(static_cast<char*>(data) + at * array->cbElements, array->cbElements, type);
  }
  --depth_;
  SafeArrayUnaccessData(array);
}

void OddValues::FillElement(void* element, ULONG size, VARTYPE type) {
  if (random_.Below(8) == 0) return;  // it stays nothing
  if (type == VT_VARIANT) {
    // Arrays in arrays, but not for ever.
    VARIANT value = depth_ > 3 || random_.Below(4) != 0 ? OfType(VT_BSTR) : Any();
    if (!IsSoundType(V_VT(&value))) V_VT(&value) = VT_EMPTY;
    std::memcpy(element, &value, size);
    return;
  }
  const VARIANT value = OfType(type);
  const void* content = &V_I8(&value);
  if (type == VT_DECIMAL) content = &value;
  std::memcpy(element, content, size);
}

}  // namespace qortest
