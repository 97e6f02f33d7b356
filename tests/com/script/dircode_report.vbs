' Composes the report of directory codes from five filter rows and shows its rows in the grid.
Dim screen, conn, controller, sql, grid, layout, row
Set screen = New FilterScreen
screen.Enter 0, "Directory Code", 51, 3, " 100 ", ""
screen.Enter 1, "Phone No.", 52, 2, "555", ""
screen.Enter 2, "Directory Start Date", 57, 6, "", ""
screen.Enter 3, "Call Forwarding", 61, 0, "1.50", ""
screen.Enter 4, "Display Name", 55, 0, "Karin Abel", ""
DatabaseManager.Answer "AND RID = 51", Array(Array("DirectoryCode.DirectoryCode"))
DatabaseManager.Answer "AND RID = 52", Array(Array("DirectoryCode.PhoneNumber"))
DatabaseManager.Answer "AND RID = 57", Array(Array("DirectoryCode.StartDate"))
DatabaseManager.Answer "AND RID = 61", Array(Array("DirectoryCode.DNDScheduleID"))
DatabaseManager.Answer "AND RID = 55", Array(Array("DirectoryCode.DisplayName"))
DatabaseManager.Answer "MaxDigitsDirectoryCode", Array(Array(4))
DatabaseManager.Answer "FROM Schedules", Array(Array(5, "Early Shift"), Array(9, "Night Shift"))
DatabaseManager.Answer "FROM DirectoryCode WHERE", _
    Array(Array(103, "555-0102", "", 2, "Apartment 103", -1, _
                DateSerial(2024, 3, 5) + TimeSerial(14, 30, 0)), _
          Array(250, "555-0199", "12", 5, "Karin Abel", 0, Null))
Set conn = New Connection
Set controller = CreateObject("qorCred.clsDirCodeReport")
Set controller.gfrmTxFilter = screen
controller.mlngUnitKey = 3

sql = controller.pbGenSql(conn, 3)
Say ""
Say "the statement: " & sql
Say ""

Set grid = New Grid
For row = 0 To 6
  grid.Columns.Append New GridColumn
Next
Set layout = Nothing
controller.pvDirCodeReportResult 3, conn, grid, sql, layout
Say ""
Say "layout: rows to " & layout.LastRow() & ", first " & layout.RowText(0)
For row = 0 To grid.Rows.LastRow()
  Say "row " & row & ": " & grid.Rows.RowText(row)
Next

Set controller = Nothing
Set layout = Nothing
Set grid = Nothing
Set screen = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
