// The commands that import a spreadsheet.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/desks/import_run.h"

namespace qorhost {

struct ImportOptions {
  std::string file;                    ///< "-" for standard input
  bool dryRun = false;                 ///< does all of it, then undoes it
  std::optional<std::string> columns;  ///< "HEADING=COLUMN,..."; else the columns are printed
  std::string delimiter = "auto";      ///< a character, or "tab"
  std::string encoding;                ///< "" when nobody has said one: then it has to be UTF-8
  std::string rejects;                 ///< a file for the refused lines; "" for none
  std::string dates;                   ///< "dmy", "mdy" or "ymd"; "" when nobody has said it
  bool force = false;                  ///< replaces that file
  bool replaceQuotes = false;
};

/// One of the imports: what it reads, what does it, and what the things are called.
struct ImportCommand {
  std::span<const ImportColumn> columns;
  std::function<ImportReport(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                             const ImportRules& rules, const Progress& progress)>
      import = nullptr;
  std::string_view one;
  std::string_view many;
  bool passesOver = false;  ///< whether lines may be stored already
};

/// Adds `import` and returns it. `global` and `options` must outlive the parsing and the run.
CLI::App* DescribeImport(CommandPlace place, const char* description, const char* examples,
                         const GlobalOptions& global, ImportOptions& options,
                         const ImportCommand& command);

/// Adds --replace-quotes to an import that makes display names of directory codes.
void DescribeQuotes(CLI::App& import, ImportOptions& options);

/// The character that the option names; nothing for "auto".
[[nodiscard]] std::optional<char> DelimiterOf(const std::string& word);

}  // namespace qorhost
