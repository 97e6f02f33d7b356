' Issues the credentials 20 to 22 with tenants; the connection fails at the second tenant.
Class FailingConnection
  Private mExecuted
  Private Sub Class_Initialize
    Alive = Alive + 1
    mExecuted = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub BeginTrans()
    Say "BeginTrans"
  End Sub
  Public Sub CommitTrans()
    Say "CommitTrans"
  End Sub
  Public Sub RollbackTrans()
    Say "RollbackTrans"
  End Sub
  Public Sub Execute(sql, affected)
    Say "Execute " & Show(sql)
    mExecuted = mExecuted + 1
    If mExecuted = 2 Then Err.Raise 1234, "Connection", "The store is full."
    affected = 1
  End Sub
End Class

Dim screen, conn, controller, saved, rid
Set screen = New CredentialScreen
screen.SetTag "Range"
screen.txtPINStart.Enter "20"
screen.txtPINEND.Enter "22"
screen.txtFacilityCode.Enter "7"
screen.optButton4.Enter False
screen.cboCredentialType.Enter "Standard 26-Bit Card", 1
screen.cboCredentialType.Choose 0
screen.chkActive.Enter 1
screen.dtpStart.Enter DateSerial(2024, 3, 5) + TimeSerial(14, 30, 0)
screen.dtpEnd.Enter DateSerial(2025, 3, 5) + TimeSerial(23, 59, 59)
screen.cboSchedules1.Enter "No Access", 0
screen.cboSchedules1.Enter "Full Access", 1
screen.cboSchedules1.Choose 1
screen.cboSchedules2.Enter "Night Shift", 9
screen.cboSchedules2.Choose 0
' 500 codes are allowed.
DatabaseManager.Answer "SELECT TOTAL", Array(Array("NTAw"))
DatabaseManager.Answer "TenantGroup", Array(Array(77))

Set conn = New FailingConnection
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
rid = 0
saved = controller.pbSave(conn, 3, True, False, rid)
Say "saved: " & Show(saved) & ", error " & Err.Number & ", last RID " & rid & ", tenants " & Show(screen.gstrNewTenantIDs)

Set controller = Nothing
Set screen = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
