#include "host/store/sqlite/unit_register.h"

#include "host/store/sqlite/kept_counts.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

std::optional<UnitFacts> UnitRegister::Find(std::int32_t unitKey) {
  session_.work().RequireUsable();
  if (const UnitFacts* const kept = session_.work().units().FactsOf(unitKey)) {
    return *kept;
  }
  std::optional<UnitFacts> facts = Read(unitKey);
  if (facts) {
    session_.work().units().KeepFacts(unitKey, *facts);
  }
  return facts;
}

std::optional<UnitFacts> UnitRegister::Read(std::int32_t unitKey) {
  const StatementUse unit(
      session_.Own("SELECT U.UnitName, S.UnitKey, S.UNITTYPE FROM Units U LEFT JOIN UnitSettings S "
                   "ON S.UnitKey = U.UnitKey WHERE U.UnitKey=?1"));
  unit->BindNumber(1, unitKey);
  if (!unit->Step()) {
    return std::nullopt;
  }
  return UnitFacts{std::string(unit->Text(0)), !unit->IsNull(1), std::string(unit->Text(2))};
}

UnitCounts UnitRegister::Count(std::int32_t unitKey) {
  session_.work().RequireUsable();
  session_.work().WriteHeld();  // they are counted when they are written
  const UnitCounts* const kept = session_.work().units().CountsOf(unitKey);
  return kept != nullptr ? *kept : CountUnit(session_, unitKey);
}

void UnitRegister::KeepCounts(std::int32_t unitKey) {
  session_.work().KeepCounts(unitKey, CountUnit(session_, unitKey));
}

}  // namespace qorhost::sqlite
