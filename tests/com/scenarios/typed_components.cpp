#include "tests/com/scenarios/typed_components.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "com/text.h"
#include "frame/siblings.h"
#include "tests/com/scenarios/object_dispatch.h"
#include "tests/com/support/plain_dispatch.h"
#include "tests/com/support/variant.h"

namespace qortest {

namespace {

using qorcred::ObjectRef;

constexpr VARTYPE kObjectRef = VT_BYREF | VT_DISPATCH;
constexpr VARTYPE kLongRef = VT_BYREF | VT_I4;
constexpr VARTYPE kIntegerRef = VT_BYREF | VT_I2;
constexpr VARTYPE kBooleanRef = VT_BYREF | VT_BOOL;
constexpr VARTYPE kTextRef = VT_BYREF | VT_BSTR;

/// A method as its class declares it; the place in the list is its place among the class's methods.
struct Method {
  const wchar_t* name;
  VARTYPE result;
  std::vector<VARTYPE> parameters;
};

/// Adds a method to a description. Parameters by reference go both ways.
void Add(ICreateTypeInfo* description, UINT at, const Method& method) {
  std::vector<TYPEDESC> contents(method.parameters.size());
  std::vector<ELEMDESC> parameters(method.parameters.size());
  for (std::size_t place = 0; place < parameters.size(); ++place) {
    const VARTYPE type = method.parameters[place];
    const bool isReference = (type & VT_BYREF) != 0;
    contents[place].vt = static_cast<VARTYPE>(type & ~VT_BYREF);
    ELEMDESC& parameter = parameters[place];
    parameter.tdesc.vt = isReference ? static_cast<VARTYPE>(VT_PTR) : type;
    if (isReference) parameter.tdesc.lptdesc = &contents[place];
    parameter.paramdesc.wParamFlags = isReference ? PARAMFLAG_FIN | PARAMFLAG_FOUT : PARAMFLAG_FIN;
  }
  FUNCDESC function{};
  function.memid = static_cast<MEMBERID>(at + 1);
  function.lprgelemdescParam = parameters.data();
  function.cParams = static_cast<SHORT>(parameters.size());
  function.funckind = FUNC_PUREVIRTUAL;
  function.invkind = INVOKE_FUNC;
  function.callconv = CC_STDCALL;
  function.elemdescFunc.tdesc.vt = method.result;
  EXPECT_EQ(description->AddFuncDesc(at, &function), S_OK);
  std::wstring name(method.name);
  LPOLESTR names = name.data();
  EXPECT_EQ(description->SetFuncAndParamNames(at, &names, 1), S_OK);
}

/// The description of a class whose methods are these. It is not written to a file.
ComPtr<ITypeInfo> Describe(const std::vector<Method>& methods) {
  ComPtr<ICreateTypeLib2> library;
  EXPECT_EQ(
      CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"typed.tlb", library.Receive()),
      S_OK);
  std::wstring name = L"Methods";
  ComPtr<ICreateTypeInfo> description;
  EXPECT_EQ(library->CreateTypeInfo(name.data(), TKIND_INTERFACE, description.Receive()), S_OK);
  for (std::size_t at = 0; at < methods.size(); ++at) {
    Add(description.get(), static_cast<UINT>(at), methods[at]);
  }
  EXPECT_EQ(description->LayOut(), S_OK);
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(description->QueryInterface(IID_ITypeInfo, info.ReceiveVoid()), S_OK);
  return info;
}

VARIANT To(IDispatch** place) {
  return Variant::Reference(VT_DISPATCH, place);
}
VARIANT To(LONG* place) {
  return Variant::Reference(VT_I4, place);
}
VARIANT To(SHORT* place) {
  return Variant::Reference(VT_I2, place);
}
// A VARIANT_BOOL is a SHORT to the compiler.
VARIANT ToFlag(VARIANT_BOOL* place) {
  return Variant::Reference(VT_BOOL, place);
}
VARIANT To(BSTR* place) {
  return Variant::Reference(VT_BSTR, place);
}

/// Hands the calls of a typed class on to the component behind it.
class Behind {
 public:
  explicit Behind(ComPtr<IDispatch> component) : component_(std::move(component)) {}

  Variant Run(const wchar_t* name, std::initializer_list<VARIANT> arguments) const {
    std::vector<VARIANT> reversed(arguments);
    std::reverse(reversed.begin(), reversed.end());
    std::wstring member(name);
    LPOLESTR names = member.data();
    DISPID id = DISPID_UNKNOWN;
    component_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_NEUTRAL, &id);
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    Variant result;
    EXPECT_EQ(component_->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters,
                                 &result, nullptr, nullptr),
              S_OK)
        << qorcred::com::ToUtf8(name);
    return result;
  }
  LONG Number(const wchar_t* name, std::initializer_list<VARIANT> arguments) const {
    return NumberIn(Variant::As(VT_I4, Run(name, arguments)));
  }
  BSTR Text(const wchar_t* name) const {
    const std::wstring text = TextIn(Run(name, {}));
    return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }

 private:
  ComPtr<IDispatch> component_;
};

struct ManagerMethods : Behind {
  using Behind::Behind;

  virtual IDispatch* STDMETHODCALLTYPE Select(IDispatch** connection, BSTR* sql, VARIANT_BOOL* flag,
                                              BSTR* text) {
    Variant table = Run(L"ExecuteSelect", {To(connection), To(sql), ToFlag(flag), To(text)});
    V_VT(&table) = VT_EMPTY;  // given away
    return V_DISPATCH(&table);
  }
  virtual LONG STDMETHODCALLTYPE Scalar(IDispatch** connection, BSTR* sql, VARIANT_BOOL* flag,
                                        BSTR* text) {
    const Variant found = Run(L"ExecuteScalar", {To(connection), To(sql), ToFlag(flag), To(text)});
    return V_VT(&found) == VT_NULL ? 0 : NumberIn(found);
  }
  virtual LONG STDMETHODCALLTYPE Update(IDispatch** connection, BSTR* sql, BSTR* table,
                                        VARIANT_BOOL* flag, BSTR* text) {
    return Number(L"ExecuteUpdate", {To(connection), To(sql), To(table), ToFlag(flag), To(text)});
  }
  virtual LONG STDMETHODCALLTYPE UpdateRow(IDispatch** connection, BSTR* sql, BSTR* table,
                                           VARIANT_BOOL* flag, BSTR* text, VARIANT lastModified,
                                           LONG* rid) {
    return Number(L"ExecuteUpdate", {To(connection), To(sql), To(table), ToFlag(flag), To(text),
                                     lastModified, To(rid)});
  }
  virtual LONG STDMETHODCALLTYPE Insert(IDispatch** connection, BSTR* sql, BSTR* lastModified,
                                        BSTR* table, VARIANT_BOOL* flag, BSTR* text) {
    return Number(L"ExecuteInsert",
                  {To(connection), To(sql), To(lastModified), To(table), ToFlag(flag), To(text)});
  }
  virtual LONG STDMETHODCALLTYPE Delete(IDispatch** connection, BSTR* table, LONG* rid,
                                        VARIANT_BOOL* flag, BSTR* text) {
    return Number(L"ExecuteDelete", {To(connection), To(table), To(rid), ToFlag(flag), To(text)});
  }
  virtual LONG STDMETHODCALLTYPE QueryDelete(IDispatch** connection, BSTR* sql, VARIANT_BOOL* flag,
                                             BSTR* text) {
    return Number(L"ExecuteQueryDelete", {To(connection), To(sql), ToFlag(flag), To(text)});
  }
  virtual BSTR STDMETHODCALLTYPE RowIdText() { return Text(L"pbGetRowIDStringConstant"); }
  virtual BSTR STDMETHODCALLTYPE LastModifiedText() {
    return Text(L"pbGetLastModifiedDateStringConstant");
  }
};

const std::vector<Method> kManager = {
    {L"ExecuteSelect", VT_DISPATCH, {kObjectRef, kTextRef, kBooleanRef, kTextRef}},
    {L"ExecuteScalar", VT_I4, {kObjectRef, kTextRef, kBooleanRef, kTextRef}},
    {L"ExecuteUpdate", VT_I4, {kObjectRef, kTextRef, kTextRef, kBooleanRef, kTextRef}},
    {L"ExecuteUpdateOfARow",
     VT_I4,
     {kObjectRef, kTextRef, kTextRef, kBooleanRef, kTextRef, VT_VARIANT, kLongRef}},
    {L"ExecuteInsert", VT_I4, {kObjectRef, kTextRef, kTextRef, kTextRef, kBooleanRef, kTextRef}},
    {L"ExecuteDelete", VT_I4, {kObjectRef, kTextRef, kLongRef, kBooleanRef, kTextRef}},
    {L"ExecuteQueryDelete", VT_I4, {kObjectRef, kTextRef, kBooleanRef, kTextRef}},
    {L"pbGetRowIDStringConstant", VT_BSTR, {}},
    {L"pbGetLastModifiedDateStringConstant", VT_BSTR, {}},
};

struct StepMethods : Behind {
  using Behind::Behind;

  LONG Step(const wchar_t* name, IDispatch** connection, LONG* unitKey, LONG* rid) const {
    Run(name, {To(connection), To(unitKey), To(rid)});
    return 0;
  }
  virtual LONG STDMETHODCALLTYPE Program(IDispatch** connection, LONG* unitKey, LONG* rid) {
    return Step(L"pbGenDirCodePrgStep", connection, unitKey, rid);
  }
  virtual LONG STDMETHODCALLTYPE Change(IDispatch** connection, LONG* unitKey, LONG* rid) {
    return Step(L"pbGenChgDirCodePrgStep", connection, unitKey, rid);
  }
  virtual LONG STDMETHODCALLTYPE Delete(IDispatch** connection, LONG* unitKey, LONG* rid) {
    return Step(L"pbGenDelDirCodePrgStep", connection, unitKey, rid);
  }
  virtual LONG STDMETHODCALLTYPE Withdraw(IDispatch** connection, LONG* unitKey, LONG* rid) {
    return Step(L"pbDeleteDirCodePrgStep", connection, unitKey, rid);
  }
  virtual VARIANT_BOOL STDMETHODCALLTYPE IsDeletionPending(IDispatch** connection, LONG* unitKey,
                                                           LONG* code) {
    const Variant pending =
        Run(L"pbDeleteDirCodePrgStepExists", {To(connection), To(unitKey), To(code)});
    return V_BOOL(&pending);
  }
};

const std::vector<Method> kSteps = {
    {L"pbGenDirCodePrgStep", VT_I4, {kObjectRef, kLongRef, kLongRef}},
    {L"pbGenChgDirCodePrgStep", VT_I4, {kObjectRef, kLongRef, kLongRef}},
    {L"pbGenDelDirCodePrgStep", VT_I4, {kObjectRef, kLongRef, kLongRef}},
    {L"pbDeleteDirCodePrgStep", VT_I4, {kObjectRef, kLongRef, kLongRef}},
    {L"pbDeleteDirCodePrgStepExists", VT_BOOL, {kObjectRef, kLongRef, kLongRef}},
};

struct TenantMethods : Behind {
  using Behind::Behind;

  virtual LONG STDMETHODCALLTYPE NextLinkCode(LONG* unitKey, IDispatch** connection,
                                              VARIANT_BOOL* isLink) {
    return Number(L"pbGetMaxGroupIDOrLinkID", {To(unitKey), To(connection), ToFlag(isLink)});
  }
  // One is a small number to whoever declares it: a Long by reference would not be taken.
  virtual LONG STDMETHODCALLTYPE TakeLinkCode(LONG* unitKey, IDispatch** connection,
                                              VARIANT_BOOL* isLink, SHORT* step) {
    Run(L"pbIncrementMaxGroupIDOrLinkIDByOne",
        {To(unitKey), To(connection), ToFlag(isLink), To(step)});
    return 0;
  }
  virtual LONG STDMETHODCALLTYPE TenantId(IDispatch** connection, LONG* unitKey, LONG* rid) {
    return Number(L"pbGetTenantID", {To(connection), To(unitKey), To(rid)});
  }
  virtual LONG STDMETHODCALLTYPE CreateSteps(IDispatch** connection, LONG* unitKey, LONG* tenant) {
    Run(L"pvCreateProgramSteps", {To(connection), To(unitKey), To(tenant)});
    return 0;
  }
};

const std::vector<Method> kTenant = {
    {L"pbGetMaxGroupIDOrLinkID", VT_I4, {kLongRef, kObjectRef, kBooleanRef}},
    {L"pbIncrementMaxGroupIDOrLinkIDByOne",
     VT_I4,
     {kLongRef, kObjectRef, kBooleanRef, kIntegerRef}},
    {L"pbGetTenantID", VT_I4, {kObjectRef, kLongRef, kLongRef}},
    {L"pvCreateProgramSteps", VT_I4, {kObjectRef, kLongRef, kLongRef}},
};

struct ApplicationMethods : Behind {
  using Behind::Behind;

  virtual LONG STDMETHODCALLTYPE UnitStatus(IDispatch** connection, LONG* unitKey, SHORT* status,
                                            BSTR* first, BSTR* second, BSTR* credentials,
                                            BSTR* entryCodes, BSTR* directoryCodes, BSTR* last) {
    Run(L"pbGetUnitStatus", {To(connection), To(unitKey), To(status), To(first), To(second),
                             To(credentials), To(entryCodes), To(directoryCodes), To(last)});
    return 0;
  }
};

const std::vector<Method> kApplication = {
    {L"pbGetUnitStatus",
     VT_I4,
     {kObjectRef, kLongRef, kIntegerRef, kTextRef, kTextRef, kTextRef, kTextRef, kTextRef,
      kTextRef}},
};

/// An automation object whose calls the system makes from the description of `ClassMethods`.
template <typename ClassMethods>
class TypedDispatch final : public PlainDispatch<IDispatch> {
 public:
  TypedDispatch(ComPtr<IDispatch> behind, const std::vector<Method>& declared)
      : methods_(std::move(behind)), declared_(declared), description_(Describe(declared)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    return DispGetIDsOfNames(description_.get(), names, count, ids);
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* info, UINT* badArgument) override {
    const ComPtr<IDispatch> alive(this);
    return DispInvoke(&methods_, description_.get(), FormOf(id, parameters->cArgs), flags,
                      parameters, result, info, badArgument);
  }

 private:
  // The form of a method with its optional parameters stands behind the one without them, under a
  // name of its own.
  [[nodiscard]] DISPID FormOf(DISPID id, UINT arguments) const {
    const Method& method = declared_.at(static_cast<std::size_t>(id) - 1);
    return arguments > method.parameters.size() ? id + 1 : id;
  }

  ClassMethods methods_;
  const std::vector<Method>& declared_;
  ComPtr<ITypeInfo> description_;
};

template <typename ClassMethods>
ComPtr<IDispatch> MakeTyped(const ObjectRef& component, const std::vector<Method>& declared) {
  ComPtr<IDispatch> made;
  *made.Receive() = new TypedDispatch<ClassMethods>(AsAutomationObject(component), declared);
  return made;
}

}  // namespace

ComPtr<IDispatch> AsTypedComponent(std::string_view programmaticId, const ObjectRef& component) {
  if (programmaticId == qorcred::component::kDatabaseManager) {
    return MakeTyped<ManagerMethods>(component, kManager);
  }
  if (programmaticId == qorcred::component::kStepSender) {
    return MakeTyped<StepMethods>(component, kSteps);
  }
  if (programmaticId == qorcred::component::kTenant) {
    return MakeTyped<TenantMethods>(component, kTenant);
  }
  if (programmaticId == qorcred::component::kApplication) {
    return MakeTyped<ApplicationMethods>(component, kApplication);
  }
  return AsAutomationObject(component);  // its one method takes nothing
}

}  // namespace qortest
