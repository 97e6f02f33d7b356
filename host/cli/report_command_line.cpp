#include "host/cli/report_command_line.h"

#include <array>
#include <string>

#include "host/cli/list_command_line.h"
#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "host/desks/report_words.h"

namespace qorhost {

namespace {

constexpr std::array kDeletion{FieldWord{report_input::kRids, "--delete", {}}};
constexpr auto kReportWords = WithListWords(kDeletion);

CLI::Option* DescribeOutput(CLI::App& command, ReportOptions& options) {
  auto* where = DescribeConditions(command, options.conditions,
                                   "A condition on a field; several must all hold");
  DescribeOrder(command, options.asked);
  DescribeFormats(command, options.asked.output,
                  "table for people (the default), csv and json with every column, html for "
                  "printing, sql for the statement alone",
                  {"table", "csv", "json", "html", "sql"});
  return where;
}

}  // namespace

void DescribeReports(CommandPlace place, const GlobalOptions& global, ReportOptions& options) {
  const CommandPlace reports = AddGroup(
      place, "report", "Print a unit's directory codes or credentials, narrowed by conditions",
      "  qorhost report dircodes\n  qorhost report credentials --help");

  static_assert(DirCodeReport::kMostConditions == 5, "the help says five");
  auto* codes = AddCommand(
      reports, "dircodes", "The directory codes by display name; at most five conditions",
      "  qorhost report dircodes --unit 2 --where \"Do Not Disturb = yes\"\n"
      "  qorhost report dircodes --where \"Display Name begins with K\" --format csv > codes.csv\n"
      "  qorhost report dircodes --where \"Directory End Date between 2026-01-01 AND 2026-12-31\"\n"
      "Fields: those that the unit's store offers; name a wrong one to see them, and a wrong\n"
      "operator to see what goes with a field.",
      [&](Console& console) { return RunDirCodeReport(global, options, console); }, kReportWords);
  DescribeOutput(*codes, options);

  auto* credentials = AddCommand(
      reports, "credentials", "The credentials with the tenants who hold them",
      std::string("  qorhost report credentials --where \"Credential Type = transmitter\"\n"
                  "  qorhost report credentials --where \"Card Number between 100 AND 199\" \\\n"
                  "      --where \"Tenant Name contains ab\" --format json\n"
                  "  qorhost report credentials --unit 2 --delete rid:17,18,21\n"
                  "Fields: ")
          .append(CredentialReport::FieldNames())
          .append("; name a wrong operator to\nsee what goes with a field.")
          .c_str(),
      [&](Console& console) { return RunCredentialReport(global, options, console); },
      kReportWords);
  auto* where = DescribeOutput(*credentials, options);
  auto* toDelete =
      credentials
          ->add_option(
              "--delete", options.toDelete,
              "Delete these credentials without a question; a tenant may hold none of them")
          ->type_name("rid:RID,RID...")
          ->excludes(where)
          ->excludes("--format");
  DescribeTrial(*credentials, options.trial)->needs(toDelete);
}

}  // namespace qorhost
