#include "host/cli/report_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include "host/cli/display_text.h"
#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/list_entries.h"
#include "host/files/csv_writer.h"
#include "host/files/table.h"
#include "reports/cls_dir_code_report.h"

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
ExitStatus Outcome(bool succeeded, const ReportOptions& options, std::string_view hint,
                   StoreSession& session, Console& console) {
  const ExitStatus status = OutcomeOf(succeeded, session.log(), console.err);
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
    PrintCsv(console.out, report.Complete());
  } else if (format == "json") {
    PrintJson(console.out, report.Complete());
  } else {
    console.out << title << '\n';
    PrintTable(console.out, report.Visible());
  }
}

/// How many RIDs there are. Raises UsageError for anything but whole numbers with commas between.
std::size_t CheckRids(const std::string& rids) {
  std::size_t count = 0;
  std::size_t start = 0;
  for (bool more = true; more; ++count) {
    const std::size_t comma = rids.find(',', start);
    more = comma != std::string::npos;
    const std::string_view rid =
        std::string_view(rids).substr(start, more ? comma - start : std::string::npos);
    if (rid.empty() || rid.find_first_not_of("0123456789") != std::string_view::npos) {
      throw UsageError(
          fmt::format("--delete '{}' must be RIDs of the report with commas between them, as in "
                      "17,18,21",
                      Displayable(rids)));
    }
    (void)ReadLong("--delete", rid);
    start = more ? comma + 1 : rids.size();
  }
  return count;
}

ExitStatus DeleteCredentials(const GlobalOptions& global, const ReportOptions& options,
                             Console& console) {
  const std::size_t given = CheckRids(*options.toDelete);
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  CredentialReport report(session, session.ChosenUnit().key, {});
  std::int32_t deleted = 0;
  const bool done = report.Delete(*options.toDelete, deleted);
  const ExitStatus status = OutcomeOf(done, session.log(), console.err);
  if (done && global.json) {
    PrintJsonObject(console.out, {{"deleted", deleted}});
  } else if (done) {
    console.out << fmt::format("Deleted {} of {} {}.\n", deleted, given,
                               given == 1 ? "credential" : "credentials");
  }
  return status;
}

}  // namespace

std::string ReportTitle(StoreSession& session, std::int32_t unitKey) {
  qorcred::clsDirCodeReport lookups(session.host());
  const std::string name = lookups.pbGetUnitName(session.connection(), unitKey);
  return name.empty() ? fmt::format("Unit {}", unitKey) : Displayable(name);
}

ExitStatus RunDirCodeReport(const GlobalOptions& global, const ReportOptions& options,
                            Console& console) {
  const std::string format = FormatOf(global, options);
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  const std::int32_t unit = session.ChosenUnit().key;
  DirCodeReport report(session, unit);
  for (const std::string& note : report.Narrow(options.conditions)) {
    console.err << "qorhost: " << Displayable(note) << '\n';
  }

  const std::string statement = report.Statement();
  if (format == "sql" || !session.log().failures.empty()) {
    const ExitStatus status = Outcome(true, options, kCodeHint, session, console);
    if (status == ExitStatus::kDone) {
      console.out << statement << '\n';
    }
    return status;
  }
  const std::string title = format == "table" ? ReportTitle(session, unit) : std::string();
  report.Show(statement);
  const ExitStatus status = Outcome(true, options, kCodeHint, session, console);
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
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  const std::int32_t unit = session.ChosenUnit().key;
  CredentialReport report(session, unit, options.conditions);
  const std::string title = format == "table" ? ReportTitle(session, unit) : std::string();
  const bool ran = report.Run();
  if (format == "sql") {
    // Composed also when the store refused to run it: this is where to look for the reason.
    console.out << report.statement() << '\n';
  }
  const ExitStatus status = Outcome(ran, options, kCredentialHint, session, console);
  if (status == ExitStatus::kDone && format != "sql") {
    Print(report, format, title, console);
  }
  return status;
}

}  // namespace qorhost
