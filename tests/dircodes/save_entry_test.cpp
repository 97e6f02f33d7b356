// The checks of a directory code's entry: their order, their bounds and what they leave alone.
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Null;
using qorcred::Value;

class DirCodeEntryTest : public DirCodeTest {
 protected:
  DirCodeEntryTest() { Screen().EnterNew("12"); }

  /// Saves and gives the one message that was shown; "" for none.
  std::string Refusal() {
    Host().StartOver();
    Host().controls().ClearFocus();
    const bool saved = Screen().SaveNew();
    const Lines messages = Host().transcript().StartingWith("MsgBox");
    EXPECT_EQ(saved, messages.empty());
    EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert").size(), saved ? 1U : 0U);
    EXPECT_EQ(Host().services().LiveComponents(), 2) << "the two of the controller's own";
    if (messages.empty()) return {};
    EXPECT_EQ(messages.size(), 1U);
    const std::string prefix = "MsgBox 64 \"Pello RT\" \"";
    const std::string suffix = "\" -> 1";
    EXPECT_EQ(messages[0].substr(0, prefix.size()), prefix);
    return messages[0].substr(prefix.size(), messages[0].size() - prefix.size() - suffix.size());
  }
  [[nodiscard]] std::string Focus() { return Host().controls().focused(); }
  /// The place of a value in the insert that was sent.
  [[nodiscard]] bool Inserted(std::string_view part) {
    const Lines inserts = Host().transcript().StartingWith("ExecuteInsert");
    return inserts.size() == 1 && inserts[0].find(part) != std::string::npos;
  }
  void Period(Value start, Value end) {
    Screen().Check("chkActive");
    const auto choose = [&](const char* picker, const Value& date) {
      qorcred::Put(Host().controls().Date(picker), "Value", date);
    };
    choose("dtpStart", start);
    choose("dtpEnd", end);
  }
};

TEST_F(DirCodeEntryTest, AllInOrderIsStored) {
  EXPECT_EQ(Refusal(), "");
}

TEST_F(DirCodeEntryTest, OnlyTheFirstFailureIsTold) {
  // Everything wrong at once, mended one by one.
  Screen().AllowCodes("0");
  Host().SetText("txtdirectorycode", "");
  Host().SetText("txtPhoneNo", " ");
  Screen().Check("chkDND");
  Screen().Check("chkCallForwarding");
  Period(FromCivil({2026, 11, 21, 10, 0, 0}), FromCivil({2026, 11, 21, 10, 0, 0}));

  const struct {
    const char* message;
    const char* focus;
    std::function<void()> mend;
  } steps[] = {
      {"You cannot enter more than 2000 combined codes.", "", [&] { Screen().AllowCodes("1"); }},
      {"Please enter a Directory Code.", "txtdirectorycode",
       [&] { Host().SetText("txtdirectorycode", "-1"); }},
      {"Please enter the positive number as Directory Code.", "txtdirectorycode",
       [&] { Host().SetText("txtdirectorycode", "1"); }},
      {"Please enter a Phone No. to apply to the Directory Code.", "txtPhoneNo",
       [&] { Host().SetText("txtPhoneNo", "5551234"); }},
      {"Please select a Time Zone for the Do Not Disturb schedule.", "cboSchedules",
       [&] { Host().Select("cboSchedules", 0); }},
      {"Please select a Time Zone for the Call Forwarding schedule.", "cboSchedulesCF",
       [&] { Host().Select("cboSchedulesCF", 0); }},
      {"Please enter a Call Forwarding Phone No.", "txtPhoneNocf",
       [&] { Host().SetText("txtPhoneNocf", "5559876"); }},
      {"The End Date must be later than the Start Date. Please select a later End Date.", "dtpEnd",
       [&] { Screen().Check("chkActive", false); }},
  };
  for (const auto& step : steps) {
    EXPECT_EQ(Refusal(), step.message);
    EXPECT_EQ(Focus(), step.focus) << step.message;
    step.mend();
  }
  EXPECT_EQ(Refusal(), "");
}

TEST_F(DirCodeEntryTest, TheCodeIsItsLeadingNumber) {
  const struct {
    const char* typed;
    const char* stored;
  } rows[] = {{"007", "7"},
              {"0012", "12"},
              {"12ab", "12"},
              {"ab", "0"},
              {"0", "0"},
              {" 5 ", "5"},
              {"1.50", "1.5"},
              {"1 2", "12"},
              {"1e3", "1000"},
              {"&H1F", "31"},
              {"-0", "0"},
              {".5", "0.5"},
              {"+7", "7"},
              {"9999999999", "9999999999"},
              {"123456789012345", "123456789012345"},
              {"1234567890123456", "1.23456789012346E+15"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.typed);
    Host().SetText("txtdirectorycode", row.typed);
    EXPECT_EQ(Refusal(), "");
    EXPECT_TRUE(Inserted("_ROWID_," + std::string(row.stored) + ",'5551234'"));
    EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"SELECT directorycode"),
              Lines{"ExecuteSelect \"SELECT directorycode from directorycode where unitkey = 3 AND "
                    "DirectoryCode = " +
                    std::string(row.typed) + "\" -> no rows"});
    EXPECT_EQ(Host().transcript().StartingWith("pbDelete"),
              Lines{"pbDeleteDirCodePrgStepExists 3 " + std::string(row.stored) + " -> False"});
  }
}

TEST_F(DirCodeEntryTest, CodesThatAreNoneAreRefused) {
  const struct {
    const char* typed;
    const char* message;
  } rows[] = {{"", "Please enter a Directory Code."},
              {"   ", "Please enter a Directory Code."},
              {"-3", "Please enter the positive number as Directory Code."},
              {"-0.1", "Please enter the positive number as Directory Code."},
              {" - 3", "Please enter the positive number as Directory Code."}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.typed);
    Host().SetText("txtdirectorycode", row.typed);
    EXPECT_EQ(Refusal(), row.message);
    EXPECT_EQ(Focus(), "txtdirectorycode");
  }
}

TEST_F(DirCodeEntryTest, ANumberBeyondEveryTypeEndsTheSave) {
  Host().SetText("txtdirectorycode", "1E400");
  EXPECT_FALSE(Screen().SaveNew());
  EXPECT_EQ(Host().transcript().StartingWith("Trapped"), Lines{"Trapped pbSave 6 \"Overflow\""});
}

TEST_F(DirCodeEntryTest, CapacityCountsAllThreeKinds) {
  const struct {
    const char* name;
    const char* limit;
    const char* counts[3];
    bool refused;
  } rows[] = {
      {"OneBelow", "500", {"200", "200", "99"}, false},
      {"AtTheLimit", "500", {"200", "200", "100"}, true},
      {"OneAbove", "500", {"200", "200", "101"}, true},
      {"OneKindAlone", "500", {"0", "500", "0"}, true},
      {"TwoThousandIsOnlyText", "3000", {"2000", "0", "0"}, false},
      {"NoLimit", "0", {"0", "0", "0"}, true},
      {"Largest", "32767", {"32766", "0", "0"}, false},
      {"EmptyCountsAreZero", "2", {"1", "", ""}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Screen().AllowCodes(row.limit);
    Screen().CountCodes(row.counts[0], row.counts[1], row.counts[2]);
    EXPECT_EQ(Refusal(), row.refused ? "You cannot enter more than 2000 combined codes." : "");
    EXPECT_EQ(Focus(), "");
  }
}

TEST_F(DirCodeEntryTest, CapacityOfTextsThatAreNoNumbersIsAMismatch) {
  const struct {
    const char* limit;
    const char* count;
  } rows[] = {{"500", "many"}, {"500", "1 code"}, {"five", "1"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.count);
    Host().StartOver();
    Screen().AllowCodes(row.limit);
    Screen().CountCodes("1", row.count, "1");
    EXPECT_FALSE(Screen().SaveNew());
    EXPECT_EQ(Host().transcript().StartingWith("Trapped"),
              Lines{"Trapped pbSave 13 \"Type mismatch\""});
    EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  }
}

TEST_F(DirCodeEntryTest, CapacityIsSixteenBit) {
  const struct {
    const char* name;
    const char* limit;
    const char* counts[3];
    const char* trapped;
  } rows[] = {
      {"Limit", "32768", {"0", "0", "0"}, "Trapped pbSave 6 \"Overflow\""},
      {"Count", "500", {"32768", "0", "0"}, "Trapped pbSave 6 \"Overflow\""},
      {"CountWhoseSumWouldFit", "500", {"0", "-1", "32768"}, "Trapped pbSave 6 \"Overflow\""},
      {"FirstSum", "500", {"32767", "1", "-1"}, "Trapped pbSave 6 \"Overflow\""},
      {"SecondSum", "500", {"20000", "10000", "10000"}, "Trapped pbSave 6 \"Overflow\""},
      {"LimitThatIsNoNumber", "many", {"0", "0", "0"}, "Trapped pbSave 13 \"Type mismatch\""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Screen().AllowCodes(row.limit);
    Screen().CountCodes(row.counts[0], row.counts[1], row.counts[2]);
    Host().StartOver();
    EXPECT_FALSE(Screen().SaveNew());
    EXPECT_EQ(Host().transcript().StartingWith("Trapped"), Lines{row.trapped});
    EXPECT_EQ(Host().transcript().StartingWith("MsgBox").size(), 0U);
  }
}

TEST_F(DirCodeEntryTest, AUnitWithoutTypeEndsTheSave) {
  Database().Replace("FROM UNITTYPES", {});
  EXPECT_FALSE(Screen().SaveNew());
  EXPECT_EQ(Host().transcript().StartingWith("Trapped"),
            Lines{"Trapped pbSave 9 \"Subscript out of range\""});
  EXPECT_EQ(Host().transcript().StartingWith("CreateObject").size(), 0U);
}

TEST_F(DirCodeEntryTest, ANumberThatTheUnitHasSkipsTheCapacity) {
  Screen().AllowCodes("0");
  Database().Select("SELECT directorycode from", {{12}});
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(Host().transcript().StartingWith("pbGetUnitStatus").size(), 0U);
}

TEST_F(DirCodeEntryTest, ALookupThatFailsLeadsToTheCapacity) {
  Screen().AllowCodes("0");
  Database().Error("SELECT directorycode from", "no such column: ab");
  Host().SetText("txtdirectorycode", "ab");
  EXPECT_EQ(Refusal(), "You cannot enter more than 2000 combined codes.");
  EXPECT_EQ(Host().transcript().StartingWith("pbGetUnitStatus"),
            Lines{"pbGetUnitStatus 3 -> 0 0 0"});
}

TEST_F(DirCodeEntryTest, AnEditWithAnotherNumberMeetsTheCapacity) {
  Screen().ShowStored();
  Screen().AllowCodes("0");
  EXPECT_FALSE(Screen().SaveEdited(2));
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"SELECT directorycode"),
            Lines{"ExecuteSelect \"SELECT directorycode from directorycode where unitkey = 3 AND "
                  "DirectoryCode = 34\" -> no rows"});
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox"),
            Lines{"MsgBox 64 \"Pello RT\" \"You cannot enter more than 2000 combined codes.\" -> "
                  "1"});
}

TEST_F(DirCodeEntryTest, ADelayWithoutExtensionIsTwo) {
  const struct {
    const char* extension;
    Value spinner;
    const char* delay;
  } rows[] = {{"", 5, "Null,2,"},     {"   ", 5, "'   ',2,"}, {"7", 5, "'7',5,"},
              {" 7 ", 0, "' 7 ',0,"}, {"7", 2.5, "'7',2.5,"}, {"7", "12", "'7',12,"},
              {"7", Null{}, "'7',,"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.delay);
    Host().SetText("txtExtn", row.extension);
    Screen().SetSpinner("pvnTimeDelay", row.spinner);
    EXPECT_EQ(Refusal(), "");
    EXPECT_TRUE(Inserted("'5551234'," + std::string(row.delay)));
  }
}

TEST_F(DirCodeEntryTest, CallForwardingHasADelayOfItsOwn) {
  Screen().CheckCallForwarding(3, "5559876", "");
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted(",9,True,'5559876',Null,2,"));

  Host().SetText("txtExtnCF", "4");
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted(",9,True,'5559876','4',7,"));
}

TEST_F(DirCodeEntryTest, WhatIsNotCheckedIsNotRead) {
  Screen().CheckDoNotDisturb(2);
  Screen().CheckCallForwarding(2, "5559876", "4");
  Screen().Check("chkDND", false);
  Screen().Check("chkCallForwarding", false);
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted(",2,NULL,False,NULL,False,Null,Null,2,"));
}

TEST_F(DirCodeEntryTest, OnlyOneCountsAsChecked) {
  qorcred::Put(Host().controls().Any("chkDND"), "Value", 2);
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted(",2,NULL,False,"));
}

TEST_F(DirCodeEntryTest, TheActivePeriodIsCountedInWholeMinutes) {
  const auto at = [](int hour, int minute, int second) {
    return FromCivil({2026, 11, 21, hour, minute, second});
  };
  const struct {
    const char* name;
    Value start;
    Value end;
    const char* stored;  ///< null when refused
  } rows[] = {
      {"WithinAMinute", at(10, 0, 5), at(10, 0, 50), nullptr},
      {"Same", at(10, 0, 0), at(10, 0, 0), nullptr},
      {"Backwards", at(10, 1, 0), at(10, 0, 59), nullptr},
      {"OneMinute", at(10, 0, 59), at(10, 1, 0),
       "True,'11/21/2026 10:00:59 AM','11/21/2026 10:01:00 AM',"},
      {"AcrossMidnight", at(23, 59, 59), FromCivil({2026, 11, 22, 0, 0, 0}),
       "True,'11/21/2026 11:59:59 PM','11/22/2026',"},
      {"ADayEarlierAtALaterHour", at(10, 0, 0), FromCivil({2026, 11, 20, 23, 59, 59}), nullptr},
      {"NoStart", Null{}, at(10, 1, 0), "True,Null,'11/21/2026 10:01:00 AM',"},
      {"NoEnd", at(10, 0, 0), Null{}, "True,'11/21/2026 10:00:00 AM',Null,"},
      {"Neither", Null{}, Null{}, "True,Null,Null,"},
      {"Midnight", at(0, 0, 0), Null{}, "True,'11/21/2026',Null,"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Period(row.start, row.end);
    EXPECT_EQ(Refusal(),
              row.stored != nullptr
                  ? ""
                  : "The End Date must be later than the Start Date. Please select a later End "
                    "Date.");
    EXPECT_EQ(Focus(), row.stored != nullptr ? "" : "dtpEnd");
    if (row.stored != nullptr) {
      EXPECT_TRUE(Inserted("'_LMDATE_'," + std::string(row.stored)));
    }
  }
}

TEST_F(DirCodeEntryTest, AnInactiveCodeHasNoDates) {
  Period(FromCivil({2026, 11, 21, 10, 0, 0}), FromCivil({2026, 11, 21, 9, 0, 0}));
  Screen().Check("chkActive", false);
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted("'_LMDATE_',False,Null,Null,"));
  EXPECT_EQ(Host().transcript().StartingWith("dtp").size(), 0U);
}

TEST_F(DirCodeEntryTest, TextsAreWrittenAsTheyAre) {
  Host().SetText("txtPhoneNo", " O'Neil ");
  Host().SetText("txtDisplayName", "  -1, ,x ");
  EXPECT_EQ(Refusal(), "");
  EXPECT_TRUE(Inserted(",' O'Neil ',"));
  // The pass for missing values knows nothing of texts, but leaves -1 alone.
  EXPECT_TRUE(Inserted("'-1, Null,x'"));
}

TEST_F(DirCodeEntryTest, TheCodeOfAnEditComesFromTheList) {
  const struct {
    std::int32_t previousIndex;
    const char* code;
  } rows[] = {{0, "12"}, {1, "12"}, {2, "34"}, {3, "56"}};
  Screen().ShowStored();
  Host().SetText("txtdirectorycode", "99");
  for (const auto& row : rows) {
    Host().StartOver();
    EXPECT_TRUE(Screen().SaveEdited(row.previousIndex));
    const Lines updates = Host().transcript().StartingWith("ExecuteUpdate");
    ASSERT_EQ(updates.size(), 1U);
    EXPECT_NE(updates[0].find("SET DIRECTORYCODE=" + std::string(row.code) + ","),
              std::string::npos);
  }
}

TEST_F(DirCodeEntryTest, AnIndexOutsideTheListEndsTheSave) {
  Screen().ShowStored();
  EXPECT_FALSE(Screen().SaveEdited(9));
  EXPECT_EQ(Host().transcript().StartingWith("Trapped"),
            Lines{"Trapped pbSave 9 \"Subscript out of range\""});
}

TEST_F(DirCodeEntryTest, WithoutAScreenNothingIsDone) {
  Controller().set_mobjDirCodeScreen(nullptr);
  EXPECT_FALSE(Screen().SaveNew());
  EXPECT_EQ(Host().transcript().StartingWith("Execute").size(), 0U);
}

}  // namespace
}  // namespace qortest
