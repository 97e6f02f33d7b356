// The directory-code screen worked at a desk: entries, outcomes and their facts, faults by field.
#include "host/desks/dir_code_desk.h"

#include <gmock/gmock.h>

#include "host/desks/dir_code_entry.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace field = dir_code_field;

DirCodeEntry WithPhone(std::string phone) {
  DirCodeEntry entry;
  entry.phone = std::move(phone);
  return entry;
}

class DirCodeDesks : public DeskFixture {
 protected:
  [[nodiscard]] AddedDirCode Add(const std::string& code, const DirCodeEntry& entry) {
    DirCodeDesk desk(session(), kUnit);
    EnterNewCode(desk, code, entry);
    return desk.AddCode();
  }
  [[nodiscard]] std::string FieldOf(const DirCodeEntry& entry) {
    DirCodeDesk desk(session(), kUnit);
    return FieldAtFault([&] { EnterNewCode(desk, "250", entry); });
  }
  [[nodiscard]] std::string Stored(const std::string& column, const std::string& code) {
    return Cell("SELECT " + column +
                " FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
  }
  [[nodiscard]] std::size_t StepCount() { return CountOf("SELECT RID FROM ProgramSteps"); }
};

TEST_F(DirCodeDesks, AnAddedCodeTellsItsRow) {
  const AddedDirCode added = Add("250", WithPhone("555-0199"));
  EXPECT_TRUE(added.done());
  EXPECT_EQ(std::to_string(added.rid), Stored("RID", "250"));
  EXPECT_EQ(Stored("PHONENUMBER", "250"), "555-0199");
}

TEST_F(DirCodeDesks, ARefusalCarriesTheControllersMessage) {
  const AddedDirCode added = Add("101", WithPhone("1"));
  EXPECT_EQ(added.ending, Ending::kRefused);
  EXPECT_EQ(added.rid, 0);
  ASSERT_EQ(added.messages.size(), 1U);
  EXPECT_THAT(added.messages[0].text, HasSubstr("This Directory Code already exists."));
}

TEST_F(DirCodeDesks, ACodeThatCannotBeStoredIsAFailureAndLeavesNoStep) {
  Run("CREATE TRIGGER Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); "
      "END");
  const AddedDirCode added = Add("250", WithPhone("1"));
  EXPECT_EQ(added.ending, Ending::kFailed);
  EXPECT_EQ(added.rid, 0);
  EXPECT_EQ(StepCount(), 0U);
}

TEST_F(DirCodeDesks, TheLookupOfATextIsNoFailureOfTheSave) {
  const AddedDirCode added = Add("25a", WithPhone("1"));
  EXPECT_TRUE(added.done());
  EXPECT_EQ(std::to_string(added.rid), Stored("RID", "25"));
}

TEST_F(DirCodeDesks, ACodeIsFoundByItsNumberAndByItsRow) {
  DirCodeDesk desk(session(), kUnit);
  const ShownDirCode byNumber = desk.Select("0104");
  EXPECT_EQ(byNumber.entry, "0104");
  EXPECT_EQ(byNumber.rid, 14);
  EXPECT_EQ(desk.Select("RID:14").entry, "0104");
  for (const char* given : {"9999", "abc", "rid:x", "rid:1", ""}) {
    EXPECT_EQ(FieldAtFault([&] { (void)desk.Select(given); }), field::kChoice) << given;
  }
}

TEST_F(DirCodeDesks, WhatCannotBeEnteredNamesItsField) {
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
  entry = WithPhone("1");
  entry.active = false;
  entry.to = "2026-12-31";
  EXPECT_EQ(FieldOf(entry), field::kEnd) << "an inactive code has no period";
  DirCodeDesk desk(session(), kUnit);
  EXPECT_EQ(FieldAtFault([&] { desk.TypeCode("12345"); }), field::kCode);
}

TEST_F(DirCodeDesks, AChangeNamesTheSettingsThatItClears) {
  Run("UPDATE DirectoryCode SET ISCFCHECKED=0 WHERE UNITKEY=2 AND DIRECTORYCODE=103");
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("103");
  EXPECT_THAT(EnterDirCodeChange(desk, WithPhone("9")), ElementsAre("the call forwarding"));
  EXPECT_TRUE(desk.SaveEdited().done());
  EXPECT_EQ(Stored("CFPHONENUMBER", "103"), "");
  (void)desk.Select("101");
  EXPECT_THAT(EnterDirCodeChange(desk, WithPhone("9")), IsEmpty());
}

TEST_F(DirCodeDesks, ACodeIsNotRoundedByAChange) {
  Run("UPDATE DirectoryCode SET DIRECTORYCODE=103.5 WHERE UNITKEY=2 AND DIRECTORYCODE=103");
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("103.5");
  EXPECT_EQ(FieldAtFault([&] { (void)EnterDirCodeChange(desk, WithPhone("1")); }), field::kChoice);
}

TEST_F(DirCodeDesks, AChangeOfARowThatSomeoneChangedMeanwhileIsStale) {
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("101");
  Run("CREATE TRIGGER Keep BEFORE UPDATE ON DirectoryCode BEGIN SELECT RAISE(IGNORE); END");
  (void)EnterDirCodeChange(desk, WithPhone("9"));
  EXPECT_EQ(desk.SaveEdited().ending, Ending::kStale);
  EXPECT_EQ(desk.Renumber("180").ending, Ending::kStale);
  EXPECT_EQ(desk.Renumber("102").ending, Ending::kRefused);
  EXPECT_EQ(StepCount(), 0U);
}

TEST_F(DirCodeDesks, ADeletionAsksAndTakesTheCodeFromItsTenants) {
  DirCodeDesk desk(session(), kUnit);
  const ShownDirCode code = desk.Select("101");
  EXPECT_EQ(desk.Delete(code.rid).ending, Ending::kRefused);
  yes_ = true;
  EXPECT_TRUE(desk.Delete(code.rid).done());
  EXPECT_EQ(Stored("RID", "101"), "");
  EXPECT_EQ(CountOf("SELECT TenantID FROM Tenants WHERE DIRECTORYCODE=11"), 0U);
}

}  // namespace
}  // namespace qorhost::test
