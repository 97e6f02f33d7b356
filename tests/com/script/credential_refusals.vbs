' Refused entries, one save after the other, and what the operator is told of each.
Dim screen, conn, controller
Set screen = New CredentialScreen
screen.SetTag "Range"
screen.optButton4.Enter False
screen.cboCredentialType.Enter "Corvin 30-Bit Card", 0
screen.cboCredentialType.Choose 0
DatabaseManager.Answer "SELECT TOTAL", Array(Array("NTAw"))
Set conn = New Connection
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
Broker.AnswerBoxes "OK"

Sub Save(title)
  Say ""
  Say "== " & title & " =="
  Say "saved: " & Show(controller.pbSave(conn, 3))
End Sub

Save "no number"

screen.txtPINStart.Enter "20"
screen.txtPINEND.Enter "10"
Save "an end before the start"

screen.txtPINEND.Enter "22"
screen.txtFacilityCode.Enter "64"
Save "a facility code that is too large"

screen.txtFacilityCode.Enter "7"
TheApplication.Credentials = "460"
TheApplication.EntryCodes = "30"
TheApplication.DirectoryCodes = "8"
Save "two codes left for three credentials"

TheApplication.DirectoryCodes = "10"
Save "no codes left"

DatabaseManager.Answer "Top 1 UnitKey,PINNo", Array(Array(3, 21))
Save "a number that is taken"

Set controller = Nothing
Set screen = Nothing
Set conn = Nothing
Say ""
Say "objects left beside the components: " & Alive - 5
