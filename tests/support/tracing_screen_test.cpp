#include <gtest/gtest.h>

#include "frame/controls.h"
#include "frame/date.h"
#include "host/screens/credential_screen.h"
#include "tests/support/recorder.h"
#include "tests/support/tracing_object.h"

namespace qortest {
namespace {

using qorcred::Call;
using qorcred::Get;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::RuntimeError;
using qorhost::ScreenModel;

class TracingScreenTest : public ::testing::Test {
 protected:
  ObjectRef Traced() {
    return std::make_shared<TracingScreen>(
        screen_, recorder_.Sink(),
        [screen = screen_](std::string_view name) { return screen->SpelledName(name); });
  }
  ObjectRef Control(std::string_view name) { return qorcred::RequireObject(Get(*traced_, name)); }

  std::shared_ptr<ScreenModel> screen_ = qorhost::MakeTenantCreatingScreen();
  Recorder recorder_;
  ObjectRef traced_ = Traced();
};

TEST_F(TracingScreenTest, FetchingAControlWritesNothing) {
  (void)Control("cboAssignedTo");
  EXPECT_EQ(recorder_.Take(), Lines{});
}

TEST_F(TracingScreenTest, WritesCallsPutsAndGetsOfAControl) {
  const ObjectRef list = Control("CBOASSIGNEDTO");
  Call(*list, "AddItem", "Doe Jane ");
  Call(*list, "AddItem", "Abel", 0);
  Get(*list, "NewIndex");
  Put(*list, "ItemData", 0, "-100");
  Put(*list, "ListIndex", 1);
  Get(*list, "ItemData", 0);
  Call(*list, "Clear");
  EXPECT_EQ(recorder_.Take(),
            (Lines{"cboAssignedTo.AddItem \"Doe Jane \"", "cboAssignedTo.AddItem \"Abel\" 0",
                   "cboAssignedTo.NewIndex -> 0", "cboAssignedTo.ItemData(0) = \"-100\"",
                   "cboAssignedTo.ListIndex = 1", "cboAssignedTo.ItemData(0) -> -100",
                   "cboAssignedTo.Clear"}));
  EXPECT_EQ(screen_->List("cboAssignedTo").count(), 0) << "the calls reach the control";
}

TEST_F(TracingScreenTest, AControlIsNamedAsCalledWithoutASpeller) {
  const TracingScreen screen(screen_, recorder_.Sink());
  traced_ = std::make_shared<TracingScreen>(screen);
  Call(*Control("TXTPINSTART"), "SetFocus");
  EXPECT_EQ(recorder_.Take(), Lines{"TXTPINSTART.SetFocus"});
}

TEST_F(TracingScreenTest, WritesVariablesAndTheName) {
  Put(*traced_, "gstrtag", "Single");
  Get(*traced_, "gstrTag");
  Get(*traced_, "Name");
  EXPECT_EQ(recorder_.Take(),
            (Lines{"gstrTag = \"Single\"", "gstrTag -> \"Single\"", "Name -> \"frmTBL\""}));
}

TEST_F(TracingScreenTest, WritesDates) {
  Get(*Control("dtpEnd"), "MaxDate");
  EXPECT_EQ(recorder_.Take(), Lines{"dtpEnd.MaxDate -> #12/31/9999#"});
}

TEST_F(TracingScreenTest, WritesWhatACallRaisesAndRaisesItAgain) {
  EXPECT_THROW(Call(*Control("lblDoor1"), "Clear"), RuntimeError);
  EXPECT_THROW(Put(*Control("cboCredentials"), "ListIndex", 5), RuntimeError);
  EXPECT_THROW(Get(*traced_, "txtNothing"), RuntimeError);
  EXPECT_EQ(recorder_.Take(),
            (Lines{"lblDoor1.Clear ! 438 \"Object doesn't support this property or method\"",
                   "cboCredentials.ListIndex = 5 ! 5 \"Invalid procedure call or argument\"",
                   "txtNothing ! 438 \"Object doesn't support this property or method\""}));
}

TEST_F(TracingScreenTest, AControlOfAnArrayIsNamedByItsIndex) {
  screen_->Add("txtField", std::make_shared<qorhost::ControlArrayModel>(
                               std::vector<std::shared_ptr<qorhost::ControlModel>>{
                                   std::make_shared<qorhost::TextModel>()}));
  const ObjectRef box = qorcred::RequireObject(Get(*Control("txtField"), "", 0));
  Put(*box, "Text", "5");
  const ObjectRef sameBox = qorcred::RequireObject(Get(*traced_, "txtField", 0));
  Get(*sameBox, "Text");
  EXPECT_EQ(recorder_.Take(), (Lines{"txtField(0).Text = \"5\"", "txtField(0).Text -> \"5\""}));
}

TEST_F(TracingScreenTest, ADefaultMemberIsTheNameAlone) {
  screen_->Add("pvnDays", std::make_shared<qorhost::SpinnerModel>());
  const ObjectRef spinner = Control("pvnDays");
  Put(*spinner, "", 3);
  Get(*spinner, "");
  EXPECT_EQ(recorder_.Take(), (Lines{"pvnDays = 3", "pvnDays -> 3"}));
}

TEST_F(TracingScreenTest, KeepsNoControlAlive) {
  std::weak_ptr<ScreenModel> screen = screen_;
  { const ObjectRef list = Control("cboCredentials"); }
  traced_.reset();
  screen_.reset();
  EXPECT_TRUE(screen.expired());
}

}  // namespace
}  // namespace qortest
