#include "host/cli/copy_commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/cli/change_report.h"
#include "host/cli/progress.h"
#include "host/desks/moving_in/moving_in.h"
#include "host/desks/store_copy.h"
#include "host/desks/store_file.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

std::size_t RowsOf(const StoreCopy& made, std::string_view table) {
  for (const auto& [name, rows] : made.copied.rows) {
    if (name == table) return static_cast<std::size_t>(rows);
  }
  return 0;
}

std::string ContentsOf(const StoreCopy& made) {
  return fmt::format("{}, {}, {}, {}", Counted(RowsOf(made, "Units"), "unit", "units"),
                     Counted(RowsOf(made, "Tenants"), "tenant", "tenants"),
                     Counted(RowsOf(made, "CredentialBank"), "credential", "credentials"),
                     Counted(RowsOf(made, "DirectoryCode"), "directory code", "directory codes"));
}

Table TablesOf(const StoreCopy& made) {
  Table table;
  table.columns = {{"Table", "table"}, {"Rows", "rows"}};
  for (const auto& [name, rows] : made.copied.rows) {
    table.rows.push_back({std::string(name), CountCell(static_cast<std::size_t>(rows))});
  }
  return table;
}

Table LostLinksOf(const StoreCopy& made) {
  Table table;
  table.columns = {{"Table", "table"}, {"RID", "rid"}, {"Column", "column"}, {"Led to", "led_to"}};
  for (const LostLink& lost : made.copied.lost) {
    table.rows.push_back(
        {std::string(lost.table), lost.row, std::string(lost.column), lost.target});
  }
  return table;
}

void PrintAsJson(const CopyOrder& order, const StoreCopy& made, Console& console) {
  ChangeReport report;
  if (order.units.size() == 1) report.unit = order.units.front();
  report.trial = order.trial == Trial::kYes;
  report.stored = !report.trial;
  (made.isNewStore ? report.added : report.changed)
      .push_back({"store", qorcred::Null{}, order.to.string()});
  report.facts.Add("from", order.from.string())
      .Add("whole", made.isWhole)
      .Add("tables", TablesOf(made))
      .Add("lost_links", LostLinksOf(made));
  PrintChange(console.out, report);
}

void TellLostLinks(const StoreCopy& made, std::ostream& out) {
  if (made.copied.lost.empty()) return;
  out << Counted(made.copied.lost.size(), "link", "links")
      << " led to rows that are not there, and lead nowhere in the copy:\n";
  PrintTable(out, LostLinksOf(made));
}

/// Each of them once, in their order.
UnitKeys UnitsOf(const GlobalOptions& global, const CopyOptions& options) {
  if (global.unit && !options.units.empty()) {
    throw UsageError("--units names all units that are copied: leave --unit out");
  }
  UnitKeys units = global.unit ? UnitKeys{*global.unit} : options.units;
  std::sort(units.begin(), units.end());
  units.erase(std::unique(units.begin(), units.end()), units.end());
  return units;
}

/// The one unit that is brought in; nothing for all.
std::optional<std::int32_t> UnitToBringIn(const UnitKeys& units) {
  if (units.size() > 1) {
    throw UsageError("of a desktop database one unit comes, or all: name one with --unit");
  }
  return units.empty() ? std::nullopt : std::optional(units.front());
}

/// The same as `init --from` with --to as the new store.
ExitStatus BringInto(const GlobalOptions& global, const CopyOptions& options,
                     const std::filesystem::path& from, Console& console) {
  GlobalOptions target = global;
  target.file = options.to;
  target.unit = UnitToBringIn(UnitsOf(global, options));
  MovingOptions moving = options.moving;
  moving.from = from.string();
  moving.never = FilesOfStore(global.file);
  NewStorePlace place;
  place.force = options.force;
  place.trial = options.trial;
  place.namedBy = "--to";
  return RunMoving(target, moving, place, console);
}

}  // namespace

void DescribeCopy(CommandPlace place, const GlobalOptions& global, CopyOptions& options) {
  auto* copy =
      AddCommand(place, "copy", "Copy the store, or units of it, into another one, file or server",
                 "  qorhost copy --to postgresql://server/buildings\n"
                 "  qorhost copy --from annex.db --to building.db --unit 12 --dry-run\n"
                 "  qorhost copy --from annex.db --to building.db --units 12,14\n"
                 "  qorhost copy --from building.mdb --to postgresql://server/buildings",
                 [&](Console& console) { return RunCopy(global, options, console); });
  copy->add_option(
          "--from", options.from,
          "The store that is copied (that of --db), or a desktop database file, .mdb or .accdb, "
          "which becomes a new store as with 'init --from'")
      ->type_name("STORE");
  copy->add_option("--to", options.to,
                   "The store that it comes into; made where there is none. Into one that has "
                   "units come those of the other one, where their keys are free")
      ->type_name("STORE")
      ->required();
  copy->add_option_function<std::vector<std::string>>(
          "--units",
          [&options](const std::vector<std::string>& keys) {
            for (const std::string& key : keys) options.units.push_back(*WholeNumber(key));
          },
          "The units that are copied, by their keys; else that of --unit, else all")
      ->type_name("N,N")
      ->delimiter(',')
      ->check([](const std::string& key) {
        return WholeNumber(key) ? std::string()
                                : fmt::format("'{}' is no key of a unit: give a whole number", key);
      });
  constexpr std::string_view kOfDesktopFile = "With a desktop database";
  DescribeMovingChoices(*copy, kOfDesktopFile, options.moving);
  copy->add_flag("--force", options.force,
                 fmt::format("{}: replace a store and a report that are there", kOfDesktopFile));
  DescribeTrial(*copy, options.trial);
}

ExitStatus RunCopy(const GlobalOptions& global, const CopyOptions& options, Console& console) {
  const std::filesystem::path from =
      options.from ? std::filesystem::path(*options.from) : global.file;
  if (NamesDesktopFile(from)) {
    return BringInto(global, options, from, console);
  }
  if (HasMovingChoices(options.moving) || options.force) {
    throw UsageError(
        "--report, --skip-bad-rows, --code-page and --force go with a desktop database in --from");
  }
  CopyOrder order;
  order.from = from;
  order.to = options.to;
  order.units = UnitsOf(global, options);
  order.clock = console.environment.clock;
  order.author = console.environment.author;
  order.patience = PatienceOf(global, console);
  order.trial = TrialOf(options.trial);
  order.progress = BarOn(console, global.trace);
  const StoreCopy made = CopyStore(order);
  console.stored = !options.trial;
  if (global.json) {
    PrintAsJson(order, made, console);
    return ExitStatus::kDone;
  }
  std::ostream& told = options.trial ? console.out : console.Remarks();
  told << fmt::format(
      "{} {} to {}: {}{}.{}\n", options.trial ? "Would copy" : "Copied",
      Displayable(order.from.string()), Displayable(order.to.string()), ContentsOf(made),
      made.isWhole ? ", with their history" : "",
      options.trial ? " This was a trial, nothing was changed." : " Both were compared.");
  TellLostLinks(made, told);
  return ExitStatus::kDone;
}

}  // namespace qorhost
