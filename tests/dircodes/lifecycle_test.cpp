// A controller's life: the components it keeps, the screens it is given and what it lets go.
#include <memory>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::ObjectRef;
using qorcred::StringArray;

TEST(DirCodeLifecycle, CreatesItsComponentsAndAsksForTheNamesOnce) {
  RecordingHost host(ScreenKind::kDirectoryCode);

  const UnderTest<qorcred::clsDirCode> controller(host.host());

  EXPECT_TRUE(SameLines(host.transcript().Read(Detail::kEverything), R"~(
    CreateObject "qorDBI.clsDBManager"
    CreateObject "qorCommn.clsConnectionManager"
    pbGetRowIDStringConstant -> "_ROWID_"
    pbGetLastModifiedDateStringConstant -> "LASTMODIFIEDDATE"
  )~"));
  EXPECT_EQ(controller.mobjDirCodeScreen(), nullptr);
  EXPECT_EQ(controller.mfrmConnectionScreen(), nullptr);
}

TEST(DirCodeLifecycle, ReleasesTheDatabaseManagerFirst) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  auto controller = std::make_unique<UnderTest<qorcred::clsDirCode>>(host.host());
  host.StartOver();

  controller.reset();

  EXPECT_TRUE(SameLines(host.transcript().Read(Detail::kEverything), R"~(
    Release "qorDBI.clsDBManager"
    Release "qorCommn.clsConnectionManager"
  )~"));
  EXPECT_EQ(host.services().LiveComponents(), 0);
}

TEST(DirCodeLifecycle, WithoutADatabaseManagerStillMakesTheConnectionManager) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  host.gate().FailOn("CreateObject qorDBI.clsDBManager");

  const UnderTest<qorcred::clsDirCode> controller(host.host());

  EXPECT_EQ(host.transcript().Read(Detail::kComponents),
            (Lines{"CreateObject \"qorDBI.clsDBManager\" ! 1000 \"Injected failure\"",
                   "CreateObject \"qorCommn.clsConnectionManager\""}));
  EXPECT_EQ(host.services().LiveComponents(), 1);
}

TEST(DirCodeLifecycle, WithoutAConnectionManagerStillAsksForTheNames) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  host.gate().FailOn("CreateObject qorCommn.clsConnectionManager");

  const UnderTest<qorcred::clsDirCode> controller(host.host());

  EXPECT_EQ(host.transcript().StartingWith("pbGet").size(), 2U);
  EXPECT_EQ(host.services().LiveComponents(), 1);
}

TEST(DirCodeLifecycle, WithoutTheRowIdTextStillAsksForTheOther) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  host.gate().FailOn("pbGetRowIDStringConstant");

  const UnderTest<qorcred::clsDirCode> controller(host.host());

  EXPECT_EQ(host.transcript().StartingWith("pbGet"),
            (Lines{"pbGetRowIDStringConstant ! 1000 \"Injected failure\"",
                   "pbGetLastModifiedDateStringConstant -> \"LASTMODIFIEDDATE\""}));
}

TEST(DirCodeLifecycle, WithoutADatabaseManagerFailsQuietly) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  host.gate().FailOn("CreateObject qorDBI.clsDBManager");
  UnderTest<qorcred::clsDirCode> controller(host.host());
  controller.set_mobjDirCodeScreen(host.screen());
  controller.set_mfrmConnectionScreen(host.connectionScreen());
  host.StartOver();
  StringArray details(24);
  ObjectRef table;

  controller.pbRetrieveSchedules(host.connection(), kUnit);
  controller.pbRetrieveSettingsFromUnit(host.connection(), kUnit);
  EXPECT_FALSE(controller.pbRetrieveTenants(host.connection(), kUnit));
  controller.pbRetrieveDirCodes(host.connection(), kUnit);
  EXPECT_FALSE(controller.pbSave(host.connection(), kUnit));
  EXPECT_FALSE(controller.pbUpdateDirCode(host.connection(), kUnit, "7"));
  EXPECT_FALSE(controller.pbDelete(host.connection(), kUnit, 17));
  EXPECT_FALSE(controller.pbMergeSave(host.connection(), kUnit, "Update", details, 17));
  EXPECT_FALSE(controller.pbFetchDirForMerge(host.connection(), kUnit, table));

  EXPECT_EQ(table, nullptr);
  ASSERT_EQ(host.services().trapped().size(), 9U);
  for (const auto& [operation, number] : host.services().trapped()) {
    EXPECT_EQ(number, ErrorNumber::kObjectNotSet) << operation;
  }
  EXPECT_EQ(controller.pbBase64Dec("QUJD"), "ABC");
}

TEST(DirCodeLifecycle, KeepsTheScreensUntilTheHostTakesThemBack) {
  DirCodeScreen screen;
  (void)screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit);
  EXPECT_EQ(screen.controller().mobjDirCodeScreen(), screen.host().screen());
  EXPECT_EQ(screen.controller().mfrmConnectionScreen(), screen.host().connectionScreen());
  const auto screens = screen.host().screen().use_count();
  const auto connectionScreens = screen.host().connectionScreen().use_count();

  screen.controller().set_mobjDirCodeScreen(nullptr);
  EXPECT_EQ(screen.host().screen().use_count(), screens - 1);
  EXPECT_EQ(screen.host().connectionScreen().use_count(), connectionScreens);

  screen.controller().set_mfrmConnectionScreen(nullptr);
  EXPECT_EQ(screen.host().connectionScreen().use_count(), connectionScreens - 1);
  EXPECT_EQ(screen.controller().mfrmConnectionScreen(), nullptr);
}

TEST(DirCodeLifecycle, KeepsNothingOfACall) {
  DirCodeScreen screen;
  screen.EnterNew("12");
  screen.host().database().Select("from Schedules", {{5, "Day"}});
  const auto connections = screen.host().connection().use_count();
  const auto screens = screen.host().screen().use_count();
  StringArray details(24);
  ObjectRef table;

  EXPECT_TRUE(screen.SaveNew());
  screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
  EXPECT_TRUE(screen.Merge("Insert", details));
  EXPECT_FALSE(screen.Delete(17));
  EXPECT_TRUE(screen.controller().pbFetchDirForMerge(screen.host().connection(), kUnit, table));
  table.reset();

  EXPECT_EQ(screen.host().connection().use_count(), connections);
  EXPECT_EQ(screen.host().screen().use_count(), screens);
  EXPECT_EQ(screen.host().database().LiveTables(), 0);
  EXPECT_EQ(screen.host().services().LiveComponents(), 2);
}

TEST(DirCodeLifecycle, WithoutAScreenFailsQuietly) {
  DirCodeScreen screen;
  screen.controller().set_mobjDirCodeScreen(nullptr);
  const ObjectRef& connection = screen.host().connection();
  screen.host().database().Select("FROM DIRECTORYCODE", {{kUnit, 17, 12}});

  screen.controller().pbRetrieveSchedules(connection, kUnit);
  screen.controller().pbRetrieveSettingsFromUnit(connection, kUnit);
  EXPECT_FALSE(screen.controller().pbRetrieveTenants(connection, kUnit));
  screen.controller().pbRetrieveDirCodes(connection, kUnit);
  screen.controller().pbRetrieveDirCodes(connection, kUnit, 17);
  EXPECT_FALSE(screen.SaveNew());
  EXPECT_FALSE(screen.SaveEdited());
  EXPECT_FALSE(screen.Renumber("7"));

  ASSERT_EQ(screen.host().services().trapped().size(), 8U);
  for (const auto& [operation, number] : screen.host().services().trapped()) {
    EXPECT_EQ(number, ErrorNumber::kObjectNotSet) << operation;
  }
  EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty());
}

TEST(DirCodeLifecycle, WithoutAScreenDeletesAndMerges) {
  DirCodeScreen screen;
  screen.controller().set_mobjDirCodeScreen(nullptr);
  StringArray details(24);

  EXPECT_FALSE(screen.Delete(17));
  EXPECT_TRUE(screen.Merge("Update", details));

  EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteDelete ").size(), 1U);
  EXPECT_TRUE(screen.host().services().trapped().empty());
}

TEST(DirCodeLifecycle, OnAScreenThatLacksAControlFailsQuietly) {
  DirCodeScreen screen;
  screen.controller().set_mobjDirCodeScreen(std::make_shared<qorhost::ScreenModel>("frmOther"));

  EXPECT_FALSE(screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit));

  ASSERT_EQ(screen.host().services().trapped().size(), 1U);
  EXPECT_EQ(screen.host().services().trapped().front().first, "pbRetrieveTenants");
  EXPECT_EQ(screen.host().services().trapped().front().second, ErrorNumber::kUnknownMember);
}

TEST(DirCodeLifecycle, OpensNoTransaction) {
  DirCodeScreen screen;
  screen.EnterNew("12");
  StringArray details(24);

  EXPECT_TRUE(screen.SaveNew());
  EXPECT_TRUE(screen.Merge("Insert", details));
  EXPECT_FALSE(screen.Delete(17));

  EXPECT_EQ(screen.host().transactions().begun(), 0);
}

TEST(DirCodeLifecycle, TwoControllersShareNothing) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  UnderTest<qorcred::clsDirCode> one(host.host());
  {
    UnderTest<qorcred::clsDirCode> other(host.host());
    other.set_mobjDirCodeScreen(host.screen());
    EXPECT_EQ(host.services().LiveComponents(), 4);
  }
  EXPECT_EQ(host.services().LiveComponents(), 2);
  EXPECT_EQ(one.mobjDirCodeScreen(), nullptr);
}

}  // namespace
}  // namespace qortest
