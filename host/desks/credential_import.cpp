#include "host/desks/credential_import.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/text.h"
#include "host/desks/card_door.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/credential_line.h"
#include "host/desks/credential_slots.h"
#include "host/desks/credential_types.h"
#include "host/desks/entry_index.h"
#include "host/desks/list_entries.h"
#include "host/desks/report_captions.h"
#include "host/files/import_file.h"

namespace qorhost {

namespace {

using credential_column::kType;

enum Column : std::size_t {
  kAssignedTo = credential_column::kCount,
  kRowId,
  kTenantRid,
  kDoor,
  kTenantId,
  kColumnCount
};

namespace card_caption = credential_caption;

constexpr std::array<ImportColumn, kColumnCount> kColumns{{
    {card_caption::kType, true, {}, "Type"},  // its help names the types
    {card_caption::kNumber, true, "the credential's number, 1 to 65535", "Number"},
    {card_caption::kFacility, false, "0 to 63 (Corvin 30-Bit Card) or 255; empty: 0", "Facility"},
    {card_caption::kIdCode, false, "of a transmitter, 0 to 26; of a card empty"},
    {card_caption::kSequence, false, "of a transmitter, 0 to 2; of a card empty", "Sequence"},
    {card_caption::kButton, false, "of a transmitter, 1 (also empty) or 4; of a card empty",
     "Button"},
    {card_caption::kAssignedTo, false,
     "a tenant's last name, first name and initial; Unassigned or empty: none", "Tenant"},
    {card_caption::kRid, false, "not looked at: new rows get identities of their own"},
    {card_caption::kTenantRid, false, "not looked at"},
    {"Door", false, "the door that a card opens, by number or name; empty or none: no door"},
    {"Tenant id", false, {}, {}, true},
}};

static_assert(credential_bound::kNumber == 65535 && credential_bound::kCorvinFacility == 63 &&
                  credential_bound::kFacility == 255 && credential_bound::kIdCode == 26 &&
                  credential_bound::kSequence == 2,
              "the columns' help says so");

class CredentialImport {
 public:
  CredentialImport(DeskSession& session, std::int32_t unitKey)
      : session_(session),
        desk_(session, unitKey, DeskScreen::kCredentials),
        tenants_(desk_.screen().List("cboAssignedTo"), placeholders::kInTenants),
        fresh_(desk_.screen().Snapshot()) {
    // The type stays chosen from line to line, with the controls that the screen shows for it.
    typeChosen_ = desk_.screen().List("cboCredentialType").OnSelect([this](std::int32_t) {
      fresh_ = desk_.screen().Snapshot();
    });
  }

  Outcome Enter(const ImportLine& line) {
    TypeAll(line);
    const IssuedCredentials issued = desk_.SaveNew();
    if (!issued.done()) {
      throw RefusedLine(WithoutFacts(issued), ColumnOfControl(desk_.screen().focused(), kType));
    }
    Outcome entered = WithoutFacts(issued);
    if (const std::optional<std::int32_t> tenant = FindTenant(line)) {
      entered = desk_.AssignIssued(issued, *tenant);
    }
    if (entered.done()) {
      OpenDoor(line, issued);
    }
    return entered;
  }

 private:
  void OpenDoor(const ImportLine& line, const IssuedCredentials& issued) {
    const std::string_view given = line.Trimmed(kDoor);
    if (given.empty()) {
      return;
    }
    const double type = FindCredentialType(EnteredTypes(), issued.type)->type;
    if (const std::int32_t door = DoorInCell(desk_.screen().List("cboActivate"), type, given)) {
      WriteDoor(session_, desk_.unitKey(), issued.RidOf(issued.first), door);
    }
  }

  /// The tenant's place in the list; nothing for nobody.
  [[nodiscard]] std::optional<std::int32_t> FindTenant(const ImportLine& line) {
    const std::string_view given = line.Trimmed(kAssignedTo);
    if (given.empty() || qorcred::CompareIgnoringCase(given, "Unassigned") == 0) {
      return std::nullopt;
    }
    const std::vector<std::int32_t> places = tenants_.Find(given);
    if (places.empty()) {
      throw InputFault(
          credential_field::kTenant, given,
          "{field} '{value}' is no tenant of this unit to whom the screen assigns credentials");
    }
    if (places.size() > 1) {
      throw InputFault(
          credential_field::kTenant, given,
          fmt::format("{} tenants are called '{{value}}': leave {{field}} empty and assign the "
                      "credential by the tenant's id afterwards",
                      places.size()));
    }
    RequireFreeSlot(places.front(), given);
    return places.front();
  }

  void RequireFreeSlot(std::int32_t tenant, std::string_view name) {
    const std::int32_t id = desk_.screen().List("cboAssignedTo").ItemData(tenant);
    const QueryResult slots = session_.sql().Select(
        fmt::format("SELECT TenantID FROM Tenants WHERE UnitKey={} AND TenantID={} AND {}",
                    desk_.unitKey(), id, kHoldsTwo));
    if (slots.rowCount > 0) {
      throw InputFault(credential_field::kTenant, name,
                       "{field} '{value}' has two credentials already");
    }
  }

  void TypeAll(const ImportLine& line) {
    desk_.screen().Restore(fresh_);
    EnterCredentials(desk_, ReadCredential(line, kType, desk_.takesFacilityCode()));
  }

  DeskSession& session_;
  CredentialDesk desk_;
  EntryIndex tenants_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
  Subscription typeChosen_;
};

}  // namespace

std::span<const ImportColumn> CredentialImportColumns() {
  static const std::string kTypes =
      EnteredNames(", ", " or ") + "; also " + EnteredWords(", ", ", ");
  static const auto kDescribed = [] {
    auto columns = kColumns;
    columns[kType].help = kTypes;
    return columns;
  }();
  return kDescribed;
}

ImportReport ImportCredentials(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                               const ImportRules& rules, const Progress& progress) {
  auto fields = CredentialFields(kType);
  std::vector<ColumnField> inputs(fields.begin(), fields.end());
  inputs.push_back({credential_field::kTenant, kAssignedTo});
  inputs.push_back({credential_field::kDoor, kDoor});
  const std::vector<FieldWord> words = WordsOf(file, inputs);
  ImportRun run(session, {{unitKey}, "import credentials", {}}, rules, words);
  CredentialImport entering(session, unitKey);
  return run.Run(
      file, [&entering](const ImportLine& line, ImportNotes&) { return entering.Enter(line); },
      progress);
}

}  // namespace qorhost
