#include "host/cli/import_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/text.h"
#include "frame/utf8.h"
#include "host/cli/progress.h"
#include "host/cli/written_file.h"
#include "host/desks/desk_error.h"
#include "host/desks/heading_proposal.h"
#include "host/desks/store_file.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/files/input_file.h"
#include "host/files/json_writer.h"
#include "host/files/rejected_lines.h"
#include "host/files/text_encoding.h"
#include "host/files/whole_file.h"
#include "host/terminal/display_text.h"
#include "host/terminal/few_lines.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

/// What the parser makes of the option without a value.
bool IsAskedFor(const std::string& columns) {
  return columns.empty() || columns == "true";
}

CLI::Validator OneOf(std::vector<std::string> words) {
  return CLI::Validator(
      [words = std::move(words)](const std::string& word) {
        const bool known = std::find(words.begin(), words.end(), word) != words.end();
        return known ? std::string()
                     : fmt::format("'{}' is none of {}", word, fmt::join(words, " "));
      },
      "");
}

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
  rules.dates = {options.dates == "dmy"   ? DateOrder::kDayFirst
                 : options.dates == "mdy" ? DateOrder::kMonthFirst
                 : options.dates == "ymd" ? DateOrder::kYearFirst
                                          : DateOrder::kUnsaid,
                 "--dates dmy, mdy or ymd says it for all lines"};
  rules.howToReplace = ", or have it written by --replace-quotes";
  rules.apostrophes = options.replaceQuotes ? Apostrophes::kReplaced : Apostrophes::kRefused;
  return rules;
}

/// "Full name=Name,Flat=Apartment,Notes=": which heading of the file stands for which column.
std::vector<HeadingMeant> ReadMeant(const std::string& given) {
  std::vector<HeadingMeant> meant;
  std::string_view rest = given;
  for (bool more = true; more;) {
    const std::size_t comma = rest.find(',');
    more = comma != std::string_view::npos;
    const std::string_view one = rest.substr(0, comma);
    const std::size_t equals = one.rfind('=');
    if (equals == std::string_view::npos || qorcred::Trim(one.substr(0, equals)).empty()) {
      throw UsageError(
          fmt::format("--columns '{}' is no HEADING=COLUMN, as in \"Full name=Name,#3=Apartment\"; "
                      "without a value --columns tells the columns",
                      one));
    }
    meant.push_back({std::string(qorcred::Trim(one.substr(0, equals))),
                     std::string(qorcred::Trim(one.substr(equals + 1)))});
    rest.remove_prefix(more ? comma + 1 : rest.size());
  }
  return meant;
}

ImportForm FormOf(const ImportOptions& options) {
  ImportForm form;
  form.delimiter = DelimiterOf(options.delimiter);
  form.encoding = options.encoding == "cp1252"   ? TextEncoding::kCp1252
                  : options.encoding == "utf-16" ? TextEncoding::kUtf16
                                                 : TextEncoding::kUtf8;
  if (options.columns) {
    form.meant = ReadMeant(*options.columns);
  }
  return form;
}

void RequireEncoding(const std::string& text, const ImportOptions& options) {
  if (options.encoding == "cp1252" && qorcred::IsUtf8(text) && !qorcred::IsAscii(text) &&
      !HasByteOrderMark(text)) {
    throw RefusedError(
        "the file is UTF-8, and read as cp1252 every letter with an accent would be "
        "two others, so nothing was imported: leave --encoding out");
  }
  if (!options.encoding.empty()) {
    return;
  }
  try {
    RequireUndoubted(text);
  } catch (const FileError& doubt) {
    if (doubt.problem() == FileProblem::kLikeUtf16) {
      throw RefusedError(std::string(doubt.what()) + ": --encoding utf-16 reads it");
    }
    if (doubt.problem() == FileProblem::kNotUtf8) {
      throw RefusedError(std::string(doubt.what()) +
                         ": say which encoding the file has, --encoding cp1252 for most that are "
                         "not, or --encoding utf-8 to have such lines refused");
    }
    throw;
  }
}

/// The --columns that would be understood: what has been said of headings that are known, and what
/// the others may stand for. A first line in which nothing is known may be a title.
std::string WayOut(const UnknownHeadings& headings, std::span<const ImportColumn> columns,
                   const ImportOptions& options) {
  const std::vector<HeadingMeant> proposed = ProposedMeanings(headings, columns);
  const bool isAnyKnown = !headings.taken().empty() ||
                          std::any_of(proposed.begin(), proposed.end(),
                                      [](const HeadingMeant& one) { return !one.column.empty(); });
  if (!isAnyKnown) {
    return "if these are no headings, delete the lines above the headings, which have to be the "
           "first; --columns \"HEADING=COLUMN,...\" says what headings stand for";
  }
  std::vector<std::string> told;
  if (options.columns) {
    for (const HeadingMeant& said : ReadMeant(*options.columns)) {
      if (said.column.empty() || ColumnCalled(said.column, columns)) {
        told.push_back(fmt::format("{}={}", said.heading, said.column));
      }
    }
  }
  for (const HeadingMeant& one : proposed) {
    told.push_back(fmt::format("{}={}", one.heading, one.column));
  }
  return fmt::format(
      "look this over and say it: --columns \"{}\" (HEADING=COLUMN; with nothing behind it a "
      "column "
      "is left out)",
      fmt::join(told, ","));
}

ImportFile FileOf(const ImportOptions& options, const ImportCommand& command, Console& console) {
  std::string text = ReadInput(options, console);
  RequireEncoding(text, options);
  try {
    return ImportFile(std::move(text), command.columns, FormOf(options));
  } catch (const UnknownHeadings& headings) {
    throw FileError(headings.problem(), fmt::format("{}; {}", headings.what(),
                                                    WayOut(headings, command.columns, options)));
  }
}

/// Where the refused lines go.
class RejectsFile {
 public:
  /// Raises UsageError for a place that another file of the command has, RefusedError for one that
  /// is taken: before anything is imported.
  RejectsFile(const GlobalOptions& global, const ImportOptions& options)
      : place_(options.rejects), writing_{StandingOf(options.force), FilesOfStore(global.file)} {
    if (place_.empty()) {
      return;
    }
    if (AreOneFile(place_, options.file)) {
      throw UsageError("--rejects names the file that is imported: name another one");
    }
    RequireNoTraceIn(place_, "--rejects", global);
    const bool isOfStore =
        std::any_of(writing_.never.begin(), writing_.never.end(),
                    [this](const auto& file) { return AreOneFile(place_, file); });
    if (isOfStore) {
      throw UsageError("--rejects names a file of the store: name another one");
    }
    try {
      RequirePlace(place_, writing_);
    } catch (const FileError& refusal) {
      throw RefusedError(fmt::format(
          "--rejects: {}{}", refusal.what(),
          refusal.problem() == FileProblem::kExists
              ? ", so nothing was imported: name another one with --rejects, or replace it with "
                "--force"
              : "; nothing was imported"));
    }
  }

  void Collect(const ImportFile& file, ImportRules& rules) {
    if (place_.empty()) {
      return;
    }
    lines_.emplace(file);
    rules.onRefused = [this](const ImportLine& line, const std::string& reason) {
      lines_->Add(line, reason);
    };
  }

  /// Writes the file when there is a refused line; "" or what is to be told of it.
  [[nodiscard]] std::string Write() const {
    if (!lines_ || lines_->count() == 0) {
      return {};
    }
    WriteWholeFile(place_, writing_, [this](std::ostream& out) { lines_->Write(out); });
    return fmt::format("The refused {} in {} with the reasons, to be mended and imported.\n",
                       lines_->count() == 1 ? "line is" : "lines are", Displayable(place_));
  }

 private:
  std::string place_;
  Writing writing_;
  std::optional<RejectedLines> lines_;
};

void PrintRemarks(const ImportReport& report, bool asJson, Console& console) {
  FewLines refused(console, "refused lines");
  FewLines notes(console, "notes");
  for (const LineRemark& remark : report.remarks) {
    if (!remark.refused || !asJson) {
      (remark.refused ? refused : notes)
          .Tell(fmt::format("{}line {}: {}", remark.refused ? "" : "note on ", remark.line,
                            Displayable(report.TextOf(remark))));
    }
  }
  refused.TellRest();
  notes.TellRest();
}

void PrintReportAsJson(const ImportReport& report, const ImportCommand& command,
                       const UnitName& unit, Console& console) {
  Table lines;
  lines.columns = {{"Line", "line"}, {"Message", "message"}};
  for (const LineRemark& remark : report.remarks) {
    if (remark.refused) {
      lines.rows.push_back({CountCell(remark.line), Displayable(report.TextOf(remark))});
    }
  }
  JsonObject object;
  object.Add("unit", unit.key).Add("dry_run", report.dryRun).Add("done", CountCell(report.done));
  if (command.passesOver) {
    object.Add("unchanged", CountCell(report.unchanged));
  }
  object.Add("refused", CountCell(report.refused)).Add("lines", lines).Print(console.out);
}

void PrintReport(const ImportReport& report, const ImportCommand& command, const UnitName& unit,
                 Console& console) {
  std::string counts = Counted(report.done, command.one, command.many);
  if (report.unchanged > 0) {
    counts += fmt::format(", {} stored already", Counted(report.unchanged, "line", "lines"));
  }
  counts += fmt::format(", {} refused", Counted(report.refused, "line", "lines"));
  (report.dryRun ? console.out : console.Remarks())
      << (report.dryRun
              ? fmt::format("Would import {}, {}. Nothing was written.\n", counts, InUnit(unit))
              : fmt::format("Imported {}, {}.\n", counts, InUnit(unit)));
}

/// Behind what was imported, which stands whatever becomes of the file.
void WriteRejects(const RejectsFile& rejects, const ImportReport& report, bool asJson,
                  Console& console) {
  try {
    const std::string written = rejects.Write();
    if (!asJson) {
      (report.dryRun ? console.out : console.Remarks()) << written;
    }
  } catch (const FileError& unwritten) {
    if (!console.stored) {
      throw;
    }
    throw FailureError(fmt::format("{}; what was imported is stored", unwritten.what()));
  }
}

/// What the file may hold. To people only that a column is needed is told.
void PrintColumns(const ImportCommand& command, bool asJson, Console& console) {
  constexpr std::size_t kNeeded = 1;
  Table table = ColumnTable(command.columns);
  for (std::vector<qorcred::Value>& row : table.rows) {
    if (!asJson) {
      row[kNeeded] = qorcred::ToBoolean(row[kNeeded]) ? "yes" : "";
    }
  }
  PrintRows(console, table, asJson);
}

ExitStatus RunImport(const GlobalOptions& global, const ImportOptions& options,
                     const ImportCommand& command, Console& console) {
  if (options.columns && IsAskedFor(*options.columns)) {
    PrintColumns(command, global.json, console);
    return ExitStatus::kDone;
  }
  RejectsFile rejects(global, options);
  ImportFile file = FileOf(options, command, console);
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  ImportRules rules = RulesOf(global, options);
  rejects.Collect(file, rules);
  const ImportReport report =
      command.import(session.desks(), unit.key, file, rules, BarOn(console, global.trace));
  console.stored = report.done > 0 && !report.dryRun;
  PrintRemarks(report, global.json, console);
  if (global.json) {
    PrintReportAsJson(report, command, unit, console);
  } else {
    PrintReport(report, command, unit, console);
  }
  WriteRejects(rejects, report, global.json, console);
  return StatusOf(report.ending);
}

}  // namespace

std::optional<char> DelimiterOf(const std::string& word) {
  if (word == "auto") {
    return std::nullopt;
  }
  return word == "tab" ? '\t' : word.front();
}

void DescribeQuotes(CLI::App& import, ImportOptions& options) {
  import.add_flag("--replace-quotes", options.replaceQuotes,
                  "Write apostrophes of display names as typographic ones");
}

CLI::App* DescribeImport(CommandPlace place, const char* description, const char* examples,
                         const GlobalOptions& global, ImportOptions& options,
                         const ImportCommand& command) {
  auto* import = AddCommand(place, "import", description, examples,
                            [&global, &options, command](Console& console) {
                              return RunImport(global, options, command, console);
                            });
  import->add_option(
      "FILE", options.file,
      "A file with headings, as 'report' and a spreadsheet write it; - for standard input");
  import->add_flag("-n,--dry-run", options.dryRun, "Say what would be done, write nothing");
  import
      ->add_option("--columns", options.columns,
                   "Which heading, or #N for the Nth, stands for which column; an empty one is "
                   "left out. Alone: tell what the columns hold, do nothing else")
      ->type_name("HEADING=COLUMN,...")
      ->expected(0, 1);
  import
      ->add_option("--delimiter", options.delimiter,
                   "What stands between cells; else a line sep=; or the headings tell")
      ->type_name(",|;|tab|auto")
      ->check(OneOf({",", ";", "tab", "auto"}));
  import
      ->add_option("--encoding", options.encoding,
                   "The encoding (utf-8), unless a byte order mark tells")
      ->type_name("utf-8|cp1252|utf-16")
      ->check(OneOf({"utf-8", "cp1252", "utf-16"}));
  import
      ->add_option("--dates", options.dates,
                   "The order of dates such as 03/04/2026 or 3.4.2026; without it they are refused")
      ->type_name("dmy|mdy|ymd")
      ->check(OneOf({"dmy", "mdy", "ymd"}));
  import
      ->add_option("--rejects", options.rejects,
                   "Write refused lines to this file, with the reasons, to be mended and imported")
      ->type_name("FILE");
  import->add_flag("--force", options.force, "Replace the file of --rejects");
  return import;
}

}  // namespace qorhost
