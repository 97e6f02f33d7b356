#include "host/cli/history_commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/convert.h"
#include "host/cli/change_report.h"
#include "host/desks/desk_error.h"
#include "host/desks/history_undo.h"
#include "host/desks/words.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

/// " in unit 2, Linden Park"; nothing for an entry of the whole store.
std::string InUnitOf(const WorkEntry& entry, DeskSession& session) {
  if (!entry.unitKey) {
    return {};
  }
  UnitName unit{*entry.unitKey, {}};
  for (UnitName& one : session.Units()) {
    if (one.key == unit.key) {
      unit = std::move(one);
    }
  }
  return " " + InUnit(unit);
}

/// The rows that the undo of an entry has put back, taken away or changed, by their tables.
void AddRowsOf(const UndoneWork& undone, DeskSession& session, ChangeReport& report) {
  for (const TouchedRow& row : RowsTouched(session, undone.entry.entry)) {
    std::vector<TouchedThing>& things = row.kind == RowChangeKind::kInserted  ? report.deleted
                                        : row.kind == RowChangeKind::kDeleted ? report.added
                                                                              : report.changed;
    things.push_back({"row", static_cast<double>(row.rid), row.table});
  }
}

ChangeReport ReportOn(const Undoing& undone, DeskSession& session) {
  ChangeReport report;
  const std::vector<UndoneWork>& all = undone.entries;
  const WorkEntry& first = all.front().entry;
  const bool isOneUnit = std::all_of(all.begin(), all.end(), [&first](const UndoneWork& one) {
    return one.entry.unitKey == first.unitKey;
  });
  if (isOneUnit && first.unitKey) {
    report.unit = *first.unitKey;
  }
  report.stored = undone.written;
  report.trial = !report.stored;
  std::size_t rows = 0;
  for (const UndoneWork& one : all) {
    AddRowsOf(one, session, report);
    rows += one.rows;
  }
  report.facts
      .Add("entry", all.size() == 1 ? qorcred::Value(static_cast<double>(first.entry))
                                    : qorcred::Value(qorcred::Null{}))
      .Add("rows", CountCell(rows));
  return report;
}

}  // namespace

ExitStatus RunHistoryList(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console) {
  RequireOneScope(global, options.asked);
  CommandSession session(global, Access::kRead, console);
  HistoryQuery query = options.query;
  if (!options.asked.query.LooksAtAll()) {
    query.latest = options.asked.query.limit;
  }
  std::optional<UnitName> unit;
  if (global.unit) {
    unit = session.ChosenUnit();
    query.unitKey = unit->key;
  }
  PrintList(global, options.asked, {HistoryList(session.desks(), query), unit}, session, console);
  return ExitStatus::kDone;
}

ExitStatus RunHistoryShow(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console) {
  CommandSession session(global, Access::kRead, console);
  std::vector<WorkEntry> entries;
  for (const std::string& number : options.entries) {
    entries.push_back(EntryOf(session.desks(), number));
  }
  for (const WorkEntry& entry : entries) {
    if (!global.json) {
      console.Remarks() << Displayable(DescriptionOf(entry)) << '\n';
    }
    const NamedFor reader = global.json ? NamedFor::kPrograms : NamedFor::kPeople;
    PrintRows(console, EntryTable(session.desks(), entry.entry, reader), global.json);
  }
  return ExitStatus::kDone;
}

ExitStatus RunHistoryUndo(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console) {
  CommandSession session(global, Access::kChange, console);
  for (const std::string& number : options.entries) {
    const WorkEntry entry = EntryOf(session.desks(), number);
    if (global.unit && entry.unitKey && entry.unitKey != global.unit) {
      throw UsageError(fmt::format("entry {} is of unit {}, not of unit {}", entry.entry,
                                   *entry.unitKey, *global.unit));
    }
    if (!entry.unitKey && !options.trial) {
      session.RequireConsent(
          fmt::format("{} concerns the whole store. Undo it?", DescriptionOf(entry)));
    }
  }
  const Undoing undone = UndoEntries(session.desks(), options.entries, TrialOf(options.trial));
  if (!undone.done()) {
    throw RefusedError(undone.reason);
  }
  console.stored = undone.written;
  if (global.json) {
    PrintChange(console.out, ReportOn(undone, session.desks()));
    return ExitStatus::kDone;
  }
  for (const UndoneWork& one : undone.entries) {
    (undone.written ? console.Remarks() : console.out)
        << Displayable(DescriptionOf(one.entry)) << (undone.written ? " undone" : " can be undone")
        << InUnitOf(one.entry, session.desks()) << ": " << Counted(one.rows, "row", "rows")
        << (undone.written ? " as before\n" : "; nothing was changed\n");
  }
  return ExitStatus::kDone;
}

ExitStatus RunHistoryCheck(const GlobalOptions& global, const HistoryOptions& options,
                           Console& console) {
  std::vector<ChainHead> noted;
  for (const std::string& head : options.heads) {
    noted.push_back(ReadHead(head));
  }
  CommandSession session(global, Access::kRead, console);
  const std::vector<std::string> faults = FaultsOfHistory(session.desks(), noted);
  for (const std::string& fault : faults) {
    console.err << "qorhost: " << Displayable(fault) << '\n';
  }
  if (!faults.empty()) {
    return ExitStatus::kRefused;
  }
  PrintRows(console, HeadTable(session.desks()), global.json);
  return ExitStatus::kDone;
}

}  // namespace qorhost
