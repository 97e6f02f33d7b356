#include "host/desks/moving_in/rule_work.h"

#include <fmt/format.h>

#include "host/desks/moving_in/cell_conversion.h"

namespace qorhost {

SettledCell RuleWork::Settled(Settlement settlement, const StagedRow& row, std::size_t place,
                              std::string_view kind, std::string reason) const {
  SettledCell told;
  told.settlement = settlement;
  told.table = table_.known().name;
  told.row = row.number;
  told.identity = table_.IdentityOf(row);
  told.column = LayoutOf(table_.known()).columns[place].name;
  told.kind = kind;
  told.value = ShownStored(row.cells[place]);
  told.reason = std::move(reason);
  return told;
}

void RuleWork::Refuse(StagedRow& row, std::size_t place, std::string_view kind,
                      std::string reason) {
  settled_.Add(Settled(Settlement::kRefused, row, place, kind, std::move(reason)));
  row.isRefused = true;
}

void RuleWork::Adjust(StagedRow& row, std::size_t place, qorcred::Value instead,
                      std::string_view kind, std::string reason) {
  SettledCell told = Settled(Settlement::kAdjusted, row, place, kind, std::move(reason));
  row.cells[place] = std::move(instead);
  told.instead = ShownStored(row.cells[place]);
  settled_.Add(std::move(told));
}

void RuleWork::Keep(const StagedRow& row, std::size_t place, std::string_view kind,
                    std::string reason) {
  settled_.Add(Settled(Settlement::kKept, row, place, kind, std::move(reason)));
}

void RequireUnit(RuleWork& work, const AcceptedRows& accepted) {
  const std::size_t unit = work.At("UnitKey");
  work.Each([&](StagedRow& row) {
    const std::optional<std::int32_t> key = LongIn(row.cells[unit]);
    if (!key) {
      work.Refuse(row, unit, "missing-unit", "the row belongs to no unit");
    } else if (!accepted.units.contains(*key)) {
      work.Refuse(row, unit, "missing-unit", "there is no such unit");
    }
  });
}

}  // namespace qorhost
