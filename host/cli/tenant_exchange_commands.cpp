#include "host/cli/tenant_exchange_commands.h"

#include <fmt/format.h>

#include <optional>

#include "host/cli/written_file.h"
#include "host/desks/credential_types.h"
#include "host/desks/tenant_export.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import.h"
#include "host/desks/words.h"
#include "host/files/csv_writer.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

std::optional<std::string> Given(const std::string& option) {
  return option.empty() ? std::nullopt : std::optional(option);
}

TenantImportRules Complete(const ImportRules& rules, const TenantImportOptions& options) {
  TenantImportRules complete;
  static_cast<ImportRules&>(complete) = rules;
  complete.stored = options.update         ? StoredTenants::kUpdated
                    : options.skipExisting ? StoredTenants::kSkipped
                                           : StoredTenants::kRefused;
  complete.cards = {Given(options.cardType), Given(options.facility)};
  return complete;
}

ExitStatus RunTenantExport(const GlobalOptions& global, const TenantExportOptions& options,
                           Console& console) {
  CommandSession session(global, Access::kRead, console);
  const UnitName unit = session.ChosenUnit();
  const Table table = ExportedTenants(session.desks(), unit.key);
  const auto print = [&](std::ostream& out) {
    PrintCsv(out, table, DelimiterOf(options.delimiter).value_or(','));
  };
  if (options.to == kStandardStream && !options.trial) {
    PrintRaw(console, print);
    return ExitStatus::kDone;
  }
  WriteFileOfTo({options.to, options.force, options.trial}, global, print);
  if (global.json) {
    PrintJsonObject(console.out, {{"unit", unit.key},
                                  {"lines", CountCell(table.rows.size())},
                                  {"file", options.to},
                                  {"dry_run", options.trial}});
    return ExitStatus::kDone;
  }
  const std::string what = fmt::format(
      "{} to {}: the tenants {}, and the cards and directory codes that nobody has.",
      Counted(table.rows.size(), "line", "lines"), Displayable(options.to), InUnit(unit));
  if (options.trial) {
    console.out << "Would write " << what << " Nothing was written.\n";
  } else {
    console.Remarks() << "Wrote " << what << '\n';
  }
  return ExitStatus::kDone;
}

}  // namespace

void DescribeTenantExchange(CommandPlace tenants, const GlobalOptions& global,
                            TenantImportOptions& imported, TenantExportOptions& exported) {
  const auto import = [&imported](DeskSession& session, std::int32_t unitKey, ImportFile& file,
                                  const ImportRules& rules, const Progress& progress) {
    return ImportTenants(session, unitKey, file, Complete(rules, imported), progress);
  };
  auto* in = DescribeImport(
      tenants, "Take in the tenants of a spreadsheet with their cards and directory codes",
      "  qorhost tenants import residents.csv --unit 2 --dry-run\n"
      "  qorhost tenants import residents.csv --unit 2 --columns \"Full name=Name,Flat=Apartment\" "
      "\\\n      --encoding cp1252 --card-type card26 --facility 7 --rejects mend.csv",
      global, imported.common, {TenantFileColumns(), import, "line", "lines", true});
  auto* skip = in->add_flag("--skip-existing", imported.skipExisting,
                            "Pass over lines whose tenant is stored already");
  in->add_flag("--update", imported.update,
               "Change stored tenants to what the line's cells say; empty cells change nothing")
      ->excludes(skip);
  in->add_option("--card-type", imported.cardType, "The type of cards of which the line says none")
      ->type_name(EnteredWords("|", "|"));
  in->add_option("--facility", imported.facility,
                 "The facility code of cards of which the line says none")
      ->type_name("F");
  DescribeQuotes(*in, imported.common);

  auto* out = AddCommand(
      tenants, "export", "Write tenants with their cards and directory codes as a spreadsheet",
      "  qorhost tenants export --unit 2 --to residents.csv\n"
      "  qorhost tenants export --unit 2 --delimiter ';' > residents.csv",
      [&](Console& console) { return RunTenantExport(global, exported, console); });
  out->add_option("--to", exported.to, "The file to write (standard output)")->type_name("FILE");
  out->add_option("--delimiter", exported.delimiter, "What stands between cells (,)")
      ->type_name(",|;|tab")
      ->check([](const std::string& word) {
        const bool known = word == "," || word == ";" || word == "tab";
        return known ? std::string() : fmt::format("'{}' is none of , ; tab", word);
      });
  out->add_flag("--force", exported.force, "Replace a file that is there already");
  DescribeTrial(*out, exported.trial);
}

}  // namespace qorhost
