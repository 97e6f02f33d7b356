#include "host/cli/credential_command_line.h"

#include <fmt/format.h>

#include <array>
#include <string>

#include "host/cli/list_command_line.h"
#include "host/desks/credential_import.h"
#include "host/desks/credential_types.h"

namespace qorhost {

namespace {

constexpr const char* kCredential =
    "The number on it, the entry of the list as in Transmitter-301, or its row as in rid:17";

constexpr FieldWord kChosenCredential{credential_field::kCredential, "",
                                      "'qorhost credentials list' shows them"};
constexpr std::array kAddWords{
    FieldWord{credential_field::kType, "--type", {}},
    FieldWord{credential_field::kFirst, "--start", {}},
    FieldWord{credential_field::kLast, "--end", {}},
    FieldWord{credential_field::kFacility, "--facility", {}},
    FieldWord{credential_field::kIdCode, "--id-code", {}},
    FieldWord{credential_field::kSequence, "--sequence", {}},
    FieldWord{credential_field::kButton, "--button", {}},
    FieldWord{credential_field::kNewTenants, "--with-tenants", {}},
    FieldWord{credential_field::kSchedules, "--schedules", {}},
    FieldWord{credential_field::kStart, "--from", {}},
    FieldWord{credential_field::kEnd, "--to", {}},
};
constexpr std::array kEditWords{
    kChosenCredential, FieldWord{credential_field::kDoor, "--door", "'qorhost doors' lists them"},
    FieldWord{credential_field::kTenant, "--tenant", {}}};
constexpr std::array kAssignWords{kChosenCredential, FieldWord{credential_field::kTenant, "", {}}};
constexpr std::array kRenumberWords{kChosenCredential,
                                    FieldWord{credential_field::kNewNumber, "the new number", {}}};
constexpr std::array kReplaceWords{kChosenCredential,
                                   FieldWord{credential_field::kNewNumber, "NEW", {}}};
constexpr std::array kDeleteWords{kChosenCredential};

void DescribeAdd(CommandPlace credentials, const GlobalOptions& global,
                 CredentialAddOptions& options) {
  auto* command = AddCommand(
      credentials, "add", "Issue a credential or a range of them",
      "  qorhost credentials add --unit 2 --type card26 --start 500 --facility 7\n"
      "  qorhost credentials add --unit 2 --type transmitter --start 1 --end 20 --facility 7 \\\n"
      "      --id-code 3 --sequence 1 --button 4\n"
      "  qorhost credentials add --unit 2 --type card30 --start 1 --end 10 --facility 7 \\\n"
      "      --with-tenants --schedules \"Full Access,Late Shift,1,0\" --to 2027-12-31",
      [&](Console& console) { return RunCredentialAdd(global, options, console); }, kAddWords);
  const auto text = [command](const char* name, auto& target, const std::string& type,
                              const std::string& description) {
    return command->add_option(name, target, description)->type_name(type);
  };
  NewCredentials& entry = options.entry;
  text("--type", entry.type, EnteredWords("|", "|"), "The kind of credential")->required();
  namespace bound = credential_bound;
  text("--start", entry.first, "N",
       fmt::format("The credential's number, 1 to {}, or the first of a range", bound::kNumber))
      ->required();
  text("--end", entry.last, "N",
       fmt::format("The last number of a range, up to {}", bound::kNumber));
  text("--facility", entry.facility, "F",
       fmt::format("Facility code, 0 to {}, of a card30 to {} (0)", bound::kFacility,
                   bound::kCorvinFacility));
  text("--id-code", entry.idCode, "N",
       fmt::format("ID code of a transmitter, 0 to {}", bound::kIdCode));
  text("--sequence", entry.sequence, "N",
       fmt::format("Sequence code of a transmitter, 0 to {}", bound::kSequence));
  text("--button", entry.button, "1|4", "Button of a transmitter (1)");
  command->add_flag("--with-tenants", entry.withTenants, "Create a tenant for every credential");
  text("--schedules", entry.schedules, "A,B,C,D",
       "The new tenants' schedules at the four doors, by id or name (Full Access)");
  text("--from", entry.from, "DATE", "First day of the new tenants");
  text("--to", entry.to, "DATE", "Last day of the new tenants");
  DescribeTrial(*command, options.trial);
}

/// The last word of `assign` is the tenant.
void TakeTenantFromEnd(CredentialEditOptions& options) {
  if (!options.change.release && options.credentials.size() > 1) {
    options.change.tenant = options.credentials.back();
    options.credentials.pop_back();
  }
}

void DescribeEdit(CommandPlace credentials, const GlobalOptions& global,
                  CredentialEditOptions& options) {
  const auto run = [&](Console& console) { return RunCredentialEdit(global, options, console); };
  CredentialChange& change = options.change;
  auto* edit =
      AddCommand(credentials, "edit", "Change the door or tenant of credentials, of all or of none",
                 "  qorhost credentials edit 301 --unit 2 --tenant 42\n"
                 "  qorhost credentials edit \"Standard 26-Bit Card-500\" --unit 2 --door Garage",
                 run, kEditWords);
  edit->add_option("CREDENTIAL", options.credentials, kCredential)->required();
  edit->add_option("--door", change.door, "The door that a card opens: number, name or none")
      ->type_name("DOOR");
  auto* tenant = edit->add_option("--tenant", change.tenant, "Assign to this tenant: id or name")
                     ->type_name("TENANT");
  edit->add_flag("--release", change.release, "Take it from its tenant")->excludes(tenant);
  DescribeTrial(*edit, options.trial);

  auto* assign = AddCommand(
      credentials, "assign", "Assign credentials to a tenant; asks when somebody loses one by it",
      "  qorhost credentials assign 301 42 --unit 2\n"
      "  qorhost credentials assign Transmitter-301 20031 \"Abel Karin T\" --unit 2\n"
      "  qorhost credentials assign rid:17 --release --unit 2",
      [&global, &options](Console& console) {
        TakeTenantFromEnd(options);
        return RunCredentialEdit(global, options, console);
      },
      kAssignWords);
  assign
      ->add_option("CREDENTIAL", options.credentials,
                   std::string(kCredential) + "; behind the last one the tenant's id or name")
      ->required();
  assign->add_flag("--release", change.release, "Take them from their tenants; name no tenant");
  DescribeTrial(*assign, options.trial);
}

void DescribeReplace(CommandPlace credentials, const GlobalOptions& global,
                     CredentialReplaceOptions& options) {
  auto* replace = AddCommand(
      credentials, "replace", "Put a credential in the place of a lost one",
      "  qorhost credentials replace \"Standard 26-Bit Card-20001\" 20900 --unit 2\n"
      "  qorhost credentials replace rid:17 rid:42 --keep-old --unit 2",
      [&](Console& console) { return RunCredentialReplace(global, options, console); },
      kReplaceWords);
  replace->add_option("OLD", options.replacement.lost, kCredential)->required();
  replace
      ->add_option("NEW", options.replacement.successor,
                   "The same, held by nobody; a number that no credential like OLD has is issued")
      ->required();
  replace->add_flag("--keep-old", options.replacement.keepLost,
                    "Leave OLD stored, held by nobody, instead of deleting it");
  DescribeTrial(*replace, options.trial);
}

void DescribeRest(CommandPlace credentials, const GlobalOptions& global, CredentialChoice& choice) {
  auto* renumber = AddCommand(
      credentials, "renumber", "Give a credential another number",
      "  qorhost credentials renumber 301 1234 --unit 2",
      [&](Console& console) { return RunCredentialRenumber(global, choice.renumber, console); },
      kRenumberWords);
  renumber->add_option("CREDENTIAL", choice.renumber.credential, kCredential)->required();
  renumber
      ->add_option("NUMBER", choice.renumber.number,
                   fmt::format("The new number, 1 to {}", credential_bound::kNumber))
      ->required();
  DescribeTrial(*renumber, choice.renumber.trial);

  auto* remove = AddCommand(
      credentials, "delete", "Delete credentials, all or none; asks when a tenant holds one",
      "  qorhost credentials delete 301 --unit 2 --yes\n"
      "  qorhost credentials delete 301 302 rid:17 --unit 2 --dry-run",
      [&](Console& console) { return RunCredentialDelete(global, choice.toDelete, console); },
      kDeleteWords);
  remove->add_option("CREDENTIAL", choice.toDelete.credentials, kCredential)->required();
  DescribeTrial(*remove, choice.toDelete.trial);

  DescribeImport(credentials, "Issue the credentials of a CSV file",
                 "  qorhost credentials import cards.csv --unit 2 --dry-run\n"
                 "  qorhost credentials import --columns",
                 global, choice.imported,
                 {CredentialImportColumns(), ImportCredentials, "credential", "credentials"});
}

}  // namespace

void DescribeCredentials(CommandPlace place, const GlobalOptions& global,
                         CredentialChoice& choice) {
  const CommandPlace credentials =
      AddGroup(place, "credentials", "List, issue, change and delete credentials",
               "  qorhost credentials list\n  qorhost credentials add --help");
  auto* list = AddCommand(
      credentials, "list", "List a unit's credentials",
      "  qorhost credentials list --unit 2\n"
      "  qorhost credentials list --where \"type = card26\" --where \"tenant =\" --all-units\n"
      "  qorhost credentials list --sort -number --columns number,tenant --limit 10",
      [&](Console& console) { return RunCredentialList(global, choice.list, console); },
      kListWords);
  DescribeListOptions(*list, choice.list);
  DescribeAdd(credentials, global, choice.add);
  DescribeEdit(credentials, global, choice.edit);
  DescribeReplace(credentials, global, choice.replace);
  DescribeRest(credentials, global, choice);
}

}  // namespace qorhost
