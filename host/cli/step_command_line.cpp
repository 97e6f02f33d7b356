#include "host/cli/step_command_line.h"

#include <array>

#include "host/cli/list_command_line.h"
#include "host/cli/store_commands.h"
#include "host/desks/step_desk.h"

namespace qorhost {

namespace {

constexpr std::array kStepWords{
    FieldWord{step_input::kUpTo, "--upto", "'qorhost steps list' shows what waits"},
    FieldWord{step_input::kStep, "", "'qorhost steps list' shows what waits"}};

}  // namespace

void DescribeSteps(CommandPlace place, const GlobalOptions& global, StepOptions& options) {
  CLI::App* app = AddCommand(
      place, "steps",
      "List the programming steps that wait for the units; write them down, mark them as sent",
      "  qorhost steps\n  qorhost steps --unit 1 --json\n"
      "  qorhost steps export steps.txt --unit 2",
      [&](Console& console) { return RunSteps(global, console); });
  app->require_subcommand(0, 1);
  const CommandPlace steps{*app, place.chosen};

  auto* list = AddCommand(
      steps, "list", "List what waits, in the order of queuing, with times and subjects",
      "  qorhost steps list --unit 1 --json\n"
      "  qorhost steps list --where \"queued < 2026-12-01\" --sort unit,-queued",
      [&](Console& console) { return RunStepList(global, options.asked, console); }, kListWords);
  DescribeListOptions(*list, options.asked);

  auto* written =
      AddCommand(steps, "export", "Write what waits for a unit to a file that it reads",
                 "  qorhost steps export steps.txt --unit 2\n  qorhost steps export - --unit 2",
                 [&](Console& console) { return RunStepExport(global, options, console); });
  written->add_option("FILE", options.to, "The file, or - for standard output")->required();
  written->add_flag("--force", options.force, "Replace an existing file");

  auto* done = AddCommand(
      steps, "done", "Mark the steps that a unit was handed as sent",
      "  qorhost steps done --unit 2 --upto 17\n"
      "  qorhost steps done 12 14 --unit 2\n  qorhost steps done --unit 2 --dry-run",
      [&](Console& console) { return RunStepsDone(global, options, console); }, kStepWords);
  auto* named = done->add_option("STEP", options.choice.steps, "These steps (all that wait)");
  done->add_option("--upto", options.choice.upTo, "All up to the last one that was handed over")
      ->type_name("STEP")
      ->excludes(named);
  DescribeTrial(*done, options.trial);
}

}  // namespace qorhost
