#include "host/cli/dir_code_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "frame/convert.h"
#include "host/cli/change_report.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/dir_code_series.h"
#include "host/desks/shown_value.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

using qorcred::Value;

std::string Shown(const Value& value) {
  const auto* names = value.As<qorcred::StringArray>();
  return names != nullptr && names->empty() ? "nobody" : ShownText(value);
}

void PrintCode(DirCodeDesk& desk, bool asJson, Console& console) {
  constexpr std::size_t kNameWidth = 16;
  std::vector<std::pair<std::string, Value>> members;
  for (const DirCodeDetail& detail : DetailsShown(desk)) {
    members.emplace_back(detail.key, detail.value);
    const std::string text = Shown(detail.value);
    if (!asJson && !text.empty()) {
      console.out << PaddedTo(detail.name, kNameWidth) << "  " << Displayable(text) << '\n';
    }
  }
  if (asJson) {
    PrintJsonObject(console.out, members);
  }
}

/// "0101 (RID 5)"
std::string NameOf(const ShownDirCode& code) {
  return WithRid(Displayable(code.entry), code.rid);
}

ChangeReport ReportOn(const UnitName& unit, bool stored) {
  ChangeReport report;
  report.unit = unit.key;
  report.stored = stored;
  return report;
}

TouchedThing Thing(const ShownDirCode& code) {
  return {"directory code", code.rid, code.entry};
}

Value CellOf(const std::optional<qorcred::Date>& date) {
  return date ? Value(*date) : Value(qorcred::Null{});
}

ChangeReport ReportOnAdded(const AddedDirCode& added, const CodePeriod& period,
                           const UnitName& unit) {
  ChangeReport report = ReportOn(unit, true);
  report.added.push_back(Thing(added.code));
  report.facts.Add("code", qorcred::Val(added.number))
      .Add("start", CellOf(period.start))
      .Add("end", CellOf(period.end));
  return report;
}

void PrintAdded(const AddedDirCode& added, const UnitName& unit, Console& console) {
  console.Remarks() << fmt::format("Added directory code {} {}.\n", NameOf(added.code),
                                   InUnit(unit));
}

/// The dates that the unit gave to a code for which none were said.
void PrintDefaults(const CodePeriod& period, const DirCodeEntry& entry, Console& console) {
  const auto day = [](const char* word, const std::optional<qorcred::Date>& date, bool said) {
    return date && !said ? fmt::format(" {} {}", word, ShownText(*date)) : std::string();
  };
  const std::string days = day("from", period.start, entry.from.has_value()) +
                           day("until", period.end, entry.to.has_value());
  if (!days.empty()) {
    console.Remarks() << fmt::format("By the unit's default it is active{}.\n", days);
  }
}

void AddNew(qorcred::StringArray& all, const std::vector<std::string>& more) {
  for (const std::string& one : more) {
    if (std::find(all.begin(), all.end(), one) == all.end()) {
      all.push_back(one);
    }
  }
}

ChangeReport ReportOnEdited(const std::vector<EditedDirCode>& edited, const UnitName& unit) {
  ChangeReport report = ReportOn(unit, false);
  qorcred::StringArray cleared;
  for (const EditedDirCode& one : edited) {
    if (!one.unchanged) {
      report.changed.push_back(Thing(one.code));
    }
    AddNew(cleared, one.cleared);
  }
  report.stored = !report.changed.empty();
  report.facts.Add("cleared", cleared);
  return report;
}

void PrintEdited(const EditedDirCode& edited, const UnitName& unit, Console& console) {
  if (edited.unchanged) {
    console.Remarks() << fmt::format(
        "Directory code {} {}, is stored so already; nothing was changed.\n", NameOf(edited.code),
        InUnit(unit));
    return;
  }
  console.Remarks() << fmt::format("Changed directory code {} {}.\n", NameOf(edited.code),
                                   InUnit(unit));
  if (!edited.cleared.empty()) {
    console.err << fmt::format("qorhost: cleared, because it was switched off: {}.\n",
                               fmt::join(edited.cleared, ", "));
  }
}

/// Tells what became of the codes, whether it was done or only tried.
void TellEdited(CommandSession& session, const Outcome& outcome,
                const std::vector<EditedDirCode>& edited, const UnitName& unit, Console& console) {
  session.TellDone(
      outcome, [&] { return ReportOnEdited(edited, unit); },
      [&] {
        for (const EditedDirCode& one : edited) {
          PrintEdited(one, unit, console);
        }
      });
}

ChangeReport ReportOnDeleted(const std::vector<DeletedDirCode>& deleted, const UnitName& unit) {
  ChangeReport report = ReportOn(unit, true);
  qorcred::StringArray tenants;
  for (const DeletedDirCode& one : deleted) {
    report.deleted.push_back(Thing(one.code));
    tenants.insert(tenants.end(), one.tenants.begin(), one.tenants.end());
  }
  report.facts.Add("tenants", tenants);
  return report;
}

void PrintDeleted(const DeletedDirCode& deleted, const UnitName& unit, Console& console) {
  console.Remarks() << fmt::format("Deleted directory code {} {}.\n", NameOf(deleted.code),
                                   InUnit(unit));
  if (!deleted.tenants.empty()) {
    console.Remarks() << fmt::format("Without it now: {}.\n", AllNames(deleted.tenants));
  }
}

void TellDeleted(CommandSession& session, const Outcome& outcome,
                 const std::vector<DeletedDirCode>& deleted, const UnitName& unit,
                 Console& console) {
  session.TellDone(
      outcome, [&] { return ReportOnDeleted(deleted, unit); },
      [&] {
        for (const DeletedDirCode& one : deleted) {
          PrintDeleted(one, unit, console);
        }
      });
}

ChangeReport ReportOnRenumbered(const ShownDirCode& before, const Outcome& renumbered,
                                const ShownDirCode& now, const UnitName& unit) {
  ChangeReport report = ReportOn(unit, !renumbered.unchanged);
  if (report.stored) {
    report.changed.push_back(Thing(now));
  }
  report.facts.Add("before", before.entry);
  return report;
}

void PrintRenumbered(const ShownDirCode& before, const Outcome& renumbered, const ShownDirCode& now,
                     const UnitName& unit, Console& console) {
  if (renumbered.unchanged) {
    console.Remarks() << fmt::format(
        "Directory code {} {}, has that number already; nothing was changed.\n", NameOf(before),
        InUnit(unit));
    return;
  }
  console.Remarks() << fmt::format("Directory code {} is {} now, {}.\n", NameOf(before),
                                   Displayable(now.entry), InUnit(unit));
}

ExitStatus EditOne(CommandSession& session, const UnitName& unit, const DirCodeEditOptions& options,
                   Console& console) {
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(options.choices.front());
  const std::vector<std::string> cleared = EnterDirCodeChange(desk, options.entry);
  const Outcome saved = desk.SaveEdited();
  const ExitStatus status = TellChange(saved, "directory code", console);
  TellEdited(session, saved, {{code, cleared, saved.unchanged}}, unit, console);
  return status;
}

ExitStatus EditSeveral(CommandSession& session, const UnitName& unit,
                       const DirCodeEditOptions& options, Console& console) {
  std::vector<EditedDirCode> edited;
  const SeveralOutcome outcome = EditDirCodes(session.desks(), unit.key, options.choices,
                                              options.entry, session.Asking(), edited);
  const ExitStatus status = TellSeveral(outcome, "directory codes", console);
  TellEdited(session, outcome, edited, unit, console);
  return status;
}

ExitStatus DeleteCode(CommandSession& session, const UnitName& unit, const std::string& choice,
                      Console& console) {
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(choice);
  const std::vector<std::string> tenants = TenantsShown(desk);
  session.RequireDeletion();
  const Outcome deleted = desk.Delete();
  const ExitStatus status = TellChange(deleted, "directory code", console);
  if (!deleted.done()) {
    console.err << fmt::format("qorhost: directory code {} was not deleted {}.\n", NameOf(code),
                               InUnit(unit));
  }
  TellDeleted(session, deleted, {{code, tenants}}, unit, console);
  return status;
}

ExitStatus DeleteSeveral(CommandSession& session, const UnitName& unit,
                         const DirCodeDeleteOptions& options, Console& console) {
  session.RequireDeletion();
  std::vector<DeletedDirCode> deleted;
  const SeveralOutcome outcome =
      DeleteDirCodes(session.desks(), unit.key, options.choices, session.Asking(), deleted);
  const ExitStatus status = TellSeveral(outcome, "directory codes", console);
  TellDeleted(session, outcome, deleted, unit, console);
  return status;
}

}  // namespace

ExitStatus RunDirCodeList(const GlobalOptions& global, const ListOptions& options,
                          Console& console) {
  CommandSession session(global, Access::kRead, console);
  PrintUnitList(global, options, session, console, [&session](const UnitName& unit) {
    DirCodeDesk desk(session.desks(), unit.key);
    return DirCodeList(session.desks(), desk);
  });
  return ExitStatus::kDone;
}

ExitStatus RunDirCodeShow(const GlobalOptions& global, const std::vector<std::string>& choices,
                          Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.ChosenUnit();
  DirCodeDesk desk(session.desks(), unit.key);
  for (const std::string& choice : choices) {
    (void)desk.Select(choice);  // before anything is printed: all are shown, or none
  }
  if (!global.json) {
    PrintTitle(console, unit);
  }
  for (std::size_t at = 0; at < choices.size(); ++at) {
    if (at > 0 && !global.json) {
      console.out << '\n';
    }
    (void)desk.Select(choices[at]);
    PrintCode(desk, global.json, console);
  }
  return ExitStatus::kDone;
}

ExitStatus RunDirCodeAdd(const GlobalOptions& global, const DirCodeAddOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  EnterNewCode(desk, options.code, options.entry);
  const CodePeriod period = PeriodShown(desk);

  const AddedDirCode added = desk.AddCode();
  const ExitStatus status = TellChange(added, "directory code", console);
  if (session.ToldTrial(added)) {
    return status;
  }
  if (added.isStored() && global.json) {
    session.Report(ReportOnAdded(added, period, unit));
  } else if (added.isStored()) {
    PrintAdded(added, unit, console);
    PrintDefaults(period, options.entry, console);
  } else if (added.ending == Ending::kFailed) {
    console.err << "qorhost: the directory code was not stored.\n";
  }
  return status;
}

ExitStatus RunDirCodeEdit(const GlobalOptions& global, const DirCodeEditOptions& options,
                          Console& console) {
  if (options.entry.IsEmpty()) {
    throw UsageError("say what to change: see 'qorhost dircodes edit --help'");
  }
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  return options.choices.size() == 1 ? EditOne(session, unit, options, console)
                                     : EditSeveral(session, unit, options, console);
}

ExitStatus RunDirCodeRenumber(const GlobalOptions& global, const DirCodeRenumberOptions& options,
                              Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode before = desk.Select(options.choice);
  desk.TypeCode(options.number);

  const Outcome renumbered = desk.Renumber();
  const ExitStatus status = TellChange(renumbered, "directory code", console);
  session.TellDone(
      renumbered, [&] { return ReportOnRenumbered(before, renumbered, desk.Shown(), unit); },
      [&] { PrintRenumbered(before, renumbered, desk.Shown(), unit, console); });
  return status;
}

ExitStatus RunDirCodeDelete(const GlobalOptions& global, const DirCodeDeleteOptions& options,
                            Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  return options.choices.size() == 1 ? DeleteCode(session, unit, options.choices.front(), console)
                                     : DeleteSeveral(session, unit, options, console);
}

}  // namespace qorhost
