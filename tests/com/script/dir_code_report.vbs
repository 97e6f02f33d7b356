' Composes the report of directory codes from five filter rows and shows its rows in the grid.
Dim screen, conn, controller, sql, grid, layout, row
Set screen = New FilterScreen
screen.Enter 0, 0, 51, 3, "greater than or equal to", " 100 ", ""
screen.Enter 1, 1, 52, 2, "begins with", "555", ""
screen.Enter 2, 2, 63, 6, "between", "", ""
screen.Enter 3, 3, 57, 0, "equal", "", ""
screen.Enter 4, 4, 65, 7, "does not contain", "Shift", ""
DatabaseManager.Answer "AND RID = 51", Array(Array("DirectoryCode.DirectoryCode"))
DatabaseManager.Answer "AND RID = 52", Array(Array("DirectoryCode.PhoneNumber"))
DatabaseManager.Answer "AND RID = 63", Array(Array("DirectoryCode.StartDate"))
DatabaseManager.Answer "AND RID = 57", Array(Array("DirectoryCode.IsCFChecked"))
DatabaseManager.Answer "AND RID = 65", Array(Array("DirectoryCode.DisplayName"))
DatabaseManager.Answer "FieldNameDisplay, DisplayWidth", _
    Array(Array("Directory Code", 900, "DirectoryCode.DirectoryCode"), _
          Array("Phone No.", 1200, "DirectoryCode.PhoneNumber"), _
          Array("Directory Status", Null, "DirectoryCode.Active"), _
          Array("DND Schedule", "", "DirectoryCode.DNDScheduleID"), _
          Array("Directory Start Date", 1800, "DirectoryCode.StartDate"))
DatabaseManager.Answer "MaxDigitsDirectoryCode", Array(Array(4))
DatabaseManager.Answer "ScheduleID, ScheduleName", Array(Array(5, "Early Shift"), Array(9, "Night Shift"))
DatabaseManager.Answer "FROM DirectoryCode WHERE", _
    Array(Array(103, "555-0102", -1, 9, DateSerial(2024, 3, 5) + TimeSerial(14, 30, 0)), _
          Array(250, "555-0199", 0, "", Null))
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
