// A directory code that is stored for a client: the new row's identity comes back.
#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr int kNewRow = 4711;

class Save : public ComTest {
 protected:
  // A text box with that text.
  static ComPtr<FakeObject> Box(const wchar_t* text) {
    ComPtr<FakeObject> box = FakeObject::Make();
    box->Property(L"Text", Variant(text));
    return box;
  }

  // An entry of a code and its phone number, without anything else.
  static ComPtr<FakeObject> Screen() {
    ComPtr<FakeObject> screen = FakeObject::Make();
    screen->Property(L"gstrTag", Variant(L""))
        .Property(L"txtdirectorycode", Variant(Box(L"0123")))
        .Property(L"txtPhoneNo", Variant(Box(L"5550100")));
    for (const wchar_t* name : {L"txtExtn", L"txtPhoneNocf", L"txtExtnCF", L"txtDisplayName"}) {
      screen->Property(name, Variant(Box(L"")));
    }
    for (const wchar_t* name : {L"chkDND", L"chkCallForwarding", L"chkActive",
                                L"chkShowDisplayName", L"chkShowDirCode"}) {
      const ComPtr<FakeObject> check = FakeObject::Make();
      check->Property(L"Value", Variant(0));
      screen->Property(name, Variant(check));
    }
    return screen;
  }

  // Stores the entry as a new code; a step sender that changes what it is given sees the step.
  static Outcome StoreNew(const VARIANT& rid, bool isScript = false) {
    const FakeManager manager;
    int queries = 0;
    manager.object
        ->On(L"ExecuteSelect",
             [&queries](const FakeCall& call) {
               // The first query counts the code as stored, which leaves the unit's capacity alone.
               return call.Return(++queries == 1 ? MakeTable({{123}}) : MakeEmptyTable());
             })
        .On(L"ExecuteInsert", [](const FakeCall& call) { return call.Return(kNewRow); });
    const ComPtr<FakeObject> sender = FakeObject::Make();
    if (isScript) sender->AsScriptObject();
    int stepped = 0;
    sender
        ->On(L"pbDeleteDirCodePrgStepExists",
             [](const FakeCall& call) { return call.Return(false); })
        .On(L"pbGenDirCodePrgStep", [&stepped](const FakeCall& call) -> HRESULT {
          stepped = NumberIn(call.Argument(2));
          call.Assign(1, Variant(0));
          call.Assign(2, Variant(0));
          return S_OK;
        });
    const auto offered = Offer(manager);
    const OfferedComponent steps(L"qorSPS.clsSendProgSteps",
                                 [sender] { return ComPtr<IDispatch>(sender.get()); });
    const OfferedComponent link(L"qorCommn.clsConnectionManager",
                                [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
    const Client controller(kDirCode);
    EXPECT_EQ(controller.Put(L"mobjDirCodeScreen", Variant(Screen())).code, S_OK);
    LONG unit = 7;
    Outcome outcome = controller.Call(L"pbSave", Variant(FakeObject::Make()),
                                      Variant::Reference(VT_I4, &unit), Variant(false), rid);
    EXPECT_EQ(unit, 7) << "a step sender's change of the unit is not the client's";
    EXPECT_EQ(stepped, kNewRow);
    return outcome;
  }
};

TEST_F(Save, TheNewRowsIdentityComesBackByReference) {
  for (const bool isScript : {false, true}) {
    LONG rid = 0;
    const Outcome outcome = StoreNew(Variant::Reference(VT_I4, &rid), isScript);
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
    EXPECT_EQ(rid, kNewRow);
  }
}

TEST_F(Save, TheNewRowsIdentityComesBackInEveryKindOfVariable) {
  for (const VARTYPE type : {VT_I2, VT_R8, VT_BSTR, VT_CY}) {
    for (const Shape shape :
         {Shape::kReference, Shape::kVariantReference, Shape::kReferenceInVariant}) {
      const Shaped rid(shape, Variant::As(type, Variant(0)));
      ASSERT_EQ(StoreNew(rid.argument()).code, S_OK);
      EXPECT_EQ(V_VT(&rid.content()), shape == Shape::kVariantReference ? VARTYPE{VT_I4} : type);
      EXPECT_EQ(NumberIn(Variant::As(VT_I4, rid.content())), kNewRow);
    }
  }
}

TEST_F(Save, NobodyHasToTakeTheIdentity) {
  for (const Variant& rid : {Variant(0), Variant::Omitted()}) {
    const Outcome outcome = StoreNew(rid);
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  }
}

}  // namespace
}  // namespace qortest
