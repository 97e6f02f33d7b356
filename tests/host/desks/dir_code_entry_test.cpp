// What is typed into the directory-code screen: where it is stored, and faults by their fields.
#include "host/desks/dir_code_entry.h"

#include <gmock/gmock.h>

#include "tests/host/desks/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace field = dir_code_field;

class DirCodeEntries : public DirCodeDeskFixture {
 protected:
  [[nodiscard]] std::string FieldOf(const DirCodeEntry& entry, const std::string& code = "250") {
    DirCodeDesk desk(session(), kUnit);
    return FieldAtFault([&] { EnterNewCode(desk, code, entry); });
  }
};

TEST_F(DirCodeEntries, EveryInputIsStored) {
  DirCodeEntry entry = WithPhone("555-0199");
  entry.extension = "12";
  entry.delay = "5";
  entry.dnd = "night shift";
  entry.forwardPhone = "555-0290";
  entry.forwardExtension = "7";
  entry.forwardSchedule = "1";
  entry.forwardDelay = "4";
  entry.displayName = " Karin Abel ";
  entry.from = "2026-02-01";
  entry.to = "2026-12-31";
  entry.showCode = false;
  ASSERT_TRUE(Add("250", entry).done());
  Row row = RowOf("250");
  EXPECT_EQ(row["PHONENUMBER"], "555-0199");
  EXPECT_EQ(row["EXTENSION"], "12");
  EXPECT_EQ(row["TIMEDELAY"], "5");
  EXPECT_EQ(row["ISDNDCHECKED"], "True");
  EXPECT_EQ(row["DNDSCHEDULEID"], "4");
  EXPECT_EQ(row["ISCFCHECKED"], "True");
  EXPECT_EQ(row["CFSCHEDULEID"], "1");
  EXPECT_EQ(row["CFPHONENUMBER"], "555-0290");
  EXPECT_EQ(row["CFEXTENSION"], "7");
  EXPECT_EQ(row["CFTIMEDELAY"], "4");
  EXPECT_EQ(row["DISPLAYNAME"], "Karin Abel");
  EXPECT_EQ(row["SHOWDISPLAYNAME"], "True");
  EXPECT_EQ(row["SHOWDIRECTORYCODE"], "False");
  EXPECT_EQ(row["ACTIVE"], "True");
  EXPECT_EQ(row["STARTDATE"], "2/1/2026");
  EXPECT_EQ(row["ENDDATE"], "12/31/2026 11:59:59 PM");
}

TEST_F(DirCodeEntries, ACodeEndsWithTheUnitsOwnLastDayUnlessToldOtherwise) {
  EXPECT_TRUE(Add("250", WithPhone("1")).done());
  EXPECT_EQ(RowOf("250")["ENDDATE"], "12/31/2026 11:59:59 PM");
  DirCodeEntry endless = WithPhone("1");
  endless.to = "none";
  EXPECT_TRUE(Add("251", endless).done());
  EXPECT_EQ(RowOf("251")["ENDDATE"], "Null");
}

struct RefusedEntry {
  std::string name;
  std::string code;
  DirCodeEntry entry;
  std::string message;
};

void PrintTo(const RefusedEntry& refused, std::ostream* out) {
  *out << refused.name;
}

DirCodeEntry ForwardedTo(std::optional<std::string> phone, std::optional<std::string> schedule) {
  DirCodeEntry entry = WithPhone("1");
  entry.forwardPhone = std::move(phone);
  entry.forwardSchedule = std::move(schedule);
  return entry;
}

DirCodeEntry Backwards() {
  DirCodeEntry entry = WithPhone("1");
  entry.from = "2026-05-01";
  entry.to = "2026-04-01";
  return entry;
}

class RefusedEntries : public DirCodeDeskFixture,
                       public testing::WithParamInterface<RefusedEntry> {};

TEST_P(RefusedEntries, CarryTheControllersMessageAndStoreNothing) {
  const AddedDirCode added = Add(GetParam().code, GetParam().entry);
  EXPECT_EQ(added.ending, Ending::kRefused);
  EXPECT_EQ(added.rid, 0);
  EXPECT_FALSE(added.isStored());
  EXPECT_THAT(TextsOf(added.messages), ElementsAre(GetParam().message));
  EXPECT_THAT(added.failures, IsEmpty());
  EXPECT_EQ(CodeCount(), 6U);
  EXPECT_THAT(Steps(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Entries, RefusedEntries,
    testing::Values(
        RefusedEntry{"NoCode", "", WithPhone("1"), "Please enter a Directory Code."},
        RefusedEntry{"NegativeCode", "-3", WithPhone("1"),
                     "Please enter the positive number as Directory Code."},
        RefusedEntry{"NoPhone", "250", WithPhone(" "),
                     "Please enter a Phone No. to apply to the Directory Code."},
        RefusedEntry{"NoScheduleToForward", "250", ForwardedTo("2", std::nullopt),
                     "Please select a Time Zone for the Call Forwarding schedule."},
        RefusedEntry{"NoPhoneToForwardTo", "250", ForwardedTo(std::nullopt, "1"),
                     "Please enter a Call Forwarding Phone No."},
        RefusedEntry{"PeriodBackwards", "250", Backwards(),
                     "The End Date must be later than the Start Date. Please select a later End "
                     "Date."},
        RefusedEntry{"CodeInUse", "0101", WithPhone("1"),
                     "This Directory Code already exists. Please enter a different Directory "
                     "Code."}),
    [](const auto& refused) { return refused.param.name; });

TEST_F(DirCodeEntries, ANameIsToldWithTheApostropheThatItMayHave) {
  const auto refusal = [this](const DirCodeEntry& entry) {
    DirCodeDesk desk(session(), kUnit);
    try {
      EnterNewCode(desk, "250", entry);
    } catch (const InputFault& fault) {
      return fault.reason();
    }
    return std::string();
  };
  const std::string fault = "{field} holds an apostrophe, which would end the text in a statement";
  DirCodeEntry named = WithPhone("1");
  named.displayName = "O'Brien {";
  EXPECT_EQ(refusal(named), fault + ": write O\u2019Brien {{");
  named.displayName = "O\u2019Brien";
  EXPECT_EQ(refusal(named), "");
  named.displayName = "O'Brien, , Ann";
  EXPECT_EQ(refusal(named), fault) << "the other apostrophe alone does not help";
  EXPECT_EQ(refusal(WithPhone("1'")), fault) << "there is none in a number";
}

TEST_F(DirCodeEntries, WhatCannotBeEnteredNamesItsField) {
  EXPECT_EQ(FieldOf(WithPhone("1\n")), field::kPhone);
  EXPECT_EQ(FieldOf(WithPhone("1'")), field::kPhone) << "an apostrophe ends the statement's text";
  DirCodeEntry entry = WithPhone("1");
  entry.displayName = "Abel, , Karin";
  EXPECT_EQ(FieldOf(entry), field::kDisplayName);
  entry = WithPhone("1");
  entry.delay = "4";
  EXPECT_EQ(FieldOf(entry), field::kDelay) << "without an extension";
  entry.extension = "2";
  EXPECT_EQ(FieldOf(entry), "");
  entry.delay = "-1";
  EXPECT_EQ(FieldOf(entry), field::kDelay);
  entry = WithPhone("1");
  entry.dnd = "Nope";
  EXPECT_EQ(FieldOf(entry), field::kDnd);
  entry = WithPhone("1");
  entry.forwardSchedule = "Nope";
  EXPECT_EQ(FieldOf(entry), field::kForwardSchedule);
  entry = WithPhone("1");
  entry.from = "soon";
  EXPECT_EQ(FieldOf(entry), field::kStart);
  EXPECT_EQ(FieldOf(WithPhone("1"), "12345"), field::kCode);
}

TEST_F(DirCodeEntries, APeriodOfAnInactiveCodeIsAFaultWithItsDate) {
  DirCodeEntry entry = WithPhone("1");
  entry.active = false;
  entry.to = "2026-12-31";
  DirCodeDesk desk(session(), kUnit);
  const auto valueAtFault = [&] {
    try {
      EnterNewCode(desk, "250", entry);
    } catch (const InputFault& fault) {
      return std::string(fault.field()) + " " + fault.value();
    }
    return std::string();
  };
  EXPECT_EQ(valueAtFault(), "last day 2026-12-31");
  entry.from = "2026-01-01";
  EXPECT_EQ(valueAtFault(), "first day 2026-01-01");
}

TEST_F(DirCodeEntries, NoTextBecomesAPartOfAStatement) {
  const std::string hostile = "1', MODIFIED=9, DISPLAYNAME='";
  for (const auto member :
       {&DirCodeEntry::phone, &DirCodeEntry::extension, &DirCodeEntry::displayName}) {
    DirCodeEntry entry = WithPhone("1");
    entry.*member = hostile;
    DirCodeDesk desk(session(), kUnit);
    try {
      EnterNewCode(desk, "250", entry);
      ADD_FAILURE() << "the text was taken";
    } catch (const InputFault& fault) {
      EXPECT_EQ(fault.value(), hostile);
      EXPECT_THAT(fault.what(), HasSubstr("apostrophe"));
    }
    (void)desk.Select("101");
    EXPECT_NE(FieldAtFault([&] { (void)EnterDirCodeChange(desk, entry); }), "");
  }
  EXPECT_EQ(FieldOf(WithPhone("1"), "1 OR"), field::kCode);
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("101");
  EXPECT_EQ(FieldAtFault([&] { desk.TypeCode("1,MODIFIED=3"); }), field::kCode);
  EXPECT_EQ(Stored("MODIFIED", "101"), "0");
}

TEST_F(DirCodeEntries, AChangeSwitchesDoNotDisturbAndForwarding) {
  DirCodeEntry entry;
  entry.noForwarding = true;
  entry.dnd = "Late Shift";
  EXPECT_TRUE(Change("103", entry).done());
  Row row = RowOf("103");
  EXPECT_EQ(row["ISCFCHECKED"], "False");
  EXPECT_EQ(row["CFPHONENUMBER"], "Null");
  EXPECT_EQ(row["DNDSCHEDULEID"], "3");
  DirCodeEntry disturbed;
  disturbed.noDnd = true;
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("103");
  EXPECT_THAT(EnterDirCodeChange(desk, disturbed), IsEmpty());
  EXPECT_TRUE(desk.SaveEdited().done());
  EXPECT_EQ(RowOf("103")["DNDSCHEDULEID"], "Null");
}

TEST_F(DirCodeEntries, AChangeNamesTheSettingsThatItClears) {
  Run("UPDATE DirectoryCode SET ISCFCHECKED=0 WHERE UNITKEY=2 AND DIRECTORYCODE=103");
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("103");
  EXPECT_THAT(EnterDirCodeChange(desk, WithPhone("9")), ElementsAre("the call forwarding"));
  EXPECT_TRUE(desk.SaveEdited().done());
  EXPECT_EQ(Stored("CFPHONENUMBER", "103"), "");
  (void)desk.Select("101");
  EXPECT_THAT(EnterDirCodeChange(desk, WithPhone("9")), IsEmpty());
}

TEST_F(DirCodeEntries, ACodeIsNotRoundedByAChange) {
  Run("UPDATE DirectoryCode SET DIRECTORYCODE=103.5 WHERE UNITKEY=2 AND DIRECTORYCODE=103");
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("103.5");
  try {
    (void)EnterDirCodeChange(desk, WithPhone("1"));
    ADD_FAILURE() << "the code would be rounded";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), field::kChoice);
    EXPECT_THAT(fault.what(), HasSubstr("the directory code 103.5 is shown as "));
  }
  EXPECT_TRUE(Renumber("103.5", "103").done());
  EXPECT_TRUE(Change("103", WithPhone("1")).done());
}

}  // namespace
}  // namespace qorhost::test
