#include "host/cli/dir_code_commands.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/dir_code_series.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

using qorcred::Value;

std::string Shown(const Value& value) {
  if (const bool* flag = value.As<bool>()) {
    return *flag ? "yes" : "no";
  }
  if (const auto* names = value.As<qorcred::StringArray>()) {
    const std::string joined = fmt::format("{}", fmt::join(*names, ", "));
    return joined.empty() ? "nobody" : joined;
  }
  return qorcred::TextOrEmpty(value);
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

void PrintAdded(const AddedDirCode& added, const CodePeriod& period, const UnitName& unit,
                bool asJson, Console& console) {
  const auto cell = [](const std::optional<qorcred::Date>& date) {
    return date ? Value(*date) : Value(qorcred::Null{});
  };
  if (asJson) {
    PrintJsonObject(console.out, {{"unit", unit.key},
                                  {"code", qorcred::Val(added.number)},
                                  {"rid", added.code.rid},
                                  {"start", cell(period.start)},
                                  {"end", cell(period.end)}});
  } else {
    console.Remarks() << fmt::format("Added directory code {} {}.\n", NameOf(added.code),
                                     InUnit(unit));
  }
}

/// The dates that the unit gave to a code for which none were said.
void PrintDefaults(const CodePeriod& period, const DirCodeEntry& entry, Console& console) {
  const auto day = [](const char* word, const std::optional<qorcred::Date>& date, bool said) {
    return date && !said ? fmt::format(" {} {}", word, qorcred::DateText(*date)) : std::string();
  };
  const std::string days = day("from", period.start, entry.from.has_value()) +
                           day("until", period.end, entry.to.has_value());
  if (!days.empty()) {
    console.Remarks() << fmt::format("By the unit's default it is active{}.\n", days);
  }
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

void PrintDeleted(const DeletedDirCode& deleted, const UnitName& unit, Console& console) {
  console.Remarks() << fmt::format("Deleted directory code {} {}.\n", NameOf(deleted.code),
                                   InUnit(unit));
  if (!deleted.tenants.empty()) {
    console.Remarks() << fmt::format(
        "Without it now: {}.\n", Displayable(fmt::format("{}", fmt::join(deleted.tenants, ", "))));
  }
}

ExitStatus EditOne(CommandSession& session, const UnitName& unit, const DirCodeEditOptions& options,
                   Console& console) {
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(options.choices.front());
  const std::vector<std::string> cleared = EnterDirCodeChange(desk, options.entry);
  const Outcome saved = desk.SaveEdited();
  const ExitStatus status = TellChange(saved, "directory code", console);
  if (!session.ToldTrial(saved) && saved.done()) {
    PrintEdited({code, cleared, saved.unchanged}, unit, console);
  }
  return status;
}

ExitStatus EditSeveral(CommandSession& session, const UnitName& unit,
                       const DirCodeEditOptions& options, Console& console) {
  std::vector<EditedDirCode> edited;
  const SeveralOutcome outcome = EditDirCodes(
      session.desks(), unit.key, options.choices, options.entry,
      [&session](const std::string& question) { return session.Asks(question); }, edited);
  const ExitStatus status = TellSeveral(outcome, "directory codes", console);
  if (outcome.done() && !session.ToldTrial(outcome)) {
    for (const EditedDirCode& one : edited) {
      PrintEdited(one, unit, console);
    }
  }
  return status;
}

ExitStatus DeleteOne(CommandSession& session, const UnitName& unit, const std::string& choice,
                     Console& console) {
  DirCodeDesk desk(session.desks(), unit.key);
  const ShownDirCode code = desk.Select(choice);
  const std::vector<std::string> tenants = TenantsShown(desk);
  session.RequireDeletion();
  const Outcome deleted = desk.Delete();
  const ExitStatus status = TellChange(deleted, "directory code", console);
  if (session.ToldTrial(deleted)) {
    return status;
  }
  if (deleted.done()) {
    PrintDeleted({code, tenants}, unit, console);
  } else {
    console.err << fmt::format("qorhost: directory code {} was not deleted {}.\n", NameOf(code),
                               InUnit(unit));
  }
  return status;
}

ExitStatus DeleteSeveral(CommandSession& session, const UnitName& unit,
                         const DirCodeDeleteOptions& options, Console& console) {
  session.RequireDeletion();
  std::vector<DeletedDirCode> deleted;
  const SeveralOutcome outcome = DeleteDirCodes(
      session.desks(), unit.key, options.choices,
      [&session](const std::string& question) { return session.Asks(question); }, deleted);
  const ExitStatus status = TellSeveral(outcome, "directory codes", console);
  if (outcome.done() && !session.ToldTrial(outcome)) {
    for (const DeletedDirCode& one : deleted) {
      PrintDeleted(one, unit, console);
    }
  }
  return status;
}

}  // namespace

ExitStatus RunDirCodeList(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.ChosenUnit();
  DirCodeDesk desk(session.desks(), unit.key);
  if (!global.json) {
    PrintTitle(console, unit);
  }
  PrintRows(console.out, DirCodeTable(session.desks(), desk), global.json);
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
  if (added.isStored()) {
    PrintAdded(added, period, unit, global.json, console);
    if (!global.json) {
      PrintDefaults(period, options.entry, console);
    }
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
  if (session.ToldTrial(renumbered)) {
    return status;
  }
  if (renumbered.unchanged) {
    console.Remarks() << fmt::format(
        "Directory code {} {}, has that number already; nothing was "
        "changed.\n",
        NameOf(before), InUnit(unit));
  } else if (renumbered.done()) {
    console.Remarks() << fmt::format("Directory code {} is {} now, {}.\n", NameOf(before),
                                     Displayable(desk.Shown().entry), InUnit(unit));
  }
  return status;
}

ExitStatus RunDirCodeDelete(const GlobalOptions& global, const DirCodeDeleteOptions& options,
                            Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  return options.choices.size() == 1 ? DeleteOne(session, unit, options.choices.front(), console)
                                     : DeleteSeveral(session, unit, options, console);
}

}  // namespace qorhost
