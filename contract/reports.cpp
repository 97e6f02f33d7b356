// The operations of clsDirCodeReport and clsCredentialReport.
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "contract/wording.h"

namespace qorcred::contract {

namespace {

constexpr Message kStillAssigned{
    64,
    "Credentials which are assigned to tenants cannot be deleted. Please deselect those "
    "credentials."};

// Operations of both reports

Operation Creation() {
  return {.name = kCreation, .purpose = "Touches nothing."};
}

Operation PopulateOperators() {
  return {
      .name = "pbPopulateArrOperators",
      .purpose =
          "Fills the controller's own tables of operators and fields. Once is enough; "
          "without it the credential report composes no condition.",
      .result = "True",
  };
}

Operation MergeTables() {
  return {
      .name = "pbMergeXArrayDBObjects",
      .purpose =
          "Appends the rows of one table to another, without its last row and its last "
          "column.",
      .arguments = {{"arrXDBObj1",
                     "the table that grows, changed as an object; the variable comes back as it "
                     "went"},
                    {"arrXDBObj2", "the table that is read"}},
      .result = "True; False when a call failed, with what was appended by then",
      .others = {{kTable, {kCell, kPutCell, kFirst, kLast, kReDim}}},
  };
}

Operation Validate() {
  return {
      .name = "pbValidate",
      .purpose = "Looks whether tenants of the unit hold credentials of `gstrRIDsForDeletion`.",
      .arguments = {kConn, kUnit, {"objDB", "a database manager of the host's"}},
      .result = "True when nobody does; a query that fails in the manager counts as nobody",
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}},
      .tables = {{"Tenants", "UnitKey, TenantID, CREDENTIALID1, CREDENTIALID2"}},
      .messages = {kStillAssigned},
  };
}

Operation Delete() {
  return {
      .name = "pbDelete",
      .purpose =
          "Deletes the credentials of `gstrRIDsForDeletion`, in the report of directory "
          "codes, too, unless a tenant holds one.",
      .arguments = {kConn,
                    kUnit,
                    {"lngRowsDeleted",
                     "how many were deleted. Stays as it was when nothing was tried",
                     Direction::kOut}},
      .result = "True when at least one row was deleted",
      .runs = {"pbValidate"},
      .creates = {kManager},
      .others = {{kManager, {kQueryDelete}}},
      .tables = {{"CredentialBank", "UnitKey, RID", {}, true}},
      .messages = {{64, "Credentials(s) are not deleted successfully."}},
  };
}

std::vector<Property> Properties(std::string_view readersOfTheUnit) {
  return {{"gfrmTxFilter", "the filter screen; kept until another or nothing is set"},
          {"mlngUnitKey", readersOfTheUnit},
          {"gstrRIDsForDeletion",
           "`RID`s of `CredentialBank` rows for `pbValidate` and `pbDelete`, digits with commas "
           "between; pasted into statements as it is: hand over nothing but numbers. \"\" at "
           "first"}};
}

// The report of directory codes

Operation FillFields() {
  return {
      .name = "pbComboData",
      .purpose = "Fills the list of fields of every filter row.",
      .arguments = {kConn},
      .result = R"(the captions with "|" between; "" without fields, or when it failed)",
      .creates = {kManager},
      .screen = {{"cboField",
                  {"Count get", "(index) get", "Clear()", "AddItem(text)", "NewIndex get",
                   "ItemData(index) put"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell, kFirst, kLast}}},
      .tables = {{"TenantSelectionFields",
                  "RID, FieldName, FieldNameDisplay, GridType, Display, DisplaySeq"}},
  };
}

Operation UnitName() {
  return {
      .name = "pbGetUnitName",
      .purpose = "Gives the name of a unit, for a report's heading.",
      .arguments = {kConn, kUnit},
      .result = "the name; \"\" for an unknown unit, or when it failed",
      .creates = {kManager},
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}},
      .tables = {{"Units", "UnitKey, UnitName"}},
  };
}

Operation EntryLength() {
  return {
      .name = "pbGetEntryLength",
      .purpose = "Gives how many digits codes of the unit `mlngUnitKey` have.",
      .arguments = {kCon,
                    {"blnDirLength",
                     "True asks for directory codes, False for entry codes. Comes back as it "
                     "went"}},
      .result = "the number of digits; 0 when nothing is known",
      .creates = {kManager},
      .others = {{kManager, {kSelect}}, {kTable, {kCell}}},
      .tables = {{"UnitSettings", "UnitKey, MaxDigitsDirectoryCode, MaxDigitsEntryCode"}},
  };
}

Operation ComposeCodeStatement() {
  return {
      .name = "pbGenSql",
      .purpose =
          "Composes the report's statement from the filter rows 0 to 4. It runs nothing of "
          "it; the pickers keep their new times. Composed are columns and conditions of "
          "the tables below.",
      .arguments = {kConn, {"intUnitKey", "key of the unit whose codes are reported"}},
      .result = "the statement",
      .failures = "Raised, all of them.",
      .creates = {kManager},
      .screen = {{"cboField", {"(index) get", "ListIndex get", "ItemData(index) get"}},
                 {"cboFilter", {"(index) get", "ListIndex get"}},
                 {"chkBoolean", {"(index) get", "Value get"}},
                 {"dtpDateFrom, dtpDateTo",
                  {"(index) get", "Minute put", "Hour put", "Second put", "Value get"}},
                 {"txtFrom, txtTo", {"(index) get", "Text get"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kCell, kLast}}, {kSurroundings, {kDateText}}},
      .tables = {{"TenantSelectionFields", "RID, FieldName, DisplaySeq"},
                 {"DirectoryCode",
                  "UNITKEY, DIRECTORYCODE, PHONENUMBER, EXTENSION, TIMEDELAY, DNDSCHEDULEID, "
                  "ISDNDCHECKED, CFSCHEDULEID, ISCFCHECKED, CFPHONENUMBER, CFEXTENSION, "
                  "CFTIMEDELAY, ACTIVE, STARTDATE, ENDDATE, DISPLAYNAME, SHOWDISPLAYNAME, "
                  "SHOWDIRECTORYCODE"},
                 {"Schedules", "UnitKey, ScheduleID, ScheduleName"}},
  };
}

Operation ShowInGrid() {
  return {
      .name = "pvDirCodeReportResult",
      .purpose =
          "Lays out the data grid, runs a statement, shows its rows and makes coded cells "
          "readable.",
      .arguments =
          {{"lngUnitKey",
            "the unit whose schedules are shown; the length of codes goes by `mlngUnitKey`"},
           kCon,
           {"objGrid", "the data grid, changed as an object"},
           {"strSQL", "the statement to show: that of `pbGenSql`, or any other with its columns"},
           {"objColGrid",
            "the table of the layout: column 0 the caption, 1 the width, 2 the field's name. What "
            "comes in is let go of; Nothing will do",
            Direction::kOut},
           {"colValueItem",
            "a value item that the controller fills over and over and hands to `ValueItems.Add`, "
            "which must copy it. Left out or Nothing, the grid's `NewValueItem()` is asked for one "
            "when the "
            "first column needs it; a grid without that member (438) keeps coded cells as they "
            "are. "
            "Comes back as it went"}},
      .runs = {"pbGetEntryLength"},
      .creates = {kManager},
      .others = {{kManager, {kSelect}},
                 {kGrid,
                  {"Columns get", "Columns.Count get", "Columns(index) get",
                   "Columns.Caption get put", "Columns.Width put", "Columns.Visible put",
                   "Columns.Remove(index)", "Columns.ValueItems get",
                   "Columns.ValueItems.Add(item)", "Columns.ValueItems.Presentation put",
                   "Columns.ValueItems.Translate put", "NewValueItem()", "Array put", "ReBind()",
                   "Refresh()"}},
                 {kValueItem, {"Value put", "DisplayValue put"}},
                 {kTable, {kCell, kPutCell, kFirst, kLast, kReDim, "DeleteRows(row)"}}},
      .tables = {{"TenantSelectionFields",
                  "FieldName, FieldNameDisplay, DisplayWidth, Display, DisplaySeq"},
                 {"Schedules", "UnitKey, ScheduleID, ScheduleName"}},
      .handedStatement = "strSQL",
  };
}

// The report of credentials

Operation RunCredentialStatement() {
  return {
      .name = "pbGenSql",
      .purpose = "Composes the report's statement from all filter rows and runs it.",
      .arguments = {kConn,
                    {"lngUnitKey", "key of the unit whose credentials are reported"},
                    {"arrXDBTx",
                     "in: a result table, whose bounds are changed to one cell; out: the table of "
                     "the rows",
                     Direction::kInAndOut},
                    {"strSQL",
                     "the statement, also when running it fails. What comes in does not count",
                     Direction::kOut}},
      .result = "True when the manager reported no error",
      .creates = {kManager},
      .screen = {{"cboField", {"Count get", "(index) get", "ListIndex get"}},
                 {"cboFilter", {"(index) get", "ListIndex get", "Text get"}},
                 {"cboType", {"(index) get", "ListIndex get", "ItemData(index) get"}},
                 {"txtFrom, txtTo", {"(index) get", "Text get"}}},
      .others = {{kManager, {kSelect}}, {kTable, {kReDim}}},
      .tables = {{"CredentialBank",
                  "UnitKey, RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber"},
                 {"Tenants",
                  "UnitKey, RID, LastName, FirstName, MiddleInitial, CREDENTIALID1, "
                  "CREDENTIALID2, Resident"}},
  };
}

}  // namespace

Class DirCodeReport() {
  return {
      .name = "clsDirCodeReport",
      .purpose = "The report of directory codes ([host-reports.md](host-reports.md)).",
      .properties = Properties("key of the unit whose length of codes `pbGetEntryLength` and "
                               "`pvDirCodeReportResult` ask for; all others take the unit as an "
                               "argument. 0 at first"),
      .operations = {Creation(), PopulateOperators(), FillFields(), UnitName(), EntryLength(),
                     ComposeCodeStatement(), ShowInGrid(), Validate(), Delete(), MergeTables()},
  };
}

Class CredentialReport() {
  return {
      .name = "clsCredentialReport",
      .purpose = "The report of credentials ([host-reports.md](host-reports.md)).",
      .properties = Properties("not used by this class; 0 at first"),
      .operations = {Creation(), PopulateOperators(), RunCredentialStatement(), Validate(),
                     Delete(), MergeTables()},
  };
}

}  // namespace qorcred::contract
