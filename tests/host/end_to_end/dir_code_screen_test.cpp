// The directory-code screen on a real store: what the operator does and which rows come of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/host/end_to_end/dir_code_building.h"

namespace qortest {
namespace {

using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kDoe = 2;

void Hold(DirCodeBuilding& building, std::int32_t tenant, std::int32_t rid) {
  building.Run("UPDATE Tenants SET DIRECTORYCODE=" + std::to_string(rid) +
               " WHERE RID=" + std::to_string(tenant));
}

std::string Holders(DirCodeBuilding& building) {
  return building.Rows(
      "SELECT RID || '=' || DIRECTORYCODE FROM Tenants WHERE DIRECTORYCODE IS NOT NULL");
}

TEST(DirectoryCodeScreenOnStore, OpensWithSchedulesAndLimits) {
  DirCodeBuilding building;
  for (const char* name : {"cboSchedules", "cboSchedulesCF"}) {
    const qorhost::ListModel& list = building.screen().List(name);
    ASSERT_EQ(list.count(), 4) << name;
    EXPECT_EQ(list.Text(0), "Full Access");
    EXPECT_EQ(list.Text(1), "No Access");
    EXPECT_EQ(list.Text(2), "Day");
    EXPECT_EQ(list.ItemData(3), 7);
    EXPECT_EQ(list.selected(), qorhost::ListModel::kNone);
  }
  EXPECT_EQ(building.screen().Box("txtdirectorycode").maxLength(), 4);
  EXPECT_EQ(building.screen().Date("dtpEnd").shown(),
            qorcred::FromCivil({2027, 1, 31, 23, 59, 59}));
  EXPECT_FALSE(building.screen().Date("dtpEnd").chosen());
}

TEST(DirectoryCodeScreenOnStore, StoresANewCodeWithEverything) {
  DirCodeBuilding building;
  building.TypeNew("0101");
  qorhost::ScreenModel& screen = building.screen();
  screen.Box("txtExtn").SetText("12");
  screen.Check("chkDND").SetState(1);
  screen.List("cboSchedules").Select(2);
  screen.Check("chkCallForwarding").SetState(1);
  screen.List("cboSchedulesCF").Select(1);
  screen.Box("txtPhoneNocf").SetText("5550202");
  screen.Box("txtDisplayName").SetText(" Doe, J. ");
  screen.Check("chkShowDisplayName").SetState(1);
  screen.Check("chkActive").SetState(1);
  screen.Date("dtpStart").Choose(qorcred::FromCivil({2026, 2, 1, 8, 0, 0}));
  screen.Date("dtpEnd").Choose(qorcred::FromCivil({2026, 3, 1, 23, 59, 59}));
  const qorcred::Screen view(building.controller().mobjDirCodeScreen());
  view.Spin("pvnTimeDelay").SetNumber(30);

  std::int32_t rid = 0;
  EXPECT_TRUE(building.SaveNew(&rid));
  EXPECT_THAT(building.messages, IsEmpty());
  EXPECT_EQ(building.Rows("SELECT RID, UNITKEY, DIRECTORYCODE, PHONENUMBER, EXTENSION,"
                          " TIMEDELAY, DNDSCHEDULEID, ISDNDCHECKED, CFSCHEDULEID, ISCFCHECKED,"
                          " CFPHONENUMBER, CFEXTENSION, CFTIMEDELAY, LASTMODIFIEDDATE, ACTIVE,"
                          " STARTDATE, ENDDATE, DISPLAYNAME, SHOWDISPLAYNAME, SHOWDIRECTORYCODE,"
                          " MODIFIED, OLDDIRECTORYCODE FROM DirectoryCode"),
            std::to_string(rid) +
                ",1,101,5550101,12,30,5,-1,0,-1,5550202,-,2,2026-01-31 14:05:09,-1,"
                "2026-02-01 08:00:00,2026-03-01 23:59:59,Doe, J.,-1,0,1,-;");
  EXPECT_EQ(building.Steps(), "program directory code," + std::to_string(rid) + ",-;");
}

TEST(DirectoryCodeScreenOnStore, ShowsACodeAsItWasStored) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  building.Run(
      "UPDATE DirectoryCode SET DNDSCHEDULEID=7, ISDNDCHECKED=-1, ENDDATE='2026-03-01 23:59:59', "
      "DISPLAYNAME='Doe', SHOWDIRECTORYCODE=-1");
  Hold(building, kDoe, rid);
  building.Open(rid);
  const qorhost::ScreenModel& screen = building.screen();
  EXPECT_EQ(screen.List("cbodirectorycode").SelectedText(), "0007");
  EXPECT_EQ(screen.Box("txtdirectorycode").text(), "7");
  EXPECT_EQ(screen.Check("chkDND").state(), 1);
  EXPECT_EQ(screen.List("cboSchedules").SelectedText(), "night");
  EXPECT_EQ(screen.List("cboSchedulesCF").selected(), qorhost::ListModel::kNone);
  EXPECT_EQ(screen.Date("dtpStart").Chosen(), Value(Null{}));
  EXPECT_EQ(screen.Date("dtpEnd").Chosen(), Value(qorcred::FromCivil({2026, 3, 1, 23, 59, 59})));
  EXPECT_EQ(screen.Box("txtDisplayName").text(), "Doe");
  EXPECT_EQ(screen.Check("chkShowDisplayName").state(), 0);
  EXPECT_EQ(screen.Check("chkShowDirCode").state(), 1);
  EXPECT_EQ(screen.List("lstTenants").Text(0), "Doe Jane M");
  EXPECT_THAT(building.trapped, IsEmpty());
}

TEST(DirectoryCodeScreenOnStore, ListsWhoHasNoCode) {
  DirCodeBuilding building;
  Hold(building, kDoe, building.Store("7"));
  EXPECT_TRUE(building.controller().pbRetrieveTenants(building.connection(), kUnit, -1));
  const qorhost::ListModel& list = building.screen().List("lstTenants");
  ASSERT_EQ(list.count(), 1);
  EXPECT_EQ(list.Text(0), "Roe Rita ");
  EXPECT_FALSE(building.controller().pbRetrieveTenants(building.connection(), kUnit, 99));
  EXPECT_EQ(list.Text(0), "<Unassigned>");
  EXPECT_TRUE(building.controller().pbRetrieveTenants(building.connection(), kUnit, -1, true));
  EXPECT_EQ(list.Text(0), "Display names not found");
}

TEST(DirectoryCodeScreenOnStore, RefusesACodeThatTheUnitHas) {
  DirCodeBuilding building;
  building.Store("7");
  building.TypeNew("007");
  EXPECT_FALSE(building.SaveNew());
  EXPECT_THAT(building.messages, ElementsAre("This Directory Code already exists. Please enter a "
                                             "different Directory Code."));
  EXPECT_EQ(building.screen().focused(), "txtdirectorycode");
  EXPECT_EQ(building.Codes(), "7,7,0;");
}

struct Refusal {
  std::string_view name;
  std::function<void(qorhost::ScreenModel&)> mistake;
  std::string_view message;
  std::string_view focus;
};

const Refusal kRefusals[] = {
    {"NoCode", [](qorhost::ScreenModel& screen) { screen.Box("txtdirectorycode").SetText(" "); },
     "Please enter a Directory Code.", "txtdirectorycode"},
    {"NegativeCode",
     [](qorhost::ScreenModel& screen) { screen.Box("txtdirectorycode").SetText("-3"); },
     "Please enter the positive number as Directory Code.", "txtdirectorycode"},
    {"NoPhone", [](qorhost::ScreenModel& screen) { screen.Box("txtPhoneNo").SetText("  "); },
     "Please enter a Phone No. to apply to the Directory Code.", "txtPhoneNo"},
    {"DoNotDisturbWithoutSchedule",
     [](qorhost::ScreenModel& screen) { screen.Check("chkDND").SetState(1); },
     "Please select a Time Zone for the Do Not Disturb schedule.", "cboSchedules"},
    {"ForwardingWithoutSchedule",
     [](qorhost::ScreenModel& screen) { screen.Check("chkCallForwarding").SetState(1); },
     "Please select a Time Zone for the Call Forwarding schedule.", "cboSchedulesCF"},
    {"ForwardingWithoutPhone",
     [](qorhost::ScreenModel& screen) {
       screen.Check("chkCallForwarding").SetState(1);
       screen.List("cboSchedulesCF").Select(0);
     },
     "Please enter a Call Forwarding Phone No.", "txtPhoneNocf"},
    {"EndInTheMinuteOfTheStart",
     [](qorhost::ScreenModel& screen) {
       screen.Check("chkActive").SetState(1);
       screen.Date("dtpStart").Choose(qorcred::FromCivil({2026, 2, 1, 10, 0, 5}));
       screen.Date("dtpEnd").Choose(qorcred::FromCivil({2026, 2, 1, 10, 0, 50}));
     },
     "The End Date must be later than the Start Date. Please select a later End Date.", "dtpEnd"},
};

class DirectoryCodeRefusals : public testing::TestWithParam<Refusal> {};

TEST_P(DirectoryCodeRefusals, TellTheOperatorAndWriteNothing) {
  DirCodeBuilding building;
  building.TypeNew("9");
  const std::string before = building.Snapshot();
  GetParam().mistake(building.screen());
  EXPECT_FALSE(building.SaveNew());
  EXPECT_THAT(building.messages, ElementsAre(std::string(GetParam().message)));
  EXPECT_EQ(building.screen().focused(), GetParam().focus);
  EXPECT_EQ(building.Snapshot(), before);
  EXPECT_THAT(building.trapped, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Entry, DirectoryCodeRefusals, testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DirectoryCodeScreenOnStore, ACodeIsItsLeadingNumber) {
  const struct {
    const char* typed;
    const char* codes;
  } rows[] = {{"0012", "12,-,1;"}, {"12ab", "12,-,1;"}, {"ab", "0,-,1;"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.typed);
    DirCodeBuilding building;
    building.TypeNew(row.typed);
    EXPECT_TRUE(building.SaveNew());
    EXPECT_EQ(building.Codes(), row.codes);
  }
}

TEST(DirectoryCodeScreenOnStore, AStatementThatATextBreaksStoresNothing) {
  DirCodeBuilding building;
  building.TypeNew("9");
  building.screen().Box("txtDisplayName").SetText("O'Hara");
  std::int32_t rid = -5;
  EXPECT_TRUE(building.SaveNew(&rid));
  EXPECT_EQ(rid, 0);
  EXPECT_EQ(building.Codes(), "");
  EXPECT_EQ(building.store().BusyStatements(), 0);
}

TEST(DirectoryCodeScreenOnStore, AFullUnitTakesNoNewNumber) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  building.Run("UPDATE UNITTYPES SET TOTAL='MQ=='");  // 1
  building.TypeNew("8");
  EXPECT_FALSE(building.SaveNew());
  EXPECT_THAT(building.messages, ElementsAre("You cannot enter more than 2000 combined codes."));

  building.messages.clear();
  building.Open(rid);
  building.screen().Box("txtPhoneNo").SetText("5559999");
  EXPECT_TRUE(building.SaveEdited());
  EXPECT_THAT(building.messages, IsEmpty());
  EXPECT_EQ(building.Rows("SELECT PHONENUMBER FROM DirectoryCode"), "5559999;");
}

TEST(DirectoryCodeScreenOnStore, AnEditedRowBecomesChangedOrStaysUnsent) {
  const struct {
    int before;
    const char* after;
  } rows[] = {{0, "7,7,2;"}, {1, "7,-,1;"}, {2, "7,7,2;"}, {3, "7,7,1;"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.before);
    DirCodeBuilding building;
    const std::int32_t rid = building.Store("7", row.before);
    building.Open(rid);
    EXPECT_TRUE(building.SaveEdited());
    EXPECT_EQ(building.Codes(), row.after);
    EXPECT_EQ(building.Steps(), "program directory code," + std::to_string(rid) + ",-;");
  }
}

TEST(DirectoryCodeScreenOnStore, ARowThatSomebodyElseChangedStaysAsItIs) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  building.Run("UPDATE DirectoryCode SET LASTMODIFIEDDATE='2026-01-30 10:00:00'");
  building.Open(rid);
  building.Run(
      "UPDATE DirectoryCode SET LASTMODIFIEDDATE='2026-01-31 09:00:00', PHONENUMBER='other'");
  building.screen().Box("txtPhoneNo").SetText("mine");
  EXPECT_TRUE(building.SaveEdited());
  EXPECT_EQ(building.Rows("SELECT PHONENUMBER FROM DirectoryCode"), "other;");
  EXPECT_EQ(building.Steps(), "");
}

TEST(DirectoryCodeScreenOnStore, TheSamePhoneTwiceIsAQuestion) {
  DirCodeBuilding building;
  building.TypeNew("9");
  building.screen().Check("chkCallForwarding").SetState(1);
  building.screen().List("cboSchedulesCF").Select(0);
  building.screen().Box("txtPhoneNocf").SetText(" 5550101 ");
  EXPECT_FALSE(building.SaveNew());
  EXPECT_EQ(building.Codes(), "");
  building.answer = MessageButton::kYes;
  EXPECT_TRUE(building.SaveNew());
  EXPECT_EQ(building.Codes(), "9,-,1;");
}

TEST(DirectoryCodeScreenOnStore, DeletesOnlyAfterTheQuestion) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  Hold(building, kDoe, rid);
  const std::string before = building.Snapshot();
  EXPECT_FALSE(building.Delete(rid, true));
  EXPECT_EQ(building.Snapshot(), before);

  building.answer = MessageButton::kYes;
  building.messages.clear();
  EXPECT_TRUE(building.Delete(rid, true));
  EXPECT_THAT(
      building.messages,
      ElementsAre("This Directory Code is applied to a Tenant. Deleting this Directory Code "
                  "will remove it from the system. Do you wish to continue?",
                  "Directory Code deleted successfully."));
  EXPECT_EQ(building.Codes(), "");
  EXPECT_EQ(Holders(building), "");
  EXPECT_EQ(building.Steps(), "delete directory code," + std::to_string(rid) + ",7;");
}

TEST(DirectoryCodeScreenOnStore, WithoutTheQuestionTenantsKeepTheirReference) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  Hold(building, kDoe, rid);
  EXPECT_FALSE(building.Delete(rid, false));
  EXPECT_EQ(building.Codes(), "");
  EXPECT_EQ(Holders(building), "2=" + std::to_string(rid) + ";");
}

TEST(DirectoryCodeScreenOnStore, ACodeThatWasNeverSentIsOnlyWithdrawn) {
  DirCodeBuilding building;
  building.TypeNew("9");
  std::int32_t rid = 0;
  EXPECT_TRUE(building.SaveNew(&rid));
  building.Delete(rid, false);
  EXPECT_EQ(building.Steps(), "");
}

TEST(DirectoryCodeScreenOnStore, ACodeThatComesBackBeforeItsDeletionWasSentIsKnownToTheUnit) {
  DirCodeBuilding building;
  building.Delete(building.Store("7"), false);
  building.TypeNew("7");
  EXPECT_TRUE(building.SaveNew());
  EXPECT_EQ(building.Codes(), "7,7,0;");
}

TEST(DirectoryCodeScreenOnStore, RenumberingQueuesWhatTheRowsStateAsksFor) {
  const struct {
    int before;
    const char* codes;
    const char* step;
  } rows[] = {{0, "12,7,2;", "change directory code,1,7;"},
              {1, "12,-,1;", "program directory code,1,-;"},
              {2, "12,7,2;", "change directory code,1,7;"},
              {3, "12,7,3;", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.before);
    DirCodeBuilding building;
    const std::int32_t rid = building.Store("7", row.before);
    building.Open(rid);
    EXPECT_TRUE(building.controller().pbUpdateDirCode(building.connection(), kUnit, "12"));
    EXPECT_EQ(building.Codes(), row.codes);
    EXPECT_EQ(building.Steps(), row.step);
    const qorhost::ListModel& list = building.screen().List("cbodirectorycode");
    EXPECT_EQ(list.SelectedText(), "0012");
    EXPECT_EQ(list.ItemData(list.selected()), rid);
  }
}

TEST(DirectoryCodeScreenOnStore, ANumberThatAnotherRowHasIsRefused) {
  DirCodeBuilding building;
  building.Store("12");
  building.Open(building.Store("7"));
  const std::string before = building.Snapshot();
  EXPECT_FALSE(building.controller().pbUpdateDirCode(building.connection(), kUnit, "012"));
  EXPECT_THAT(building.messages, ElementsAre("This Directory Code already exists. Please enter a "
                                             "different Directory Code."));
  EXPECT_EQ(building.Snapshot(), before);
}

TEST(DirectoryCodeScreenOnStore, ARowChangedMeanwhileKeepsItsNumber) {
  DirCodeBuilding building;
  const std::int32_t rid = building.Store("7");
  building.Run("UPDATE DirectoryCode SET LASTMODIFIEDDATE='2026-01-30 10:00:00'");
  building.Open(rid);
  building.Run("UPDATE DirectoryCode SET LASTMODIFIEDDATE='2026-01-31 09:00:00'");
  EXPECT_TRUE(building.controller().pbUpdateDirCode(building.connection(), kUnit, "12"));
  EXPECT_EQ(building.Codes(), "7,7,0;");
  EXPECT_EQ(building.Steps(), "");
  EXPECT_EQ(building.screen().List("cbodirectorycode").SelectedText(), "0007");
}

}  // namespace
}  // namespace qortest
