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
EnterRange screen
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
