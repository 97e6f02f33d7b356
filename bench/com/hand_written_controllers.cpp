#include "bench/com/hand_written_controllers.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <vector>

#include "bench/com/fast_object.h"
#include "bench/com/rows.h"
#include "com/counted.h"
#include "com/module.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;
using qorcred::com::OwnedVariant;

ComPtr<IDispatch> Create(const wchar_t* programmaticId) {
  CLSID id{};
  ComPtr<IDispatch> component;
  if (FAILED(CLSIDFromProgID(programmaticId, &id)) ||
      FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              component.ReceiveVoid()))) {
    Fail("a component is missing");
  }
  return component;
}

std::wstring TextFrom(IDispatch* object, const wchar_t* name, WORD flags) {
  OwnedVariant result;
  Call(object, IdOf(object, name), flags, nullptr, 0, &result);
  return {V_BSTR(&result), SysStringLen(V_BSTR(&result))};
}

std::wstring Read(IDispatch* object, const wchar_t* name) {
  return TextFrom(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
}

void Get(IDispatch* object, const wchar_t* name, VARIANT* result) {
  Call(object, IdOf(object, name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, nullptr, 0, result);
}

std::wstring ReadBox(IDispatch* screen, const wchar_t* name) {
  OwnedVariant box;
  Get(screen, name, &box);
  return Read(V_DISPATCH(&box), L"Text");
}

/// The manager with its two texts, and the other components of a controller's life.
struct Components {
  explicit Components(const std::vector<const wchar_t*>& others)
      : manager(Create(L"qorDBI.clsDBManager")) {
    for (const wchar_t* other : others) kept.push_back(Create(other));
    rowId = TextFrom(manager.get(), L"pbGetRowIDStringConstant", DISPATCH_METHOD);
    lastModified = TextFrom(manager.get(), L"pbGetLastModifiedDateStringConstant", DISPATCH_METHOD);
  }

  ComPtr<IDispatch> manager;
  std::vector<ComPtr<IDispatch>> kept;
  std::wstring rowId;
  std::wstring lastModified;
};

class Credential final : public FastObject {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id == kScreen) {
      screen_ = ComPtr<IDispatch>(V_DISPATCH(&given->rgvarg[0]));
    } else {
      Save(V_DISPATCH(&given->rgvarg[4]), V_I4(&given->rgvarg[3]), *V_I4REF(&given->rgvarg[0]));
      V_VT(result) = VT_BOOL;
      V_BOOL(result) = VARIANT_TRUE;
    }
    return S_OK;
  }

 private:
  enum Members : DISPID { kScreen = 1, kSave };

  DISPID Name(const wchar_t* name) override {
    if (_wcsicmp(name, L"gmobjCredentialScreen") == 0) return kScreen;
    if (_wcsicmp(name, L"pbSave") == 0) return kSave;
    return DISPID_UNKNOWN;
  }

  void Save(IDispatch* connection, std::int32_t unit, LONG& lastRid) {
    const ComPtr<IDispatch> application = Create(L"qorAppln.clsApplication");
    const ComPtr<IDispatch> tenants = Create(L"qorTent.clsTenant");
    const std::int32_t first =
        std::wcstol(ReadBox(screen_.get(), L"txtPINStart").c_str(), nullptr, 10);
    const std::int32_t last =
        std::wcstol(ReadBox(screen_.get(), L"txtPINEND").c_str(), nullptr, 10);
    const std::wstring facility = ReadBox(screen_.get(), L"txtFacilityCode");
    const std::wstring where = std::to_wstring(unit);
    Select(connection, L"Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = " + where);
    Select(connection, L"SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = " + where);

    Call(connection, IdOf(connection, L"BeginTrans"), DISPATCH_METHOD, nullptr, 0, nullptr);
    const DISPID insert = IdOf(components_.manager.get(), L"ExecuteInsert");
    const std::wstring head =
        L"INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
        L"SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(" +
        where + L"," + components_.rowId + L",0,";
    const std::wstring tail = L"," + facility + L",0,0,1,'_LMDATE_')";
    for (std::int32_t number = first; number <= last; ++number) {
      std::wstring sql = head;
      sql += std::to_wstring(number);
      sql += tail;
      lastRid = Insert(connection, insert, sql);
    }
    Call(connection, IdOf(connection, L"CommitTrans"), DISPATCH_METHOD, nullptr, 0, nullptr);
  }

  void Select(IDispatch* connection, const std::wstring& sql) {
    VARIANT_BOOL flag = VARIANT_FALSE;
    OwnedVariant text;
    OwnedVariant statement;
    Fill(text, L"");
    Fill(statement, sql);
    std::array<VARIANT, 4> arguments{};
    ReferToText(arguments[0], text);
    V_VT(&arguments[1]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&arguments[1]) = &flag;
    ReferToText(arguments[2], statement);
    V_VT(&arguments[3]) = VT_DISPATCH;
    V_DISPATCH(&arguments[3]) = connection;
    OwnedVariant table;
    Call(components_.manager.get(), IdOf(components_.manager.get(), L"ExecuteSelect"),
         DISPATCH_METHOD, arguments.data(), 4, &table);
  }

  LONG Insert(IDispatch* connection, DISPID id, const std::wstring& sql) {
    VARIANT_BOOL flag = VARIANT_FALSE;
    OwnedVariant text;
    OwnedVariant table;
    OwnedVariant lastModified;
    OwnedVariant statement;
    Fill(text, L"");
    Fill(table, L"CREDENTIALBANK");
    Fill(lastModified, L"");
    Fill(statement, sql);
    std::array<VARIANT, 6> arguments{};
    ReferToText(arguments[0], text);
    V_VT(&arguments[1]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&arguments[1]) = &flag;
    arguments[2] = table;
    arguments[3] = lastModified;
    ReferToText(arguments[4], statement);
    V_VT(&arguments[5]) = VT_BYREF | VT_DISPATCH;
    V_DISPATCHREF(&arguments[5]) = &connection;
    OwnedVariant rid;
    Call(components_.manager.get(), id, DISPATCH_METHOD, arguments.data(), 6, &rid);
    return V_I4(&rid);
  }

  static void Fill(VARIANT& variant, const std::wstring& text) {
    V_VT(&variant) = VT_BSTR;
    V_BSTR(&variant) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }

  static void ReferToText(VARIANT& reference, VARIANT& text) {
    V_VT(&reference) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&reference) = &V_BSTR(&text);
  }

  qorcred::com::KeepLoaded keepLoaded_;  // a library that has objects stays loaded
  Components components_{{L"qorSPS.clsSendProgSteps", L"qorTent.clsTenant"}};
  ComPtr<IDispatch> screen_;
};

class DirCode final : public FastObject {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

 private:
  DISPID Name(const wchar_t*) override { return DISPID_UNKNOWN; }

  qorcred::com::KeepLoaded keepLoaded_;  // a library that has objects stays loaded
  Components components_{{L"qorCommn.clsConnectionManager"}};
};

/// Both reports: they create nothing before an operation needs it.
class Report final : public FastObject {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
      unitKey_ = V_I4(&given->rgvarg[0]);
    } else {
      Answer(result, unitKey_);
    }
    return S_OK;
  }

 private:
  DISPID Name(const wchar_t* name) override {
    return _wcsicmp(name, L"mlngUnitKey") == 0 ? 1 : DISPID_UNKNOWN;
  }

  qorcred::com::KeepLoaded keepLoaded_;  // a library that has objects stays loaded
  std::int32_t unitKey_ = 0;
};

template <typename Object>
class Factory final : public qorcred::com::Counted<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
    return Make<Object>()->QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IClassFactory);
  }
};

}  // namespace

ComPtr<IClassFactory> HandWrittenFactory(const wchar_t* className) {
  const std::wstring name(className);
  ComPtr<IClassFactory> factory;
  if (name == L"clsCredential") {
    *factory.Receive() = new Factory<Credential>;
  } else if (name == L"clsDirCode") {
    *factory.Receive() = new Factory<DirCode>;
  } else {
    *factory.Receive() = new Factory<Report>;
  }
  return factory;
}

}  // namespace qorbench
