' Enters directory code 0250 with Do Not Disturb and call forwarding to its own number: the question
' is answered No first, then Yes.
Dim screen, conn, controller, rid
Set screen = New DirCodeScreen
screen.txtdirectorycode.Enter "0250"
screen.txtPhoneNo.Enter "555-0199"
screen.txtExtn.Enter "12"
screen.pvnTimeDelay.Enter 5
screen.txtPhoneNocf.Enter " 555-0199"
screen.txtDisplayName.Enter " Karin Abel "
screen.cboSchedules.Enter "Night Shift", 9
screen.cboSchedules.Choose 0
screen.cboSchedulesCF.Enter "Early Shift", 5
screen.cboSchedulesCF.Choose 0
screen.chkDND.Enter 1
screen.chkCallForwarding.Enter 1
screen.chkShowDirCode.Enter 1
screen.chkActive.Enter 1
screen.dtpStart.Enter DateSerial(2024, 3, 5)
DatabaseManager.Answer "SELECT TOTAL", Array(Array("MjAwMA=="))
Set conn = New Connection
Set controller = CreateObject("qorCred.clsDirCode")
Set controller.mobjDirCodeScreen = screen
rid = 0

Broker.AnswerBoxes "No"
Say "saved: " & Show(controller.pbSave(conn, 3, False, rid)) & ", RID " & rid
Say ""
Broker.AnswerBoxes "Yes"
Say "saved: " & Show(controller.pbSave(conn, 3, False, rid)) & ", RID " & rid

Set controller = Nothing
Set screen = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
