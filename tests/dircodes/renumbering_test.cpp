// Giving the open directory code a new number.
#include <string>
#include <string_view>

#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::Value;

class DirCodeRenumbering : public DirCodeTest {
 protected:
  DirCodeRenumbering() {
    Screen().ShowStored();
    qorcred::Put(Host().controls().Box("txtdirectorycode"), "MaxLength", 4);
  }
  void InState(Value state) { Database().Replace("SELECT MODIFIED", {.value = std::move(state)}); }
};

TEST_F(DirCodeRenumbering, WritesTheNumberReplacesTheEntryAndQueuesAChange) {
  InState(0);

  EXPECT_TRUE(Screen().Renumber("7"));

  EXPECT_TRUE(TranscriptIs(R"~(
    glngrid -> 17
    ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=7 AND UNITKEY=3 AND RID <> 17" -> no rows
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
    gstrLastModifiedDate -> "11/20/2026 9:30:00 AM"
    ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=7,MODIFIED=2  WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" "11/20/2026 9:30:00 AM" 17 -> 1
    cbodirectorycode.ListIndex -> 1
    cbodirectorycode.RemoveItem 1
    txtdirectorycode.MaxLength -> 4
    cbodirectorycode.AddItem "0007" 1
    cbodirectorycode.NewIndex -> 1
    cbodirectorycode.ItemData(1) = 17
    cbodirectorycode.ListIndex = 1
    CreateObject "qorSPS.clsSendProgSteps"
    pbGenChgDirCodePrgStep 3 17
    Release "qorSPS.clsSendProgSteps"
  )~"));
  EXPECT_EQ(ItemsOf(Host(), "cbodirectorycode"),
            (std::vector<std::string>{"<Add New>=-100", "0007=17", "34=18", "56=19"}));
  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), 1);
}

TEST_F(DirCodeRenumbering, TheStateDecidesAboutTheStep) {
  const struct {
    const char* name;
    Value state;
    const char* written;
    Lines step;
  } rows[] = {
      {"Sent", 0, "MODIFIED=2 ", {"pbGenChgDirCodePrgStep 3 17"}},
      {"NotSent", 1, "MODIFIED=1 ", {"pbGenDirCodePrgStep 3 17"}},
      {"Changed", 2, "MODIFIED=2 ", {"pbGenChgDirCodePrgStep 3 17"}},
      {"Deleted", 3, "MODIFIED=3 ", {}},
      {"NoState", qorcred::Null{}, "MODIFIED=2 ", {"pbGenChgDirCodePrgStep 3 17"}},
      {"Negative", -1, "MODIFIED=-1 ", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    InState(row.state);
    Host().StartOver();
    EXPECT_TRUE(Screen().Renumber("7"));
    const Lines updates = Host().transcript().StartingWith("ExecuteUpdate");
    ASSERT_EQ(updates.size(), 1U);
    EXPECT_NE(updates[0].find(row.written), std::string::npos) << updates[0];
    EXPECT_EQ(Host().transcript().StartingWith("pbGen"), row.step);
  }
}

TEST_F(DirCodeRenumbering, BadNumbersAreRefused) {
  const struct {
    const char* name;
    const char* code;
    const char* message;
    const char* focus;
  } rows[] = {
      {"Empty", "", "Please enter a Directory Code.", ""},
      {"Blanks", "   ", "Please enter a Directory Code.", ""},
      {"Letters", "abc", "Please enter the Directory Code in number.", "txtdirectorycode"},
      {"NumberAndLetters", "12ab", "Please enter the Directory Code in number.",
       "txtdirectorycode"},
      {"Tab", "\t", "Please enter the Directory Code in number.", "txtdirectorycode"},
      {"Negative", "-1", "Please enter the positvie number as Directory Code.", "txtdirectorycode"},
      {"JustBelowZero", " -0.001 ", "Please enter the positvie number as Directory Code.",
       "txtdirectorycode"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Host().StartOver();
    Host().controls().ClearFocus();
    EXPECT_FALSE(Screen().Renumber(row.code));
    std::string expected = "MsgBox 64 \"Pello RT\" \"" + std::string(row.message) + "\" -> 1\n";
    if (*row.focus != '\0') expected += std::string(row.focus) + ".SetFocus\n";
    EXPECT_TRUE(EffectsAre(expected));
    EXPECT_EQ(Host().controls().focused(), row.focus);
  }
}

TEST_F(DirCodeRenumbering, GoodNumbersAreWrittenAsTheyWereGiven) {
  const struct {
    const char* name;
    const char* code;
    const char* entry;
  } rows[] = {
      {"Zero", "0", "0000"},           {"MinusZero", "-0", "0000"},
      {"ZerosInFront", "007", "0007"}, {"BlanksAround", " 7 ", "0007"},
      {"Fraction", "1.5", "0002"},     {"LongerThanTheLength", "123456", "123456"},
      {"Exponent", "1E2", "0100"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    InState(0);
    Host().StartOver();
    EXPECT_TRUE(Screen().Renumber(row.code));
    const Lines updates = Host().transcript().StartingWith("ExecuteUpdate");
    ASSERT_EQ(updates.size(), 1U);
    EXPECT_NE(updates[0].find("SET DIRECTORYCODE=" + std::string(row.code) + ",MODIFIED"),
              std::string::npos)
        << updates[0];
    EXPECT_EQ(Host().controls().List("cbodirectorycode").Text(1), row.entry);
  }
}

TEST_F(DirCodeRenumbering, ANumberInUseIsRefusedWithoutMovingTheFocus) {
  Database().Select("RID <> 17", {{7}});

  EXPECT_FALSE(Screen().Renumber("7"));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=7 AND UNITKEY=3 AND RID <> 17" -> 1 row
    MsgBox 64 "Pello RT" "This Directory Code already exists. Please enter a different Directory Code." -> 1
  )~"));
}

TEST_F(DirCodeRenumbering, AnUpdateOfNoRowAnswersTrueAndLeavesTheList) {
  InState(0);
  Database().Number("UPDATE DIRECTORYCODE", 0);

  EXPECT_TRUE(Screen().Renumber("7"));

  EXPECT_EQ(Host().transcript().StartingWith("cbodirectorycode.").size(), 0U);
  EXPECT_EQ(Host().transcript().StartingWith("CreateObject").size(), 0U);
  EXPECT_EQ(Host().controls().List("cbodirectorycode").Text(1), "12");
}

TEST_F(DirCodeRenumbering, WithoutALengthTheEntryIsTheNumberAsGiven) {
  InState(0);
  qorcred::Put(Host().controls().Box("txtdirectorycode"), "MaxLength", 0);
  EXPECT_TRUE(Screen().Renumber("7"));
  EXPECT_EQ(Host().controls().List("cbodirectorycode").Text(1), "7");
}

TEST_F(DirCodeRenumbering, WithNothingSelectedTheRowIsWrittenAndTheResultFalse) {
  InState(0);
  Host().Select("cbodirectorycode", -1);
  Host().StartOver();
  EXPECT_FALSE(Screen().Renumber("7"));
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate").size(), 1U);
  EXPECT_EQ(Host().transcript().StartingWith("Trapped").size(), 1U);
  EXPECT_EQ(Host().transcript().StartingWith("pbGen").size(), 0U);
}

}  // namespace
}  // namespace qortest
