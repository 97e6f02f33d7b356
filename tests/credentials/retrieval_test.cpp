// Filling the credential list, loading one credential into the edit controls and switching between
// the layouts of transmitters and cards.
#include <array>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::Null;
using qorcred::Value;

Row Credential(std::int32_t rid, Value type, Value number) {
  return {kUnit, rid, std::move(type), std::move(number), 12, 5, 1, 4, "1/2/2026", 0};
}

class CredentialList : public CredentialTest {};

TEST_F(CredentialList, OfAUnitWithoutCredentialsOffersToAddOne) {
  Controller().pbRetrieveCredentials(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> no rows
    cboCredentials.Clear
    cboCredentials.AddItem "<Add New>"
  )~"));
  EXPECT_EQ(Host().controls().List("cboCredentials").ItemData(0), 0);
}

TEST_F(CredentialList, ShowsTypeAndNumberOfEachCredential) {
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 0, 100), Credential(18, 1, "0042"),
                                            Credential(19, "2", 7), Credential(20, 2, Null{})});

  Controller().pbRetrieveCredentials(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> 4 rows
    cboCredentials.Clear
    cboCredentials.AddItem "<Add New>"
    cboCredentials.ItemData(0) = "-100"
    cboCredentials.AddItem "Corvin 30-Bit Card-100"
    cboCredentials.ItemData(1) = 17
    cboCredentials.AddItem "Standard 26-Bit Card-0042"
    cboCredentials.ItemData(2) = 18
    cboCredentials.AddItem "Transmitter-7"
    cboCredentials.ItemData(3) = 19
    cboCredentials.AddItem "Transmitter-"
    cboCredentials.ItemData(4) = 20
  )~"));
  EXPECT_EQ(Host().controls().List("cboCredentials").selected(), -1);
}

TEST_F(CredentialList, TakesTheIndexOfEachItemFromTheList) {
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 0, 100)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1);

  const Lines all = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(all.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(all.end() - 3, all.end()), R"~(
    cboCredentials.AddItem "Corvin 30-Bit Card-100"
    cboCredentials.NewIndex -> 1
    cboCredentials.ItemData(1) = 17
  )~"));
}

TEST_F(CredentialList, LetsOtherTypesOverwriteTheDataOfTheItemBefore) {
  Database().Select("FROM CREDENTIALBANK", {Credential(16, 3, 1), Credential(17, 0, 100),
                                            Credential(18, 3, 200), Credential(19, 1, 300)});

  Controller().pbRetrieveCredentials(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> 4 rows
    cboCredentials.Clear
    cboCredentials.AddItem "<Add New>"
    cboCredentials.ItemData(0) = "-100"
    cboCredentials.ItemData(0) = 16
    cboCredentials.AddItem "Corvin 30-Bit Card-100"
    cboCredentials.ItemData(1) = 17
    cboCredentials.ItemData(1) = 18
    cboCredentials.AddItem "Standard 26-Bit Card-300"
    cboCredentials.ItemData(2) = 19
  )~"));
}

TEST_F(CredentialList, SelectsTheRowThatWasSelectedBefore) {
  Database().Select("FROM CREDENTIALBANK",
                    {Credential(17, 0, 100), Credential(18, 0, 200), Credential(19, 0, 300)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 18);

  EXPECT_EQ(Host().transcript().Read(Detail::kEverything).back(), "cboCredentials.ListIndex = 2");
}

TEST_F(CredentialList, SelectsTheFirstAndTheLastRowToo) {
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 0, 100), Credential(18, 0, 200)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 17);
  EXPECT_EQ(Host().controls().List("cboCredentials").selected(), 1);
  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 18);
  EXPECT_EQ(Host().controls().List("cboCredentials").selected(), 2);
}

TEST_F(CredentialList, SelectsNothingWhenTheRowIsGone) {
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 0, 100), Credential(18, 0, 200)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 99);

  EXPECT_TRUE(Host().transcript().StartingWith("cboCredentials.ListIndex = ").empty());
}

TEST_F(CredentialList, CountsRowsAndNotItemsForTheSelection) {
  Database().Select("FROM CREDENTIALBANK",
                    {Credential(16, 3, 1), Credential(17, 0, 100), Credential(18, 0, 200)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 17);

  EXPECT_EQ(Host().controls().List("cboCredentials").SelectedText(), "Corvin 30-Bit Card-200");
}

TEST_F(CredentialList, DoesNotMarkItselfAsTheWriterOfTheControls) {
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 0, 100)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, -1, 17);

  EXPECT_TRUE(Host().transcript().StartingWith("gblnModifiedFromClass").empty());
}

class LoadedCredential : public CredentialTest {
 protected:
  void ShowLists() {
    Host().AddItem("cboActivate", "All doors", 0);
    Host().AddItem("cboActivate", "Front", 0);
    Host().AddItem("cboActivate", "Back", 0);
    Host().AddItem("cboAssignedTo", "<Unassigned>", -100);
    Host().AddItem("cboAssignedTo", "Doe Jane ", 55);
    Host().AddItem("cboAssignedTo", "Roe Richard Q", 56);
  }
};

TEST_F(LoadedCredential, OfATransmitterShowsItsCodesAndTenant) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 17, 2, 700, 12, 5, 1, 4,
                                             qorcred::FromCivil({2026, 1, 31, 14, 5, 9}), 2}});
  Database().Select("FROM TENANTS", {{56, "Roe", "Richard", "Q"}});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 17);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 AND RID=17 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> 1 row
    gblnModifiedFromClass = True
    glngrid = 17
    txtIDCode.Visible = True
    lblIDCode.Visible = True
    txtSequenceCode.Visible = True
    lblSequencecode.Visible = True
    optButtonDefault.Visible = True
    optButton4.Visible = True
    lblActivate.Visible = False
    cboActivate.Visible = False
    txtFacilityCode.Text = 12
    txtIDCode.Text = 5
    txtSequenceCode.Text = 1
    optButton4.Value = True
    gstrLastModifiedDate = "1/31/2026 2:05:09 PM"
    ExecuteSelect "SELECT TENANTID,LASTNAME,FIRSTNAME,MIDDLEINITIAL FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=17 OR CREDENTIALID2=17)" -> 1 row
    cboAssignedTo.ListIndex = 0
    cboAssignedTo.ListIndex = 2
    gblnModifiedFromClass = False
  )~"));
  EXPECT_EQ(Host().controls().List("cboActivate").selected(), -1);
}

TEST_F(LoadedCredential, KeepsItsLastModificationInTheFormOfTheHost) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 17, 2, 700, 12, 5, 1, 4,
                                             qorcred::FromCivil({2026, 1, 31, 14, 5, 9}), 2}});
  Host().script().dateText = "2026-01-31";

  Controller().pbRetrieveCredentials(Connection(), kUnit, 17);

  // As it is: only the dates of new tenants are written without a "-1".
  EXPECT_EQ(Host().controls().Variable("gstrLastModifiedDate"), qorcred::Value("2026-01-31"));
}

TEST_F(LoadedCredential, OfACardShowsItsDoorAndNoTransmitterControls) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 18, 1, 800, 99, 0, 0, 1, "1/2/2026", 2}});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 18);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 AND RID=18 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> 1 row
    gblnModifiedFromClass = True
    glngrid = 18
    txtIDCode.Text = ""
    txtIDCode.Visible = False
    lblIDCode.Visible = False
    txtSequenceCode.Text = ""
    txtSequenceCode.Visible = False
    lblSequencecode.Visible = False
    optButtonDefault.Visible = False
    optButton4.Visible = False
    lblActivate.Visible = True
    cboActivate.Visible = True
    cboActivate.ListIndex = 2
    txtFacilityCode.Text = 99
    txtIDCode.Text = 0
    txtSequenceCode.Text = 0
    optButtonDefault.Value = True
    gstrLastModifiedDate = "1/2/2026"
    ExecuteSelect "SELECT TENANTID,LASTNAME,FIRSTNAME,MIDDLEINITIAL FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=18 OR CREDENTIALID2=18)" -> no rows
    cboAssignedTo.ListIndex = 0
    gblnModifiedFromClass = False
  )~"));
  EXPECT_EQ(Host().controls().List("cboAssignedTo").selected(), 0);
}

TEST_F(LoadedCredential, ReadsNullAndEmptyFieldsAsZero) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK",
                    {{kUnit, 18, Null{}, 800, Null{}, "", Value(), Null{}, Null{}, Null{}}});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 18);

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 20U);
  EXPECT_TRUE(SameLines(Lines(effects.begin() + 13, effects.begin() + 19), R"~(
    cboActivate.ListIndex = 0
    txtFacilityCode.Text = 0
    txtIDCode.Text = 0
    txtSequenceCode.Text = 0
    optButtonDefault.Value = True
    gstrLastModifiedDate = ""
  )~"));
}

TEST_F(LoadedCredential, HidesTheFacilityCodeWhenTheScreenDoes) {
  ShowLists();
  Host().controls().SetVariable("gblnDisplayFacilityCode", false);
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 2, 700)});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 17);

  EXPECT_EQ(Host().transcript().StartingWith("txtFacilityCode"),
            Lines{"txtFacilityCode.Text = \"\""});
}

TEST_F(LoadedCredential, ChoosesTheFourthButtonOnlyForANumberOfFour) {
  struct Case {
    Value button;
    std::string_view line;
  };
  const std::array<Case, 5> cases{{{4, "optButton4.Value = True"},
                                   {"4", "optButton4.Value = True"},
                                   {1, "optButtonDefault.Value = True"},
                                   {3, "optButtonDefault.Value = True"},
                                   {5, "optButtonDefault.Value = True"}}};
  for (const Case& one : cases) {
    CredentialScreen screen;
    screen.host().AddItem("cboAssignedTo", "<Unassigned>", -100);
    screen.host().database().Select("FROM CREDENTIALBANK",
                                    {{kUnit, 17, 2, 700, 12, 5, 1, one.button, "1/2/2026", 0}});

    screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, 17);

    Lines values = screen.host().transcript().StartingWith("optButton");
    std::erase_if(values,
                  [](const std::string& line) { return line.find(".Value") == std::string::npos; });
    EXPECT_EQ(values, Lines{std::string(one.line)});
  }
}

TEST_F(LoadedCredential, SelectsTheLastOfSeveralEntriesOfItsTenant) {
  ShowLists();
  Host().AddItem("cboAssignedTo", "Doe Jane again", 55);
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 2, 700)});
  Database().Select("FROM TENANTS", {{55, "Doe", "Jane", ""}, {56, "Roe", "Richard", "Q"}});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 17);

  EXPECT_EQ(Host().transcript().StartingWith("cboAssignedTo.ListIndex = "),
            (Lines{"cboAssignedTo.ListIndex = 0", "cboAssignedTo.ListIndex = 1",
                   "cboAssignedTo.ListIndex = 3"}));
}

// The layout is an operation of its own, which traps its failures: the loading goes on behind it.
TEST_F(LoadedCredential, IsShownAlthoughTheLayoutFailed) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 18, 1, 800, 99, 3, 2, 1, "1/2/2026", 2}});
  Database().Select("FROM TENANTS", {{56, "Roe", "Richard", "Q"}});
  Host().gate().FailOn("txtSequenceCode.Text=");

  Controller().pbRetrieveCredentials(Connection(), kUnit, 18);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 AND RID=18 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> 1 row
    gblnModifiedFromClass = True
    glngrid = 18
    txtIDCode.Text = ""
    txtIDCode.Visible = False
    lblIDCode.Visible = False
    txtSequenceCode.Text = "" ! 1000 "Injected failure"
    Trapped pbTransmitterCtls 1000 "Injected failure"
    cboActivate.ListIndex = 2
    txtFacilityCode.Text = 99
    txtIDCode.Text = 3
    txtSequenceCode.Text = 2
    optButtonDefault.Value = True
    gstrLastModifiedDate = "1/2/2026"
    ExecuteSelect "SELECT TENANTID,LASTNAME,FIRSTNAME,MIDDLEINITIAL FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=18 OR CREDENTIALID2=18)" -> 1 row
    cboAssignedTo.ListIndex = 0
    cboAssignedTo.ListIndex = 2
    gblnModifiedFromClass = False
  )~"));
}

TEST_F(LoadedCredential, NeverComparesTheEntryForNoTenant) {
  ShowLists();
  Database().Select("FROM CREDENTIALBANK", {Credential(17, 2, 700)});
  Database().Select("FROM TENANTS", {{-100, "Odd", "", ""}});

  Controller().pbRetrieveCredentials(Connection(), kUnit, 17);

  EXPECT_EQ(Host().transcript().StartingWith("cboAssignedTo.ListIndex = "),
            Lines{"cboAssignedTo.ListIndex = 0"});
}

TEST_F(LoadedCredential, ThatDoesNotExistChangesNothing) {
  Controller().pbRetrieveCredentials(Connection(), kUnit, 0);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=3 AND RID=0 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber" -> no rows
  )~"));
}

class Layout : public CredentialTest {};

TEST_F(Layout, OfACardEmptiesAndHidesTheTransmitterControls) {
  Host().SetText("txtIDCode", "5");
  Host().SetText("txtSequenceCode", "1");

  Controller().pbTransmitterCtls(false);

  EXPECT_TRUE(TranscriptIs(R"~(
    txtIDCode.Text = ""
    txtIDCode.Visible = False
    lblIDCode.Visible = False
    txtSequenceCode.Text = ""
    txtSequenceCode.Visible = False
    lblSequencecode.Visible = False
    optButtonDefault.Visible = False
    optButton4.Visible = False
    lblActivate.Visible = True
    cboActivate.Visible = True
  )~"));
}

TEST_F(Layout, OfATransmitterShowsItsControlsWithTheirTexts) {
  Host().SetText("txtIDCode", "5");
  Host().SetText("txtSequenceCode", "1");

  Controller().pbTransmitterCtls(true);

  EXPECT_TRUE(TranscriptIs(R"~(
    txtIDCode.Visible = True
    lblIDCode.Visible = True
    txtSequenceCode.Visible = True
    lblSequencecode.Visible = True
    optButtonDefault.Visible = True
    optButton4.Visible = True
    lblActivate.Visible = False
    cboActivate.Visible = False
  )~"));
  EXPECT_EQ(Host().TextOf("txtIDCode"), "5");
  EXPECT_EQ(Host().TextOf("txtSequenceCode"), "1");
}

}  // namespace
}  // namespace qortest
