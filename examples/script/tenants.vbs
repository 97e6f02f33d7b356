' A save that creates tenants: the credentials 20 and 21 are issued, each with a new tenant. Screen, store and
' components stand beside this file.
Option Explicit

Class Connection
  Public Store
  Public Sub Tell(line)
    WScript.Echo line
  End Sub
  Public Sub BeginTrans()
    Tell "BeginTrans"
  End Sub
  Public Sub CommitTrans()
    Tell "CommitTrans"
  End Sub
  Public Sub RollbackTrans()
    Tell "RollbackTrans"
  End Sub
  Public Sub Execute(sql, rowsAffected)
    Tell sql
  End Sub
End Class

Dim screens, screen, conn, controller, unit, rid, saved
unit = 3
Set conn = New Connection
Set conn.Store = CreateObject("Example.Store")

WScript.Echo "--- opening"
Set screens = CreateObject("Example.Screens")
Set screen = screens.CredentialScreen("frmTBL")
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
controller.pbRetrieveSchedules conn, unit
controller.pbRetrieveSettingsFromUnit conn, unit
WScript.Echo "no end by default: " & IsNull(screen.dtpEnd.Value)

WScript.Echo "--- two cards with a tenant each"
screen.cboCredentialType.ListIndex = 1
screen.txtPINStart.Text = "20"
screen.txtPINEND.Text = "21"
screen.txtFacilityCode.Text = "7"
screen.cboSchedules1.ListIndex = 1
screen.cboSchedules2.ListIndex = 3
screen.chkActive.Value = 1
screen.dtpStart.Value = DateSerial(2026, 3, 5) + TimeSerial(8, 0, 0)
screen.dtpEnd.Value = DateSerial(2027, 3, 5) + TimeSerial(23, 59, 59)
screen.gstrTag = "Range"
rid = 0
saved = controller.pbSave(conn, unit, True, False, rid)
WScript.Echo "saved: " & saved & ", last RID " & rid & ", new tenants " & screen.gstrNewTenantIDs

WScript.Echo "--- closing"
Set controller.gmobjCredentialScreen = Nothing
