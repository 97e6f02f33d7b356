#include "host/cli/credential_import.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/cli/credential_desk.h"
#include "host/cli/credential_entry.h"
#include "host/cli/display_text.h"
#include "host/cli/entry_index.h"
#include "host/cli/import_file.h"
#include "host/cli/import_words.h"

namespace qorhost {

namespace {

enum Column : std::size_t {
  kType,
  kNumber,
  kFacility,
  kIdCode,
  kSequence,
  kButton,
  kAssignedTo,
  kRid,
  kTenantRid,
  kColumnCount
};

constexpr std::array<ImportColumn, kColumnCount> kColumns{{
    {"Credential Type", true,
     "Corvin 30 Bit card, Standard 26 Bit card or Transmitter; also card30, card26, transmitter"},
    {"Card Number", true, "the credential's number, 1 to 65535"},
    {"Facility Code", false, "0 to 63 (Corvin 30 Bit card) or 255; empty: 0"},
    {"ID Code", false, "of a transmitter, 0 to 26; of a card empty"},
    {"Sequence Number", false, "of a transmitter, 0 to 2; of a card empty"},
    {"Button Number", false, "of a transmitter, 1 (also empty) or 4; of a card empty"},
    {"Assigned To", false,
     "a tenant's last name, first name and initial; Unassigned or empty: none"},
    {"RID", false, "not looked at: new rows get identities of their own"},
    {"Tenant RID", false, "not looked at"},
}};

/// The words that messages of the screen's entry begin with, and the column that each means here.
constexpr std::array kWords{
    EntryWord{"--start", kColumns[kNumber].heading},
    EntryWord{"--facility", kColumns[kFacility].heading},
    EntryWord{"--id-code", kColumns[kIdCode].heading},
    EntryWord{"--sequence", kColumns[kSequence].heading},
    EntryWord{"--button", kColumns[kButton].heading},
};

/// What a type is called: by the entry into the screen, and by reports, lists and people.
struct TypeName {
  std::string_view word;
  std::string_view name;
};
constexpr std::array kTypeNames{
    TypeName{"card30", "card30"},
    TypeName{"card30", "Corvin 30 Bit card"},
    TypeName{"card30", qorcred::kCredentialTypes[0].label},
    TypeName{"card26", "card26"},
    TypeName{"card26", "Standard 26 Bit card"},
    TypeName{"card26", qorcred::kCredentialTypes[1].label},
    TypeName{"transmitter", qorcred::kCredentialTypes[2].label},
};

constexpr std::int32_t kNobody = 1;  // "<Unassigned>" stands for no tenant

std::string ReadType(const ImportLine& line) {
  const std::string_view given = line.Trimmed(kType);
  for (const TypeName& type : kTypeNames) {
    if (qorcred::CompareIgnoringCase(given, type.name) == 0) {
      return std::string(type.word);
    }
  }
  throw UsageError(
      fmt::format("{} '{}' cannot be entered: the screen has Corvin 30 Bit card, "
                  "Standard 26 Bit card and Transmitter",
                  kColumns[kType].heading, given));
}

/// The text of a cell; nothing for an empty one.
std::optional<std::string> ReadText(const ImportLine& line, Column column) {
  const std::string_view given = line.Trimmed(column);
  return given.empty() ? std::nullopt : std::optional<std::string>(given);
}

/// What only transmitters have.
std::optional<std::string> ReadOfTransmitter(const ImportLine& line, Column column,
                                             std::string_view type) {
  std::optional<std::string> given = ReadText(line, column);
  if (given && type != "transmitter") {
    throw UsageError(fmt::format("{} '{}' must be left empty: only transmitters have one",
                                 kColumns[column].heading, *given));
  }
  return given;
}

class CredentialImport {
 public:
  CredentialImport(StoreSession& session, std::int32_t unitKey)
      : session_(session),
        desk_(session, unitKey, DeskScreen::kCredentials),
        tenants_(desk_.screen().List("cboAssignedTo"), kNobody),
        fresh_(desk_.screen().Snapshot()) {
    // The type stays chosen from line to line, with the controls that the screen shows for it.
    typeChosen_ = desk_.screen().List("cboCredentialType").OnSelect([this](std::int32_t) {
      fresh_ = desk_.screen().Snapshot();
    });
  }

  bool Enter(const ImportLine& line, ImportNotes&) {
    TypeAll(line);
    std::int32_t rid = 0;
    if (!WentWell(desk_.SaveNew(&rid), session_.log())) {
      return false;
    }
    const std::optional<std::int32_t> tenant = FindTenant(line);
    return !tenant || Assign(rid, *tenant);
  }

 private:
  /// The tenant's place in the list; nothing for nobody.
  [[nodiscard]] std::optional<std::int32_t> FindTenant(const ImportLine& line) {
    const std::string_view given = line.Trimmed(kAssignedTo);
    if (given.empty() || qorcred::CompareIgnoringCase(given, "Unassigned") == 0) {
      return std::nullopt;
    }
    const std::vector<std::int32_t> places = tenants_.Find(given);
    if (places.empty()) {
      throw UsageError(
          fmt::format("{} '{}' is no tenant of this unit to whom the screen assigns credentials",
                      kColumns[kAssignedTo].heading, given));
    }
    if (places.size() > 1) {
      throw UsageError(
          fmt::format("{} tenants are called '{}': leave {} empty and assign the "
                      "credential by the tenant's id with 'credentials assign'",
                      places.size(), given, kColumns[kAssignedTo].heading));
    }
    RequireFreeSlot(places.front(), given);
    return places.front();
  }

  /// The controller would take the first credential from a tenant who has two.
  void RequireFreeSlot(std::int32_t tenant, std::string_view name) {
    const std::int32_t id = desk_.screen().List("cboAssignedTo").ItemData(tenant);
    const QueryResult slots = session_.sql().Select(
        fmt::format("SELECT TenantID FROM Tenants WHERE UnitKey={} AND TenantID={} AND "
                    "CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL",
                    desk_.unitKey(), id));
    if (slots.rowCount > 0) {
      throw UsageError(
          fmt::format("{} '{}' has two credentials already", kColumns[kAssignedTo].heading, name));
    }
  }

  void TypeAll(const ImportLine& line) {
    desk_.screen().Restore(fresh_);
    AddOptions entry;
    entry.type = ReadType(line);
    entry.start = line.Trimmed(kNumber);
    entry.facility = ReadFacility(line);
    entry.idCode = ReadOfTransmitter(line, kIdCode, entry.type);
    entry.sequence = ReadOfTransmitter(line, kSequence, entry.type);
    entry.button = ReadOfTransmitter(line, kButton, entry.type);
    try {
      EnterCredential(desk_, entry);
    } catch (const UsageError& error) {
      throw UsageError(InColumnWords(error.what(), kWords));
    }
  }

  /// A unit that ignores facility codes stores 0, and reports show it.
  [[nodiscard]] std::optional<std::string> ReadFacility(const ImportLine& line) {
    std::optional<std::string> given = ReadText(line, kFacility);
    if (!given || desk_.takesFacilityCode()) {
      return given;
    }
    if (given->find_first_not_of('0') != std::string::npos) {
      throw UsageError(fmt::format("{} '{}' must be left empty: this unit ignores facility codes",
                                   kColumns[kFacility].heading, *given));
    }
    return std::nullopt;
  }

  /// Puts the new credential into the list, as filling the list again would, and works on it there.
  bool Assign(std::int32_t rid, std::int32_t tenant) {
    ListModel& list = desk_.screen().List("cboCredentials");
    const std::int32_t index = list.AddItemWithData(
        fmt::format("{}-{}", desk_.screen().List("cboCredentialType").SelectedText(),
                    desk_.screen().Box("txtPINStart").text()),
        rid);
    desk_.SelectCredential(index);
    desk_.screen().List("cboAssignedTo").Select(tenant);
    return desk_.SaveEdited();
  }

  StoreSession& session_;
  CredentialDesk desk_;
  EntryIndex tenants_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
  Subscription typeChosen_;
};

constexpr ImportedKind kKind{"credential", "credentials"};

}  // namespace

ExitStatus RunCredentialImport(const GlobalOptions& global, const ImportOptions& options,
                               Console& console) {
  return RunImport<CredentialImport>(global, options, console, kColumns, kKind);
}

}  // namespace qorhost
