// The rules of calls: members, kinds of access, counts and names of arguments.
#include <array>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr WORD kMethod = DISPATCH_METHOD;
constexpr WORD kGet = DISPATCH_PROPERTYGET;
constexpr WORD kPut = DISPATCH_PROPERTYPUT;
constexpr WORD kPutReference = DISPATCH_PROPERTYPUTREF;

class CallRules : public ComTest {};

TEST_F(CallRules, MemberNamesHaveNoRegardToCase) {
  const Client report(kDirCodeReport);
  EXPECT_EQ(report.IdOf(L"pbValidate"), 12);
  EXPECT_EQ(report.IdOf(L"PBVALIDATE"), 12);
  EXPECT_EQ(report.IdOf(L"pbvalidate"), 12);
}

TEST_F(CallRules, UnknownNamesAndIdentifiersAreRefused) {
  const Client report(kDirCodeReport);
  for (const wchar_t* name : {L"pbSave", L"", L"pbValidate ", L"\xD83D", L"gfrmTxFilter.Name"}) {
    EXPECT_EQ(report.IdOf(name), DISPID_UNKNOWN) << testing::PrintToString(std::wstring(name));
  }
  for (const DISPID id : {0L, -1L, -4L, 13L, 1000L}) {
    EXPECT_EQ(report.Invoke(id, kMethod, {}, {}).code, DISP_E_MEMBERNOTFOUND) << id;
    EXPECT_EQ(report.Invoke(id, kGet, {}, {}).code, DISP_E_MEMBERNOTFOUND) << id;
  }
}

TEST_F(CallRules, ParameterNamesAreTheirPlaces) {
  const Client report(kDirCodeReport);
  std::array<std::wstring, 5> texts{L"PBVALIDATE", L"objdb", L"lngUnitKey", L"nothing", L"objConn"};
  std::array<LPOLESTR, 5> names{};
  for (std::size_t at = 0; at < names.size(); ++at) names[at] = texts[at].data();
  std::array<DISPID, 5> ids{};
  EXPECT_EQ(report.get()->GetIDsOfNames(IID_NULL, names.data(), 5, LOCALE_USER_DEFAULT, ids.data()),
            DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids, (std::array<DISPID, 5>{12, 2, 1, DISPID_UNKNOWN, 0}));
  EXPECT_EQ(report.get()->GetIDsOfNames(IID_NULL, names.data(), 3, LOCALE_USER_DEFAULT, ids.data()),
            S_OK);
}

TEST_F(CallRules, AnotherInterfaceThanNoneIsRefused) {
  const Client report(kDirCodeReport);
  std::wstring name = L"pbValidate";
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(report.get()->GetIDsOfNames(IID_IDispatch, &names, 1, LOCALE_USER_DEFAULT, &id),
            DISP_E_UNKNOWNINTERFACE);
  DISPPARAMS none{};
  EXPECT_EQ(report.get()->Invoke(6, IID_IDispatch, LOCALE_USER_DEFAULT, kMethod, &none, nullptr,
                                 nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
}

TEST_F(CallRules, MissingPiecesAreRefused) {
  const Client report(kDirCodeReport);
  IDispatch& object = *report.get();
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &id), E_INVALIDARG);
  std::wstring name = L"pbValidate";
  LPOLESTR names = name.data();
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, nullptr), E_INVALIDARG);
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 0, LOCALE_USER_DEFAULT, &id), E_INVALIDARG);
  std::array<LPOLESTR, 2> oneMissing{name.data(), nullptr};
  std::array<DISPID, 2> ids{};
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, oneMissing.data(), 2, LOCALE_USER_DEFAULT, ids.data()),
            E_INVALIDARG);

  const auto invoke = [&object](DISPPARAMS* parameters) {
    return object.Invoke(12, IID_NULL, LOCALE_USER_DEFAULT, kMethod, parameters, nullptr, nullptr,
                         nullptr);
  };
  EXPECT_EQ(invoke(nullptr), E_INVALIDARG);
  DISPPARAMS noArguments{nullptr, nullptr, 3, 0};
  EXPECT_EQ(invoke(&noArguments), E_INVALIDARG);
  Variant argument(1);
  DISPPARAMS noNames{&argument, nullptr, 1, 1};
  EXPECT_EQ(invoke(&noNames), E_INVALIDARG);
  DISPID place = 0;
  DISPPARAMS moreNamesThanArguments{&argument, &place, 1, 2};
  EXPECT_EQ(invoke(&moreNamesThanArguments), E_INVALIDARG);
}

TEST_F(CallRules, NobodyHasToWantResultOrDetails) {
  const Client report(kDirCodeReport);
  DISPPARAMS none{};
  IDispatch& object = *report.get();
  EXPECT_EQ(
      object.Invoke(6, IID_NULL, LOCALE_USER_DEFAULT, kMethod, &none, nullptr, nullptr, nullptr),
      S_OK);
  Variant odd(L"unit");
  DISPPARAMS mismatch{&odd, nullptr, 1, 0};
  EXPECT_EQ(object.Invoke(11, IID_NULL, LOCALE_USER_DEFAULT, kMethod, &mismatch, nullptr, nullptr,
                          nullptr),
            DISP_E_TYPEMISMATCH);
  const Variant connection(FakeObject::Make());
  std::array<VARIANT, 2> arguments{Variant(7), connection};
  DISPPARAMS raising{arguments.data(), nullptr, 2, 0};
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", [](const FakeCall&) { return E_FAIL; });
  const auto offered = Offer(manager);
  EXPECT_EQ(
      object.Invoke(7, IID_NULL, LOCALE_USER_DEFAULT, kMethod, &raising, nullptr, nullptr, nullptr),
      DISP_E_EXCEPTION);
}

TEST_F(CallRules, OperationsAreCalledAsMethodsOrReadAsProperties) {
  const Client report(kDirCodeReport);
  const DISPID id = report.IdOf(L"pbPopulateArrOperators");
  for (const WORD flags : {kMethod, kGet, static_cast<WORD>(kMethod | kGet)}) {
    const Outcome outcome = report.Invoke(id, flags, {}, {});
    EXPECT_EQ(outcome.code, S_OK) << flags;
    EXPECT_EQ(V_VT(&outcome.result), VT_BOOL);
  }
  for (const WORD flags : {kPut, kPutReference, WORD{0}}) {
    EXPECT_EQ(report.Invoke(id, flags, {}, {}).code, DISP_E_MEMBERNOTFOUND) << flags;
  }
}

TEST_F(CallRules, PropertiesAreReadAndPutInEveryWay) {
  const Client report(kDirCodeReport);
  const DISPID id = report.IdOf(L"mlngUnitKey");
  int unit = 0;
  for (const WORD flags : {kPut, kPutReference, static_cast<WORD>(kPut | kPutReference)}) {
    EXPECT_EQ(report.Invoke(id, flags, {Variant(++unit)}, {DISPID_PROPERTYPUT}).code, S_OK);
    EXPECT_EQ(NumberIn(report.Invoke(id, kGet, {}, {}).result), unit);
    EXPECT_EQ(NumberIn(report.Invoke(id, kGet | kMethod, {}, {}).result), unit);
  }
  EXPECT_EQ(report.Invoke(id, kMethod, {}, {}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(report.Invoke(id, WORD{0}, {}, {}).code, DISP_E_MEMBERNOTFOUND);
  // Some clients leave the name of a put's value away.
  EXPECT_EQ(report.Invoke(id, kPut, {Variant(9)}, {}).code, S_OK);
  EXPECT_EQ(NumberIn(report.Get(L"mlngUnitKey").result), 9);
}

TEST_F(CallRules, ScreensAreSetByValueAndByReference) {
  const std::pair<const wchar_t*, const wchar_t*> screens[] = {
      {kCredential, L"gmobjCredentialScreen"},
      {kDirCode, L"mobjDirCodeScreen"},
      {kDirCode, L"mfrmConnectionScreen"},
      {kDirCodeReport, L"gfrmTxFilter"},
      {kCredentialReport, L"gfrmTxFilter"}};
  for (const auto& [programmaticId, name] : screens) {
    const Client controller(programmaticId);
    const ComPtr<FakeObject> one = FakeObject::Make();
    const ComPtr<FakeObject> other = FakeObject::Make();
    EXPECT_EQ(controller.PutReference(name, Variant(one)).code, S_OK);
    EXPECT_EQ(ObjectIn(controller.Get(name).result), one.get());
    EXPECT_EQ(controller.Put(name, Variant(other)).code, S_OK);
    EXPECT_EQ(ObjectIn(controller.Get(name).result), other.get());
    const Outcome number = controller.Put(name, Variant(5));
    EXPECT_EQ(number.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(number.badArgument, 0U);
    EXPECT_EQ(ObjectIn(controller.Get(name).result), other.get());
  }
}

TEST_F(CallRules, AGetTakesNoArgumentAndAPutExactlyOne) {
  const Client report(kDirCodeReport);
  const DISPID id = report.IdOf(L"mlngUnitKey");
  EXPECT_EQ(report.Invoke(id, kGet, {Variant(1)}, {}).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(report.Invoke(id, kPut, {}, {}).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(report.Invoke(id, kPut, {Variant(1), Variant(2)}, {DISPID_PROPERTYPUT}).code,
            DISP_E_BADPARAMCOUNT);
}

TEST_F(CallRules, TooManyArgumentsAreRefusedBeforeAnythingHappens) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const Variant connection(FakeObject::Make());
  const Outcome outcome =
      report.Call(L"pbValidate", connection, Variant(7), Variant(manager.object), Variant(0));
  EXPECT_EQ(outcome.code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(outcome.badArgument, Outcome::kNoArgument);
  EXPECT_TRUE(manager.state->statements.empty());
  const std::vector<VARIANT> many(40, static_cast<const VARIANT&>(Variant(1)));
  EXPECT_EQ(report.Invoke(12, kMethod, many, {}).code, DISP_E_BADPARAMCOUNT);
}

TEST_F(CallRules, TooFewArgumentsAreRefusedBeforeAnythingHappens) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  const Variant connection(FakeObject::Make());
  EXPECT_EQ(report.Call(L"pbValidate").code, DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(report.Call(L"pbValidate", connection, Variant(7)).code, DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(
      report.Call(L"pbValidate", connection, Variant::Omitted(), Variant(manager.object)).code,
      DISP_E_PARAMNOTOPTIONAL);
  EXPECT_TRUE(manager.state->statements.empty());
}

TEST_F(CallRules, NamedArgumentsComeInAnyOrder) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const Variant unit(7);
  const std::array<DISPID, 3> orders[] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2},
                                          {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (const std::array<DISPID, 3>& order : orders) {
    const FakeManager manager;
    const Variant database(manager.object);
    const std::array<const VARIANT*, 3> values{&connection, &unit, &database};
    // The array that automation passes runs backwards, and its names with it.
    std::vector<VARIANT> arguments;
    for (const DISPID place : order)
      arguments.push_back(*values.at(static_cast<std::size_t>(place)));
    const std::vector<DISPID> names(order.rbegin(), order.rend());
    const Outcome outcome = report.Invoke(12, kMethod, arguments, names);
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
    EXPECT_EQ(manager.state->statements.size(), 1U);
  }
}

TEST_F(CallRules, NamedArgumentsFollowThoseByPositionAndCanBeWrittenTo) {
  FakeManager manager;
  manager.state->deleted = Variant(3);
  const auto offered = Offer(manager);
  const Client report(kCredentialReport);
  const Variant connection(FakeObject::Make());
  LONG rows = 0;
  const Variant unit(7);
  const Variant place = Variant::Reference(VT_I4, &rows);
  // pbDelete connection, lngRowsDeleted:=rows, lngUnitKey:=7
  const Outcome outcome =
      report.Invoke(report.IdOf(L"pbDelete"), kMethod, {connection, unit, place}, {2, 1});
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(rows, 3);
}

TEST_F(CallRules, NamesThatDoNotFitAreRefusedAtTheirPlace) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const Variant unit(7);
  const std::pair<std::vector<DISPID>, UINT> names[] = {
      {{3}, 0},          {{-1}, 0}, {{DISPID_PROPERTYPUT}, 0},
      {{2000000000}, 0}, {{0}, 0},  // given by position already
      {{2, 2}, 1},                  // given twice
  };
  for (const auto& [ids, place] : names) {
    const Outcome outcome = report.Invoke(12, kMethod, {connection, unit, connection}, ids);
    EXPECT_EQ(outcome.code, DISP_E_PARAMNOTFOUND) << ids[0];
    EXPECT_EQ(outcome.badArgument, place);
  }
}

TEST_F(CallRules, AMismatchNamesItsPlaceInTheArrayThatWasPassed) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const Variant unit(7);
  const Variant odd(L"unit");
  EXPECT_EQ(report.Call(L"pbValidate", odd, unit, connection).badArgument, 2U);
  EXPECT_EQ(report.Call(L"pbValidate", connection, odd, connection).badArgument, 1U);
  EXPECT_EQ(report.Call(L"pbValidate", connection, unit, odd).badArgument, 0U);
  // Named: the odd one stands at the front of the array.
  const Outcome named = report.Invoke(12, kMethod, {connection, connection, odd}, {1, 2});
  EXPECT_EQ(named.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(named.badArgument, 0U);
}

}  // namespace
}  // namespace qortest
