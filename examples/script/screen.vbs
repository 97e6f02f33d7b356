' The credential screen from opening to closing: it is filled, a credential is loaded and deleted, another
' one is entered, and the screen is closed.
Option Explicit

Class TextBox
  Public Text
  Public Enabled
  Public Visible
  Public BackColor
  Public Sub SetFocus()
  End Sub
End Class

Class Label
  Public Enabled
  Public Visible
  Public BackColor
End Class

Class OptionButton
  Public Value
  Public Visible
End Class

Class List
  Public Visible
  Public ListIndex
  Private mTexts
  Private mData
  Private mCount
  Private Sub Class_Initialize()
    Dim texts(99), data(99)
    mTexts = texts
    mData = data
    Clear
  End Sub
  Public Sub Clear()
    mCount = 0
    ListIndex = -1
  End Sub
  Public Sub AddItem(text)
    mTexts(mCount) = text
    mData(mCount) = 0
    mCount = mCount + 1
  End Sub
  Public Property Get NewIndex()
    NewIndex = mCount - 1
  End Property
  Public Property Get ListCount()
    ListCount = mCount
  End Property
  Public Property Get List(index)
    List = mTexts(index)
  End Property
  Public Property Get ItemData(index)
    ItemData = mData(index)
  End Property
  Public Property Let ItemData(index, number)
    mData(index) = number
  End Property
End Class

Class CredentialScreen
  Public Name
  Public gstrTag
  Public gstrLastModifiedDate
  Public glngrid
  Public gblnModifiedFromClass
  Public gblnDisplayFacilityCode
  Public cboCredentials
  Public cboCredentialType
  Public cboAssignedTo
  Public cboActivate
  Public cboSchedules1
  Public cboSchedules2
  Public cboSchedules3
  Public cboSchedules4
  Public txtPINStart
  Public txtPINEND
  Public txtFacilityCode
  Public txtIDCode
  Public txtSequenceCode
  Public optButton4
  Public optButtonDefault
  Public lblFacilityCode
  Public lblIDCode
  Public lblSequencecode
  Public lblActivate
  Private Sub Class_Initialize()
    Name = "frmCredential"
    Set cboCredentials = New List
    Set cboCredentialType = New List
    Set cboAssignedTo = New List
    Set cboActivate = New List
    Set cboSchedules1 = New List
    Set cboSchedules2 = New List
    Set cboSchedules3 = New List
    Set cboSchedules4 = New List
    Set txtPINStart = New TextBox
    Set txtPINEND = New TextBox
    Set txtFacilityCode = New TextBox
    Set txtIDCode = New TextBox
    Set txtSequenceCode = New TextBox
    Set optButton4 = New OptionButton
    Set optButtonDefault = New OptionButton
    Set lblFacilityCode = New Label
    Set lblIDCode = New Label
    Set lblSequencecode = New Label
    Set lblActivate = New Label
  End Sub
End Class

Class Connection
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
End Class

Sub Show(title, list)
  Dim index, shown
  shown = title & ":"
  For index = 0 To list.ListCount - 1
    shown = shown & " [" & list.List(index) & "]"
  Next
  WScript.Echo shown
End Sub

Dim screen, conn, controller, unit, chosen, rid
unit = 3
Set conn = New Connection

WScript.Echo "--- opening"
Set screen = New CredentialScreen
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
screen.cboActivate.AddItem "<None>"
screen.cboActivate.AddItem "Main Entrance"
controller.pbRetrieveSchedules conn, unit
controller.pbRetrieveTenants conn, unit
controller.pbRetrieveSettingsFromUnit conn, unit
screen.gblnDisplayFacilityCode = True
controller.pbRetrieveCredentials conn, unit
Show "schedules", screen.cboSchedules1
Show "tenants", screen.cboAssignedTo
Show "types", screen.cboCredentialType
Show "credentials", screen.cboCredentials

WScript.Echo "--- the second credential is loaded"
screen.cboCredentials.ListIndex = 2
chosen = screen.cboCredentials.ItemData(2)
controller.pbRetrieveCredentials conn, unit, chosen
WScript.Echo "facility code " & screen.txtFacilityCode.Text & ", row " & screen.glngrid

WScript.Echo "--- and deleted"
If controller.pbDelete(conn, unit, chosen) Then controller.pbRetrieveCredentials conn, unit
Show "credentials", screen.cboCredentials

WScript.Echo "--- a new one is entered"
screen.cboCredentialType.ListIndex = 0
screen.txtPINStart.Text = "20"
screen.txtPINEND.Text = ""
screen.txtFacilityCode.Text = "7"
screen.txtIDCode.Text = ""
screen.txtSequenceCode.Text = ""
screen.optButton4.Value = False
screen.gstrTag = "Single"
rid = 0
If controller.pbSave(conn, unit, False, False, rid) Then controller.pbRetrieveCredentials conn, unit, -1, rid
Show "credentials", screen.cboCredentials
WScript.Echo "selected: " & screen.cboCredentials.ListIndex

WScript.Echo "--- closing"
Set controller.gmobjCredentialScreen = Nothing
Set controller = Nothing
