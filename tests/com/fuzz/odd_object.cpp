#include "tests/com/fuzz/odd_object.h"

#include <array>
#include <cwchar>

#include "com/counted.h"
#include "tests/com/support/plain_dispatch.h"

namespace qortest {

namespace {

long alive = 0;

constexpr std::array<HRESULT, 14> kCodes{E_FAIL,
                                         E_OUTOFMEMORY,
                                         E_ACCESSDENIED,
                                         DISP_E_MEMBERNOTFOUND,
                                         E_NOTIMPL,
                                         DISP_E_TYPEMISMATCH,
                                         DISP_E_BADPARAMCOUNT,
                                         DISP_E_PARAMNOTOPTIONAL,
                                         E_UNEXPECTED,
                                         DISP_E_OVERFLOW,
                                         RPC_E_DISCONNECTED,
                                         DISP_E_BADINDEX,
                                         DISP_E_EXCEPTION,
                                         static_cast<HRESULT>(0x80000000)};

// IDispatchEx: an object that answers to it is taken for one of a script engine.
constexpr IID kScriptObject = {
    0xa6ef9860, 0xc720, 0x11d0, {0x93, 0x37, 0x00, 0xa0, 0xc9, 0x0d, 0xca, 0xa9}};

// What a member mostly gives, by its name.
VARTYPE TypeOf(const std::wstring& name) {
  constexpr std::array kObjects{L"cbo",  L"lst",     L"txt",       L"dtp", L"chk",
                                L"opt",  L"lbl",     L"pvn",       L"cmd", L"exec",
                                L"colu", L"valueit", L"newvaluei", L"objd"};
  constexpr std::array kTexts{L"text", L"cap", L"gstr", L"pbgetrow", L"pbgetlast", L"name"};
  for (const wchar_t* beginning : kObjects) {
    if (_wcsnicmp(name.c_str(), beginning, std::wcslen(beginning)) == 0) return VT_DISPATCH;
  }
  for (const wchar_t* beginning : kTexts) {
    if (_wcsnicmp(name.c_str(), beginning, std::wcslen(beginning)) == 0) return VT_BSTR;
  }
  return VT_I4;
}

// Identifiers are places in here, so that an object knows its members' names.
std::vector<std::wstring>& KnownNames() {
  static std::vector<std::wstring> names{L""};
  return names;
}

DISPID IdOf(const wchar_t* name) {
  std::vector<std::wstring>& names = KnownNames();
  for (std::size_t at = 0; at < names.size(); ++at) {
    if (_wcsicmp(names[at].c_str(), name) == 0) return static_cast<DISPID>(at);
  }
  names.emplace_back(name);
  return static_cast<DISPID>(names.size() - 1);
}

/// An object without automation.
class OddUnknown final : public qorcred::com::Counted<IUnknown> {
 public:
  OddUnknown() { ++alive; }
  ~OddUnknown() override { --alive; }

 private:
  [[nodiscard]] bool Answers(REFIID) const override { return false; }
};

HRESULT STDMETHODCALLTYPE FillLate(EXCEPINFO* info) {
  info->bstrDescription = SysAllocString(L"told late");
  return S_OK;
}

class OddObject final : public PlainDispatch<IDispatch> {
 public:
  OddObject(OddHost& host, bool isScript) : host_(host), isScript_(isScript) { ++alive; }
  ~OddObject() override { --alive; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    if (host_.random().Below(150) == 0) {
      const HRESULT code = SomeCode();
      // Its other interface is not there to be asked.
      return code == E_NOTIMPL && isScript_ ? DISP_E_UNKNOWNNAME : code;
    }
    ids[0] = IdOf(names[0]);
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO* info, UINT*) override {
    if (!host_.Takes()) return E_FAIL;
    if (host_.random().Below(100) == 0) return Fail(info);
    for (UINT at = 0; at < given->cArgs; ++at) WriteTo(given->rgvarg[at]);
    if (result != nullptr && (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) != 0) {
      *result = Answer(id);
    }
    return S_OK;
  }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IDispatch) || (isScript_ && IsEqualIID(iid, kScriptObject));
  }

  HRESULT SomeCode() { return kCodes.at(host_.random().Below(kCodes.size())); }

  // A failure told well, badly or not at all.
  HRESULT Fail(EXCEPINFO* info) {
    const HRESULT code = SomeCode();
    if (code != DISP_E_EXCEPTION || info == nullptr) return code;
    Random& random = host_.random();
    if (random.Below(2) == 0) info->wCode = static_cast<WORD>(random.Below(0x10000));
    if (random.Below(2) == 0) info->scode = static_cast<SCODE>(0x800A0000 + random.Below(0x10000));
    if (random.Below(3) == 0) {
      info->pfnDeferredFillIn = FillLate;
    } else if (random.Below(2) == 0) {
      const std::wstring text = host_.values().Text();
      info->bstrDescription = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    if (random.Below(3) == 0) info->bstrHelpFile = SysAllocString(L"help.chm");
    return code;
  }

  VARIANT Answer(DISPID id) {
    OddValues& values = host_.values();
    if (host_.random().Below(30) == 0) return SoundOnly(values.Any());
    const auto place = static_cast<std::size_t>(id);
    const bool isKnown = id >= 0 && place < KnownNames().size();
    VARIANT answer = values.OfType(isKnown ? TypeOf(KnownNames()[place]) : VARTYPE{VT_I4});
    // An upper bound or a count that is too large would only make many calls.
    if (V_VT(&answer) == VT_I4 && V_I4(&answer) > 100'000) V_I4(&answer) = 100'000;
    return answer;
  }

  // Of a type that no variant has, the component clears nothing, and an array that is locked nobody
  // can free: both would be lost.
  static VARIANT SoundOnly(VARIANT value) {
    if (!IsSoundType(V_VT(&value))) V_VT(&value) = VT_EMPTY;
    Unlock(value);
    return value;
  }

  // Writes to what came by reference, as its type allows.
  void WriteTo(VARIANT& argument) {
    if ((V_VT(&argument) & VT_BYREF) == 0 || host_.random().Below(3) != 0) return;
    const auto type = static_cast<VARTYPE>(V_VT(&argument) & ~VT_BYREF);
    if (type == VT_VARIANT) {
      Drop(*V_VARIANTREF(&argument));
      *V_VARIANTREF(&argument) = SoundOnly(host_.values().Any());
      return;
    }
    VARIANT fresh = host_.values().OfType(type);
    switch (type) {
      case VT_BSTR:
        SysFreeString(*V_BSTRREF(&argument));
        *V_BSTRREF(&argument) = V_BSTR(&fresh);
        return;
      case VT_BOOL:
        *V_BOOLREF(&argument) = V_BOOL(&fresh);
        return;
      case VT_I2:
        *V_I2REF(&argument) = V_I2(&fresh);
        return;
      case VT_I4:
        *V_I4REF(&argument) = V_I4(&fresh);
        return;
      default:
        Drop(fresh);
    }
  }

  OddHost& host_;
  bool isScript_;
};

}  // namespace

OddHost::OddHost(Random& random)
    : random_(random), values_(random, [this](bool isAutomation) -> IUnknown* {
        if (isAutomation) return NewObject();
        return new OddUnknown;
      }) {}

IDispatch* OddHost::NewObject() {
  return new OddObject(*this, random_.Below(4) == 0);
}

long OddHost::Alive() {
  return alive;
}

}  // namespace qortest
