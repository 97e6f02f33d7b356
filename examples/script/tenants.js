// The host of tenants.vbs in the other language. What this language cannot offer itself - a list whose
// ItemData is put, a table whose cells are - comes from the component files beside this one.
var conn = {
  Tell: function (line) { WScript.Echo(line); },
  Store: function () { return store; },
  BeginTrans: function () { this.Tell("BeginTrans"); },
  CommitTrans: function () { this.Tell("CommitTrans"); },
  RollbackTrans: function () { this.Tell("RollbackTrans"); },
  Execute: function (sql, rowsAffected) { this.Tell(sql); }
};
var store = new ActiveXObject("Example.Store");
var unit = 3;

function word(value) {
  return value ? "True" : "False";
}

WScript.Echo("--- opening");
var screens = new ActiveXObject("Example.Screens");
var screen = screens.CredentialScreen("frmTBL");
var controller = new ActiveXObject("qorCred.clsCredential");
controller.gmobjCredentialScreen = screen;
controller.pbRetrieveSchedules(conn, unit);
controller.pbRetrieveSettingsFromUnit(conn, unit);
WScript.Echo("no end by default: " + word(screen.dtpEnd.Value === null));

WScript.Echo("--- two cards with a tenant each");
screen.cboCredentialType.ListIndex = 1;
screen.txtPINStart.Text = "20";
screen.txtPINEND.Text = "21";
screen.txtFacilityCode.Text = "7";
screen.cboSchedules1.ListIndex = 1;
screen.cboSchedules2.ListIndex = 3;
screen.chkActive.Value = 1;
screen.dtpStart.Value = "3/5/2026 8:00:00 AM";
screen.dtpEnd.Value = "3/5/2027 11:59:59 PM";
screen.gstrTag = "Range";
var saved = controller.pbSave(conn, unit, true, false, 0);
// The last row's number comes back by reference, which this language does not have: the store knows it.
WScript.Echo("saved: " + word(saved) + ", last RID " + store.LastCredential() + ", new tenants " +
             screen.gstrNewTenantIDs);

WScript.Echo("--- closing");
controller.gmobjCredentialScreen = null;
