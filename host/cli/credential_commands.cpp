#include "host/cli/credential_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/cli/change_report.h"
#include "host/cli/progress.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_list.h"
#include "host/desks/credential_series.h"
#include "host/desks/list_entries.h"
#include "host/desks/words.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

using qorcred::Value;

/// "Transmitter-301 (RID 17)"
std::string NameOf(const ShownCredential& credential) {
  return WithRid(Displayable(credential.entry), credential.rid);
}

std::string AssignmentText(const ShownCredential& credential) {
  return credential.tenant.empty() ? "assigned to nobody"
                                   : "assigned to " + Displayable(credential.tenant);
}

constexpr std::string_view kCredentialType = "credential";

TouchedThing Thing(std::int32_t rid, const std::string& entry) {
  return {kCredentialType, rid, entry};
}

Value TextOrNull(const std::string& text) {
  return text.empty() ? Value(qorcred::Null{}) : Value(text);
}

ChangeReport ReportOnIssued(const IssuedCredentials& issued, const UnitName& unit) {
  ChangeReport report;
  report.unit = unit.key;
  report.stored = true;
  for (std::int64_t number = issued.first; number <= issued.last; ++number) {
    report.added.push_back(Thing(issued.RidOf(number), issued.EntryOf(number)));
  }
  report.facts.Add("type", issued.type)
      .Add("first", static_cast<double>(issued.first))
      .Add("last", static_cast<double>(issued.last))
      .Add("new_tenant_ids", issued.NewTenants());
  return report;
}

Value DoorOf(const ShownCredential& credential) {
  const bool hasDoor = credential.door && *credential.door != kNoneEntry;
  return hasDoor ? Value(*credential.door) : Value(qorcred::Null{});
}

Value TenantOf(const ShownCredential& credential) {
  return TextOrNull(credential.tenant);
}

/// What all of them have; Null for nothing, and where they differ.
Value OfAll(const std::vector<EditedCredential>& edited, Value (*of)(const ShownCredential&)) {
  const Value first = of(edited.front().changed.credential);
  const bool alike = std::all_of(edited.begin(), edited.end(), [&](const EditedCredential& one) {
    return of(one.changed.credential) == first;
  });
  return alike ? first : Value(qorcred::Null{});
}

/// What an edit or an assignment has made of the credentials.
ChangeReport ReportOnEdited(const std::vector<EditedCredential>& edited, const UnitName& unit) {
  ChangeReport report;
  report.unit = unit.key;
  qorcred::StringArray takenFrom;
  qorcred::StringArray replaced;
  for (const auto& [changed, losses] : edited) {
    if (!changed.unchanged) {
      report.changed.push_back(Thing(changed.credential.rid, changed.credential.entry));
    }
    takenFrom.insert(takenFrom.end(), losses.holders.begin(), losses.holders.end());
    if (!losses.replaced.empty()) {
      replaced.push_back(losses.replaced);
    }
  }
  report.stored = !report.changed.empty();
  report.facts.Add("door", OfAll(edited, DoorOf))
      .Add("tenant", OfAll(edited, TenantOf))
      .Add("taken_from", takenFrom)
      .Add("replaced", replaced);
  return report;
}

ChangeReport ReportOnRenumbered(const ShownCredential& before, const ChangedCredential& renumbered,
                                const UnitName& unit) {
  ChangeReport report;
  report.unit = unit.key;
  report.stored = !renumbered.unchanged;
  if (report.stored) {
    report.changed.push_back(Thing(renumbered.credential.rid, renumbered.credential.entry));
  }
  report.facts.Add("before", before.entry);
  return report;
}

ChangeReport ReportOnDeleted(const std::vector<ShownCredential>& deleted, const UnitName& unit) {
  ChangeReport report;
  report.unit = unit.key;
  report.stored = true;
  for (const ShownCredential& one : deleted) {
    report.deleted.push_back(Thing(one.rid, one.entry));
  }
  return report;
}

void PrintIssued(const IssuedCredentials& issued, const UnitName& unit, bool withTenants,
                 Console& console) {
  const std::int64_t count = issued.Count();
  console.Remarks() << (count == 1
                            ? fmt::format("Issued {} {} {}.\n", issued.type,
                                          WithRid(std::to_string(issued.first), issued.lastRid),
                                          InUnit(unit))
                            : fmt::format("Issued {} credentials: {} {} to {} (last RID {}) {}.\n",
                                          count, issued.type, issued.first, issued.last,
                                          issued.lastRid, InUnit(unit)));
  if (withTenants) {
    console.Remarks() << fmt::format("Created {}, ready to be named; their steps are queued.\n",
                                     Counted(static_cast<std::size_t>(count), "tenant", "tenants"));
  }
}

void PrintLosses(const AssignmentLosses& losses, Console& console) {
  if (!losses.holders.empty()) {
    console.Remarks() << fmt::format("Without it now: {}.\n", AllNames(losses.holders));
  }
  if (!losses.replaced.empty()) {
    console.Remarks() << fmt::format("Taken from the tenant: {}.\n", Displayable(losses.replaced));
  }
}

void PrintEdited(const EditedCredential& edited, const UnitName& unit, Console& console) {
  const ShownCredential& now = edited.changed.credential;
  const std::string door = now.door ? fmt::format("door {}, ", Displayable(*now.door)) : "";
  console.Remarks() << fmt::format(
      "{} {}: {}{}{}.\n", NameOf(now), InUnit(unit), door, AssignmentText(now),
      edited.changed.unchanged ? ", as before; nothing was changed" : "");
  PrintLosses(edited.losses, console);
}

void PrintRenumbered(const ShownCredential& before, const ChangedCredential& renumbered,
                     const UnitName& unit, Console& console) {
  if (renumbered.unchanged) {
    console.Remarks() << fmt::format("{} {}, has that number already; nothing was changed.\n",
                                     NameOf(before), InUnit(unit));
    return;
  }
  console.Remarks() << fmt::format("{} is {} now, {}.\n", Displayable(before.entry),
                                   NameOf(renumbered.credential), InUnit(unit));
}

std::string NameOf(const NamedCredential& credential) {
  return WithRid(Displayable(credential.entry), credential.rid);
}

void PrintReplacedAsJson(const ReplacedCredential& replaced,
                         const CredentialReplaceOptions& options, const UnitName& unit,
                         Console& console) {
  ChangeReport report;
  report.unit = unit.key;
  report.trial = options.trial;
  report.stored = !options.trial;
  TouchedThing successor = Thing(replaced.successor.rid, replaced.successor.entry);
  if (replaced.issued && options.trial) {
    successor.id = qorcred::Null{};  // its row gets another identity later
  }
  (replaced.issued ? report.added : report.changed).push_back(std::move(successor));
  (options.replacement.keepLost ? report.changed : report.deleted)
      .push_back(Thing(replaced.lost.rid, replaced.lost.entry));
  report.facts.Add("lost", replaced.lost.entry)
      .Add("successor", replaced.successor.entry)
      .Add("holder", TextOrNull(replaced.holder));
  PrintChange(console.out, report);
}

void PrintReplaced(const ReplacedCredential& replaced, const CredentialReplaceOptions& options,
                   const UnitName& unit, Console& console) {
  std::ostream& told = options.trial ? console.out : console.Remarks();
  const std::string successor = replaced.issued && options.trial
                                    ? Displayable(replaced.successor.entry)
                                    : NameOf(replaced.successor);
  told << fmt::format("{} {} replaced by {}{}, {}.\n", NameOf(replaced.lost),
                      options.trial ? "would be" : "is", replaced.issued ? "the new " : "",
                      successor, InUnit(unit));
  told << (replaced.holder.empty()
               ? "Nobody held it.\n"
               : fmt::format("Holder: {}, whose step {} queued.\n", Displayable(replaced.holder),
                             options.trial ? "would be" : "is"));
  const std::string_view lost = options.replacement.keepLost ? "stays, held by nobody"
                                : options.trial              ? "would be deleted"
                                                             : "is deleted";
  told << fmt::format("The old one {}.{}\n", lost, options.trial ? " Nothing was changed." : "");
}

/// Tells what became of the credentials, whether it was done or only tried.
void TellEdited(CommandSession& session, const Outcome& outcome,
                const std::vector<EditedCredential>& edited, const UnitName& unit,
                Console& console) {
  session.TellDone(
      outcome, [&] { return ReportOnEdited(edited, unit); },
      [&] {
        for (const EditedCredential& one : edited) {
          PrintEdited(one, unit, console);
        }
      });
}

void TellDeleted(CommandSession& session, const Outcome& outcome,
                 const std::vector<ShownCredential>& deleted, const UnitName& unit,
                 Console& console) {
  session.TellDone(
      outcome, [&] { return ReportOnDeleted(deleted, unit); },
      [&] {
        for (const ShownCredential& one : deleted) {
          console.Remarks() << fmt::format("Deleted {} {}.\n", NameOf(one), InUnit(unit));
        }
      });
}

ExitStatus EditOne(CommandSession& session, const UnitName& unit,
                   const CredentialEditOptions& options, Console& console) {
  CredentialDesk desk(session.desks(), unit.key, DeskScreen::kCredentials);
  (void)desk.Select(options.credentials.front());
  EnterChange(desk, options.change);
  const AssignmentLosses losses = desk.LossesOfSaving();
  const ShownCredential before = desk.Shown();
  if (const auto question = QuestionOf(losses, WithRid(before.entry, before.rid), before.tenant)) {
    session.RequireConsent(*question);
  }
  const ChangedCredential changed = desk.SaveEdited();
  const ExitStatus status = TellChange(changed, "credential", console);
  if (changed.ending == Ending::kRefused) {
    const ShownCredential& now = changed.credential;
    console.err << fmt::format("qorhost: {} is {} now, {}.\n", NameOf(now), AssignmentText(now),
                               InUnit(unit));
  }
  TellEdited(session, changed, {{changed, losses}}, unit, console);
  return status;
}

ExitStatus EditSeveral(CommandSession& session, const UnitName& unit,
                       const CredentialEditOptions& options, Console& console) {
  std::vector<EditedCredential> edited;
  const SeveralOutcome outcome = EditCredentials(session.desks(), unit.key, options.credentials,
                                                 options.change, session.Asking(), edited);
  const ExitStatus status = TellSeveral(outcome, "credentials", console);
  TellEdited(session, outcome, edited, unit, console);
  return status;
}

ExitStatus DeleteCredential(CommandSession& session, const UnitName& unit,
                            const std::string& credential, Console& console) {
  CredentialDesk desk(session.desks(), unit.key, DeskScreen::kCredentials);
  const ShownCredential chosen = desk.Select(credential);
  session.RequireDeletion();
  const Outcome deleted = desk.Delete();
  const ExitStatus status = TellChange(deleted, "credential", console);
  if (!deleted.done()) {
    console.err << fmt::format("qorhost: {} was not deleted {}.\n", NameOf(chosen), InUnit(unit));
  }
  TellDeleted(session, deleted, {chosen}, unit, console);
  return status;
}

ExitStatus DeleteSeveral(CommandSession& session, const UnitName& unit,
                         const CredentialDeleteOptions& options, Console& console) {
  session.RequireDeletion();
  std::vector<ShownCredential> deleted;
  const SeveralOutcome outcome =
      DeleteCredentials(session.desks(), unit.key, options.credentials, session.Asking(), deleted);
  const ExitStatus status = TellSeveral(outcome, "credentials", console);
  TellDeleted(session, outcome, deleted, unit, console);
  return status;
}

}  // namespace

ExitStatus RunCredentialList(const GlobalOptions& global, const ListOptions& options,
                             Console& console) {
  CommandSession session(global, Access::kRead, console);
  PrintUnitList(global, options, session, console, [&session](const UnitName& unit) {
    CredentialDesk desk(session.desks(), unit.key, DeskScreen::kCredentials);
    return CredentialList(session.desks(), desk);
  });
  return ExitStatus::kDone;
}

ExitStatus RunCredentialAdd(const GlobalOptions& global, const CredentialAddOptions& options,
                            Console& console) {
  const bool withTenants = options.entry.withTenants;
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  CredentialDesk desk(session.desks(), unit.key,
                      withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
  EnterCredentials(desk, options.entry);
  const IssuedCredentials issued = desk.SaveNew(BarOn(console, global.trace));
  const ExitStatus status = TellChange(issued, "unit", console);
  session.TellDone(
      issued, [&] { return ReportOnIssued(issued, unit); },
      [&] { PrintIssued(issued, unit, withTenants, console); });
  return status;
}

ExitStatus RunCredentialEdit(const GlobalOptions& global, const CredentialEditOptions& options,
                             Console& console) {
  if (!options.change.door && !options.change.tenant && !options.change.release) {
    throw UsageError("say what to change: --door, --tenant or --release");
  }
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  return options.credentials.size() == 1 ? EditOne(session, unit, options, console)
                                         : EditSeveral(session, unit, options, console);
}

ExitStatus RunCredentialRenumber(const GlobalOptions& global,
                                 const CredentialRenumberOptions& options, Console& console) {
  const CredentialNumber number(options.number);
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  CredentialDesk desk(session.desks(), unit.key, DeskScreen::kCredentials);
  const ShownCredential before = desk.Select(options.credential);
  const ChangedCredential renumbered = desk.Renumber(number);
  const ExitStatus status = TellChange(renumbered, "credential", console);
  session.TellDone(
      renumbered, [&] { return ReportOnRenumbered(before, renumbered, unit); },
      [&] { PrintRenumbered(before, renumbered, unit, console); });
  return status;
}

ExitStatus RunCredentialReplace(const GlobalOptions& global,
                                const CredentialReplaceOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  if (!options.replacement.keepLost) {
    session.RequireDeletion();
  }
  const ReplacedCredential replaced =
      ReplaceCredential(session.desks(), unit.key, options.replacement, TrialOf(options.trial));
  const ExitStatus status = TellChange(replaced, "credential", console);
  console.stored = console.stored && !options.trial;
  if (!replaced.done()) {
    console.err << fmt::format("qorhost: nothing was changed {}.\n", InUnit(unit));
  } else if (global.json) {
    PrintReplacedAsJson(replaced, options, unit, console);
  } else {
    PrintReplaced(replaced, options, unit, console);
  }
  return status;
}

ExitStatus RunCredentialDelete(const GlobalOptions& global, const CredentialDeleteOptions& options,
                               Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  return options.credentials.size() == 1
             ? DeleteCredential(session, unit, options.credentials.front(), console)
             : DeleteSeveral(session, unit, options, console);
}

}  // namespace qorhost
