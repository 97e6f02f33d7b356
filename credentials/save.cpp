// pbSave: an edited credential, or a new one or range.
#include "credentials/cls_credential.h"
#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

// The components of one save. Members are destroyed from the last to the first: the application
// component is created first and released first.
struct SaveComponents {
  ObjectRef tenant;
  ObjectRef application;
};

}  // namespace

bool clsCredential::pbSave(const ObjectRef& objConn, std::int32_t lngUnitKey, bool blnIsTBL,
                           bool blnEditCR, std::int32_t* lngRID) {
  bool saved = false;
  Trap(host_, "pbSave", [&] {
    SaveComponents components;
    components.application = host_.CreateComponent(component::kApplication);
    components.tenant = host_.CreateComponent(component::kTenant);
    const Screen screen = RequireScreen();

    if (blnEditCR) {
      saved = SaveEdited(objConn, lngUnitKey, screen);
      return;
    }
    CredentialEntry entry;
    if (!CheckNew(objConn, lngUnitKey, screen, components.application, blnIsTBL, entry)) return;
    StoreNew(objConn, lngUnitKey, screen, components.tenant, blnIsTBL, entry, lngRID, saved);
  });
  return saved;
}

bool clsCredential::SaveEdited(const ObjectRef& connection, std::int32_t& unitKey,
                               const Screen& screen) {
  mblnEditCredential_ = true;
  const std::int32_t door = screen.List("cboActivate").ListIndex();
  const std::int32_t rid = screen.List("cboCredentials").SelectedItemData();
  std::string update = Concat("UPDATE ", table::CREDENTIALBANK, " SET DOORCODE = ", door, ",",
                              column::LASTMODIFIEDDATE, "=", kLastModifiedLiteral, " WHERE ",
                              column::UnitKey, "=", unitKey, " AND ", column::RID, "=", rid);
  Manager().ExecuteUpdate(connection, FixNullValues(std::move(update)), table::CREDENTIALBANK,
                          error_, Missing{}, rid);
  const bool assigned = pvAssignCredentialToTenant(connection, unitKey);
  mblnEditCredential_ = false;
  return assigned;
}

bool clsCredential::CheckNew(const ObjectRef& connection, std::int32_t& unitKey,
                             const Screen& screen, const ObjectRef& application,
                             bool createsTenants, CredentialEntry& entry) {
  if (!ReadNumbers(screen, entry)) return false;
  if (!ReadCodes(screen, entry)) return false;
  if (!IsUnused(connection, unitKey, screen, createsTenants, entry)) return false;

  const std::int16_t maximum =
      ReadUnitCapacity(host_, base64_, Manager(), connection, unitKey, error_);
  if (!createsTenants) {
    const ApplicationComponent unitState(host_.CreateComponent(component::kApplication));
    return FitsCapacity(screen, entry, maximum, unitState.CodesInUse(connection, unitKey).Sum16());
  }

  if (!ReadTenant(screen, entry.tenant)) return false;
  const ApplicationComponent unitState(application);
  if (!FitsCapacity(screen, entry, maximum, unitState.CodesInUse(connection, unitKey).Sum16())) {
    return false;
  }
  entry.tenant.groupZeroRid = ReadGroupZeroRid(connection, unitKey);
  return true;
}

std::int32_t clsCredential::ReadGroupZeroRid(const ObjectRef& connection, std::int32_t unitKey) {
  const TableView group = Manager().ExecuteSelect(
      connection,
      Concat("Select RID from TenantGroup where UnitKey = ", unitKey, " AND IsGroupZero=True"),
      error_);
  return RoundToLong(NumericValue(group.Cell(0, 0)));
}

}  // namespace qorcred
