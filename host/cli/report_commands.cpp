#include "host/cli/report_commands.h"

#include <fmt/format.h>

#include <string_view>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/report_title.h"
#include "host/desks/row_names.h"
#include "host/desks/words.h"
#include "host/files/csv_writer.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

/// The format of --format, or of --json.
std::string FormatOf(const GlobalOptions& global, const ReportOptions& options) {
  if (global.json && options.format && *options.format != "json") {
    throw UsageError(fmt::format("--json and --format {} exclude each other", *options.format));
  }
  return global.json ? "json" : options.format.value_or("table");
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

/// Prints a report that has a table for people and a complete one for programs.
template <typename Report>
void Print(const Report& report, std::string_view format, std::string_view title,
           Console& console) {
  if (format == "csv") {
    PrintRaw(console, [&report](std::ostream& out) { PrintCsv(out, report.Complete()); });
  } else if (format == "json") {
    PrintJson(console.out, report.Complete());
  } else {
    console.Remarks() << Displayable(title) << '\n';
    PrintTable(console.out, report.Visible());
  }
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
    PrintJsonObject(console.out, {{"unit", unit.key}, {"deleted", deleted.rows}});
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
  const std::int32_t unit = session.ChosenUnit().key;
  DirCodeReport report(session.desks(), unit);
  report.Narrow(options.conditions);

  const Outcome composed = report.Compose();
  if (format == "sql" || !composed.done()) {
    const ExitStatus status = TellWithHint(composed, options, kCodeHint, console);
    if (status == ExitStatus::kDone) {
      console.out << Displayable(report.statement()) << '\n';
    }
    return status;
  }
  const std::string title = format == "table" ? ReportTitle(session.desks(), unit) : std::string();
  const ExitStatus status = TellWithHint(report.Run(), options, kCodeHint, console);
  if (status == ExitStatus::kDone) {
    Print(report, format, title, console);
  }
  return status;
}

ExitStatus RunCredentialReport(const GlobalOptions& global, const ReportOptions& options,
                               Console& console) {
  if (options.toDelete) {
    return DeleteCredentials(global, options, console);
  }
  const std::string format = FormatOf(global, options);
  CommandSession session(global, Access::kRead, console);
  const std::int32_t unit = session.ChosenUnit().key;
  CredentialReport report(session.desks(), unit, options.conditions);
  const std::string title = format == "table" ? ReportTitle(session.desks(), unit) : std::string();
  const Outcome ran = report.Run();
  if (format == "sql") {
    // Composed also when the store refused to run it: this is where to look for the reason.
    console.out << Displayable(report.statement()) << '\n';
  }
  const ExitStatus status = TellWithHint(ran, options, kCredentialHint, console);
  if (status == ExitStatus::kDone && format != "sql") {
    Print(report, format, title, console);
  }
  return status;
}

}  // namespace qorhost
