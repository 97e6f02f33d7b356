// Checking a new entry: every refusal with its message, the control that gets the focus and both
// sides of every bound.
#include <functional>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

/// What the user typed, and what the controller says to it; no message means it is stored.
struct EntryCase {
  std::string_view name;
  std::int32_t type = kCard26;
  std::string_view mode = "Range";
  std::string_view start = "10";
  std::string_view end = "10";
  std::string_view facility = "12";
  std::string_view idCode = "5";
  std::string_view sequence = "1";
  std::string_view message = {};
  std::string_view focus = {};
  /// The beginning of the row's values behind the row-id text, when it is stored.
  std::string_view stored = {};
};

std::ostream& operator<<(std::ostream& out, const EntryCase& one) {
  return out << one.name;
}

std::string CaseName(const ::testing::TestParamInfo<EntryCase>& info) {
  return std::string(info.param.name);
}

class Entry : public CredentialTest, public ::testing::WithParamInterface<EntryCase> {};

TEST_P(Entry, IsRefusedOrStored) {
  const EntryCase& entry = GetParam();
  Screen().EnterRange(entry.type, entry.start, entry.end);
  Host().controls().SetVariable("gstrTag", entry.mode);
  Host().SetText("txtFacilityCode", entry.facility);
  Host().SetText("txtIDCode", entry.idCode);
  Host().SetText("txtSequenceCode", entry.sequence);

  const bool saved = Screen().SaveNew();

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  if (entry.message.empty()) {
    EXPECT_TRUE(saved);
    EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
    const Lines inserts = Host().transcript().StartingWith("ExecuteInsert ");
    ASSERT_FALSE(inserts.empty());
    EXPECT_NE(inserts.front().find("VALUES(3,_ROWID_," + std::string(entry.stored)),
              std::string::npos)
        << inserts.front();
    return;
  }
  EXPECT_FALSE(saved);
  ASSERT_GE(effects.size(), 2U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 2, effects.end()),
                        "MsgBox 64 \"Pello RT\" \"" + std::string(entry.message) + "\" -> 1\n" +
                            std::string(entry.focus) + ".SetFocus"));
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox").size(), 1U);
  EXPECT_TRUE(Host().transcript().StartingWith("Execute").empty());
  EXPECT_EQ(Host().transactions().begun(), 0);
}

constexpr std::string_view kNoNumber = "You must enter a credential number.";
constexpr std::string_view kNoStart = "You must enter a starting number.";
constexpr std::string_view kStartNotNumeric = "Please enter a numeric value for starting number.";
constexpr std::string_view kStartTooSmall = "Please enter a starting number between 1 and 65535.";
constexpr std::string_view kEndWrong = "Please enter an ending number between 1 and 65535.";
constexpr std::string_view kNumberTooBig = "Please enter a credential number smaller than 65535.";
constexpr std::string_view kStartTooBig = "Please enter a Start Number smaller than 65535.";
constexpr std::string_view kEndTooBig = "Please enter a End Number smaller than 65535.";
constexpr std::string_view kEndBeforeStart =
    "The ending number must be greater than the starting number.";
constexpr std::string_view kFacility63 = "Please enter a Facility Code between 0 and 63.";
constexpr std::string_view kFacility255 = "Please enter a Facility Code between 0 and 255.";
constexpr std::string_view kIdCode = "Please enter an ID Code between 0 and 26.";
constexpr std::string_view kSequence = "Please enter a Sequence Code between 0 and 2.";

INSTANTIATE_TEST_SUITE_P(
    StartingNumber, Entry,
    ::testing::Values(
        EntryCase{.name = "EmptyInSingleMode",
                  .mode = "Single",
                  .start = "",
                  .message = kNoNumber,
                  .focus = "txtPINStart"},
        EntryCase{.name = "EmptyInUpperCaseSingleMode",
                  .mode = "SINGLE",
                  .start = "",
                  .message = kNoNumber,
                  .focus = "txtPINStart"},
        EntryCase{.name = "EmptyInMixedCaseSingleMode",
                  .mode = "sInGlE",
                  .start = "",
                  .message = kNoNumber,
                  .focus = "txtPINStart"},
        EntryCase{
            .name = "EmptyInRangeMode", .start = "", .message = kNoStart, .focus = "txtPINStart"},
        EntryCase{.name = "EmptyWithoutMode",
                  .mode = "",
                  .start = "",
                  .message = kNoStart,
                  .focus = "txtPINStart"},
        EntryCase{.name = "Blank", .start = "   ", .message = kNoStart, .focus = "txtPINStart"},
        EntryCase{.name = "ATabIsNoBlank",
                  .start = "\t",
                  .message = kStartNotNumeric,
                  .focus = "txtPINStart"},
        EntryCase{
            .name = "Letters", .start = "abc", .message = kStartNotNumeric, .focus = "txtPINStart"},
        EntryCase{.name = "NumberWithLetters",
                  .start = "12a",
                  .message = kStartNotNumeric,
                  .focus = "txtPINStart"},
        EntryCase{.name = "TwoPoints",
                  .start = "1.2.3",
                  .message = kStartNotNumeric,
                  .focus = "txtPINStart"},
        EntryCase{.name = "LettersInSingleMode",
                  .mode = "Single",
                  .start = "abc",
                  .message = kStartNotNumeric,
                  .focus = "txtPINStart"},
        EntryCase{.name = "Zero", .start = "0", .message = kStartTooSmall, .focus = "txtPINStart"},
        EntryCase{
            .name = "Negative", .start = "-1", .message = kStartTooSmall, .focus = "txtPINStart"},
        EntryCase{.name = "One", .start = "1", .end = "1", .stored = "1,1,12,"},
        EntryCase{.name = "Largest", .start = "65535", .end = "65535", .stored = "1,65535,12,"},
        EntryCase{.name = "TooLargeInRangeMode",
                  .start = "65536",
                  .end = "65536",
                  .message = kStartTooBig,
                  .focus = "txtPINStart"},
        EntryCase{.name = "TooLargeInSingleMode",
                  .mode = "Single",
                  .start = "65536",
                  .end = "65536",
                  .message = kNumberTooBig,
                  .focus = "txtPINStart"},
        EntryCase{.name = "TooLargeInUpperCaseSingleMode",
                  .mode = "SINGLE",
                  .start = "65536",
                  .end = "65536",
                  .message = kNumberTooBig,
                  .focus = "txtPINStart"},
        EntryCase{.name = "BlanksAround", .start = " 12 ", .end = "12", .stored = "1,12,12,"},
        EntryCase{.name = "Exponent", .start = "1e3", .end = "1000", .stored = "1,1000,12,"},
        EntryCase{.name = "Grouped", .start = "1,000", .end = "1000", .stored = "1,1000,12,"},
        EntryCase{.name = "Signed", .start = "+10", .end = "10", .stored = "1,10,12,"},
        EntryCase{.name = "Hexadecimal", .start = "&H10", .end = "16", .stored = "1,16,12,"},
        EntryCase{.name = "HalfGoesToTheEvenNumberBelow",
                  .start = "2.5",
                  .end = "3",
                  .stored = "1,2,12,"},
        EntryCase{.name = "HalfGoesToTheEvenNumberAbove",
                  .start = "1.5",
                  .end = "3",
                  .stored = "1,2,12,"},
        EntryCase{.name = "HalfOfOneIsZero",
                  .start = "0.5",
                  .message = kStartTooSmall,
                  .focus = "txtPINStart"},
        EntryCase{
            .name = "MoreThanHalfOfOneIsOne", .start = "0.6", .end = "1", .stored = "1,1,12,"},
        EntryCase{.name = "FractionBelowTheBound",
                  .start = "65535.4",
                  .end = "65535",
                  .stored = "1,65535,12,"},
        EntryCase{.name = "FractionBeyondTheBound",
                  .start = "65535.5",
                  .end = "65535",
                  .message = kStartTooBig,
                  .focus = "txtPINStart"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    EndingNumber, Entry,
    ::testing::Values(
        EntryCase{.name = "Letters", .end = "abc", .message = kEndWrong, .focus = "txtPINEND"},
        EntryCase{.name = "NumberWithLetters",
                  .end = "12abc",
                  .message = kEndWrong,
                  .focus = "txtPINEND"},
        EntryCase{.name = "Zero", .end = "0", .message = kEndWrong, .focus = "txtPINEND"},
        EntryCase{.name = "Negative", .end = "-1", .message = kEndWrong, .focus = "txtPINEND"},
        EntryCase{.name = "One", .start = "1", .end = "1", .stored = "1,1,12,"},
        EntryCase{.name = "Largest", .start = "65534", .end = "65535", .stored = "1,65534,12,"},
        EntryCase{.name = "TooLarge",
                  .start = "65535",
                  .end = "65536",
                  .message = kEndTooBig,
                  .focus = "txtPINEND"},
        EntryCase{.name = "TooLargeInSingleMode",
                  .mode = "Single",
                  .start = "1",
                  .end = "65536",
                  .message = kEndTooBig,
                  .focus = "txtPINEND"},
        EntryCase{.name = "WrongComesBeforeAStartTooLarge",
                  .start = "65536",
                  .end = "0",
                  .message = kEndWrong,
                  .focus = "txtPINEND"},
        EntryCase{.name = "StartTooLargeComesBeforeEndTooLarge",
                  .start = "65536",
                  .end = "65537",
                  .message = kStartTooBig,
                  .focus = "txtPINStart"},
        EntryCase{.name = "BelowStart",
                  .start = "20",
                  .end = "10",
                  .message = kEndBeforeStart,
                  .focus = "txtPINEND"},
        EntryCase{.name = "OneBelowStart",
                  .start = "20",
                  .end = "19",
                  .message = kEndBeforeStart,
                  .focus = "txtPINEND"},
        EntryCase{.name = "EqualToStart", .start = "20", .end = "20", .stored = "1,20,12,"},
        EntryCase{.name = "Fraction", .start = "20", .end = "19.5", .stored = "1,20,12,"},
        EntryCase{.name = "Grouped", .start = "1000", .end = "1,000", .stored = "1,1000,12,"}),
    [](const auto& one) { return "End" + std::string(one.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Facility, Entry,
    ::testing::Values(
        EntryCase{.name = "EmptyCountsAsZero", .facility = "", .stored = "1,10,0,5,"},
        EntryCase{.name = "BlankCountsAsZero", .facility = "  ", .stored = "1,10,0,5,"},
        EntryCase{.name = "Zero", .facility = "0", .stored = "1,10,0,"},
        EntryCase{.name = "Of30Bits63", .type = kCard30, .facility = "63", .stored = "0,10,63,"},
        EntryCase{.name = "Of30Bits64",
                  .type = kCard30,
                  .facility = "64",
                  .message = kFacility63,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "Of30BitsNegative",
                  .type = kCard30,
                  .facility = "-1",
                  .message = kFacility63,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "Of30BitsLetters",
                  .type = kCard30,
                  .facility = "x",
                  .message = kFacility63,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "Of26Bits64", .facility = "64", .stored = "1,10,64,"},
        EntryCase{.name = "Of26Bits255", .facility = "255", .stored = "1,10,255,"},
        EntryCase{.name = "Of26Bits256",
                  .facility = "256",
                  .message = kFacility255,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "Of26BitsNegative",
                  .facility = "-1",
                  .message = kFacility255,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "Of26BitsLetters",
                  .facility = "x",
                  .message = kFacility255,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "OfATransmitter255",
                  .type = kTransmitter,
                  .facility = "255",
                  .stored = "2,10,255,5,1,1,"},
        EntryCase{.name = "OfATransmitter256",
                  .type = kTransmitter,
                  .facility = "256",
                  .message = kFacility255,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "OfATransmitterNegative",
                  .type = kTransmitter,
                  .facility = "-1",
                  .message = kFacility255,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "WithBlanksAround", .facility = " 64 ", .stored = "1,10,64,"},
        EntryCase{.name = "HalfGoesToTheEvenNumber", .facility = "62.5", .stored = "1,10,62,"},
        EntryCase{.name = "FractionBeyondTheBound",
                  .type = kCard30,
                  .facility = "63.5",
                  .message = kFacility63,
                  .focus = "txtFacilityCode"},
        EntryCase{.name = "IsCheckedAfterTheNumbers",
                  .start = "20",
                  .end = "10",
                  .facility = "x",
                  .message = kEndBeforeStart,
                  .focus = "txtPINEND"}),
    [](const auto& one) { return "Facility" + std::string(one.param.name); });

INSTANTIATE_TEST_SUITE_P(TransmitterCodes, Entry,
                         ::testing::Values(EntryCase{.name = "IdEmpty",
                                                     .type = kTransmitter,
                                                     .idCode = "",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "IdLetters",
                                                     .type = kTransmitter,
                                                     .idCode = "x",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "IdNegative",
                                                     .type = kTransmitter,
                                                     .idCode = "-1",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "IdZero",
                                                     .type = kTransmitter,
                                                     .idCode = "0",
                                                     .stored = "2,10,12,0,1,1,"},
                                           EntryCase{.name = "Id26",
                                                     .type = kTransmitter,
                                                     .idCode = "26",
                                                     .stored = "2,10,12,26,1,1,"},
                                           EntryCase{.name = "Id27",
                                                     .type = kTransmitter,
                                                     .idCode = "27",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "IdFractionBeyondTheBound",
                                                     .type = kTransmitter,
                                                     .idCode = "26.6",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "SequenceEmpty",
                                                     .type = kTransmitter,
                                                     .sequence = "",
                                                     .message = kSequence,
                                                     .focus = "txtSequenceCode"},
                                           EntryCase{.name = "SequenceLetters",
                                                     .type = kTransmitter,
                                                     .sequence = "x",
                                                     .message = kSequence,
                                                     .focus = "txtSequenceCode"},
                                           EntryCase{.name = "SequenceNegative",
                                                     .type = kTransmitter,
                                                     .sequence = "-1",
                                                     .message = kSequence,
                                                     .focus = "txtSequenceCode"},
                                           EntryCase{.name = "SequenceZero",
                                                     .type = kTransmitter,
                                                     .sequence = "0",
                                                     .stored = "2,10,12,5,0,1,"},
                                           EntryCase{.name = "SequenceTwo",
                                                     .type = kTransmitter,
                                                     .sequence = "2",
                                                     .stored = "2,10,12,5,2,1,"},
                                           EntryCase{.name = "SequenceThree",
                                                     .type = kTransmitter,
                                                     .sequence = "3",
                                                     .message = kSequence,
                                                     .focus = "txtSequenceCode"},
                                           EntryCase{.name = "SequenceHalfGoesToTheEvenNumber",
                                                     .type = kTransmitter,
                                                     .sequence = "2.5",
                                                     .stored = "2,10,12,5,2,1,"},
                                           EntryCase{.name = "IdComesBeforeSequence",
                                                     .type = kTransmitter,
                                                     .idCode = "27",
                                                     .sequence = "3",
                                                     .message = kIdCode,
                                                     .focus = "txtIDCode"},
                                           EntryCase{.name = "FacilityComesBeforeId",
                                                     .type = kTransmitter,
                                                     .facility = "256",
                                                     .idCode = "27",
                                                     .message = kFacility255,
                                                     .focus = "txtFacilityCode"},
                                           EntryCase{.name = "OfCardsAreNotChecked",
                                                     .type = kCard26,
                                                     .idCode = "27",
                                                     .sequence = "3",
                                                     .stored = "1,10,12,27,3,1,"},
                                           EntryCase{.name = "OfCardsInLettersAreZero",
                                                     .type = kCard26,
                                                     .idCode = "abc",
                                                     .sequence = "x1",
                                                     .stored = "1,10,12,0,0,1,"},
                                           EntryCase{.name = "OfCardsCountUpToTheirLetters",
                                                     .type = kCard30,
                                                     .idCode = "7a",
                                                     .sequence = "2.6 or so",
                                                     .stored = "0,10,12,7,3,1,"},
                                           EntryCase{.name = "OfCardsAtMinusOneAreNull",
                                                     .type = kCard26,
                                                     .idCode = "-1",
                                                     .sequence = "-1",
                                                     .stored = "1,10,12,Null,Null,1,"},
                                           EntryCase{.name = "OfCardsBelowLoseTheirMinusOne",
                                                     .type = kCard26,
                                                     .idCode = "-12",
                                                     .sequence = "-2",
                                                     .stored = "1,10,12,Null2,-2,1,"},
                                           EntryCase{.name = "OfCardsMayHave32Bits",
                                                     .type = kCard26,
                                                     .idCode = "2147483647",
                                                     .sequence = "-2147483648",
                                                     .stored = "1,10,12,2147483647,-2147483648,1,"},
                                           EntryCase{.name = "OfCardsMayBeGrouped",
                                                     .type = kCard26,
                                                     .idCode = "1,000",
                                                     .sequence = "2,000",
                                                     .stored = "1,10,12,1000,2000,1,"},
                                           EntryCase{.name = "OfCardsMayBeEmpty",
                                                     .type = kCard30,
                                                     .idCode = "",
                                                     .sequence = "",
                                                     .stored = "0,10,12,0,0,1,"}),
                         CaseName);

class SingleEntry : public CredentialTest {};

TEST_F(SingleEntry, CopiesTheStartIntoTheEmptyEndAndSwitchesToSingleMode) {
  Screen().EnterRange(kCard26, "10", "");

  EXPECT_TRUE(Screen().SaveNew());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(effects.begin(), effects.begin() + 3), R"~(
    gstrTag = "Single"
    txtPINEND.Text = "10"
    ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo = 10 and FacilityCode = 12" -> no rows
  )~"));
  EXPECT_EQ(Host().TextOf("txtPINEND"), "10");
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert ").size(), 1U);
}

TEST_F(SingleEntry, CopiesTheStartAsItWasTyped) {
  Screen().EnterRange(kCard26, " 12 ", "  ");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().TextOf("txtPINEND"), " 12 ");
}

TEST_F(SingleEntry, SwitchesTheModeBeforeTheRefusalOfATooLargeNumber) {
  Screen().EnterRange(kCard26, "65536", "");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(EffectsAre(R"~(
    gstrTag = "Single"
    txtPINEND.Text = "65536"
    MsgBox 64 "Pello RT" "Please enter a credential number smaller than 65535." -> 1
    txtPINStart.SetFocus
  )~"));
}

TEST_F(SingleEntry, LeavesTheModeWhenTheEndIsGiven) {
  Screen().EnterRange(kCard26, "65535", "65535");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("gstrTag = ").empty());
  EXPECT_TRUE(Host().transcript().StartingWith("txtPINEND.Text = ").empty());
}

// A number of any length meets the messages about bounds.
TEST_F(SingleEntry, BeyondEveryNumberTypeIsNotStored) {
  for (const std::string_view number : {"1e10", "99999999999", "1e300"}) {
    CredentialScreen screen;
    screen.EnterRange(kCard26, number, "");

    EXPECT_FALSE(screen.SaveNew()) << number;

    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEffects),
                          "gstrTag = \"Single\"\ntxtPINEND.Text = \"" + std::string(number) +
                              "\"\nMsgBox 64 \"Pello RT\" \"" + std::string(kNumberTooBig) +
                              "\" -> 1\ntxtPINStart.SetFocus"));
    EXPECT_TRUE(screen.host().services().trapped().empty()) << number;
    EXPECT_EQ(screen.host().transactions().begun(), 0) << number;
  }
}

// The codes of cards have no messages of their own: a number beyond 32 bits ends the save.
TEST_F(SingleEntry, OfACardWithCodesBeyond32BitsIsAFailure) {
  for (const std::string_view box : {"txtIDCode", "txtSequenceCode"}) {
    for (const std::string_view number : {"2147483648", "-2147483649", "1e300"}) {
      CredentialScreen screen;
      screen.EnterSingle(kCard26, "10");
      screen.host().SetText(box, number);

      EXPECT_FALSE(screen.SaveNew()) << box << ' ' << number;

      EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty());
      EXPECT_EQ(screen.host().transactions().begun(), 0);
      ASSERT_EQ(screen.host().services().trapped().size(), 1U);
      EXPECT_EQ(screen.host().services().trapped().front().first, "pbSave");
      EXPECT_EQ(screen.host().services().trapped().front().second, qorcred::ErrorNumber::kOverflow);
    }
  }
}

TEST_F(SingleEntry, WithoutATypeIsNotStored) {
  Screen().EnterSingle(kCard26, "10");
  Host().Select("cboCredentialType", -1);

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_EQ(Host().transactions().begun(), 0);
}

class Activation : public TenantCreatingTest {
 protected:
  void Enter(qorcred::CivilTime start, qorcred::CivilTime end) {
    Screen().EnterSingle(kCard26, "10");
    Screen().EnterTenantDefaults();
    Host().controls().Date("dtpStart").Choose(qorcred::FromCivil(start));
    Host().controls().Date("dtpEnd").Choose(qorcred::FromCivil(end));
  }
};

constexpr std::string_view kEndNotLater = R"~(
    gstrTag = "Single"
    txtPINEND.Text = "10"
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    MsgBox 64 "Pello RT" "The End Date must be later than the Start Date. Please select a later End Date." -> 1
    dtpEnd.SetFocus
)~";

TEST_F(Activation, MustNotEndBeforeItStarts) {
  Enter({2026, 11, 22, 0, 0, 0}, {2026, 11, 21, 23, 59, 59});

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(EffectsAre(kEndNotLater));
}

TEST_F(Activation, MustNotEndInTheMinuteInWhichItStarts) {
  Enter({2026, 11, 21, 10, 0, 1}, {2026, 11, 21, 10, 0, 59});

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(EffectsAre(kEndNotLater));
}

TEST_F(Activation, MayEndInTheNextMinute) {
  Enter({2026, 11, 21, 10, 0, 59}, {2026, 11, 21, 10, 1, 0});

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
}

TEST_F(Activation, IsNotCheckedWhenNotActive) {
  for (const std::int16_t state : {std::int16_t{0}, std::int16_t{2}}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(kCard26, "10");
    screen.EnterTenantDefaults();
    screen.host().controls().Check("chkActive").SetState(state);
    screen.host().controls().Date("dtpEnd").Choose(qorcred::FromCivil({2020, 1, 1, 0, 0, 0}));

    EXPECT_TRUE(screen.SaveNewWithTenants());

    EXPECT_TRUE(screen.host().transcript().StartingWith("MsgBox").empty());
  }
}

TEST_F(Activation, IsNotCheckedWithOneDateOnly) {
  Enter({2026, 11, 22, 0, 0, 0}, {2026, 11, 21, 0, 0, 0});
  Host().controls().Date("dtpStart").Choose(std::nullopt);

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
}

TEST_F(Activation, IsNotCheckedWithoutTenants) {
  Enter({2026, 11, 22, 0, 0, 0}, {2026, 11, 21, 0, 0, 0});

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
}

}  // namespace
}  // namespace qortest
