' Merges the codes of a unit: what is stored, then one code inserted, one changed, one deleted.

' What a deletion asks of the database manager. A script's function takes a fixed number of
' arguments, and the update of a deletion comes without the last two.
Class DeletionManager
  Public Function pbGetRowIDStringConstant()
    pbGetRowIDStringConstant = "_RID_"
  End Function
  Public Function pbGetLastModifiedDateStringConstant()
    pbGetLastModifiedDateStringConstant = "_LMDATE_"
  End Function
  Public Function ExecuteQueryDelete(conn, sql, errorFlag, errorText)
    Say "ExecuteQueryDelete " & Show(sql)
    ExecuteQueryDelete = 1
  End Function
  Public Function ExecuteUpdate(conn, sql, table, errorFlag, errorText)
    Say "ExecuteUpdate " & Show(table) & " " & Show(sql)
    ExecuteUpdate = 1
  End Function
End Class

Class ConnectionScreen
  Public Property Get mFirmwareFromHandshake()
    mFirmwareFromHandshake = "FC01.006"
    Say "mFirmwareFromHandshake -> ""FC01.006"""
  End Property
End Class

Dim conn, controller, stored, details, row, place
Set conn = New Connection
Set controller = CreateObject("qorCred.clsDirCode")
Set controller.mfrmConnectionScreen = New ConnectionScreen

DatabaseManager.Answer "SELECT UNITKEY,RID,DIRECTORYCODE", Array(Array(3, 11, 101), Array(3, 12, 102))
DatabaseManager.Answer "SELECT UNITKEY,RID,OLDDIRECTORYCODE", Array(Array(3, 11, 100))
Set stored = Nothing
Say "fetched: " & Show(controller.pbFetchDirForMerge(conn, 3, stored))
For row = 0 To stored.LastRow()
  Say "row " & row & ": " & stored.RowText(row)
Next

' A code in the unit's notation.
Dim texts(23)
For place = 0 To 23
  texts(place) = ""
Next
texts(0) = "0101"
texts(1) = "5550101"
details = texts

Sub SayDetails()
  Dim line
  line = "details:"
  For place = 0 To 23
    line = line & " [" & details(place) & "]"
  Next
  Say line
End Sub

