// Who keeps what alive, and for how long.
#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

class References : public ComTest {};

constexpr const wchar_t* kClasses[] = {kCredential, kDirCode, kDirCodeReport, kCredentialReport};

TEST_F(References, EveryControllerKeepsTheComponentLoaded) {
  for (const wchar_t* name : kClasses) {
    EXPECT_EQ(CanUnload(), S_OK);
    {
      const Client controller(name);
      EXPECT_EQ(CanUnload(), S_FALSE);
      const Client another(name);
      EXPECT_EQ(CanUnload(), S_FALSE);
    }
    EXPECT_EQ(CanUnload(), S_OK);
  }
}

TEST_F(References, AFactoryKeepsTheComponentLoaded) {
  for (const wchar_t* name : kClasses) {
    ComPtr<IClassFactory> factory = FactoryOf(name);
    ASSERT_TRUE(factory);
    EXPECT_EQ(CanUnload(), S_FALSE);
    factory = {};
    EXPECT_EQ(CanUnload(), S_OK);
  }
}

TEST_F(References, LocksKeepTheComponentLoaded) {
  EXPECT_EQ(FactoryOf(kCredential)->LockServer(TRUE), S_OK);
  EXPECT_EQ(FactoryOf(kCredential)->LockServer(TRUE), S_OK);
  EXPECT_EQ(CanUnload(), S_FALSE);
  EXPECT_EQ(FactoryOf(kDirCode)->LockServer(FALSE), S_OK);
  EXPECT_EQ(CanUnload(), S_FALSE);
  EXPECT_EQ(FactoryOf(kCredential)->LockServer(FALSE), S_OK);
  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(References, RefusedRequestsKeepNothing) {
  const ComPtr<IClassFactory> factory = FactoryOf(kCredential);
  ComPtr<IUnknown> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, object.ReceiveVoid()), E_NOINTERFACE);
  EXPECT_EQ(object.get(), nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(References, CountsOfAControllerAreExact) {
  const Client controller(kCredential);
  IDispatch* object = controller.get();
  EXPECT_EQ(object->AddRef(), 2U);
  EXPECT_EQ(object->AddRef(), 3U);
  EXPECT_EQ(object->Release(), 2U);
  EXPECT_EQ(object->Release(), 1U);
}

TEST_F(References, AScreenLivesAsLongAsItIsSet) {
  Client report(kCredentialReport);
  ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(FakeObject::Make())).code, S_OK);
  EXPECT_EQ(FakeObject::Alive(), 1);
  ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(FakeObject::Make())).code, S_OK);
  EXPECT_EQ(FakeObject::Alive(), 1) << "the former screen is released";
  const Variant nothing(static_cast<IDispatch*>(nullptr));
  ASSERT_EQ(report.PutReference(L"gfrmTxFilter", nothing).code, S_OK);
  EXPECT_EQ(FakeObject::Alive(), 0);
  ASSERT_EQ(report.PutReference(L"gfrmTxFilter", Variant(FakeObject::Make())).code, S_OK);
  EXPECT_EQ(FakeObject::Alive(), 1);
  report.Release();
  EXPECT_EQ(FakeObject::Alive(), 0) << "the screen goes with the controller";
}

TEST_F(References, TheDatabaseManagerOfAScreenControllerGoesWithIt) {
  for (const wchar_t* name : {kCredential, kDirCode}) {
    const OfferedComponent offered(L"qorDBI.clsDBManager",
                                   [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
    {
      const Client controller(name);
      EXPECT_EQ(FakeObject::Alive(), 1);
    }
    EXPECT_EQ(FakeObject::Alive(), 0);
  }
}

TEST_F(References, NothingOfAnOperationIsKept) {
  const Client report(kDirCodeReport);
  for (int call = 0; call < 3; ++call) {
    {
      const FakeManager manager;
      const Outcome outcome = report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7),
                                          Variant(manager.object));
      EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
    }
    EXPECT_EQ(FakeObject::Alive(), 0);
  }
}

TEST_F(References, NothingOfARefusedCallIsKept) {
  const Client report(kDirCodeReport);
  const Variant odd(L"unit");
  EXPECT_EQ(
      report.Call(L"pbValidate", Variant(FakeObject::Make()), odd, Variant(FakeObject::Make()))
          .code,
      DISP_E_TYPEMISMATCH);
  EXPECT_EQ(FakeObject::Alive(), 0);
}

/// A directory-code report on a screen with one chosen filter row.
class FaultSweep : public ComTest {
 protected:
  // Array controls of which every row is the same control.
  static ComPtr<FakeObject> Rows(const ComPtr<FakeObject>& control) {
    ComPtr<FakeObject> rows = FakeObject::Make();
    rows->On(L"", [control](const FakeCall& call) { return call.Return(Variant(control)); });
    return rows;
  }

  static ComPtr<FakeObject> FilterScreen() {
    const ComPtr<FakeObject> list = FakeObject::Make();
    list->Property(L"ListIndex", Variant(0)).Property(L"ItemData", Variant(51));
    const ComPtr<FakeObject> box = FakeObject::Make();
    box->Property(L"Text", Variant(L"12")).Property(L"Value", Variant(0));
    const ComPtr<FakeObject> picker = FakeObject::Make();
    picker->Property(L"Value", Variant::Day(40000))
        .Property(L"Hour", Variant(0))
        .Property(L"Minute", Variant(0))
        .Property(L"Second", Variant(0));
    ComPtr<FakeObject> screen = FakeObject::Make();
    for (const wchar_t* name : {L"cboField", L"cboFilter"})
      screen->Property(name, Variant(Rows(list)));
    for (const wchar_t* name : {L"chkBoolean", L"txtFrom", L"txtTo"}) {
      screen->Property(name, Variant(Rows(box)));
    }
    for (const wchar_t* name : {L"dtpDateFrom", L"dtpDateTo"}) {
      screen->Property(name, Variant(Rows(picker)));
    }
    return screen;
  }
};

TEST_F(FaultSweep, WhicheverCallFailsIsRaisedAndNothingIsKept) {
  int failures = 0;
  for (int failing = 1;; ++failing) {
    ASSERT_LT(failing, 2000) << "the operation does not come to its end";
    Outcome outcome;
    {
      const FakeManager manager;
      manager.state->answer = MakeTable({{L"DirectoryCode.DirectoryCode"}});
      const auto offered = Offer(manager);
      const Client report(kDirCodeReport);
      ASSERT_EQ(report.Put(L"gfrmTxFilter", Variant(FilterScreen())).code, S_OK);
      const FailingCall armed(failing, E_ACCESSDENIED);
      outcome = report.Call(L"pbGenSql", Variant(FakeObject::Make()), Variant(7));
    }
    ASSERT_EQ(FakeObject::Alive(), 0) << "after call " << failing << " had failed";
    ASSERT_EQ(CanUnload(), S_OK);
    if (outcome.code == S_OK) {
      EXPECT_NE(TextIn(outcome.result).find(L"WHERE DirectoryCode.UnitKey = 7"),
                std::wstring::npos);
      break;
    }
    ++failures;
    ASSERT_EQ(outcome.code, DISP_E_EXCEPTION);
    ASSERT_EQ(outcome.raised, E_ACCESSDENIED);
  }
  EXPECT_GT(failures, 50);
}

TEST_F(FaultSweep, WhicheverCallOfAMergeFailsItAnswersFalseAndKeepsNothing) {
  for (int failing = 1;; ++failing) {
    ASSERT_LT(failing, 2000) << "the operation does not come to its end";
    Outcome outcome;
    bool hasFailed = false;
    {
      const Client report(kCredentialReport);
      const ComPtr<FakeObject> target = MakeTable({{L"a", L"b"}});
      const ComPtr<FakeObject> source = MakeTable({{L"c", L"d"}, {L"e", L"f"}, {L"g", L"h"}});
      const FailingCall armed(failing, E_FAIL);
      outcome = report.Call(L"pbMergeXArrayDBObjects", Variant(target), Variant(source));
      hasFailed = armed.HasFailed();
    }
    ASSERT_EQ(FakeObject::Alive(), 0) << "after call " << failing << " had failed";
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result) == VARIANT_FALSE, hasFailed) << failing;
    if (!hasFailed) break;
  }
}

}  // namespace
}  // namespace qortest
