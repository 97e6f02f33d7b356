' A host in a script: screens, data services and components as script classes that write every call
' of the component as a line. A scenario is run with this file
' and screens.vbs in front of it, because not every engine can include files.
Option Explicit

' How many objects of the host's classes exist.
Dim Alive
Alive = 0

Sub Say(line)
  WScript.Echo line
End Sub

' A value as the transcript shows it.
Function Show(ByVal value)
  If IsObject(value) Then
    If value Is Nothing Then
      Show = "Nothing"
    Else
      Show = "(object)"
    End If
    Exit Function
  End If
  Select Case VarType(value)
    Case 0 Show = "Empty"
    Case 1 Show = "Null"
    Case 7 Show = "#" & ShowDate(value) & "#"
    Case 8 Show = """" & value & """"
    Case 10 Show = "(omitted)"
    Case 11
      If value Then
        Show = "True"
      Else
        Show = "False"
      End If
    Case Else Show = CStr(value)
  End Select
End Function

Function TwoDigits(number)
  TwoDigits = Right("0" & number, 2)
End Function

Function ShowDate(value)
  ShowDate = Year(value) & "-" & TwoDigits(Month(value)) & "-" & TwoDigits(Day(value)) & " " & _
             TwoDigits(Hour(value)) & ":" & TwoDigits(Minute(value)) & ":" & TwoDigits(Second(value))
End Function

Sub SayPut(name, member, ByVal value)
  Say name & "." & member & " = " & Show(value)
End Sub

Sub SayGet(name, member, ByVal value)
  Say name & "." & member & " -> " & Show(value)
End Sub

' ---- Controls ----

Class TextBox
  Public Name
  Private mText
  Private mMaxLength
  Private Sub Class_Initialize
    Alive = Alive + 1
    mText = ""
    mMaxLength = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Enter(value)
    mText = value
  End Sub
  Public Property Get Text()
    Text = mText
    SayGet Name, "Text", mText
  End Property
  Public Property Let Text(value)
    SayPut Name, "Text", value
    mText = value
  End Property
  Public Property Get MaxLength()
    MaxLength = mMaxLength
    SayGet Name, "MaxLength", mMaxLength
  End Property
  Public Property Let MaxLength(value)
    SayPut Name, "MaxLength", value
    mMaxLength = value
  End Property
  Public Property Let Enabled(value)
    SayPut Name, "Enabled", value
  End Property
  Public Property Let BackColor(value)
    SayPut Name, "BackColor", value
  End Property
  Public Property Let Visible(value)
    SayPut Name, "Visible", value
  End Property
  Public Sub SetFocus()
    Say Name & ".SetFocus"
  End Sub
End Class

Class ListBox
  Public Name
  Private mTexts
  Private mData
  Private mCount
  Private mNewIndex
  Private mListIndex
  Private Sub Class_Initialize
    Alive = Alive + 1
    Dim texts(50)
    Dim data(50)
    mTexts = texts
    mData = data
    mCount = 0
    mNewIndex = -1
    mListIndex = -1
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Enter(text, data)
    mTexts(mCount) = text
    mData(mCount) = data
    mCount = mCount + 1
  End Sub
  Public Sub Choose(index)
    mListIndex = index
  End Sub
  Public Sub Clear()
    Say Name & ".Clear"
    mCount = 0
    mListIndex = -1
  End Sub
  Public Sub AddItem(text)
    Say Name & ".AddItem " & Show(text)
    mNewIndex = mCount
    Enter text, 0
  End Sub
  Public Property Get NewIndex()
    NewIndex = mNewIndex
    SayGet Name, "NewIndex", mNewIndex
  End Property
  Public Property Get ListCount()
    ListCount = mCount
    SayGet Name, "ListCount", mCount
  End Property
  Public Property Get ListIndex()
    ListIndex = mListIndex
    SayGet Name, "ListIndex", mListIndex
  End Property
  Public Property Let ListIndex(value)
    SayPut Name, "ListIndex", value
    mListIndex = value
  End Property
  Public Property Get ItemData(index)
    ItemData = mData(index)
    SayGet Name, "ItemData(" & index & ")", mData(index)
  End Property
  Public Property Let ItemData(index, value)
    SayPut Name, "ItemData(" & index & ")", value
    mData(index) = value
  End Property
  Public Property Get List(index)
    List = mTexts(index)
    SayGet Name, "List(" & index & ")", mTexts(index)
  End Property
  Public Property Get Text()
    Dim shown
    shown = ""
    If mListIndex >= 0 Then shown = mTexts(mListIndex)
    Text = shown
    SayGet Name, "Text", shown
  End Property
  Public Sub SetFocus()
    Say Name & ".SetFocus"
  End Sub
End Class

' A check box, an option button.
Class CheckBox
  Public Name
  Private mValue
  Private Sub Class_Initialize
    Alive = Alive + 1
    mValue = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Enter(value)
    mValue = value
  End Sub
  Public Property Get Value()
    Value = mValue
    SayGet Name, "Value", mValue
  End Property
  Public Property Let Value(newValue)
    SayPut Name, "Value", newValue
    mValue = newValue
  End Property
End Class

' A number with arrows; its number is its default member.
Class Spinner
  Public Name
  Private mValue
  Private Sub Class_Initialize
    Alive = Alive + 1
    mValue = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Enter(value)
    mValue = value
  End Sub
  Public Default Property Get Value()
    Value = mValue
    Say Name & " -> " & Show(mValue)
  End Property
End Class

' A date picker; Null is no date.
Class Picker
  Public Name
  Private mValue
  Private Sub Class_Initialize
    Alive = Alive + 1
    mValue = Null
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Enter(value)
    mValue = value
  End Sub
  Public Property Get Value()
    Value = mValue
    SayGet Name, "Value", mValue
  End Property
  Public Property Let Value(newValue)
    SayPut Name, "Value", newValue
    mValue = newValue
  End Property
  Public Property Let Hour(part)
    SayPut Name, "Hour", part
    mValue = CDate(Int(mValue)) + TimeSerial(part, MinuteOf(mValue), SecondOf(mValue))
  End Property
  Public Property Let Minute(part)
    SayPut Name, "Minute", part
    mValue = CDate(Int(mValue)) + TimeSerial(HourOf(mValue), part, SecondOf(mValue))
  End Property
  Public Property Let Second(part)
    SayPut Name, "Second", part
    mValue = CDate(Int(mValue)) + TimeSerial(HourOf(mValue), MinuteOf(mValue), part)
  End Property
  Public Sub SetFocus()
    Say Name & ".SetFocus"
  End Sub
End Class

' Inside of a picker these names are its own members.
Function HourOf(value)
  HourOf = Hour(value)
End Function
Function MinuteOf(value)
  MinuteOf = Minute(value)
End Function
Function SecondOf(value)
  SecondOf = Second(value)
End Function

' Controls under one name, told apart by an index from 0.
Class ControlArray
  Public Name
  Private mItems
  Private mCount
  Private Sub Class_Initialize
    Alive = Alive + 1
    Dim items(10)
    mItems = items
    mCount = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Append(control)
    control.Name = Name & "(" & mCount & ")"
    Set mItems(mCount) = control
    mCount = mCount + 1
  End Sub
  Public Default Property Get Item(index)
    Set Item = mItems(index)
  End Property
  Public Property Get Count()
    Count = mCount
    SayGet Name, "Count", mCount
  End Property
End Class

' ---- Result table ----

' Rows and columns from 0; one without rows is a single cell with "".
Class ResultTable
  Public Name
  Private mCells
  Private mLastRow
  Private mLastColumn
  Private Sub Class_Initialize
    Alive = Alive + 1
    Dim cells(40, 20)
    mCells = cells
    mCells(0, 0) = ""
    mLastRow = 0
    mLastColumn = 0
    Name = "table"
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  ' Fills the table from rows, each an array of cells.
  Public Sub Fill(rows)
    Dim row, column
    mLastRow = UBound(rows)
    mLastColumn = UBound(rows(0))
    For row = 0 To mLastRow
      For column = 0 To mLastColumn
        mCells(row, column) = CellOf(rows, row, column)
      Next
    Next
  End Sub
  Private Function CellOf(rows, row, column)
    Dim cells
    cells = rows(row)
    CellOf = cells(column)
  End Function
  Public Function RowText(row)
    Dim column
    RowText = ""
    For column = 0 To mLastColumn
      If column > 0 Then RowText = RowText & " | "
      RowText = RowText & Show(mCells(row, column))
    Next
  End Function
  Public Function LastRow()
    LastRow = mLastRow
  End Function
  Public Default Property Get Value(row, column)
    Value = mCells(row, column)
    SayGet Name, "Value(" & row & ", " & column & ")", mCells(row, column)
  End Property
  Public Property Let Value(row, column, newValue)
    SayPut Name, "Value(" & row & ", " & column & ")", newValue
    mCells(row, column) = newValue
  End Property
  Public Function LowerBound(dimension)
    LowerBound = 0
    SayGet Name, "LowerBound(" & dimension & ")", 0
  End Function
  Public Function UpperBound(dimension)
    Dim bound
    bound = mLastRow
    If dimension = 2 Then bound = mLastColumn
    UpperBound = bound
    SayGet Name, "UpperBound(" & dimension & ")", bound
  End Function
  Public Sub ChangeBounds(lowRow, highRow, lowColumn, highColumn)
    Say Name & ".ReDim " & lowRow & ", " & highRow & ", " & lowColumn & ", " & highColumn
    mLastRow = highRow
    mLastColumn = highColumn
  End Sub
  Public Sub InsertRows(row)
    Dim from, column
    Say Name & ".InsertRows " & row
    mLastRow = mLastRow + 1
    For from = mLastRow To row + 1 Step -1
      For column = 0 To mLastColumn
        mCells(from, column) = mCells(from - 1, column)
      Next
    Next
  End Sub
  Public Sub DeleteRows(row)
    Dim into, column
    Say Name & ".DeleteRows " & row
    For into = row To mLastRow - 1
      For column = 0 To mLastColumn
        mCells(into, column) = mCells(into + 1, column)
      Next
    Next
    mLastRow = mLastRow - 1
  End Sub
End Class

' The language keeps the name ReDim to itself: other engines spell it [ReDim] in a class.
Function NewTable()
  Set NewTable = Broker.Rename(New ResultTable, "ReDim", "ChangeBounds")
End Function

Function TableOf(rows)
  Dim table
  Set table = NewTable
  table.Fill rows
  Set TableOf = table
End Function

' ---- Data services ----

Class Connection
  Private Sub Class_Initialize
    Alive = Alive + 1
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
    affected = 1
  End Sub
End Class

' Answers each statement from a table of parts of statements, the last one that fits; what has no
' answer finds no rows.
Class Manager
  Public NextRid
  Private mParts
  Private mAnswers
  Private mCount
  Private Sub Class_Initialize
    Alive = Alive + 1
    Dim parts(20)
    Dim answers(20)
    mParts = parts
    mAnswers = answers
    mCount = 0
    NextRid = 501
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  ' `rows` is an array of rows, or the text of an error.
  Public Sub Answer(part, rows)
    mParts(mCount) = part
    mAnswers(mCount) = rows
    mCount = mCount + 1
  End Sub
  Private Function PlaceOf(sql)
    Dim place
    PlaceOf = -1
    For place = 0 To mCount - 1
      If InStr(1, sql, mParts(place), 1) > 0 Then PlaceOf = place
    Next
  End Function
  Public Function pbGetRowIDStringConstant()
    Say "pbGetRowIDStringConstant"
    pbGetRowIDStringConstant = "_RID_"
  End Function
  Public Function pbGetLastModifiedDateStringConstant()
    Say "pbGetLastModifiedDateStringConstant"
    pbGetLastModifiedDateStringConstant = "_LMDATE_"
  End Function
  Public Function ExecuteSelect(conn, sql, errorFlag, errorText)
    Dim place, table
    Say "ExecuteSelect " & Show(sql)
    errorFlag = False
    errorText = ""
    Set table = NewTable
    place = PlaceOf(sql)
    If place >= 0 Then
      If VarType(mAnswers(place)) = 8 Then
        errorFlag = True
        errorText = mAnswers(place)
      Else
        table.Fill mAnswers(place)
      End If
    End If
    Set ExecuteSelect = table
  End Function
  Public Function ExecuteScalar(conn, sql, errorFlag, errorText)
    Say "ExecuteScalar " & Show(sql)
    errorFlag = False
    errorText = ""
    ExecuteScalar = 0
  End Function
  Public Function ExecuteInsert(conn, sql, lastModified, table, errorFlag, errorText)
    Say "ExecuteInsert " & Show(table) & " " & Show(sql) & " -> " & NextRid
    errorFlag = False
    errorText = ""
    ExecuteInsert = NextRid
    NextRid = NextRid + 1
  End Function
  Public Function ExecuteUpdate(conn, sql, table, errorFlag, errorText, lastModified, rid)
    Say "ExecuteUpdate " & Show(table) & " " & Show(sql) & " " & Show(lastModified) & " " & Show(rid)
    errorFlag = False
    errorText = ""
    ExecuteUpdate = 1
  End Function
  Public Function ExecuteQueryDelete(conn, sql, errorFlag, errorText)
    Say "ExecuteQueryDelete " & Show(sql)
    errorFlag = False
    errorText = ""
    ExecuteQueryDelete = 1
  End Function
End Class

' ---- Components ----

Class StepSender
  Private Sub Class_Initialize
    Alive = Alive + 1
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub pbGenDirCodePrgStep(conn, unitKey, rid)
    Say "pbGenDirCodePrgStep " & unitKey & ", " & rid
  End Sub
  Public Function pbDeleteDirCodePrgStepExists(conn, unitKey, code)
    Say "pbDeleteDirCodePrgStepExists " & unitKey & ", " & Show(code)
    pbDeleteDirCodePrgStepExists = False
  End Function
End Class

Class Tenants
  Private mLink
  Private Sub Class_Initialize
    Alive = Alive + 1
    mLink = 30
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Function pbGetMaxGroupIDOrLinkID(unitKey, conn, forLink)
    Say "pbGetMaxGroupIDOrLinkID " & unitKey & ", " & Show(forLink) & " -> " & mLink
    pbGetMaxGroupIDOrLinkID = mLink
  End Function
  Public Sub pbIncrementMaxGroupIDOrLinkIDByOne(unitKey, conn, forLink, by)
    Say "pbIncrementMaxGroupIDOrLinkIDByOne " & unitKey & ", " & Show(forLink) & ", " & by
    mLink = mLink + by
  End Sub
  Public Function pbGetTenantID(conn, unitKey, rid)
    Say "pbGetTenantID " & unitKey & ", " & rid & " -> " & rid + 1000
    pbGetTenantID = rid + 1000
  End Function
  Public Sub pvCreateProgramSteps(conn, unitKey, tenant)
    Say "pvCreateProgramSteps " & unitKey & ", " & tenant
  End Sub
End Class

' The counts of codes in use come back in the sixth, seventh and eighth argument, as texts.
Class Application
  Public Credentials
  Public EntryCodes
  Public DirectoryCodes
  Private Sub Class_Initialize
    Alive = Alive + 1
    Credentials = "120"
    EntryCodes = "30"
    DirectoryCodes = "6"
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub pbGetUnitStatus(conn, unitKey, status, text1, text2, inUse, entries, codes, text6)
    Say "pbGetUnitStatus " & unitKey & " -> " & Credentials & ", " & EntryCodes & ", " & _
        DirectoryCodes
    status = 1
    inUse = Credentials
    entries = EntryCodes
    codes = DirectoryCodes
  End Sub
End Class

Class ConnectionManager
  Private Sub Class_Initialize
    Alive = Alive + 1
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub pbPing()
    Say "pbPing"
  End Sub
End Class

' ---- Grid ----

Class ValueItem
  Private mValue
  Private mDisplayValue
  Private Sub Class_Initialize
    Alive = Alive + 1
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Property Get Value()
    Value = mValue
  End Property
  Public Property Let Value(newValue)
    mValue = newValue
  End Property
  Public Property Get DisplayValue()
    DisplayValue = mDisplayValue
  End Property
  Public Property Let DisplayValue(newValue)
    mDisplayValue = newValue
  End Property
End Class

Class ValueItems
  Public Name
  Private Sub Class_Initialize
    Alive = Alive + 1
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Add(item)
    Say Name & ".Add " & Show(item.Value) & " shown as " & Show(item.DisplayValue)
  End Sub
  Public Property Let Presentation(value)
    SayPut Name, "Presentation", value
  End Property
  Public Property Let Translate(value)
    SayPut Name, "Translate", value
  End Property
End Class

Class GridColumn
  Public ValueItems
  Private mName
  Private mCaption
  Private Sub Class_Initialize
    Alive = Alive + 1
    Set ValueItems = MakeValueItems()
    mCaption = ""
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Property Let Name(value)
    mName = value
    ValueItems.Name = value & ".ValueItems"
  End Property
  Public Property Get Caption()
    Caption = mCaption
    SayGet mName, "Caption", mCaption
  End Property
  Public Property Let Caption(value)
    SayPut mName, "Caption", value
    mCaption = value
  End Property
  Public Property Let Width(value)
    SayPut mName, "Width", value
  End Property
  Public Property Let Visible(value)
    SayPut mName, "Visible", value
  End Property
End Class

' Inside of a column the name of the class is its own member.
Function MakeValueItems()
  Set MakeValueItems = New ValueItems
End Function

Class GridColumns
  Private mItems
  Private mCount
  Private Sub Class_Initialize
    Alive = Alive + 1
    Dim items(20)
    mItems = items
    mCount = 0
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Sub Append(column)
    column.Name = "column " & mCount
    Set mItems(mCount) = column
    mCount = mCount + 1
  End Sub
  Public Default Property Get Item(index)
    Set Item = mItems(index)
  End Property
  Public Property Get Count()
    Count = mCount
    SayGet "columns", "Count", mCount
  End Property
  Public Sub Remove(index)
    Say "columns.Remove " & index
    Set mItems(index) = Nothing
    mCount = mCount - 1
  End Sub
End Class

Class Grid
  Public Columns
  Public Rows
  Private Sub Class_Initialize
    Alive = Alive + 1
    Set Columns = New GridColumns
    Set Rows = Nothing
  End Sub
  Private Sub Class_Terminate
    Alive = Alive - 1
  End Sub
  Public Property Set Array(table)
    Say "grid.Array = " & Show(table)
    Set Rows = table
  End Property
  Public Function NewValueItem()
    Say "grid.NewValueItem"
    Set NewValueItem = New ValueItem
  End Function
  Public Sub ReBind()
    Say "grid.ReBind"
  End Sub
  Public Sub Refresh()
    Say "grid.Refresh"
  End Sub
End Class

' ---- The surroundings ----

' Is told by the broker what happens outside of the host's objects.
Class Surroundings
  Public Sub Created(progId)
    Say "CreateObject " & progId
  End Sub
  Public Sub Box(title, text, icon, buttons, answer)
    Say "MsgBox " & Show(title) & " " & Show(text) & " (" & icon & "; " & buttons & ") -> " & answer
  End Sub
End Class

Function Named(control, name)
  control.Name = name
  Set Named = control
End Function

Dim Broker, DatabaseManager, TheApplication
Set Broker = CreateObject("qorTest.Broker")
Set Broker.Listener = New Surroundings
Set DatabaseManager = New Manager
Set TheApplication = New Application
Broker.Provide "qorDBI.clsDBManager", DatabaseManager
Broker.Provide "qorSPS.clsSendProgSteps", New StepSender
Broker.Provide "qorTent.clsTenant", New Tenants
Broker.Provide "qorAppln.clsApplication", TheApplication
Broker.Provide "qorCommn.clsConnectionManager", New ConnectionManager
