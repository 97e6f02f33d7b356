#include "host/desks/overview_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "host/desks/activity.h"
#include "host/desks/attention_list.h"
#include "host/desks/list_page.h"
#include "host/desks/shown_value.h"
#include "host/desks/store_overview.h"
#include "host/desks/unit_settings.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr std::size_t kWeeksShown = 26;

/// How many rows of a list of matters are there for a reason.
Value CountOf(const List& matters, std::string_view reason) {
  return CountCell(static_cast<std::size_t>(
      std::count_if(matters.rows.begin(), matters.rows.end(),
                    [reason](const auto& row) { return row.front() == Value(reason); })));
}

/// When the oldest step was queued that waits for the unit.
Value WaitingSince(DeskSession& session, std::int32_t unitKey) {
  for (const ProgramStep& step : StepsOf(session, unitKey)) {
    if (!step.sent) {
      return step.queuedAt;
    }
  }
  return Null{};
}

Value NumberOrNull(const std::optional<std::int32_t>& number) {
  return number ? Value(*number) : Value(Null{});
}

/// Those that are about what is over or ends soon.
List EndingsAmong(List matters) {
  std::erase_if(matters.rows, [](const auto& row) {
    const std::string reason = qorcred::TextOrEmpty(row.front());
    return reason == attention::kNoCard || reason == attention::kNoCode ||
           reason == attention::kFreeCard;
  });
  return matters;
}

/// So many in a chart that it has room on a sheet.
PageSection CodesInUse(const std::vector<UnitUse>& units) {
  constexpr std::size_t kInChart = 24;
  PageSection section;
  section.heading = "Codes in use";
  std::vector<ChartBar> bars;
  std::string description;
  const auto end = [&] {
    if (!bars.empty()) {
      section.charts.push_back(
          BarChart({"Codes in use against the capacity of each unit", description}, bars));
      bars.clear();
      description.clear();
    }
  };
  for (const auto& [unit, used, capacity] : units) {
    description += fmt::format("{}Unit {}, {}: {} of {}", description.empty() ? "" : "; ", unit.key,
                               unit.name, used, capacity ? std::to_string(*capacity) : "unknown");
    bars.push_back({fmt::format("{}, {}", unit.key, unit.name), static_cast<double>(used),
                    capacity ? std::optional<double>(*capacity) : std::nullopt});
    if (bars.size() == kInChart) {
      end();
    }
  }
  end();
  return section;
}

PageSection Activity(DeskSession& session, const std::optional<UnitName>& unit) {
  const std::vector<WeekOfWork> weeks =
      ActivityByWeek(session, unit ? std::optional(unit->key) : std::nullopt, kWeeksShown);
  std::vector<ChartColumn> columns;
  std::int64_t total = 0;
  const WeekOfWork* busiest = &weeks.front();
  for (const WeekOfWork& week : weeks) {
    columns.push_back({ShownDay(week.monday), static_cast<double>(week.entries)});
    total += week.entries;
    busiest = week.entries > busiest->entries ? &week : busiest;
  }
  PageSection section;
  section.heading = fmt::format("Changes by week: {} in {} weeks", total, kWeeksShown);
  section.charts.push_back(ColumnChart(
      {"Entries of the history by week",
       fmt::format("{} from the week of {} to that of {}; the most in a week were {}, in that of "
                   "{}.",
                   Counted(static_cast<std::size_t>(total), "entry", "entries"),
                   ShownDay(weeks.front().monday), ShownDay(weeks.back().monday), busiest->entries,
                   ShownDay(busiest->monday))},
      columns));
  return section;
}

}  // namespace

StoreOverview OverviewOf(DeskSession& session, const std::vector<UnitName>& units,
                         std::int32_t within) {
  StoreOverview overview;
  overview.within = within;
  overview.list.title = "Overview";
  overview.list.fields = {{"Unit", "unit", FieldKind::kNumber},
                          {"Name", "name"},
                          {"Tenants", "tenants", FieldKind::kNumber},
                          {"Codes in use", "codes_in_use", FieldKind::kNumber},
                          {"Capacity", "capacity", FieldKind::kNumber},
                          {"Waiting steps", "waiting_steps", FieldKind::kNumber},
                          {"Waiting since", "waiting_since", FieldKind::kDate, TimeOf::kPlace},
                          {"Expired", "expired", FieldKind::kNumber},
                          {"Expiring", "expiring", FieldKind::kNumber},
                          {"Free cards", "free_cards", FieldKind::kNumber}};
  for (const UnitName& unit : units) {
    const UnitStatus status = UnitStatusOf(session, unit.key);
    const std::optional<std::int32_t> capacity = CapacityOf(session, unit.key);
    const std::vector<TenantRow> tenants = ReadTenants(session, unit.key);
    const TenantLinks links(session, unit.key);
    List matters = AttentionList(session, unit.key, {session.Today(), within}, tenants, links);
    overview.list.rows.push_back(
        {unit.key, unit.name, CountCell(tenants.size()), static_cast<double>(status.CodesInUse()),
         NumberOrNull(capacity), static_cast<double>(status.pendingSteps),
         WaitingSince(session, unit.key), CountOf(matters, attention::kExpired),
         CountOf(matters, attention::kExpiring), CountOf(matters, attention::kFreeCard)});
    overview.use.push_back({unit, status.CodesInUse(), capacity});
    List endings = EndingsAmong(std::move(matters));
    Append(overview.endings,
           units.size() > 1 ? WithUnit(std::move(endings), unit) : std::move(endings));
  }
  return overview;
}

HtmlPage PageOfOverview(DeskSession& session, const StoreOverview& overview,
                        const std::optional<UnitName>& unit, List rows, const ListQuery& asked) {
  HtmlPage page = EmptyPage(session, "Overview", unit);
  PageSection atAGlance = SectionOf(std::move(rows), asked);
  atAGlance.heading = "At a glance";
  page.sections.push_back(std::move(atAGlance));
  page.sections.push_back(CodesInUse(overview.use));
  page.sections.push_back(Activity(session, unit));
  if (!overview.endings.rows.empty()) {
    PageSection ends = SectionOf(overview.endings, {});
    ends.heading = fmt::format("Over, or ending within {}",
                               Counted(static_cast<std::size_t>(overview.within), "day", "days"));
    page.sections.push_back(std::move(ends));
  }
  return page;
}

}  // namespace qorhost
