#include "host/store/sqlite/unit_register.h"

#include "host/store/sqlite/kept_counts.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

UnitRegister::UnitRegister(Session& session) : UnitsInWork(session.work()), session_(session) {}

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

UnitCounts UnitRegister::CountRows(std::int32_t unitKey) {
  return CountUnit(session_, unitKey);
}

}  // namespace qorhost::sqlite
