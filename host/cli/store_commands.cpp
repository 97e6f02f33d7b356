#include "host/cli/store_commands.h"

#include <fmt/format.h>

#include <vector>

#include "host/cli/change_report.h"
#include "host/cli/new_store.h"
#include "host/desks/store_overview.h"
#include "host/desks/store_statement.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/files/input_file.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

/// A statement of one's own tells how many rows it has changed, not which; a trial tells both.
void PrintChangeAsJson(const ChangedRows& change, bool trial, CommandSession& session,
                       Console& console) {
  const bool hasNew = change.newRid > 0 && !trial;
  JsonObject object;
  object.Add("unit", qorcred::Null{})
      .Add("stored", change.rows > 0 && !trial)
      .Add("dry_run", trial)
      .Add("rows", static_cast<double>(change.rows))
      .Add("new_rid", hasNew ? qorcred::Value(static_cast<double>(change.newRid))
                             : qorcred::Value(qorcred::Null{}));
  session.AddTried(object);
  object.Print(console.out);
}

void PrintResult(const StatementResult& result, bool asJson, CommandSession& session,
                 Console& console) {
  if (const auto* table = std::get_if<Table>(&result)) {
    PrintRows(console, *table, asJson);
    return;
  }
  const auto& change = std::get<ChangedRows>(result);
  if (asJson) {
    PrintChangeAsJson(change, false, session, console);
  } else {
    console.Remarks() << Counted(static_cast<std::size_t>(change.rows), "row", "rows")
                      << " changed\n";
  }
}

/// One after the other; of several as JSON one array.
void PrintResults(const std::vector<StatementResult>& results, bool asJson, CommandSession& session,
                  Console& console) {
  const bool inArray = asJson && results.size() > 1;
  for (std::size_t at = 0; at < results.size(); ++at) {
    if (inArray) {
      console.out << (at == 0 ? "[\n" : ",\n");
    }
    PrintResult(results[at], asJson, session, console);
  }
  if (inArray) {
    console.out << "]\n";
  }
}

/// How many rows all of them have changed.
std::int64_t RowsOf(const std::vector<StatementResult>& results) {
  std::int64_t rows = 0;
  for (const StatementResult& result : results) {
    if (const auto* change = std::get_if<ChangedRows>(&result)) {
      rows += change->rows;
    }
  }
  return rows;
}

StoreStatements ReadStatements(const SqlOptions& options, Console& console) {
  if (options.statement.has_value() == options.file.has_value()) {
    throw UsageError("give one STATEMENT, or --file FILE, or - for standard input");
  }
  if (options.statement && options.statement != kStandardStream) {
    return StoreStatements(*options.statement);
  }
  const std::string& from = options.file ? *options.file : *options.statement;
  const bool isInput = from == kStandardStream;
  auto statements = StoreStatements::OfScript(isInput ? ReadWholeText(console.in, kStandardInput)
                                                      : ReadWholeFile(from));
  if (statements.count() == 0) {
    throw UsageError(
        fmt::format("there is no statement in {}", isInput ? std::string(kStandardInput) : from));
  }
  return statements;
}

/// Of a store that is there.
ExitStatus RunRights(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (options.roles.empty()) {
    throw UsageError(
        "--rights-only grants rights to roles: name them with --operators or "
        "--administrators");
  }
  if (options.demo || options.force || options.trial || RunsMoving(options.moving)) {
    throw UsageError("--rights-only makes no store: leave the other options out");
  }
  GrantRightsOn(global.file, options.roles);
  console.stored = true;
  if (global.json) {
    ChangeReport report;
    report.stored = true;
    report.facts.Add("operators", options.roles.operators)
        .Add("administrators", options.roles.administrators);
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  console.Remarks() << fmt::format("Granted the rights on {}.\n",
                                   Displayable(global.file.string()));
  return ExitStatus::kDone;
}

/// What a trial says of the rights, which it has looked at.
std::string RightsInWords(const StoreRoles& roles) {
  if (roles.empty()) {
    return "";
  }
  const bool isOne = roles.operators.empty() || roles.administrators.empty();
  return isOne ? fmt::format(", and grant the rights on it to '{}{}'", roles.operators,
                             roles.administrators)
               : fmt::format(", and grant the rights on it to '{}' and '{}'", roles.operators,
                             roles.administrators);
}

ExitStatus RunMaking(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (options.force && global.answer == false) {
    throw UsageError("--force replaces a store, and --no says No: leave one of them out");
  }
  const NewStorePlace place{options.force, options.trial, options.distributed, options.roles};
  if (RunsMoving(options.moving)) {
    if (options.demo) {
      throw UsageError(
          "--from brings a building in, and --demo makes one up: leave one of them out");
    }
    return RunMoving(global, options.moving, place, console);
  }
  PutNewStore(global, place, options.demo, {}, console);
  console.stored = !options.trial;
  if (global.json) {
    ChangeReport report;
    report.trial = options.trial;
    report.stored = console.stored;
    report.added.push_back({"store", qorcred::Null{}, global.file.string()});
    report.facts.Add("demo", options.demo);
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  const std::string name = Displayable(global.file.string());
  if (options.trial) {
    console.out << fmt::format("Would create {}{}. This was a trial, nothing was changed.\n", name,
                               RightsInWords(options.roles));
    return ExitStatus::kDone;
  }
  console.Remarks() << (options.demo
                            ? fmt::format(
                                  "Created {} with the demo building. Try 'qorhost units'.\n", name)
                            : fmt::format(
                                  "Created {} without any units. 'qorhost units add' adds one; "
                                  "'qorhost init --demo' makes a store to try things on.\n",
                                  name));
  return ExitStatus::kDone;
}

}  // namespace

ExitStatus RunInit(const GlobalOptions& global, const InitOptions& options, Console& console) {
  if (options.rightsAlone) {
    return RunRights(global, options, console);
  }
  if (!options.roles.empty()) {
    RequireServerForRights(global.file);
  }
  return RunMaking(global, options, console);
}

ExitStatus RunUnits(const GlobalOptions& global, const ListOptions& asked, Console& console) {
  return PrintOfUnits(global, asked, UnitScope::kEvery, console, UnitList);
}

ExitStatus RunDoors(const GlobalOptions& global, const ListOptions& asked, Console& console) {
  return PrintOfUnits(global, asked, UnitScope::kNamed, console, DoorList);
}

ExitStatus RunSteps(const GlobalOptions& global, Console& console) {
  return PrintOfQueue(global, {}, console, StepList);
}

ExitStatus RunSql(const GlobalOptions& global, const SqlOptions& options, Console& console) {
  // What the statements are decides how the file is opened, so they are looked at first.
  const StoreStatements statements = ReadStatements(options, console);
  const bool reads = statements.reads();
  if (!reads && !options.write && !options.trial) {
    throw UsageError(
        fmt::format("{} the database: say --write to let {}",
                    statements.count() == 1 ? "this statement changes" : "these statements change",
                    statements.count() == 1 ? "it" : "them"));
  }
  const bool trial = options.trial && !reads;
  CommandSession session(global, reads ? Access::kRead : Access::kChange, console, TrialOf(trial));
  const std::vector<StatementResult> results = statements.Run(session.desks());
  console.stored = !reads;
  if (session.ToldTrial({}, RowsOf(results))) {
    return ExitStatus::kDone;
  }
  if (trial && global.json) {
    PrintChangeAsJson({RowsOf(results), 0}, true, session, console);  // as of one
  } else {
    PrintResults(results, global.json, session, console);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
