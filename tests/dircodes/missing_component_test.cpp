// What becomes of each operation of the directory-code controller when the host lacks a component
// that it uses, and that the description says so.
#include "tests/support/missing_component.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "frame/date.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

namespace contract = qorcred::contract;

constexpr std::string_view kManager = "qorDBI.clsDBManager";
constexpr std::string_view kStepSender = "qorSPS.clsSendProgSteps";
constexpr std::string_view kApplication = "qorAppln.clsApplication";
constexpr std::string_view kLink = "qorCommn.clsConnectionManager";

using DirCodeLack = Lack<DirCodeScreen>;

void Nothing(DirCodeScreen&) {}

void EnterOne(DirCodeScreen& screen) {
  screen.EnterNew("77");
}

void OpenStored(DirCodeScreen& screen) {
  screen.ShowStored();
  screen.host().database().Select("SELECT directorycode from directorycode", {{12.0}});
  screen.host().database().Replace("SELECT MODIFIED", {.value = 0});
  screen.host().script().questionAnswer = qorcred::MessageButton::kYes;
}

/// A current code and a previous number, for which the clock shows that many seconds more.
void StoreCodes(DirCodeScreen& screen, int seconds) {
  screen.host().database().Select("DIRECTORYCODE >=0 ORDER BY", {{kUnit, 17, 12.0}});
  screen.host().database().Select("OLDDIRECTORYCODE<> NULL", {{kUnit, 17, 13.0}});
  for (const int second : {0, seconds}) {
    screen.host().script().nextTimes.push_back(qorcred::FromCivil({2026, 11, 21, 10, 0, second}));
  }
}

std::optional<bool> SaveOne(DirCodeScreen& screen) {
  return screen.SaveNew();
}

std::optional<bool> Edit(DirCodeScreen& screen) {
  return screen.SaveEdited(1);
}

std::optional<bool> Renumber(DirCodeScreen& screen) {
  return screen.Renumber("7");
}

std::optional<bool> DeleteAsked(DirCodeScreen& screen) {
  return screen.Delete(kStoredRow, false, true);
}

std::optional<bool> Fetch(DirCodeScreen& screen) {
  qorcred::ObjectRef table;
  return screen.controller().pbFetchDirForMerge(screen.host().connection(), kUnit, table);
}

std::optional<bool> CreateAnother(DirCodeScreen& screen) {
  const UnderTest<qorcred::clsDirCode> another(screen.host().host());
  return std::nullopt;
}

const std::vector<DirCodeLack>& Lacks() {
  static const std::vector<DirCodeLack> rows{
      {"SchedulesWithoutManager", "pbRetrieveSchedules", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveSchedules 91 "Object variable not set"
      )~"},
      {"SettingsWithoutManager", "pbRetrieveSettingsFromUnit", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveSettingsFromUnit 91 "Object variable not set"
      )~"},
      {"TenantsWithoutManager", "pbRetrieveTenants", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         return screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit, 17);
       },
       R"~(
        Trapped pbRetrieveTenants 91 "Object variable not set"
      )~"},
      {"ListOfCodesWithoutManager", "pbRetrieveDirCodes", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveDirCodes(screen.host().connection(), kUnit, -1);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveDirCodes 91 "Object variable not set"
      )~"},
      {"OneCodeWithoutManager", "pbRetrieveDirCodes", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         screen.controller().pbRetrieveDirCodes(screen.host().connection(), kUnit, 17);
         return std::nullopt;
       },
       R"~(
        Trapped pbRetrieveDirCodes 91 "Object variable not set"
      )~"},
      {"SaveWithoutManager", "pbSave", kManager, true, "", EnterOne, SaveOne, R"~(
        gstrTag -> ""
        txtdirectorycode.Text -> "77"
        Trapped pbSave 91 "Object variable not set"
      )~"},
      {"SaveWithoutApplication", "pbSave", kApplication, false, "a code that is not stored",
       EnterOne, SaveOne, R"~(
        gstrTag -> ""
        txtdirectorycode.Text -> "77"
        ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 77" -> no rows
        ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
        CreateObject "qorAppln.clsApplication" ! 429 "Component can't create object"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"EditWithoutApplication", "pbSave", kApplication, false, "a code that is stored", OpenStored,
       Edit, R"~(
        gstrTag -> "EDIT"
        cbodirectorycode.List(1) -> "12"
        ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 12" -> 1 row
        txtPhoneNo.Text -> "5551234"
        txtExtn.Text -> ""
        chkDND.Value -> 0
        chkCallForwarding.Value -> 0
        chkDND.Value -> 0
        chkShowDisplayName.Value -> 0
        chkShowDirCode.Value -> 0
        chkCallForwarding.Value -> 0
        chkActive.Value -> 0
        txtDisplayName.Text -> ""
        CreateObject "qorSPS.clsSendProgSteps"
        glngrid -> 17
        ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=12 AND UNITKEY=3 AND RID <> 17" -> no rows
        ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
        gstrLastModifiedDate -> "11/20/2026 9:30:00 AM"
        ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=12,PHONENUMBER='5551234',EXTENSION=Null,TIMEDELAY=2,DNDSCHEDULEID=NULL,ISDNDCHECKED=False,CFSCHEDULEID=NULL,ISCFCHECKED=False,CFPHONENUMBER=Null,CFEXTENSION=Null,CFTIMEDELAY=2,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=False,STARTDATE=Null,ENDDATE=Null,DISPLAYNAME=Null,MODIFIED=2,SHOWDISPLAYNAME=False,SHOWDIRECTORYCODE=False WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" "11/20/2026 9:30:00 AM" 17 -> 1
        pbGenDirCodePrgStep 3 17
        ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  AND RID=17 ORDER BY DIRECTORYCODE" -> no rows
        Release "qorSPS.clsSendProgSteps"
      )~"},
      {"SaveWithoutStepSender", "pbSave", kStepSender, false, "", EnterOne, SaveOne, R"~(
        gstrTag -> ""
        txtdirectorycode.Text -> "77"
        ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 77" -> no rows
        ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
        CreateObject "qorAppln.clsApplication"
        pbGetUnitStatus 3 -> 0 0 0
        txtPhoneNo.Text -> "5551234"
        txtExtn.Text -> ""
        chkDND.Value -> 0
        chkCallForwarding.Value -> 0
        chkDND.Value -> 0
        chkShowDisplayName.Value -> 0
        chkShowDirCode.Value -> 0
        chkCallForwarding.Value -> 0
        chkActive.Value -> 0
        txtDisplayName.Text -> ""
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Release "qorAppln.clsApplication"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"EditWithoutStepSender", "pbSave", kStepSender, false, "", OpenStored, Edit, R"~(
        gstrTag -> "EDIT"
        cbodirectorycode.List(1) -> "12"
        ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 12" -> 1 row
        txtPhoneNo.Text -> "5551234"
        txtExtn.Text -> ""
        chkDND.Value -> 0
        chkCallForwarding.Value -> 0
        chkDND.Value -> 0
        chkShowDisplayName.Value -> 0
        chkShowDirCode.Value -> 0
        chkCallForwarding.Value -> 0
        chkActive.Value -> 0
        txtDisplayName.Text -> ""
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Trapped pbSave 429 "Component can't create object"
      )~"},
      {"RenumberingWithoutManager", "pbUpdateDirCode", kManager, true, "", OpenStored, Renumber,
       R"~(
        glngrid -> 17
        Trapped pbUpdateDirCode 91 "Object variable not set"
      )~"},
      {"RenumberingWithoutStepSender", "pbUpdateDirCode", kStepSender, false, "", OpenStored,
       Renumber, R"~(
        glngrid -> 17
        ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=7 AND UNITKEY=3 AND RID <> 17" -> no rows
        ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
        gstrLastModifiedDate -> "11/20/2026 9:30:00 AM"
        ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=7,MODIFIED=2  WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" "11/20/2026 9:30:00 AM" 17 -> 1
        cbodirectorycode.ListIndex -> 1
        cbodirectorycode.RemoveItem 1
        txtdirectorycode.MaxLength -> 0
        cbodirectorycode.AddItem "7" 1
        cbodirectorycode.NewIndex -> 1
        cbodirectorycode.ItemData(1) = 17
        cbodirectorycode.ListIndex = 1
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Trapped pbUpdateDirCode 429 "Component can't create object"
      )~"},
      {"DeletionWithoutManager", "pbDelete", kManager, true, "", OpenStored, DeleteAsked, R"~(
        Trapped pbDelete 91 "Object variable not set"
      )~"},
      {"DeletionWithoutStepSender", "pbDelete", kStepSender, false, "", OpenStored, DeleteAsked,
       R"~(
        ExecuteSelect "SELECT DIRECTORYCODE FROM TENANTS WHERE DIRECTORYCODE=17 AND UNITKEY=3" -> no rows
        ExecuteScalar "SELECT DirectoryCode FROM DIRECTORYCODE WHERE RID = 17" -> Null
        MsgBox 52 "Pello RT" "Are you sure you want to delete Directory Code ?" -> 6
        ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
        CreateObject "qorSPS.clsSendProgSteps" ! 429 "Component can't create object"
        Trapped pbDelete 429 "Component can't create object"
      )~"},
      {"FetchWithoutManager", "pbFetchDirForMerge", kManager, true, "", Nothing, Fetch, R"~(
        Trapped pbFetchDirForMerge 91 "Object variable not set"
      )~"},
      {"LongFetchWithoutLink", "pbFetchDirForMerge", kLink, true, "six seconds and longer",
       [](DirCodeScreen& screen) { StoreCodes(screen, 6); }, Fetch, R"~(
        ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0 ORDER BY DIRECTORYCODE" -> 1 row
        ExecuteSelect "SELECT UNITKEY,RID,OLDDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0 AND OLDDIRECTORYCODE<> NULL  ORDER BY OLDDIRECTORYCODE" -> 1 row
        Now -> #11/21/2026 10:00:00 AM#
        Now -> #11/21/2026 10:00:06 AM#
        DoEvents
        Trapped pbFetchDirForMerge 91 "Object variable not set"
      )~"},
      {"ShortFetchWithoutLink", "pbFetchDirForMerge", kLink, true, "shorter",
       [](DirCodeScreen& screen) { StoreCodes(screen, 5); }, Fetch, R"~(
        ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0 ORDER BY DIRECTORYCODE" -> 1 row
        ExecuteSelect "SELECT UNITKEY,RID,OLDDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0 AND OLDDIRECTORYCODE<> NULL  ORDER BY OLDDIRECTORYCODE" -> 1 row
        Now -> #11/21/2026 10:00:00 AM#
        Now -> #11/21/2026 10:00:05 AM#
      )~"},
      {"MergeWithoutManager", "pbMergeSave", kManager, true, "", Nothing,
       [](DirCodeScreen& screen) -> std::optional<bool> {
         qorcred::StringArray details(24);
         return screen.Merge("Insert", details);
       },
       R"~(
        mFirmwareFromHandshake -> "FC01.006"
        Trapped pbMergeSave 91 "Object variable not set"
      )~"},
      {"CreationWithoutManager", "creation", kManager, false, "", Nothing, CreateAnother, R"~(
        CreateObject "qorDBI.clsDBManager" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
        CreateObject "qorCommn.clsConnectionManager"
        Trapped Class_Initialize 91 "Object variable not set"
        Trapped Class_Initialize 91 "Object variable not set"
        Release "qorCommn.clsConnectionManager"
      )~"},
      {"CreationWithoutLink", "creation", kLink, false, "", Nothing, CreateAnother, R"~(
        CreateObject "qorDBI.clsDBManager"
        CreateObject "qorCommn.clsConnectionManager" ! 429 "Component can't create object"
        Trapped Class_Initialize 429 "Component can't create object"
        pbGetRowIDStringConstant -> "_ROWID_"
        pbGetLastModifiedDateStringConstant -> "LASTMODIFIEDDATE"
        Release "qorDBI.clsDBManager"
      )~"},
  };
  return rows;
}

class DirCodeMissingComponent : public ::testing::TestWithParam<DirCodeLack> {};

TEST_P(DirCodeMissingComponent, LeavesWhatIsDescribed) {
  const DirCodeLack& lack = GetParam();
  DirCodeScreen screen(lack.sinceCreation ? lack.component : "");
  ExpectWhatIsDescribed(lack, screen, contract::DirCode());
}

INSTANTIATE_TEST_SUITE_P(Each, DirCodeMissingComponent, ::testing::ValuesIn(Lacks()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(DirCodeMissingComponents, AreDescribedAndTriedForEveryOperationThatUsesThem) {
  ExpectAllTried(contract::DirCode(), KeysOf(Lacks()));
}

}  // namespace
}  // namespace qortest
