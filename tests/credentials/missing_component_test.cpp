// What becomes of each operation when the host lacks a component that it uses: what it did by then,
// what it gives and what the log is told; and that the description says so.
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
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

using Act = std::function<std::optional<bool>(CredentialScreen&)>;

/// One operation without one component, and the whole transcript of what it does then.
struct Lack {
  std::string_view name;
  std::string_view operation;
  std::string_view component;
  bool sinceCreation;
  std::string_view use;  ///< as the description calls it
  std::function<void(CredentialScreen&)> arrange;
  Act act;
  std::string_view did;
  ScreenKind kind = ScreenKind::kCredential;
};

std::ostream& operator<<(std::ostream& out, const Lack& lack) {
  return out << lack.name;
}

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

const std::vector<Lack>& Lacks() {
  static const std::vector<Lack> rows{
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
       EnterOne, SaveOne, R"~(
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
      )~"},
      {"SaveWithoutTenantsSinceCreation", "pbSave", kTenants, true, "new credentials", EnterOne,
       SaveOne, R"~(
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
      )~"},
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
      {"CreationWithoutManager", "creation", kManager, false, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         const UnderTest<qorcred::clsCredential> another(screen.host().host());
         return std::nullopt;
       },
       R"~(
        CreateObject "qorDBI.clsDBManager" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
      )~"},
      {"CreationWithoutStepSender", "creation", kStepSender, false, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         const UnderTest<qorcred::clsCredential> another(screen.host().host());
         return std::nullopt;
       },
       R"~(
        CreateObject "qorDBI.clsDBManager"
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
        Release "qorDBI.clsDBManager"
      )~"},
      {"CreationWithoutTenants", "creation", kTenants, false, "", Nothing,
       [](CredentialScreen& screen) -> std::optional<bool> {
         const UnderTest<qorcred::clsCredential> another(screen.host().host());
         return std::nullopt;
       },
       R"~(
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

/// An absence as the description and the rows above both name it: operation, component, whether
/// since the creation, use.
using Key = std::tuple<std::string_view, std::string_view, bool, std::string_view>;

std::map<Key, contract::Absence> DescribedAbsences() {
  std::map<Key, contract::Absence> all;
  for (const contract::Operation& operation : contract::Credential().operations) {
    for (const contract::Absence& absence : operation.absences) {
      const Key key{operation.name, absence.component, absence.sinceCreation, absence.use};
      EXPECT_TRUE(all.emplace(key, absence).second) << operation.name << " " << absence.component;
    }
  }
  return all;
}

Key KeyOf(const Lack& lack) {
  return {lack.operation, lack.component, lack.sinceCreation, lack.use};
}

class MissingComponent : public ::testing::TestWithParam<Lack> {
 protected:
  /// What the log was told; 0 when nothing was trapped.
  static int ToldNumber(const RecordingHost& host) {
    const auto& trapped = host.services().trapped();
    return trapped.empty() ? 0 : static_cast<int>(trapped.front().second);
  }
};

TEST_P(MissingComponent, LeavesWhatIsDescribed) {
  const Lack& lack = GetParam();
  const auto described = DescribedAbsences();
  const auto absence = described.find(KeyOf(lack));
  ASSERT_NE(absence, described.end()) << "it is not described";
  CredentialScreen screen(lack.kind, lack.sinceCreation ? lack.component : "");
  lack.arrange(screen);
  screen.host().StartOver();
  if (!lack.sinceCreation) screen.host().script().missing = lack.component;

  const std::optional<bool> result = lack.act(screen);

  EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEverything), lack.did));
  EXPECT_LE(screen.host().services().trapped().size(), 1U);
  EXPECT_EQ(ToldNumber(screen.host()), absence->second.failure);
  EXPECT_EQ(!result ? "" : *result ? "True" : "False", absence->second.result);
  EXPECT_EQ(screen.host().transactions().open(), 0);
}

INSTANTIATE_TEST_SUITE_P(Each, MissingComponent, ::testing::ValuesIn(Lacks()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(MissingComponents, AreTriedWhereverTheyAreDescribed) {
  std::set<Key> tried;
  for (const Lack& lack : Lacks()) tried.insert(KeyOf(lack));

  for (const auto& [key, absence] : DescribedAbsences()) {
    EXPECT_EQ(tried.count(key), 1U)
        << std::get<0>(key) << " without " << std::get<1>(key) << " " << std::get<3>(key);
  }
}

// What an operation creates may be missing then; what it calls without creating it, or the manager,
// may be missing since the controller's creation.
TEST(MissingComponents, AreDescribedForEveryOperationThatUsesThem) {
  std::set<std::tuple<std::string_view, std::string_view, bool>> described;
  for (const auto& [key, absence] : DescribedAbsences()) {
    described.emplace(std::get<0>(key), std::get<1>(key), std::get<2>(key));
  }
  std::set<std::tuple<std::string_view, std::string_view, bool>> used;
  for (const contract::Operation& operation : contract::Credential().operations) {
    for (const std::string_view component : operation.creates) {
      used.emplace(operation.name, component, false);
    }
    for (const contract::Part& part : operation.others) {
      if (part.names == kManager && operation.name != contract::kCreation) {
        used.emplace(operation.name, part.names, true);
      }
    }
  }
  EXPECT_GE(used.size(), 13U);
  for (const auto& [operation, component, sinceCreation] : used) {
    EXPECT_EQ(described.count({operation, component, sinceCreation}), 1U)
        << operation << " without " << component
        << (sinceCreation ? " since the controller's creation" : "");
  }
}

}  // namespace
}  // namespace qortest
