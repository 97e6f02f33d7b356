#include "host/cli/store_commands.h"

#include <fmt/format.h>

#include <vector>

#include "host/cli/display_text.h"
#include "host/cli/table_printer.h"
#include "host/desks/store_overview.h"
#include "host/desks/store_statement.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"
#include "host/files/json_writer.h"

namespace qorhost {

namespace {

void PrintChange(std::ostream& out, const ChangedRows& change, bool asJson) {
  const auto rows = static_cast<double>(change.rows);
  if (asJson) {
    PrintJsonObject(out, {{"rows", rows}, {"new_rid", static_cast<double>(change.newRid)}});
    return;
  }
  out << fmt::format("{} {} changed\n", change.rows, change.rows == 1 ? "row" : "rows");
}

[[noreturn]] void RefuseExisting(const GlobalOptions& global) {
  throw RefusedError(
      fmt::format("'{}' exists already: name another file with --db, or replace it with --force",
                  global.file.string()));
}

void Create(const GlobalOptions& global, const InitOptions& options, const Console& console) {
  try {
    CreateStore(global.file, options.demo, console.environment.author);
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) throw;
    RefuseExisting(global);  // it came while the new one was made
  }
}

void Replace(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (!options.force) {
    RefuseExisting(global);
  }
  try {
    ReplaceStore(global.file, options.demo, PatienceOf(global, console),
                 console.environment.author);
  } catch (const ForeignFile& foreign) {
    throw RefusedError(std::string(foreign.what()) +
                       ": name another file with --db, or move it away");
  }
}

}  // namespace

ExitStatus RunInit(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (options.force && global.answer == false) {
    throw UsageError("--force replaces a store, and --no says No: leave one of them out");
  }
  switch (LookAt(global.file)) {
    case StorePlace::kFolder:
      throw RefusedError(
          fmt::format("'{}' is a folder: name a file with --db", global.file.string()));
    case StorePlace::kFile:
      Replace(global, options, console);
      break;
    case StorePlace::kOther:
      throw RefusedError(fmt::format("'{}' is {}: name a file with --db", global.file.string(),
                                     NameOf(KindOf(global.file, Links::kAreSeen))));
    case StorePlace::kFree:
      Create(global, options, console);
      break;
  }
  console.stored = true;
  const std::string name = Displayable(global.file.string());
  console.out << (options.demo
                      ? fmt::format("Created {} with the demo building. Try 'qorhost units'.\n",
                                    name)
                      : fmt::format("Created {} without any units. 'qorhost init --demo' makes "
                                    "one to try things on.\n",
                                    name));
  return ExitStatus::kDone;
}

ExitStatus RunUnits(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = session.ChosenUnits();
  session.TellWhatIsMissing(units);
  PrintRows(console.out, UnitTable(session.desks(), units), global.json);
  return ExitStatus::kDone;
}

ExitStatus RunDoors(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = session.ChosenUnits();
  session.TellWhatIsMissing(units);
  PrintRows(console.out, DoorTable(session.desks(), units), global.json);
  return ExitStatus::kDone;
}

ExitStatus RunSteps(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  if (global.unit) {
    (void)session.ChosenUnit();
  }
  PrintRows(console.out, StepTable(session.desks(), global.unit), global.json);
  return ExitStatus::kDone;
}

ExitStatus RunSql(const GlobalOptions& global, const SqlOptions& options, Console& console) {
  // What the statement is decides how the file is opened, so it is looked at first.
  const StoreStatement statement(options.statement);
  if (!statement.reads() && !options.write) {
    throw UsageError("this statement changes the database: say --write to let it");
  }
  CommandSession session(global, statement.reads() ? Access::kRead : Access::kChange, console);
  if (statement.reads()) {
    PrintRows(console.out, statement.Read(session.desks()), global.json);
  } else {
    const ChangedRows changed = statement.Change(session.desks());
    console.stored = true;
    PrintChange(console.out, changed, global.json);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
