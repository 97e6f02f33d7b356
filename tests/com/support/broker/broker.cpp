#include "tests/com/support/broker/broker.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/com/support/broker/script_object.h"

namespace qortest {

namespace {

using qorcred::com::OwnedVariant;

enum MemberId : DISPID { kProvide = 1, kAnswerBoxes = 2, kListener = 3, kRename = 4 };

struct KnownMember {
  const wchar_t* name;
  MemberId id;
};
constexpr std::array<KnownMember, 4> kMembers{{{L"Provide", kProvide},
                                               {L"AnswerBoxes", kAnswerBoxes},
                                               {L"Listener", kListener},
                                               {L"Rename", kRename}}};

struct KnownAnswer {
  const wchar_t* name;
  int button;
};
constexpr std::array<KnownAnswer, 3> kAnswers{{{L"OK", IDOK}, {L"Yes", IDYES}, {L"No", IDNO}}};

std::atomic<int> liveBrokers{0};

// The argument at `position` from the left, converted; false when it does not convert.
bool Argument(const DISPPARAMS& given, UINT position, VARTYPE type, OwnedVariant& converted) {
  VARIANT& place = given.rgvarg[given.cArgs - 1 - position];
  return SUCCEEDED(VariantCopyInd(&converted, &place)) &&
         SUCCEEDED(VariantChangeType(&converted, &converted, 0, type));
}

std::wstring TextOf(const OwnedVariant& text) {
  return {V_BSTR(&text), SysStringLen(V_BSTR(&text))};
}

// Calls a script object's member with texts; one without it is not told.
void Tell(const ComPtr<IDispatch>& listener, const wchar_t* member,
          const std::vector<std::wstring>& texts) {
  if (!listener) return;
  const ComPtr<IDispatchEx> scriptObject = AsScriptObject(listener);
  DISPID id = DISPID_UNKNOWN;
  if (!scriptObject || FAILED(IdOf(scriptObject, member, id))) return;
  std::vector<OwnedVariant> arguments(texts.size());
  for (std::size_t at = 0; at < texts.size(); ++at) {
    VARIANT& argument = arguments[texts.size() - 1 - at];
    V_BSTR(&argument) = SysAllocString(texts[at].c_str());
    V_VT(&argument) = VT_BSTR;
  }
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  OwnedVariant result;
  listener->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                   nullptr, nullptr);
}

}  // namespace

static_assert(sizeof(OwnedVariant) == sizeof(VARIANT), "an array of them is an array of variants");

Broker::Broker() : classes_([this](const std::wstring& id) { Tell(listener_, L"Created", {id}); }) {
  ++liveBrokers;
}

Broker::~Broker() {
  --liveBrokers;
}

bool NoBrokerLives() {
  return liveBrokers == 0;
}

HRESULT Broker::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG Broker::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Broker::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT Broker::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  for (UINT at = 0; at < count; ++at) ids[at] = DISPID_UNKNOWN;
  for (const KnownMember& member : kMembers) {
    if (lstrcmpiW(names[0], member.name) == 0) ids[0] = member.id;
  }
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT Broker::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                       EXCEPINFO*, UINT*) {
  if (parameters == nullptr) return E_INVALIDARG;
  const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  try {
    if (id == kProvide && !isPut) return Provide(*parameters);
    if (id == kAnswerBoxes && !isPut) return AnswerBoxes(*parameters);
    if (id == kRename && !isPut) return Rename(*parameters, result);
    if (id == kListener && isPut) return SetListener(*parameters);
    return DISP_E_MEMBERNOTFOUND;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT Broker::Provide(const DISPPARAMS& given) {
  if (given.cArgs != 2) return DISP_E_BADPARAMCOUNT;
  OwnedVariant name;
  OwnedVariant object;
  if (!Argument(given, 0, VT_BSTR, name) || !Argument(given, 1, VT_DISPATCH, object) ||
      V_DISPATCH(&object) == nullptr) {
    return DISP_E_TYPEMISMATCH;
  }
  return classes_.Offer(TextOf(name), V_DISPATCH(&object));
}

HRESULT Broker::AnswerBoxes(const DISPPARAMS& given) {
  if (given.cArgs != 1) return DISP_E_BADPARAMCOUNT;
  OwnedVariant answer;
  if (!Argument(given, 0, VT_BSTR, answer)) return DISP_E_TYPEMISMATCH;
  answerer_.reset();
  const std::wstring wanted = TextOf(answer);
  if (wanted.empty()) return S_OK;
  for (const KnownAnswer& known : kAnswers) {
    if (wanted != known.name) continue;
    answerer_ = std::make_unique<BoxAnswerer>(known.button, [this, wanted](const SeenBox& box) {
      Tell(listener_, L"Box", {box.title, box.text, box.icon, box.buttons, wanted});
    });
    return answerer_->IsActive() ? S_OK : E_FAIL;
  }
  return E_INVALIDARG;
}

HRESULT Broker::Rename(const DISPPARAMS& given, VARIANT* result) {
  if (given.cArgs != 3) return DISP_E_BADPARAMCOUNT;
  OwnedVariant object;
  OwnedVariant name;
  OwnedVariant member;
  if (!Argument(given, 0, VT_DISPATCH, object) || !Argument(given, 1, VT_BSTR, name) ||
      !Argument(given, 2, VT_BSTR, member)) {
    return DISP_E_TYPEMISMATCH;
  }
  const ComPtr<IDispatchEx> scriptObject = AsScriptObject(ComPtr<IDispatch>(V_DISPATCH(&object)));
  if (!scriptObject) return DISP_E_TYPEMISMATCH;
  if (result == nullptr) return S_OK;
  V_DISPATCH(result) = WithMemberCalled(scriptObject, TextOf(name), TextOf(member)).Detach();
  V_VT(result) = VT_DISPATCH;
  return S_OK;
}

HRESULT Broker::SetListener(const DISPPARAMS& given) {
  if (given.cArgs != 1) return DISP_E_BADPARAMCOUNT;
  OwnedVariant listener;
  if (!Argument(given, 0, VT_DISPATCH, listener)) return DISP_E_TYPEMISMATCH;
  listener_ = ComPtr<IDispatch>(V_DISPATCH(&listener));
  return S_OK;
}

}  // namespace qortest
