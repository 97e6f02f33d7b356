#include <gtest/gtest.h>

#include "frame/controls.h"
#include "host/screens/credential_screen.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::Null;
using qorcred::Put;
using qorcred::Value;
using qorhost::MakeCredentialScreen;
using qorhost::MakeTenantCreatingScreen;
using qorhost::ScreenModel;
using qortest::Raises;

TEST(ScreenModelTest, FindsControlsAndVariablesWithoutLetterCase) {
  const auto screen = MakeCredentialScreen();
  EXPECT_EQ(Get(*screen, "TXTPINEND"), Get(*screen, "txtPinEnd"));
  Put(*screen, "GSTRTAG", "SINGLE");
  EXPECT_EQ(Get(*screen, "gstrTag"), Value("SINGLE"));
}

TEST(ScreenModelTest, KeepsTheSpellingOfItsNames) {
  const auto screen = MakeCredentialScreen();
  EXPECT_EQ(screen->SpelledName("txtpinend"), "txtPINEND");
  EXPECT_EQ(screen->SpelledName("NAME"), "Name");
  EXPECT_EQ(screen->SpelledName("txtNothing"), "");
}

TEST(ScreenModelTest, UnknownMembersAreRefused) {
  const auto screen = MakeCredentialScreen();
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Get(*screen, "txtNothing"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Put(*screen, "gstrNothing", 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Get(*screen, ""); }));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Put(*screen, "Name", "x"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Get(*screen, "gstrTag", 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kWrongArgumentCount, [&] { Put(*screen, "gstrTag", 1, 2); }));
}

TEST(ScreenModelTest, VariablesKeepTheTypeTheyWereDeclaredWith) {
  const auto screen = MakeCredentialScreen();
  Put(*screen, "glngrid", "17");
  EXPECT_EQ(Get(*screen, "glngrid"), Value(17));
  Put(*screen, "gstrTag", 5);
  EXPECT_EQ(Get(*screen, "gstrTag"), Value("5"));
  Put(*screen, "gblnModifiedFromClass", -1);
  EXPECT_EQ(Get(*screen, "gblnModifiedFromClass"), Value(true));
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { Put(*screen, "glngrid", "x"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidUseOfNull, [&] { Put(*screen, "gstrTag", Null{}); }));
}

TEST(ScreenModelTest, AVariableDeclaredEmptyTakesAnything) {
  ScreenModel screen("frm");
  screen.AddVariable("gvarAny", {});
  Put(screen, "gvarAny", Null{});
  EXPECT_EQ(Get(screen, "gvarAny"), Value(Null{}));
}

TEST(ScreenModelTest, ArgumentsAndValuesReachAControlsDefaultMember) {
  ScreenModel screen("frm");
  const auto first = std::make_shared<qorhost::TextModel>();
  screen.Add("txtField", std::make_shared<qorhost::ControlArrayModel>(
                             std::vector<std::shared_ptr<qorhost::ControlModel>>{first}));
  screen.Add("pvnDays", std::make_shared<qorhost::SpinnerModel>());
  EXPECT_EQ(Get(screen, "txtField", 0), Value(qorcred::ObjectRef(first)));
  Put(screen, "pvnDays", 7);
  EXPECT_EQ(Get(screen.Get<qorhost::SpinnerModel>("pvnDays"), "Value"), Value(7));
}

TEST(ScreenModelTest, ANameIsTakenOnce) {
  ScreenModel screen("frm");
  screen.AddVariable("gstrTag", "");
  EXPECT_TRUE(
      Raises(ErrorNumber::kInvalidProcedureCall, [&] { screen.AddVariable("GSTRTAG", 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { screen.AddVariable("name", 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { screen.AddVariable("", 1); }));
}

TEST(ScreenModelTest, TypedAccessRefusesOtherKinds) {
  const auto screen = MakeCredentialScreen();
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { (void)screen->List("txtPINStart"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { (void)screen->Variable("txtPINStart"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { (void)screen->Any("gstrTag"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { (void)screen->List("cboNothing"); }));
}

TEST(FocusTest, TheScreenRemembersTheControlThatGotItLast) {
  const auto screen = MakeCredentialScreen();
  EXPECT_EQ(screen->focused(), "");
  Call(screen->Box("txtPINStart"), "SetFocus");
  Call(screen->Date("dtpEnd"), "setfocus");
  EXPECT_EQ(screen->focused(), "dtpEnd");
  screen->ClearFocus();
  EXPECT_EQ(screen->focused(), "");
}

TEST(FocusTest, ADisabledOrHiddenControlCannotHaveIt) {
  const auto screen = MakeCredentialScreen();
  Put(screen->Box("txtFacilityCode"), "Enabled", false);
  Put(screen->Box("txtIDCode"), "Visible", false);
  for (const char* name : {"txtFacilityCode", "txtIDCode"}) {
    EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] {
      Call(screen->Any(name), "SetFocus");
    })) << name;
  }
  EXPECT_EQ(screen->focused(), "");
}

TEST(FocusTest, ControlsOfAnArrayAreNamedByTheirIndex) {
  ScreenModel screen("frm");
  const auto second = std::make_shared<qorhost::TextModel>();
  screen.Add("txtField", std::make_shared<qorhost::ControlArrayModel>(
                             std::vector<std::shared_ptr<qorhost::ControlModel>>{
                                 std::make_shared<qorhost::TextModel>(), second}));
  second->SetFocus();
  EXPECT_EQ(screen.focused(), "txtField(1)");
}

TEST(FocusTest, AControlMayOutliveItsScreen) {
  auto screen = MakeCredentialScreen();
  const qorcred::Value held = Get(*screen, "txtPINStart");
  screen.reset();
  Call(**held.As<qorcred::ObjectRef>(), "SetFocus");
  EXPECT_EQ(Get(**held.As<qorcred::ObjectRef>(), "Name"), Value("txtPINStart"));
}

TEST(CredentialScreenTest, HasTheControlsAndVariablesOfTheCredentialScreen) {
  const auto screen = MakeCredentialScreen();
  for (const char* name : {"cboSchedules1", "cboSchedules2", "cboSchedules3", "cboSchedules4",
                           "cboAssignedTo", "cboCredentialType", "cboCredentials", "cboActivate"}) {
    EXPECT_EQ(screen->List(name).count(), 0) << name;
  }
  for (const char* name :
       {"txtFacilityCode", "txtPINStart", "txtPINEND", "txtIDCode", "txtSequenceCode"}) {
    EXPECT_EQ(screen->Box(name).text(), "") << name;
  }
  for (const char* name : {"lblFacilityCode", "lblIDCode", "lblSequencecode", "lblActivate",
                           "lblDoor1", "lblDoor2", "lblDoor3", "lblDoor4"}) {
    EXPECT_EQ(screen->Get<qorhost::LabelModel>(name).caption(), "") << name;
  }
  EXPECT_FALSE(screen->Date("dtpStart").chosen());
  EXPECT_FALSE(screen->Date("dtpEnd").chosen());
  EXPECT_EQ(screen->Check("chkActive").state(), 0);
  EXPECT_EQ(screen->Variable("gstrTag"), Value(""));
  EXPECT_EQ(screen->Variable("gstrNewTenantIDs"), Value(""));
  EXPECT_EQ(screen->Variable("gstrLastModifiedDate"), Value(""));
  EXPECT_EQ(screen->Variable("gblnModifiedFromClass"), Value(false));
  EXPECT_EQ(screen->Variable("glngrid"), Value(0));
  EXPECT_EQ(screen->Variable("gblnDisplayFacilityCode"), Value(true));
}

TEST(CredentialScreenTest, TheButtonsOfATransmitterAreOneGroup) {
  const auto screen = MakeCredentialScreen();
  EXPECT_TRUE(screen->Option("optButtonDefault").on());
  Put(screen->Option("optButton4"), "Value", true);
  EXPECT_FALSE(screen->Option("optButtonDefault").on());
  Put(screen->Option("optButtonDefault"), "Value", true);
  EXPECT_FALSE(screen->Option("optButton4").on());
}

TEST(CredentialScreenTest, TheTenantCreatingScreenHasItsOwnName) {
  const auto screen = MakeTenantCreatingScreen();
  EXPECT_EQ(Get(*screen, "Name"), Value("frmTBL"));
  EXPECT_NE(Get(*MakeCredentialScreen(), "Name"), Value("frmTBL"));
  EXPECT_EQ(screen->Names(), MakeCredentialScreen()->Names());
}

}  // namespace
