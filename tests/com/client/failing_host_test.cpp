// Host objects that fail, and what a client gets to know of it.
#include <functional>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr HRESULT Numbered(int number) {
  return static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(number));
}

/// What a failing call does, and what the client then sees.
struct Failure {
  const char* name;
  FakeObject::Behaviour behaviour;
  HRESULT raised;
  const wchar_t* description;  ///< null when the text is the system's
};

HRESULT Raise(const FakeCall& call, WORD code, HRESULT scode, const wchar_t* description) {
  *call.info = {};
  call.info->wCode = code;
  call.info->scode = scode;
  call.info->bstrSource = SysAllocString(L"Host.Database");
  if (description != nullptr) call.info->bstrDescription = SysAllocString(description);
  return DISP_E_EXCEPTION;
}

HRESULT STDMETHODCALLTYPE FillIn(EXCEPINFO* info) {
  info->wCode = 1001;
  info->bstrDescription = SysAllocString(L"told late");
  return S_OK;
}

Failure Code(const char* name, HRESULT code, int number, const wchar_t* description) {
  return {name, [code](const FakeCall&) { return code; }, Numbered(number), description};
}

Failure Unnumbered(const char* name, HRESULT code) {
  return {name, [code](const FakeCall&) { return code; }, code, nullptr};
}

const Failure kFailures[] = {
    {"NumberAndText", [](const FakeCall& call) { return Raise(call, 1004, 0, L"no such table"); },
     Numbered(1004), L"no such table"},
    {"CodeOfANumberAndText",
     [](const FakeCall& call) { return Raise(call, 0, Numbered(3021), L"no current record"); },
     Numbered(3021), L"no current record"},
    {"CodeOfTheHostsOwn",
     [](const FakeCall& call) {
       return Raise(call, 0, static_cast<HRESULT>(0x80040201), L"not today");
     },
     static_cast<HRESULT>(0x80040201), L"not today"},
    {"NumberWithoutText", [](const FakeCall& call) { return Raise(call, 13, 0, nullptr); },
     Numbered(13), L"Type mismatch"},
    {"CodeWithoutText",
     [](const FakeCall& call) { return Raise(call, 0, E_ACCESSDENIED, nullptr); }, E_ACCESSDENIED,
     nullptr},
    {"FilledInLate",
     [](const FakeCall& call) {
       *call.info = {};
       call.info->pfnDeferredFillIn = FillIn;
       return DISP_E_EXCEPTION;
     },
     Numbered(1001), L"told late"},
    {"NeitherNumberNorText", [](const FakeCall& call) { return Raise(call, 0, 0, nullptr); },
     Numbered(440), nullptr},
    {"NothingFilledIn", [](const FakeCall&) { return DISP_E_EXCEPTION; }, Numbered(440), nullptr},
    {"TextOfManyCharacters",
     [](const FakeCall& call) { return Raise(call, 1000, 0, L"\x017Dlu\x0165 \xD83D\xDE00"); },
     Numbered(1000), L"\x017Dlu\x0165 \xD83D\xDE00"},
    Code("UnknownName", DISP_E_UNKNOWNNAME, 438, L"Object doesn't support this property or method"),
    Code("MemberNotFound", DISP_E_MEMBERNOTFOUND, 438,
         L"Object doesn't support this property or method"),
    Code("TypeMismatch", DISP_E_TYPEMISMATCH, 13, L"Type mismatch"),
    Code("BadVariantType", DISP_E_BADVARTYPE, 13, L"Type mismatch"),
    Code("Overflow", DISP_E_OVERFLOW, 6, L"Overflow"),
    Code("BadParameterCount", DISP_E_BADPARAMCOUNT, 450,
         L"Wrong number of arguments or invalid property assignment"),
    Code("ParameterNotFound", DISP_E_PARAMNOTFOUND, 448, L"Named argument not found"),
    Code("ParameterNotOptional", DISP_E_PARAMNOTOPTIONAL, 449, L"Argument not optional"),
    Code("BadIndex", DISP_E_BADINDEX, 9, L"Subscript out of range"),
    Code("OutOfMemory", E_OUTOFMEMORY, 7, L"Out of memory"),
    Code("BareNumber", Numbered(9), 9, L"Subscript out of range"),
    Code("BareNumberOfTheHosts", Numbered(3021), 3021,
         L"Application-defined or object-defined error"),
    Unnumbered("UnknownInterface", DISP_E_UNKNOWNINTERFACE),
    Unnumbered("UnknownLocale", DISP_E_UNKNOWNLCID),
    Unnumbered("ArrayIsLocked", DISP_E_ARRAYISLOCKED),
    Unnumbered("BadCallee", DISP_E_BADCALLEE),
    Unnumbered("NoNamedArguments", DISP_E_NONAMEDARGS),
    Unnumbered("DivisionByZero", DISP_E_DIVBYZERO),
    Unnumbered("Fail", E_FAIL),
    Unnumbered("Unexpected", E_UNEXPECTED),
    Unnumbered("NotImplemented", E_NOTIMPL),
    Unnumbered("InvalidArgument", E_INVALIDARG),
    Unnumbered("NoInterface", E_NOINTERFACE),
    Unnumbered("Pointer", E_POINTER),
    Unnumbered("Handle", E_HANDLE),
    Unnumbered("Abort", E_ABORT),
    Unnumbered("AccessDenied", E_ACCESSDENIED),
    Unnumbered("Disconnected", RPC_E_DISCONNECTED),
    Unnumbered("ServerUnavailable", HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)),
};

class FailingHost : public ComTest {};
class FailingHostWith : public ComTest, public testing::WithParamInterface<Failure> {};

TEST_P(FailingHostWith, IsRaisedThroughByTheReportsStatement) {
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", GetParam().behaviour);
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const Outcome outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7));
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.raised, GetParam().raised);
  EXPECT_EQ(outcome.source, L"qorCred.clsDirCodeReport");
  EXPECT_FALSE(outcome.description.empty());
  if (GetParam().description != nullptr) {
    EXPECT_EQ(outcome.description, GetParam().description);
  }
  EXPECT_EQ(V_VT(&outcome.result), VT_EMPTY);

  // The same for clients that ask the thread.
  ComPtr<IErrorInfo> error;
  ASSERT_EQ(GetErrorInfo(0, error.Receive()), S_OK);
  Bstr source(L"");
  SysFreeString(std::exchange(*source.place(), nullptr));
  EXPECT_EQ(error->GetSource(source.place()), S_OK);
  EXPECT_EQ(source.text(), outcome.source);
  Bstr description(L"");
  SysFreeString(std::exchange(*description.place(), nullptr));
  EXPECT_EQ(error->GetDescription(description.place()), S_OK);
  EXPECT_EQ(description.text(), outcome.description);
  GUID interfaceOfError = GUID_NULL;
  EXPECT_EQ(error->GetGUID(&interfaceOfError), S_OK);
  EXPECT_TRUE(IsEqualGUID(interfaceOfError, IID_IDispatch));
}

/// A thread's error object; null when there is none.
ComPtr<IErrorInfo> ErrorObject() {
  ComPtr<IErrorInfo> error;
  GetErrorInfo(0, error.Receive());
  return error;
}

TEST_F(FailingHost, WhatARefusedCallMeansIsNotToldByAnEarlierFailure) {
  const Client controller(kCredential);
  const std::function<HRESULT()> refusals[] = {
      [&] { return controller.Call(L"pbBase64Dec").code; },
      [&] { return controller.Call(L"pbRetrieveSchedules", Variant(), Variant(L"unit")).code; },
      [&] { return controller.Put(L"pbSave", Variant(1)).code; },
      [&] { return controller.Invoke(4711, DISPATCH_METHOD, {}, {}).code; },
      [&] { return controller.IdOf(L"pbNothing") == DISPID_UNKNOWN ? E_FAIL : S_OK; },
  };
  for (const auto& refused : refusals) {
    ASSERT_EQ(controller.Call(L"pbBase64Dec", Variant(L"NTA")).code, DISP_E_EXCEPTION);
    EXPECT_TRUE(FAILED(refused()));
    EXPECT_FALSE(ErrorObject());
  }
}

TEST_P(FailingHostWith, IsTrappedByTheOtherOperations) {
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", GetParam().behaviour);
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const Outcome name = report.Call(L"pbGetUnitName", connection, Variant(7));
  EXPECT_EQ(name.code, S_OK);
  EXPECT_EQ(TextIn(name.result), L"");
  const Outcome valid = report.Call(L"pbValidate", connection, Variant(7), Variant(manager.object));
  EXPECT_EQ(valid.code, S_OK);
  EXPECT_EQ(V_BOOL(&valid.result), VARIANT_FALSE);
  const Outcome length = report.Call(L"pbGetEntryLength", connection);
  EXPECT_EQ(length.code, S_OK);
  EXPECT_EQ(NumberIn(length.result), 0);
}

TEST_P(FailingHostWith, RefusesAnArgumentWhoseDefaultValueIsRead) {
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> box = FakeObject::Make();
  box->On(L"", GetParam().behaviour);
  const Outcome outcome = report.Put(L"mlngUnitKey", Variant(box));
  const bool isOverflow = GetParam().raised == Numbered(6);
  EXPECT_EQ(outcome.code, isOverflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.badArgument, 0U);
}

INSTANTIATE_TEST_SUITE_P(All, FailingHostWith, testing::ValuesIn(kFailures),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(FailingHost, WithoutTheMemberIsAnUnknownMember) {
  const OfferedComponent offered(L"qorDBI.clsDBManager",
                                 [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
  const Client report(kDirCodeReport);
  const Outcome outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7));
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.raised, Numbered(438));
}

TEST_F(FailingHost, ThatCannotCreateAComponentIsNamed) {
  const OfferedComponent offered(L"qorDBI.clsDBManager", [] { return ComPtr<IDispatch>(); });
  const Client report(kDirCodeReport);
  const Outcome outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7));
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.raised, Numbered(429));
  EXPECT_NE(outcome.description.find(L"qorDBI.clsDBManager"), std::wstring::npos);
}

TEST_F(FailingHost, ThatAnswersWithoutATableIsRaised) {
  struct Answer {
    Variant value;
    int number;
  };
  const Answer answers[] = {{Variant(), 424},
                            {Variant(5), 424},
                            {Variant(L"table"), 424},
                            {Variant(static_cast<IDispatch*>(nullptr)), 91}};
  for (const Answer& answer : answers) {
    const FakeManager manager;
    manager.object->On(L"ExecuteSelect",
                       [&answer](const FakeCall& call) { return call.Return(answer.value); });
    const auto offered = Offer(manager);
    const Client report(kDirCodeReport);
    const Outcome outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7));
    EXPECT_EQ(outcome.raised, Numbered(answer.number)) << outcome.description.c_str();
  }
}

TEST_F(FailingHost, ThatLeavesAResultBehindKeepsNothing) {
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", [](const FakeCall& call) {
    call.Return(MakeEmptyTable());
    return E_FAIL;
  });
  const Client report(kDirCodeReport);
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), Variant(manager.object));
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
}

TEST_F(FailingHost, ThatSucceedsWithAnotherCodeHasSucceeded) {
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", [](const FakeCall& call) {
    call.Return(MakeEmptyTable());
    return S_FALSE;
  });
  const Client report(kDirCodeReport);
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), Variant(manager.object));
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
}

TEST_F(FailingHost, FailureOfOneCallDoesNotTouchTheNext) {
  const FakeManager manager;
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  for (const bool isFailing : {true, false, true}) {
    manager.object->On(L"ExecuteSelect", [isFailing](const FakeCall& call) {
      return isFailing ? E_FAIL : call.Return(MakeEmptyTable());
    });
    const Outcome outcome =
        report.Call(L"pbValidate", connection, Variant(7), Variant(manager.object));
    ASSERT_EQ(V_VT(&outcome.result), VT_BOOL);
    EXPECT_EQ(V_BOOL(&outcome.result) == VARIANT_FALSE, isFailing);
  }
}

}  // namespace
}  // namespace qortest
