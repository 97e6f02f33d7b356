#include "host/cli/credential_commands.h"

#include <fmt/format.h>

#include <memory>

#include "frame/convert.h"
#include "frame/schema.h"
#include "frame/text.h"
#include "host/cli/arguments.h"
#include "host/cli/credential_desk.h"
#include "host/cli/credential_entry.h"
#include "host/cli/credential_list.h"
#include "host/cli/display_text.h"
#include "host/cli/progress.h"
#include "host/cli/table.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::int32_t kAddNewEntry = 1;   // "<Add New>" stands for no row
constexpr std::int32_t kUnassigned = 1;    // "<Unassigned>" stands for no tenant
constexpr std::int64_t kWorthABar = 1000;  // credentials from which a save takes noticeable time

ExitStatus Status(bool succeeded, StoreSession& session, Console& console) {
  return OutcomeOf(succeeded, session.log(), console.err);
}

/// "Transmitter-301 (RID 17)"
std::string CredentialName(CredentialDesk& desk, std::int32_t index) {
  const ListBox& list = desk.screen().List("cboCredentials");
  return fmt::format("{} (RID {})", list.Text(index), list.ItemData(index));
}

/// Finds a credential in the list and loads it into the edit controls.
std::int32_t SelectCredential(CredentialDesk& desk, const std::string& credential) {
  const std::int32_t index =
      FindEntry(desk.screen().List("cboCredentials"), credential, "credential", kAddNewEntry);
  if (index < kAddNewEntry) {
    throw UsageError(
        "name a credential by its RID or as in 'Transmitter-301': 'qorhost "
        "credentials list' shows them");
  }
  desk.SelectCredential(index);
  return index;
}

/// The selected tenant's name; empty when none is selected.
std::string AssignedName(CredentialDesk& desk) {
  const ListBox& tenants = desk.screen().List("cboAssignedTo");
  return tenants.selected() < kUnassigned
             ? std::string()
             : std::string(qorcred::Trim(tenants.Text(tenants.selected())));
}

std::string AssignmentText(CredentialDesk& desk) {
  const std::string tenant = AssignedName(desk);
  return tenant.empty() ? "assigned to nobody" : "assigned to " + Displayable(tenant);
}

/// Runs the save under a progress bar when a person watches and it takes a while.
bool SaveWatched(StoreSession& session, CredentialDesk& desk, Console& console,
                 std::int32_t* lastRid) {
  const auto numbers = ReadEntered(desk.screen());
  const std::int64_t count = numbers ? numbers->Count() : 0;
  if (!console.environment.errorIsTerminal || session.traced() || count < kWorthABar) {
    return desk.SaveNew(lastRid);
  }
  // The bar starts with the first row: before it, a question or a refusal may want the line.
  std::unique_ptr<ProgressBar> bar;
  session.OnInsert([&](std::string_view table) {
    if (!qorcred::SameMember(table, qorcred::table::CREDENTIALBANK)) {
      return;
    }
    if (bar == nullptr) {
      bar = std::make_unique<ProgressBar>(console.err, count);
    }
    bar->Advance();
  });
  const bool saved = desk.SaveNew(lastRid);
  session.OnInsert(nullptr);
  return saved;
}

void ReportIssued(CredentialDesk& desk, const AddOptions& options, std::int32_t lastRid,
                  bool asJson, Console& console) {
  HeadlessScreen& screen = desk.screen();
  const std::string type = screen.List("cboCredentialType").SelectedText();
  const std::string tenants = qorcred::TextOrEmpty(screen.Variable("gstrNewTenantIDs"));
  // The save left both boxes filled, with numbers that it accepted.
  const EnteredNumbers numbers = ReadEntered(screen).value_or(EnteredNumbers{});
  const std::int64_t count = numbers.Count();
  if (asJson) {
    PrintJsonObject(console.out, {{"issued", static_cast<double>(count)},
                                  {"type", type},
                                  {"first", static_cast<double>(numbers.first)},
                                  {"last", static_cast<double>(numbers.last)},
                                  {"last_rid", lastRid},
                                  {"new_tenant_ids",
                                   options.withTenants ? Value(tenants) : Value(qorcred::Null{})}});
    return;
  }
  console.out << (count == 1 ? fmt::format("Issued {} {} (RID {}).\n", type, numbers.first, lastRid)
                             : fmt::format("Issued {} credentials: {} {} to {} (last RID {}).\n",
                                           count, type, numbers.first, numbers.last, lastRid));
  if (options.withTenants) {
    console.out << fmt::format("Created {} {}, ready to be named; their steps are queued.\n", count,
                               count == 1 ? "tenant" : "tenants");
  }
}

/// After a refusal on the way: where the credential is now, because it left its tenant already.
void ReportHolder(CredentialDesk& desk, std::int32_t rid, Console& console) {
  desk.RefreshCredentials(rid);
  console.err << fmt::format("qorhost: {} is {} now.\n",
                             CredentialName(desk, desk.screen().List("cboCredentials").selected()),
                             AssignmentText(desk));
}

}  // namespace

ExitStatus RunList(const GlobalOptions& global, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  CredentialDesk desk(session, session.ChosenUnit().key, DeskScreen::kCredentials);
  PrintRows(console.out, CredentialTable(session, desk), global.json);
  return ExitStatus::kDone;
}

ExitStatus RunAdd(const GlobalOptions& global, const AddOptions& options, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  CredentialDesk desk(session, session.ChosenUnit().key,
                      options.withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
  EnterCredential(desk, options);

  std::int32_t lastRid = 0;
  const bool saved = SaveWatched(session, desk, console, &lastRid);
  const ExitStatus status = Status(saved, session, console);
  if (saved) {
    ReportIssued(desk, options, lastRid, global.json, console);
  }
  return status;
}

ExitStatus RunEdit(const GlobalOptions& global, const EditOptions& options, Console& console) {
  if (!options.door && !options.tenant && !options.release) {
    throw UsageError("say what to change: --door, --tenant or --release");
  }
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  CredentialDesk desk(session, session.ChosenUnit().key, DeskScreen::kCredentials);
  const std::int32_t index = SelectCredential(desk, options.credential);
  const std::int32_t rid = desk.screen().List("cboCredentials").ItemData(index);
  ListBox& doors = desk.screen().List("cboActivate");
  if (options.door) {
    if (!doors.visible()) {
      throw UsageError("leave --door out: only cards have a door");
    }
    doors.Select(FindDoor(doors, *options.door));
  }
  ListBox& tenants = desk.screen().List("cboAssignedTo");
  if (options.tenant) {
    tenants.Select(FindEntry(tenants, *options.tenant, "tenant", kUnassigned));
  } else if (options.release) {
    tenants.Select(0);
  }

  const ExitStatus status = Status(desk.SaveEdited(), session, console);
  if (status == ExitStatus::kRefused) {
    ReportHolder(desk, rid, console);
  } else if (status == ExitStatus::kDone) {
    const std::string door =
        doors.visible() ? fmt::format("door {}, ", Displayable(doors.SelectedText())) : "";
    console.out << fmt::format("{}: {}{}.\n", CredentialName(desk, index), door,
                               AssignmentText(desk));
  }
  return status;
}

ExitStatus RunRenumber(const GlobalOptions& global, const RenumberOptions& options,
                       Console& console) {
  const std::int32_t number = ReadLong("the new number", options.number);
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  CredentialDesk desk(session, session.ChosenUnit().key, DeskScreen::kCredentials);
  const std::int32_t index = SelectCredential(desk, options.credential);
  const std::string before = desk.screen().List("cboCredentials").Text(index);
  const bool renumbered = desk.Renumber(number);
  const bool silent = session.log().refusals == 0 && session.log().failures.empty();
  const ExitStatus status = Status(renumbered, session, console);
  if (renumbered) {
    console.out << fmt::format("{} is {} now.\n", before, CredentialName(desk, index));
  } else if (silent) {
    console.err << "qorhost: nothing was changed: someone else has changed or deleted the "
                   "credential meanwhile. Try again.\n";
  }
  return status;
}

ExitStatus RunDelete(const GlobalOptions& global, const std::string& credential, Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  CredentialDesk desk(session, session.ChosenUnit().key, DeskScreen::kCredentials);
  const std::int32_t index = SelectCredential(desk, credential);
  const std::string name = CredentialName(desk, index);
  const bool deleted = desk.Delete(desk.screen().List("cboCredentials").ItemData(index));
  const ExitStatus status = Status(deleted, session, console);
  if (status == ExitStatus::kDone) {
    console.out << fmt::format("Deleted {}.\n", name);
  } else if (!deleted) {
    console.err << fmt::format("qorhost: {} was not deleted.\n", name);
  }
  return status;
}

}  // namespace qorhost
