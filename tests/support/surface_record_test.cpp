// What the tests' controllers are seen to touch: each thing once, under the operation that did it.
#include "tests/support/surface_record.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <stdexcept>

#include "frame/runtime_error.h"
#include "host/screens/credential_screen.h"
#include "tests/support/noted_controllers.h"
#include "tests/support/recording_host.h"

namespace qortest {
namespace {

using qorcred::ObjectRef;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;

constexpr std::string_view kClass = "AClass";

std::vector<std::string> NotedOf(std::string_view className, std::string_view operation) {
  std::vector<std::string> lines;
  for (const Touch& touch : SurfaceRecord::Instance().Touches()) {
    if (touch.className == className && touch.operation == operation) {
      lines.push_back(touch.part + ": " + touch.what);
    }
  }
  return lines;
}

void Note(std::string_view what) {
  SurfaceRecord::Instance().Note("part", what);
}

TEST(SurfaceRecordTest, KeepsATouchOnceWithTheTestThatMadeItFirst) {
  const SurfaceRecord::Operation running(kClass, "once");
  Note("this");
  Note("this");
  EXPECT_THAT(SurfaceRecord::Instance().Touches(),
              Contains(Touch{"AClass", "once", "part", "this",
                             "SurfaceRecordTest.KeepsATouchOnceWithTheTestThatMadeItFirst"})
                  .Times(1));
}

TEST(SurfaceRecordTest, KeepsNothingWhileNoOperationRuns) {
  const std::size_t before = SurfaceRecord::Instance().Touches().size();
  Note("outside");
  EXPECT_EQ(SurfaceRecord::Instance().Touches().size(), before);
}

TEST(SurfaceRecordTest, LeavesTheHostsOwnDoingOut) {
  const SurfaceRecord::Operation running(kClass, "outer");
  {
    const SurfaceRecord::HostsTurn turn;
    Note("by the host");
    const SurfaceRecord::Operation again(kClass, "inner");
    Note("by the operation that the host calls");
  }
  Note("afterwards");
  EXPECT_THAT(NotedOf(kClass, "outer"), UnorderedElementsAre("part: afterwards"));
  EXPECT_THAT(NotedOf(kClass, "inner"),
              UnorderedElementsAre("part: by the operation that the host calls"));
}

TEST(SurfaceRecordTest, TellsAStatementThatWasHandedOver) {
  const SurfaceRecord::Operation running(kClass, "handed");
  SurfaceRecord::Instance().HandOver("Select 1");
  Note("Select 1");
  Note("Select 2");
  EXPECT_THAT(NotedOf(kClass, "handed"),
              UnorderedElementsAre("part: (handed over)", "part: Select 2"));
}

TEST(SurfaceRecordTest, ComesBackFromItsFileAsItWas) {
  const std::vector<Touch> touches{{"A", "b", "c", "a tab\t, a line\n and a \\t", "d"},
                                   {"A", "b", "c", "", ""}};
  std::stringstream file;
  WriteTouches(file, touches);
  EXPECT_EQ(ReadTouches(file), touches);

  std::istringstream other("no touch");
  EXPECT_THROW((void)ReadTouches(other), std::runtime_error);
}

TEST(NotedControllerTest, NotesWhatEachOperationTouches) {
  RecordingHost host;
  UnderTest<qorcred::clsCredential> controller(host.host());
  controller.set_gmobjCredentialScreen(host.screen());
  controller.pbRetrieveTenants(host.connection(), 3);

  EXPECT_THAT(NotedOf("clsCredential", kCreation),
              IsSupersetOf({"created: qorDBI.clsDBManager",
                            "qorDBI.clsDBManager: pbGetRowIDStringConstant()"}));
  EXPECT_THAT(NotedOf("clsCredential", "pbRetrieveTenants"),
              IsSupersetOf({"screen: cboAssignedTo", "screen: cboAssignedTo.AddItem(-)",
                            "screen: cboAssignedTo.ItemData(-) put",
                            "qorDBI.clsDBManager: ExecuteSelect(VVBB)", "result table: (--) get"}));
  EXPECT_THAT(NotedOf("clsCredential", "pbSave"), IsEmpty());
}

TEST(NotedControllerTest, NotesVariablesApartFromControls) {
  const ObjectRef screen =
      Noted(qorhost::MakeCredentialScreen(qorcred::Date{46347.0}), part::kScreen);
  const SurfaceRecord::Operation running(kClass, "variables");
  (void)qorcred::Get(*screen, "gstrTag");
  qorcred::Put(*screen, "gstrTag", "Single");
  (void)qorcred::Get(*screen, "cboActivate");
  EXPECT_THROW((void)qorcred::Get(*screen, "cboNone"), qorcred::RuntimeError);
  EXPECT_THAT(
      NotedOf(kClass, "variables"),
      UnorderedElementsAre("screen: gstrTag get", "screen: gstrTag put", "screen: cboActivate"));
}

TEST(NotedControllerTest, GivesTheHostItsOwnObjectsBack) {
  RecordingHost host;
  UnderTest<qorcred::clsCredential> controller(host.host());
  controller.set_gmobjCredentialScreen(host.screen());
  EXPECT_EQ(controller.gmobjCredentialScreen(), host.screen());
  EXPECT_EQ(qorcred::Get(controller, "gmobjCredentialScreen"), qorcred::Value(host.screen()));
}

TEST(NotedControllerTest, NotesTheArgumentsThatComeBackChanged) {
  RecordingHost host(ScreenKind::kDirectoryCode);
  UnderTest<qorcred::clsDirCode> controller(host.host());
  ObjectRef table;
  ASSERT_TRUE(controller.pbFetchDirForMerge(host.connection(), 3, table));
  EXPECT_NE(table, nullptr);
  EXPECT_THAT(NotedOf("clsDirCode", "pbFetchDirForMerge"), Contains("argument: arrXDBDirCode"));

  qorcred::StringArray details(24);
  std::vector<qorcred::Value> arguments{host.connection(), "3", "Convert", details};
  (void)controller.Invoke("pbMergeSave", qorcred::InvokeKind::kCall, arguments);
  EXPECT_THAT(NotedOf("clsDirCode", "pbMergeSave"), ElementsAre("argument: strDirCodeDetails"));
}

TEST(NotedControllerTest, NotesTheStatementThatAnOperationComposes) {
  RecordingHost host(ScreenKind::kReportFilter);
  UnderTest<qorcred::clsDirCodeReport> report(host.host());
  report.set_gfrmTxFilter(host.screen());
  const std::string statement = report.pbGenSql(host.connection(), 3);
  EXPECT_THAT(NotedOf("clsDirCodeReport", "pbGenSql"), Contains("statement: " + statement));
}

}  // namespace
}  // namespace qortest
