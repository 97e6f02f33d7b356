// What belongs to a unit beside its codes and tenants: doors, schedules, groups.
#include <limits>

#include "frame/schedules.h"
#include "host/desks/moving_in/row_rules.h"

namespace qorhost {

namespace {

/// Refuses rows without a number, and those whose unit has the number already.
template <typename Accept>
void SettleNumbers(RuleWork& work, std::string_view column, const Accept& accept) {
  const std::size_t unit = work.At("UnitKey");
  const std::size_t number = work.At(column);
  std::set<std::pair<std::int32_t, std::int32_t>> seen;
  work.Each([&](StagedRow& row) {
    const std::optional<std::int32_t> own = LongIn(row.cells[number]);
    if (!own) {
      work.Refuse(row, number, "null-number", "it has no number");
      return;
    }
    const std::pair key(*LongIn(row.cells[unit]), *own);
    if (!seen.insert(key).second) {
      work.Refuse(row, number, "duplicate-id", "a row before it has the number at the same unit");
      return;
    }
    accept(row, key);
  });
}

/// By unit and number: the order in which screens, cards and schedules count doors.
using DoorsInOrder = std::map<std::pair<std::int32_t, std::int32_t>, StagedRow*>;

void CloseGaps(RuleWork& work, const DoorsInOrder& doors) {
  const std::size_t number = work.At("DOORID");
  std::map<std::int32_t, std::int32_t> counted;
  for (const auto& [key, row] : doors) {
    const std::int32_t place = ++counted[key.first];
    if (place == key.second) continue;
    work.Adjust(*row, number, place, "door-number",
                "doors are numbered anew in their order, for the program counts them from 1");
  }
}

void TellScheduleNumber(RuleWork& work, const StagedRow& row, std::int32_t number) {
  const std::size_t place = work.At("ScheduleID");
  if (number < 0) {
    work.Keep(row, place, "number-range",
              "schedules are numbered from 0 on: this one cannot be renamed or deleted");
  } else if (number == std::numeric_limits<std::int32_t>::max()) {
    work.Keep(row, place, "number-range",
              "it is the last number there is: who adds a schedule has to name its number");
  }
}

}  // namespace

void SettleDoors(RuleWork& work, AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  DoorsInOrder doors;
  SettleNumbers(work, "DOORID", [&](StagedRow& row, const auto& key) {
    ++accepted.units.at(key.first).doors;
    doors.emplace(key, &row);
  });
  CloseGaps(work, doors);
}

void SettleSchedules(RuleWork& work, AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  SettleNumbers(work, "ScheduleID", [&](const StagedRow& row, const auto& key) {
    TellScheduleNumber(work, row, key.second);
    accepted.schedules.insert(key);
  });
  for (const auto& [unit, ignored] : accepted.units) {
    accepted.schedules.emplace(unit, qorcred::kNoAccess.id);
    accepted.schedules.emplace(unit, qorcred::kFullAccess.id);
  }
}

void SettleGroups(RuleWork& work, AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  const std::size_t rid = work.At("RID");
  const std::size_t unit = work.At("UnitKey");
  const std::size_t isZero = work.At("IsGroupZero");
  std::map<std::int32_t, const StagedRow*> first;
  work.Each([&](StagedRow& row) {
    const std::int32_t group = *LongIn(row.cells[rid]);
    const std::int32_t key = *LongIn(row.cells[unit]);
    accepted.unitOfGroup.emplace(group, key);
    first.try_emplace(key, &row);
    if (!FlagIn(row.cells[isZero])) return;
    std::optional<std::int32_t>& zero = accepted.units.at(key).groupZero;
    if (zero) {
      work.Adjust(row, isZero, false, "duplicate-group-zero",
                  "a group before it is the unit's group zero: it is an ordinary one");
    } else {
      zero = group;
    }
  });
  for (const auto& [key, row] : first) {
    if (!accepted.units.at(key).groupZero) {
      work.Keep(*row, isZero, "no-group-zero",
                "no group of the unit is its group zero: its new tenants have group 0");
    }
  }
}

}  // namespace qorhost
