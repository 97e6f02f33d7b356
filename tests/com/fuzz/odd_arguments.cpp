#include "tests/com/fuzz/odd_arguments.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace qortest {

using qorcred::Parameter;
using qorcred::ValueType;

namespace {

constexpr unsigned char kUntouched = 0xA5;

// What stands where a reference of that type points to; 0 for what has no place.
std::size_t SizeOf(VARTYPE type) {
  if ((type & VT_ARRAY) != 0) return sizeof(SAFEARRAY*);
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

const void* ContentOf(const VARIANT& value) {
  if (V_VT(&value) == VT_DECIMAL) return &value;
  return &V_I8(&value);
}

}  // namespace

OddArguments::~OddArguments() {
  for (VARIANT& value : kept_) Drop(value);
  // Later places refer to earlier ones, which hold nothing but what they were given.
  for (Place& place : places_) {
    VARIANT value{};
    if (place.type == VT_VARIANT) {
      std::memcpy(&value, place.content(), sizeof(VARIANT));
    } else {
      if (place.type == VT_DECIMAL) continue;
      std::memcpy(&V_I8(&value), place.content(), place.size);
      V_VT(&value) = place.type;
    }
    Drop(value);
  }
}

VARIANT OddArguments::Keep(VARIANT value) {
  kept_.push_back(value);
  return value;
}

VARIANT OddArguments::ReferenceTo(VARTYPE type, VARIANT value) {
  Place& place = places_.emplace_back();
  place.bytes.fill(kUntouched);
  place.type = type;
  place.size = SizeOf(type);
  const void* content = type == VT_VARIANT ? &value : ContentOf(value);
  std::memcpy(place.content(), content, place.size);
  VARIANT reference{};
  V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | type);
  V_BYREF(&reference) = place.content();
  return reference;
}

VARIANT OddArguments::Passed(VARIANT value) {
  const VARTYPE type = V_VT(&value);
  const bool hasPlace = SizeOf(type) != 0 && IsSoundType(type);
  switch (random().Below(8)) {
    case 0:
    case 1:
      return ReferenceTo(VT_VARIANT, value);
    case 2:
    case 3:
      return hasPlace ? ReferenceTo(type, value) : Keep(value);
    case 4:
      return hasPlace ? ReferenceTo(VT_VARIANT, ReferenceTo(type, value)) : Keep(value);
    default:
      return Keep(value);
  }
}

// References that lead nowhere, to themselves, or to what no reference may lead to.
VARIANT OddArguments::OddReference() {
  VARIANT reference{};
  switch (random().Below(6)) {
    case 0: {
      VARIANT some = values_.Any();
      V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | V_VT(&some));
      Drop(some);
      return reference;
    }
    case 1:
      V_VT(&reference) = VT_BYREF | VT_VARIANT;
      return reference;
    case 2:
      return ReferenceTo(VT_VARIANT, ReferenceTo(VT_VARIANT, values_.Any()));
    case 3:
      reference = ReferenceTo(VT_VARIANT, reference);
      std::memcpy(V_BYREF(&reference), &reference, sizeof(VARIANT));
      return reference;
    case 4:
      return ArrayInItself();
    default:
      V_VT(&reference) = VT_BYREF | VT_I4;
      return ReferenceTo(VT_VARIANT, reference);
  }
}

// A variable that holds an array of which one element refers to the variable.
VARIANT OddArguments::ArrayInItself() {
  VARIANT array{};
  V_VT(&array) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&array) = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  const VARIANT reference = ReferenceTo(VT_VARIANT, array);
  void* data = nullptr;
  if (SUCCEEDED(SafeArrayAccessData(V_ARRAY(&array), &data))) {
    static_cast<VARIANT*>(data)[1] = reference;
    SafeArrayUnaccessData(V_ARRAY(&array));
  }
  return reference;
}

VARIANT OddArguments::OfParameter(ValueType type) {
  switch (type) {
    case ValueType::kObject:
      return values_.OfType(VT_DISPATCH);
    case ValueType::kBoolean:
      return values_.OfType(VT_BOOL);
    case ValueType::kLong:
      return values_.OfType(random().Below(2) == 0 ? VT_I4 : VT_I2);
    case ValueType::kString:
      return values_.OfType(VT_BSTR);
    case ValueType::kStringArray:
      if (random().Below(4) == 0) return values_.AnyArray();
      return values_.OfType(VT_ARRAY | (random().Below(2) == 0 ? VT_BSTR : VT_VARIANT));
    default:
      return values_.Usual();
  }
}

void OddArguments::MakeSound(std::span<const Parameter> parameters) {
  std::vector<VARIANT> inOrder;
  for (const Parameter& parameter : parameters) {
    if (parameter.IsOptional() && random().Below(4) == 0) {
      VARIANT omitted{};
      V_VT(&omitted) = VT_ERROR;
      V_ERROR(&omitted) = DISP_E_PARAMNOTFOUND;
      inOrder.push_back(omitted);
    } else {
      inOrder.push_back(Passed(OfParameter(parameter.type)));
    }
  }
  // Named ones stand in front, in any order.
  const std::size_t named = random().Below(4) == 0 ? random().Below(inOrder.size() + 1) : 0;
  for (std::size_t at = inOrder.size() - named; at < inOrder.size(); ++at) {
    named_.push_back(static_cast<DISPID>(at));
    arguments_.push_back(inOrder[at]);
  }
  inOrder.resize(inOrder.size() - named);
  arguments_.insert(arguments_.end(), inOrder.rbegin(), inOrder.rend());
}

void OddArguments::MakeOdd(std::span<const Parameter> parameters) {
  const std::size_t count = random().Below(3) != 0    ? parameters.size()
                            : random().Below(10) == 0 ? random().Below(70)
                                                      : random().Below(10);
  for (std::size_t at = 0; at < count; ++at) {
    const std::size_t chance = random().Below(10);
    if (chance < 4 && at < parameters.size()) {
      arguments_.push_back(Passed(OfParameter(parameters[parameters.size() - 1 - at].type)));
    } else if (chance < 6) {
      arguments_.push_back(OddReference());
    } else {
      arguments_.push_back(Passed(values_.Any()));
    }
  }
  const std::size_t named = random().Below(3) == 0 ? random().Below(count + 1) : 0;
  for (std::size_t at = 0; at < named; ++at) {
    constexpr std::array<DISPID, 5> kOdd{-1, DISPID_PROPERTYPUT, 8, LONG_MAX, LONG_MIN};
    named_.push_back(random().Below(3) == 0 ? kOdd.at(random().Below(kOdd.size()))
                                            : static_cast<DISPID>(random().Below(8)));
  }
}

void OddArguments::MakePut(ValueType type, bool isSound) {
  VARIANT value{};
  switch (isSound ? random().Below(2) : random().Below(4)) {
    case 0:
      value = Passed(OfParameter(type));
      break;
    case 1:
      value = Passed(values_.Any());
      break;
    default:
      value = OddReference();
  }
  arguments_.push_back(value);
  named_.push_back(DISPID_PROPERTYPUT);
}

void OddArguments::Freeze() {
  frozen_ = arguments_;
  for (Place& place : places_) place.frozen = place.bytes;
  FreezeArrays();
  parameters_ = {arguments_.data(), named_.data(), static_cast<UINT>(arguments_.size()),
                 static_cast<UINT>(named_.size())};
}

void OddArguments::FreezeArrays() {
  const auto freeze = [this](const VARIANT& holder, bool isByReference) {
    const bool isArray = (V_VT(&holder) & VT_ARRAY) != 0 && IsSoundType(V_VT(&holder));
    if (isArray && V_ARRAY(&holder) != nullptr)
      arrays_.emplace_back(*V_ARRAY(&holder), isByReference);
  };
  for (const VARIANT& argument : arguments_) freeze(argument, false);
  for (Place& place : places_) {
    VARIANT holder{};
    if (place.type == VT_VARIANT) {
      std::memcpy(&holder, place.content(), sizeof(VARIANT));
    } else if ((place.type & VT_ARRAY) != 0) {
      std::memcpy(&V_ARRAY(&holder), place.content(), sizeof(SAFEARRAY*));
      V_VT(&holder) = place.type;
    }
    freeze(holder, true);
  }
}

void OddArguments::Break() {
  isBroken_ = true;
  switch (random().Below(3)) {
    case 0:
      parameters_ = {nullptr, nullptr, 1 + static_cast<UINT>(random().Below(5)), 0};
      return;
    case 1:
      parameters_.cNamedArgs = parameters_.cArgs + 1 + static_cast<UINT>(random().Below(5));
      return;
    default:
      parameters_.cNamedArgs = 0xFFFFFFFF;
      parameters_.rgdispidNamedArgs = nullptr;
  }
}

std::string OddArguments::Damage() const {
  for (std::size_t at = 0; at < arguments_.size(); ++at) {
    if (std::memcmp(&arguments_[at], &frozen_[at], sizeof(VARIANT)) != 0) {
      return "argument " + std::to_string(at) + " of the client's array is another one";
    }
  }
  for (const ArrayState& array : arrays_) {
    std::string damage = array.Damage();
    if (!damage.empty()) return damage;
  }
  for (const Place& place : places_) {
    for (std::size_t at = 0; at < place.bytes.size(); ++at) {
      const bool isContent = at >= kGuard && at < kGuard + place.size;
      if (!isContent && place.bytes[at] != kUntouched) {
        return "bytes beside a place of type " + std::to_string(place.type) + " were written";
      }
    }
  }
  return {};
}

bool OddArguments::AreWritten() const {
  return std::any_of(places_.begin(), places_.end(),
                     [](const Place& place) { return place.bytes != place.frozen; }) ||
         std::any_of(arrays_.begin(), arrays_.end(),
                     [](const ArrayState& array) { return array.IsWritten(); });
}

std::string OddArguments::Types() const {
  std::string types;
  for (const VARIANT& argument : arguments_) {
    types += (types.empty() ? "" : " ") + std::to_string(V_VT(&argument));
    if (V_VT(&argument) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&argument) != nullptr) {
      types += "->" + std::to_string(V_VT(V_VARIANTREF(&argument)));
    }
  }
  types += " named";
  for (const DISPID id : named_) types += " " + std::to_string(id);
  return types;
}

}  // namespace qortest
