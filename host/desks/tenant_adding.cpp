#include "host/desks/tenant_adding.h"

#include <fmt/format.h>

#include <limits>
#include <optional>
#include <string>

#include "frame/convert.h"
#include "frame/schedules.h"
#include "host/desks/credential_desk.h"
#include "host/desks/desk_error.h"

namespace qorhost {

namespace {

/// As the screen that creates tenants shows it.
void SetDefaultPeriod(DeskSession& session, std::int32_t unitKey, TenantRow& tenant) {
  CredentialDesk desk(session, unitKey, DeskScreen::kTenantCreating);
  const PickerModel& start = desk.screen().Date("dtpStart");
  const PickerModel& end = desk.screen().Date("dtpEnd");
  tenant.start = start.chosen() ? std::optional(start.shown()) : std::nullopt;
  tenant.end = end.chosen() ? std::optional(end.shown()) : std::nullopt;
  tenant.active = tenant.start || tenant.end;
}

}  // namespace

std::int32_t GroupZeroOf(DeskSession& session, std::int32_t unitKey) {
  return qorcred::RoundToLong(qorcred::NumericValue(session.sql().Scalar(
      fmt::format("SELECT RID FROM TenantGroup WHERE UnitKey={} AND IsGroupZero=True", unitKey))));
}

TenantAdding::TenantAdding(DeskSession& session, std::int32_t unitKey)
    : session_(session),
      unitKey_(unitKey),
      insert_("INSERT INTO Tenants (UnitKey, LINKCODE, LASTMODIFIEDDATE") {
  for (const TenantColumn& column : TenantColumns()) {
    insert_.append(", ").append(column.column);
  }
  insert_ += ") VALUES (";
  fresh_.schedules.fill(qorcred::kFullAccess.id);
  fresh_.group = GroupZeroOf(session, unitKey);
  SetDefaultPeriod(session, unitKey, fresh_);
}

void TenantAdding::Store(TenantRow& tenant) {
  // The connection's first write tells whether the unit is as it was shown: the code is free then.
  SqlSession& sql = session_.sql();
  if (rids_.empty()) {
    nextLinkCode_ = sql.tenants().NextLinkCode(unitKey_);
  }
  if (nextLinkCode_ > std::numeric_limits<std::int32_t>::max()) {
    throw RefusedError("the unit has no link code left");
  }
  std::string insert = insert_;
  insert += fmt::format("{}, {}, '_LMDATE_'", unitKey_, nextLinkCode_);
  for (const TenantColumn& column : TenantColumns()) {
    insert.append(", ").append(column.literal(tenant));
  }
  tenant.rid =
      static_cast<std::int32_t>(sql.Change(insert + ")", dialect::StatementKind::kInsert).newRow);
  rids_.push_back(tenant.rid);
  ++nextLinkCode_;
}

void TenantAdding::Finish() {
  if (rids_.empty()) {
    return;
  }
  SqlSession& sql = session_.sql();
  sql.tenants().BackUp(unitKey_, rids_);
  sql.steps().QueueAll(unitKey_, step::kProgramTenant, rids_);
  sql.tenants().TakeLinkCodes(unitKey_, static_cast<std::int32_t>(rids_.size()));
  rids_.clear();
}

}  // namespace qorhost
