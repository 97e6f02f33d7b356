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
texts(4) = "0103"
texts(5) = "5550103"
texts(9) = "Apartment 103"
texts(10) = "1"
texts(11) = "1"
texts(12) = "240305"
texts(13) = "1430"
texts(14) = "0"
texts(15) = "250305"
texts(16) = "2359"
texts(17) = "9"
texts(18) = "1"
texts(19) = "2"
texts(20) = "0"
texts(21) = "0"
texts(22) = "2"
texts(23) = "1"
details = texts

Sub SayDetails()
  Dim line
  line = "details:"
  For place = 0 To 23
    line = line & " [" & details(place) & "]"
  Next
  Say line
End Sub

Say ""
Say "inserted: " & Show(controller.pbMergeSave(conn, 3, "Insert", details))
SayDetails

Say ""
details = texts
details(4) = "0102"
details(23) = "3"
Say "updated: " & Show(controller.pbMergeSave(conn, 3, "Update", details, 12))
SayDetails

Say ""
Broker.Provide "qorDBI.clsDBManager", New DeletionManager
Set controller = CreateObject("qorCred.clsDirCode")
details = texts
Say "deleted: " & Show(controller.pbMergeSave(conn, 3, "Delete", details, 11))
SayDetails

Set controller = Nothing
Set stored = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
