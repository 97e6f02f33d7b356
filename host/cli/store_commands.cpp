#include "host/cli/store_commands.h"

#include <fmt/format.h>

#include <vector>

#include "host/cli/change_report.h"
#include "host/cli/operator.h"
#include "host/desks/store_overview.h"
#include "host/desks/store_statement.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

void PrintChange(std::ostream& out, const ChangedRows& change, bool asJson) {
  const auto rows = static_cast<double>(change.rows);
  if (asJson) {
    // A statement of one's own tells how many rows it has changed, not which.
    PrintJsonObject(
        out, {{"unit", qorcred::Null{}},
              {"stored", change.rows > 0},
              {"dry_run", false},
              {"rows", rows},
              {"new_rid", change.newRid > 0 ? qorcred::Value(static_cast<double>(change.newRid))
                                            : qorcred::Value(qorcred::Null{})}});
    return;
  }
  out << Counted(static_cast<std::size_t>(change.rows), "row", "rows") << " changed\n";
}

/// Puts the store in its place. Raises RefusedError that says what to do about what stands there.
void Put(const GlobalOptions& global, const InitOptions& options, Console& console) {
  const auto asks = [&](const std::string& found) {
    return Operator(console, global.answer).Asks(found + ". Replace it all the same?");
  };
  try {
    PutStore(global.file, {options.demo, console.environment.clock, console.environment.author},
             options.force ? Standing::kReplaced : Standing::kStays, PatienceOf(global, console),
             asks);
  } catch (const DoubtfulStore& doubtful) {
    throw RefusedError(std::string(doubtful.what()) +
                       ": name another file with --db, or say --yes as well");
  } catch (const ForeignFile& foreign) {
    throw RefusedError(std::string(foreign.what()) +
                       ": name another file with --db, or move it away");
  } catch (const FileError& failure) {
    switch (failure.problem()) {
      case FileProblem::kExists:
        throw RefusedError(std::string(failure.what()) +
                           ": name another file with --db, or replace it with --force");
      case FileProblem::kOccupied:
        throw RefusedError(std::string(failure.what()) + ": name a file with --db");
      default:
        throw;
    }
  }
}

}  // namespace

ExitStatus RunInit(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (options.force && global.answer == false) {
    throw UsageError("--force replaces a store, and --no says No: leave one of them out");
  }
  Put(global, options, console);
  console.stored = true;
  if (global.json) {
    ChangeReport report;
    report.stored = true;
    report.added.push_back({"store", qorcred::Null{}, global.file.string()});
    report.facts.Add("demo", options.demo);
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  const std::string name = Displayable(global.file.string());
  console.out << (options.demo
                      ? fmt::format("Created {} with the demo building. Try 'qorhost units'.\n",
                                    name)
                      : fmt::format("Created {} without any units. 'qorhost init --demo' makes "
                                    "one to try things on.\n",
                                    name));
  return ExitStatus::kDone;
}

ExitStatus RunUnits(const GlobalOptions& global, const ListOptions& asked, Console& console) {
  return PrintOfUnits(global, asked, console, UnitList);
}

ExitStatus RunDoors(const GlobalOptions& global, const ListOptions& asked, Console& console) {
  return PrintOfUnits(global, asked, console, DoorList);
}

ExitStatus RunSteps(const GlobalOptions& global, Console& console) {
  return PrintOfQueue(global, {}, console, StepList);
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
