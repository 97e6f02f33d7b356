#include "host/cli/backup_commands.h"

#include <fmt/format.h>

#include "host/cli/change_report.h"
#include "host/cli/written_file.h"
#include "host/desks/history.h"
#include "host/desks/store_backup.h"
#include "host/desks/store_check.h"
#include "host/desks/store_file.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

void PrintHeads(Console& console, const std::vector<ChainHead>& heads) {
  for (const ChainHead& head : heads) {
    console.Remarks() << "  " << TextOf(head) << '\n';
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
  DescribeTrial(*backup, options.trial);

  auto* restore = AddCommand(
      place, "restore", "Put a backup in the place of the store, which is kept under another name",
      "  qorhost restore monday.db",
      [&](Console& console) { return RunRestore(global, options, console); });
  restore->add_option("FILE", options.file, "The backup, which stays as it is")->required();
  DescribeTrial(*restore, options.trial);

  AddCommand(place, "check", "Look the store over, and tell how to mend what is wrong",
             "  qorhost check\n  qorhost check --json",
             [&](Console& console) { return RunCheck(global, console); });
}

ExitStatus RunBackup(const GlobalOptions& global, const BackupOptions& options, Console& console) {
  const BackedUp made = AdvisingOnExisting("name another file, or replace it with --force", [&] {
    return BackUp(global.file, options.file, StandingOf(options.force), PatienceOf(global, console),
                  TrialOf(options.trial));
  });
  if (global.json) {
    qorcred::StringArray heads;
    for (const ChainHead& head : made.heads) {
      heads.push_back(TextOf(head));
    }
    JsonObject()
        .Add("file", options.file)
        .Add("bytes", static_cast<double>(made.bytes))
        .Add("dry_run", options.trial)
        .Add("heads", heads)
        .Print(console.out);
  } else if (options.trial) {
    console.out << fmt::format(
        "Would back up to {}, {} bytes, which can be read. This was a trial, nothing was "
        "changed.\n",
        Displayable(options.file), made.bytes);
  } else {
    console.Remarks() << fmt::format(
        "Backed up to {}, {} bytes, read back. Its history ends with\n", Displayable(options.file),
        made.bytes);
    PrintHeads(console, made.heads);
    console.Remarks()
        << "which 'qorhost history check --head' compares later: note them elsewhere.\n";
  }
  return ExitStatus::kDone;
}

ExitStatus RunRestore(const GlobalOptions& global, const BackupOptions& options, Console& console) {
  const Restored restored = Restore(global.file, options.file, console.environment.clock(),
                                    PatienceOf(global, console), TrialOf(options.trial));
  console.stored = !options.trial;
  const std::string kept = restored.kept ? restored.kept->string() : std::string();
  if (global.json) {
    ChangeReport report;
    report.trial = options.trial;
    report.stored = !options.trial;
    report.changed.push_back({"store", qorcred::Null{}, global.file.string()});
    report.facts.Add("from", options.file)
        .Add("kept", kept.empty() ? qorcred::Value(qorcred::Null{}) : qorcred::Value(kept));
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  std::ostream& told = options.trial ? console.out : console.Remarks();
  told << fmt::format("{} {} from {}.", options.trial ? "Would restore" : "Restored",
                      Displayable(global.file.string()), Displayable(options.file));
  if (!kept.empty()) {
    told << fmt::format(" The store as it was {} {}.", options.trial ? "would be" : "is",
                        Displayable(kept));
  }
  told << (options.trial ? " This was a trial, nothing was changed.\n" : "\n");
  return ExitStatus::kDone;
}

ExitStatus RunCheck(const GlobalOptions& global, Console& console) {
  CommandSession session(global, Access::kRead, console);
  const Table found = WholeCheck(session.desks(), session.ChosenUnits());
  if (global.json || !found.rows.empty()) {
    PrintRows(console, found, global.json);
    if (global.json && !found.rows.empty()) {
      console.err << "qorhost: " << Counted(found.rows.size(), "fault was", "faults were")
                  << " found\n";
    }
  } else {
    const bool hasFile = !FilesOfStore(global.file).empty();
    console.Remarks() << "Nothing is wrong: " << (hasFile ? "the file, " : "")
                      << "the rows and the history are in order.\n";
  }
  return found.rows.empty() ? ExitStatus::kDone : ExitStatus::kRefused;
}

}  // namespace qorhost
