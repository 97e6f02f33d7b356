#include "host/store/postgres/unit_register.h"

#include <fmt/format.h>

#include "frame/row_state.h"
#include "host/store/postgres/session.h"

namespace qorhost::postgres {

UnitRegister::UnitRegister(Session& session) : UnitsInWork(session.work()), session_(session) {}

std::optional<UnitFacts> UnitRegister::Read(std::int32_t unitKey) {
  SentValues values;
  values.AddNumber(unitKey);
  const Result unit = session_.Own(
      R"(SELECT U."UnitName", S."UnitKey", S."UNITTYPE" FROM "Units" U LEFT JOIN "UnitSettings" S )"
      R"(ON S."UnitKey" = U."UnitKey" WHERE U."UnitKey"=$1::int4)",
      values);
  if (unit.rows() == 0) {
    return std::nullopt;
  }
  return UnitFacts{std::string(unit.Text(0, 0)), !unit.IsNull(0, 1), std::string(unit.Text(0, 2))};
}

UnitCounts UnitRegister::CountRows(std::int32_t unitKey) {
  SentValues values;
  values.AddNumber(unitKey);
  const Result counts = session_.Own(
      fmt::format(R"(SELECT (SELECT count(*) FROM "CredentialBank" WHERE "UnitKey"=$1::int4), )"
                  R"((SELECT count(*) FROM "DirectoryCode" WHERE "UNITKEY"=$1::int4 AND )"
                  R"("DIRECTORYCODE">=0 AND coalesce("MODIFIED", 0)<>{}), )"
                  R"((SELECT count(*) FROM "ProgramSteps" WHERE "UnitKey"=$1::int4 AND "Sent"=0))",
                  qorcred::row_state::kDeleted),
      values);
  return {counts.Number(0, 0), counts.Number(0, 1), counts.Number(0, 2)};
}

}  // namespace qorhost::postgres
