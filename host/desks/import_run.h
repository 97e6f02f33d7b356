// Entering the lines of a file into a screen, one after the other.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/cli/console.h"
#include "host/desks/session.h"
#include "host/files/import_file.h"

namespace qorhost {

struct ImportOptions {
  std::string file;      ///< "-" for standard input
  bool dryRun = false;   ///< does all of it, then undoes it
  bool columns = false;  ///< prints the columns and does nothing
};

/// What one line came to besides its rows: what was left out of it, for people.
using ImportNotes = std::vector<std::string>;

/// Enters one line into the screen and saves it; False when the controller refused. Raises
/// UsageError for what cannot be typed into the screen.
using LineEntry = std::function<bool(const ImportLine& line, ImportNotes& notes)>;

/// What is imported, in messages.
struct ImportedKind {
  std::string_view one;
  std::string_view many;
};

/// Whether an operation did what it was to do: without a refusal or a failure on the way.
[[nodiscard]] bool WentWell(bool succeeded, const OperationLog& log);

/// Enters every line in one transaction of the store, in which a refused line leaves nothing
/// behind, and says what came of it. A dry run undoes the transaction at the end. Questions are
/// answered No unless `answer` is True. Raises FailureError, with nothing imported, when the store
/// gives up.
class ImportRun {
 public:
  ImportRun(StoreSession& session, const GlobalOptions& global, const ImportOptions& options);

  /// Into the unit `unitKey`, whose screen `enter` works on.
  ExitStatus Run(std::int32_t unitKey, ImportFile& file, const LineEntry& enter,
                 const ImportedKind& kind, Console& console);

 private:
  /// What a person is told of one line.
  struct Remark {
    std::size_t line = 0;
    bool refused = false;
    const std::string* text = nullptr;  // in texts_
  };

  void EnterAll(ImportFile& file, const LineEntry& enter, Console& console);
  void EnterLine(const ImportLine& line, const LineEntry& enter);
  bool TryLine(const ImportLine& line, const LineEntry& enter, ImportNotes& notes);
  void Refuse(std::size_t line);
  void Remember(std::size_t line, bool refused, std::string_view text);
  void Report(const ImportedKind& kind, Console& console) const;
  void ReportAsJson(Console& console) const;

  StoreSession& session_;
  const GlobalOptions& global_;
  const ImportOptions& options_;
  std::vector<std::string> messages_;      // that the controller showed for the line
  std::unordered_set<std::string> texts_;  // many lines of a file are refused alike
  std::vector<Remark> remarks_;
  std::size_t done_ = 0;
  std::size_t refused_ = 0;
  bool failed_ = false;
};

/// A whole import command: an `Import` is made for the unit and enters the lines of the file.
template <typename Import>
ExitStatus RunImport(const GlobalOptions& global, const ImportOptions& options, Console& console,
                     std::span<const ImportColumn> columns, const ImportedKind& kind) {
  if (options.columns) {
    PrintColumns(console.out, columns);
    return ExitStatus::kDone;
  }
  ImportFile file(ReadImportText(options.file, console.in), columns);
  StoreSession session(OpenFile(global, OpenMode::kReadWrite), global, console);
  const std::int32_t unit = session.ChosenUnit().key;
  Import entering(session, unit);
  ImportRun run(session, global, options);
  return run.Run(
      unit, file,
      [&entering](const ImportLine& line, ImportNotes& notes) {
        return entering.Enter(line, notes);
      },
      kind, console);
}

}  // namespace qorhost
