#include "host/store/postgres/tenant_register.h"

#include <algorithm>

#include "host/store/postgres/session.h"
#include "host/store/row_runs.h"

namespace qorhost::postgres {

namespace {

SentValues Values(std::initializer_list<std::int64_t> numbers) {
  SentValues values;
  for (const std::int64_t number : numbers) {
    values.AddNumber(number);
  }
  return values;
}

}  // namespace

std::int32_t TenantRegister::TenantIdOf(std::int32_t unitKey, std::int32_t rid) {
  const Result found = session_.Own(
      R"(SELECT "TenantID" FROM "Tenants" WHERE "RID"=$2::int4 AND "UnitKey"=$1::int4)",
      Values({unitKey, rid}));
  return found.rows() == 0 ? 0 : static_cast<std::int32_t>(found.Number(0, 0));
}

void TenantRegister::EachName(const std::function<Reading(const StoredNames&)>& take) {
  enum Column { kUnit, kRid, kLast, kFirst, kInitial, kAtUnit, kResident };
  auto reading = Reading::kGoesOn;
  (void)session_.Own(
      R"(SELECT "UnitKey", "RID", "LastName", "FirstName", "MiddleInitial", "NameAtUnit", )"
      R"("Resident" FROM "Tenants" ORDER BY "RID")",
      {}, [&](const Result& row) {
        if (reading == Reading::kGoesOn) {
          reading = take({static_cast<std::int32_t>(row.Number(0, kUnit)),
                          static_cast<std::int32_t>(row.Number(0, kRid)), row.Text(0, kLast),
                          row.Text(0, kFirst), row.Text(0, kInitial), row.Text(0, kAtUnit),
                          row.Number(0, kResident) != 0});
        }
      });
}

void TenantRegister::BackUp(std::int32_t unitKey, std::span<const std::int32_t> rids) {
  ForEachRun(rids, [&](std::int32_t first, std::int32_t last) {
    session_.Writing([&] {
      return session_.Own(
          R"(INSERT INTO "TenantsBackup" ("UnitKey", "TenantID") SELECT "UnitKey", "TenantID" )"
          R"(FROM "Tenants" WHERE "UnitKey"=$1::int4 AND "RID" BETWEEN $2::int4 AND $3::int4 )"
          R"(ORDER BY "RID")",
          Values({unitKey, first, last}));
    });
  });
}

std::int32_t TenantRegister::NextLinkCode(std::int32_t unitKey) {
  const Result next = session_.Own(
      R"(SELECT coalesce((SELECT "NextLinkCode" FROM "UnitCounters" WHERE "UnitKey"=$1::int4), 0), )"
      R"(coalesce((SELECT max("LINKCODE") FROM "Tenants" WHERE "UnitKey"=$1::int4), 0)::int8 + 1)",
      Values({unitKey}));
  const std::int64_t counter = next.Number(0, 0);
  const std::int64_t code = std::max(counter, next.Number(0, 1));
  const std::int32_t free = RequireLinkCode(code);
  // Asking is no reason to take the right to write: the counter catches up where it is taken.
  const bool mayWrite =
      session_.work().open() ? session_.work().locked() : session_.transaction().open();
  if (counter < code && mayWrite) {
    KeepCounter(unitKey, code);
  }
  return free;
}

void TenantRegister::TakeLinkCodes(std::int32_t unitKey, std::int32_t count) {
  const std::int64_t taken = session_.Writing([&] {
    return session_
        .Own(R"(UPDATE "UnitCounters" SET "NextLinkCode" = "NextLinkCode" + $2::int8 )"
             R"(WHERE "UnitKey"=$1::int4)",
             Values({unitKey, count}))
        .affected();
  });
  if (taken == 0) {
    KeepCounter(unitKey, std::int64_t{NextLinkCode(unitKey)} + count);
  }
}

void TenantRegister::KeepCounter(std::int32_t unitKey, std::int64_t nextCode) {
  session_.Writing([&] {
    return session_.Own(
        R"(INSERT INTO "UnitCounters" ("UnitKey", "NextLinkCode") VALUES ($1::int4, $2::int8) )"
        R"(ON CONFLICT ("UnitKey") DO UPDATE SET "NextLinkCode" = $2::int8)",
        Values({unitKey, nextCode}));
  });
}

}  // namespace qorhost::postgres
