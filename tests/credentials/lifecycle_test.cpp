// A controller's life: the components it keeps, the screen it is given and what it lets go.
#include <memory>
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

TEST(Lifecycle, CreatesItsComponentsAndAsksForTheNamesOnce) {
  RecordingHost host;

  const UnderTest<qorcred::clsCredential> controller(host.host());

  EXPECT_TRUE(SameLines(host.transcript().Read(Detail::kEverything), R"~(
    CreateObject "qorDBI.clsDBManager"
    CreateObject "qorSPS.clsSendProgSteps"
    CreateObject "qorTent.clsTenant"
    pbGetRowIDStringConstant -> "_ROWID_"
    pbGetLastModifiedDateStringConstant -> "LASTMODIFIEDDATE"
  )~"));
  EXPECT_EQ(host.services().LiveComponents(), 3);
  EXPECT_EQ(controller.gmobjCredentialScreen(), nullptr);
}

TEST(Lifecycle, ReleasesItsComponentsInTheOrderOfTheirCreation) {
  RecordingHost host;
  auto controller = std::make_unique<UnderTest<qorcred::clsCredential>>(host.host());
  host.StartOver();

  controller.reset();

  EXPECT_TRUE(SameLines(host.transcript().Read(Detail::kEverything), R"~(
    Release "qorDBI.clsDBManager"
    Release "qorSPS.clsSendProgSteps"
    Release "qorTent.clsTenant"
  )~"));
  EXPECT_EQ(host.services().LiveComponents(), 0);
}

TEST(Lifecycle, KeepsTheScreenUntilTheHostTakesItBack) {
  CredentialScreen screen;
  screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit);
  EXPECT_EQ(screen.controller().gmobjCredentialScreen(), screen.host().screen());

  const auto before = screen.host().screen().use_count();
  screen.controller().set_gmobjCredentialScreen(nullptr);

  EXPECT_EQ(screen.controller().gmobjCredentialScreen(), nullptr);
  EXPECT_EQ(screen.host().screen().use_count(), before - 1);
}

TEST(Lifecycle, KeepsNothingOfACall) {
  CredentialScreen screen;
  screen.EnterRange(kTransmitter, "1", "3");
  screen.host().database().Select("from Schedules", {{5, "Day"}});
  const auto connections = screen.host().connection().use_count();
  const auto screens = screen.host().screen().use_count();

  EXPECT_TRUE(screen.SaveNew());
  screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);

  EXPECT_EQ(screen.host().connection().use_count(), connections);
  EXPECT_EQ(screen.host().screen().use_count(), screens);
  EXPECT_EQ(screen.host().database().LiveTables(), 0);
  EXPECT_EQ(screen.host().services().LiveComponents(), 3);
}

TEST(Lifecycle, WithoutAScreenEveryOperationFailsQuietly) {
  CredentialScreen screen;
  screen.controller().set_gmobjCredentialScreen(nullptr);
  const qorcred::ObjectRef& connection = screen.host().connection();
  screen.host().database().Select("FROM CREDENTIALBANK", {{kUnit, 17, 2, 700, 12, 5, 1, 4, "", 0}});
  screen.host().database().Select("from DOORS", {{kUnit, "A"}});

  screen.controller().pbRetrieveSchedules(connection, kUnit);
  screen.controller().pbRetrieveTenants(connection, kUnit);
  screen.controller().pbRetrieveSettingsFromUnit(connection, kUnit);
  screen.controller().pbRetrieveCredentials(connection, kUnit);
  screen.controller().pbRetrieveCredentials(connection, kUnit, 17);
  screen.controller().pbTransmitterCtls(true);
  screen.controller().pbRetrieveDoorDetails(connection, kUnit);
  EXPECT_EQ(screen.host().services().trapped().size(), 7U);
  EXPECT_FALSE(screen.SaveNew());
  EXPECT_FALSE(screen.SaveEdited());
  EXPECT_FALSE(screen.Renumber(5));

  for (const auto& [operation, number] : screen.host().services().trapped()) {
    EXPECT_EQ(number, qorcred::ErrorNumber::kObjectNotSet) << operation;
  }
  EXPECT_EQ(screen.host().services().trapped().size(), 10U);
  EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty());
  EXPECT_EQ(screen.host().transactions().begun(), 0);
}

TEST(Lifecycle, OnAScreenThatLacksAControlFailsQuietly) {
  CredentialScreen screen;
  const auto bare = std::make_shared<qorhost::ScreenModel>("frmOther");
  screen.controller().set_gmobjCredentialScreen(bare);

  screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit);

  ASSERT_EQ(screen.host().services().trapped().size(), 1U);
  EXPECT_EQ(screen.host().services().trapped().front().first, "pbRetrieveTenants");
  EXPECT_EQ(screen.host().services().trapped().front().second,
            qorcred::ErrorNumber::kUnknownMember);
}

TEST(Lifecycle, OnAHostWithoutComponentsCreatesAControllerThatFailsQuietly) {
  RecordingHost host;
  host.gate().FailAt(1);
  UnderTest<qorcred::clsCredential> controller(host.host());
  controller.set_gmobjCredentialScreen(host.screen());
  host.StartOver();

  controller.pbRetrieveSchedules(host.connection(), kUnit);
  EXPECT_FALSE(controller.pbDelete(host.connection(), kUnit, 17));

  EXPECT_EQ(host.services().trapped().size(), 2U);
  EXPECT_EQ(controller.pbBase64Dec("QUJD"), "ABC");
}

TEST(Lifecycle, TwoControllersShareNothing) {
  RecordingHost host;
  UnderTest<qorcred::clsCredential> one(host.host());
  {
    UnderTest<qorcred::clsCredential> other(host.host());
    other.set_gmobjCredentialScreen(host.screen());
    EXPECT_EQ(host.services().LiveComponents(), 6);
  }
  EXPECT_EQ(host.services().LiveComponents(), 3);
  EXPECT_EQ(one.gmobjCredentialScreen(), nullptr);
}

}  // namespace
}  // namespace qortest
