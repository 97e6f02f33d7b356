#include "reports/report_controller.h"

#include "frame/messages.h"
#include "frame/siblings.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

DatabaseManager ReportController::NewManager() const {
  return DatabaseManager(host_.CreateComponent(component::kDatabaseManager));
}

bool ReportController::pbPopulateArrOperators() {
  bool done = false;
  Trap(host_, "pbPopulateArrOperators", [&] {
    operators_ = &FilledOperatorTables();
    done = true;
  });
  return done;
}

bool ReportController::pbMergeXArrayDBObjects(const ObjectRef& arrXDBObj1,
                                              const ObjectRef& arrXDBObj2) {
  bool done = false;
  Trap(host_, "pbMergeXArrayDBObjects", [&] {
    const TableView target(arrXDBObj1);
    const TableView source(arrXDBObj2);
    // Both bounds of the source are exclusive: its last row and its last column are never copied.
    // Hosts rely on it.
    const std::int32_t rows = source.UpperRow();
    for (std::int32_t row = 0; row < rows; ++row) {
      const std::int32_t added = target.UpperRow() + 1;
      const std::int32_t lowColumn = target.LowerColumn();
      target.ReDim(0, added, lowColumn, target.UpperColumn());
      const std::int32_t columns = source.UpperColumn();
      for (std::int32_t column = 0; column < columns; ++column) {
        target.SetCell(added, column, source.Cell(row, column));
      }
    }
    done = true;
  });
  return done;
}

bool ReportController::pbValidate(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                  const ObjectRef& objDB) {
  bool valid = false;
  Trap(host_, "pbValidate", [&] {
    const TableView holders = DatabaseManager(objDB).ExecuteSelect(
        objConn,
        Concat("Select TenantID from Tenants where UnitKey=", lngUnitKey,
               " And (CredentialID1 IN (", ridsForDeletion_, ") OR CredentialID2 IN(",
               ridsForDeletion_, "))"),
        error_);
    if (holders.HasNoRows()) {
      valid = true;
    } else {
      Notify(host_,
             "Credentials which are assigned to tenants cannot be deleted. Please deselect those "
             "credentials.");
    }
  });
  return valid;
}

// In the directory-code report, too, it is credentials that are deleted. Hosts rely on it.
bool ReportController::pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                std::int32_t& lngRowsDeleted) {
  bool deleted = false;
  Trap(host_, "pbDelete", [&] {
    const DatabaseManager manager = NewManager();
    if (!pbValidate(objConn, lngUnitKey, manager.reference())) return;
    lngRowsDeleted =
        manager.ExecuteQueryDelete(objConn,
                                   Concat("Delete From CredentialBank Where unitkey=", lngUnitKey,
                                          " And RID in (", ridsForDeletion_, ")"),
                                   error_);
    if (lngRowsDeleted < 1) {
      Notify(host_, "Credentials(s) are not deleted successfully.");
    } else {
      deleted = true;
    }
  });
  return deleted;
}

}  // namespace qorcred
