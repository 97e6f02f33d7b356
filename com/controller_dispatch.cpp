#include "com/controller_dispatch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "com/dispatch_object.h"
#include "com/failures.h"
#include "com/text.h"
#include "com/type_library.h"
#include "com/variants.h"
#include "com/windows_host.h"

namespace qorcred::com {

namespace {

const Member* FindMember(std::span<const Member> members, DISPID id) {
  for (const Member& member : members) {
    if (member.id == id) return &member;
  }
  return nullptr;
}

std::optional<InvokeKind> KindOf(const Member& member, WORD flags) {
  if (member.kind == MemberKind::kOperation) {
    if ((flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) != 0) return InvokeKind::kCall;
    return std::nullopt;
  }
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return InvokeKind::kPut;
  if ((flags & DISPATCH_PROPERTYGET) != 0) return InvokeKind::kGet;
  return std::nullopt;
}

/// Refuses a call, or what it would hand back, with automation's own code.
struct Refusal {
  HRESULT code;
  std::optional<UINT> argument;  ///< its place in the client's array
};

/// What a call gives. A refusal in here came after the operation had run.
struct Answer {
  Value result;
  std::optional<Refusal> refusal = {};
};

/// Where a client's arguments stand, in the order of the parameters; null for omitted ones.
using Places = std::array<VARIANT*, kMostParameters>;

/// The arguments as an operation takes them; those beyond its parameters are not looked at.
using ArgumentValues = std::array<Value, kMostParameters>;

/// The arguments that an operation may change, as they were before it; none for all others.
using FormerValues = std::array<std::optional<Value>, kMostParameters>;

const VARIANT& PlaceOfPut(const DISPPARAMS& given) {
  if (given.cArgs != 1 || given.cNamedArgs > 1) throw Refusal{DISP_E_BADPARAMCOUNT, {}};
  return given.rgvarg[0];
}

Places PlacesOfCall(const DISPPARAMS& given, std::size_t parameters) {
  if (given.cArgs > parameters) throw Refusal{DISP_E_BADPARAMCOUNT, {}};
  Places places{};
  const UINT unnamed = given.cArgs - given.cNamedArgs;
  for (UINT at = 0; at < unnamed; ++at) places[at] = &given.rgvarg[given.cArgs - 1 - at];
  for (UINT at = 0; at < given.cNamedArgs; ++at) {
    const DISPID id = given.rgdispidNamedArgs[at];
    const bool known = id >= 0 && static_cast<std::size_t>(id) < parameters;
    if (!known || places[static_cast<std::size_t>(id)] != nullptr) {
      throw Refusal{DISP_E_PARAMNOTFOUND, at};
    }
    places[static_cast<std::size_t>(id)] = &given.rgvarg[at];
  }
  return places;
}

HRESULT CodeOfConversion(const RuntimeError& failure) {
  return failure.number() == ErrorNumber::kOverflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
}

// What stands in a text or number parameter's place may be an object with a default value, such as
// a text box.
Value Plain(Value value, ValueType wanted) {
  const ObjectRef* object = value.As<ObjectRef>();
  const bool isDefaultWanted = wanted != ValueType::kObject && wanted != ValueType::kEmpty;
  if (object == nullptr || *object == nullptr || !isDefaultWanted) return value;
  return Get(**object, "");
}

// In an object's place Empty, which a variable holds that was never set, and Null, which is some
// languages' own nothing, stand for no object.
Value Convert(ValueType type, Value value) {
  const bool isNothing = value.Is(ValueType::kEmpty) || value.Is(ValueType::kNull);
  if (type == ValueType::kObject && isNothing) return ObjectRef();
  return ConvertArgument(type, std::move(value));
}

Value Converted(const VARIANT* place, ValueType type, const DISPPARAMS& given) {
  try {
    Value value = Plain(ToValue(*place), type);
    if (type == ValueType::kString) value = DateAsText(std::move(value));
    return Convert(type, std::move(value));
  } catch (const RuntimeError& failure) {
    throw Refusal{CodeOfConversion(failure), static_cast<UINT>(place - given.rgvarg)};
  }
}

bool IsOmitted(const VARIANT* place) {
  if (place != nullptr && V_VT(place) == (VT_BYREF | VT_VARIANT)) place = V_VARIANTREF(place);
  if (place == nullptr) return true;
  if (V_VT(place) == VT_ERROR) return V_ERROR(place) == DISP_E_PARAMNOTFOUND;
  return V_VT(place) == (VT_BYREF | VT_ERROR) && V_ERRORREF(place) != nullptr &&
         *V_ERRORREF(place) == DISP_E_PARAMNOTFOUND;
}

// Whether the arrays are there that the counts speak of.
bool IsSound(const DISPPARAMS* given) {
  return given != nullptr && given->cNamedArgs <= given->cArgs &&
         (given->cArgs == 0 || given->rgvarg != nullptr) &&
         (given->cNamedArgs == 0 || given->rgdispidNamedArgs != nullptr);
}

ArgumentValues ArgumentsFrom(const Places& places, std::span<const Parameter> parameters,
                             const DISPPARAMS& given) {
  ArgumentValues arguments;
  for (std::size_t at = 0; at < parameters.size(); ++at) {
    if (!IsOmitted(places[at])) {
      arguments[at] = Converted(places[at], parameters[at].type, given);
    } else if (parameters[at].IsOptional()) {
      arguments[at] = parameters[at].Omitted();
    } else {
      throw Refusal{DISP_E_PARAMNOTOPTIONAL, {}};
    }
  }
  return arguments;
}

// Whether an operation may change what stands there.
bool IsWritable(const Parameter& parameter, const VARIANT* place) {
  return parameter.byRef && !IsOmitted(place) && (V_VT(place) & VT_BYREF) != 0;
}

bool IsEmptyVariable(const VARIANT& place) {
  return V_VT(&place) == (VT_BYREF | VT_VARIANT) && V_VT(V_VARIANTREF(&place)) == VT_EMPTY;
}

// Taken before the operation, whatever the client does with its variables meanwhile. Where a number
// is wanted an Empty variable holds none yet: it differs from every number, 0 too, and gets the
// operation's.
FormerValues ValuesBefore(const Places& places, std::span<const Parameter> parameters,
                          const ArgumentValues& arguments) {
  FormerValues before;
  for (std::size_t at = 0; at < parameters.size(); ++at) {
    if (!IsWritable(parameters[at], places[at])) continue;
    const bool isUnset = parameters[at].type == ValueType::kLong && IsEmptyVariable(*places[at]);
    before[at] = isUnset ? Value() : arguments[at];
  }
  return before;
}

// Hands back what the operation changed, and nothing else. What does not fit where the client wants
// it keeps nothing else from coming back; the first such argument is named.
std::optional<Refusal> HandBack(const Places& places, const FormerValues& before,
                                const ArgumentValues& after, const DISPPARAMS& given) {
  std::optional<Refusal> first;
  for (std::size_t at = 0; at < before.size(); ++at) {
    if (!before[at].has_value() || *before[at] == after[at]) continue;
    try {
      WriteBack(*places[at], after[at]);
    } catch (const RuntimeError& failure) {
      if (first.has_value()) continue;
      first = Refusal{CodeOfConversion(failure), static_cast<UINT>(places[at] - given.rgvarg)};
    }
  }
  return first;
}

Answer RunOperation(TraceableController& controller, const Member& member,
                    const DISPPARAMS& given) {
  const std::span<const Parameter> parameters = member.parameters;
  const Places places = PlacesOfCall(given, parameters.size());
  ArgumentValues arguments = ArgumentsFrom(places, parameters, given);
  const FormerValues before = ValuesBefore(places, parameters, arguments);
  // An operation that raises has changed no argument: those that change one trap every failure.
  Value result = controller.Run(member, InvokeKind::kCall, {arguments.data(), parameters.size()});
  return {std::move(result), HandBack(places, before, arguments, given)};
}

Answer RunMember(TraceableController& controller, const Member& member, InvokeKind kind,
                 const DISPPARAMS& given) {
  switch (kind) {
    case InvokeKind::kCall:
      return RunOperation(controller, member, given);
    case InvokeKind::kGet:
      if (given.cArgs != 0) throw Refusal{DISP_E_BADPARAMCOUNT, {}};
      return {controller.Run(member, kind, {})};
    case InvokeKind::kPut: {
      Value value = Converted(&PlaceOfPut(given), member.type, given);
      return {controller.Run(member, kind, {&value, 1})};
    }
  }
  return {};
}

HRESULT Refuse(const Refusal& refusal, UINT* badArgument) {
  if (badArgument != nullptr && refusal.argument.has_value()) *badArgument = *refusal.argument;
  return com::Refuse(refusal.code);
}

}  // namespace

ControllerDispatch::ControllerDispatch(const ComClass& comClass)
    : class_(comClass), controller_(comClass.identity.name, comClass.maker, this + 1, TheHost()) {}

void* ControllerDispatch::operator new(std::size_t size, std::size_t room) {
  return ::operator new(size + room);
}

// For one whose constructor raises.
void ControllerDispatch::operator delete(void* memory, std::size_t /*room*/) {
  ::operator delete(memory);
}

void ControllerDispatch::operator delete(void* memory) {
  ::operator delete(memory);
}

HRESULT ControllerDispatch::Create(const ComClass& comClass, REFIID iid, void** object) {
  auto* made = new (comClass.maker.size) ControllerDispatch(comClass);
  const HRESULT result = made->QueryInterface(iid, object);
  if (FAILED(result)) delete made;
  return result;
}

HRESULT ControllerDispatch::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
      IsEqualIID(iid, class_.dispinterface)) {
    *object = static_cast<IDispatch*>(this);
  } else if (IsEqualIID(iid, IID_ISupportErrorInfo)) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG ControllerDispatch::AddRef() {
  return ++references_;
}

ULONG ControllerDispatch::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ControllerDispatch::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT ControllerDispatch::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  (void)locale;
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return index == 0 ? TypeInfoOf(class_.dispinterface, info) : DISP_E_BADINDEX;
}

HRESULT ControllerDispatch::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) {
  (void)locale;
  if (!IsEqualIID(iid, IID_NULL)) return com::Refuse(DISP_E_UNKNOWNINTERFACE);
  if (names == nullptr || ids == nullptr || count == 0) return com::Refuse(E_INVALIDARG);
  if (std::find(names, names + count, nullptr) != names + count) return com::Refuse(E_INVALIDARG);
  try {
    for (UINT at = 0; at < count; ++at) ids[at] = DISPID_UNKNOWN;
    const Member* member = qorcred::FindMember(class_.members(), ToUtf8(names[0]));
    if (member == nullptr) return com::Refuse(DISP_E_UNKNOWNNAME);
    ids[0] = member->id;
    HRESULT result = S_OK;
    for (UINT at = 1; at < count; ++at) {
      const std::string name = ToUtf8(names[at]);
      for (std::size_t parameter = 0; parameter < member->parameters.size(); ++parameter) {
        if (SameMember(member->parameters[parameter].name, name)) {
          ids[at] = static_cast<DISPID>(parameter);
        }
      }
      if (ids[at] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
    }
    return SUCCEEDED(result) ? result : com::Refuse(result);
  } catch (...) {
    return com::Refuse(E_OUTOFMEMORY);
  }
}

HRESULT ControllerDispatch::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT* badArgument) {
  (void)locale;
  if (!IsEqualIID(iid, IID_NULL)) return com::Refuse(DISP_E_UNKNOWNINTERFACE);
  if (!IsSound(parameters)) return com::Refuse(E_INVALIDARG);
  const Member* member = FindMember(class_.members(), id);
  if (member == nullptr) return com::Refuse(DISP_E_MEMBERNOTFOUND);
  const std::optional<InvokeKind> kind = KindOf(*member, flags);
  if (!kind.has_value()) return com::Refuse(DISP_E_MEMBERNOTFOUND);

  // The host may let go of the controller while it is called back.
  const ComPtr<IDispatch> alive(this);
  try {
    const Answer answer = RunMember(controller_, *member, *kind, *parameters);
    if (result != nullptr) PutInto(*result, answer.result);
    return answer.refusal.has_value() ? Refuse(*answer.refusal, badArgument) : S_OK;
  } catch (const Refusal& refusal) {
    return Refuse(refusal, badArgument);
  } catch (...) {
    return TellCurrent(class_.programmaticId, info);
  }
}

HRESULT ControllerDispatch::InterfaceSupportsErrorInfo(REFIID iid) {
  const bool supported = IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, class_.dispinterface);
  return supported ? S_OK : S_FALSE;
}

}  // namespace qorcred::com
