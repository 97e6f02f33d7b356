#include "host/cli/backup_commands.h"

#include <fmt/format.h>

#include "host/cli/change_report.h"
#include "host/desks/history.h"
#include "host/desks/store_backup.h"
#include "host/desks/store_check.h"
#include "host/desks/words.h"
#include "host/files/file_error.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

void PrintHeads(Console& console, const std::vector<ChainHead>& heads) {
  for (const ChainHead& head : heads) {
    console.out << "  " << TextOf(head) << '\n';
  }
}

/// A file that is there already is replaced on request alone.
template <typename Work>
auto SayingForce(Work&& work) {
  try {
    return work();
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) {
      throw;
    }
    throw RefusedError(std::string(failure.what()) +
                       ": name another file, or replace it with --force");
  }
}

}  // namespace

void DescribeBackup(CommandPlace place, const GlobalOptions& global, BackupOptions& options) {
  auto* backup =
      AddCommand(place, "backup", "Write a copy of the store, while others go on working",
                 "  qorhost backup monday.db\n  qorhost backup /mnt/stick/monday.db --force",
                 [&](Console& console) { return RunBackup(global, options, console); });
  backup->add_option("FILE", options.file, "The copy; it is read back before it gets its name")
      ->required();
  backup->add_flag("--force", options.force, "Replace a backup that is there");

  auto* restore = AddCommand(
      place, "restore", "Put a backup in the place of the store, which is kept under another name",
      "  qorhost restore monday.db",
      [&](Console& console) { return RunRestore(global, options, console); });
  restore->add_option("FILE", options.file, "The backup, which stays as it is")->required();

  AddCommand(place, "check", "Look the store over, and tell how to mend what is wrong",
             "  qorhost check\n  qorhost check --json",
             [&](Console& console) { return RunCheck(global, console); });
}

ExitStatus RunBackup(const GlobalOptions& global, const BackupOptions& options, Console& console) {
  const BackedUp made = SayingForce([&] {
    return BackUp(global.file, options.file, options.force ? Standing::kReplaced : Standing::kStays,
                  PatienceOf(global, console));
  });
  if (global.json) {
    qorcred::StringArray heads;
    for (const ChainHead& head : made.heads) {
      heads.push_back(TextOf(head));
    }
    PrintJsonObject(
        console.out,
        {{"file", options.file}, {"bytes", static_cast<double>(made.bytes)}, {"heads", heads}});
    return ExitStatus::kDone;
  }
  console.out << fmt::format("Backed up to {}, {} bytes, read back. Its history ends with\n",
                             Displayable(options.file), made.bytes);
  PrintHeads(console, made.heads);
  console.out << "which 'qorhost history check --head' compares later: note them elsewhere.\n";
  return ExitStatus::kDone;
}

ExitStatus RunRestore(const GlobalOptions& global, const BackupOptions& options, Console& console) {
  const Restored restored =
      Restore(global.file, options.file, console.environment.clock(), PatienceOf(global, console));
  console.stored = true;
  const std::string kept = restored.kept ? restored.kept->string() : std::string();
  if (global.json) {
    ChangeReport report;
    report.stored = true;
    report.changed.push_back({"store", qorcred::Null{}, global.file.string()});
    report.facts.Add("from", options.file)
        .Add("kept", kept.empty() ? qorcred::Value(qorcred::Null{}) : qorcred::Value(kept));
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  console.out << fmt::format("Restored {} from {}.", Displayable(global.file.string()),
                             Displayable(options.file));
  if (!kept.empty()) {
    console.out << fmt::format(" The store as it was is {}.", Displayable(kept));
  }
  console.out << '\n';
  return ExitStatus::kDone;
}

ExitStatus RunCheck(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const Table found = WholeCheck(session.desks(), session.ChosenUnits());
  if (global.json || !found.rows.empty()) {
    PrintRows(console.out, found, global.json);
    if (global.json && !found.rows.empty()) {
      console.err << "qorhost: " << Counted(found.rows.size(), "fault was", "faults were")
                  << " found\n";
    }
  } else {
    console.out << "Nothing is wrong: the file, the rows and the history are in order.\n";
  }
  return found.rows.empty() ? ExitStatus::kDone : ExitStatus::kRefused;
}

}  // namespace qorhost
