#include "host/cli/history_command_line.h"

#include <array>
#include <string>

#include "host/cli/list_command_line.h"

namespace qorhost {

namespace {

constexpr std::array kHistoryWords{
    FieldWord{history_input::kSince, "--since", {}},
    FieldWord{history_input::kEntry, "ENTRY", "'qorhost history list' has their numbers"},
    FieldWord{history_input::kHead, "--head", "'qorhost history check' prints them"}};
constexpr auto kQuestions = WithListWords(kHistoryWords);

void DescribeList(CommandPlace place, const GlobalOptions& global, HistoryOptions& options) {
  auto* list = AddCommand(
      place, "list", "List what was done, the latest last",
      "  qorhost history list --since 7d\n"
      "  qorhost history list --unit 2 --who anna --subject Tanaka --limit 20",
      [&](Console& console) { return RunHistoryList(global, options, console); }, kQuestions);
  list->add_option("--since", options.query.since, "From a date on (UTC), or from so many days ago")
      ->type_name("DATE|DAYSd");
  list->add_option("--who", options.query.who, "A part of the name of who did it")
      ->type_name("NAME");
  list->add_option("--subject", options.query.subject,
                   "A part of what was done, or of a text or number in its rows")
      ->type_name("TEXT");
  DescribeListOptions(*list, options.asked);
}

}  // namespace

void DescribeHistory(CommandPlace place, const GlobalOptions& global, HistoryOptions& options) {
  const CommandPlace history =
      AddGroup(place, "history", "See what was done, by whom, and take it back",
               "  qorhost history list --since 7d\n  qorhost history undo 12");
  DescribeList(history, global, options);

  auto* show = AddCommand(
      history, "show", "Show what entries did to the rows, field by field",
      "  qorhost history show 12 14",
      [&](Console& console) { return RunHistoryShow(global, options, console); }, kHistoryWords);
  show->add_option("ENTRY", options.entries, "Its number, as 'history list' prints it")->required();

  auto* undo = AddCommand(
      history, "undo",
      "Write back what entries changed, if nobody has changed it since, all or none",
      "  qorhost history undo 12 --dry-run\n  qorhost history undo 12 14",
      [&](Console& console) { return RunHistoryUndo(global, options, console); }, kHistoryWords);
  undo->add_option("ENTRY", options.entries, "Its number, as 'history list' prints it")->required();
  DescribeTrial(*undo, options.trial);

  auto* check = AddCommand(
      history, "check", "Look for entries that are missing or not as they were written",
      "  qorhost history check\n  qorhost history check --head 1:57:HASH",
      [&](Console& console) { return RunHistoryCheck(global, options, console); }, kHistoryWords);
  check
      ->add_option("--head", options.heads,
                   "A head that was noted before: its entry must still be the same")
      ->type_name("UNIT:ENTRY:HASH")
      ->allow_extra_args(false);
}

}  // namespace qorhost
