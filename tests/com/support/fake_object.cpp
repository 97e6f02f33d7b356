#include "tests/com/support/fake_object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace qortest {

namespace {

long aliveCount = 0;

// The call that is to fail: how many are to go until then, and with what. None below 0.
int callsUntilFailure = -1;
HRESULT failureCode = S_OK;

// IDispatchEx.
constexpr IID kScriptObject = {
    0xa6ef9860, 0xc720, 0x11d0, {0x93, 0x37, 0x00, 0xa0, 0xc9, 0x0d, 0xca, 0xa9}};

bool SameName(const std::wstring& one, const std::wstring& other) {
  return _wcsicmp(one.c_str(), other.c_str()) == 0;
}

}  // namespace

HRESULT FakeCall::Return(Variant value) const {
  if (result != nullptr) std::swap(*result, static_cast<VARIANT&>(value));
  return S_OK;
}

void FakeCall::Assign(std::size_t at, const Variant& value) const {
  VARIANT& place = *arguments.at(at);
  Variant fresh(value);
  switch (V_VT(&place)) {
    case VT_BYREF | VT_VARIANT:
      std::swap(*V_VARIANTREF(&place), static_cast<VARIANT&>(fresh));
      return;
    case VT_BYREF | VT_BOOL:
      *V_BOOLREF(&place) = V_BOOL(&fresh);
      return;
    case VT_BYREF | VT_I2:
      *V_I2REF(&place) = V_I2(&fresh);
      return;
    case VT_BYREF | VT_I4:
      *V_I4REF(&place) = V_I4(&fresh);
      return;
    case VT_BYREF | VT_BSTR:
      // As compiled hosts do: the old text goes first, and the new one may take its place.
      SysFreeString(*V_BSTRREF(&place));
      *V_BSTRREF(&place) = SysAllocStringLen(V_BSTR(&fresh), SysStringLen(V_BSTR(&fresh)));
      return;
    default:
      ADD_FAILURE() << "argument " << at << " cannot be written: type " << V_VT(&place);
  }
}

bool FakeObject::NoCase::operator()(const std::wstring& one, const std::wstring& other) const {
  return _wcsicmp(one.c_str(), other.c_str()) < 0;
}

ComPtr<FakeObject> FakeObject::Make() {
  ComPtr<FakeObject> object;
  *object.Receive() = new FakeObject;
  return object;
}

long FakeObject::Alive() {
  return aliveCount;
}

FakeObject::FakeObject() {
  ++aliveCount;
  members_.push_back({L"", nullptr});
}

FakeObject::~FakeObject() {
  --aliveCount;
}

FakeObject& FakeObject::On(const std::wstring& name, Behaviour behaviour) {
  const auto found = std::find_if(members_.begin(), members_.end(),
                                  [&](const Member& one) { return SameName(one.name, name); });
  if (found == members_.end()) {
    members_.push_back({name, std::move(behaviour)});
  } else {
    found->behaviour = std::move(behaviour);
  }
  return *this;
}

FakeObject& FakeObject::Property(const std::wstring& name, Variant value) {
  values_[name] = std::move(value);
  return On(name, [this, name](const FakeCall& call) -> HRESULT {
    if ((call.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) {
      return call.Return(values_[name]);
    }
    values_[name] = call.Argument(call.arguments.size() - 1);
    return S_OK;
  });
}

FakeObject& FakeObject::AsScriptObject() {
  isScript_ = true;
  return *this;
}

const Variant& FakeObject::PropertyValue(const std::wstring& name) const {
  return values_.at(name);
}

int FakeObject::AskedFor(const std::wstring& name) const {
  const auto found = asked_.find(name);
  return found == asked_.end() ? 0 : found->second;
}

HRESULT FakeObject::QueryInterface(REFIID iid, void** object) {
  // What an object of a script engine can do beyond IDispatch is never asked of it here.
  const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                     (isScript_ && IsEqualIID(iid, kScriptObject));
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG FakeObject::AddRef() {
  return ++references_;
}

ULONG FakeObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT FakeObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT FakeObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT FakeObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  EXPECT_TRUE(IsEqualIID(iid, IID_NULL));
  EXPECT_EQ(count, 1U);
  const std::wstring name = names[0];
  ++asked_[name];
  const auto found = std::find_if(members_.begin(), members_.end(),
                                  [&](const Member& one) { return SameName(one.name, name); });
  if (found == members_.end()) {
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  ids[0] = static_cast<DISPID>(found - members_.begin());
  return S_OK;
}

HRESULT FakeObject::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* info, UINT*) {
  EXPECT_TRUE(IsEqualIID(iid, IID_NULL));
  const auto place = static_cast<std::size_t>(id);
  if (id < 0 || place >= members_.size() || members_[place].behaviour == nullptr) {
    return DISP_E_MEMBERNOTFOUND;
  }
  FakeCall call{.flags = flags, .arguments = {}, .result = result, .info = info};
  SeenCall seen{members_[place].name, flags, {}, {}};
  for (UINT at = parameters->cArgs; at > 0; --at) {
    call.arguments.push_back(&parameters->rgvarg[at - 1]);
    seen.types.push_back(V_VT(&parameters->rgvarg[at - 1]));
  }
  for (UINT at = 0; at < parameters->cNamedArgs; ++at) {
    seen.named.push_back(parameters->rgdispidNamedArgs[at]);
  }
  calls_.push_back(std::move(seen));
  if (callsUntilFailure > 0 && --callsUntilFailure == 0) return failureCode;
  // A copy: the member may be defined anew, or the object released, from inside.
  const ComPtr<FakeObject> alive(this);
  const Behaviour behaviour = members_[place].behaviour;
  return behaviour(call);
}

FailingCall::FailingCall(int number, HRESULT code) {
  callsUntilFailure = number;
  failureCode = code;
}

FailingCall::~FailingCall() {
  callsUntilFailure = -1;
}

bool FailingCall::HasFailed() const {
  return callsUntilFailure == 0;
}

}  // namespace qortest
