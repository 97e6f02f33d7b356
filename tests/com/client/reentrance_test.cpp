// Host objects that call back while a controller is at work.
#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

class Reentrance : public ComTest {
 protected:
  // A filter screen without rows whose count runs `whenRead` first.
  static ComPtr<FakeObject> Screen(std::function<void()> whenRead) {
    const ComPtr<FakeObject> fields = FakeObject::Make();
    fields->On(L"Count", [whenRead = std::move(whenRead)](const FakeCall& call) {
      whenRead();
      return call.Return(0);
    });
    ComPtr<FakeObject> screen = FakeObject::Make();
    screen->Property(L"cboField", Variant(fields));
    return screen;
  }

  static Outcome GenerateSql(const Client& report) {
    return report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7),
                       Variant(MakeEmptyTable()), Variant(L""));
  }
};

TEST_F(Reentrance, AnOperationRunsInsideAnother) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const ComPtr<FakeObject> database = FakeObject::Make();
  std::wstring name;
  database->On(L"ExecuteSelect", [&](const FakeCall& call) {
    manager.state->answer = MakeTable({{L"North gate"}});
    name = TextIn(report.Call(L"pbGetUnitName", connection, Variant(8)).result);
    return call.Return(MakeEmptyTable());
  });
  const Outcome outcome = report.Call(L"pbValidate", connection, Variant(7), Variant(database));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(name, L"North gate");
  EXPECT_EQ(manager.state->statements,
            std::vector<std::wstring>{L"SELECT UnitName FROM Units WHERE UnitKey = 8"});
}

TEST_F(Reentrance, TheSameOperationRunsInsideItselfToAnyDepth) {
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const ComPtr<FakeObject> database = FakeObject::Make();
  constexpr int kDepth = 50;
  int depth = 0;
  int valid = 0;
  const auto validate = [&] {
    const Outcome outcome =
        report.Call(L"pbValidate", connection, Variant(depth), Variant(database.get()));
    if (V_VT(&outcome.result) == VT_BOOL && V_BOOL(&outcome.result) != VARIANT_FALSE) ++valid;
  };
  database->On(L"ExecuteSelect", [&](const FakeCall& call) {
    if (++depth < kDepth) validate();
    return call.Return(MakeEmptyTable());
  });
  validate();
  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(valid, kDepth);
}

TEST_F(Reentrance, AFailureInsideStaysInside) {
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", [](const FakeCall&) { return E_FAIL; });
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  const Variant connection(FakeObject::Make());
  const ComPtr<FakeObject> database = FakeObject::Make();
  HRESULT inside = S_OK;
  database->On(L"ExecuteSelect", [&](const FakeCall& call) {
    inside = report.Call(L"pbGenSql", connection, Variant(7)).code;
    return call.Return(MakeEmptyTable());
  });
  const Outcome outcome = report.Call(L"pbValidate", connection, Variant(7), Variant(database));
  EXPECT_EQ(inside, DISP_E_EXCEPTION);
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
}

TEST_F(Reentrance, TheLastReferenceToTheControllerMayGoDuringACall) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  Client report(kCredentialReport);
  IDispatch* controller = report.get();
  ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(Screen([&report] { report.Release(); }))).code,
            S_OK);
  // The call itself holds nothing: the raw pointer is all that is left.
  const DISPID id = report.IdOf(L"pbGenSql");
  const Variant connection(FakeObject::Make());
  const Variant unit(7);
  const Variant rows(MakeEmptyTable());
  Bstr statement(L"");
  const Variant text = Variant::Reference(VT_BSTR, statement.place());
  VARIANT arguments[] = {text, rows, unit, connection};
  DISPPARAMS parameters{static_cast<VARIANT*>(arguments), nullptr, 4, 0};
  Variant result;
  ASSERT_EQ(controller->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                               &result, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(report.get(), nullptr);
  EXPECT_EQ(V_BOOL(&result), VARIANT_TRUE);
  EXPECT_EQ(statement.text(), manager.state->statements.at(0));
  EXPECT_EQ(CanUnload(), S_OK) << "the controller went with the call";
}

TEST_F(Reentrance, TheLastReferenceMayGoDuringACallThatRaises) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  Client report(kDirCodeReport);
  IDispatch* controller = report.get();
  manager.object->On(L"ExecuteSelect", [&report](const FakeCall&) {
    report.Release();
    return E_FAIL;
  });
  const DISPID id = report.IdOf(L"pbGenSql");
  const Variant connection(FakeObject::Make());
  const Variant unit(7);
  VARIANT arguments[] = {unit, connection};
  DISPPARAMS parameters{static_cast<VARIANT*>(arguments), nullptr, 2, 0};
  qorcred::com::OwnedExcepInfo info;
  EXPECT_EQ(controller->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                               nullptr, &info, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(std::wstring(info.bstrSource), L"qorCred.clsDirCodeReport");
}

TEST_F(Reentrance, TheScreenMayBeTakenAwayDuringACall) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kCredentialReport);
  long screensInside = 0;
  ASSERT_EQ(report
                .Put(L"gfrmTxFilter", Variant(Screen([&] {
                       const Variant nothing(static_cast<IDispatch*>(nullptr));
                       EXPECT_EQ(report.PutReference(L"gfrmTxFilter", nothing).code, S_OK);
                       screensInside = FakeObject::Alive();
                     })))
                .code,
            S_OK);
  const Outcome first = GenerateSql(report);
  ASSERT_EQ(first.code, S_OK);
  EXPECT_EQ(V_BOOL(&first.result), VARIANT_TRUE) << "the operation goes on with what it has";
  EXPECT_GT(screensInside, 0);
  EXPECT_EQ(ObjectIn(report.Get(L"gfrmTxFilter").result), nullptr);
  const Outcome second = GenerateSql(report);
  ASSERT_EQ(second.code, S_OK);
  EXPECT_EQ(V_BOOL(&second.result), VARIANT_FALSE) << "no screen is set any more";
}

TEST_F(Reentrance, TheClientsVariablesMayChangeDuringACall) {
  const Client report(kDirCodeReport);
  Variant database(FakeObject::Make());
  Variant connection(FakeObject::Make());
  static_cast<FakeObject*>(ObjectIn(database))->On(L"ExecuteSelect", [&](const FakeCall& call) {
    database = Variant();
    connection = Variant(L"gone");
    return call.Return(MakeEmptyTable());
  });
  const Outcome outcome = report.Call(L"pbValidate", Variant::Reference(connection), Variant(7),
                                      Variant::Reference(database));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(database)), VT_EMPTY);
  EXPECT_EQ(TextIn(connection), L"gone");
}

TEST_F(Reentrance, AHostMayCreateAndReleaseControllersDuringACall) {
  const Client report(kDirCodeReport);
  const FakeManager manager;
  manager.object->On(L"ExecuteSelect", [](const FakeCall& call) {
    for (const wchar_t* name : {kCredentialReport, kDirCodeReport}) {
      const Client other(name);
      EXPECT_EQ(other.Call(L"pbPopulateArrOperators").code, S_OK);
    }
    EXPECT_EQ(CanUnload(), S_FALSE);
    return call.Return(MakeEmptyTable());
  });
  EXPECT_EQ(
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7), Variant(manager.object))
          .code,
      S_OK);
}

}  // namespace
}  // namespace qortest
