#include "host/cli/dir_code_exchange.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <system_error>
#include <vector>

#include "frame/convert.h"
#include "host/cli/display_text.h"
#include "host/cli/progress.h"
#include "host/desks/exported_codes.h"
#include "host/desks/unit_merge.h"
#include "host/files/table.h"
#include "host/unit/unit_file.h"

namespace qorhost {

namespace {

namespace fs = std::filesystem;
using qorcred::Value;

constexpr std::string_view kStandardStream = "-";
constexpr std::size_t kWorthABar = 1000;  // steps from which a merge takes noticeable time

UnitReading ReadFrom(const std::string& from, Console& console) {
  if (from == kStandardStream) {
    return ReadUnitFile(console.in);
  }
  std::error_code ignored;
  std::ifstream file(from, std::ios::binary);
  if (!file || fs::is_directory(from, ignored)) {
    throw FailureError(fmt::format("cannot read the unit file '{}'", from));
  }
  return ReadUnitFile(file);
}

/// Names every line that was not taken over. Raises RefusedError unless they may be left out.
void ReportBadLines(const std::vector<LineFault>& faults, const SyncOptions& options,
                    Console& console) {
  const std::string file = options.from == kStandardStream ? "standard input" : options.from;
  for (const LineFault& fault : faults) {
    console.err << fmt::format("qorhost: {}, line {}: {}\n", Displayable(file), fault.line,
                               Displayable(fault.reason));
  }
  if (!faults.empty() && !options.skipBadLines) {
    throw RefusedError(
        fmt::format("{} bad {}, so nothing was changed: mend the file, or say --skip-bad-lines",
                    faults.size(), faults.size() == 1 ? "line" : "lines"));
  }
}

Value Number(std::size_t count) {
  return {static_cast<double>(count)};
}

void ReportKept(const MergePlan& plan, Console& console) {
  if (plan.kept > 0) {
    console.err << fmt::format(
        "qorhost: {} stored {} not deleted: a bad line may stand for any of them.\n", plan.kept,
        plan.kept == 1 ? "code was" : "codes were");
  }
}

void PrintPlan(const UnitMerge& merge, const UnitFile& unit, bool asJson, Console& console) {
  const MergePlan& plan = merge.plan();
  PrintRows(console.out, PlanTable(plan, unit.codes, merge.stored()), asJson);
  if (!asJson) {
    console.out << fmt::format(
        "Would be {} inserted, {} updated, {} deleted, {} unchanged. Nothing was written.\n",
        plan.Count(MergeAction::kInsert), plan.Count(MergeAction::kUpdate),
        plan.Count(MergeAction::kDelete), plan.unchanged);
  }
}

void PrintDone(const UnitMerge& merge, const UnitMerge::Aftermath& aftermath, bool asJson,
               Console& console) {
  const MergePlan& plan = merge.plan();
  const std::size_t inserted = plan.Count(MergeAction::kInsert);
  const std::size_t updated = plan.Count(MergeAction::kUpdate);
  const std::size_t deleted = plan.Count(MergeAction::kDelete);
  if (asJson) {
    PrintJsonObject(console.out, {{"inserted", Number(inserted)},
                                  {"updated", Number(updated)},
                                  {"deleted", Number(deleted)},
                                  {"unchanged", Number(plan.unchanged)},
                                  {"not_deleted", Number(plan.kept)},
                                  {"tenants_released", Number(aftermath.tenantsReleased)},
                                  {"steps_withdrawn", Number(aftermath.stepsWithdrawn)}});
    return;
  }
  console.out << fmt::format("{} inserted, {} updated, {} deleted, {} unchanged.\n", inserted,
                             updated, deleted, plan.unchanged);
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

UnitMerge::Aftermath ApplyWatched(UnitMerge& merge, bool watched, Console& console) {
  std::unique_ptr<ProgressBar> bar;
  return merge.Apply(
      [&] {
        const std::size_t steps = merge.plan().steps.size();
        if (watched && steps >= kWorthABar) {
          bar = std::make_unique<ProgressBar>(console.err, static_cast<std::int64_t>(steps));
        }
      },
      [&] {
        if (bar != nullptr) {
          bar->Advance();
        }
      });
}

/// Names every code that is not written. Raises RefusedError unless they may be left out.
void ReportObstacles(const std::vector<Obstacle>& obstacles, bool skip, Console& console) {
  for (const Obstacle& obstacle : obstacles) {
    console.err << fmt::format("qorhost: directory code {} (RID {}): {}\n",
                               qorcred::NumberText(obstacle.number), obstacle.rid,
                               Displayable(obstacle.reason));
  }
  if (!obstacles.empty() && !skip) {
    throw RefusedError(fmt::format(
        "a unit cannot hold {} of the codes, so nothing was written: change them, or leave them "
        "out with --skip",
        obstacles.size()));
  }
}

/// Writes the file beside its place and moves it there when it is whole.
void WriteWhole(const fs::path& to, const UnitFile& unit) {
  std::error_code error;
  if (fs::exists(to, error) && !fs::is_regular_file(to, error)) {
    throw RefusedError(fmt::format(
        "'{}' is no file that can be replaced: name another with --to, or - for standard output",
        to.string()));
  }
  // A link stays: what it leads to is replaced.
  const fs::path place = fs::is_symlink(to, error) ? fs::weakly_canonical(to) : to;
  fs::path fresh = place;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  if (file) {
    WriteUnitFile(file, unit);
    file.close();
  }
  if (file) {
    fs::rename(fresh, place, error);
  }
  if (!file || error) {
    std::error_code ignored;
    fs::remove(fresh, ignored);
    throw FailureError(fmt::format("cannot write '{}'{}{}", to.string(), error ? ": " : "",
                                   error ? error.message() : ""));
  }
}

}  // namespace

ExitStatus RunCodeSync(const GlobalOptions& global, const SyncOptions& options, Console& console) {
  StoreSession session(
      OpenFile(global, options.dryRun ? OpenMode::kReadOnly : OpenMode::kReadWrite), global,
      console);
  const std::int32_t unitKey = session.ChosenUnit().key;
  const UnitReading reading = ReadFrom(options.from, console);
  ReportBadLines(reading.faults, options, console);

  // A bad line may stand for any stored code, so none counts as gone from the unit then.
  const bool complete = reading.faults.empty();
  UnitMerge merge(session, unitKey, reading.file, complete);
  if (options.dryRun) {
    merge.Plan();
    PrintPlan(merge, reading.file, global.json, console);
  } else {
    const bool watched = console.environment.errorIsTerminal && !session.traced();
    PrintDone(merge, ApplyWatched(merge, watched, console), global.json, console);
  }
  ReportKept(merge.plan(), console);
  return ExitStatus::kDone;
}

ExitStatus RunCodeExport(const GlobalOptions& global, const ExportOptions& options,
                         Console& console) {
  StoreSession session(OpenFile(global, OpenMode::kReadOnly), global, console);
  ExportedCodes read = ExportCodes(session, session.ChosenUnit().key);
  ReportObstacles(read.obstacles, options.skip, console);
  UnitFile unit;
  if (!options.firmware.empty()) {
    unit.firmware = options.firmware;
  }
  unit.codes = std::move(read.codes);
  if (unit.firmware == qorcred::kFirmwareWithoutDisplay) {
    for (UnitCode& code : unit.codes) {
      code[qorcred::unit_place::kDisplayMode] = "0";
    }
  }
  if (options.to == kStandardStream) {
    WriteUnitFile(console.out, unit);
    return ExitStatus::kDone;
  }
  WriteWhole(options.to, unit);
  console.out << fmt::format("Wrote {} directory {} to {}.\n", unit.codes.size(),
                             unit.codes.size() == 1 ? "code" : "codes", Displayable(options.to));
  return ExitStatus::kDone;
}

}  // namespace qorhost
