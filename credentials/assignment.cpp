// Puts the selected credential into a free slot of the chosen tenant.
#include "credentials/cls_credential.h"
#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/schema.h"
#include "frame/sql_text.h"

namespace qorcred {

bool clsCredential::pvAssignCredentialToTenant(const ObjectRef& connection, std::int32_t& unitKey) {
  const TenantComponent tenants(host_.CreateComponent(component::kTenant));
  pvReleaseCredentialFromTenant(connection, unitKey);

  const Screen screen = RequireScreen();
  const ListControl assignedTo = screen.List("cboAssignedTo");
  const std::int32_t chosen = assignedTo.ListIndex();
  if (chosen <= 0) return true;
  const std::int32_t tenantId = assignedTo.ItemData(chosen);

  const DatabaseManager capacityManager(host_.CreateComponent(component::kDatabaseManager));
  const TableView capacity =
      capacityManager.ExecuteSelectOrEmpty(connection, CapacityQuery(unitKey), error_);
  const std::int32_t limit = ToLong(DecodedCapacity(host_, base64_, capacity));
  const ApplicationComponent unitState(host_.CreateComponent(component::kApplication));
  if (unitState.CodesInUse(connection, unitKey).Sum32() >= limit) {
    // Hosts cannot tell this from an assignment: the result is True all the same.
    Notify(host_, Concat("You cannot enter more than ", limit, " combined codes."));
    return true;
  }

  const std::int32_t credentialId = screen.List("cboCredentials").SelectedItemData();
  PutIntoSlot(connection, unitKey, tenantId, credentialId);
  tenants.CreateProgramSteps(connection, unitKey, tenantId);
  return true;
}

// The first slot when it is free or when both are full (its credential is then replaced), otherwise
// the second.
void clsCredential::PutIntoSlot(const ObjectRef& connection, std::int32_t unitKey,
                                std::int32_t tenantId, std::int32_t credentialId) {
  const DatabaseManager manager = Manager();
  std::string first = Concat("UPDATE TENANTS SET CREDENTIALID1 = ", credentialId,
                             " WHERE TENANTID = ", tenantId, " AND UNITKEY = ", unitKey,
                             " AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND "
                             "CREDENTIALID2 IS NOT NULL ))");
  const Value changed =
      manager.ExecuteUpdate(connection, FixNullValues(std::move(first)), table::TENANTS, error_);
  if (AnsweredNumber(changed) > 0) return;
  std::string second = Concat("UPDATE TENANTS SET CREDENTIALID2 = ", credentialId,
                              " WHERE TENANTID = ", tenantId, " AND UNITKEY = ", unitKey,
                              " AND CREDENTIALID2 IS NULL AND CREDENTIALID1 IS NOT NULL  ");
  manager.ExecuteUpdate(connection, FixNullValues(std::move(second)), table::TENANTS, error_);
}

}  // namespace qorcred
