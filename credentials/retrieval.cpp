// The list of a unit's credentials, and one credential in the edit controls.
#include "credentials/cls_credential.h"
#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/trap.h"
#include "frame/writing_controls.h"

namespace qorcred {

namespace {

// Columns of the credential query.
enum CredentialColumn : std::int32_t {
  kRid = 1,
  kType = 2,
  kNumber = 3,
  kFacilityCode = 4,
  kIdCode = 5,
  kSequenceNumber = 6,
  kButtonNumber = 7,
  kLastModified = 8,
  kDoorCode = 9,
};

std::string CredentialQuery(std::int32_t unitKey, std::int32_t rid) {
  return Concat(
      "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
      "LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=",
      unitKey, rid == kAllCredentials ? std::string() : Concat(" AND RID=", rid),
      " ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber");
}

// Selects the list entry of a tenant; the last one when several carry the same id.
void SelectTenant(const ListControl& list, const Value& tenantId) {
  const double wanted = NumericValue(tenantId);
  const std::int32_t count = list.ListCount();
  for (std::int32_t index = 1; index < count; ++index) {
    if (list.ItemData(index) == wanted) list.SetListIndex(index);
  }
}

}  // namespace

void clsCredential::pbRetrieveCredentials(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                          std::int32_t lngRID, std::int32_t lngPreviousRID) {
  Trap(host_, "pbRetrieveCredentials", [&] {
    const Screen screen = RequireScreen();
    const TableView credentials =
        Manager().ExecuteSelect(objConn, CredentialQuery(lngUnitKey, lngRID), error_);
    if (lngRID == kAllCredentials) {
      FillCredentialList(screen, credentials, lngPreviousRID);
    } else if (!credentials.HasNoRows()) {
      LoadCredential(objConn, lngUnitKey, screen, credentials);
    }
  });
}

void clsCredential::FillCredentialList(const Screen& screen, const TableView& credentials,
                                       std::int32_t previousRid) {
  const bool hasNoRows = credentials.HasNoRows();
  const ListControl list = screen.List("cboCredentials");
  list.Clear();
  list.AddItem("<Add New>");
  // In an empty list "<Add New>" keeps the item data 0; hosts tell the two cases apart by it.
  if (hasNoRows) return;
  list.SetItemData(list.NewIndex(), "-100");

  std::int32_t indexToSelect = 0;
  for (std::int32_t row = credentials.LowerRow(), last = credentials.UpperRow(); row <= last;
       ++row) {
    const double type = NumericValue(credentials.Cell(row, kType));
    for (const CredentialTypeName& name : kCredentialTypes) {
      if (type != name.type) continue;
      list.AddItem(Concat(name.label, "-", TextOrEmpty(credentials.Cell(row, kNumber))));
      break;
    }
    // A row of another type adds no entry: its RID takes the place of the last entry's.
    const Value rid = credentials.Cell(row, kRid);
    list.SetItemData(list.NewIndex(), rid);
    if (NumericValue(rid) == previousRid) indexToSelect = row + 1;
  }
  if (indexToSelect > 0) list.SetListIndex(indexToSelect);
}

void clsCredential::LoadCredential(const ObjectRef& connection, std::int32_t unitKey,
                                   const Screen& screen, const TableView& credential) {
  const WritingControls writing(host_, screen, "pbRetrieveCredentials");
  const auto numberIn = [&](CredentialColumn cell) {
    return NumericValue(credential.Cell(0, cell));
  };
  screen.SetVariable("glngrid", credential.Cell(0, kRid));

  if (numberIn(kType) == kTransmitter) {
    pbTransmitterCtls(true);
  } else {
    pbTransmitterCtls(false);
    screen.List("cboActivate").SetListIndex(RoundToLong(numberIn(kDoorCode)));
  }

  const bool showsFacilityCode = Equals(screen.Variable("gblnDisplayFacilityCode"), true);
  screen.Box("txtFacilityCode")
      .SetText(showsFacilityCode ? Value(numberIn(kFacilityCode)) : Value(""));
  screen.Box("txtIDCode").SetText(numberIn(kIdCode));
  screen.Box("txtSequenceCode").SetText(numberIn(kSequenceNumber));
  screen.Check(numberIn(kButtonNumber) == 4 ? "optButton4" : "optButtonDefault").SetState(true);
  screen.SetVariable("gstrLastModifiedDate", TextOf(host_, credential.Cell(0, kLastModified)));

  const std::string rid = NumberText(numberIn(kRid));
  const TableView tenant = Manager().ExecuteSelect(
      connection,
      Concat("SELECT TENANTID,LASTNAME,FIRSTNAME,MIDDLEINITIAL FROM TENANTS WHERE UNITKEY=",
             unitKey, " AND (CREDENTIALID1=", rid, " OR CREDENTIALID2=", rid, ")"),
      error_);
  const ListControl assignedTo = screen.List("cboAssignedTo");
  assignedTo.SetListIndex(0);
  if (!tenant.HasNoRows()) SelectTenant(assignedTo, tenant.Cell(0, 0));
}

void clsCredential::pbTransmitterCtls(bool blnEnable) {
  Trap(host_, "pbTransmitterCtls", [&] {
    const Screen screen = RequireScreen();
    const TextBox idBox = screen.Box("txtIDCode");
    const TextBox sequenceBox = screen.Box("txtSequenceCode");
    if (!blnEnable) idBox.SetText("");
    idBox.SetVisible(blnEnable);
    screen.Any("lblIDCode").SetVisible(blnEnable);
    if (!blnEnable) sequenceBox.SetText("");
    sequenceBox.SetVisible(blnEnable);
    for (const std::string_view name : {"lblSequencecode", "optButtonDefault", "optButton4"}) {
      screen.Any(name).SetVisible(blnEnable);
    }
    for (const std::string_view name : {"lblActivate", "cboActivate"}) {
      screen.Any(name).SetVisible(!blnEnable);
    }
  });
}

}  // namespace qorcred
