// The operations of clsDirCode.
#include "contract/contract.h"
#include "contract/wording.h"

namespace qorcred::contract {

namespace {

constexpr std::string_view kTableFailures =
    "What fails in a result table is raised, everything else trapped.";
constexpr std::string_view kShownColumns =
    "UNITKEY, RID, DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, DNDSCHEDULEID, ISDNDCHECKED, "
    "CFSCHEDULEID, ISCFCHECKED, CFPHONENUMBER, CFEXTENSION, CFTIMEDELAY, LASTMODIFIEDDATE, ACTIVE, "
    "STARTDATE, ENDDATE, DISPLAYNAME, SHOWDISPLAYNAME, SHOWDIRECTORYCODE";
constexpr std::string_view kStoredColumns =
    "UNITKEY, RID, DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, DNDSCHEDULEID, ISDNDCHECKED, "
    "CFSCHEDULEID, ISCFCHECKED, CFPHONENUMBER, CFEXTENSION, CFTIMEDELAY, LASTMODIFIEDDATE, ACTIVE, "
    "STARTDATE, ENDDATE, DISPLAYNAME, SHOWDISPLAYNAME, SHOWDIRECTORYCODE, MODIFIED, "
    "OLDDIRECTORYCODE";
// An operation that asks the manager before it touches anything.
Absence WithoutManager(std::string_view result, std::string_view effect = "nothing is touched") {
  return {.component = kManager,
          .sinceCreation = true,
          .failure = 91,
          .result = result,
          .effect = effect};
}

constexpr Message kCodeIsTaken{
    64, "This Directory Code already exists. Please enter a different Directory Code."};

Operation Creation() {
  return {
      .name = kCreation,
      .purpose =
          "Makes the components that the controller keeps until it ends, and asks the "
          "manager for its two texts. Each is tried, whatever became of the one before.",
      .creates = {kManager, kLink},
      .others = {{kManager, {kRowIdText, kLastModifiedText}}},
      .absences = {{.component = kManager,
                    .failure = 429,
                    .effect =
                        "the connection manager is created; asking for the texts fails with 91"},
                   {.component = kLink, .failure = 429, .effect = "the texts are asked for"}},
  };
}

Operation RetrieveSchedules() {
  return {
      .name = "pbRetrieveSchedules",
      .purpose =
          "Fills both lists of schedules: \"Full Access\" and \"No Access\" in front of the "
          "unit's, which are sorted by name. Selects nothing.",
      .arguments = {kConn, kUnit},
      .failures = kTableFailures,
      .screen = {{"cboSchedules, cboSchedulesCF",
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put"}}},
      .others = {{kManager, {kSelect}},
                 {kTable,
                  {kCell, kPutCell, kFirst, kLast, kReDim, "InsertRows(row)",
                   "QuickSort(lowRow, highRow, column, 0, 9)"}}},
      .tables = {{"Schedules", "UnitKey, ScheduleID, ScheduleName, Modified"}},
      .absences = {WithoutManager("")},
  };
}

Operation RetrieveSettings() {
  return {
      .name = "pbRetrieveSettingsFromUnit",
      .purpose =
          "Sets how many digits a code may have and, unless a stored code is selected, the "
          "default dates.",
      .arguments = {kConn, kUnit},
      .failures = kTableFailures,
      .screen = {{"txtdirectorycode", {"MaxLength put"}},
                 {"cbodirectorycode", {"ListIndex get"}},
                 {"dtpStart", {"Value put"}},
                 {"dtpEnd",
                  {"Value put", "Year put", "Month put", "Day put", "Hour put", "Minute put",
                   "Second put", "MaxDate get"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}, {kSurroundings, {kNow}}},
      .tables = {{"UnitSettings",
                  "UnitKey, MaxDigitsDirectoryCode, IGNOREFACILITYCODE, RECORDDEACTIVATION, "
                  "DEACTIVATIONDATE, DEACTIVATIONDAYS"}},
      .absences = {WithoutManager("")},
  };
}

Operation RetrieveTenants() {
  return {
      .name = "pbRetrieveTenants",
      .purpose = "Fills the list of the tenants that refer to a directory code, or to none.",
      .arguments = {kConn,
                    kUnit,
                    {"lngDirCode",
                     "`RID` of the directory code; -1: the tenants that refer to none. 0 is a row "
                     "like any other, which nobody has"},
                    {"blnDIsplayName",
                     "True lists the display names at the unit and leaves out tenants without "
                     "one, False lists \"Last First M\""}},
      .result = "False when there are none",
      .failures = kTableFailures,
      .screen = {{"lstTenants",
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put",
                   "ListCount get"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell, kFirst, kLast}}},
      .tables = {{"Tenants",
                  "UnitKey, TenantID, LastName, FirstName, MiddleInitial, NameAtUnit, Resident, "
                  "DIRECTORYCODE"}},
      .absences = {WithoutManager("False")},
  };
}

Operation RetrieveCodes() {
  return {
      .name = "pbRetrieveDirCodes",
      .purpose =
          "Fills the list of the unit's codes, or loads one of them into the controls of "
          "the entry.",
      .arguments = {kConn,
                    kUnit,
                    {"lngRID",
                     "-1 fills the list; any other number, 0 too, is the `RID` of the row to load"},
                    {"lngOldValue",
                     "with `lngRID` -1: the `RID` to select when the list is filled; 0, or one "
                     "that is not there, selects nothing"}},
      .runs = {"pbRetrieveTenants"},
      .screen = {{"gblnModifiedFromClass, glngrid, gstrLastModifiedDate", {"put"}},
                 {"cbodirectorycode",
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put",
                   "ListIndex put"}},
                 {"txtdirectorycode", {"MaxLength get", "Text put"}},
                 {"txtPhoneNo, txtExtn, txtPhoneNocf, txtExtnCF, txtDisplayName", {"Text put"}},
                 {"pvnTimeDelay, pvnTimeDelayCF", {"put"}},
                 {"chkDND, chkCallForwarding, chkActive, chkShowDisplayName, chkShowDirCode, "
                  "dtpStart, dtpEnd",
                  {"Value put"}},
                 {"cboSchedules, cboSchedulesCF",
                  {"ListCount get", "ItemData(index) get", "ListIndex put"}},
                 {"cmdedit", {"Enabled get"}},
                 {"cmdSelect", {"Enabled put"}}},
      .others = {{kManager, {kSelect}},
                 {kTable, {kCell, kFirst, kLast}},
                 {kSurroundings, {kDateText}}},
      .tables = {{"DirectoryCode", kShownColumns}},
      .absences = {WithoutManager("")},
  };
}

Operation Save() {
  return {
      .name = "pbSave",
      .purpose =
          "Stores a new directory code, or what the screen shows of the one that is "
          "loaded.",
      .arguments = {kConn,
                    kUnit,
                    {"blnEditDir",
                     "True updates the row `glngrid`, False inserts one; independent of `gstrTag`"},
                    {"lngRID",
                     "`RID` of the new row, below 1 when the INSERT failed. Stays as it was in an "
                     "edit and a refusal",
                     Direction::kOut},
                    {"prevDirCodeIndex",
                     "with `gstrTag` \"EDIT\": index in `cbodirectorycode` of the item whose text "
                     "is the code; 0 takes the `Text` of the list. Not looked at otherwise"}},
      .result = "True when the entry was accepted and the statement ran, whatever it changed",
      .runs = {"pbRetrieveDirCodes"},
      .creates = {kApplication, kStepSender},
      .screen =
          {{"gstrTag, glngrid, gstrLastModifiedDate", {"get"}},
           {"txtdirectorycode, txtPhoneNo, txtPhoneNocf", {"Text get", "SetFocus()"}},
           {"txtExtn, txtExtnCF, txtDisplayName", {"Text get"}},
           {"cbodirectorycode", {"List(index) get", "Text get"}},
           {"pvnTimeDelay, pvnTimeDelayCF", {"get"}},
           {"chkDND, chkCallForwarding, chkActive, chkShowDisplayName, chkShowDirCode, dtpStart",
            {"Value get"}},
           {"dtpEnd", {"Value get", "SetFocus()"}},
           {"cboSchedules, cboSchedulesCF",
            {"ListIndex get", "ItemData(index) get", "SetFocus()"}}},
      .others = {{kManager, {kSelect, kScalar, kInsert, kUpdateOfARow}},
                 {kApplication, {kUnitStatus}},
                 {kStepSender,
                  {"pbDeleteDirCodePrgStepExists(conn V, unitKey B, code)", kProgramCode,
                   "pbGenDirCodePrgStep(conn V, unitKey B, rid V)"}},
                 {kTable, {kCell}},
                 {kSurroundings, {kDateText, kToAnsi, kFromAnsi}}},
      .tables = {{"DirectoryCode", "UNITKEY, RID, DIRECTORYCODE, MODIFIED", kStoredColumns},
                 {"UNITTYPES", "DESCRIPTION, TOTAL"},
                 {"UnitSettings", "UnitKey, UNITTYPE"}},
      .messages =
          {{64, "You cannot enter more than 2000 combined codes."},
           {64, "Please enter a Directory Code."},
           {64, "Please enter the positive number as Directory Code."},
           {64, "Please enter a Phone No. to apply to the Directory Code."},
           {64, "Please select a Time Zone for the Do Not Disturb schedule."},
           {64, "Please select a Time Zone for the Call Forwarding schedule."},
           {64, "Please enter a Call Forwarding Phone No."},
           {64, "The End Date must be later than the Start Date. Please select a later End Date."},
           kCodeIsTaken,
           {52,
            "The phone numbers for the Directory Code and Call Forwarding are the same. Do you "
            "still want to proceed?"}},
      .absences = {WithoutManager("False", "the code is read, nothing is written"),
                   {.component = kApplication,
                    .failure = 429,
                    .result = "False",
                    .effect = "nothing is written",
                    .use = "a code that is not stored"},
                   {.component = kApplication,
                    .result = "True",
                    .effect = "it is not needed",
                    .use = "a code that is stored"},
                   {.component = kStepSender,
                    .failure = 429,
                    .result = "False",
                    .effect = "the entry was checked, also with its messages; nothing is written"}},
  };
}

Operation Renumber() {
  return {
      .name = "pbUpdateDirCode",
      .purpose = "Gives the row `glngrid`, whose entry is selected, another code.",
      .arguments = {kConn,
                    kUnit,
                    {"strDirCode", "the code, as a text; checked trimmed, written as it is"}},
      .result = "True when it was accepted and the statement ran, also when no row was changed",
      .creates = {kStepSender},
      .screen = {{"glngrid, gstrLastModifiedDate", {"get"}},
                 {"txtdirectorycode", {"MaxLength get", "SetFocus()"}},
                 {"cbodirectorycode",
                  {"ListIndex get put", "RemoveItem(index)", "AddItem(text, index)", "NewIndex get",
                   "ItemData(index) put"}}},
      .others = {{kManager, {kSelect, kScalar, kUpdateOfARow}},
                 {kStepSender, {"pbGenChgDirCodePrgStep(conn V, unitKey B, rid)", kProgramCode}},
                 {kTable, {kCell}}},
      .tables = {{"DirectoryCode", "UNITKEY, RID, DIRECTORYCODE, MODIFIED",
                  "DIRECTORYCODE, MODIFIED"}},
      .messages = {{64, "Please enter a Directory Code."},
                   {64, "Please enter the Directory Code in number."},
                   {64, "Please enter the positvie number as Directory Code."},
                   kCodeIsTaken},
      .absences = {WithoutManager("False"),
                   {.component = kStepSender,
                    .failure = 429,
                    .result = "False",
                    .effect = "the row and the list have the new code"}},
  };
}

Operation Delete() {
  return {
      .name = "pbDelete",
      .purpose = "Deletes a directory code and queues what the unit has to forget.",
      .arguments = {kConn,
                    kUnit,
                    {"lngRID", "`RID` of the code"},
                    {"blnDontDisplayMessage",
                     "True leaves out the closing message; questions are asked all the same"},
                    {"blnValidate",
                     "True asks first, and afterwards takes the code from its tenants; False does "
                     "neither"}},
      .result =
          "True only with `blnValidate`, when the user said Yes. Without it a deletion that "
          "was done gives False",
      .creates = {kStepSender},
      .others = {{kManager, {kSelect, kScalar, kDelete, kUpdate}},
                 {kStepSender,
                  {"pbGenDelDirCodePrgStep(conn V, unitKey B, rid B)",
                   "pbDeleteDirCodePrgStep(conn V, unitKey B, rid B)"}},
                 {kTable, {kCell}},
                 {kSurroundings, {kDateText}}},
      .tables = {{"DirectoryCode", "RID, DIRECTORYCODE, MODIFIED", {}, true},
                 {"Tenants", "UnitKey, DIRECTORYCODE", "DIRECTORYCODE, LASTMODIFIEDDATE"}},
      .messages = {{52,
                    "This Directory Code is applied to a Tenant. Deleting this Directory Code will "
                    "remove it from the system. Do you wish to continue?"},
                   {52, "Are you sure you want to delete Directory Code {code}?"},
                   {64, "Directory Code deleted successfully."}},
      .absences = {WithoutManager("False", "nothing is asked or deleted"),
                   {.component = kStepSender,
                    .failure = 429,
                    .result = "False",
                    .effect = "the question was asked, nothing is deleted"}},
  };
}

Operation MergeSave() {
  return {
      .name = "pbMergeSave",
      .purpose =
          "Writes one code that a unit holds into the store, or deletes what the unit does "
          "not hold.",
      .arguments =
          {kConn,
           kUnit,
           {"strMode",
            "\"Insert\", \"Update\" or \"Delete\", to the letter. Anything else converts the "
            "details and writes nothing"},
           {"strDirCodeDetails",
            "24 texts in the unit's notation ([unit-file.md](unit-file.md#the-24-fields)), which "
            "come back in the store's: flags as \"True\" and \"False\", times as hh:mm, dates as "
            "mm/dd/yyyy hh:mm (a blank at the end without a time) or \"\" when not in use. Not "
            "looked at by \"Delete\"",
            Direction::kInAndOut},
           {"lngRID",
            "the row of an update or a deletion; -1 with \"Delete\" means every code of the unit. "
            "0 is no row: it updates and deletes nothing"}},
      .result =
          "True at its end, also when a statement failed in the manager; False for fewer "
          "than 24 texts, but for \"Delete\"",
      .others = {{kConnectionScreen, {"mFirmwareFromHandshake get"}},
                 {kManager, {kInsert, kUpdateOfARow, kQueryDelete, kUpdate}}},
      .tables = {{"DirectoryCode", "UNITKEY, RID, DIRECTORYCODE", kStoredColumns, true},
                 {"Tenants", "UnitKey, DIRECTORYCODE", "DIRECTORYCODE, MODIFIED"}},
      .absences = {WithoutManager("False", "the details are converted, nothing is written")},
  };
}

Operation FetchForMerge() {
  return {
      .name = "pbFetchDirForMerge",
      .purpose =
          "Gives the unit's codes as the store has them, for the comparison with the unit, "
          "and keeps the link to the unit alive meanwhile.",
      .arguments = {kConn,
                    kUnit,
                    {"arrXDBDirCode",
                     "a table of `UNITKEY`, `RID` and code: first a row for each current code, "
                     "then one for each previous number. What comes in is let go of; Nothing will "
                     "do",
                     Direction::kOut}},
      .result = "True at its end. When it fails half way the table has what was there by then",
      .others = {{kManager, {kSelect}},
                 {kLink, {"pbPing()"}},
                 {kTable, {kCell, kPutCell, kFirst, kLast, kReDim}},
                 {kSurroundings, {kNow, "LetEventsRun()"}}},
      .tables = {{"DirectoryCode", "UNITKEY, RID, DIRECTORYCODE, OLDDIRECTORYCODE"}},
      .absences = {WithoutManager("False"),
                   {.component = kLink,
                    .sinceCreation = true,
                    .failure = 91,
                    .result = "False",
                    .effect = "it ends at the first ping, with the current codes and what was "
                              "appended by then in the table",
                    .use = "six seconds and longer"},
                   {.component = kLink,
                    .sinceCreation = true,
                    .result = "True",
                    .effect = "it is not needed",
                    .use = "shorter"}},
  };
}

}  // namespace

Class DirCode() {
  return {
      .name = "clsDirCode",
      .purpose =
          "The directory-code screen and the merge with a unit "
          "([host-dir-codes.md](host-dir-codes.md)).",
      .properties = {{"mobjDirCodeScreen",
                      "the screen that the operations work on; kept until another or nothing is "
                      "set"},
                     {"mfrmConnectionScreen",
                      "the connection screen, which knows the unit's firmware; the same. For "
                      "`pbMergeSave` alone"}},
      .operations = {Creation(), RetrieveSchedules(), RetrieveSettings(), RetrieveTenants(),
                     RetrieveCodes(), Save(), Renumber(), Delete(), FetchForMerge(), MergeSave(),
                     DecodeBase64()},
  };
}

}  // namespace qorcred::contract
