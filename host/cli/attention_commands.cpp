#include "host/cli/attention_commands.h"

#include <fmt/format.h>

#include <utility>

#include "host/cli/list_command_line.h"
#include "host/cli/operator.h"
#include "host/cli/tenant_commands.h"
#include "host/desks/attention_desk.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

AttentionDays DaysOf(CommandSession& session, const AttentionOptions& options) {
  return {session.desks().Today(), options.within};
}

ExitStatus RunAttentionList(const GlobalOptions& global, const AttentionOptions& options,
                            Console& console) {
  CommandSession session(global, Access::kRead, console);
  PrintUnitList(global, options.asked, session, console, [&](const UnitName& unit) {
    return AttentionList(session.desks(), unit.key, DaysOf(session, options));
  });
  return ExitStatus::kDone;
}

std::string Question(AttentionStep step, const std::vector<TenantRow>& tenants) {
  std::vector<std::string> names;
  for (const TenantRow& tenant : tenants) {
    names.push_back(tenant.NameWithRid());
  }
  return fmt::format("{}: {}, {}. Go on?",
                     step == AttentionStep::kEnd
                         ? "These leases end today, and their cards are free"
                         : "These tenants lose their cards and have No Access at every door",
                     Counted(names.size(), "tenant", "tenants"), SomeNames(names));
}

ExitStatus RunStep(const GlobalOptions& global, const AttentionOptions& options, AttentionStep step,
                   Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  AttentionDesk desk(session.desks(), unit.key, DaysOf(session, options), options.conditions, step);
  if (!options.trial && !desk.chosen().empty()) {
    session.RequireConsent(Question(step, desk.chosen()));
  }
  return TellChangedTenants(desk.Run(TrialOf(options.trial)), unit,
                            step == AttentionStep::kEnd ? "Ended the lease of" : "Deactivated",
                            global, console);
}

ExitStatus RunFreeCardDelete(const GlobalOptions& global, const AttentionOptions& options,
                             Console& console) {
  CommandSession session(global, Access::kChange, console, TrialOf(options.trial));
  const UnitName unit = session.UnitToChange();
  FreeCards free(session.desks(), unit.key, DaysOf(session, options), options.conditions);
  session.RequireDeletion();
  ChangeReport report;
  report.unit = unit.key;
  std::vector<std::string> names;
  for (const FreeCards::Card& card : free.cards()) {
    report.deleted.push_back({"credential", card.rid, card.entry});
    names.push_back(card.entry);
  }
  if (names.empty()) {
    if (global.json) {
      session.Report(std::move(report));
    } else {
      console.Remarks() << fmt::format(
          "No credential {} meets the conditions and is held by nobody: nothing was changed.\n",
          InUnit(unit));
    }
    return ExitStatus::kDone;
  }
  session.RequireConsent(fmt::format("{} that nobody holds will be deleted: {}. Go on?",
                                     Counted(names.size(), "credential", "credentials"),
                                     SomeNames(names)));
  const DeletedCredentials deleted = free.Delete();
  const ExitStatus status = TellChange(deleted, "credentials", console);
  if (!deleted.done() || session.ToldTrial(deleted)) {
    return status;
  }
  if (global.json) {
    report.stored = true;
    session.Report(std::move(report));
  } else {
    console.Remarks() << fmt::format(
        "Deleted {} {}.\n",
        Counted(static_cast<std::size_t>(deleted.rows), "credential", "credentials"), InUnit(unit));
  }
  return status;
}

void DescribeStep(CommandPlace place, const char* name, const char* description,
                  const char* examples, CommandRun run, AttentionOptions& options) {
  auto* step = AddCommand(place, name, description, examples, std::move(run), kListWords);
  DescribeConditions(*step, options.conditions,
                     "Those of the list that meet a condition; several must all hold");
  DescribeWithin(*step, options.within);
  DescribeTrial(*step, options.trial);
}

}  // namespace

void DescribeWithin(CLI::App& command, std::int32_t& within) {
  static constexpr NumberRange kDays{0, 36'500};
  AddNumber(command, "--within", "DAYS", kDays,
            fmt::format("How many days from today on count as soon ({})", kUsualSoon),
            [&within](std::int64_t days) { within = static_cast<std::int32_t>(days); });
}

void DescribeAttention(CommandPlace place, const GlobalOptions& global, AttentionOptions& options) {
  const CommandPlace attention = AddGroup(
      place, "attention", "See what needs attention, leases and cards above all, and settle it",
      "  qorhost attention list --within 30\n  qorhost attention deactivate --help");
  auto* list = AddCommand(
      attention, "list",
      "List tenants and directory codes whose last day is past or near, tenants without a card or "
      "a code, and cards that nobody holds",
      "  qorhost attention list --unit 2 --where \"reason begins with exp\"\n"
      "  qorhost attention list --all-units --within 60 --to attention.html\n"
      "Reasons: expired, expiring, expired code, expiring code, no card, no code, free card",
      [&](Console& console) { return RunAttentionList(global, options, console); }, kListWords);
  DescribeListOptions(*list, options.asked);
  DescribeWithin(*list, options.within);

  DescribeStep(
      attention, "end", "End the leases that are expiring today, and take their cards; asks first",
      "  qorhost attention end --unit 2 --within 7 --dry-run\n"
      "  qorhost attention end --unit 2 --where \"name contains Berg\"",
      [&](Console& console) { return RunStep(global, options, AttentionStep::kEnd, console); },
      options);
  DescribeStep(
      attention, "deactivate",
      "Take the cards of expired tenants and leave them No Access at every door; asks first",
      "  qorhost attention deactivate --unit 2 --dry-run\n"
      "  qorhost attention deactivate --unit 2 --where \"end < 2026-07-01\"",
      [&](Console& console) {
        return RunStep(global, options, AttentionStep::kDeactivate, console);
      },
      options);
  DescribeStep(
      attention, "delete", "Delete the cards that nobody holds; asks first",
      "  qorhost attention delete --unit 2 --where \"name begins with Transmitter\" --dry-run",
      [&](Console& console) { return RunFreeCardDelete(global, options, console); }, options);
}

}  // namespace qorhost
