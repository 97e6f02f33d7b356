// A directory code that is stored for a client: the new row's identity comes back, dates go into
// the statement as the user writes them.
#include <array>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr int kNewRow = 4711;

/// While it lives, the user writes dates and times like that.
class UsersForm {
 public:
  UsersForm(const wchar_t* date, const wchar_t* time)
      : date_(Change(LOCALE_SSHORTDATE, date)), time_(Change(LOCALE_STIMEFORMAT, time)) {}
  ~UsersForm() {
    Change(LOCALE_SSHORTDATE, date_.c_str());
    Change(LOCALE_STIMEFORMAT, time_.c_str());
  }
  UsersForm(const UsersForm&) = delete;
  UsersForm& operator=(const UsersForm&) = delete;

 private:
  static std::wstring Change(LCTYPE which, const wchar_t* form) {
    std::array<wchar_t, 80> former{};
    EXPECT_NE(
        GetLocaleInfoW(LOCALE_USER_DEFAULT, which, former.data(), static_cast<int>(former.size())),
        0);
    EXPECT_NE(SetLocaleInfoW(LOCALE_USER_DEFAULT, which, form), FALSE);
    return former.data();
  }

  std::wstring date_;
  std::wstring time_;
};

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

  // The same, active from one date to another.
  static ComPtr<FakeObject> ScreenWithPeriod(double start, double end) {
    ComPtr<FakeObject> screen = Screen();
    const std::pair<const wchar_t*, Variant> controls[] = {{L"chkActive", Variant(1)},
                                                           {L"dtpStart", Variant::Day(start)},
                                                           {L"dtpEnd", Variant::Day(end)}};
    for (const auto& [name, value] : controls) {
      const ComPtr<FakeObject> control = FakeObject::Make();
      control->Property(L"Value", value);
      screen->Property(name, Variant(control));
    }
    return screen;
  }

  // Stores the entry as a new code; a step sender that changes what it is given sees the step.
  Outcome StoreNew(const VARIANT& rid, bool isScript = false,
                   const ComPtr<FakeObject>& screen = Screen()) {
    const FakeManager manager;
    int queries = 0;
    manager.object
        ->On(L"ExecuteSelect",
             [&queries](const FakeCall& call) {
               // The first query counts the code as stored, which leaves the unit's capacity alone.
               return call.Return(++queries == 1 ? MakeTable({{123}}) : MakeEmptyTable());
             })
        .On(L"ExecuteInsert", [this](const FakeCall& call) {
          statement_ = TextIn(call.Argument(1));
          return call.Return(kNewRow);
        });
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
    EXPECT_EQ(controller.Put(L"mobjDirCodeScreen", Variant(screen)).code, S_OK);
    LONG unit = 7;
    Outcome outcome = controller.Call(L"pbSave", Variant(FakeObject::Make()),
                                      Variant::Reference(VT_I4, &unit), Variant(false), rid);
    EXPECT_EQ(unit, 7) << "a step sender's change of the unit is not the client's";
    EXPECT_EQ(stepped, kNewRow);
    senderCalls_ = sender->calls();
    return outcome;
  }

  [[nodiscard]] const std::wstring& statement() const { return statement_; }
  /// What the sender saw.
  [[nodiscard]] const std::vector<SeenCall>& senderCalls() const { return senderCalls_; }

 private:
  std::vector<SeenCall> senderCalls_;
  std::wstring statement_;
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

TEST_F(Save, TheSenderGetsVariablesByReferenceAndTheCodesNumberByValue) {
  for (const bool isScript : {false, true}) {
    const auto byReference = [isScript](VARTYPE type) {
      return static_cast<VARTYPE>(VT_BYREF | (isScript ? VARTYPE{VT_VARIANT} : type));
    };
    ASSERT_EQ(StoreNew(Variant(0), isScript).code, S_OK);
    const VARTYPE connection = byReference(VT_DISPATCH);
    const VARTYPE number = byReference(VT_I4);
    EXPECT_EQ(
        senderCalls(),
        (std::vector<SeenCall>{
            {L"pbDeleteDirCodePrgStepExists", DISPATCH_METHOD, {connection, number, VT_R8}, {}},
            {L"pbGenDirCodePrgStep", DISPATCH_METHOD, {connection, number, number}, {}}}));
  }
}

TEST_F(Save, AnOmittedVariableThatTheHostSetsMeanwhileIsLeftToTheHost) {
  Variant rid = Variant::Omitted();
  const ComPtr<FakeObject> screen = Screen();
  screen->On(L"gstrTag", [&rid](const FakeCall& call) {
    rid = Variant(5);
    return call.Return(L"");
  });
  ASSERT_EQ(StoreNew(Variant::Reference(rid), false, screen).code, S_OK);
  EXPECT_EQ(NumberIn(rid), 5);
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

TEST_F(Save, DatesGoIntoTheStatementAsTheUserWritesThem) {
  constexpr double kStart = 45356;     // the 5th of March 2024, midnight
  constexpr double kEnd = 45667.5625;  // the 10th of January 2025, half past one in the afternoon
  struct {
    const wchar_t* date;
    const wchar_t* time;
    const wchar_t* period;
  } const forms[] = {
      {L"M/d/yyyy", L"h:mm:ss tt", L",'3/5/2024','1/10/2025 1:30:00 PM',"},
      {L"dd.MM.yyyy", L"HH:mm:ss", L",'05.03.2024','10.01.2025 13:30:00',"},
      {L"yyyy/MM/dd", L"HH.mm.ss", L",'2024/03/05','2025/01/10 13.30.00',"},
  };
  for (const auto& form : forms) {
    const UsersForm users(form.date, form.time);
    const Outcome outcome = StoreNew(Variant(0), false, ScreenWithPeriod(kStart, kEnd));
    ASSERT_EQ(outcome.code, S_OK);
    EXPECT_NE(statement().find(form.period), std::wstring::npos)
        << testing::PrintToString(statement());
  }
}

}  // namespace
}  // namespace qortest
