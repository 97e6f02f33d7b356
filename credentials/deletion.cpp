// Deletes a credential and takes it from the tenant that holds it.
#include <cmath>

#include "credentials/cls_credential.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

bool clsCredential::pbDelete(const ObjectRef& objConn, std::int32_t lngUnitKey,
                             std::int32_t lngRID) {
  bool deleted = false;
  Trap(host_, "pbDelete", [&] {
    const bool assigned = pvIsCredentialAssigned(objConn, lngUnitKey, lngRID);
    if (assigned &&
        !Ask(host_,
             "This credential is already assgined to a Tenant. Deleting this credential will "
             "remove it from the assigned Tenant and delete the credential from the system. Do you "
             "want to continue?")) {
      return;
    }
    Manager().ExecuteDelete(objConn, table::CREDENTIALBANK, lngRID, error_);
    if (assigned) pvReleaseCredentialFromTenant(objConn, lngUnitKey);
    deleted = true;
  });
  return deleted;
}

bool clsCredential::pvIsCredentialAssigned(const ObjectRef& connection, std::int32_t unitKey,
                                           std::int32_t rid) {
  return !Manager()
              .ExecuteSelect(connection,
                             Concat("SELECT TENANTID FROM TENANTS WHERE UNITKEY=", unitKey,
                                    " AND (CREDENTIALID1=", rid, " OR CREDENTIALID2=", rid, ")"),
                             error_)
              .HasNoRows();
}

bool clsCredential::pvReleaseCredentialFromTenant(const ObjectRef& connection,
                                                  std::int32_t unitKey) {
  const TenantComponent tenants(host_.CreateComponent(component::kTenant));
  const ListControl list = RequireScreen().List("cboCredentials");
  const std::string credentialId = NumberText(list.SelectedItemData());

  // Narrower than pvIsCredentialAssigned on purpose: only a tenant that is no resident starts the
  // clean-up. It then takes the credential from every slot of the unit, but only that one tenant
  // gets steps.
  const Value found =
      Manager().ExecuteScalar(connection,
                              Concat("SELECT TenantID FROM Tenants WHERE UnitKey=", unitKey,
                                     " AND Resident=0  AND ((CredentialID1 = ", credentialId,
                                     " ) OR ( CredentialID2 = ", credentialId, "))"),
                              error_);
  const std::int32_t tenantId = RoundToLong(std::trunc(NumericValue(found)));
  if (tenantId > 0) {
    ReleaseSlot(connection, unitKey, column::CREDENTIALID1, credentialId);
    ReleaseSlot(connection, unitKey, column::CREDENTIALID2, credentialId);
    tenants.CreateProgramSteps(connection, unitKey, tenantId);
  }
  return true;
}

void clsCredential::ReleaseSlot(const ObjectRef& connection, std::int32_t unitKey,
                                std::string_view slot, std::string_view credentialId) {
  std::string update = Concat("UPDATE TENANTS SET ", slot, " = NULL  WHERE ", slot, " = ",
                              credentialId, "  AND UNITKEY = ", unitKey);
  Manager().ExecuteUpdate(connection, FixNullValues(std::move(update)), table::TENANTS, error_);
}

}  // namespace qorcred
