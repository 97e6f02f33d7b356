// The directory-code screen worked at a desk: which code is meant, outcomes and what they store.
#include "host/desks/dir_code_desk.h"

#include <gmock/gmock.h>

#include "host/desks/desk_error.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/dir_code_list.h"
#include "tests/host/desks/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace field = dir_code_field;

class DirCodeDesks : public DirCodeDeskFixture {
 protected:
  /// The facts of a code as a front end shows them, by their keys.
  [[nodiscard]] std::map<std::string, qorcred::Value> Details(const std::string& choice) {
    DirCodeDesk desk(session(), kUnit);
    (void)desk.Select(choice);
    std::map<std::string, qorcred::Value> details;
    for (const DirCodeDetail& detail : DetailsShown(desk)) {
      details.emplace(detail.key, detail.value);
    }
    return details;
  }
  static bool SameDetails(const std::map<std::string, qorcred::Value>& one,
                          const std::map<std::string, qorcred::Value>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const auto& left, const auto& right) {
                        return left.first == right.first && left.second == right.second;
                      });
  }
};

TEST_F(DirCodeDesks, TheTableHasARowForEveryCodeInTheirOrder) {
  DirCodeDesk desk(session(), 1);
  const List table = DirCodeList(session(), desk);
  const auto cell = [&table](std::size_t row, std::string_view key) {
    for (std::size_t column = 0; column < table.fields.size(); ++column) {
      if (table.fields[column].key == key) {
        return qorcred::TextOrEmpty(table.rows[row][column]);
      }
    }
    return std::string("no such column");
  };
  ASSERT_EQ(table.rows.size(), 10U);
  EXPECT_EQ(cell(0, "code"), "101");
  EXPECT_EQ(cell(9, "code"), "110");
  EXPECT_EQ(table.rows[0][12], qorcred::Value(qorcred::StringArray{"Abbott Amelia A"}));
  EXPECT_EQ(cell(2, "forward_schedule"), "Weekdays 8 to 18");
  EXPECT_EQ(cell(0, "state"), "in the unit");
}

TEST_F(DirCodeDesks, TheTableTellsWhatWaitsToBeSent) {
  ASSERT_TRUE(Add("250", WithPhone("1")).done());
  ASSERT_TRUE(Change("101", WithPhone("1")).done());
  DirCodeDesk desk(session(), kUnit);
  const List table = DirCodeList(session(), desk);
  ASSERT_EQ(table.rows.size(), 7U);
  constexpr std::size_t kState = 13;
  ASSERT_EQ(table.fields[kState].key, "state");
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[0][kState]), "change to be sent");
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows[6][kState]), "to be sent");
}

TEST_F(DirCodeDesks, ACodeIsFoundByItsNumberAndByItsRow) {
  DirCodeDesk desk(session(), kUnit);
  const ShownDirCode byNumber = desk.Select("0104");
  EXPECT_EQ(byNumber.entry, "0104");
  EXPECT_EQ(byNumber.rid, 14);
  EXPECT_EQ(desk.Select("RID:14").entry, "0104");
  for (const char* given : {"9999", "abc", "rid:x", "rid:1", "", "101 OR 1=1", "101,500"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)desk.Select(given); }), field::kChoice) << given;
  }
}

TEST_F(DirCodeDesks, ACodeShowsTheSameHoweverItIsNamed) {
  const auto byNumber = Details("104");
  EXPECT_TRUE(SameDetails(byNumber, Details("rid:14")));
  EXPECT_TRUE(SameDetails(byNumber, Details("0104")));
  EXPECT_FALSE(SameDetails(byNumber, Details("103")));
}

TEST_F(DirCodeDesks, ANumberThatTwoRowsHaveIsRefusedWithTheRows) {
  Run("UPDATE DirectoryCode SET DIRECTORYCODE=104 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  DirCodeDesk desk(session(), kUnit);
  try {
    (void)desk.Select("104");
    ADD_FAILURE() << "one of two rows was selected";
  } catch (const InputFault& fault) {
    EXPECT_THAT(fault.what(), HasSubstr("name a row instead (rid:14, rid:15)"));
  }
}

TEST_F(DirCodeDesks, AnAddedCodeIsShownAndTellsItsRow) {
  const AddedDirCode added = Add("250", WithPhone("555-0199"));
  EXPECT_TRUE(added.done());
  EXPECT_TRUE(added.isStored());
  EXPECT_EQ(std::to_string(added.rid), Stored("RID", "250"));
  EXPECT_EQ(added.code.rid, added.rid);
  EXPECT_EQ(added.code.entry, "0250");
  EXPECT_EQ(added.number, "250");
  EXPECT_EQ(Stored("PHONENUMBER", "250"), "555-0199");
  EXPECT_EQ(Stored("MODIFIED", "250"), "1");
  ASSERT_THAT(Steps(), SizeIs(1));
  EXPECT_EQ(Steps()[0].kind, "program directory code");
  EXPECT_EQ(Steps()[0].subjectRid, added.rid);
}

TEST_F(DirCodeDesks, ATextThatWouldBeStoredAsAnotherNumberIsAFault) {
  for (const char* code : {"25a", "abc", "1.5", "9e9", "1e-5", "1,2", "&H1", "$1"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)Add(code, WithPhone("1")); }), field::kCode) << code;
  }
  for (const char* code : {"1.5", "9e9", "1e-5"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)Renumber("101", code); }), field::kCode) << code;
  }
  EXPECT_EQ(CodeCount(), 6U);
  EXPECT_EQ(Stored("RID", "101"), "11");
}

TEST_F(DirCodeDesks, ACodeThatCannotBeStoredIsAFailureAndLeavesNoStep) {
  Run("CREATE TRIGGER Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); "
      "END");
  for (const char* code : {"250", " 25 "}) {
    const AddedDirCode added = Add(code, WithPhone("1"));
    EXPECT_EQ(added.ending, Ending::kFailed) << code;
    EXPECT_EQ(added.rid, 0) << code;
    EXPECT_FALSE(added.isStored()) << code;
    EXPECT_EQ(added.code.entry, "") << code;
    ASSERT_THAT(added.failures, SizeIs(1)) << code;
    EXPECT_THAT(added.failures[0], HasSubstr("no room")) << code;
    EXPECT_THAT(Steps(), IsEmpty()) << code;
  }
}

TEST_F(DirCodeDesks, TwoEqualPhonesAreAQuestion) {
  DirCodeEntry entry = WithPhone("5");
  entry.forwardPhone = "5";
  entry.forwardSchedule = "1";
  const AddedDirCode refused = Add("250", entry);
  EXPECT_EQ(refused.ending, Ending::kRefused);
  ASSERT_THAT(refused.messages, SizeIs(1));
  EXPECT_THAT(refused.messages[0].text, HasSubstr("are the same. Do you still want to proceed?"));
  EXPECT_THAT(RowOf("250"), IsEmpty());
  yes_ = true;
  EXPECT_TRUE(Add("250", entry).done());
  EXPECT_FALSE(RowOf("250").empty());
}

TEST_F(DirCodeDesks, AFullUnitTakesNoMoreCodesButChangesOfThoseItHas) {
  constexpr std::int32_t kNearlyFull = 1;  // takes two more
  ASSERT_TRUE(Add("250", WithPhone("1"), kNearlyFull).done());
  ASSERT_TRUE(Add("251", WithPhone("1"), kNearlyFull).done());
  const AddedDirCode added = Add("252", WithPhone("1"), kNearlyFull);
  EXPECT_EQ(added.ending, Ending::kRefused);
  EXPECT_THAT(TextsOf(added.messages),
              ElementsAre("You cannot enter more than 2000 combined codes."));
  EXPECT_TRUE(Change("101", WithPhone("9"), kNearlyFull).done());
}

TEST_F(DirCodeDesks, AChangeKeepsWhatIsNotNamed) {
  Row expected = RowOf("103");
  EXPECT_TRUE(Change("103", WithPhone("555-7777")).done());
  expected["PHONENUMBER"] = "555-7777";
  expected["MODIFIED"] = "2";
  expected["LASTMODIFIEDDATE"] = "1/31/2026 2:05:09 PM";
  EXPECT_EQ(RowOf("103"), expected);
  ASSERT_THAT(Steps(), SizeIs(1));
  EXPECT_EQ(Steps()[0].kind, "program directory code");
}

TEST_F(DirCodeDesks, OneChangeFollowsTheOther) {
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("101");
  for (const char* phone : {"7", "8"}) {
    (void)EnterDirCodeChange(desk, WithPhone(phone));
    EXPECT_EQ(desk.SaveEdited().ending, Ending::kDone) << phone;
  }
  desk.TypeCode("180");
  EXPECT_EQ(desk.Renumber().ending, Ending::kDone);
  (void)EnterDirCodeChange(desk, WithPhone("9"));
  EXPECT_EQ(desk.SaveEdited().ending, Ending::kDone);
  EXPECT_EQ(Stored("PHONENUMBER", "180"), "9");
  desk.TypeCode("181");
  EXPECT_EQ(desk.Renumber().ending, Ending::kDone);
}

TEST_F(DirCodeDesks, WhatIsStoredAlreadyIsNotStoredAgain) {
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("102");
  (void)EnterDirCodeChange(desk, WithPhone("555-0101"));
  const Outcome same = desk.SaveEdited();
  EXPECT_TRUE(same.done());
  EXPECT_TRUE(same.unchanged);
  for (const char* number : {"0102", " +102"}) {
    desk.TypeCode(number);
    EXPECT_TRUE(desk.Renumber().unchanged) << number;
  }
  EXPECT_EQ(Stored("MODIFIED", "102"), "0");
  EXPECT_THAT(Steps(), IsEmpty());

  (void)EnterDirCodeChange(desk, WithPhone("7"));
  EXPECT_FALSE(desk.SaveEdited().unchanged);
  (void)EnterDirCodeChange(desk, WithPhone("555-0101"));
  EXPECT_FALSE(desk.SaveEdited().unchanged) << "back again";
  EXPECT_EQ(Stored("PHONENUMBER", "102"), "555-0101");
}

TEST_F(DirCodeDesks, WhatOthersHaveChangedIsNotTakenForUnchanged) {
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("102");
  ASSERT_TRUE(Change("102", WithPhone("7")).done());
  (void)EnterDirCodeChange(desk, WithPhone("555-0101"));
  EXPECT_EQ(desk.SaveEdited().ending, Ending::kStale);
  desk.TypeCode("102");
  EXPECT_EQ(desk.Renumber().ending, Ending::kStale);
}

TEST_F(DirCodeDesks, AChangeOfARowThatSomeoneChangedMeanwhileIsStale) {
  DirCodeDesk desk(session(), kUnit);
  (void)desk.Select("101");
  Run("CREATE TRIGGER Keep BEFORE UPDATE ON DirectoryCode BEGIN SELECT RAISE(IGNORE); END");
  (void)EnterDirCodeChange(desk, WithPhone("9"));
  EXPECT_EQ(desk.SaveEdited().ending, Ending::kStale);
  desk.TypeCode("180");
  EXPECT_EQ(desk.Renumber().ending, Ending::kStale);
  desk.TypeCode("102");
  EXPECT_EQ(desk.Renumber().ending, Ending::kRefused);
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(DirCodeDesks, ARenumberedCodeKeepsItsRowAndQueuesTheChange) {
  EXPECT_TRUE(Renumber("101", "180").done());
  EXPECT_EQ(Stored("RID", "180"), "11");
  EXPECT_EQ(Stored("MODIFIED", "180"), "2");
  ASSERT_THAT(Steps(), SizeIs(1));
  EXPECT_EQ(Steps()[0].kind, "change directory code");
  EXPECT_EQ(Steps()[0].code, "101");
}

TEST_F(DirCodeDesks, ARenumberingIsRefusedAsTheControllerRefusesIt) {
  const auto refusal = [&](const std::string& number) {
    const Outcome outcome = Renumber("101", number);
    EXPECT_EQ(outcome.ending, Ending::kRefused) << number;
    return TextsOf(outcome.messages);
  };
  EXPECT_THAT(refusal(""), ElementsAre("Please enter a Directory Code."));
  EXPECT_THAT(refusal("ten"), ElementsAre("Please enter the Directory Code in number."));
  EXPECT_THAT(refusal("-7"), ElementsAre("Please enter the positvie number as Directory Code."));
  EXPECT_THAT(refusal("102"), ElementsAre(HasSubstr("This Directory Code already exists.")));
  EXPECT_EQ(Stored("MODIFIED", "101"), "0");
}

TEST_F(DirCodeDesks, NothingIsDeletedWhileNothingIsSelected) {
  DirCodeDesk desk(session(), kUnit);
  desk.codes().Select(ListModel::kNone);
  EXPECT_THROW((void)desk.Delete(), FailureError);
  desk.codes().Select(0);  // "<Add New>"
  EXPECT_THROW((void)desk.Delete(), FailureError);
}

TEST_F(DirCodeDesks, ADeletionAsksAndTakesTheCodeFromItsTenants) {
  ASSERT_THAT(TenantsOf(11), SizeIs(1));
  const Outcome unasked = Delete("101");
  EXPECT_EQ(unasked.ending, Ending::kRefused);
  EXPECT_THAT(TextsOf(unasked.messages),
              ElementsAre(HasSubstr("This Directory Code is applied to a Tenant.")));
  EXPECT_FALSE(RowOf("101").empty());
  yes_ = true;
  EXPECT_TRUE(Delete("101").done());
  EXPECT_THAT(RowOf("101"), IsEmpty());
  EXPECT_THAT(TenantsOf(11), IsEmpty());
  ASSERT_THAT(Steps(), SizeIs(1));
  EXPECT_EQ(Steps()[0].kind, "delete directory code");
}

TEST_F(DirCodeDesks, DeletingACodeThatTheUnitNeverHadWithdrawsItsStep) {
  ASSERT_TRUE(Add("250", WithPhone("1")).done());
  ASSERT_THAT(Steps(), SizeIs(1));
  yes_ = true;
  EXPECT_THAT(TextsOf(Delete("250").messages),
              ElementsAre(HasSubstr("Are you sure you want to delete Directory Code 250?")));
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(DirCodeDesks, ANewCodeIsBegunOnAScreenAsItOpened) {
  DirCodeDesk desk(session(), kUnit);
  DirCodeDesk opened(session(), kUnit);
  (void)desk.Select("101");
  desk.screen().Check("chkDND").SetState(1);
  desk.screen().List("cboSchedules").Select(1);
  desk.StartNew();
  EXPECT_EQ(desk.Shown().entry, "<Add New>");
  for (const char* box : {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtDisplayName"}) {
    EXPECT_EQ(desk.screen().Box(box).held().own, opened.screen().Box(box).held().own) << box;
  }
  for (const char* name : {"chkDND", "chkActive", "cboSchedules", "cboSchedulesCF", "lstTenants",
                           "pvnTimeDelay", "dtpStart", "dtpEnd"}) {
    EXPECT_EQ(desk.screen().Any(name).held(), opened.screen().Any(name).held()) << name;
  }
  EXPECT_TRUE(desk.screen().Date("dtpEnd").chosen());
}

TEST_F(DirCodeDesks, WhatIsTypedIntoTheScreenIsCheckedAsAnEntryIs) {
  DirCodeDesk desk(session(), kUnit);
  desk.screen().Box("txtdirectorycode").SetText("39x");
  EXPECT_EQ(FieldAtFault([&] { CheckTypedCode(desk); }), field::kCode);
  desk.screen().Box("txtdirectorycode").SetText("0399");
  EXPECT_EQ(FieldAtFault([&] { CheckTypedCode(desk); }), "");
  desk.screen().Box("txtDisplayName").SetText("a\nb");
  EXPECT_EQ(FieldAtFault([&] { CheckTypedCode(desk); }), field::kDisplayName);
  (void)desk.Select("101");
  EXPECT_EQ(FieldAtFault([&] { CheckTypedChange(desk); }), "");
  desk.screen().Box("txtPhoneNo").SetText("5550100\t");
  EXPECT_EQ(FieldAtFault([&] { CheckTypedChange(desk); }), field::kPhone);
}

}  // namespace
}  // namespace qorhost::test
