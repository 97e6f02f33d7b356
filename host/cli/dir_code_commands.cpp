#include "host/cli/dir_code_commands.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "host/cli/change_report.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_list.h"
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

void PrintAdded(const AddedDirCode& added, const UnitName& unit, bool asJson, Console& console) {
  if (asJson) {
    ChangeReport report = ReportOn(unit, true);
    report.added.push_back(Thing(added.code));
    report.facts.Add("code", qorcred::Val(added.number));
    PrintChange(console.out, report);
  } else {
    console.out << fmt::format("Added directory code {} {}.\n", NameOf(added.code), InUnit(unit));
  }
}

/// A code that was changed, or was so already; with the command's own facts.
void PrintChangedAsJson(const ShownDirCode& code, const Outcome& outcome, const UnitName& unit,
                        const JsonObject& facts, Console& console) {
  ChangeReport report = ReportOn(unit, !outcome.unchanged);
  if (report.stored) {
    report.changed.push_back(Thing(code));
  }
  report.facts = facts;
  PrintChange(console.out, report);
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

ExitStatus RunDirCodeShow(const GlobalOptions& global, const std::string& choice,
                          Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.ChosenUnit();
  DirCodeDesk desk(session.desks(), unit.key);
  (void)desk.Select(choice);
  if (!global.json) {
    PrintTitle(console, unit);
  }
  PrintCode(desk, global.json, console);
  return ExitStatus::kDone;
}

ExitStatus RunDirCodeAdd(const GlobalOptions& global, const DirCodeAddOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  EnterNewCode(desk, options.code, options.entry);

  const AddedDirCode added = desk.AddCode();
  const ExitStatus status = TellChange(added, "directory code", console);
  if (added.isStored()) {
    PrintAdded(added, unit, global.json, console);
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
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(options.choice);
  const std::vector<std::string> cleared = EnterDirCodeChange(desk, options.entry);

  const Outcome saved = desk.SaveEdited();
  const ExitStatus status = TellChange(saved, "directory code", console);
  if (saved.done() && global.json) {
    PrintChangedAsJson(code, saved, unit,
                       JsonObject().Add("cleared", qorcred::StringArray(cleared)), console);
  } else if (saved.unchanged) {
    console.out << fmt::format("Directory code {} {}, is stored so already; nothing was changed.\n",
                               NameOf(code), InUnit(unit));
  } else if (saved.done()) {
    console.out << fmt::format("Changed directory code {} {}.\n", NameOf(code), InUnit(unit));
    if (!cleared.empty()) {
      console.err << fmt::format("qorhost: cleared, because it was switched off: {}.\n",
                                 fmt::join(cleared, ", "));
    }
  }
  return status;
}

ExitStatus RunDirCodeRenumber(const GlobalOptions& global, const DirCodeRenumberOptions& options,
                              Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode before = desk.Select(options.choice);
  desk.TypeCode(options.number);

  const Outcome renumbered = desk.Renumber();
  const ExitStatus status = TellChange(renumbered, "directory code", console);
  if (renumbered.done() && global.json) {
    PrintChangedAsJson(desk.Shown(), renumbered, unit, JsonObject().Add("before", before.entry),
                       console);
  } else if (renumbered.unchanged) {
    console.out << fmt::format(
        "Directory code {} {}, has that number already; nothing was "
        "changed.\n",
        NameOf(before), InUnit(unit));
  } else if (renumbered.done()) {
    console.out << fmt::format("Directory code {} is {} now, {}.\n", NameOf(before),
                               Displayable(desk.Shown().entry), InUnit(unit));
  }
  return status;
}

ExitStatus RunDirCodeDelete(const GlobalOptions& global, const std::string& choice,
                            Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(choice);
  const std::vector<std::string> tenants = TenantsShown(desk);

  session.RequireDeletion();
  const Outcome deleted = desk.Delete();
  const ExitStatus status = TellChange(deleted, "directory code", console);
  if (deleted.done() && global.json) {
    ChangeReport report = ReportOn(unit, true);
    report.deleted.push_back(Thing(code));
    report.facts.Add("tenants", qorcred::StringArray(tenants));
    PrintChange(console.out, report);
  } else if (deleted.done()) {
    console.out << fmt::format("Deleted directory code {} {}.\n", NameOf(code), InUnit(unit));
    if (!tenants.empty()) {
      console.out << fmt::format("Without it now: {}.\n",
                                 Displayable(fmt::format("{}", fmt::join(tenants, ", "))));
    }
  } else {
    console.err << fmt::format("qorhost: directory code {} was not deleted {}.\n", NameOf(code),
                               InUnit(unit));
  }
  return status;
}

}  // namespace qorhost
