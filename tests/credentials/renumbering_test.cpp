// Giving the selected credential a new number.
#include <array>
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class Renumbering : public CredentialTest {
 protected:
  void Show(std::int32_t selected) {
    Screen().ShowStored(selected, 0);
    Host().controls().SetVariable("gstrLastModifiedDate", "1/2/2026 3:04:05 PM");
  }
};

TEST_F(Renumbering, OfATransmitterKeepsItsPlaceAndRow) {
  Show(1);

  EXPECT_TRUE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 4242 and RID <>17" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=4242,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 17 -> 1
    cboCredentials.RemoveItem 1
    cboCredentials.AddItem "Transmitter-4242" 1
    cboCredentials.ItemData(1) = 17
    cboCredentials.ListIndex = 1
  )~"));
  EXPECT_EQ(Host().controls().List("cboCredentials").SelectedText(), "Transmitter-4242");
  EXPECT_EQ(Host().controls().List("cboCredentials").count(), 4);
}

TEST_F(Renumbering, OfACard26ChecksItsOwnType) {
  Show(2);

  EXPECT_TRUE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and val(PINNo) = 4242 and RID <>18" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=4242,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=18" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 18 -> 1
    cboCredentials.RemoveItem 2
    cboCredentials.AddItem "Standard 26-Bit Card-4242" 2
    cboCredentials.ItemData(2) = 18
    cboCredentials.ListIndex = 2
  )~"));
}

TEST_F(Renumbering, OfACard30KeepsTheLastPlaceOfTheList) {
  Show(3);

  EXPECT_TRUE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 0 and val(PINNo) = 4242 and RID <>19" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=4242,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=19" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 19 -> 1
    cboCredentials.RemoveItem 3
    cboCredentials.AddItem "Corvin 30-Bit Card-4242" 3
    cboCredentials.ItemData(3) = 19
    cboCredentials.ListIndex = 3
  )~"));
}

TEST_F(Renumbering, OfAnEntryOfNoKnownTypeChecksTypeZeroAndShowsTheNumberAlone) {
  Show(0);

  EXPECT_TRUE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 0 and val(PINNo) = 4242 and RID <>-100" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=4242,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=Null00" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" -100 -> 1
    cboCredentials.RemoveItem 0
    cboCredentials.AddItem "4242" 0
    cboCredentials.ItemData(0) = -100
    cboCredentials.ListIndex = 0
  )~"));
}

TEST_F(Renumbering, ToZeroIsRefused) {
  Show(1);

  EXPECT_FALSE(Screen().Renumber(0));

  EXPECT_TRUE(EffectsAre(R"~(
    MsgBox 48 "Pello RT" "Please enter a Credential Number between 1 and 65535." -> 1
  )~"));
}

TEST_F(Renumbering, KnowsNoOtherBound) {
  Show(1);

  EXPECT_TRUE(Screen().Renumber(65536));
  EXPECT_TRUE(Screen().Renumber(1));

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
}

TEST_F(Renumbering, ToItsOwnNumberIsAllowed) {
  Show(1);

  EXPECT_TRUE(Screen().Renumber(700));

  EXPECT_EQ(Host().controls().List("cboCredentials").SelectedText(), "Transmitter-700");
}

TEST_F(Renumbering, ToANumberInUseIsRefused) {
  Show(1);
  Database().Select("val(PINNo) = 4242", {{4242}});

  EXPECT_FALSE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 4242 and RID <>17" -> 1 row
    MsgBox 64 "Pello RT" "Credential Number already exists." -> 1
  )~"));
}

TEST_F(Renumbering, OfARowThatChangedMeanwhileLeavesTheListAlone) {
  Show(1);
  Database().Number("SET PINNo", 0);

  EXPECT_FALSE(Screen().Renumber(4242));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 4242 and RID <>17" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=4242,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 17 -> 0
  )~"));
}

TEST_F(Renumbering, OfMoreThanOneRowIsDoneToo) {
  Show(1);
  Database().Number("SET PINNo", 2);

  EXPECT_TRUE(Screen().Renumber(4242));
}

// The pass over statements takes the characters "-1" out of the number.
TEST_F(Renumbering, ToMinusTwelveStoresNullAndATwo) {
  Show(1);

  EXPECT_TRUE(Screen().Renumber(-12));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = -12 and RID <>17" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=Null2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 17 -> 1
    cboCredentials.RemoveItem 1
    cboCredentials.AddItem "Transmitter--12" 1
    cboCredentials.ItemData(1) = 17
    cboCredentials.ListIndex = 1
  )~"));
}

// -1 asks the check to take its values from the screen, the number from the selected entry.
TEST_F(Renumbering, ToMinusOneChecksWhatTheScreenShows) {
  Show(1);
  Host().SetText("txtPINStart", "1");
  Host().SetText("txtFacilityCode", "12");
  Host().SetText("txtIDCode", " 5 ");
  Host().SetText("txtSequenceCode", "1");
  Host().controls().Option("optButton4").SetOn(true);

  EXPECT_TRUE(Screen().Renumber(-1));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select UnitKey from CredentialBank where UnitKey = 3 and CredentialType = 2 and val(PINNo) = 700 and val(FacilityCode) = 12 and val(IDCode) = 5 and val(SequenceNumber) = 1 and val(ButtonNumber) = 4 and RID <>17" -> no rows
    ExecuteUpdate "UPDATE CREDENTIALBANK SET PINNo=Null,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" "1/2/2026 3:04:05 PM" 17 -> 1
    cboCredentials.RemoveItem 1
    cboCredentials.AddItem "Transmitter--1" 1
    cboCredentials.ItemData(1) = 17
    cboCredentials.ListIndex = 1
  )~"));
}

TEST_F(Renumbering, ToMinusOneOfACardChecksNumberAndFacility) {
  struct Case {
    std::int32_t selected;
    std::string_view query;
  };
  constexpr std::array<Case, 2> kCases{
      {{2, "CredentialType = 1 and PINNo = 800 and FacilityCode = 12 and RID <>18"},
       {3, "CredentialType = 0 and PINNo = 900 and FacilityCode = 12 and RID <>19"}}};
  for (const Case& one : kCases) {
    CredentialScreen screen;
    screen.ShowStored(one.selected, 0);
    screen.host().SetText("txtFacilityCode", "12");

    EXPECT_TRUE(screen.Renumber(-1));

    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteSelect "),
              Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 "
                    "and " +
                    std::string(one.query) + "\" -> no rows"});
  }
}

TEST_F(Renumbering, ToMinusOneIsRefusedWhereTheScreensCredentialIsTaken) {
  struct Case {
    std::int32_t selected;
    std::string_view message;
  };
  constexpr std::array<Case, 2> kCases{
      {{1,
        "For this Credential Type, the combination of Credential Number and the Facility Code,ID "
        "Code,Sequence Code, Button No. cannot be duplicated. Credential Number = 700, Facility "
        "Code = 12 ,ID Code=5, Sequence Code=1, Button No.=1"},
       {2,
        "For this Credential Type, the combination of Credential Number and the Facility Code "
        "cannot be duplicated. Credential Number = 800, Facility Code = 12"}}};
  for (const Case& one : kCases) {
    CredentialScreen screen;
    screen.ShowStored(one.selected, 0);
    screen.host().SetText("txtFacilityCode", "12");
    screen.host().SetText("txtIDCode", "5");
    screen.host().SetText("txtSequenceCode", "1");
    screen.host().database().Select("from CredentialBank", {{kUnit, 1}});

    EXPECT_FALSE(screen.Renumber(-1));

    EXPECT_EQ(screen.host().transcript().StartingWith("MsgBox"),
              Lines{"MsgBox 64 \"Pello RT\" \"" + std::string(one.message) + "\" -> 1"});
    EXPECT_TRUE(screen.host().transcript().StartingWith("ExecuteUpdate").empty());
  }
}

// The mode of the check is the operation's own: the next new credential is read from its box again.
TEST_F(Renumbering, LeavesTheCheckOfNewCredentialsAsItWas) {
  Show(1);
  EXPECT_TRUE(Screen().Renumber(4242));
  Screen().EnterSingle(kCard26, "55");
  Host().StartOver();

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"Select UnitKey,PINNo"),
            Lines{"ExecuteSelect \"Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and "
                  "CredentialType = 1 and PINNo = 55 and FacilityCode = 12\" -> no rows"});
}

}  // namespace
}  // namespace qortest
