// The operations of clsCredential.
#include "contract/contract.h"
#include "contract/wording.h"

namespace qorcred::contract {

namespace {

constexpr std::string_view kScheduleLists =
    "cboSchedules1, cboSchedules2, cboSchedules3, cboSchedules4";

Operation Creation() {
  return {
      .name = kCreation,
      .purpose =
          "Makes the components that the controller keeps until it ends, and asks the "
          "manager for its two texts. It stops at the first that fails.",
      .creates = {kManager, kStepSender, kTenants},
      .others = {{kManager, {kRowIdText, kLastModifiedText}}},
      .absences =
          {{.component = kManager,
            .failure = 429,
            .effect = "step sender and tenants are not created, the two texts not asked for"},
           {.component = kStepSender,
            .failure = 429,
            .effect = "the tenants are not created, the two texts not asked for"},
           {.component = kTenants, .failure = 429, .effect = "the two texts are not asked for"}},
  };
}

// An operation that asks the manager before it touches anything.
Absence WithoutManager(std::string_view effect) {
  return {.component = kManager, .sinceCreation = true, .failure = 91, .effect = effect};
}

Operation RetrieveSchedules() {
  return {
      .name = "pbRetrieveSchedules",
      .purpose =
          "Fills the four lists of schedules: \"No Access\" and \"Full Access\" in front of "
          "the unit's, \"Full Access\" selected.",
      .arguments = {kConn, kUnit},
      .screen = {{kScheduleLists,
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put",
                   "ListIndex put"}}},
      .others = {{kManager, {kSelect}},
                 {kTable, {kCell, kPutCell, kFirst, kLast, kReDim, "InsertRows(row)"}}},
      .tables = {{"Schedules", "UnitKey, ScheduleID, ScheduleName, Modified"}},
      .absences = {WithoutManager("nothing is touched")},
  };
}

Operation RetrieveTenants() {
  return {
      .name = "pbRetrieveTenants",
      .purpose =
          "Fills the list of tenants that a credential can be assigned to, behind "
          "\"<Unassigned>\".",
      .arguments = {kConn, kUnit},
      .screen = {{"cboAssignedTo",
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell, kFirst, kLast}}},
      .tables = {{"Tenants", "UnitKey, TenantID, LastName, FirstName, MiddleInitial, Resident"}},
      .absences = {WithoutManager("nothing is touched")},
  };
}

Operation RetrieveSettings() {
  return {
      .name = "pbRetrieveSettingsFromUnit",
      .purpose =
          "Adds the three types of credentials to their list, takes the facility code away "
          "where the unit ignores it and, on the screen named \"frmTBL\", sets the default "
          "dates.",
      .arguments = {kConn, kUnit},
      .screen = {{"Name", {"get"}},
                 {"cboCredentialType",
                  {"AddItem(text)", "NewIndex get", "ItemData(index) put", "ListIndex put"}},
                 {"txtFacilityCode, lblFacilityCode", {"Enabled put", "BackColor put"}},
                 {"dtpStart", {"Value put"}},
                 {"dtpEnd",
                  {"Value put", "Year put", "Month put", "Day put", "Hour put", "Minute put",
                   "Second put", "MaxDate get"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}, {kSurroundings, {kNow}}},
      .tables = {{"UnitSettings",
                  "UnitKey, IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, "
                  "DEACTIVATIONDAYS"}},
      .absences = {WithoutManager(
          "the types stand in their list, the first one selected; the rest is as it was")},
  };
}

Operation RetrieveDoorDetails() {
  return {
      .name = "pbRetrieveDoorDetails",
      .purpose = "Puts the names of the unit's first four doors on their labels.",
      .arguments = {kConn, kUnit},
      .screen = {{"lblDoor1, lblDoor2, lblDoor3, lblDoor4", {"Caption put"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}},
      .tables = {{"DOORS", "UNITKEY, DOORID, DOORNAME"}},
      .absences = {WithoutManager("nothing is touched")},
  };
}

Operation RetrieveCredentials() {
  return {
      .name = "pbRetrieveCredentials",
      .purpose =
          "Fills the list of the unit's credentials, or loads one of them into the controls "
          "of the entry.",
      .arguments = {kConn,
                    kUnit,
                    {"lngRID",
                     "-1 fills the list; any other number is the `RID` of the row to load"},
                    {"lngPreviousRID",
                     "with `lngRID` -1: the `RID` to select when the list is filled; 0, or one "
                     "that is not there, selects nothing"}},
      .runs = {"pbTransmitterCtls"},
      .screen = {{"gblnModifiedFromClass, glngrid, gstrLastModifiedDate", {"put"}},
                 {"gblnDisplayFacilityCode", {"get"}},
                 {"cboCredentials",
                  {"Clear()", "AddItem(text)", "NewIndex get", "ItemData(index) put",
                   "ListIndex put"}},
                 {"cboActivate", {"ListIndex put"}},
                 {"txtFacilityCode, txtIDCode, txtSequenceCode", {"Text put"}},
                 {"optButton4, optButtonDefault", {"Value put"}},
                 {"cboAssignedTo", {"ListCount get", "ItemData(index) get", "ListIndex put"}}},
      .others = {{kManager, {kSelect}},
                 {kTable, {kCell, kFirst, kLast}},
                 {kSurroundings, {kDateText}}},
      .tables = {{"CredentialBank",
                  "UnitKey, RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber, LASTMODIFIEDDATE, DOORCODE"},
                 {"Tenants",
                  "UnitKey, TenantID, LastName, FirstName, MiddleInitial, CREDENTIALID1, "
                  "CREDENTIALID2"}},
      .absences = {WithoutManager("nothing is touched")},
  };
}

Operation ShowTransmitterControls() {
  return {
      .name = "pbTransmitterCtls",
      .purpose =
          "Shows the controls of a transmitter and hides those of a card, or the other way "
          "round, with both boxes emptied.",
      .arguments = {{"blnEnable", "True for a transmitter, False for a card"}},
      .screen = {{"txtIDCode, txtSequenceCode", {"Visible put", "Text put"}},
                 {"lblIDCode, lblSequencecode, optButtonDefault, optButton4, lblActivate, "
                  "cboActivate",
                  {"Visible put"}}},
  };
}

constexpr Message kCardIsTaken{
    64,
    "For this Credential Type, the combination of Credential Number and the Facility Code "
    "cannot be duplicated. Credential Number = {number}, Facility Code = {facility code}"};
constexpr Message kTransmitterIsTaken{
    64,
    "For this Credential Type, the combination of Credential Number and the Facility Code,ID "
    "Code,Sequence Code, Button No. cannot be duplicated. Credential Number = {number}, "
    "Facility Code = {facility code} ,ID Code={ID code}, Sequence Code={sequence code}, Button "
    "No.={button}"};

std::vector<Message> SaveMessages() {
  return {
      {64, "You must enter a credential number."},
      {64, "You must enter a starting number."},
      {64, "Please enter a numeric value for starting number."},
      {64, "Please enter a starting number between 1 and 65535."},
      {64, "Please enter an ending number between 1 and 65535."},
      {64, "Please enter a credential number smaller than 65535."},
      {64, "Please enter a Start Number smaller than 65535."},
      {64, "Please enter a End Number smaller than 65535."},
      {64, "The ending number must be greater than the starting number."},
      {64, "Please enter a Facility Code between 0 and 63."},
      {64, "Please enter a Facility Code between 0 and 255."},
      {64, "Please enter an ID Code between 0 and 26."},
      {64, "Please enter a Sequence Code between 0 and 2."},
      kCardIsTaken,
      kTransmitterIsTaken,
      {64,
       "For this Credential Type, the combination of Credential Number and the Facility Code, ID "
       "Code, Sequence Code, Button No. cannot be duplicated. Credential Number = {number}, "
       "Facility Code = {facility code}, ID Code={ID code}, Sequence Code={sequence code}, Button "
       "No.={button}"},
      {64, "The End Date must be later than the Start Date. Please select a later End Date."},
      {64,
       "You cannot assign more than {maximum} codes combined. This Unit already has {maximum} "
       "credentials/entry codes/directory codes."},
      {64,
       "A maximum of {maximum} combined codes are allowed. {count} combined codes are currently "
       "assigned. Only {rest} credentials can be created. Reduce the ending number to {end}"},
      {64, "You cannot enter more than {maximum} combined codes."},
  };
}

std::vector<Absence> SaveAbsences() {
  constexpr std::string_view kNoPlaceholder =
      "the INSERT has an empty place for the identity (`VALUES(3,,0,...`), because the manager "
      "was not asked for its text; a manager refuses it, and the save is rolled back";
  return {
      {.component = kApplication, .failure = 429, .result = "False", .effect = "nothing is read"},
      {.component = kTenants, .failure = 429, .result = "False", .effect = "nothing is read"},
      {.component = kManager,
       .sinceCreation = true,
       .failure = 91,
       .result = "False",
       .effect = "the entry is read, and nothing is written; for an empty end box `gstrTag` and "
                 "`txtPINEND` are put",
       .use = "new credentials"},
      {.component = kManager,
       .sinceCreation = true,
       .result = "False",
       .effect = "it is refused with its message, as always",
       .use = "an entry that breaks a bound"},
      {.component = kManager,
       .sinceCreation = true,
       .failure = 91,
       .result = "False",
       .effect = "nothing is written",
       .use = "an edit"},
      {.component = kManager,
       .failure = 429,
       .result = "False",
       .effect = "the door is stored and the former tenant released, nothing is assigned: the "
                 "assignment makes a manager of its own for the unit's capacity",
       .use = "an edit that assigns"},
      {.component = kStepSender,
       .sinceCreation = true,
       .result = "False",
       .effect = kNoPlaceholder,
       .use = "new credentials"},
      {.component = kTenants,
       .sinceCreation = true,
       .result = "False",
       .effect = kNoPlaceholder,
       .use = "new credentials"},
  };
}

Operation Save() {
  return {
      .name = "pbSave",
      .purpose =
          "Stores a new credential or a range of them, with a tenant for each on the "
          "tenant-creating screen; or the door and the tenant of a stored one.",
      .arguments =
          {{"objConn",
            "the open connection; goes to the components. Its transaction holds new credentials"},
           kUnit,
           {"blnIsTBL",
            "True on the tenant-creating screen: every new credential gets a tenant. Not looked at "
            "in an edit"},
           {"blnEditCR",
            "True stores door and tenant of the credential that is selected in `cboCredentials`, "
            "False a new credential or range"},
           {"lngRID",
            "`RID` of the last credential that was inserted, also when the save was undone; below "
            "1 after an INSERT that failed. Stays as it was when none was tried, and in an edit",
            Direction::kOut}},
      .result =
          "True when stored; also after a commit that failed, and for an edit that met the "
          "unit's limit",
      .creates = {kApplication, kTenants, kManager},
      .screen = {{"gstrTag", {"get put"}},
                 {"gstrNewTenantIDs", {"put"}},
                 {"txtPINStart, txtFacilityCode, txtIDCode, txtSequenceCode",
                  {"Text get", "SetFocus()"}},
                 {"txtPINEND", {"Text get put", "SetFocus()"}},
                 {"optButton4, chkActive, dtpStart", {"Value get"}},
                 {"dtpEnd", {"Value get", "SetFocus()"}},
                 {"cboCredentialType, cboCredentials, cboAssignedTo",
                  {"ListIndex get", "ItemData(index) get"}},
                 {kScheduleLists, {"ListIndex get", "ItemData(index) get"}},
                 {"cboActivate", {"ListIndex get"}}},
      .others = {{kManager, {kSelect, kScalar, kInsert, kUpdate, kUpdateOfARow}},
                 {kApplication, {kUnitStatus}},
                 {kTenants,
                  {"pbGetMaxGroupIDOrLinkID(unitKey V, conn V, True)",
                   "pbIncrementMaxGroupIDOrLinkIDByOne(unitKey V, conn V, True, 1)",
                   "pbGetTenantID(conn V, unitKey V, rid V)", kProgramTenant}},
                 {kConnection,
                  {"BeginTrans()", "CommitTrans()", "RollbackTrans()",
                   "Execute(sql V, rowsAffected V)"}},
                 {kTable, {kCell}},
                 {kSurroundings, {kDateText, kToAnsi, kFromAnsi}}},
      .tables = {{"CredentialBank",
                  "UnitKey, RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber",
                  "UnitKey, RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber, DOORCODE, LASTMODIFIEDDATE"},
                 {"UNITTYPES", "DESCRIPTION, TOTAL"},
                 {"UnitSettings", "UnitKey, UNITTYPE"},
                 {"TenantGroup", "UnitKey, RID, IsGroupZero"},
                 {"Tenants", "UnitKey, TenantID, CREDENTIALID1, CREDENTIALID2, Resident",
                  "UnitKey, RID, LastName, GROUPID, LINKCODE, ACTIVETENANT, ACTIVESTARTTIME, "
                  "ACTIVEENDTIME, DOORSCHEDULE1, DOORSCHEDULE2, DOORSCHEDULE3, DOORSCHEDULE4, "
                  "CREDENTIALID1, CREDENTIALID2, LASTMODIFIEDDATE"},
                 {"TenantsBackup", {}, "UnitKey, TenantID"}},
      .messages = SaveMessages(),
      .absences = SaveAbsences(),
  };
}

Operation Delete() {
  return {
      .name = "pbDelete",
      .purpose =
          "Deletes a credential, after a question when a tenant holds it, and takes it from "
          "its tenant.",
      .arguments = {kConn,
                    kUnit,
                    {"lngRID",
                     "`RID` of the credential. What a tenant loses is the credential that is "
                     "selected in `cboCredentials`: select the same one"}},
      .result =
          "True when deleted; False when the user declined or something failed, also behind "
          "the deletion",
      .creates = {kTenants},
      .screen = {{"cboCredentials", {"ListIndex get", "ItemData(index) get"}}},
      .others = {{kManager, {kSelect, kScalar, kUpdate, kDelete}},
                 {kTenants, {kProgramTenant}},
                 {kTable, {kCell}}},
      .tables = {{"CredentialBank", "RID", {}, true},
                 {"Tenants", "UnitKey, TenantID, CREDENTIALID1, CREDENTIALID2, Resident",
                  "CREDENTIALID1, CREDENTIALID2"}},
      .messages = {{52,
                    "This credential is already assgined to a Tenant. Deleting this credential "
                    "will remove it from the assigned Tenant and delete the credential from the "
                    "system. Do you want to continue?"}},
      .absences = {{.component = kManager,
                    .sinceCreation = true,
                    .failure = 91,
                    .result = "False",
                    .effect = "nothing is asked or deleted"},
                   {.component = kTenants,
                    .failure = 429,
                    .result = "False",
                    .effect =
                        "the credential is deleted, behind the question; its tenant keeps the "
                        "number and gets no steps",
                    .use = "one that is held"},
                   {.component = kTenants,
                    .result = "True",
                    .effect = "no tenants are needed",
                    .use = "one that nobody holds"}},
  };
}

Operation Renumber() {
  return {
      .name = "pbUpdatePinNo",
      .purpose = "Gives the credential that is selected in `cboCredentials` another number.",
      .arguments = {kConn,
                    {"lngPINNO",
                     "the number. 0 is refused; the host checks 1 to 65535 and never hands over "
                     "-1, which would be stored as Null after a look at the boxes of the entry"},
                    kUnit},
      .result =
          "True when stored; False when refused with a message, or without one when somebody "
          "else changed the row meanwhile",
      .screen = {{"gstrLastModifiedDate", {"get"}},
                 {"cboCredentials",
                  {"Text get", "ListIndex get put", "ItemData(index) get put", "RemoveItem(index)",
                   "AddItem(text, index)", "NewIndex get"}},
                 {"txtFacilityCode, txtIDCode, txtSequenceCode", {"Text get"}},
                 {"optButton4", {"Value get"}}},
      .others = {{kManager, {kSelect, kUpdateOfARow}}, {kTable, {kCell}}},
      .tables = {{"CredentialBank",
                  "UnitKey, RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber",
                  "PINNo, LASTMODIFIEDDATE"}},
      .messages = {{48, "Please enter a Credential Number between 1 and 65535."},
                   {64, "Credential Number already exists."},
                   kCardIsTaken,
                   kTransmitterIsTaken},
      .absences = {{.component = kManager,
                    .sinceCreation = true,
                    .failure = 91,
                    .result = "False",
                    .effect = "nothing is looked up or written"},
                   {.component = kManager,
                    .sinceCreation = true,
                    .result = "False",
                    .effect = "it is refused with its message, as always",
                    .use = "the number 0"}},
  };
}

}  // namespace

Class Credential() {
  return {
      .name = "clsCredential",
      .purpose =
          "The credential screen and the screen that creates tenants "
          "([host-credentials.md](host-credentials.md)).",
      .properties = {{"gmobjCredentialScreen",
                      "the screen that the operations work on; kept until another or nothing is "
                      "set"}},
      .operations = {Creation(), RetrieveSchedules(), RetrieveTenants(), RetrieveSettings(),
                     RetrieveDoorDetails(), RetrieveCredentials(), ShowTransmitterControls(),
                     Save(), Delete(), Renumber(), DecodeBase64()},
  };
}

}  // namespace qorcred::contract
