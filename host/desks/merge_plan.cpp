#include "host/desks/merge_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "frame/convert.h"
#include "frame/row_state.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;
using qorcred::unit_place::Place;

/// What a merge compares; the time of a date goes by the date's name.
constexpr std::array kCompared{PlaceName{Place::kCode, "code"},
                               PlaceName{Place::kPhone, "phone"},
                               PlaceName{Place::kExtension, "extension"},
                               PlaceName{Place::kTimeDelay, "delay"},
                               PlaceName{Place::kIsDndChecked, "do not disturb"},
                               PlaceName{Place::kDndSchedule, "do-not-disturb schedule"},
                               PlaceName{Place::kIsCfChecked, "call forwarding"},
                               PlaceName{Place::kCfSchedule, "call-forward schedule"},
                               PlaceName{Place::kCfPhone, "call-forward phone"},
                               PlaceName{Place::kCfExtension, "call-forward extension"},
                               PlaceName{Place::kCfTimeDelay, "call-forward delay"},
                               PlaceName{Place::kActive, "active"},
                               PlaceName{Place::kStartDateUsed, "start used"},
                               PlaceName{Place::kStartDate, "start date"},
                               PlaceName{Place::kStartTime, "start time"},
                               PlaceName{Place::kEndDateUsed, "end used"},
                               PlaceName{Place::kEndDate, "end date"},
                               PlaceName{Place::kEndTime, "end time"},
                               PlaceName{Place::kDisplayName, "display name"},
                               PlaceName{Place::kDisplayMode, "display mode"}};

/// The names of what differs; empty when nothing does.
std::string Differences(const UnitCode& unit, const StoredCode& stored, bool withDisplay) {
  if (!stored.obstacle.empty()) {
    return "the row: " + stored.obstacle;
  }
  std::vector<std::string_view> names;
  for (const PlaceName& field : kCompared) {
    const bool counts = withDisplay || field.place != Place::kDisplayMode;
    if (counts && unit[field.place] != stored.code[field.place]) {
      names.push_back(field.name);
    }
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

/// What goes with a row that is deleted.
std::string Losses(const StoredCode& stored) {
  std::vector<std::string> losses;
  if (stored.state == qorcred::row_state::kNotSent) {
    losses.emplace_back("never sent to the unit");
  } else if (stored.state == qorcred::row_state::kChanged) {
    losses.emplace_back("its last change was not sent");
  }
  if (!stored.tenants.empty()) {
    losses.push_back(fmt::format("taken from {}", fmt::join(stored.tenants, ", ")));
  }
  return fmt::format("{}", fmt::join(losses, ", "));
}

constexpr std::size_t kNoMatch = static_cast<std::size_t>(-1);

/// For each code of the unit the row that it is matched with, or kNoMatch.
class Matches {
 public:
  Matches(const std::vector<UnitCode>& unit, const std::vector<StoredCode>& stored)
      : ofUnit_(unit.size(), kNoMatch), taken_(stored.size(), false) {
    Match(unit, stored, [](const StoredCode& row) { return std::optional(row.number); });
    Match(unit, stored, [](const StoredCode& row) { return row.previous; });
  }

  [[nodiscard]] std::size_t OfUnit(std::size_t code) const { return ofUnit_[code]; }
  [[nodiscard]] bool IsTaken(std::size_t row) const { return taken_[row]; }

 private:
  template <typename NumberOfRow>
  void Match(const std::vector<UnitCode>& unit, const std::vector<StoredCode>& stored,
             NumberOfRow numberOfRow) {
    std::unordered_map<double, std::size_t> rows;
    rows.reserve(stored.size());
    for (std::size_t row = 0; row < stored.size(); ++row) {
      const std::optional<double> number = numberOfRow(stored[row]);
      if (number && !taken_[row]) {
        rows.emplace(*number, row);
      }
    }
    for (std::size_t code = 0; code < unit.size(); ++code) {
      if (ofUnit_[code] != kNoMatch) {
        continue;
      }
      const auto found = rows.find(static_cast<double>(NumberOf(unit[code])));
      if (found != rows.end() && !taken_[found->second]) {
        ofUnit_[code] = found->second;
        taken_[found->second] = true;
      }
    }
  }

  std::vector<std::size_t> ofUnit_;
  std::vector<bool> taken_;
};

std::string_view ActionWord(MergeAction action) {
  switch (action) {
    case MergeAction::kInsert:
      return "insert";
    case MergeAction::kUpdate:
      return "update";
    case MergeAction::kDelete:
      break;
  }
  return "delete";
}

}  // namespace

std::size_t MergePlan::Count(MergeAction action) const {
  return static_cast<std::size_t>(
      std::count_if(steps.begin(), steps.end(),
                    [action](const MergeStep& step) { return step.action == action; }));
}

MergePlan PlanMerge(const std::vector<UnitCode>& unit, const std::vector<StoredCode>& stored,
                    const MergeRules& rules) {
  const Matches matches(unit, stored);
  MergePlan plan;
  for (std::size_t row = 0; row < stored.size(); ++row) {
    if (matches.IsTaken(row)) {
      continue;
    }
    if (rules.withDeletions) {
      plan.steps.push_back({MergeAction::kDelete, kNoMatch, row, Losses(stored[row])});
    } else {
      ++plan.kept;
    }
  }
  std::vector<MergeStep> inserts;
  for (std::size_t code = 0; code < unit.size(); ++code) {
    const std::size_t row = matches.OfUnit(code);
    if (row == kNoMatch) {
      inserts.push_back({MergeAction::kInsert, code, kNoMatch, ""});
      continue;
    }
    std::string differences = Differences(unit[code], stored[row], rules.withDisplay);
    if (differences.empty()) {
      ++plan.unchanged;
    } else {
      plan.steps.push_back({MergeAction::kUpdate, code, row, std::move(differences)});
    }
  }
  plan.steps.insert(plan.steps.end(), std::make_move_iterator(inserts.begin()),
                    std::make_move_iterator(inserts.end()));
  return plan;
}

MergeSubject SubjectOf(const MergeStep& step, const std::vector<UnitCode>& unit,
                       const std::vector<StoredCode>& stored) {
  MergeSubject subject;
  if (step.action != MergeAction::kInsert) {
    subject = {stored[step.stored].number, stored[step.stored].rid};
  }
  if (step.action != MergeAction::kDelete) {
    subject.number = static_cast<double>(NumberOf(unit[step.unitCode]));
  }
  return subject;
}

Table StepTable(const MergeStep& step, const std::vector<UnitCode>& unit,
                const std::vector<StoredCode>& stored) {
  const UnitCode* there = step.action == MergeAction::kDelete ? nullptr : &unit[step.unitCode];
  const bool isReadable =
      step.action != MergeAction::kInsert && stored[step.stored].obstacle.empty();
  const UnitCode* here = isReadable ? &stored[step.stored].code : nullptr;
  const auto text = [](const UnitCode* code, Place place) {
    return code == nullptr ? Value(Null{}) : Value((*code)[place]);
  };
  Table table;
  table.columns = {{"Field", "field"}, {"Store", "store"}, {"Unit", "unit"}, {"", "differs"}};
  for (const PlaceName& field : kCompared) {
    const bool isEmpty = (here == nullptr || (*here)[field.place].empty()) &&
                         (there == nullptr || (*there)[field.place].empty());
    if (!isEmpty) {
      const bool differs =
          here == nullptr || there == nullptr || (*here)[field.place] != (*there)[field.place];
      table.rows.push_back({field.name, text(here, field.place), text(there, field.place),
                            differs ? "differs" : ""});
    }
  }
  return table;
}

Table PlanTable(const MergePlan& plan, const std::vector<UnitCode>& unit,
                const std::vector<StoredCode>& stored) {
  Table table;
  table.columns = {{"Action", "action"},
                   {"Code", "code"},
                   {"RID", "rid"},
                   {"Code in store", "stored_code"},
                   {"What", "what"}};
  for (const MergeStep& step : plan.steps) {
    const auto [number, rid] = SubjectOf(step, unit, stored);
    table.rows.push_back({ActionWord(step.action), number, rid ? Value(*rid) : Value(Null{}),
                          rid ? Value(stored[step.stored].number) : Value(Null{}),
                          step.what.empty() ? Value(Null{}) : Value(step.what)});
  }
  return table;
}

}  // namespace qorhost
