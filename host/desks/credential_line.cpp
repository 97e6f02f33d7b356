#include "host/desks/credential_line.h"

#include <cstdint>
#include <string_view>

#include "credentials/credential_type.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/typed_input.h"
#include "host/desks/whole_number.h"

namespace qorhost {

namespace {

namespace card_column = credential_column;

/// The text of a cell; nothing for an empty one.
std::optional<std::string> ReadText(const ImportLine& line, std::size_t column) {
  const std::string_view given = line.Trimmed(column);
  return given.empty() ? std::nullopt : std::optional<std::string>(given);
}

const CredentialTypeWords& ReadType(const std::string& given) {
  const CredentialTypeWords* type = FindCredentialType(EnteredTypes(), given);
  if (type == nullptr) {
    throw InputFault(
        credential_field::kType, given,
        "{field} '{value}' cannot be entered: the screen has " + EnteredNames(", ", " and "));
  }
  return *type;
}

/// What only transmitters have.
std::optional<std::string> ReadOfTransmitter(const ImportLine& line, std::size_t column,
                                             std::string_view field, std::int16_t type) {
  std::optional<std::string> given = ReadText(line, column);
  if (given && type != qorcred::kTransmitter) {
    throw InputFault(field, *given,
                     "{field} '{value}' must be left empty: only transmitters have one");
  }
  return given;
}

std::optional<std::string> ReadFacility(const std::optional<std::string>& given, bool takesOne) {
  if (!given || takesOne) {
    return given;
  }
  if (given->find_first_not_of('0') != std::string::npos) {
    throw InputFault(credential_field::kFacility, *given,
                     "{field} '{value}' must be left empty: this unit ignores facility codes");
  }
  return std::nullopt;
}

/// What the screen would refuse without a word about the cell. An empty one is left to the screen.
void RequireInBounds(std::string_view field, const std::optional<std::string>& given,
                     NumberRange range) {
  if (given && !given->empty()) {
    RequireNoSeparators(field, *given);
    (void)ReadLong(field, TypedNumber(field, *given), range);
  }
}

void RequireInBounds(const NewCredentials& entry, std::int16_t type) {
  const bool isCorvin = type == qorcred::kCorvinCard;
  RequireInBounds(credential_field::kFirst, entry.first, {1, credential_bound::kNumber});
  RequireInBounds(credential_field::kFacility, entry.facility,
                  {0, isCorvin ? credential_bound::kCorvinFacility : credential_bound::kFacility});
  RequireInBounds(credential_field::kIdCode, entry.idCode, {0, credential_bound::kIdCode});
  RequireInBounds(credential_field::kSequence, entry.sequence, {0, credential_bound::kSequence});
}

}  // namespace

std::array<ColumnField, card_column::kCount> CredentialFields(std::size_t first) {
  return {{{credential_field::kType, first + card_column::kType},
           {credential_field::kFirst, first + card_column::kNumber},
           {credential_field::kFacility, first + card_column::kFacility},
           {credential_field::kIdCode, first + card_column::kIdCode},
           {credential_field::kSequence, first + card_column::kSequence},
           {credential_field::kButton, first + card_column::kButton}}};
}

std::size_t ColumnOfControl(std::string_view control, std::size_t first) {
  constexpr std::array<ControlColumn, 5> kControls{{{"cboCredentialType", card_column::kType},
                                                    {"txtFacilityCode", card_column::kFacility},
                                                    {"txtIDCode", card_column::kIdCode},
                                                    {"txtSequenceCode", card_column::kSequence},
                                                    {"optButton4", card_column::kButton}}};
  return first + ColumnOf(control, kControls, card_column::kNumber);
}

NewCredentials ReadCredential(const ImportLine& line, std::size_t first, bool takesFacilityCode,
                              const CredentialDefaults& defaults) {
  const auto cell = [&](std::size_t column) { return ReadText(line, first + column); };
  const CredentialTypeWords& type =
      ReadType(cell(card_column::kType).value_or(defaults.type.value_or("")));
  std::optional<std::string> facility = cell(card_column::kFacility);
  if (!facility) {
    facility = defaults.facility;
  }
  NewCredentials entry;
  entry.type = type.word;
  entry.first = line.Trimmed(first + card_column::kNumber);
  entry.facility = ReadFacility(facility, takesFacilityCode);
  entry.idCode =
      ReadOfTransmitter(line, first + card_column::kIdCode, credential_field::kIdCode, type.type);
  entry.sequence = ReadOfTransmitter(line, first + card_column::kSequence,
                                     credential_field::kSequence, type.type);
  entry.button =
      ReadOfTransmitter(line, first + card_column::kButton, credential_field::kButton, type.type);
  RequireInBounds(entry, type.type);
  return entry;
}

}  // namespace qorhost
