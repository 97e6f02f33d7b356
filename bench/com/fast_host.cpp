#include "bench/com/fast_host.h"

#include <array>
#include <cwchar>
#include <utility>

#include "bench/com/fast_object.h"
#include "com/counted.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;

class FastList final : public FastObject {
 public:
  explicit FastList(std::shared_ptr<ListContent> content) : content_(std::move(content)) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    switch (id) {
      case kClear:
        content_->texts.clear();
        content_->data.clear();
        return S_OK;
      case kAddItem: {
        BSTR text = TextOf(given->rgvarg[0]);
        content_->texts.emplace_back(text, SysStringLen(text));
        content_->data.push_back(0);
        return S_OK;
      }
      case kNewIndex:
        Answer(result, static_cast<std::int32_t>(content_->texts.size()) - 1);
        return S_OK;
      case kItemData:
        if ((flags & DISPATCH_PROPERTYPUT) == 0) return DISP_E_MEMBERNOTFOUND;
        // "<Add New>" gets a text.
        content_->data[static_cast<std::size_t>(LongOf(given->rgvarg[1]))] =
            V_VT(&given->rgvarg[0]) == VT_BSTR ? -100 : LongOf(given->rgvarg[0]);
        return S_OK;
      default:
        return DISP_E_MEMBERNOTFOUND;
    }
  }

 private:
  enum Members : DISPID { kClear = 1, kAddItem, kNewIndex, kItemData };

  DISPID Name(const wchar_t* name) override {
    if (_wcsicmp(name, L"Clear") == 0) return kClear;
    if (_wcsicmp(name, L"AddItem") == 0) return kAddItem;
    if (_wcsicmp(name, L"NewIndex") == 0) return kNewIndex;
    if (_wcsicmp(name, L"ItemData") == 0) return kItemData;
    return DISPID_UNKNOWN;
  }

  std::shared_ptr<ListContent> content_;
};

/// The columns that the list is made of come as a store gives them: numbers.
class FastTable final : public FastObject {
 public:
  explicit FastTable(std::int32_t rows) : rows_(rows) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    switch (id) {
      case DISPID_VALUE:
        Answer(result, Cell(LongOf(given->rgvarg[1]), LongOf(given->rgvarg[0])));
        return S_OK;
      case kLowerBound:
        Answer(result, 0);
        return S_OK;
      case kUpperBound:
        Answer(result, rows_ - 1);
        return S_OK;
      default:
        return DISP_E_MEMBERNOTFOUND;
    }
  }

 private:
  enum Members : DISPID { kLowerBound = 1, kUpperBound };

  DISPID Name(const wchar_t* name) override {
    if (_wcsicmp(name, L"LowerBound") == 0) return kLowerBound;
    if (_wcsicmp(name, L"UpperBound") == 0) return kUpperBound;
    return DISPID_UNKNOWN;
  }

  static std::int32_t Cell(std::int32_t row, std::int32_t column) {
    constexpr std::int32_t kRid = 1;
    constexpr std::int32_t kType = 2;
    if (column == kRid) return row + 1000;
    return column == kType ? row % 3 : row + 1;
  }

  std::int32_t rows_;
};

/// One cell: what a query gives that finds nothing, or one text.
class FastCell final : public FastObject {
 public:
  explicit FastCell(const wchar_t* text) : text_(text) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = SysAllocString(text_);
    return S_OK;
  }

 private:
  DISPID Name(const wchar_t*) override { return DISPID_UNKNOWN; }

  const wchar_t* text_;
};

class FastManager final : public FastObject {
 public:
  FastManager(ComPtr<IDispatch> table, std::shared_ptr<std::int32_t> inserts,
              std::shared_ptr<std::wstring> lastInsert)
      : table_(std::move(table)),
        inserts_(std::move(inserts)),
        lastInsert_(std::move(lastInsert)) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id == kExecuteSelect) {
      Answer(result, AnswerTo(TextOf(given->rgvarg[2])));
    } else if (id == kExecuteInsert) {
      BSTR sql = TextOf(given->rgvarg[4]);
      lastInsert_->assign(sql, SysStringLen(sql));
      Answer(result, ++*inserts_);
    } else if (result != nullptr) {
      V_VT(result) = VT_BSTR;
      V_BSTR(result) = SysAllocString(L"_ROWID_");
    }
    return S_OK;
  }

 private:
  enum Members : DISPID { kExecuteSelect = 1, kExecuteInsert, kOther };

  DISPID Name(const wchar_t* name) override {
    if (_wcsicmp(name, L"ExecuteSelect") == 0) return kExecuteSelect;
    return _wcsicmp(name, L"ExecuteInsert") == 0 ? kExecuteInsert : kOther;
  }

  // By how the statement begins: the capacity, the check for duplicates, the list.
  [[nodiscard]] IDispatch* AnswerTo(const wchar_t* sql) const {
    if (std::wcsncmp(sql, L"SELECT TOTAL", 12) == 0) return capacity_.get();
    return std::wcsncmp(sql, L"Select Top", 10) == 0 ? nothing_.get() : table_.get();
  }

  ComPtr<IDispatch> table_;
  ComPtr<IDispatch> capacity_ = Make<FastCell>(L"MzI3Njc=");  // 32767
  ComPtr<IDispatch> nothing_ = Make<FastCell>(L"");
  std::shared_ptr<std::int32_t> inserts_;
  std::shared_ptr<std::wstring> lastInsert_;
};

/// A text box, an option button or the list of types, whatever it is asked for.
class FastEntry final : public FastObject {
 public:
  explicit FastEntry(const wchar_t* text) : text_(text) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (id == kText) {
      V_VT(result) = VT_BSTR;
      V_BSTR(result) = SysAllocString(text_);
    } else {
      Answer(result, 0);
    }
    return S_OK;
  }

 private:
  enum Members : DISPID { kText = 1, kNumber };

  DISPID Name(const wchar_t* name) override {
    return _wcsicmp(name, L"Text") == 0 ? kText : kNumber;
  }

  const wchar_t* text_;
};

/// Its members are the controls in this order.
class FastScreen final : public FastObject {
 public:
  explicit FastScreen(ComPtr<IDispatch> list) : list_(std::move(list)) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (id == kList) {
      Answer(result, list_.get());
    } else if (id == kTag) {
      V_VT(result) = VT_BSTR;
      V_BSTR(result) = SysAllocString(L"Range");
    } else {
      Answer(result, entries_.at(static_cast<std::size_t>(id - kFirstEntry)).get());
    }
    return S_OK;
  }

 private:
  enum Members : DISPID { kList = 1, kTag, kFirstEntry };

  DISPID Name(const wchar_t* name) override {
    constexpr std::array kEntries{L"cboCredentialType", L"txtPINStart", L"txtPINEND",
                                  L"txtFacilityCode",   L"txtIDCode",   L"txtSequenceCode",
                                  L"optButton4"};
    if (_wcsicmp(name, L"cboCredentials") == 0) return kList;
    if (_wcsicmp(name, L"gstrTag") == 0) return kTag;
    for (std::size_t at = 0; at < kEntries.size(); ++at) {
      if (_wcsicmp(name, kEntries[at]) == 0) return kFirstEntry + static_cast<DISPID>(at);
    }
    return DISPID_UNKNOWN;
  }

  ComPtr<IDispatch> list_;
  std::array<ComPtr<IDispatch>, 7> entries_{
      Make<FastEntry>(L""), Make<FastEntry>(L"1"), Make<FastEntry>(L"1000"), Make<FastEntry>(L"7"),
      Make<FastEntry>(L""), Make<FastEntry>(L""),  Make<FastEntry>(L"")};
};

/// Its transactions do nothing.
class FastConnection final : public FastObject {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return S_OK;
  }

 private:
  DISPID Name(const wchar_t*) override { return 1; }
};

class ManagerFactory final : public qorcred::com::Counted<IClassFactory> {
 public:
  explicit ManagerFactory(ComPtr<IDispatch> manager) : manager_(std::move(manager)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
    return manager_->QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  [[nodiscard]] bool Answers(REFIID iid) const override {
    return IsEqualIID(iid, IID_IClassFactory);
  }

  ComPtr<IDispatch> manager_;
};

constexpr std::array kNames{L"qorDBI.clsDBManager", L"qorSPS.clsSendProgSteps",
                            L"qorTent.clsTenant", L"qorAppln.clsApplication",
                            L"qorCommn.clsConnectionManager"};
constexpr CLSID kManagerClass = {
    0x4c1b7d52, 0x6f0e, 0x4f0a, {0x9a, 0x3d, 0x5e, 0x18, 0x72, 0xc4, 0x0b, 0x66}};

std::wstring KeyOf(const wchar_t* name) {
  return std::wstring(L"Software\\Classes\\") + name;
}

}  // namespace

FastHost MakeFastHost(std::int32_t credentials) {
  FastHost host;
  host.list = std::make_shared<ListContent>();
  host.screen = Make<FastScreen>(Make<FastList>(host.list));
  host.inserts = std::make_shared<std::int32_t>(0);
  host.lastInsert = std::make_shared<std::wstring>();
  host.manager = Make<FastManager>(Make<FastTable>(credentials), host.inserts, host.lastInsert);
  host.connection = Make<FastConnection>();
  return host;
}

OfferedManager::OfferedManager(const ComPtr<IDispatch>& manager) {
  std::array<wchar_t, 39> id{};
  StringFromGUID2(kManagerClass, id.data(), static_cast<int>(id.size()));
  for (const wchar_t* name : kNames) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, (KeyOf(name) + L"\\CLSID").c_str(), nullptr, REG_SZ,
                    id.data(), static_cast<DWORD>(id.size() * sizeof(wchar_t)));
  }
  ComPtr<IClassFactory> factory;
  *factory.Receive() = new ManagerFactory(manager);
  CoRegisterClassObject(kManagerClass, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                        &cookie_);
}

OfferedManager::~OfferedManager() {
  CoRevokeClassObject(cookie_);
  for (const wchar_t* name : kNames) RegDeleteTreeW(HKEY_LOCAL_MACHINE, KeyOf(name).c_str());
}

}  // namespace qorbench
