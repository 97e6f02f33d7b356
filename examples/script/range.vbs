' A host in a script: a screen, a connection, and the components that stand beside this file. The
' credentials 20 to 22 are saved, and everything that the controller asks for is printed.
Option Explicit

Class TextBox
  Public Text
  Public Enabled
  Public Visible
  Public Sub SetFocus()
  End Sub
End Class

Class OptionButton
  Public Value
  Public Visible
End Class

Class List
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
  Public cboCredentialType
  Public txtPINStart
  Public txtPINEND
  Public txtFacilityCode
  Public txtIDCode
  Public txtSequenceCode
  Public optButton4
  Private Sub Class_Initialize()
    Name = "frmCredential"
    Set cboCredentialType = New List
    Set txtPINStart = New TextBox
    Set txtPINEND = New TextBox
    Set txtFacilityCode = New TextBox
    Set txtIDCode = New TextBox
    Set txtSequenceCode = New TextBox
    Set optButton4 = New OptionButton
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

Dim screen, conn, controller, saved, rid
Set screen = New CredentialScreen
screen.cboCredentialType.AddItem "Corvin 30-Bit Card"
screen.cboCredentialType.ListIndex = 0
screen.gstrTag = "Range"
screen.txtPINStart.Text = "20"
screen.txtPINEND.Text = "22"
screen.txtFacilityCode.Text = "7"
screen.txtIDCode.Text = ""
screen.txtSequenceCode.Text = ""
screen.optButton4.Value = False

Set conn = New Connection
Set controller = CreateObject("qorCred.clsCredential")
Set controller.gmobjCredentialScreen = screen
rid = 0
saved = controller.pbSave(conn, 3, False, False, rid)
WScript.Echo "saved: " & saved & ", last RID " & rid
Set controller.gmobjCredentialScreen = Nothing
WScript.Echo "screen let go of: " & (controller.gmobjCredentialScreen Is Nothing)
