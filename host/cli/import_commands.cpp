#include "host/cli/import_commands.h"

#include <fmt/format.h>

#include "host/cli/progress.h"
#include "host/desks/words.h"
#include "host/files/input_file.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/few_lines.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

std::string ReadInput(const ImportOptions& options, Console& console) {
  if (options.file.empty()) {
    throw UsageError("name the CSV file, or - for standard input; --columns tells what it holds");
  }
  return options.file == kStandardStream ? ReadWholeText(console.in, kStandardInput)
                                         : ReadWholeFile(options.file);
}

ImportRules RulesOf(const GlobalOptions& global, const ImportOptions& options) {
  ImportRules rules;
  rules.dryRun = options.dryRun;
  rules.answerYes = global.answer.value_or(false);
  if (!global.answer) {
    rules.answeredNo = "answered No: --yes answers Yes";
  }
  return rules;
}

void PrintRemarks(const ImportReport& report, bool asJson, Console& console) {
  FewLines refused(console, "refused lines");
  FewLines notes(console, "notes");
  for (const LineRemark& remark : report.remarks) {
    if (!remark.refused || !asJson) {
      (remark.refused ? refused : notes)
          .Tell(fmt::format("line {}: {}", remark.line, Displayable(report.TextOf(remark))));
    }
  }
  refused.TellRest();
  notes.TellRest();
}

void PrintReportAsJson(const ImportReport& report, const UnitName& unit, Console& console) {
  Table lines;
  lines.columns = {{"Line", "line"}, {"Message", "message"}};
  for (const LineRemark& remark : report.remarks) {
    if (remark.refused) {
      lines.rows.push_back({CountCell(remark.line), Displayable(report.TextOf(remark))});
    }
  }
  PrintJsonObject(console.out,
                  {{"unit", unit.key},
                   {"done", CountCell(report.done)},
                   {"refused", CountCell(report.refused)}},
                  "lines", lines);
}

void PrintReport(const ImportReport& report, const ImportCommand& command, const UnitName& unit,
                 Console& console) {
  const std::string done = Counted(report.done, command.one, command.many);
  const std::string refused = Counted(report.refused, "line", "lines");
  (report.dryRun ? console.out : console.Remarks())
      << (report.dryRun
              ? fmt::format("Would import {}, {} refused, {}. Nothing was written.\n", done,
                            refused, InUnit(unit))
              : fmt::format("Imported {}, {} refused, {}.\n", done, refused, InUnit(unit)));
}

ExitStatus RunImport(const GlobalOptions& global, const ImportOptions& options,
                     const ImportCommand& command, Console& console) {
  if (options.columns) {
    PrintTable(console.out, ColumnTable(command.columns));
    return ExitStatus::kDone;
  }
  ImportFile file(ReadInput(options, console), command.columns);
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ImportReport report = command.import(
      session.desks(), unit.key, file, RulesOf(global, options), BarOn(console, global.trace));
  console.stored = report.done > 0 && !report.dryRun;
  PrintRemarks(report, global.json, console);
  if (global.json) {
    PrintReportAsJson(report, unit, console);
  } else {
    PrintReport(report, command, unit, console);
  }
  return StatusOf(report.ending);
}

}  // namespace

void DescribeImport(CommandPlace place, const char* description, const char* examples,
                    const GlobalOptions& global, ImportOptions& options, ImportCommand command) {
  auto* import = AddCommand(place, "import", description, examples,
                            [&global, &options, command](Console& console) {
                              return RunImport(global, options, command, console);
                            });
  import->add_option("FILE", options.file,
                     "A CSV file with headings, as 'report' writes one; - for standard input");
  import->add_flag("-n,--dry-run", options.dryRun, "Say what would be done, write nothing");
  import->add_flag("--columns", options.columns, "Tell what the columns hold, do nothing else");
}

}  // namespace qorhost
