// What the credential screen and the directory-code screen do differently on purpose, side by side.
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "frame/sql_text.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Null;
using qorcred::Value;

/// The credential controller on its own recording host.
struct Credentials {
  explicit Credentials(ScreenKind kind) : host(kind), controller(host.host()) {
    controller.set_gmobjCredentialScreen(host.screen());
    host.StartOver();
  }
  RecordingHost host;
  UnderTest<qorcred::clsCredential> controller;
};

TEST(ScreenDifferences, TheFixedSchedulesStandTheOtherWayRound) {
  Credentials credentials(ScreenKind::kCredential);
  credentials.controller.pbRetrieveSchedules(credentials.host.connection(), kUnit);
  EXPECT_EQ(ItemsOf(credentials.host, "cboSchedules1"),
            (std::vector<std::string>{"No Access=0", "Full Access=1"}));
  EXPECT_EQ(credentials.host.controls().List("cboSchedules1").selected(), 1);

  DirCodeScreen codes;
  codes.controller().pbRetrieveSchedules(codes.host().connection(), kUnit);
  EXPECT_EQ(ItemsOf(codes.host(), "cboSchedules"),
            (std::vector<std::string>{"Full Access=1", "No Access=0"}));
  EXPECT_EQ(codes.host().controls().List("cboSchedules").selected(), -1);
}

TEST(ScreenDifferences, OnlyDirectoryCodesSortTheirSchedules) {
  const std::vector<Row> rows{{9, "night"}, {5, "Day"}};
  Credentials credentials(ScreenKind::kCredential);
  credentials.host.database().Select("from Schedules", rows);
  credentials.controller.pbRetrieveSchedules(credentials.host.connection(), kUnit);
  EXPECT_EQ(credentials.host.controls().List("cboSchedules1").Text(2), "night");

  DirCodeScreen codes;
  codes.host().database().Select("from Schedules", rows);
  codes.controller().pbRetrieveSchedules(codes.host().connection(), kUnit);
  EXPECT_EQ(codes.host().controls().List("cboSchedules").Text(2), "Day");
}

TEST(ScreenDifferences, DefaultDatesCarryTheTimeOnlyForDirectoryCodes) {
  // The clock stands at 11/21/2026 10:00 AM.
  const Value lastDay = FromCivil({2026, 12, 31, 0, 0, 0});
  for (const int mode : {1, 2}) {
    SCOPED_TRACE(mode);
    Credentials credentials(ScreenKind::kTenantCreating);
    credentials.host.database().Select("FROM UnitSettings", {{false, mode, lastDay, 3}});
    credentials.controller.pbRetrieveSettingsFromUnit(credentials.host.connection(), kUnit);
    EXPECT_EQ(credentials.host.controls().Date("dtpStart").Chosen(),
              Value(FromCivil({2026, 11, 21, 0, 0, 0})));

    DirCodeScreen codes;
    codes.host().database().Select("FROM UnitSettings", {{4, false, mode, lastDay, 3}});
    codes.controller().pbRetrieveSettingsFromUnit(codes.host().connection(), kUnit);
    EXPECT_EQ(codes.host().controls().Date("dtpStart").Chosen(), Value(Null{}));
    EXPECT_EQ(codes.host().controls().Date("dtpStart").shown(),
              FromCivil({2026, 11, 21, 10, 0, 0}));
  }
}

TEST(ScreenDifferences, WithoutDeactivationOnlyDirectoryCodesShowTheTime) {
  Credentials credentials(ScreenKind::kTenantCreating);
  credentials.host.database().Select("FROM UnitSettings", {{false, 0, Null{}, 0}});
  credentials.controller.pbRetrieveSettingsFromUnit(credentials.host.connection(), kUnit);
  EXPECT_EQ(credentials.host.controls().Date("dtpStart").shown(),
            FromCivil({2026, 11, 21, 0, 0, 0}));

  DirCodeScreen codes;
  codes.host().database().Select("FROM UnitSettings", {{4, false, 0, Null{}, 0}});
  codes.controller().pbRetrieveSettingsFromUnit(codes.host().connection(), kUnit);
  EXPECT_EQ(codes.host().controls().Date("dtpStart").shown(), FromCivil({2026, 11, 21, 10, 0, 0}));

  for (RecordingHost* host : {&credentials.host, &codes.host()}) {
    EXPECT_EQ(host->controls().Date("dtpStart").Chosen(), Value(Null{}));
    EXPECT_EQ(host->controls().Date("dtpEnd").Chosen(), Value(Null{}));
  }
}

TEST(ScreenDifferences, OnlyThePassOfCredentialsKnowsMinusOne) {
  const std::string sql = "SET A='',B=-1,C= ,D=-12";
  EXPECT_EQ(qorcred::FixNullValues(sql), "SET A=Null,B=Null,C= Null,D=Null2");
  EXPECT_EQ(qorcred::ReplaceEmptyWithNull(sql), "SET A=Null,B=-1,C= Null,D=-12");

  Credentials credentials(ScreenKind::kCredential);
  credentials.host.AddItem("cboCredentials", "Transmitter-7", -1);
  credentials.host.Select("cboCredentials", 0);
  credentials.controller.pbUpdatePinNo(credentials.host.connection(), 8, kUnit);
  ASSERT_EQ(credentials.host.transcript().StartingWith("ExecuteUpdate").size(), 1U);
  EXPECT_NE(credentials.host.transcript().StartingWith("ExecuteUpdate")[0].find("RID=Null"),
            std::string::npos);

  DirCodeScreen codes;
  codes.ShowStored();
  codes.host().controls().SetVariable("glngrid", -1);
  codes.Renumber("8");
  ASSERT_EQ(codes.host().transcript().StartingWith("ExecuteUpdate").size(), 1U);
  EXPECT_NE(codes.host().transcript().StartingWith("ExecuteUpdate")[0].find("RID=-1"),
            std::string::npos);
}

TEST(ScreenDifferences, ANegativeCodeHasTwoMessages) {
  DirCodeScreen codes;
  codes.EnterNew("-5");
  codes.SaveNew();
  codes.Renumber("-5");
  EXPECT_EQ(codes.host().transcript().StartingWith("MsgBox"),
            (Lines{"MsgBox 64 \"Pello RT\" \"Please enter the positive number as Directory Code.\" "
                   "-> 1",
                   "MsgBox 64 \"Pello RT\" \"Please enter the positvie number as Directory Code.\" "
                   "-> 1"}));
}

TEST(ScreenDifferences, TheFullUnitIsNamedByItsRealLimitOnlyForCredentials) {
  Credentials credentials(ScreenKind::kCredential);
  credentials.host.AddItem("cboCredentialType", "Standard 26-Bit Card", 1);
  credentials.host.Select("cboCredentialType", 0);
  credentials.host.SetText("txtPINStart", "5");
  credentials.host.database().Select("FROM UNITTYPES", {{"NTAw"}});  // 500
  credentials.host.script().credentials = "500";
  credentials.controller.pbSave(credentials.host.connection(), kUnit);
  ASSERT_EQ(credentials.host.transcript().StartingWith("MsgBox").size(), 1U);
  EXPECT_NE(credentials.host.transcript().StartingWith("MsgBox")[0].find("more than 500 codes"),
            std::string::npos);

  DirCodeScreen codes;
  codes.EnterNew("5");
  codes.CountCodes("500", "0", "0");
  codes.SaveNew();
  EXPECT_EQ(codes.host().transcript().StartingWith("MsgBox"),
            Lines{"MsgBox 64 \"Pello RT\" \"You cannot enter more than 2000 combined codes.\" -> "
                  "1"});
}

TEST(ScreenDifferences, AddNewIsMarkedInAnEmptyListOnlyForDirectoryCodes) {
  Credentials credentials(ScreenKind::kCredential);
  credentials.controller.pbRetrieveCredentials(credentials.host.connection(), kUnit);
  EXPECT_EQ(ItemsOf(credentials.host, "cboCredentials"), std::vector<std::string>{"<Add New>=0"});

  DirCodeScreen codes;
  codes.controller().pbRetrieveDirCodes(codes.host().connection(), kUnit);
  EXPECT_EQ(ItemsOf(codes.host(), "cbodirectorycode"), std::vector<std::string>{"<Add New>=-100"});
}

}  // namespace
}  // namespace qortest
