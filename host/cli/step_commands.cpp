#include "host/cli/step_commands.h"

#include <fmt/format.h>

#include "host/cli/change_report.h"
#include "host/cli/written_file.h"
#include "host/desks/step_desk.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

using qorcred::Value;

ExitStatus RunStepList(const GlobalOptions& global, const ListOptions& asked, Console& console) {
  return PrintOfQueue(global, asked, console, WaitingStepList);
}

ExitStatus RunStepExport(const GlobalOptions& global, const StepOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.UnitToChange();
  const StepFile file(session.desks(), unit);
  if (options.to == kStandardStream && !options.trial) {
    PrintRaw(console, [&file](std::ostream& out) { file.Write(out); });
    return ExitStatus::kDone;
  }
  RequireNoTraceIn(options.to, "FILE", global);
  WriteUnlessTried({options.to, options.force, options.trial},
                   "name another file, or replace it with --force behind 'export'", global,
                   [&](Standing existing) { file.WriteTo(options.to, existing, global.file); });
  console.stored = !options.trial;
  if (global.json) {
    PrintJsonObject(console.out,
                    {{"unit", unit.key},
                     {"file", options.to},
                     {"dry_run", options.trial},
                     {"steps", CountCell(file.count())},
                     {"last_step", file.last() ? Value(*file.last()) : Value(qorcred::Null{})}});
    return ExitStatus::kDone;
  }
  if (options.trial) {
    console.out << fmt::format("Would write {} to {} ({}). Nothing was written.\n",
                               Counted(file.count(), "step", "steps"), Displayable(options.to),
                               NameOf(unit));
    return ExitStatus::kDone;
  }
  console.Remarks() << fmt::format("Wrote {} to {} ({}).\n", Counted(file.count(), "step", "steps"),
                                   Displayable(options.to), NameOf(unit));
  if (file.last()) {
    console.Remarks() << fmt::format(
        "When the unit has them: qorhost steps done --unit {} --upto {}\n", unit.key, *file.last());
  }
  return ExitStatus::kDone;
}

ExitStatus RunStepsDone(const GlobalOptions& global, const StepOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const SentSteps sent =
      MarkSent(session.desks(), unit.key, options.choice, TrialOf(options.trial));
  const bool changed = sent.steps > 0 && !options.trial;
  console.stored = changed;
  if (global.json) {
    ChangeReport report;
    report.unit = unit.key;
    report.trial = options.trial;
    report.stored = changed;
    for (const std::int32_t step : sent.marked) {
      report.changed.push_back({"step", step, ""});
    }
    report.facts.Add("directory_codes", CountCell(sent.codes));
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  std::ostream& told = options.trial ? console.out : console.Remarks();
  if (sent.steps == 0) {
    told << fmt::format("Nothing waits for {}; nothing was changed.\n", NameOf(unit));
    return ExitStatus::kDone;
  }
  told << fmt::format("{} {} {}, {} as the unit has them.{}\n",
                      Counted(sent.steps, "step", "steps"),
                      options.trial ? "would be marked as sent" : "marked as sent", InUnit(unit),
                      Counted(sent.codes, "directory code", "directory codes"),
                      options.trial ? " Nothing was changed." : "");
  return ExitStatus::kDone;
}

}  // namespace qorhost
