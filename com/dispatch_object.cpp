#include "com/dispatch_object.h"

#include <dispex.h>

#include <array>
#include <cstddef>
#include <memory>
#include <typeinfo>

#include "com/failures.h"
#include "com/text.h"
#include "com/variants.h"
#include "frame/runtime_error.h"

namespace qorcred::com {

namespace {

// IDispatchEx, which objects of script engines have; not every import library has its identifier.
constexpr IID kScriptObject = {
    0xa6ef9860, 0xc720, 0x11d0, {0x93, 0x37, 0x00, 0xa0, 0xc9, 0x0d, 0xca, 0xa9}};

// No member that the controllers use takes more.
constexpr std::size_t kMostArguments = 16;

/// The arguments of one call in automation's order, the last one first.
class ArgumentPack {
 public:
  // Through the constructor of an empty pack, so that one that fails half way frees what it has.
  explicit ArgumentPack(const Arguments& arguments) : ArgumentPack() {
    if (arguments.size() > kMostArguments) throw RuntimeError(ErrorNumber::kWrongArgumentCount);
    for (; count_ < arguments.size(); ++count_) {
      PutInto(variants_[count_], arguments[arguments.size() - 1 - count_]);
    }
  }
  ~ArgumentPack() {
    for (std::size_t at = 0; at < count_; ++at) Clear(variants_[at]);
  }
  ArgumentPack(const ArgumentPack&) = delete;
  ArgumentPack& operator=(const ArgumentPack&) = delete;

  [[nodiscard]] UINT count() const { return static_cast<UINT>(count_); }
  [[nodiscard]] VARIANT* data() { return variants_.data(); }
  [[nodiscard]] VARIANT& operator[](std::size_t at) { return variants_[at]; }

 private:
  // The variants are left as they are: only the first `count_` hold something. A defaulted
  // constructor would fill them with zeros, at every call.
  ArgumentPack() {}  // NOLINT(modernize-use-equals-default)

  std::size_t count_ = 0;
  std::array<VARIANT, kMostArguments> variants_;
};

// Asks an object of a script engine that gives identifiers through its own interface alone, as some
// engines' objects do.
HRESULT IdFromScriptObject(const ComPtr<IDispatch>& object, const std::wstring& name, DISPID& id) {
  ComPtr<IDispatchEx> scriptObject;
  if (FAILED(object->QueryInterface(kScriptObject, scriptObject.ReceiveVoid()))) return E_NOTIMPL;
  BSTR text = SysAllocStringLen(name.data(), static_cast<UINT>(name.size()));
  if (text == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = scriptObject->GetDispID(text, fdexNameCaseInsensitive, &id);
  SysFreeString(text);
  return result;
}

// Names are short, and this is asked with every call: no function of the runtime is worth calling.
bool IsSameName(std::string_view known, std::string_view asked) {
  if (known.size() != asked.size()) return false;
  for (std::size_t at = 0; at < asked.size(); ++at) {
    if (known[at] != asked[at]) return false;
  }
  return true;
}

bool IsObject(const Value& value) {
  return value.Is(ValueType::kObject);
}

// Whether the receiver may be given a reference to it: nothing can be written to a value that is
// not there.
bool CanBeReferredTo(const VARIANT& variant) {
  return V_VT(&variant) != VT_EMPTY && V_VT(&variant) != VT_NULL && V_VT(&variant) != VT_ERROR;
}

// A reference to what `place` holds, in its own type.
void ReferTo(VARIANT& reference, VARIANT& place) {
  // The members of a variant's union begin at the same place.
  V_BYREF(&reference) = &V_I8(&place);
  V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | V_VT(&place));
}

void ReferToVariant(VARIANT& reference, VARIANT& place) {
  V_VARIANTREF(&reference) = &place;
  V_VT(&reference) = VT_BYREF | VT_VARIANT;
}

// What goes to the receiver for an argument that stands in `place`: nobody writes to an expression
// or to an omitted argument, and script engines write to references to variants alone.
VARIANT PassedAs(Passing passing, VARIANT& place, bool isScript) {
  VARIANT passed = place;
  if (passing == Passing::kValue) return passed;
  if (isScript && V_VT(&place) != VT_ERROR) {
    ReferToVariant(passed, place);
  } else if (!isScript && CanBeReferredTo(place)) {
    ReferTo(passed, place);
  }
  return passed;
}

// Whether a variant still holds what was put into it for a call. Texts are compared as such: a new
// one often stands where the old one was.
bool StillHolds(const VARIANT& variant, const Value& value) {
  switch (V_VT(&variant)) {
    case VT_BSTR:
      return value.Is(ValueType::kString) && SameText(V_BSTR(&variant), *value.As<std::string>());
    case VT_BOOL:
      return value.Is(ValueType::kBoolean) &&
             V_BOOL(&variant) == (*value.As<bool>() ? VARIANT_TRUE : VARIANT_FALSE);
    case VT_I2:
      return value.Is(ValueType::kInteger) && V_I2(&variant) == *value.As<std::int16_t>();
    case VT_I4:
      return value.Is(ValueType::kLong) && V_I4(&variant) == *value.As<std::int32_t>();
    case VT_DISPATCH:
      return value.Is(ValueType::kObject) &&
             Unwrap(*value.As<ObjectRef>()).get() == V_DISPATCH(&variant);
    default:
      return ToValue(variant) == value;
  }
}

}  // namespace

Value DispatchObject::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  const DISPID id = IdOf(member);
  switch (kind) {
    case InvokeKind::kGet:
      return Read(id, arguments);
    case InvokeKind::kPut:
      Write(id, arguments);
      return {};
    case InvokeKind::kCall:
      return Run(id, arguments);
  }
  return {};
}

DISPID DispatchObject::IdOf(std::string_view member) {
  if (member.empty()) return DISPID_VALUE;
  for (const KnownMember& known : members_) {
    if (IsSameName(known.name, member)) return known.id;
  }
  std::wstring name = ToWide(member);
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (result == E_NOTIMPL) result = IdFromScriptObject(dispatch_, name, id);
  if (FAILED(result)) {
    OwnedExcepInfo none;
    throw FailureFrom(result, none);
  }
  members_.push_back({std::string(member), id});
  return id;
}

bool DispatchObject::IsScriptObject() {
  if (kind_ == Kind::kUnknown) {
    ComPtr<IUnknown> extended;
    kind_ = SUCCEEDED(dispatch_->QueryInterface(kScriptObject, extended.ReceiveVoid()))
                ? Kind::kScript
                : Kind::kOther;
  }
  return kind_ == Kind::kScript;
}

Value DispatchObject::Read(DISPID id, const Arguments& arguments) {
  ArgumentPack pack(arguments);
  DISPPARAMS parameters{pack.data(), nullptr, pack.count(), 0};
  OwnedVariant result;
  OwnedExcepInfo info;
  const HRESULT done =
      dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result, &info, nullptr);
  if (FAILED(done)) throw FailureFrom(done, info);
  return ToValue(result);
}

void DispatchObject::Write(DISPID id, const Arguments& arguments) {
  if (arguments.empty()) throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  ArgumentPack pack(arguments);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{pack.data(), &put, pack.count(), 1};
  OwnedExcepInfo info;
  const HRESULT first = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                          &parameters, nullptr, &info, nullptr);
  HRESULT done = first;
  if (FAILED(done) && IsObject(arguments.back())) {
    OwnedExcepInfo second;
    done = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF,
                             &parameters, nullptr, &second, nullptr);
    // An object that knows no put by reference has said what was wrong the first time.
    if (FAILED(done) && done != DISP_E_MEMBERNOTFOUND) throw FailureFrom(done, second);
    if (SUCCEEDED(done)) return;
    done = first;
  }
  if (FAILED(done)) throw FailureFrom(done, info);
}

Value DispatchObject::Run(DISPID id, const Arguments& arguments) {
  ArgumentPack pack(arguments);
  const bool isScript = IsScriptObject();
  const auto passingOf = [&](std::size_t at) {
    return arguments.PassingOf(arguments.size() - 1 - at);
  };
  std::array<VARIANT, kMostArguments> passed;
  for (std::size_t at = 0; at < pack.count(); ++at) {
    passed[at] = PassedAs(passingOf(at), pack[at], isScript);
  }

  DISPPARAMS parameters{passed.data(), nullptr, pack.count(), 0};
  OwnedVariant result;
  OwnedExcepInfo info;
  const HRESULT done = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                         &parameters, &result, &info, nullptr);
  if (FAILED(done)) throw FailureFrom(done, info);

  for (std::size_t at = 0; at < pack.count(); ++at) {
    if (passingOf(at) != Passing::kReadBack) continue;
    Value& argument = arguments[arguments.size() - 1 - at];
    if (!StillHolds(pack[at], argument)) argument = ToValue(pack[at]);
  }
  return ToValue(result);
}

ObjectRef Wrap(IDispatch* dispatch) {
  return dispatch == nullptr ? nullptr : std::make_shared<DispatchObject>(dispatch);
}

ComPtr<IDispatch> Unwrap(const ObjectRef& object) {
  if (object == nullptr) return {};
  // The class is final: its own type is asked for, which costs less than looking for a base.
  const Object& known = *object;
  if (typeid(known) != typeid(DispatchObject)) throw RuntimeError(ErrorNumber::kTypeMismatch);
  return static_cast<const DispatchObject&>(known).dispatch();
}

}  // namespace qorcred::com
