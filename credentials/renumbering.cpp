// Gives an existing credential a new number.
#include "credentials/cls_credential.h"
#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/schema.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

// The type whose label a list text contains; a text without one counts as type 0 without a label.
CredentialTypeName TypeInListText(std::string_view text) {
  for (const CredentialTypeName& name : kCredentialTypes) {
    if (Contains(text, name.label)) return name;
  }
  return {kCorvinCard, ""};
}

// Replaces the selected entry's text in its place; its item data and the selection stay.
void ReplaceSelectedEntry(const ListControl& list, std::string text) {
  const std::int32_t index = list.ListIndex();
  const std::int32_t rid = list.ItemData(index);
  list.RemoveItem(index);
  list.AddItem(std::move(text), index);
  list.SetItemData(list.NewIndex(), rid);
  list.SetListIndex(index);
}

}  // namespace

bool clsCredential::pbUpdatePinNo(const ObjectRef& objConn, std::int32_t lngPINNO,
                                  std::int32_t lngUnitKey) {
  bool renumbered = false;
  Trap(host_, "pbUpdatePinNo", [&] {
    if (lngPINNO == 0) {
      Refuse(host_, "Please enter a Credential Number between 1 and 65535.");
      return;
    }
    const Screen screen = RequireScreen();
    const ListControl list = screen.List("cboCredentials");
    const CredentialTypeName type = TypeInListText(list.Text());

    mblnEditCredential_ = true;
    const bool unused = pvValidateCredentialNumber(objConn, lngUnitKey, type.type, lngPINNO);
    mblnEditCredential_ = false;
    if (!unused) return;

    const std::int32_t rid = list.SelectedItemData();
    std::string update = Concat("UPDATE CREDENTIALBANK SET PINNo=", lngPINNO,
                                ",LASTMODIFIEDDATE=", kLastModifiedLiteral,
                                " WHERE UnitKey=", lngUnitKey, " AND RID=", rid);
    const Value changed =
        Manager().ExecuteUpdate(objConn, FixNullValues(std::move(update)), table::CREDENTIALBANK,
                                error_, screen.Variable("gstrLastModifiedDate"), rid);
    if (AnsweredNumber(changed) < 1) return;
    const std::string_view separator = type.label.empty() ? "" : "-";
    ReplaceSelectedEntry(list, Concat(type.label, separator, lngPINNO));
    renumbered = true;
  });
  return renumbered;
}

}  // namespace qorcred
