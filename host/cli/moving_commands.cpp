#include "host/cli/moving_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <exception>
#include <filesystem>

#include "host/cli/change_report.h"
#include "host/cli/progress.h"
#include "host/cli/written_file.h"
#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_in.h"
#include "host/desks/moving_in/moving_report.h"
#include "host/desks/store_check.h"
#include "host/desks/store_file.h"
#include "host/desks/words.h"
#include "host/files/whole_file.h"
#include "host/terminal/display_text.h"
#include "host/terminal/few_lines.h"

namespace qorhost {

namespace {

namespace fs = std::filesystem;

bool IsCsv(const fs::path& file) {
  std::string ending = file.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return ending == ".csv";
}

/// The file of --report.
class ReportFile {
 public:
  /// Raises UsageError and what RequirePlace() raises: before anything is read.
  ReportFile(const GlobalOptions& global, const MovingOptions& options, bool force)
      : place_(options.report), writing_{StandingOf(force), FilesOfStore(global.file)} {
    writing_.never.insert(writing_.never.end(), options.never.begin(), options.never.end());
    if (!place_) return;
    if (AreOneFile(*place_, *options.from)) {
      throw UsageError("--report names the file that is brought in: name another one");
    }
    RequireNoTraceIn(*place_, "--report", global);
    Advised([this] { RequirePlace(*place_, writing_); });
  }

  void Write(const MovingPlan& plan, std::string_view name) const {
    if (!place_) return;
    Advised([&] {
      WriteWholeFile(*place_, writing_, [&](std::ostream& out) {
        if (IsCsv(*place_)) {
          PrintOddCsv(out, plan);
        } else {
          PrintMovingReport(out, plan, name, Extent::kAll);
        }
      });
    });
  }

  /// Where it can be read.
  [[nodiscard]] std::string Advice() const {
    return (place_ ? fmt::format("'{}'", *place_) : "--report FILE") + " lists all";
  }

 private:
  template <typename Work>
  static void Advised(const Work& work) {
    AdvisingOnExisting("name another file with --report, or replace it with --force", work);
  }

  std::optional<std::string> place_;
  Writing writing_;
};

void TellWhoHasItOpen(const fs::path& file, Console& console) {
  if (const std::optional<fs::path> lock = LockBeside(file)) {
    console.err << fmt::format(
        "'{}' seems to be open elsewhere, for '{}' stands beside it: what has not been written yet "
        "is not in it\n",
        Displayable(file.string()), Displayable(lock->filename().string()));
  }
}

MovingOrder OrderOf(const GlobalOptions& global, const MovingOptions& options,
                    const Environment& environment) {
  MovingOrder order;
  order.file = *options.from;
  order.unit = global.unit;
  order.reading.codePage = options.codePage.value_or(0);
  order.reading.reader = environment.desktopReader;
  return order;
}

[[noreturn]] void RefuseBadRows(const MovingPlan& plan, const MovingOptions& options,
                                const ReportFile& report, Console& console) {
  FewLines lines(console, "refusals");
  for (const SettledCell& cell : plan.settled().named()) {
    if (cell.settlement == Settlement::kRefused) {
      lines.Tell(Displayable(LineOf(cell)));
    }
  }
  lines.TellRest(plan.settled().UnnamedOf(Settlement::kRefused));
  throw RefusedError(fmt::format(
      "{} of '{}' cannot be brought in, so nothing was. {}; mend them there, or bring the others "
      "in with --skip-bad-rows",
      Counted(plan.refusedRows(), "row", "rows"), *options.from, report.Advice()));
}

std::size_t RowsOf(const MovingPlan& plan, std::string_view table) {
  for (const MovedTable& moved : plan.numbers()) {
    if (moved.name == table) return moved.broughtIn;
  }
  return 0;
}

std::string ContentsOf(const MovingPlan& plan) {
  return fmt::format("{}, {}, {}, {}", Counted(RowsOf(plan, "Units"), "unit", "units"),
                     Counted(RowsOf(plan, "Tenants"), "tenant", "tenants"),
                     Counted(RowsOf(plan, "CredentialBank"), "credential", "credentials"),
                     Counted(RowsOf(plan, "DirectoryCode"), "directory code", "directory codes"));
}

/// What is wrong with the rows of the new store.
std::size_t FindingsInNewStore(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  return WholeCheck(session.desks(), session.desks().Units()).rows.size();
}

void TellOddities(const MovingPlan& plan, const ReportFile& report, Console& console) {
  const std::size_t adjusted = plan.CountOf(Settlement::kAdjusted);
  const std::size_t kept = plan.CountOf(Settlement::kKept);
  if (plan.refusedRows() + adjusted + kept == 0) return;
  console.Remarks() << fmt::format("{} left out, {} adjusted, {} kept as odd: {}.\n",
                                   Counted(plan.refusedRows(), "row", "rows"),
                                   Counted(adjusted, "cell", "cells"), kept, report.Advice());
}

void TellNames(std::string_view what, const std::vector<std::string>& names, Console& console) {
  if (!names.empty()) {
    console.Remarks() << fmt::format("{}: {}.\n", what, SomeNames(names));
  }
}

/// "The file does not have these tables: DOORS (the units have no doors)." A file may lack dozens
/// of columns, most of which mean the same.
void TellMissingAndLeft(const MovingPlan& plan, Console& console) {
  const NamedThings missing = NamesOfMissing(plan);
  TellNames("The file does not have these tables", missing.tables, console);
  for (const MissingColumns& columns : MissingColumnsByMeaning(plan)) {
    console.Remarks() << fmt::format("The file does not have these columns: {} ({}).\n",
                                     SomeNames(columns.names), columns.means);
  }
  const NamedThings left = NamesOfLeft(plan);
  TellNames("Left, for a store has no such tables", left.tables, console);
  TellNames("Left, for a store has no such columns", left.columns, console);
}

void TellNewStore(const GlobalOptions& global, const MovingPlan& plan, const MovingOptions& options,
                  const ReportFile& report, Console& console) {
  console.Remarks() << fmt::format("Created {} from {}: {}.\n", Displayable(global.file.string()),
                                   Displayable(*options.from), ContentsOf(plan));
  if (const std::string sentence = CodePageSentence(plan); !sentence.empty()) {
    console.Remarks() << sentence << '\n';
  }
  TellOddities(plan, report, console);
  TellMissingAndLeft(plan, console);
  try {
    const std::size_t findings = FindingsInNewStore(global, console);
    console.Remarks() << (findings == 0
                              ? "'qorhost check' finds nothing wrong.\n"
                              : fmt::format("'qorhost check' tells {} that the file already had.\n",
                                            Counted(findings, "fault", "faults")));
  } catch (const std::exception&) {
    // A server that is lost by now: the store is there, and a failure would say that it is not.
    console.err << "The new store could not be checked: 'qorhost check' does that.\n";
  }
}

/// How bringing a file in ended.
enum class MovingEnding : std::uint8_t { kStored, kTried, kRefused };

qorcred::Value CodePageCell(const MovingPlan& plan) {
  if (!plan.codePage()) return qorcred::Null{};
  return static_cast<std::int32_t>(plan.codePage()->number);
}

void PrintAsJson(const GlobalOptions& global, const MovingPlan& plan, const MovingOptions& options,
                 MovingEnding ending, Console& console) {
  ChangeReport report;
  report.trial = ending != MovingEnding::kStored;
  report.stored = console.stored;
  if (ending != MovingEnding::kRefused) {
    report.added.push_back({"store", qorcred::Null{}, global.file.string()});
  }
  report.facts.Add("demo", false)
      .Add("from", *options.from)
      .Add("code_page", CodePageCell(plan))
      .Add("tables", MovedTables(plan))
      .Add("settled", SettledTable(plan))
      .Add("missing", MissingTable(plan))
      .Add("left", LeftTable(plan));
  PrintChange(console.out, report);
}

/// The report is written before the store is put in its place: where it cannot be, there is
/// neither.
void PutBuilding(const GlobalOptions& global, const MovingPlan& plan, const MovingOptions& options,
                 const NewStorePlace& place, const ReportFile& report, Console& console) {
  const Progress bar = BarOn(console, false);
  const std::string name = fs::path(*options.from).filename().string();
  const auto contents = [&](SqlSession& session) {
    BringIn(session, plan, name, bar);
    report.Write(plan, *options.from);
  };
  PutNewStore(global, place, false, contents, console);
  console.stored = !place.trial;
}

}  // namespace

void DescribeMoving(CLI::App& init, MovingOptions& options) {
  init.add_option("--from", options.from,
                  "Bring a building in from a desktop database file, .mdb or .accdb; with --unit "
                  "one unit alone")
      ->type_name("FILE");
  DescribeMovingChoices(init, "With --from", options);
}

void DescribeMovingChoices(CLI::App& command, std::string_view when, MovingOptions& options) {
  command
      .add_option("--report", options.report,
                  fmt::format("{}: write what was odd in it to a file, as text, or as CSV to one "
                              "called .csv",
                              when))
      ->type_name("FILE");
  command.add_flag("--skip-bad-rows", options.skipBadRows,
                   fmt::format("{}: leave out the rows that cannot be brought in, and bring in the "
                               "rest",
                               when));
  command
      .add_option("--code-page", options.codePage,
                  fmt::format("{}: the code page of texts in a file of the oldest format, as 1250 "
                              "(that of the file)",
                              when))
      ->type_name("N");
}

bool HasMovingChoices(const MovingOptions& options) {
  return options.report || options.skipBadRows || options.codePage;
}

bool RunsMoving(const MovingOptions& options) {
  if (!options.from && HasMovingChoices(options)) {
    throw UsageError("--report, --skip-bad-rows and --code-page go with --from FILE");
  }
  return options.from.has_value();
}

ExitStatus RunMoving(const GlobalOptions& global, const MovingOptions& options,
                     const NewStorePlace& place, Console& console) {
  const ReportFile report(global, options, place.force);
  TellWhoHasItOpen(*options.from, console);
  const MovingPlan plan = PlanMoving(OrderOf(global, options, console.environment));
  const bool isRefused = plan.refusedRows() > 0 && !options.skipBadRows;
  if (place.trial && !global.json) {
    PrintMovingReport(console.out, plan, *options.from, Extent::kNamed);
  }
  if (isRefused) {
    if (place.trial && global.json) {
      PrintAsJson(global, plan, options, MovingEnding::kRefused, console);
    }
    report.Write(plan, *options.from);
    RefuseBadRows(plan, options, report, console);
  }
  PutBuilding(global, plan, options, place, report, console);
  if (global.json) {
    PrintAsJson(global, plan, options, place.trial ? MovingEnding::kTried : MovingEnding::kStored,
                console);
  } else if (place.trial) {
    console.out << fmt::format("\nWould create {}. This was a trial, nothing was changed.\n",
                               Displayable(global.file.string()));
  } else {
    TellNewStore(global, plan, options, report, console);
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost
