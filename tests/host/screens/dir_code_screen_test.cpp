#include "host/screens/dir_code_screen.h"

#include <gtest/gtest.h>

#include "frame/controls.h"
#include "frame/date.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Get;
using qorcred::Null;
using qorcred::Value;
using qortest::Raises;

const qorcred::Date kToday = qorcred::FromCivil({2026, 11, 21, 0, 0, 0});

TEST(DirectoryCodeScreenTest, OpensEmpty) {
  const auto screen = qorhost::MakeDirectoryCodeScreen(kToday);
  for (const char* list : {"cbodirectorycode", "cboSchedules", "cboSchedulesCF", "lstTenants"}) {
    EXPECT_EQ(screen->List(list).count(), 0) << list;
  }
  for (const char* box : {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtPhoneNocf", "txtExtnCF",
                          "txtDisplayName"}) {
    EXPECT_EQ(screen->Box(box).text(), "") << box;
  }
  for (const char* box :
       {"chkDND", "chkCallForwarding", "chkActive", "chkShowDisplayName", "chkShowDirCode"}) {
    EXPECT_EQ(screen->Check(box).state(), 0) << box;
  }
  for (const char* spinner : {"pvnTimeDelay", "pvnTimeDelayCF"}) {
    EXPECT_EQ(qorcred::Screen(screen).Spin(spinner).Number(), Value(0)) << spinner;
  }
  for (const char* picker : {"dtpStart", "dtpEnd"}) {
    EXPECT_EQ(screen->Date(picker).Chosen(), Value(Null{})) << picker;
    EXPECT_EQ(screen->Date(picker).shown(), kToday) << picker;
  }
  for (const char* button : {"cmdedit", "cmdSelect"}) {
    EXPECT_TRUE(screen->Any(button).enabled()) << button;
  }
}

TEST(DirectoryCodeScreenTest, VariablesKeepTheirTypes) {
  const auto screen = qorhost::MakeDirectoryCodeScreen(kToday);
  screen->SetVariable("glngrid", "17");
  screen->SetVariable("gblnModifiedFromClass", -1);
  screen->SetVariable("gstrTag", 5);
  EXPECT_EQ(screen->Variable("glngrid"), Value(17));
  EXPECT_EQ(screen->Variable("gblnModifiedFromClass"), Value(true));
  EXPECT_EQ(screen->Variable("gstrTag"), Value("5"));
  EXPECT_EQ(screen->Variable("gstrLastModifiedDate"), Value(""));
}

TEST(DirectoryCodeScreenTest, AReplacedEntryKeepsItsPlaceAndLosesTheSelection) {
  const auto screen = qorhost::MakeDirectoryCodeScreen(kToday);
  qorhost::ListModel& list = screen->List("cbodirectorycode");
  for (const char* code : {"<Add New>", "0005", "0009"}) list.AddItem(code);
  list.Select(1);
  const qorcred::ListControl view = qorcred::Screen(screen).List("cbodirectorycode");
  view.RemoveItem(1);
  view.AddItem("0007", 1);
  view.SetItemData(view.NewIndex(), 31);
  EXPECT_EQ(list.Text(1), "0007");
  EXPECT_EQ(list.ItemData(1), 31);
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.selected(), qorhost::ListModel::kNone);
}

TEST(ConnectionScreenTest, TellsTheFirmware) {
  const auto screen = qorhost::MakeConnectionScreen("FC01.005");
  EXPECT_EQ(Get(*screen, "MFIRMWAREFROMHANDSHAKE"), Value("FC01.005"));
  EXPECT_TRUE(
      Raises(qorcred::ErrorNumber::kUnknownMember, [&] { Get(*screen, "txtdirectorycode"); }));
}

}  // namespace
