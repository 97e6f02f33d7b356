// The writing half of pbSave: every row of a save in one transaction.
#include "credentials/cls_credential.h"
#include "credentials/save_transaction.h"
#include "frame/schema.h"
#include "frame/sql_text.h"

namespace qorcred {

namespace {

// The INSERT of a credential is the same text for every number of a range but for the number.
struct CredentialInsert {
  std::string head;
  std::string tail;

  CredentialInsert(std::int32_t unitKey, std::string_view rowIdText, const CredentialEntry& entry)
      : head(Concat("INSERT INTO ", table::CREDENTIALBANK, "(", column::UnitKey, ",", column::RID,
                    ",", column::CredentialType, ",", column::PINNo, ",", column::FacilityCode, ",",
                    column::IDCode, ",", column::SequenceNumber, ",", column::ButtonNumber, ",",
                    column::LASTMODIFIEDDATE, ")VALUES(", unitKey, ",", rowIdText, ",", entry.type,
                    ",")),
        tail(Concat(",", entry.facilityCode, ",", entry.idCode, ",", entry.sequenceCode, ",",
                    entry.button, ",", kLastModifiedLiteral, ")")) {}

  [[nodiscard]] std::string For(std::int32_t number) const { return Concat(head, number, tail); }
};

// The placeholder name "No Name", type and number keeps the unit's new tenants apart.
std::string TenantInsert(std::int32_t unitKey, std::string_view rowIdText,
                         const CredentialEntry& entry, std::int32_t number,
                         std::int32_t credentialRid, std::int32_t linkCode) {
  const TenantEntry& tenant = entry.tenant;
  return Concat("INSERT INTO ", table::TENANTS, "(", column::UNITKEY, ",", column::LASTNAME, ",",
                column::CREDENTIALID1, ",", column::DOORSCHEDULE1, ",", column::DOORSCHEDULE2, ",",
                column::DOORSCHEDULE3, ",", column::DOORSCHEDULE4, ",", column::ACTIVESTARTTIME,
                ",", column::ACTIVEENDTIME, ",", column::RID, ",", column::LASTMODIFIEDDATE, ",",
                column::GROUPID, ",", column::LINKCODE, ",", column::ACTIVETENANT, ")VALUES(",
                unitKey, ",'No Name", entry.type, number, "',", credentialRid, ",",
                tenant.schedules[0], ",", tenant.schedules[1], ",", tenant.schedules[2], ",",
                tenant.schedules[3], ",'", tenant.startDateText, "','", tenant.endDateText, "',",
                rowIdText, ",", kLastModifiedLiteral, ",", tenant.groupZeroRid, ",", linkCode, ",",
                tenant.active, ")");
}

}  // namespace

void clsCredential::StoreNew(const ObjectRef& connection, std::int32_t unitKey,
                             const Screen& screen, const ObjectRef& tenantComponent,
                             bool createsTenants, const CredentialEntry& entry,
                             std::int32_t* lastRid, bool& saved) {
  const DatabaseManager manager = Manager();
  const TenantComponent tenants(tenantComponent);
  const CredentialInsert insert(unitKey, rowIdText_, entry);

  SaveTransaction transaction(host_, "pbSave", connection, screen);
  transaction.Begin();
  std::string newTenantIds;
  // A save without tenants leaves the variable alone: its screen need not have one.
  if (createsTenants) screen.SetVariable("gstrNewTenantIDs", newTenantIds);
  for (std::int32_t number = entry.start; number <= entry.end; ++number) {
    std::int32_t rid = manager.ExecuteInsert(connection, FixNullValues(insert.For(number)), "",
                                             table::CREDENTIALBANK, error_);
    if (lastRid != nullptr) *lastRid = rid;
    if (rid >= 1 && createsTenants) {
      rid = StoreTenant(connection, unitKey, screen, tenants, entry, number, rid, newTenantIds);
    }
    if (rid < 1) return;  // the transaction undoes every row of the save
  }
  // The result is True before the commit: hosts rely on it even when the commit fails.
  saved = true;
  transaction.Commit();
}

std::int32_t clsCredential::StoreTenant(const ObjectRef& connection, std::int32_t unitKey,
                                        const Screen& screen, const TenantComponent& tenants,
                                        const CredentialEntry& entry, std::int32_t number,
                                        std::int32_t credentialRid, std::string& newTenantIds) {
  const std::int32_t linkCode = tenants.NextLinkCode(unitKey, connection);
  const std::int32_t tenantRid = Manager().ExecuteInsert(
      connection,
      FixNullValues(TenantInsert(unitKey, rowIdText_, entry, number, credentialRid, linkCode)), "",
      table::TENANTS, error_);
  tenants.TakeLinkCode(unitKey, connection);
  const std::int32_t tenantId = tenants.TenantId(connection, unitKey, tenantRid);
  // The whole list is put again for every tenant, because hosts may read it between two of them. It
  // grows by the length of an id: the one cost of a save that is not linear in its length.
  newTenantIds += Concat(tenantId, ",");
  screen.SetVariable("gstrNewTenantIDs", newTenantIds);
  Connection(connection)
      .Execute(Concat("INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (", unitKey, " , ",
                      tenantId, ")"));
  tenants.CreateProgramSteps(connection, unitKey, tenantRid);
  return tenantRid;
}

}  // namespace qorcred
