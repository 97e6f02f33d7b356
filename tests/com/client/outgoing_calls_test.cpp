// How the controllers call the host's objects.
#include <algorithm>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr WORD kMethod = DISPATCH_METHOD;
constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD kPut = DISPATCH_PROPERTYPUT;
constexpr WORD kPutReference = DISPATCH_PROPERTYPUTREF;

using Types = std::vector<VARTYPE>;

class OutgoingCalls : public ComTest {
 protected:
  static Outcome Validate(const Client& report, const ComPtr<FakeObject>& database) {
    return report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), Variant(database));
  }

  // The kinds of access that a member saw, in their order.
  static std::vector<WORD> FlagsOf(const ComPtr<FakeObject>& object, const std::wstring& member) {
    std::vector<WORD> flags;
    for (const SeenCall& call : object->calls()) {
      if (call.member == member) flags.push_back(call.flags);
    }
    return flags;
  }
};

TEST_F(OutgoingCalls, ToOrdinaryObjectsPassReferencesInTheirOwnTypes) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  ASSERT_EQ(Validate(report, manager.object).code, S_OK);
  ASSERT_EQ(manager.object->calls().size(), 1U);
  EXPECT_EQ(manager.object->calls()[0], (SeenCall{L"ExecuteSelect",
                                                  kMethod,
                                                  Types{VT_BYREF | VT_DISPATCH, VT_BYREF | VT_BSTR,
                                                        VT_BYREF | VT_BOOL, VT_BYREF | VT_BSTR},
                                                  {}}));
}

TEST_F(OutgoingCalls, ToScriptObjectsPassReferencesToVariants) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  manager.object->AsScriptObject();
  const Outcome outcome = Validate(report, manager.object);
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  ASSERT_EQ(manager.object->calls().size(), 1U);
  EXPECT_EQ(manager.object->calls()[0].types, Types(4, VT_BYREF | VT_VARIANT));
}

TEST_F(OutgoingCalls, ReadsPutsAndExpressionsPassValues) {
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> target = MakeTable({{L"a"}});
  const ComPtr<FakeObject> source = MakeTable({{L"b", 5}, {L"c", 6}});
  for (const bool isScript : {false, true}) {
    if (isScript) {
      target->AsScriptObject();
      source->AsScriptObject();
    }
    ASSERT_EQ(report.Call(L"pbMergeXArrayDBObjects", Variant(target), Variant(source)).code, S_OK);
  }
  const auto isSeen = [](const ComPtr<FakeObject>& table, const SeenCall& call) {
    return std::find(table->calls().begin(), table->calls().end(), call) != table->calls().end();
  };
  EXPECT_TRUE(isSeen(source, {L"", kRead, Types{VT_I4, VT_I4}, {}}));
  EXPECT_TRUE(isSeen(source, {L"UpperBound", kRead, Types{VT_I4}, {}}));
  EXPECT_TRUE(isSeen(target, {L"", kPut, Types{VT_I4, VT_I4, VT_BSTR}, {DISPID_PROPERTYPUT}}));
  // Bounds are expressions: for a table of a script engine, too.
  EXPECT_TRUE(isSeen(target, {L"ReDim", kMethod, Types(4, VT_I4), {}}));
  EXPECT_FALSE(isSeen(target, {L"ReDim", kMethod, Types(4, VT_BYREF | VT_VARIANT), {}}));
}

TEST_F(OutgoingCalls, AskForAnIdentifierOncePerMemberAndObject) {
  const Client report(kDirCodeReport);
  const ComPtr<FakeObject> target = MakeTable({{L"a", L"b", L"c"}});
  const ComPtr<FakeObject> source = MakeTable(std::vector<Row>(10, Row{L"a", L"b", L"c"}));
  ASSERT_EQ(report.Call(L"pbMergeXArrayDBObjects", Variant(target), Variant(source)).code, S_OK);
  EXPECT_GT(FlagsOf(source, L"UpperBound").size(), 9U);
  EXPECT_EQ(source->AskedFor(L"UpperBound"), 1);
  EXPECT_EQ(target->AskedFor(L"ReDim"), 1);
  EXPECT_EQ(target->AskedFor(L""), 0) << "the default member has an identifier of its own";
  EXPECT_EQ(source->AskedFor(L""), 0);
}

TEST_F(OutgoingCalls, AskForAScreensIdentifiersOnceAsLongAsItIsSet) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kCredentialReport);
  const ComPtr<FakeObject> fields = FakeObject::Make();
  fields->Property(L"Count", Variant(0));
  const ComPtr<FakeObject> screen = FakeObject::Make();
  screen->Property(L"cboField", Variant(fields));
  ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(screen)).code, S_OK);
  for (int call = 1; call <= 3; ++call) {
    ASSERT_EQ(report
                  .Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7),
                        Variant(MakeEmptyTable()), Variant(L""))
                  .code,
              S_OK);
    EXPECT_EQ(screen->AskedFor(L"cboField"), 1);
    EXPECT_EQ(fields->AskedFor(L"Count"), call);
  }
}

TEST_F(OutgoingCalls, TakeBackTheManagersVerdict) {
  const Client report(kCredentialReport);
  const ComPtr<FakeObject> fields = FakeObject::Make();
  fields->Property(L"Count", Variant(0));
  const ComPtr<FakeObject> screen = FakeObject::Make();
  screen->Property(L"cboField", Variant(fields));
  ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(screen)).code, S_OK);
  struct Verdict {
    bool flag;
    const wchar_t* text;
    bool isGood;
  };
  for (const bool isScript : {false, true}) {
    for (const Verdict& verdict : {Verdict{false, L"", true}, Verdict{true, L"", false},
                                   Verdict{false, L"e", false}, Verdict{true, L"failed", false}}) {
      const FakeManager manager;
      if (isScript) manager.object->AsScriptObject();
      manager.object->On(L"ExecuteSelect", [&verdict](const FakeCall& call) {
        call.Assign(2, Variant(verdict.flag));
        call.Assign(3, Variant(verdict.text));
        return call.Return(MakeEmptyTable());
      });
      const auto offered = Offer(manager);
      const Outcome outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7),
                                          Variant(MakeEmptyTable()), Variant(L""));
      ASSERT_EQ(outcome.code, S_OK);
      EXPECT_EQ(V_BOOL(&outcome.result) != VARIANT_FALSE, verdict.isGood);
    }
  }
}

TEST_F(OutgoingCalls, NoticeATextThatWasChangedWhereItStands) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  std::vector<std::wstring> texts;
  manager.object->On(L"ExecuteSelect", [&texts](const FakeCall& call) {
    const BSTR* text = V_BSTRREF(call.arguments[3]);
    texts.emplace_back(*text);
    if (texts.size() == 1) {
      call.Assign(3, Variant(L"aaaa"));
    } else {
      (*text)[1] = L'b';
    }
    return call.Return(MakeEmptyTable());
  });
  for (int call = 0; call < 3; ++call) ASSERT_EQ(Validate(report, manager.object).code, S_OK);
  EXPECT_EQ(texts, (std::vector<std::wstring>{L"", L"aaaa", L"abaa"}));
}

TEST_F(OutgoingCalls, TakeAVerdictOfAnotherTypeFromAScript) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  manager.object->AsScriptObject().On(L"ExecuteSelect", [](const FakeCall& call) {
    call.Assign(2, Variant(static_cast<short>(0)));
    call.Assign(3, Variant());
    return call.Return(MakeEmptyTable());
  });
  const Outcome outcome = Validate(report, manager.object);
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
}

TEST_F(OutgoingCalls, TakeNothingBackFromVariablesThatAreNotLookedAt) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  manager.object->AsScriptObject().On(L"ExecuteSelect", [](const FakeCall& call) {
    // Nothing that a controller could take.
    Variant numbers;
    V_ARRAY(&numbers) = SafeArrayCreateVector(VT_I4, 0, 3);
    V_VT(&numbers) = VT_ARRAY | VT_I4;
    call.Assign(0, Variant(L"no connection"));
    call.Assign(1, numbers);
    return call.Return(MakeEmptyTable());
  });
  const Outcome outcome = Validate(report, manager.object);
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
}

/// A data grid whose Array is put in several ways.
class ObjectPuts : public OutgoingCalls {
 protected:
  // Shows a report in a grid whose Array answers so; returns the grid.
  static ComPtr<FakeObject> Show(FakeObject::Behaviour array) {
    const FakeManager manager;
    const auto offered = Offer(manager);
    const Client report(kDirCodeReport);
    const ComPtr<FakeObject> columns = FakeObject::Make();
    columns->Property(L"Count", Variant(0));
    ComPtr<FakeObject> grid = FakeObject::Make();
    const auto done = [](const FakeCall&) { return S_OK; };
    grid->Property(L"Columns", Variant(columns))
        .On(L"Array", std::move(array))
        .On(L"ReBind", done)
        .On(L"Refresh", done);
    Variant layout(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(report
                  .Call(L"pvDirCodeReportResult", Variant(7), Variant(FakeObject::Make()),
                        Variant(grid), Variant(L"SELECT 1"), Variant::Reference(layout))
                  .code,
              S_OK);
    return grid;
  }

  static bool IsShown(const ComPtr<FakeObject>& grid) { return !FlagsOf(grid, L"Refresh").empty(); }
};

TEST_F(ObjectPuts, GoByValueFirst) {
  const ComPtr<FakeObject> grid = Show([](const FakeCall&) { return S_OK; });
  EXPECT_EQ(FlagsOf(grid, L"Array"), (std::vector<WORD>{kPut}));
  EXPECT_TRUE(IsShown(grid));
}

TEST_F(ObjectPuts, GoByReferenceWhenAValueIsRefused) {
  for (const HRESULT refusal : {DISP_E_MEMBERNOTFOUND, DISP_E_TYPEMISMATCH, E_NOTIMPL, E_FAIL}) {
    const ComPtr<FakeObject> grid = Show(
        [refusal](const FakeCall& call) { return call.flags == kPutReference ? S_OK : refusal; });
    EXPECT_EQ(FlagsOf(grid, L"Array"), (std::vector<WORD>{kPut, kPutReference}));
    EXPECT_TRUE(IsShown(grid));
  }
}

TEST_F(ObjectPuts, ThatAreRefusedInBothWaysFail) {
  const ComPtr<FakeObject> grid = Show([](const FakeCall&) { return E_FAIL; });
  EXPECT_EQ(FlagsOf(grid, L"Array"), (std::vector<WORD>{kPut, kPutReference}));
  EXPECT_FALSE(IsShown(grid));
}

TEST_F(OutgoingCalls, OtherPutsAreNotTriedByReference) {
  const Client controller(kCredential);
  const ComPtr<FakeObject> box = FakeObject::Make();
  box->On(L"Visible", [](const FakeCall&) { return DISP_E_MEMBERNOTFOUND; });
  const ComPtr<FakeObject> screen = FakeObject::Make();
  screen->Property(L"txtIDCode", Variant(box)).Property(L"txtSequenceCode", Variant(box));
  ASSERT_EQ(controller.Put(L"gmobjCredentialScreen", Variant(screen)).code, S_OK);
  ASSERT_EQ(controller.Call(L"pbTransmitterCtls", Variant(true)).code, S_OK);
  EXPECT_EQ(FlagsOf(box, L"Visible"), (std::vector<WORD>{kPut}));
}

}  // namespace
}  // namespace qortest
