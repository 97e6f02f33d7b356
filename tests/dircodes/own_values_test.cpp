// Values and lists of a host's own: date forms, phone numbers with a hyphen, sorted lists and
// selections below -1.
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/dircodes/dir_code_fixture.h"
#include "tests/support/overlaid_object.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Missing;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Value;

/// Lets the controller under test see the control `name` with these answers.
void Overlay(DirCodeScreen& screen, const std::string& name, OverlaidObject::Answers answers) {
  const ObjectRef overlaid = WithControl(screen.host().screen(), name, std::move(answers));
  screen.host().StartOver();
  screen.controller().set_mobjDirCodeScreen(overlaid);
}

std::string TheOnly(const Lines& lines) {
  return lines.size() == 1 ? lines.front() : std::to_string(lines.size()) + " lines";
}

class OwnValues : public DirCodeTest {};

// Only the credential screen's pass over statements takes "-1" for an absent value.
TEST_F(OwnValues, APhoneNumberWithAHyphenIsStoredAsItIs) {
  Screen().EnterNew("12");
  Host().SetText("txtPhoneNo", "555-1234");
  EXPECT_TRUE(Screen().SaveNew());
  EXPECT_NE(TheOnly(Host().transcript().StartingWith("ExecuteInsert")).find("'555-1234'"),
            std::string::npos);

  Screen().ShowStored();
  Host().SetText("txtPhoneNo", "555-1234");
  Host().StartOver();
  EXPECT_TRUE(Screen().SaveEdited());
  EXPECT_NE(TheOnly(Host().transcript().StartingWith("ExecuteUpdate")).find("'555-1234'"),
            std::string::npos);
}

TEST_F(OwnValues, DatesAreWrittenInTheFormOfTheHost) {
  Screen().EnterNew("12");
  Screen().Check("chkActive");
  Host().controls().Date("dtpStart").Choose(FromCivil({2026, 11, 21, 10, 0, 0}));
  Host().controls().Date("dtpEnd").Choose(FromCivil({2027, 11, 21, 23, 59, 59}));
  Host().script().dateText = "2026-11-21";

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_NE(TheOnly(Host().transcript().StartingWith("ExecuteInsert"))
                .find("True,'2026-11-21','2026-11-21',"),
            std::string::npos);
}

TEST_F(OwnValues, DatesAreShownInTheFormOfTheHost) {
  const Value stamp = FromCivil({2026, 11, 20, 9, 30, 0});
  Database().Select(
      "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER",
      {{kUnit,  kStoredRow, 12, stamp, Null{}, 2,      Null{}, false,  Null{}, false,
        Null{}, Null{},     2,  stamp, false,  Null{}, Null{}, Null{}, false,  false}});
  Host().script().dateText = "2026-11-20";

  Controller().pbRetrieveDirCodes(Connection(), kUnit, kStoredRow);

  EXPECT_EQ(Host().TextOf("txtPhoneNo"), "2026-11-20");
  EXPECT_EQ(Host().controls().Variable("gstrLastModifiedDate"), Value("2026-11-20"));
}

TEST_F(OwnValues, TheQuestionNamesADateInTheFormOfTheHost) {
  Database().Number("SELECT DirectoryCode FROM DIRECTORYCODE",
                    Value(FromCivil({2026, 11, 20, 0, 0, 0})));
  Host().script().dateText = "2026-11-20";

  EXPECT_FALSE(Screen().Delete(kStoredRow, true, true));

  EXPECT_EQ(TheOnly(Host().transcript().StartingWith("MsgBox")),
            "MsgBox 52 \"Pello RT\" \"Are you sure you want to delete Directory Code "
            "2026-11-20?\" -> 7");
}

TEST_F(OwnValues, TheFirstScheduleOfAListCountsLikeAnyOther) {
  Screen().EnterNew("12");
  for (const std::string_view list : {"cboSchedules", "cboSchedulesCF"}) {
    Host().controls().List(list).Clear();
    Host().AddItem(list, "Early Shift", 7);
  }
  Screen().CheckDoNotDisturb(0);
  Screen().CheckCallForwarding(0, "5559876", "");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_NE(TheOnly(Host().transcript().StartingWith("ExecuteInsert")).find(",7,True,7,True,"),
            std::string::npos);
}

// -1 alone means that no schedule is selected; what a list makes of another index is its own
// affair.
TEST_F(OwnValues, AnotherIndexBelowZeroIsNotTakenForNoSchedule) {
  Screen().EnterNew("12");
  Screen().CheckDoNotDisturb(0);
  Overlay(Screen(), "cboSchedules", {{"ListIndex", Value(-2)}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_EQ(TheOnly(Host().transcript().StartingWith("Trapped")),
            "Trapped pbSave 9 \"Subscript out of range\"");
}

TEST_F(OwnValues, WithAnIndexBelowZeroNoStoredCodeIsSelected) {
  for (const std::int32_t index : {0, -1, -2}) {
    DirCodeScreen screen;
    Overlay(screen, "cbodirectorycode", {{"ListIndex", Value(index)}});
    screen.host().database().Select("FROM UnitSettings", {{4, false, 1, Null{}, 0}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_FALSE(screen.host().transcript().StartingWith("dtpStart.Value = ").empty()) << index;
  }
}

TEST_F(OwnValues, ARenumberedEntryOfASortedListKeepsItsRow) {
  Screen().ShowStored();
  Overlay(Screen(), "cbodirectorycode", {{"NewIndex", Value(3)}});

  EXPECT_TRUE(Screen().Renumber("99"));

  EXPECT_EQ(Host().transcript().StartingWith("cbodirectorycode.ItemData(3) = "),
            Lines{"cbodirectorycode.ItemData(3) = 17"});
  EXPECT_EQ(Host().transcript().StartingWith("cbodirectorycode.ListIndex = "),
            Lines{"cbodirectorycode.ListIndex = 1"});
}

// The omitted row to select is 0 and not 1: the first row ever stored is not selected for it.
TEST_F(OwnValues, SelectsNothingForAnOmittedRow) {
  Database().Select("SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER", {{kUnit, 1, 12}});

  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit);
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), -1);
  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit, Missing{}, Missing{});
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), -1);
  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit, Missing{}, 1);
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), 1);
}

}  // namespace
}  // namespace qortest
