#include "host/cli/export_commands.h"

#include <fmt/format.h>

#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_out.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

Table TableOf(const std::vector<MovedOutTable>& moved) {
  Table table;
  table.columns = {{"Table", "table"}, {"Rows", "rows"}};
  for (const MovedOutTable& one : moved) {
    table.rows.push_back({std::string(one.name), CountCell(one.rows)});
  }
  return table;
}

std::size_t AllRows(const std::vector<MovedOutTable>& moved) {
  std::size_t rows = 0;
  for (const MovedOutTable& one : moved) rows += one.rows;
  return rows;
}

std::vector<MovedOutTable> Write(CommandSession& session, const GlobalOptions& global,
                                 const ExportOptions& options) {
  std::optional<std::int32_t> unit;
  if (global.unit) unit = session.ChosenUnit().key;
  try {
    return MoveOut(session.desks(), options.desktopCsv, unit, TrialOf(options.trial));
  } catch (const FileError& failure) {
    if (failure.problem() == FileProblem::kExists || failure.problem() == FileProblem::kOccupied) {
      throw RefusedError(failure.what());
    }
    throw;
  }
}

}  // namespace

void DescribeExport(CommandPlace place, const GlobalOptions& global, ExportOptions& options) {
  auto* command =
      AddCommand(place, "export", "Write the tables of the building for another application",
                 "  qorhost export --desktop-csv building-csv\n"
                 "  qorhost export --desktop-csv unit-2 --unit 2 --dry-run",
                 [&](Console& console) { return RunExport(global, options, console); });
  command
      ->add_option("--desktop-csv", options.desktopCsv,
                   "As CSV files with schema.ini, which the import of a desktop database takes, "
                   "into a new or empty folder")
      ->type_name("FOLDER")
      ->required();
  DescribeTrial(*command, options.trial);
}

ExitStatus RunExport(const GlobalOptions& global, const ExportOptions& options, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const std::vector<MovedOutTable> moved = Write(session, global, options);
  if (global.json) {
    JsonObject()
        .Add("folder", options.desktopCsv)
        .Add("dry_run", options.trial)
        .Add("tables", TableOf(moved))
        .Print(console.out);
    return ExitStatus::kDone;
  }
  const std::string folder = Displayable(options.desktopCsv);
  const std::string contents = fmt::format("{} in {}", Counted(AllRows(moved), "row", "rows"),
                                           Counted(moved.size(), "table", "tables"));
  if (options.trial) {
    console.out << fmt::format("Would write {} to {}. This was a trial, nothing was written.\n",
                               contents, folder);
  } else {
    console.Remarks() << fmt::format("Wrote {} to {}.\n", contents, folder);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
