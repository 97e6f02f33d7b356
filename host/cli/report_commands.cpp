#include "host/cli/report_commands.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/report_title.h"
#include "host/desks/row_names.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

/// The format of a report: that of a list, or its statement.
std::string FormatOf(const GlobalOptions& global, const ReportOptions& options) {
  std::string format = FormatOf(global, options.asked.output);
  if (format == "sql" && options.asked.output.toFile()) {
    throw UsageError("--format sql prints the statement: it does not go with --to");
  }
  return format;
}

constexpr std::string_view kCodeHint =
    "values go into the statement as they are: write a quote in one twice; '--format sql' shows "
    "the statement";
constexpr std::string_view kCredentialHint =
    "values go into the statement as they are: write a quote in one twice, a number as digits, and "
    "ask for a name and for none in two reports; '--format sql' shows the statement";

/// The outcome, and behind a failure with conditions the `hint`.
ExitStatus TellWithHint(const Outcome& outcome, const ReportOptions& options, std::string_view hint,
                        Console& console) {
  const ExitStatus status = Tell(outcome, "unit", console);
  if (status == ExitStatus::kFailure && !options.conditions.empty()) {
    console.err << "qorhost: " << hint << '\n';
  }
  return status;
}

/// Which units a report is of.
std::vector<UnitName> UnitsOf(const GlobalOptions& global, const ReportOptions& options,
                              CommandSession& session) {
  RequireOneScope(global, options.asked);
  return options.asked.allUnits ? session.ChosenUnits() : std::vector{session.ChosenUnit()};
}

/// The rows of one unit, or of all with the unit's key.
void Add(List& all, List rows, const UnitName& unit, const ReportOptions& options) {
  Append(all, options.asked.allUnits ? WithUnit(std::move(rows), unit) : std::move(rows));
}

/// Prints the rows as a table or a page for people, or complete for programs and spreadsheets.
void Print(List rows, std::string title, const std::vector<UnitName>& units,
           const GlobalOptions& global, const ReportOptions& options, CommandSession& session,
           Console& console) {
  PrintedList printed{std::move(rows)};
  printed.title = std::move(title);
  printed.everyColumn = true;
  printed.narrowedBy = options.conditions;
  if (!options.asked.allUnits) {
    printed.unit = units.front();
  }
  PrintList(global, options.asked, std::move(printed), session, console);
}

/// What stands above the table of one unit.
std::string TitleOf(CommandSession& session, const std::vector<UnitName>& units,
                    std::string_view format, const ReportOptions& options) {
  return format == "table" && !options.asked.allUnits
             ? Displayable(ReportTitle(session.desks(), units.front().key))
             : std::string();
}

ExitStatus DeleteCredentials(const GlobalOptions& global, const ReportOptions& options,
                             Console& console) {
  const GivenRids rids = GivenRids::Named(*options.toDelete);
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  CredentialReport report(session.desks(), unit.key, {});
  session.RequireDeletion();
  const DeletedCredentials deleted = report.Delete(rids);
  const ExitStatus status = TellChange(deleted, "credential", console);
  if (session.ToldTrial(deleted)) {
    return status;
  }
  if (deleted.done() && global.json) {
    JsonObject object;
    object.Add("unit", unit.key)
        .Add("stored", deleted.rows > 0 && !options.trial)
        .Add("dry_run", options.trial)
        .Add("rows", deleted.rows);
    session.AddTried(object);
    object.Print(console.out);
  } else if (deleted.done()) {
    console.Remarks() << fmt::format("Deleted {} of {} {}.\n", deleted.rows,
                                     Counted(deleted.given, "credential", "credentials"),
                                     InUnit(unit));
  }
  return status;
}

}  // namespace

ExitStatus RunDirCodeReport(const GlobalOptions& global, const ReportOptions& options,
                            Console& console) {
  const std::string format = FormatOf(global, options);
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = UnitsOf(global, options, session);
  List rows;
  std::string title;
  for (const UnitName& unit : units) {
    DirCodeReport report(session.desks(), unit.key);
    report.Narrow(options.conditions);
    const Outcome composed = report.Compose();
    if (format == "sql" && composed.done()) {
      console.out << Displayable(report.statement()) << '\n';
      continue;
    }
    title = composed.done() ? TitleOf(session, units, format, options) : std::string();
    const ExitStatus status =
        TellWithHint(composed.done() ? report.Run() : composed, options, kCodeHint, console);
    if (status != ExitStatus::kDone) {
      return status;
    }
    Add(rows, report.Rows(), unit, options);
  }
  if (format != "sql") {
    Print(std::move(rows), std::move(title), units, global, options, session, console);
  }
  return ExitStatus::kDone;
}

ExitStatus RunCredentialReport(const GlobalOptions& global, const ReportOptions& options,
                               Console& console) {
  if (options.toDelete) {
    return DeleteCredentials(global, options, console);
  }
  const std::string format = FormatOf(global, options);
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = UnitsOf(global, options, session);
  List rows;
  std::string title;
  for (const UnitName& unit : units) {
    CredentialReport report(session.desks(), unit.key, options.conditions);
    title = TitleOf(session, units, format, options);
    const Outcome ran = report.Run();
    if (format == "sql") {
      // Composed also when the store refused to run it: this is where to look for the reason.
      console.out << Displayable(report.statement()) << '\n';
    }
    const ExitStatus status = TellWithHint(ran, options, kCredentialHint, console);
    if (status != ExitStatus::kDone) {
      return status;
    }
    Add(rows, report.Rows(), unit, options);
  }
  if (format != "sql") {
    Print(std::move(rows), std::move(title), units, global, options, session, console);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
