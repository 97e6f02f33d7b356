#include "bench/com/hand_written_object.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "tests/com/support/plain_dispatch.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;
using qorcred::com::OwnedVariant;

DISPID IdOf(IDispatch* object, const wchar_t* name) {
  std::wstring copy(name);
  LPOLESTR names = copy.data();
  DISPID id = DISPID_UNKNOWN;
  object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

VARIANT LongVariant(std::int32_t number) {
  VARIANT variant;
  V_VT(&variant) = VT_I4;
  V_I4(&variant) = number;
  return variant;
}

HRESULT Call(IDispatch* object, DISPID id, WORD flags, VARIANT* arguments, UINT count,
             VARIANT* result) {
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = flags == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters{arguments, isPut ? &put : nullptr, count, isPut ? 1U : 0U};
  EXCEPINFO info{};
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &info,
                        nullptr);
}

std::int32_t ReadLong(IDispatch* object, DISPID id, VARIANT* arguments, UINT count) {
  OwnedVariant result;
  Call(object, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, count, &result);
  return V_I4(&result);
}

std::int32_t Cell(IDispatch* table, std::int32_t row, std::int32_t column) {
  std::array<VARIANT, 2> place{LongVariant(column), LongVariant(row)};
  return ReadLong(table, DISPID_VALUE, place.data(), 2);
}

constexpr std::array<const wchar_t*, 3> kLabels{L"Corvin 30-Bit Card-", L"Standard 26-Bit Card-",
                                                L"Transmitter-"};

class HandWritten final : public qortest::PlainDispatch<IDispatch> {
 public:
  HandWritten(ComPtr<IDispatch> screen, ComPtr<IDispatch> manager)
      : screen_(std::move(screen)), manager_(std::move(manager)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    if (_wcsicmp(names[0], L"pbBase64Dec") == 0) {
      ids[0] = kDecode;
    } else if (_wcsicmp(names[0], L"pbRetrieveCredentials") == 0) {
      ids[0] = kRetrieve;
    } else {
      ids[0] = DISPID_UNKNOWN;
      return DISP_E_UNKNOWNNAME;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id == kDecode) return Decode(given->rgvarg[0], result);
    return Retrieve(given->rgvarg[1], given->rgvarg[0]);
  }

 private:
  enum Members : DISPID { kDecode = 1, kRetrieve };

  static HRESULT Decode(const VARIANT& argument, VARIANT* result) {
    static const std::string alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> table{};
    table.fill(64);
    for (std::size_t at = 0; at < alphabet.size(); ++at) {
      table[static_cast<unsigned char>(alphabet[at])] = static_cast<std::uint8_t>(at);
    }
    BSTR text = (V_VT(&argument) & VT_BYREF) != 0 ? *V_BSTRREF(&argument) : V_BSTR(&argument);
    const auto units = static_cast<int>(SysStringLen(text));
    std::string bytes(static_cast<std::size_t>(units), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, units, bytes.data(), units, nullptr, nullptr);
    std::string decoded;
    decoded.reserve(bytes.size() / 4 * 3);
    for (std::size_t at = 0; at + 3 < bytes.size(); at += 4) {
      std::array<unsigned, 4> t{};
      for (std::size_t place = 0; place < 4; ++place) {
        t[place] = table[static_cast<unsigned char>(bytes[at + place])];
      }
      decoded.push_back(static_cast<char>(t[0] * 4 | t[1] >> 4));
      decoded.push_back(static_cast<char>((t[1] & 15) * 16 | t[2] >> 2));
      decoded.push_back(static_cast<char>((t[2] & 3) * 64 | t[3]));
    }
    std::wstring wide(decoded.size(), L'\0');
    const int length =
        MultiByteToWideChar(CP_ACP, 0, decoded.data(), static_cast<int>(decoded.size()),
                            wide.data(), static_cast<int>(wide.size()));
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = SysAllocStringLen(wide.data(), static_cast<UINT>(length));
    return S_OK;
  }

  HRESULT Retrieve(const VARIANT& connection, const VARIANT& unit) {
    OwnedVariant listResult;
    Call(screen_.get(), IdOf(screen_.get(), L"cboCredentials"),
         DISPATCH_METHOD | DISPATCH_PROPERTYGET, nullptr, 0, &listResult);
    IDispatch* list = V_DISPATCH(&listResult);

    OwnedVariant tableResult;
    Select(connection, unit, &tableResult);
    IDispatch* table = V_DISPATCH(&tableResult);

    const DISPID addItem = IdOf(list, L"AddItem");
    const DISPID newIndex = IdOf(list, L"NewIndex");
    const DISPID itemData = IdOf(list, L"ItemData");
    Call(list, IdOf(list, L"Clear"), DISPATCH_METHOD, nullptr, 0, nullptr);
    Add(list, addItem, L"<Add New>");
    Cell(table, 0, 0);
    SetAddNew(list, itemData, ReadLong(list, newIndex, nullptr, 0));

    VARIANT dimension = LongVariant(1);
    const std::int32_t last = ReadLong(table, IdOf(table, L"UpperBound"), &dimension, 1);
    const std::int32_t first = ReadLong(table, IdOf(table, L"LowerBound"), &dimension, 1);
    for (std::int32_t row = first; row <= last; ++row) {
      const std::int32_t type = Cell(table, row, 2);
      std::wstring text(kLabels[static_cast<std::size_t>(type)]);
      text += std::to_wstring(Cell(table, row, 3));
      Add(list, addItem, text);
      const std::int32_t rid = Cell(table, row, 1);
      std::array<VARIANT, 2> put{LongVariant(rid),
                                 LongVariant(ReadLong(list, newIndex, nullptr, 0))};
      Call(list, itemData, DISPATCH_PROPERTYPUT, put.data(), 2, nullptr);
    }
    return S_OK;
  }

  void Select(const VARIANT& connection, const VARIANT& unit, VARIANT* result) {
    VARIANT_BOOL flag = VARIANT_FALSE;
    BSTR text = SysAllocString(L"");
    const std::wstring sql =
        L"SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
        L"LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=" +
        std::to_wstring(V_I4(&unit)) +
        L" ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber";
    BSTR statement = SysAllocStringLen(sql.data(), static_cast<UINT>(sql.size()));
    std::array<VARIANT, 4> arguments{};
    V_VT(&arguments[0]) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&arguments[0]) = &text;
    V_VT(&arguments[1]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&arguments[1]) = &flag;
    V_VT(&arguments[2]) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&arguments[2]) = &statement;
    arguments[3] = connection;
    Call(manager_.get(), IdOf(manager_.get(), L"ExecuteSelect"), DISPATCH_METHOD, arguments.data(),
         4, result);
    SysFreeString(statement);
    SysFreeString(text);
  }

  static void Add(IDispatch* list, DISPID addItem, const std::wstring& text) {
    OwnedVariant argument;
    V_VT(&argument) = VT_BSTR;
    V_BSTR(&argument) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    Call(list, addItem, DISPATCH_METHOD, &argument, 1, nullptr);
  }

  static void SetAddNew(IDispatch* list, DISPID itemData, std::int32_t index) {
    OwnedVariant data;
    V_VT(&data) = VT_BSTR;
    V_BSTR(&data) = SysAllocString(L"-100");
    std::array<VARIANT, 2> put{data, LongVariant(index)};
    Call(list, itemData, DISPATCH_PROPERTYPUT, put.data(), 2, nullptr);
  }

  ComPtr<IDispatch> screen_;
  ComPtr<IDispatch> manager_;
};

}  // namespace

ComPtr<IDispatch> MakeHandWritten(const ComPtr<IDispatch>& screen,
                                  const ComPtr<IDispatch>& manager) {
  ComPtr<IDispatch> made;
  *made.Receive() = new HandWritten(screen, manager);
  return made;
}

}  // namespace qorbench
