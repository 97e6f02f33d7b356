#include "tests/com/component/early_client.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "com/classes.h"
#include "com/text.h"

namespace qortest {

namespace {

/// A function of the library for as long as it is looked at.
class Function {
 public:
  Function(ITypeInfo& info, UINT index) : info_(info) {
    EXPECT_EQ(info_.GetFuncDesc(index, &description_), S_OK);
  }
  ~Function() {
    if (description_ != nullptr) info_.ReleaseFuncDesc(description_);
  }
  Function(const Function&) = delete;
  Function& operator=(const Function&) = delete;

  [[nodiscard]] bool Is(INVOKEKIND kind, const std::wstring& name) const {
    if (description_ == nullptr || description_->invkind != kind) return false;
    BSTR own = nullptr;
    if (FAILED(info_.GetDocumentation(id(), &own, nullptr, nullptr, nullptr))) return false;
    const bool isSame = qorcred::com::FromBstr(own) == qorcred::com::ToUtf8(name);
    SysFreeString(own);
    return isSame;
  }
  [[nodiscard]] DISPID id() const { return description_->memid; }
  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(description_->cParams); }
  [[nodiscard]] const ELEMDESC& parameter(std::size_t at) const {
    return description_->lprgelemdescParam[at];
  }

 private:
  ITypeInfo& info_;
  FUNCDESC* description_ = nullptr;
};

/// How a parameter is passed.
struct Passed {
  VARTYPE type;
  bool byReference;
};

// The library has objects as pointers to the interface that they are called by.
bool IsObject(const TYPEDESC& type) {
  return type.vt == VT_DISPATCH || (type.vt == VT_PTR && type.lptdesc->vt == VT_USERDEFINED);
}

Passed PassedAs(const TYPEDESC& type) {
  if (IsObject(type)) return {VT_DISPATCH, false};
  if (type.vt != VT_PTR) return {type.vt, false};
  return {PassedAs(*type.lptdesc).type, true};
}

// What a program passes that leaves the argument out.
Variant DefaultOf(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
    return Variant::From(parameter.pparamdescex->varDefaultValue);
  }
  EXPECT_NE(parameter.wParamFlags & PARAMFLAG_FOPT, 0) << "an argument that nobody can leave out";
  return Variant::Omitted();
}

// A reference to what `content` holds.
Variant ReferenceTo(Variant& content, VARTYPE type) {
  return type == VT_VARIANT ? Variant::Reference(content)
                            : Variant::Reference(type, &V_I8(&content));
}

}  // namespace

EarlyClient::EarlyClient(const wchar_t* programmaticId) {
  CLSID id{};
  EXPECT_EQ(CLSIDFromProgID(programmaticId, &id), S_OK);
  const qorcred::com::ComClass* const found = qorcred::com::FindClass(id);
  if (found == nullptr) {
    ADD_FAILURE() << "no class of the component";
    return;
  }
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(qorcred::com::kTypeLibrary, 1, 0, LOCALE_NEUTRAL, library.Receive()),
            S_OK);
  if (library) {
    EXPECT_EQ(library->GetTypeInfoOfGuid(found->dispinterface, info_.Receive()), S_OK);
  }
  EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, found->dispinterface,
                             object_.ReceiveVoid()),
            S_OK);
}

Outcome EarlyClient::Invoke(INVOKEKIND kind, const std::wstring& name,
                            std::vector<Variant> arguments) const {
  Outcome outcome;
  TYPEATTR* attributes = nullptr;
  if (!info_ || !object_ || FAILED(info_->GetTypeAttr(&attributes))) return outcome;
  const UINT functions = attributes->cFuncs;
  info_->ReleaseTypeAttr(attributes);

  for (UINT index = 0; index < functions; ++index) {
    const Function function(*info_.get(), index);
    if (!function.Is(kind, name)) continue;
    for (std::size_t at = arguments.size(); at < function.size(); ++at) {
      arguments.push_back(DefaultOf(function.parameter(at).paramdesc));
    }
    std::vector<VARIANT> passed;
    for (std::size_t at = 0; at < function.size(); ++at) {
      const auto [type, byReference] = PassedAs(function.parameter(at).tdesc);
      EXPECT_TRUE(type == VT_VARIANT || type == V_VT(&arguments[at])) << "argument " << at;
      if (byReference) {
        passed.push_back(ReferenceTo(arguments[at], type));  // which owns nothing
      } else {
        passed.push_back(arguments[at]);
      }
    }
    std::reverse(passed.begin(), passed.end());
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = kind != INVOKE_FUNC;
    DISPPARAMS parameters{passed.data(), isPut ? &put : nullptr, static_cast<UINT>(passed.size()),
                          isPut ? 1U : 0U};
    outcome.code = object_->Invoke(
        function.id(), IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(kind), &parameters,
        isPut ? nullptr : &outcome.result, nullptr, &outcome.badArgument);
    return outcome;
  }
  ADD_FAILURE() << "the library has nothing of that name";
  return outcome;
}

}  // namespace qortest
