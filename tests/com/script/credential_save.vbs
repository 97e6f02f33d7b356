' Issues the credentials 20 to 22, each with a tenant of its own.
Dim screen, conn, controller, saved, rid
Set screen = New CredentialScreen
EnterRange screen
' 500 codes are allowed.
DatabaseManager.Answer "SELECT TOTAL", Array(Array("NTAw"))
DatabaseManager.Answer "TenantGroup", Array(Array(77))

Set conn = New Connection
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
rid = 0
saved = controller.pbSave(conn, 3, True, False, rid)
Say "saved: " & Show(saved) & ", last RID " & rid & ", tenants " & screen.gstrNewTenantIDs

Set controller = Nothing
Set screen = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
