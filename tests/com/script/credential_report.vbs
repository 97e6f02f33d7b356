' Composes and runs the report of credentials: a range of numbers that belong to tenants whose names
' begin with "Ab"; then a statement that the database refuses.
Dim screen, conn, controller, sql, table, done
Set screen = New FilterScreen
screen.Enter 0, 1, 0, 6, "between", "20", "22"
screen.Enter 1, 3, 0, 2, "begins with", "Ab", ""
DatabaseManager.Answer "SELECT  iif", Array(Array("Standard 26 Bit card", 20), Array("Transmitter", 22))
Set conn = New Connection
Set controller = CreateObject("qorCred.clsCredentialReport")
Set controller.gfrmTxFilter = screen
Say "operators: " & Show(controller.pbPopulateArrOperators())

Set table = NewTable
sql = ""
done = controller.pbGenSql(conn, 3, table, sql)
Say ""
Say "done: " & Show(done)
Say "the statement: " & sql
Say "row 0: " & table.RowText(0)
Say "row 1: " & table.RowText(1)
Say ""

DatabaseManager.Answer "a.unitkey=4 ", "Syntax error"
done = controller.pbGenSql(conn, 4, table, sql)
Say ""
Say "done: " & Show(done)

Set controller = Nothing
Set table = Nothing
Set screen = Nothing
Set conn = Nothing
Say "objects left beside the components: " & Alive - 5
