#include "host/cli/tenant_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/cli/change_report.h"
#include "host/desks/shown_value.h"
#include "host/desks/tenant_desk.h"
#include "host/desks/tenant_list.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::string_view kDeletedVerb = "Deleted";

/// What was done to tenants.
enum class Tenants : bool { kChanged, kDeleted };

void Choose(TenantDesk& desk, const TenantChoiceOptions& who) {
  if (who.names.empty() == who.conditions.empty()) {
    throw UsageError("say which tenants are meant: by name, or by --where, not by both");
  }
  if (who.names.empty()) {
    desk.ChooseWhere(who.conditions);
  } else {
    desk.Choose(who.names);
  }
}

/// For people: the values as they read them.
Table ChangeTable(const std::vector<TenantChange>& changes) {
  Table table;
  table.columns = {{"RID", "rid"},
                   {"Tenant", "tenant"},
                   {"Field", "field"},
                   {"Before", "before"},
                   {"After", "after"}};
  for (const TenantChange& change : changes) {
    table.rows.push_back({change.rid, change.name, change.field.title, ShownText(change.before),
                          ShownText(change.after)});
  }
  return table;
}

/// For programs: the fields' names and the values in their types.
Table FieldTable(const std::vector<TenantChange>& changes) {
  Table table;
  table.columns = {{"Id", "id"}, {"Field", "field"}, {"Before", "before"}, {"After", "after"}};
  for (const TenantChange& change : changes) {
    table.rows.push_back({change.rid, change.field.key, change.before, change.after});
  }
  return table;
}

/// Who was changed, or deleted, and how.
void PrintChangedAsJson(const ChangedTenants& changed, const UnitName& unit, Tenants what,
                        Console& console) {
  ChangeReport report;
  report.unit = unit.key;
  report.trial = !changed.written;
  report.stored = changed.written && changed.tenants > 0;
  std::vector<TouchedThing>& things = what == Tenants::kDeleted ? report.deleted : report.changed;
  for (const TenantChange& change : changed.changes) {
    if (things.empty() || things.back().id != Value(change.rid)) {
      things.push_back({"tenant", change.rid, change.name});
    }
  }
  report.facts.Add("fields", FieldTable(changed.changes))
      .Add("freed_cards", qorcred::StringArray(changed.freed));
  PrintChange(console.out, report);
}

/// "Changed", or "Would have changed".
std::string Verb(std::string_view done, bool written) {
  std::string verb(done);
  if (!written) {
    verb.front() = qorcred::LowerAscii(verb.front());
    verb.insert(0, "Would have ");
  }
  return verb;
}

/// What `verb` ("Changed", "Deleted") has done, or would do.
void PrintChanged(const ChangedTenants& changed, const UnitName& unit, std::string_view verb,
                  Console& console) {
  const Table table = ChangeTable(changed.changes);
  std::ostream& told = changed.written ? console.Remarks() : console.out;
  if (changed.meant == 0) {
    told << fmt::format("Nobody {} meets the conditions: nothing was changed.\n", InUnit(unit));
    return;
  }
  if (changed.tenants == 0) {
    told << fmt::format("Nothing to change {}: it is stored so already.\n", InUnit(unit));
    return;
  }
  // Of many the dry run tells all; the history keeps what was done.
  constexpr std::size_t kMostTold = 40;
  if (!table.rows.empty() && (!changed.written || table.rows.size() <= kMostTold)) {
    PrintTable(told, table, 0, WidestText(console));
  }
  told << fmt::format("{} {} {}", Verb(verb, changed.written),
                      Counted(changed.tenants, "tenant", "tenants"), InUnit(unit));
  if (changed.written) {
    told << ".\n";
  } else {
    told << fmt::format(
        ", and queued {}. Nothing was changed.\n",
        Counted(static_cast<std::size_t>(changed.steps), "programming step", "programming steps"));
  }
  if (!changed.freed.empty()) {
    told << fmt::format("Held by nobody {}: {}.\n", changed.written ? "now" : "then",
                        SomeNames(changed.freed));
  }
}

TenantEntry Complete(const TenantEditOptions& options) {
  TenantEntry entry = options.entry;
  if (options.schedules) {
    entry.SetSchedules(*options.schedules);
  }
  return entry;
}

std::string Question(const TenantDesk& desk) {
  std::vector<std::string> names;
  for (const TenantRow& tenant : desk.chosen()) {
    names.push_back(tenant.NameWithRid());
  }
  return fmt::format("{} will be deleted: {}. Go on?", Counted(names.size(), "tenant", "tenants"),
                     SomeNames(names));
}

}  // namespace

ExitStatus TellChangedTenants(const ChangedTenants& changed, const UnitName& unit,
                              std::string_view verb, const GlobalOptions& global,
                              Console& console) {
  const std::string_view what = changed.meant == 1 ? "tenant" : "tenants";
  const ExitStatus status =
      changed.written ? TellChange(changed, what, console) : Tell(changed, what, console);
  if (changed.ending == Ending::kRefused) {
    console.err << "qorhost: nothing was changed.\n";
  } else if (changed.done() && global.json) {
    PrintChangedAsJson(changed, unit, verb == kDeletedVerb ? Tenants::kDeleted : Tenants::kChanged,
                       console);
  } else if (changed.done()) {
    PrintChanged(changed, unit, verb, console);
  }
  return status;
}

ExitStatus RunTenantList(const GlobalOptions& global, const ListOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kRead, console);
  PrintUnitList(global, options, session, console, [&session](const UnitName& unit) {
    const TenantDesk desk(session.desks(), unit.key);
    return TenantList(desk.tenants(), desk.links());
  });
  return ExitStatus::kDone;
}

ExitStatus RunTenantShow(const GlobalOptions& global, const std::vector<std::string>& names,
                         Console& console) {
  constexpr std::size_t kNameWidth = 12;
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.ChosenUnit();
  TenantDesk desk(session.desks(), unit.key);
  desk.Choose(names);
  if (!global.json) {
    PrintTitle(console, unit);
  }
  bool isFirst = true;
  for (const TenantRow& tenant : desk.chosen()) {
    if (!std::exchange(isFirst, false) && !global.json) {
      console.out << '\n';
    }
    std::vector<std::pair<std::string, Value>> members;
    for (const TenantDetail& detail : DetailsOf(tenant, desk.links())) {
      members.emplace_back(detail.name.key, detail.value);
      const std::string text = ShownText(detail.value);
      if (!global.json && !text.empty()) {
        console.out << PaddedTo(detail.name.title, kNameWidth) << "  " << Displayable(text) << '\n';
      }
    }
    if (global.json) {
      PrintJsonObject(console.out, members);
    }
  }
  return ExitStatus::kDone;
}

ExitStatus RunTenantAdd(const GlobalOptions& global, const TenantEditOptions& options,
                        Console& console) {
  const TenantEntry entry = Complete(options);
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  TenantDesk desk(session.desks(), unit.key);
  const AddedTenant added = desk.Add(entry, TrialOf(options.trial));
  const ExitStatus status =
      added.written ? TellChange(added, "unit", console) : Tell(added, "unit", console);
  if (!added.done()) {
    return status;
  }
  if (global.json) {
    ChangeReport report;
    report.unit = unit.key;
    report.trial = !added.written;
    report.stored = added.written;
    report.added.push_back({"tenant",
                            added.written ? Value(added.tenant.rid) : Value(qorcred::Null{}),
                            added.tenant.Name()});
    PrintChange(console.out, report);
    return status;
  }
  std::ostream& told = added.written ? console.Remarks() : console.out;
  told << fmt::format("{} tenant {} {}.{}\n", Verb("Added", added.written),
                      Displayable(added.written ? added.tenant.NameWithRid() : added.tenant.Name()),
                      InUnit(unit), added.written ? "" : " Nothing was changed.");
  if (!entry.to && added.tenant.end) {
    told << fmt::format("The unit's default period holds, until {}.\n",
                        ShownText(*added.tenant.end));
  }
  return status;
}

ExitStatus RunTenantEdit(const GlobalOptions& global, const TenantEditOptions& options,
                         Console& console) {
  const TenantEntry entry = Complete(options);
  if (entry.IsEmpty()) {
    throw UsageError("say what to change: see 'qorhost tenants edit --help'");
  }
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  TenantDesk desk(session.desks(), unit.key);
  Choose(desk, options.who);
  return TellChangedTenants(desk.Edit(entry, TrialOf(options.trial)), unit, "Changed", global,
                            console);
}

ExitStatus RunTenantEnd(const GlobalOptions& global, const TenantEndOptions& options,
                        Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  TenantDesk desk(session.desks(), unit.key);
  Choose(desk, options.who);
  return TellChangedTenants(desk.End(options.on, options.freeCards, TrialOf(options.trial)), unit,
                            "Ended the lease of", global, console);
}

ExitStatus RunTenantDelete(const GlobalOptions& global, const TenantDeleteOptions& options,
                           Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  TenantDesk desk(session.desks(), unit.key);
  Choose(desk, options.who);
  if (!options.trial && !desk.chosen().empty()) {
    session.RequireDeletion();
    session.RequireConsent(Question(desk));
  }
  return TellChangedTenants(desk.Delete(TrialOf(options.trial)), unit, kDeletedVerb, global,
                            console);
}

}  // namespace qorhost
