#include "host/cli/dir_code_exchange_commands.h"

#include <fmt/format.h>

#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "host/cli/display_text.h"
#include "host/cli/few_lines.h"
#include "host/cli/progress.h"
#include "host/cli/table_printer.h"
#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "host/files/file_error.h"
#include "host/files/input_file.h"
#include "host/files/json_writer.h"
#include "host/files/whole_file.h"

namespace qorhost {

namespace {

using qorcred::Value;

UnitReading ReadFrom(const std::string& from, Console& console) {
  if (from == kStandardStream) {
    return ReadUnitFile(console.in);
  }
  InputFile file(from, "unit file");
  return ReadUnitFile(file);
}

std::string NameOfFile(const std::string& from) {
  return from == kStandardStream ? "standard input" : from;
}

void NameBadLines(const std::vector<LineFault>& faults, const std::string& from, Console& console) {
  FewLines lines(console, "bad lines");
  for (const LineFault& fault : faults) {
    lines.Tell(fmt::format("{}, line {}: {}", Displayable(NameOfFile(from)), fault.line,
                           Displayable(fault.reason)));
  }
  lines.TellRest();
}

/// Raises RefusedError for lines that may not be left out.
void RefuseLines(const std::string& refusal) {
  if (!refusal.empty()) {
    throw RefusedError(refusal + ", or say --skip-bad-lines");
  }
}

/// Names every line that was not taken over. Raises RefusedError unless they may be left out, and
/// for a file that is no unit file.
void ReportBadLines(const UnitReading& reading, BadLines badLines, const std::string& from,
                    Console& console) {
  const std::string file = NameOfFile(from);
  NameBadLines(reading.faults, from, console);
  if (!reading.isUnitFile) {
    throw RefusedError(fmt::format("{} is no unit file, so nothing was changed", file));
  }
  RefuseLines(RefusalOf(reading, badLines));
  if (reading.faults.empty() && !reading.isCounted) {
    console.err << fmt::format(
        "qorhost: {} has no end line, as files of an older version: whether it is whole cannot be "
        "told.\n",
        Displayable(file));
  }
}

/// The same of the lines that the screen refuses.
void ReportRefusedLines(const std::vector<LineFault>& faults, BadLines badLines,
                        const std::string& from, Console& console) {
  NameBadLines(faults, from, console);
  if (!faults.empty() && badLines == BadLines::kRefused) {
    RefuseLines(RefusalOfLines(faults.size()));
  }
}

Value Number(std::size_t count) {
  return {static_cast<double>(count)};
}

void ReportKept(std::size_t kept, Console& console) {
  if (kept > 0) {
    console.err << fmt::format(
        "qorhost: {} stored {} not deleted: a bad line may stand for any of them.\n", kept,
        kept == 1 ? "code was" : "codes were");
  }
}

void PrintPlan(const UnitMerge& merge, const UnitFile& file, const UnitName& unit, bool asJson,
               Console& console) {
  const MergePlan& plan = merge.plan();
  PrintRows(console.out, PlanTable(plan, file.codes, merge.stored()), asJson);
  if (!asJson) {
    console.out << fmt::format(
        "Would be {} inserted, {} updated, {} deleted, {} unchanged {}. Nothing was written.\n",
        plan.Count(MergeAction::kInsert), plan.Count(MergeAction::kUpdate),
        plan.Count(MergeAction::kDelete), plan.unchanged, InUnit(unit));
  }
}

void PrintDone(const MergeReport& report, const UnitName& unit, bool asJson, Console& console) {
  const MergeAftermath& aftermath = report.aftermath;
  if (asJson) {
    PrintJsonObject(console.out, {{"unit", unit.key},
                                  {"inserted", Number(report.inserted)},
                                  {"updated", Number(report.updated)},
                                  {"deleted", Number(report.deleted)},
                                  {"unchanged", Number(report.unchanged)},
                                  {"not_deleted", Number(report.kept)},
                                  {"tenants_released", Number(aftermath.tenantsReleased)},
                                  {"steps_withdrawn", Number(aftermath.stepsWithdrawn)}});
    return;
  }
  console.out << fmt::format("{} inserted, {} updated, {} deleted, {} unchanged {}.\n",
                             report.inserted, report.updated, report.deleted, report.unchanged,
                             InUnit(unit));
  if (aftermath.tenantsReleased > 0) {
    console.out << fmt::format("{} without a directory code now.\n",
                               aftermath.tenantsReleased == 1
                                   ? "1 tenant is"
                                   : fmt::format("{} tenants are", aftermath.tenantsReleased));
  }
  if (aftermath.stepsWithdrawn > 0) {
    console.out << fmt::format(
        "{} withdrawn: the unit's codes hold.\n",
        aftermath.stepsWithdrawn == 1
            ? "1 waiting step was"
            : fmt::format("{} waiting steps were", aftermath.stepsWithdrawn));
  }
}

/// Names every code that is not written. Raises RefusedError unless they may be left out.
void ReportObstacles(const std::vector<Obstacle>& obstacles, bool skip, Console& console) {
  FewLines lines(console, "codes");
  for (const Obstacle& obstacle : obstacles) {
    lines.Tell(fmt::format("directory code {} (RID {}): {}", qorcred::NumberText(obstacle.number),
                           obstacle.rid, Displayable(obstacle.reason)));
  }
  lines.TellRest();
  if (!obstacles.empty() && !skip) {
    throw RefusedError(fmt::format(
        "a unit cannot hold {} of the codes, so nothing was written: change them, or leave them "
        "out with --skip",
        obstacles.size()));
  }
}

/// Raises RefusedError for a file that is there already, unless it is to be replaced.
void WriteFile(const UnitFile& unit, const GlobalOptions& global,
               const DirCodeExportOptions& options) {
  const Writing writing{options.force ? Standing::kReplaced : Standing::kStays,
                        FilesOfStore(global.file)};
  try {
    WriteWholeFile(options.to, writing, [&unit](std::ostream& out) { WriteUnitFile(out, unit); });
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) throw;
    throw RefusedError(std::string(failure.what()) +
                       ": name another file with --to, or replace it with --force");
  }
}

}  // namespace

ExitStatus RunDirCodeSync(const GlobalOptions& global, const DirCodeSyncOptions& options,
                          Console& console) {
  CommandSession session(global, options.dryRun ? Access::kRead : Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const UnitReading reading = ReadFrom(options.from, console);
  const BadLines badLines = options.skipBadLines ? BadLines::kLeftOut : BadLines::kRefused;
  ReportBadLines(reading, badLines, options.from, console);

  UnitMerge merge(session.desks(), unit.key, reading, badLines);
  if (options.dryRun) {
    ReportRefusedLines(merge.Plan().faults, badLines, options.from, console);
    PrintPlan(merge, reading.file, unit, global.json, console);
    ReportKept(merge.plan().kept, console);
    return ExitStatus::kDone;
  }
  MergeReport report = merge.Apply(BarOn(console, global.trace));
  // Nobody waits while the person thinks: there may be more to agree to by then.
  while (report.wholesale) {
    session.RequireConsent(
        fmt::format("{} of the unit's {} directory codes will be deleted. Go on?",
                    report.wholesale->deletions, report.wholesale->stored));
    report = merge.Apply(BarOn(console, global.trace), report.wholesale->deletions);
  }
  ReportRefusedLines(report.faults, badLines, options.from, console);
  const ExitStatus status = TellChange(report, "unit", console);
  if (report.done()) {
    PrintDone(report, unit, global.json, console);
    ReportKept(report.kept, console);
  }
  return status;
}

ExitStatus RunDirCodeExport(const GlobalOptions& global, const DirCodeExportOptions& options,
                            Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName chosen = session.ChosenUnit();
  const auto [unit, obstacles] = ExportUnit(session.desks(), chosen.key, options.firmware);
  ReportObstacles(obstacles, options.skip, console);
  if (options.to == kStandardStream) {
    PrintRaw(console, [&file = unit](std::ostream& out) { WriteUnitFile(out, file); });
    return ExitStatus::kDone;
  }
  WriteFile(unit, global, options);
  console.stored = true;
  console.out << fmt::format("Wrote {} directory {} to {} ({}).\n", unit.codes.size(),
                             unit.codes.size() == 1 ? "code" : "codes", Displayable(options.to),
                             NameOf(chosen));
  return ExitStatus::kDone;
}

}  // namespace qorhost
