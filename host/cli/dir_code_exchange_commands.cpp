#include "host/cli/dir_code_exchange_commands.h"

#include <fmt/format.h>

#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "host/cli/change_report.h"
#include "host/cli/progress.h"
#include "host/cli/written_file.h"
#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "host/desks/words.h"
#include "host/files/input_file.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/few_lines.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

UnitReading ReadFrom(const std::string& from, Console& console) {
  if (from == kStandardStream) {
    return ReadUnitFile(console.in);
  }
  InputFile file(from, "unit file");
  return ReadUnitFile(file);
}

std::string NameOfSource(const std::string& from) {
  return from == kStandardStream ? std::string(kStandardInput) : from;
}

/// Names the lines that are not taken over.
void NameBadLines(const std::vector<LineFault>& faults, const std::string& from, Console& console) {
  FewLines lines(console, "bad lines");
  for (const LineFault& fault : faults) {
    lines.Tell(fmt::format("{}, line {}: {}", Displayable(NameOfSource(from)), fault.line,
                           Displayable(fault.reason)));
  }
  lines.TellRest();
}

/// What to do about lines that may not be left out.
[[noreturn]] void RefuseBadLines(const std::string& refusal) {
  throw RefusedError(refusal + ", or say --skip-bad-lines");
}

/// Begins the merge. Raises RefusedError that says what to do about a file that is not merged.
UnitMerge Begin(DeskSession& session, const UnitName& unit, const UnitReading& reading,
                const DirCodeSyncOptions& options) {
  try {
    return {session, unit.key, reading,
            options.skipBadLines ? BadLines::kLeftOut : BadLines::kRefused};
  } catch (const UnusableReading& refusal) {
    if (!refusal.isUnitFile()) {
      throw RefusedError(
          fmt::format("{} is no unit file, so nothing was changed", NameOfSource(options.from)));
    }
    RefuseBadLines(refusal.what());
  }
}

void TellMissingEnd(const UnitReading& reading, const std::string& from, Console& console) {
  if (reading.faults.empty() && !reading.isCounted) {
    console.err << fmt::format(
        "qorhost: {} has no end line, as files of an older version: whether it is whole cannot be "
        "told.\n",
        Displayable(NameOfSource(from)));
  }
}

/// Names the lines that the screen refuses. Raises RefusedError unless they may be left out.
void ReportRefusedLines(const std::vector<LineFault>& faults, const DirCodeSyncOptions& options,
                        Console& console) {
  NameBadLines(faults, options.from, console);
  if (!faults.empty() && !options.skipBadLines) {
    RefuseBadLines(RefusalOfLines(faults.size()));
  }
}

void ReportKept(std::size_t kept, Console& console) {
  if (kept > 0) {
    console.err << fmt::format("qorhost: {} not deleted: a bad line may stand for any of them.\n",
                               Counted(kept, "stored code was", "stored codes were"));
  }
}

/// What a merge does to the codes, as programs are told it.
ChangeReport ReportOn(const UnitMerge& merge, const UnitFile& file, const UnitName& unit) {
  ChangeReport report;
  report.unit = unit.key;
  for (const MergeStep& step : merge.plan().steps) {
    std::vector<TouchedThing>& things = step.action == MergeAction::kInsert   ? report.added
                                        : step.action == MergeAction::kUpdate ? report.changed
                                                                              : report.deleted;
    const MergeSubject subject = SubjectOf(step, file.codes, merge.stored());
    things.push_back({"directory code",
                      subject.rid ? qorcred::Value(*subject.rid) : qorcred::Value(qorcred::Null{}),
                      qorcred::NumberText(subject.number)});
  }
  report.facts.Add("unchanged", CountCell(merge.plan().unchanged))
      .Add("not_deleted", CountCell(merge.plan().kept))
      .Add("plan", PlanTable(merge.plan(), file.codes, merge.stored()));
  return report;
}

void PrintPlan(const UnitMerge& merge, const UnitFile& file, const UnitName& unit, bool asJson,
               Console& console) {
  const MergePlan& plan = merge.plan();
  if (asJson) {
    ChangeReport report = ReportOn(merge, file, unit);
    report.trial = true;
    report.facts.Add("tenants_released", qorcred::Null{}).Add("steps_withdrawn", qorcred::Null{});
    PrintChange(console.out, report);
    return;
  }
  PrintTable(console.out, PlanTable(plan, file.codes, merge.stored()), 0, WidestText(console));
  console.out << fmt::format(
      "Would be {} inserted, {} updated, {} deleted, {} unchanged {}. Nothing was written.\n",
      plan.Count(MergeAction::kInsert), plan.Count(MergeAction::kUpdate),
      plan.Count(MergeAction::kDelete), plan.unchanged, InUnit(unit));
}

void PrintDoneAsJson(const MergeReport& done, ChangeReport report, Console& console) {
  report.stored = done.inserted + done.updated + done.deleted > 0;
  report.facts.Add("tenants_released", CountCell(done.aftermath.tenantsReleased))
      .Add("steps_withdrawn", CountCell(done.aftermath.stepsWithdrawn));
  PrintChange(console.out, report);
}

void PrintDone(const MergeReport& report, const UnitName& unit, Console& console) {
  const MergeAftermath& aftermath = report.aftermath;
  console.Remarks() << fmt::format("{} inserted, {} updated, {} deleted, {} unchanged {}.\n",
                                   report.inserted, report.updated, report.deleted,
                                   report.unchanged, InUnit(unit));
  if (aftermath.tenantsReleased > 0) {
    console.Remarks() << fmt::format(
        "{} without a directory code now.\n",
        Counted(aftermath.tenantsReleased, "tenant is", "tenants are"));
  }
  if (aftermath.stepsWithdrawn > 0) {
    console.Remarks() << fmt::format(
        "{} withdrawn: the unit's codes hold.\n",
        Counted(aftermath.stepsWithdrawn, "waiting step was", "waiting steps were"));
  }
}

/// Names every code that is not written.
void ReportObstacles(const std::vector<Obstacle>& obstacles, Console& console) {
  FewLines lines(console, "codes");
  for (const Obstacle& obstacle : obstacles) {
    lines.Tell(fmt::format("directory code {}: {}",
                           WithRid(qorcred::NumberText(obstacle.number), obstacle.rid),
                           Displayable(obstacle.reason)));
  }
  lines.TellRest();
}

ExportedUnit Export(DeskSession& session, std::int32_t unitKey, const DirCodeExportOptions& options,
                    Console& console) {
  try {
    ExportedUnit exported = ExportUnit(session, unitKey, options.firmware,
                                       options.skip ? Unholdable::kLeftOut : Unholdable::kRefused);
    ReportObstacles(exported.obstacles, console);
    return exported;
  } catch (const UnholdableCodes& refusal) {
    ReportObstacles(refusal.obstacles(), console);
    throw RefusedError(std::string(refusal.what()) + ", or leave them out with --skip");
  }
}

}  // namespace

ExitStatus RunDirCodeSync(const GlobalOptions& global, const DirCodeSyncOptions& options,
                          Console& console) {
  CommandSession session(global, options.dryRun ? Access::kRead : Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const UnitReading reading = ReadFrom(options.from, console);
  NameBadLines(reading.faults, options.from, console);
  UnitMerge merge = Begin(session.desks(), unit, reading, options);
  TellMissingEnd(reading, options.from, console);
  if (options.dryRun) {
    ReportRefusedLines(merge.Plan().faults, options, console);
    PrintPlan(merge, reading.file, unit, global.json, console);
    ReportKept(merge.plan().kept, console);
    return ExitStatus::kDone;
  }
  MergeReport report = merge.Apply(BarOn(console, global.trace));
  // Nobody waits while the person thinks: it may be about other codes by then.
  while (report.losses) {
    session.RequireConsent(report.losses->Question());
    report = merge.Apply(BarOn(console, global.trace), report.losses->codes);
  }
  ReportRefusedLines(report.faults, options, console);
  const ExitStatus status = TellChange(report, "unit", console);
  if (report.done()) {
    if (global.json) {
      PrintDoneAsJson(report, ReportOn(merge, reading.file, unit), console);
    } else {
      PrintDone(report, unit, console);
    }
    ReportKept(report.kept, console);
  }
  return status;
}

ExitStatus RunDirCodeExport(const GlobalOptions& global, const DirCodeExportOptions& options,
                            Console& console) {
  if (options.to != kStandardStream) {
    RequireNoTraceIn(options.to, "--to", global);
  }
  CommandSession session(global, Access::kRead, console);
  const UnitName chosen = session.ChosenUnit();
  const UnitFile unit = Export(session.desks(), chosen.key, options, console).file;
  if (options.to == kStandardStream && !options.trial) {
    PrintRaw(console, [&unit](std::ostream& out) { WriteUnitFile(out, unit); });
    return ExitStatus::kDone;
  }
  WriteUnlessTried(
      {options.to, options.force, options.trial}, kAdviceOnTo, global,
      [&](Standing existing) { WriteExport(unit, options.to, existing, global.file); });
  console.stored = !options.trial;
  if (global.json) {
    PrintJsonObject(console.out, {{"unit", chosen.key},
                                  {"file", options.to},
                                  {"dry_run", options.trial},
                                  {"directory_codes", CountCell(unit.codes.size())}});
    return ExitStatus::kDone;
  }
  const std::string what =
      fmt::format("{} to {} ({})", Counted(unit.codes.size(), "directory code", "directory codes"),
                  Displayable(options.to), NameOf(chosen));
  if (options.trial) {
    console.out << fmt::format("Would write {}. Nothing was written.\n", what);
  } else {
    console.Remarks() << fmt::format("Wrote {}.\n", what);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
