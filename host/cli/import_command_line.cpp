#include "host/cli/import_command_line.h"

namespace qorhost {

void DescribeImport(CommandPlace place, const char* description, const char* examples,
                    const GlobalOptions& global, ImportOptions& options, ImportCommand run) {
  auto* command = AddCommand(
      place, "import", description, examples,
      [&global, &options, run](Console& console) { return run(global, options, console); });
  command->add_option("FILE", options.file,
                      "A CSV file with headings, as 'report' writes one; - for standard input");
  command->add_flag("--dry-run", options.dryRun, "Say what would be done, write nothing");
  command->add_flag("--columns", options.columns, "Tell what the columns hold, do nothing else");
}

}  // namespace qorhost
