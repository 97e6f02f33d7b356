// Questions about stored directory codes that several operations ask.
#include "dircodes/cls_dir_code.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/row_state.h"
#include "frame/sql_text.h"

namespace qorcred {

bool clsDirCode::pbIsDirCodeUnique(const ObjectRef& connection, std::string_view code,
                                   std::int32_t unitKey, std::int32_t ridToLeaveOut) {
  const std::string others =
      ridToLeaveOut == kNoRid ? std::string() : Concat(" AND RID <> ", ridToLeaveOut);
  const TableView holder = Manager().ExecuteSelect(
      connection,
      Concat("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=", code,
             " AND UNITKEY=", unitKey, others),
      error_);
  if (holder.HasNoRows()) return true;
  Notify(host_, "This Directory Code already exists. Please enter a different Directory Code.");
  return false;
}

bool clsDirCode::pbIsDirCodeAssignedToTenant(const ObjectRef& connection, std::int32_t unitKey,
                                             std::int32_t rid) {
  // A tenant refers to the code's row, not to the number that is dialled.
  const TableView tenant =
      Manager().ExecuteSelect(connection,
                              Concat("SELECT DIRECTORYCODE FROM TENANTS WHERE DIRECTORYCODE=", rid,
                                     " AND UNITKEY=", unitKey),
                              error_);
  return !TextOrEmpty(tenant.Cell(0, 0)).empty();
}

std::int16_t clsDirCode::ReadState(const ObjectRef& connection, std::int32_t rid) {
  return RoundToInteger(NumericValue(Manager().ExecuteScalar(
      connection, Concat("SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = ", rid), error_)));
}

}  // namespace qorcred
