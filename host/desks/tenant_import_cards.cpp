#include "host/desks/tenant_import_cards.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/card_door.h"
#include "host/desks/credential_types.h"
#include "host/desks/desk_error.h"
#include "host/desks/import_run.h"
#include "host/desks/list_entries.h"
#include "host/desks/stored_row.h"
#include "host/desks/tenant_file.h"
#include "host/desks/typed_input.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

namespace card_field = credential_field;
namespace card_column = credential_column;

constexpr std::array kOfTransmitter{card_column::kIdCode, card_column::kSequence,
                                    card_column::kButton};

/// Of a new credential: an empty box is stored as 0.
std::int32_t NumberTyped(CredentialDesk& desk, std::string_view box) {
  return WholeNumber(desk.screen().Box(box).text()).value_or(0);
}

}  // namespace

TenantImportCards::TenantImportCards(DeskSession& session, std::int32_t unitKey,
                                     const ImportFile& file, const std::vector<TenantRow>& tenants,
                                     CredentialDefaults defaults)
    : session_(session),
      unitKey_(unitKey),
      defaults_(std::move(defaults)),
      desk_(session, unitKey, DeskScreen::kCredentials),
      fresh_(desk_.screen().Snapshot()) {
  typeChosen_ = desk_.screen().List("cboCredentialType").OnSelect([this](std::int32_t) {
    fresh_ = desk_.screen().Snapshot();
  });
  constexpr std::array<std::pair<std::size_t, std::size_t>, kTenantCards> kPlaces{
      {{tenant_file_column::kCard1, tenant_file_column::kDoor1},
       {tenant_file_column::kCard2, tenant_file_column::kDoor2}}};
  for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
    const auto [first, door] = kPlaces[slot];
    const auto own = CredentialFields(first);
    std::vector<ColumnField> fields(own.begin(), own.end());
    fields.push_back({card_field::kDoor, door});
    const std::size_t entry = tenant_file_column::kEntry1 + slot;
    fields.push_back({card_field::kCredential, entry});
    slots_[slot] = {first, door, entry, WordsOf(file, fields)};
  }
  byNumber_.reserve(file.lineCount());
  holders_.reserve(tenants.size() + file.lineCount());
  ReadCards(tenants);
}

void TenantImportCards::ReadCards(const std::vector<TenantRow>& tenants) {
  const QueryResult stored = session_.sql().Select(
      fmt::format("SELECT RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, "
                  "ButtonNumber, DOORCODE FROM CREDENTIALBANK WHERE UnitKey={}",
                  unitKey_));
  for (const ResultRow row : stored.rows()) {
    Card card{StoredNumber(row[0]),
              StoredNumber(row[1]),
              StoredNumber(row[2]),
              StoredNumber(row[3]),
              {StoredNumber(row[4]), StoredNumber(row[5]), StoredNumber(row[6])},
              {}};
    if (!qorcred::IsEmptyText(row[7])) {
      card.door = StoredNumber(row[7]);
    }
    byNumber_[card.number].push_back(card);
  }
  for (const TenantRow& tenant : tenants) {
    Hold(tenant, tenant.NameWithRid());
  }
  Keep();
}

void TenantImportCards::Hold(const TenantRow& tenant, const std::string& described) {
  for (const std::int32_t card : tenant.cards) {
    if (card != 0) {
      held_.emplace_back(card, Holder{tenant.rid, described});
    }
  }
}

void TenantImportCards::Keep() {
  for (const Card& card : issued_) {
    byNumber_[card.number].push_back(card);
  }
  for (auto& [card, holder] : held_) {
    holders_.insert_or_assign(card, std::move(holder));
  }
  Drop();
}

void TenantImportCards::Drop() {
  issued_.clear();
  held_.clear();
}

std::int32_t TenantImportCards::Take(const ImportLine& line, std::size_t slot, std::int32_t holder,
                                     StoredAlready stored) {
  const Slot& columns = slots_.at(slot);
  try {
    return TakeIn(line, columns, holder, stored);
  } catch (const InputFault& fault) {
    throw RefusedCell(InWords(fault, columns.words), WordOf(fault, columns.words));
  }
}

std::int32_t TenantImportCards::TakeIn(const ImportLine& line, const Slot& slot,
                                       std::int32_t holder, StoredAlready stored) {
  const std::string_view number = line.Trimmed(slot.first + card_column::kNumber);
  if (number.empty()) {
    const std::string_view entry = line.Trimmed(slot.entry);
    return entry.empty() ? 0 : TakeListed(entry, holder);
  }
  RequireNoSeparators(card_field::kFirst, number);
  if (!IsWholeNumber(number)) {
    // What the controller says of it would name neither the cell nor its column.
    throw InputFault(card_field::kFirst, number,
                     "{field} '{value}' is no whole number: write it in digits alone");
  }
  const std::string_view door = line.Trimmed(slot.door);
  if (const Card* known = Find(line, slot)) {
    if (stored == StoredAlready::kRefused) {
      throw InputFault(card_field::kFirst, number, "{field} '{value}' is stored already");
    }
    RequireFree(*known, number, holder, card_field::kFirst);
    if (stored == StoredAlready::kChanged && !door.empty()) {
      Card changed = *known;
      OpenDoor(changed, door);
    }
    return known->rid;
  }
  const Card& issued = Issue(line, slot);
  if (!door.empty()) {
    OpenDoor(issued_.back(), door);
  }
  return issued.rid;
}

std::int32_t TenantImportCards::TakeListed(std::string_view entry, std::int32_t holder) const {
  const std::size_t dash = std::min(entry.rfind('-'), entry.size() - 1);
  const auto same = byNumber_.find(WholeNumber(entry.substr(dash + 1)).value_or(0));
  const Card* found = nullptr;
  if (same != byNumber_.end()) {
    for (const Card& card : same->second) {
      if (qorcred::CompareIgnoringCase(CardEntry(card.type, std::to_string(card.number)), entry) !=
          0) {
        continue;
      }
      if (found != nullptr) {
        throw InputFault(card_field::kCredential, entry,
                         "{field}: several credentials are listed as '{value}': say the type, the "
                         "number and the facility code in columns of their own");
      }
      found = &card;
    }
  }
  if (found == nullptr) {
    throw InputFault(
        card_field::kCredential, entry,
        "{field}: the unit has no credential '{value}': one that is to be issued needs "
        "its type and number in columns of their own");
  }
  RequireFree(*found, entry, holder, card_field::kCredential);
  return found->rid;
}

/// The stored card that the cells mean; null when there is none.
const TenantImportCards::Card* TenantImportCards::Find(const ImportLine& line,
                                                       const Slot& slot) const {
  const std::string_view number = line.Trimmed(slot.first + card_column::kNumber);
  std::string type(line.Trimmed(slot.first + card_column::kType));
  type = type.empty() ? defaults_.type.value_or("") : type;
  const CredentialTypeWords* words = FindCredentialType(CredentialTypes(), type);
  const auto same = byNumber_.find(WholeNumber(number).value_or(0));
  if (same == byNumber_.end() || (words == nullptr && !type.empty())) {
    return nullptr;
  }
  constexpr std::int32_t kAnyType = -1;
  const Card* found = nullptr;
  for (const Card& card : same->second) {
    if (!Fits(card, line, slot, words == nullptr ? kAnyType : words->type)) {
      continue;
    }
    if (found != nullptr) {
      throw InputFault(card_field::kFirst, number,
                       "{field}: several credentials have the number '{value}': say the type and "
                       "the facility code, too");
    }
    found = &card;
  }
  return found;
}

/// Whether the card has what stands in the cells; what does not stand there may be anything.
bool TenantImportCards::Fits(const Card& card, const ImportLine& line, const Slot& slot,
                             std::int32_t type) const {
  if (type >= 0 && card.type != type) {
    return false;
  }
  std::string facility(line.Trimmed(slot.first + card_column::kFacility));
  facility = facility.empty() ? defaults_.facility.value_or("") : facility;
  if (desk_.takesFacilityCode() && !facility.empty() && WholeNumber(facility) != card.facility) {
    return false;
  }
  for (std::size_t at = 0; at < kOfTransmitter.size(); ++at) {
    const std::string_view given = line.Trimmed(slot.first + kOfTransmitter.at(at));
    if (card.type == qorcred::kTransmitter && !given.empty() &&
        WholeNumber(given) != card.ofTransmitter.at(at)) {
      return false;
    }
  }
  return true;
}

void TenantImportCards::RequireFree(const Card& card, std::string_view given, std::int32_t holder,
                                    std::string_view input) const {
  const auto held = holders_.find(card.rid);
  if (held != holders_.end() && holder != kAnyHolder && held->second.tenant != holder) {
    throw InputFault(
        input, given,
        fmt::format("{{field}} '{{value}}' is held by {}", InReason(held->second.described)));
  }
}

const TenantImportCards::Card& TenantImportCards::Issue(const ImportLine& line, const Slot& slot) {
  const std::string_view number = line.Trimmed(slot.first + card_column::kNumber);
  if (line.Trimmed(slot.first + card_column::kType).empty() && !defaults_.type) {
    throw InputFault(card_field::kType, "",
                     fmt::format("{{field}} is empty: no credential has the number '{}', and a new "
                                 "one needs a type: {}",
                                 InReason(number), EnteredNames(", ", " or ")));
  }
  desk_.screen().Restore(fresh_);
  EnterCredentials(desk_, ReadCredential(line, slot.first, desk_.takesFacilityCode(), defaults_));
  const IssuedCredentials saved = desk_.SaveNew();
  if (!saved.done()) {
    throw RefusedLine(WithoutFacts(saved), ColumnOfControl(desk_.screen().focused(), slot.first));
  }
  const ListModel& types = desk_.screen().List("cboCredentialType");
  const bool fourth = desk_.screen().Option("optButton4").on();
  issued_.push_back(
      {saved.lastRid,
       types.ItemData(types.selected()),
       static_cast<std::int32_t>(saved.first),
       NumberTyped(desk_, "txtFacilityCode"),
       {NumberTyped(desk_, "txtIDCode"), NumberTyped(desk_, "txtSequenceCode"), fourth ? 4 : 1},
       {}});
  return issued_.back();
}

void TenantImportCards::OpenDoor(Card& card, std::string_view given) {
  const std::int32_t door = DoorInCell(desk_.screen().List("cboActivate"), card.type, given);
  if (card.door != door) {
    WriteDoor(session_, unitKey_, card.rid, door);
    card.door = door;
  }
}

}  // namespace qorhost
