#include "credentials/duplicates.h"

#include "credentials/cls_credential.h"
#include "credentials/credential_type.h"
#include "frame/messages.h"
#include "frame/sql_text.h"
#include "frame/text.h"

namespace qorcred {

namespace {

bool FindsNothing(const DuplicateCheck& check, std::string sql) {
  return check.manager.ExecuteSelect(check.connection, std::move(sql), check.error).HasNoRows();
}

std::string LeaveOut(std::string_view row) {
  return row.empty() ? std::string() : Concat(" and RID <>", row);
}

// The single checks and the range checks differ in blanks and in val(): hosts compare the texts.

std::string SingleTransmitterQuery(std::int32_t unitKey, const CredentialTexts& credential) {
  return Concat("Select UnitKey from CredentialBank where UnitKey = ", unitKey,
                " and CredentialType = ", kTransmitter, " and val(PINNo) = ", credential.number,
                " and val(FacilityCode) = ", credential.facilityCode,
                " and val(IDCode) = ", credential.idCode,
                " and val(SequenceNumber) = ", credential.sequenceCode,
                " and val(ButtonNumber) = ", credential.button);
}

std::string SingleCardQuery(std::int32_t unitKey, std::int16_t type,
                            const CredentialTexts& credential) {
  return Concat("Select UnitKey,PINNo from CredentialBank where UnitKey = ", unitKey,
                " and CredentialType = ", type, " and PINNo = ", credential.number,
                " and FacilityCode = ", credential.facilityCode);
}

std::string SingleTransmitterMessage(const CredentialTexts& credential) {
  return Concat(
      "For this Credential Type, the combination of Credential Number and the Facility Code,ID "
      "Code,Sequence Code, Button No. cannot be duplicated. Credential Number = ",
      credential.number, ", Facility Code = ", credential.facilityCode,
      " ,ID Code=", credential.idCode, ", Sequence Code=", credential.sequenceCode,
      ", Button No.=", credential.button);
}

std::string SingleCardMessage(const CredentialTexts& credential) {
  return Concat(
      "For this Credential Type, the combination of Credential Number and the Facility Code cannot "
      "be duplicated. Credential Number = ",
      credential.number, ", Facility Code = ", credential.facilityCode);
}

std::string RangeTransmitterQuery(std::int32_t unitKey, const CredentialEntry& range) {
  return Concat("Select Top 1 UnitKey, PINNo from CredentialBank where UnitKey = ", unitKey,
                " and CredentialType = ", kTransmitter, " and FacilityCode = ", range.facilityCode,
                " and IDCode = ", range.idCode, " and SequenceNumber = ", range.sequenceCode,
                " and ButtonNumber = ", range.button, " and PINNo >=", range.start,
                "  and PINNo <=", range.end,
                " Order by CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber");
}

std::string RangeCardQuery(std::int32_t unitKey, const CredentialEntry& range) {
  return Concat("Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = ", unitKey,
                " and CredentialType = ", range.type, " and PINNo >=", range.start,
                "  and PINNo <=", range.end, " and FacilityCode = ", range.facilityCode,
                " Order by CredentialType,PINNo,FacilityCode");
}

std::string RangeTransmitterMessage(std::string_view found, const CredentialEntry& range) {
  return Concat(
      "For this Credential Type, the combination of Credential Number and the Facility Code, ID "
      "Code, Sequence Code, Button No. cannot be duplicated. Credential Number = ",
      found, ", Facility Code = ", range.facilityCode, ", ID Code=", range.idCode,
      ", Sequence Code=", range.sequenceCode, ", Button No.=", range.button);
}

std::string RangeCardMessage(std::string_view found, const CredentialEntry& range) {
  return Concat(
      "For this Credential Type, the combination of Credential Number and the Facility Code cannot "
      "be duplicated. Credential Number = ",
      found, ", Facility Code = ", range.facilityCode);
}

// The number in a list entry's text: what is left without the labels and every hyphen.
std::string NumberInListText(std::string text) {
  for (const CredentialTypeName& name : kCredentialTypes) {
    text = ReplaceAll(text, name.label, "");
  }
  return ReplaceAll(text, "-", "");
}

std::string TrimmedNumber(std::string_view text) {
  return NumberText(Val(Trim(text)));
}

}  // namespace

bool IsUnusedCredential(const DuplicateCheck& check, std::int16_t type,
                        const CredentialTexts& credential, std::string_view rowToLeaveOut) {
  const bool transmitter = type == kTransmitter;
  std::string query = transmitter ? SingleTransmitterQuery(check.unitKey, credential)
                                  : SingleCardQuery(check.unitKey, type, credential);
  if (FindsNothing(check, query + LeaveOut(rowToLeaveOut))) return true;
  Notify(check.host,
         transmitter ? SingleTransmitterMessage(credential) : SingleCardMessage(credential));
  return false;
}

bool pvValidateCredentialValues(const DuplicateCheck& check, std::int16_t type, std::int32_t number,
                                std::int32_t facilityCode, std::int32_t idCode,
                                std::int16_t sequenceCode, std::int16_t button) {
  return IsUnusedCredential(check, type,
                            {.number = NumberText(number),
                             .facilityCode = NumberText(facilityCode),
                             .idCode = NumberText(idCode),
                             .sequenceCode = NumberText(sequenceCode),
                             .button = NumberText(button)},
                            "");
}

bool pvValidateCredentialRange(const DuplicateCheck& check, const CredentialEntry& range) {
  const bool transmitter = range.type == kTransmitter;
  const TableView found =
      check.manager.ExecuteSelect(check.connection,
                                  transmitter ? RangeTransmitterQuery(check.unitKey, range)
                                              : RangeCardQuery(check.unitKey, range),
                                  check.error);
  if (found.HasNoRows()) return true;
  const std::string number = TextOrEmpty(found.Cell(0, 1));
  Notify(check.host,
         transmitter ? RangeTransmitterMessage(number, range) : RangeCardMessage(number, range));
  return false;
}

bool IsUnusedNumber(const DuplicateCheck& check, std::int16_t type, std::int32_t number,
                    std::int32_t rowToLeaveOut) {
  if (FindsNothing(check, Concat("Select PINNo from CredentialBank where UnitKey = ", check.unitKey,
                                 " and CredentialType = ", type, " and val(PINNo) = ", number,
                                 " and RID <>", rowToLeaveOut))) {
    return true;
  }
  Notify(check.host, "Credential Number already exists.");
  return false;
}

bool clsCredential::pvValidateCredentialNumber(const ObjectRef& connection, std::int32_t unitKey,
                                               std::int16_t type, std::int32_t number) {
  const Screen screen = RequireScreen();
  const DatabaseManager manager = Manager();
  const DuplicateCheck check{host_, manager, connection, unitKey, error_};
  // A screen for new credentials alone need not have the list.
  const auto list = [&screen] { return screen.List("cboCredentials"); };
  if (number != kNumberFromScreen) {
    return IsUnusedNumber(check, type, number, list().SelectedItemData());
  }

  CredentialTexts shown;
  shown.number = TrimmedNumber(mblnEditCredential_ ? NumberInListText(list().Text())
                                                   : screen.Box("txtPINStart").Text());
  shown.facilityCode = TrimmedNumber(screen.Box("txtFacilityCode").Text());
  if (type == kTransmitter) {
    shown.idCode = TrimmedNumber(screen.Box("txtIDCode").Text());
    shown.sequenceCode = TrimmedNumber(screen.Box("txtSequenceCode").Text());
    shown.button = ReadButton(screen);
  }
  const std::string row =
      mblnEditCredential_ ? NumberText(list().SelectedItemData()) : std::string();
  return IsUnusedCredential(check, type, shown, row);
}

}  // namespace qorcred
