' Edits on the whole credential screen: a credential is selected, gets a door and a tenant, moves to another
' tenant, gets a new number, and is deleted. Screen, store and components stand beside this file.
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

' What a click in the list of credentials runs; the controller's own selection runs it as well.
Class LoadsTheRow
  Public Sub Chosen()
    If screen.gblnModifiedFromClass Or screen.cboCredentials.ListIndex < 1 Then Exit Sub
    controller.pbRetrieveCredentials conn, unit, Selected
  End Sub
End Class

Dim screens, screen, conn, controller, unit
unit = 3
Set conn = New Connection
Set conn.Store = CreateObject("Example.Store")

Function Selected()
  Selected = screen.cboCredentials.ItemData(screen.cboCredentials.ListIndex)
End Function

Sub Show(title, list)
  Dim index, shown
  shown = title & ":"
  For index = 0 To list.ListCount - 1
    shown = shown & " [" & list.List(index) & "]"
  Next
  WScript.Echo shown
End Sub

' Stores door and tenant of the selected credential, and loads it again: its last change is newer now.
Sub StoreEdit()
  WScript.Echo "stored: " & controller.pbSave(conn, unit, False, True)
  controller.pbRetrieveCredentials conn, unit, Selected
  WScript.Echo "door " & screen.cboActivate.Text & ", tenant " & screen.cboAssignedTo.Text & _
               ", changed " & screen.gstrLastModifiedDate
End Sub

WScript.Echo "--- opening"
Set screens = CreateObject("Example.Screens")
Set screen = screens.CredentialScreen("frmCredential")
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
screen.cboActivate.AddItem "<None>"
screen.cboActivate.AddItem "Front"
controller.pbRetrieveSchedules conn, unit
controller.pbRetrieveTenants conn, unit
controller.pbRetrieveSettingsFromUnit conn, unit
controller.pbRetrieveDoorDetails conn, unit
controller.pbRetrieveCredentials conn, unit
Show "tenants", screen.cboAssignedTo
Show "credentials", screen.cboCredentials
screen.cboCredentials.Watch New LoadsTheRow

WScript.Echo "--- the second credential is selected"
screen.cboCredentials.ListIndex = 2
WScript.Echo "row " & screen.glngrid & ", changed " & screen.gstrLastModifiedDate

WScript.Echo "--- it gets a door and a tenant"
screen.cboActivate.ListIndex = 1
screen.cboAssignedTo.ListIndex = 1
StoreEdit

WScript.Echo "--- it moves to another tenant"
screen.cboAssignedTo.ListIndex = 2
StoreEdit

WScript.Echo "--- it gets the number 45"
WScript.Echo "stored: " & controller.pbUpdatePinNo(conn, 45, unit)
Show "credentials", screen.cboCredentials

WScript.Echo "--- somebody else was faster"
screen.gstrLastModifiedDate = "1/31/2026 9:30:00 AM"
WScript.Echo "stored: " & controller.pbUpdatePinNo(conn, 46, unit)

WScript.Echo "--- nobody holds it any more, and it is deleted"
screen.cboAssignedTo.ListIndex = 0
StoreEdit
If controller.pbDelete(conn, unit, Selected) Then controller.pbRetrieveCredentials conn, unit
Show "credentials", screen.cboCredentials

WScript.Echo "--- closing"
screen.cboCredentials.Watch Nothing
Set controller.gmobjCredentialScreen = Nothing
