#include "host/cli/report_commands.h"

#include <fmt/format.h>

#include <functional>
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

/// The report of one unit, being made.
struct UnitReport {
  CommandSession& session;
  const UnitName& unit;
  bool isStatement;  ///< its statement is asked for alone
  bool isTitled;     ///< something stands above its rows
  std::string title{};
  List rows{};

  [[nodiscard]] std::string Title() const {
    return isTitled ? Displayable(ReportTitle(session.desks(), unit.key)) : std::string();
  }
};

/// Prints the reports of all units that are asked for as one. `run` makes that of a unit; what ends
/// one of them ends all.
ExitStatus RunOfUnits(const GlobalOptions& global, const ReportOptions& options, Console& console,
                      const std::function<ExitStatus(UnitReport&)>& run) {
  const std::string format = FormatOf(global, options);
  const bool isStatement = format == "sql";
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = UnitsOf(global, options, session);
  List rows;
  std::string title;
  for (const UnitName& unit : units) {
    UnitReport made{session, unit, isStatement, format == "table" && !options.asked.allUnits};
    const ExitStatus status = run(made);
    if (status != ExitStatus::kDone) {
      return status;
    }
    title = std::move(made.title);
    if (!isStatement) {
      Add(rows, std::move(made.rows), unit, options);
    }
  }
  if (!isStatement) {
    Print(std::move(rows), std::move(title), units, global, options, session, console);
  }
  return ExitStatus::kDone;
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
  return RunOfUnits(global, options, console, [&](UnitReport& made) {
    DirCodeReport report(made.session.desks(), made.unit.key);
    report.Narrow(options.conditions);
    const Outcome composed = report.Compose();
    if (made.isStatement && composed.done()) {
      console.out << Displayable(report.statement()) << '\n';
      return ExitStatus::kDone;
    }
    made.title = composed.done() ? made.Title() : std::string();
    const ExitStatus status =
        TellWithHint(composed.done() ? report.Run() : composed, options, kCodeHint, console);
    if (status == ExitStatus::kDone) {
      made.rows = report.Rows();
    }
    return status;
  });
}

ExitStatus RunCredentialReport(const GlobalOptions& global, const ReportOptions& options,
                               Console& console) {
  if (options.toDelete) {
    return DeleteCredentials(global, options, console);
  }
  return RunOfUnits(global, options, console, [&](UnitReport& made) {
    CredentialReport report(made.session.desks(), made.unit.key, options.conditions);
    made.title = made.Title();
    const Outcome ran = report.Run();
    if (made.isStatement) {
      // Composed also when the store refused to run it: this is where to look for the reason.
      console.out << Displayable(report.statement()) << '\n';
    }
    const ExitStatus status = TellWithHint(ran, options, kCredentialHint, console);
    if (status == ExitStatus::kDone) {
      made.rows = report.Rows();
    }
    return status;
  });
}

}  // namespace qorhost
