// What becomes of each operation of the credential controller when the host lacks a component that
// it uses, and that the description says so.
#include "tests/support/missing_component.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;
using qorcred::MessageButton;

constexpr std::string_view kManager = "qorDBI.clsDBManager";
constexpr std::string_view kStepSender = "qorSPS.clsSendProgSteps";
constexpr std::string_view kTenants = "qorTent.clsTenant";
constexpr std::string_view kApplication = "qorAppln.clsApplication";

using CredentialLack = Lack<CredentialScreen>;

void Nothing(CredentialScreen&) {}

void ShowHeld(CredentialScreen& screen) {
  screen.ShowStored(1, 1);
  screen.host().database().Select("SELECT TENANTID FROM TENANTS", {{56}});
  screen.host().database().Number("SELECT TenantID FROM Tenants", 56);
  screen.host().script().questionAnswer = MessageButton::kYes;
}

void EnterOne(CredentialScreen& screen) {
  screen.EnterSingle(kCard26, "20");
  // As a manager's engine takes it.
  screen.host().database().Error("VALUES(3,,", "syntax error");
}

/// A creation that ended before the manager told its word for identities: the row is stored without
/// one, which an engine refuses.
constexpr std::string_view kSaveWithoutIdentity = R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant"
        txtPINStart.Text -> "20"
        txtPINEND.Text -> ""
        gstrTag = "Single"
        txtPINEND.Text = "20"
        cboCredentialType.ListIndex -> 1
        cboCredentialType.ItemData(1) -> 1
        txtFacilityCode.Text -> "12"
        txtIDCode.Text -> ""
        txtSequenceCode.Text -> ""
        optButton4.Value -> False
        gstrTag -> "Single"
        txtPINStart.Text -> "20"
        txtFacilityCode.Text -> "12"
        ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo = 20 and FacilityCode = 12" -> no rows
        ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
        CreateObject "qorAppln.clsApplication"
        pbGetUnitStatus 3 -> 0 0 0
        Release "qorAppln.clsApplication"
        BeginTrans
        ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,,1,20,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 0 ! "syntax error"
        gstrNewTenantIDs = ""
        RollbackTrans
        Release "qorAppln.clsApplication"
        Release "qorTent.clsTenant"
      )~";

std::optional<bool> SaveOne(CredentialScreen& screen) {
  return screen.SaveNew();
}

std::optional<bool> SaveTenants(CredentialScreen& screen) {
  return screen.SaveNewWithTenants();
}

std::optional<bool> Edit(CredentialScreen& screen) {
  return screen.SaveEdited();
}

std::optional<bool> DeleteOne(CredentialScreen& screen) {
  return screen.Delete(17);
}

std::optional<bool> CreateAnother(CredentialScreen& screen) {
  const UnderTest<qorcred::clsCredential> another(screen.host().host());
  return std::nullopt;
}

const std::vector<CredentialLack>& Rows() {
  static const std::vector<CredentialLack> rows{
      {"RetrieveSchedulesWithoutManager", "pbRetrieveSchedules", kManager, true, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveSchedules 91 "Object variable not set"
      )~"},
      {"RetrieveTenantsWithoutManager", "pbRetrieveTenants", kManager, true, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveTenants 91 "Object variable not set"
      )~"},
      {"RetrieveSettingsFromUnitWithoutManager", "pbRetrieveSettingsFromUnit", kManager, true, "",
       Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        cboCredentialType.AddItem "Corvin 30-Bit Card"
        cboCredentialType.NewIndex -> 0
        cboCredentialType.ItemData(0) = 0
        cboCredentialType.AddItem "Standard 26-Bit Card"
        cboCredentialType.NewIndex -> 1
        cboCredentialType.ItemData(1) = 1
        cboCredentialType.AddItem "Transmitter"
        cboCredentialType.NewIndex -> 2
        cboCredentialType.ItemData(2) = 2
        cboCredentialType.ListIndex = 0
        Trapped pbRetrieveSettingsFromUnit 91 "Object variable not set"
      )~"},
      {"RetrieveDoorDetailsWithoutManager", "pbRetrieveDoorDetails", kManager, true, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveDoorDetails(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveDoorDetails 91 "Object variable not set"
      )~"},
      {"CredentialListWithoutManager", "pbRetrieveCredentials", kManager, true, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, -1);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveCredentials 91 "Object variable not set"
      )~"},
      {"OneCredentialWithoutManager", "pbRetrieveCredentials", kManager, true, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveCredentials(screen.host().connection(), kUnit, 17);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveCredentials 91 "Object variable not set"
      )~"},
      {"SaveWithoutManager", "pbSave", kManager, true, "new credentials", EnterOne, SaveOne, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant"
        txtPINStart.Text -> "20"
        txtPINEND.Text -> ""
        gstrTag = "Single"
        txtPINEND.Text = "20"
        cboCredentialType.ListIndex -> 1
        cboCredentialType.ItemData(1) -> 1
        txtFacilityCode.Text -> "12"
        txtIDCode.Text -> ""
        txtSequenceCode.Text -> ""
        optButton4.Value -> False
        gstrTag -> "Single"
        Release "qorAppln.clsApplication"
        Release "qorTent.clsTenant"
        Trapped pbSave 91 "Object variable not set"
      )~"},
      {"RefusedSaveWithoutManager", "pbSave", kManager, true, "an entry that breaks a bound",
       [](CredentialScreen& screen) { screen.EnterSingle(kCard26, "70000"); }, SaveOne, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant"
        txtPINStart.Text -> "70000"
        txtPINEND.Text -> ""
        gstrTag = "Single"
        txtPINEND.Text = "70000"
        gstrTag -> "Single"
        MsgBox 64 "Pello RT" "Please enter a credential number smaller than 65535." -> 1
        txtPINStart.SetFocus
        Release "qorAppln.clsApplication"
        Release "qorTent.clsTenant"
      )~"},
      {"EditWithoutManager", "pbSave", kManager, true, "an edit", ShowHeld, Edit, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant"
        cboActivate.ListIndex -> 2
        cboCredentials.ListIndex -> 1
        cboCredentials.ItemData(1) -> 17
        Release "qorAppln.clsApplication"
        Release "qorTent.clsTenant"
        Trapped pbSave 91 "Object variable not set"
      )~"},
      {"EditWithoutManagerForTheCapacity", "pbSave", kManager, false, "an edit that assigns",
       ShowHeld, Edit, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant"
        cboActivate.ListIndex -> 2
        cboCredentials.ListIndex -> 1
        cboCredentials.ItemData(1) -> 17
        ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" - 17 -> 1
        CreateObject "qorTent.clsTenant"
        CreateObject "qorTent.clsTenant"
        cboCredentials.ListIndex -> 1
        cboCredentials.ItemData(1) -> 17
        ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 56
        ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
        ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
        pvCreateProgramSteps 3 56
        Release "qorTent.clsTenant"
        cboAssignedTo.ListIndex -> 1
        cboAssignedTo.ItemData(1) -> 55
        CreateObject "qorDBI.clsDBManager" ! 429 "Component can't create object"
        Release "qorTent.clsTenant"
        Release "qorAppln.clsApplication"
        Release "qorTent.clsTenant"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"SaveWithoutApplication", "pbSave", kApplication, false, "", EnterOne, SaveOne, R"~(
        CreateObject "qorAppln.clsApplication" ! 429 "Component can't create object"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"SaveWithTenantsWithoutApplication", "pbSave", kApplication, false, "",
       [](CredentialScreen& screen) {
         screen.EnterRange(kCard26, "20", "22");
         screen.EnterTenantDefaults();
       },
       SaveTenants, R"~(
        CreateObject "qorAppln.clsApplication" ! 429 "Component can't create object"
        Trapped pbSave 429 "Component can't create object"
      )~",
       ScreenKind::kTenantCreating},
      {"EditWithoutApplication", "pbSave", kApplication, false, "", ShowHeld, Edit, R"~(
        CreateObject "qorAppln.clsApplication" ! 429 "Component can't create object"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"SaveWithoutTenants", "pbSave", kTenants, false, "", EnterOne, SaveOne, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant" ! 429 "Component can't create object"
        Release "qorAppln.clsApplication"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"EditWithoutTenants", "pbSave", kTenants, false, "", ShowHeld, Edit, R"~(
        CreateObject "qorAppln.clsApplication"
        CreateObject "qorTent.clsTenant" ! 429 "Component can't create object"
        Release "qorAppln.clsApplication"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"SaveWithoutStepSenderSinceCreation", "pbSave", kStepSender, true, "new credentials",
       EnterOne, SaveOne, kSaveWithoutIdentity},
      {"SaveWithoutTenantsSinceCreation", "pbSave", kTenants, true, "new credentials", EnterOne,
       SaveOne, kSaveWithoutIdentity},
      {"DeletionWithoutManager", "pbDelete", kManager, true, "", ShowHeld, DeleteOne, R"~(
        Trapped pbDelete 91 "Object variable not set"
      )~"},
      {"DeletionOfAHeldOneWithoutTenants", "pbDelete", kTenants, false, "one that is held",
       ShowHeld, DeleteOne, R"~(
        ExecuteSelect "SELECT TENANTID FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=17 OR CREDENTIALID2=17)" -> 1 row
        MsgBox 52 "Pello RT" "This credential is already assgined to a Tenant. Deleting this credential will remove it from the assigned Tenant and delete the credential from the system. Do you want to continue?" -> 6
        ExecuteDelete "CREDENTIALBANK" 17 -> 1
        CreateObject "qorTent.clsTenant" ! 429 "Component can't create object"
        Trapped pbDelete 429 "Component can't create object"
      )~"},
      {"DeletionOfAFreeOneWithoutTenants", "pbDelete", kTenants, false, "one that nobody holds",
       [](CredentialScreen& screen) { screen.ShowStored(1, 0); }, DeleteOne, R"~(
        ExecuteSelect "SELECT TENANTID FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=17 OR CREDENTIALID2=17)" -> no rows
        ExecuteDelete "CREDENTIALBANK" 17 -> 1
      )~"},
      {"RenumberingWithoutManager", "pbUpdatePinNo", kManager, true, "",
       [](CredentialScreen& screen) { screen.ShowStored(1, 0); },
       [](CredentialScreen& screen) -> std::optional<bool> { return screen.Renumber(4242); }, R"~(
        cboCredentials.Text -> "Transmitter-700"
        Trapped pbUpdatePinNo 91 "Object variable not set"
      )~"},
      {"RenumberingToZeroWithoutManager", "pbUpdatePinNo", kManager, true, "the number 0",
       [](CredentialScreen& screen) { screen.ShowStored(1, 0); },
       [](CredentialScreen& screen) -> std::optional<bool> { return screen.Renumber(0); },
       R"~(
        MsgBox 48 "Pello RT" "Please enter a Credential Number between 1 and 65535." -> 1
      )~"},
      {"CreationWithoutManager", "creation", kManager, false, "", Nothing, CreateAnother, R"~(
        CreateObject "qorDBI.clsDBManager" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
      )~"},
      {"CreationWithoutStepSender", "creation", kStepSender, false, "", Nothing, CreateAnother, R"~(
        CreateObject "qorDBI.clsDBManager"
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
        Release "qorDBI.clsDBManager"
      )~"},
      {"CreationWithoutTenants", "creation", kTenants, false, "", Nothing, CreateAnother, R"~(
        CreateObject "qorDBI.clsDBManager"
        CreateObject "qorSPS.clsSendProgSteps"
        CreateObject "qorTent.clsTenant" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
        Release "qorDBI.clsDBManager"
        Release "qorSPS.clsSendProgSteps"
      )~"},
  };
  return rows;
}

class MissingComponent : public ::testing::TestWithParam<CredentialLack> {};

TEST_P(MissingComponent, LeavesWhatIsDescribed) {
  const CredentialLack& row = GetParam();
  CredentialScreen screen(row.kind, row.sinceCreation ? row.component : "");
  ExpectWhatIsDescribed(row, screen, contract::Credential());
}

INSTANTIATE_TEST_SUITE_P(Each, MissingComponent, ::testing::ValuesIn(Rows()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(MissingComponents, AreDescribedAndTriedForEveryOperationThatUsesThem) {
  ExpectAllTried(contract::Credential(), KeysOf(Rows()));
}

}  // namespace
}  // namespace qortest
