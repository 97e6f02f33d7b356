' The screens of the host. Their controls are fetched without a line.

' The credential screen.
Class CredentialScreen
  Public txtPINStart
  Public txtPINEND
  Public txtFacilityCode
  Public txtIDCode
  Public txtSequenceCode
  Public optButton4
  Public cboCredentialType
  Public cboCredentials
  Public chkActive
  Public dtpStart
  Public dtpEnd
  Public cboSchedules1
  Public cboSchedules2
  Public cboSchedules3
  Public cboSchedules4
  Private mTag
  Private mNewTenantIds
  Private Sub Class_Initialize
    Alive = Alive + 1
    Set txtPINStart = Named(New TextBox, "txtPINStart")
    Set txtPINEND = Named(New TextBox, "txtPINEND")
    Set txtFacilityCode = Named(New TextBox, "txtFacilityCode")
    Set txtIDCode = Named(New TextBox, "txtIDCode")
    Set txtSequenceCode = Named(New TextBox, "txtSequenceCode")
    Set optButton4 = Named(New CheckBox, "optButton4")
    Set cboCredentialType = Named(New ListBox, "cboCredentialType")
    Set cboCredentials = Named(New ListBox, "cboCredentials")
    Set chkActive = Named(New CheckBox, "chkActive")
    Set dtpStart = Named(New Picker, "dtpStart")
    Set dtpEnd = Named(New Picker, "dtpEnd")
    Set cboSchedules1 = Named(New ListBox, "cboSchedules1")
    Set cboSchedules2 = Named(New ListBox, "cboSchedules2")
    Set cboSchedules3 = Named(New ListBox, "cboSchedules3")
    Set cboSchedules4 = Named(New ListBox, "cboSchedules4")
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Property Get gstrTag()
    gstrTag = mTag
    Say "gstrTag -> " & Show(mTag)
  End Property
  Public Property Let gstrTag(value)
    Say "gstrTag = " & Show(value)
    mTag = value
  End Property
  Public Sub SetTag(value)
    mTag = value
  End Sub
  Public Property Get gstrNewTenantIDs()
    gstrNewTenantIDs = mNewTenantIds
  End Property
  Public Property Let gstrNewTenantIDs(value)
    Say "gstrNewTenantIDs = " & Show(value)
    mNewTenantIds = value
  End Property
End Class

' The directory-code screen.
Class DirCodeScreen
  Public txtdirectorycode
  Public txtPhoneNo
  Public txtExtn
  Public txtPhoneNocf
  Public txtExtnCF
  Public txtDisplayName
  Public pvnTimeDelay
  Public pvnTimeDelayCF
  Public cboSchedules
  Public cboSchedulesCF
  Public cbodirectorycode
  Public chkDND
  Public chkCallForwarding
  Public chkActive
  Public chkShowDisplayName
  Public chkShowDirCode
  Public dtpStart
  Public dtpEnd
  Private Sub Class_Initialize
    Alive = Alive + 1
    Set txtdirectorycode = Named(New TextBox, "txtdirectorycode")
    Set txtPhoneNo = Named(New TextBox, "txtPhoneNo")
    Set txtExtn = Named(New TextBox, "txtExtn")
    Set txtPhoneNocf = Named(New TextBox, "txtPhoneNocf")
    Set txtExtnCF = Named(New TextBox, "txtExtnCF")
    Set txtDisplayName = Named(New TextBox, "txtDisplayName")
    Set pvnTimeDelay = Named(New Spinner, "pvnTimeDelay")
    Set pvnTimeDelayCF = Named(New Spinner, "pvnTimeDelayCF")
    Set cboSchedules = Named(New ListBox, "cboSchedules")
    Set cboSchedulesCF = Named(New ListBox, "cboSchedulesCF")
    Set cbodirectorycode = Named(New ListBox, "cbodirectorycode")
    Set chkDND = Named(New CheckBox, "chkDND")
    Set chkCallForwarding = Named(New CheckBox, "chkCallForwarding")
    Set chkActive = Named(New CheckBox, "chkActive")
    Set chkShowDisplayName = Named(New CheckBox, "chkShowDisplayName")
    Set chkShowDirCode = Named(New CheckBox, "chkShowDirCode")
    Set dtpStart = Named(New Picker, "dtpStart")
    Set dtpEnd = Named(New Picker, "dtpEnd")
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Property Get gstrTag()
    gstrTag = "ADD"
    Say "gstrTag -> ""ADD"""
  End Property
End Class

' The filter screen of both reports, with five rows.
Class FilterScreen
  Public cboField
  Public cboFilter
  Public cboType
  Public chkBoolean
  Public dtpDateFrom
  Public dtpDateTo
  Public txtFrom
  Public txtTo
  Private Sub Class_Initialize
    Dim row
    Alive = Alive + 1
    Set cboField = Named(New ControlArray, "cboField")
    Set cboFilter = Named(New ControlArray, "cboFilter")
    Set cboType = Named(New ControlArray, "cboType")
    Set chkBoolean = Named(New ControlArray, "chkBoolean")
    Set dtpDateFrom = Named(New ControlArray, "dtpDateFrom")
    Set dtpDateTo = Named(New ControlArray, "dtpDateTo")
    Set txtFrom = Named(New ControlArray, "txtFrom")
    Set txtTo = Named(New ControlArray, "txtTo")
    For row = 0 To 4
      cboField.Append New ListBox
      cboFilter.Append New ListBox
      cboType.Append New ListBox
      chkBoolean.Append New CheckBox
      dtpDateFrom.Append New Picker
      dtpDateTo.Append New Picker
      txtFrom.Append New TextBox
      txtTo.Append New TextBox
    Next
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  ' Fills one row: the field at its place with its identifier, the operator at its place with its
  ' word, the values.
  Public Sub Enter(row, fieldPlace, identifier, operation, word, first, second)
    Dim place
    For place = 0 To fieldPlace
      cboField(row).Enter "field " & place, identifier
    Next
    cboField(row).Choose fieldPlace
    For place = 0 To operation
      cboFilter(row).Enter word, 0
    Next
    cboFilter(row).Choose operation
    txtFrom(row).Enter first
    txtTo(row).Enter second
    dtpDateFrom(row).Enter DateSerial(2024, 3, 5) + TimeSerial(14, 30, 0)
    dtpDateTo(row).Enter DateSerial(2024, 4, 6) + TimeSerial(8, 15, 0)
  End Sub
End Class

' Enters the credentials 20 to 22, valid for a year, each for a tenant of its own.
Sub EnterRange(screen)
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
End Sub
