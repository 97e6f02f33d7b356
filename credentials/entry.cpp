// The checks of a new entry, in the order in which the user is told of the first that fails.
#include "credentials/entry.h"

#include "credentials/cls_credential.h"
#include "credentials/credential_type.h"
#include "credentials/duplicates.h"
#include "frame/active_period.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/sql_text.h"
#include "frame/text.h"

namespace qorcred {

namespace {

// The whole number that a box shows, rounded half to even but not bounded, so that a number of any
// length meets the messages about bounds. A text that is not numeric gives its leading number.
double WholeNumberIn(std::string_view text) {
  return RoundHalfToEven(IsNumeric(text) ? ToDouble(Value(text)) : Val(text));
}

// Whether the text is a number from `low` to `high`; an empty text is not.
bool IsWithin(std::string_view text, std::int32_t low, std::int32_t high) {
  if (!IsNumeric(text)) return false;
  const double number = WholeNumberIn(text);
  return number >= low && number <= high;
}

static_assert(kHighestCredentialNumber == 65535 && kHighestFacilityCode == 255 &&
                  kHighestCorvinFacilityCode == 63 && kHighestIdCode == 26 &&
                  kHighestSequenceCode == 2,
              "the messages say so");

bool IsSingleMode(const Screen& screen) {
  return UpperAscii(TextOrEmpty(screen.Variable("gstrTag"))) == "SINGLE";
}

std::string CapacityFull(std::int16_t maximum) {
  return Concat("You cannot assign more than ", maximum, " codes combined. This Unit already has ",
                maximum, " credentials/entry codes/directory codes.");
}

std::string CapacityExceeded(std::int16_t maximum, std::int16_t current, std::int32_t remaining,
                             std::int32_t lastPossible) {
  return Concat("A maximum of ", maximum, " combined codes are allowed. ", current,
                " combined codes are currently assigned. Only ", remaining,
                " credentials can be created. Reduce the ending number to ", lastPossible);
}

}  // namespace

std::string ReadButton(const Screen& screen) {
  return Equals(screen.Check("optButton4").State(), true) ? "4" : "1";
}

bool clsCredential::RefuseEntry(const Control& control, std::string_view message) {
  Notify(host_, message);
  control.SetFocus();
  return false;
}

bool clsCredential::ReadNumbers(const Screen& screen, CredentialEntry& entry) {
  const TextBox startBox = screen.Box("txtPINStart");
  const TextBox endBox = screen.Box("txtPINEND");

  const std::string startShown = startBox.Text();
  const std::string_view startText = startShown;
  if (Trim(startText).empty()) {
    return RefuseEntry(startBox, IsSingleMode(screen) ? "You must enter a credential number."
                                                      : "You must enter a starting number.");
  }
  if (!IsNumeric(startText)) {
    return RefuseEntry(startBox, "Please enter a numeric value for starting number.");
  }
  const double start = WholeNumberIn(startText);
  if (start <= 0) {
    return RefuseEntry(startBox, "Please enter a starting number between 1 and 65535.");
  }

  const std::string endShown = endBox.Text();
  std::string_view endText = endShown;
  if (Trim(endText).empty()) {
    screen.SetVariable("gstrTag", "Single");
    endBox.SetText(startText);
    endText = startText;
  }
  const double end = IsNumeric(endText) ? WholeNumberIn(endText) : 0;
  if (end <= 0) {
    return RefuseEntry(endBox, "Please enter an ending number between 1 and 65535.");
  }

  // The messages say "smaller than" although 65535 itself passes.
  if (start > kHighestCredentialNumber) {
    return RefuseEntry(startBox, IsSingleMode(screen)
                                     ? "Please enter a credential number smaller than 65535."
                                     : "Please enter a Start Number smaller than 65535.");
  }
  if (end > kHighestCredentialNumber) {
    return RefuseEntry(endBox, "Please enter a End Number smaller than 65535.");
  }
  if (end < start) {
    return RefuseEntry(endBox, "The ending number must be greater than the starting number.");
  }
  entry.start = RoundToLong(start);
  entry.end = RoundToLong(end);
  return true;
}

bool clsCredential::ReadCodes(const Screen& screen, CredentialEntry& entry) {
  entry.type = RoundToInteger(screen.List("cboCredentialType").SelectedItemData());

  const TextBox facilityBox = screen.Box("txtFacilityCode");
  const std::string facilityText = facilityBox.Text();
  const std::string_view facility = Trim(facilityText);
  const bool corvin = entry.type == kCorvinCard;
  if (!facility.empty() &&
      !IsWithin(facility, 0, corvin ? kHighestCorvinFacilityCode : kHighestFacilityCode)) {
    return RefuseEntry(facilityBox, corvin ? "Please enter a Facility Code between 0 and 63."
                                           : "Please enter a Facility Code between 0 and 255.");
  }

  const bool transmitter = entry.type == kTransmitter;
  const TextBox idBox = screen.Box("txtIDCode");
  const std::string idText = idBox.Text();
  if (transmitter && !IsWithin(Trim(idText), 0, kHighestIdCode)) {
    return RefuseEntry(idBox, "Please enter an ID Code between 0 and 26.");
  }
  const TextBox sequenceBox = screen.Box("txtSequenceCode");
  const std::string sequenceText = sequenceBox.Text();
  if (transmitter && !IsWithin(Trim(sequenceText), 0, kHighestSequenceCode)) {
    return RefuseEntry(sequenceBox, "Please enter a Sequence Code between 0 and 2.");
  }

  // Cards store the ID code, sequence code and button that the screen holds, too.
  entry.facilityCode = RoundToLong(WholeNumberIn(facility));
  entry.idCode = RoundToLong(WholeNumberIn(Trim(idText)));
  entry.sequenceCode = RoundToLong(WholeNumberIn(Trim(sequenceText)));
  entry.button = ReadButton(screen);
  return true;
}

bool clsCredential::IsUnused(const ObjectRef& connection, std::int32_t unitKey,
                             const Screen& screen, bool createsTenants,
                             const CredentialEntry& entry) {
  // Unlike in the messages, the letter case of the mode counts here.
  const bool single = TextOrEmpty(screen.Variable("gstrTag")) == "Single";
  if (!single) {
    const DatabaseManager manager = Manager();
    return pvValidateCredentialRange({host_, manager, connection, unitKey, error_}, entry);
  }
  if (createsTenants) return true;
  mblnEditCredential_ = false;
  return pvValidateCredentialNumber(connection, unitKey, entry.type, kNumberFromScreen);
}

bool clsCredential::ReadTenant(const Screen& screen, TenantEntry& tenant) {
  tenant.active = "False";
  if (Equals(screen.Check("chkActive").State(), 1)) {
    tenant.active = "True";
    const DatePicker endPicker = screen.Picker("dtpEnd");
    const Value start = screen.Picker("dtpStart").Chosen();
    const Value end = endPicker.Chosen();
    if (IsPeriodWithoutLength(start, end)) return RefuseEntry(endPicker, kPeriodWithoutLength);
    tenant.startDateText = DateWithoutMinusOne(TextOf(host_, start));
    tenant.endDateText = DateWithoutMinusOne(TextOf(host_, end));
  }

  for (std::size_t door = 0; door < kScheduleLists.size(); ++door) {
    const ListControl list = screen.List(kScheduleLists[door]);
    const std::int32_t chosen = list.ListIndex();
    if (chosen >= 0) tenant.schedules[door] = RoundToInteger(list.ItemData(chosen));
  }
  return true;
}

bool clsCredential::FitsCapacity(const Screen& screen, const CredentialEntry& entry,
                                 std::int16_t maximum, std::int16_t current) {
  if (current >= maximum) {
    // Names the maximum in both places, not the number in use.
    Notify(host_, CapacityFull(maximum));
    return false;
  }
  const std::int32_t remaining = std::int32_t{maximum} - current;
  if (entry.Count() > remaining) {
    return RefuseEntry(screen.Box("txtPINEND"),
                       CapacityExceeded(maximum, current, remaining, entry.start + remaining - 1));
  }
  return true;
}

}  // namespace qorcred
