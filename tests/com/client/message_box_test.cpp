// Real message boxes, answered by their windows.
#include <algorithm>

#include "tests/com/client/answered_box.h"
#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

constexpr const wchar_t* kTitle = L"Pello RT";

/// A window of the host, in front while it lives.
class HostWindow {
 public:
  HostWindow()
      : window_(CreateWindowW(L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                              nullptr, nullptr, nullptr, nullptr)) {
    SetActiveWindow(window_);
  }
  ~HostWindow() { DestroyWindow(window_); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  [[nodiscard]] HWND get() const { return window_; }

 private:
  HWND window_;
};

class MessageBoxes : public ComTest {
 protected:
  // Refuses a deletion because tenants hold the credentials.
  static Outcome Refuse() {
    const FakeManager manager;
    manager.state->answer = MakeTable({{12}});
    const Client report(kCredentialReport);
    return report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(7),
                       Variant(manager.object));
  }
};

TEST_F(MessageBoxes, ANoticeIsShownAndClosedWithOk) {
  AnsweredBox box(kTitle, IDOK);
  const Outcome outcome = Refuse();
  const SeenBox& seen = box.Seen();
  ASSERT_TRUE(seen.wasFound);
  EXPECT_EQ(seen.text,
            L"Credentials which are assigned to tenants cannot be deleted. Please deselect those "
            L"credentials.");
  EXPECT_EQ(seen.buttons, std::vector<int>{IDOK});
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
}

TEST_F(MessageBoxes, TheActiveWindowOwnsThemAndWaits) {
  const HostWindow window;
  ASSERT_EQ(GetActiveWindow(), window.get());
  AnsweredBox box(kTitle, IDOK);
  EXPECT_EQ(Refuse().code, S_OK);
  const SeenBox& seen = box.Seen();
  ASSERT_TRUE(seen.wasFound);
  EXPECT_EQ(seen.owner, window.get());
  EXPECT_FALSE(seen.wasOwnerEnabled);
  EXPECT_TRUE(IsWindowEnabled(window.get()));
}

TEST_F(MessageBoxes, WithoutAnActiveWindowNobodyOwnsThemAndAllWindowsWait) {
  const HostWindow one;
  const HostWindow other;
  SetActiveWindow(nullptr);
  ASSERT_EQ(GetActiveWindow(), nullptr);
  AnsweredBox box(kTitle, IDOK);
  EXPECT_EQ(Refuse().code, S_OK);
  ASSERT_TRUE(box.Seen().wasFound);
  EXPECT_EQ(box.Seen().owner, nullptr);
  EXPECT_EQ(box.Seen().windowsTakingInput, 0);
  EXPECT_TRUE(IsWindowEnabled(one.get()));
  EXPECT_TRUE(IsWindowEnabled(other.get()));
}

TEST_F(MessageBoxes, AFailedDeletionIsToldAfterIt) {
  const FakeManager manager;
  const auto offered = Offer(manager);
  const Client report(kDirCodeReport);
  AnsweredBox box(kTitle, IDOK);
  LONG rows = 77;
  const Outcome outcome = report.Call(L"pbDelete", Variant(FakeObject::Make()), Variant(7),
                                      Variant::Reference(VT_I4, &rows));
  EXPECT_EQ(box.Seen().text, L"Credentials(s) are not deleted successfully.");
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_FALSE);
  EXPECT_EQ(rows, 0);
}

/// The deletion of a credential that a tenant holds.
class Questions : public MessageBoxes, public testing::WithParamInterface<int> {
 protected:
  static ComPtr<FakeObject> CredentialScreen() {
    const ComPtr<FakeObject> list = FakeObject::Make();
    list->Property(L"ListIndex", Variant(0)).Property(L"ItemData", Variant(5));
    ComPtr<FakeObject> screen = FakeObject::Make();
    screen->Property(L"cboCredentials", Variant(list));
    return screen;
  }
};

TEST_P(Questions, AreAnsweredByTheButtonThatIsPressed) {
  const bool isYes = GetParam() == IDYES;
  const FakeManager manager;
  manager.state->answer = MakeTable({{12}});
  manager.object->On(L"ExecuteDelete", [](const FakeCall& call) { return call.Return(1); })
      .On(L"ExecuteScalar", [](const FakeCall& call) { return call.Return(0); });
  const auto offered = Offer(manager);
  const OfferedComponent tenants(L"qorTent.clsTenant",
                                 [] { return ComPtr<IDispatch>(FakeObject::Make().get()); });
  const Client controller(kCredential);
  ASSERT_EQ(controller.Put(L"gmobjCredentialScreen", Variant(CredentialScreen())).code, S_OK);

  AnsweredBox box(kTitle, GetParam());
  const Outcome outcome =
      controller.Call(L"pbDelete", Variant(FakeObject::Make()), Variant(7), Variant(5));
  const SeenBox& seen = box.Seen();
  ASSERT_TRUE(seen.wasFound);
  EXPECT_EQ(seen.text,
            L"This credential is already assgined to a Tenant. Deleting this credential will "
            L"remove it from the assigned Tenant and delete the credential from the system. Do you "
            L"want to continue?");
  EXPECT_EQ(seen.buttons, (std::vector<int>{IDYES, IDNO}));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result) != VARIANT_FALSE, isYes);
  const auto& calls = manager.object->calls();
  EXPECT_EQ(std::any_of(calls.begin(), calls.end(),
                        [](const SeenCall& call) { return call.member == L"ExecuteDelete"; }),
            isYes);
}

INSTANTIATE_TEST_SUITE_P(Answers, Questions, testing::Values(IDYES, IDNO), [](const auto& one) {
  return std::string(one.param == IDYES ? "Yes" : "No");
});

}  // namespace
}  // namespace qortest
