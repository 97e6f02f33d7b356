// Deletes a directory code and takes it from the tenants that hold it.
#include "dircodes/cls_dir_code.h"
#include "frame/messages.h"
#include "frame/row_state.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

bool clsDirCode::pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey, std::int32_t lngRID,
                          bool blnDontDisplayMessage, bool blnValidate) {
  bool deleted = false;
  Trap(host_, "pbDelete", [&] {
    if (blnValidate && !ConfirmDeletion(objConn, lngUnitKey, lngRID)) return;
    QueueDeletion(objConn, lngUnitKey, lngRID);
    Manager().ExecuteDelete(objConn, table::DIRECTORYCODE, lngRID, error_);
    if (blnValidate) {
      ReleaseFromTenants(objConn, lngUnitKey, lngRID);
      // Only here: without the question a deletion that was done answers False. Hosts rely on it.
      deleted = true;
    }
    if (!blnDontDisplayMessage) Notify(host_, "Directory Code deleted successfully.");
  });
  return deleted;
}

bool clsDirCode::ConfirmDeletion(const ObjectRef& connection, std::int32_t unitKey,
                                 std::int32_t rid) {
  if (pbIsDirCodeAssignedToTenant(connection, unitKey, rid)) {
    return Ask(host_,
               "This Directory Code is applied to a Tenant. Deleting this Directory Code will "
               "remove it from the system. Do you wish to continue?");
  }
  const Value code = Manager().ExecuteScalar(
      connection, Concat("SELECT DirectoryCode FROM DIRECTORYCODE WHERE RID = ", rid), error_);
  return Ask(host_,
             Concat("Are you sure you want to delete Directory Code ", TextOf(host_, code), "?"));
}

void clsDirCode::QueueDeletion(const ObjectRef& connection, std::int32_t& unitKey,
                               std::int32_t& rid) {
  const std::int16_t state = ReadState(connection, rid);
  const StepSender steps(host_.CreateComponent(component::kStepSender));
  if (state == row_state::kInUnit || state == row_state::kChanged) {
    steps.DeleteDirCode(connection, unitKey, rid);
  } else if (state == row_state::kNotSent) {
    steps.WithdrawDirCode(connection, unitKey, rid);
  }
}

void clsDirCode::ReleaseFromTenants(const ObjectRef& connection, std::int32_t unitKey,
                                    std::int32_t rid) {
  std::string update =
      Concat("UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE=", kLastModifiedLiteral,
             " WHERE UNITKEY=", unitKey, " AND DIRECTORYCODE=", rid);
  Manager().ExecuteUpdate(connection, ReplaceEmptyWithNull(std::move(update)), table::DIRECTORYCODE,
                          error_);
}

}  // namespace qorcred
