#include "host/desks/assignment.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "frame/schema.h"
#include "frame/siblings.h"
#include "frame/trap.h"
#include "host/desks/credential_slots.h"
#include "host/desks/tenant_name.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

/// Of the tenant who is chosen; of none when nobody is.
std::string FromTaker(const Assignment& chosen) {
  constexpr std::int32_t kNoTenant = 0;
  return fmt::format("FROM TENANTS WHERE UnitKey={} AND TenantID={}", chosen.unitKey,
                     chosen.tenantId.value_or(kNoTenant));
}

void QueueSteps(DeskSession& session, std::int32_t unitKey,
                const std::vector<std::int32_t>& tenantIds) {
  if (tenantIds.empty()) {
    return;
  }
  const qorcred::TenantComponent tenants(
      session.ownHost().CreateComponent(qorcred::component::kTenant));
  for (const std::int32_t tenant : tenantIds) {
    tenants.CreateProgramSteps(session.connection(), unitKey, tenant);
  }
}

}  // namespace

std::string SelectOfTaker(const Assignment& chosen) {
  return fmt::format("SELECT * {} ORDER BY RID", FromTaker(chosen));
}

AssignmentLosses LossesOf(DeskSession& session, const Assignment& chosen,
                          const ListModel& credentials) {
  AssignmentLosses losses;
  const QueryResult holders = session.sql().Select(fmt::format(
      "SELECT {} FROM TENANTS WHERE UnitKey={} AND {} AND TenantID<>{} ORDER BY TenantID",
      kFullNameColumns, chosen.unitKey, Holds(chosen.rid), chosen.tenantId.value_or(0)));
  for (const ResultRow row : holders.rows()) {
    losses.holders.push_back(FullNameIn(row, 0));
  }
  const QueryResult full = session.sql().Select(
      fmt::format("SELECT CREDENTIALID1 {} AND {} AND CREDENTIALID1<>{} AND CREDENTIALID2<>{}",
                  FromTaker(chosen), kHoldsTwo, chosen.rid, chosen.rid));
  if (full.rowCount > 0) {
    const std::int32_t replaced = qorcred::ToLong(full.table->At(0, 0));
    const std::int32_t index = credentials.FindData(replaced);
    losses.replaced =
        WithRid(index == ListModel::kNone ? "a credential" : credentials.Text(index), replaced);
  }
  return losses;
}

std::optional<std::string> QuestionOf(const AssignmentLosses& losses, std::string_view credential,
                                      std::string_view tenant) {
  if (tenant.empty() || !losses.any()) {
    return std::nullopt;
  }
  std::string question;
  for (const std::string& holder : losses.holders) {
    question += fmt::format("{} loses {}. ", holder, credential);
  }
  if (!losses.replaced.empty()) {
    question += fmt::format("{} has two credentials and loses {}. ", tenant, losses.replaced);
  }
  return question + "Go on?";
}

bool IsHeldAsChosen(DeskSession& session, const Assignment& chosen) {
  if (!chosen.tenantId) {
    return true;
  }
  const QueryResult holder = session.sql().Select(
      fmt::format("SELECT RID FROM TENANTS WHERE UnitKey={} AND TenantID={} AND {}", chosen.unitKey,
                  *chosen.tenantId, Holds(chosen.rid)));
  return holder.rowCount > 0;
}

bool IsHeldByChosenAlone(DeskSession& session, const Assignment& chosen) {
  const QueryResult holders = session.sql().Select(fmt::format(
      "SELECT TenantID FROM TENANTS WHERE UnitKey={} AND {}", chosen.unitKey, Holds(chosen.rid)));
  if (!chosen.tenantId) {
    return holders.rowCount == 0;
  }
  return holders.rowCount == 1 && qorcred::ToLong(holders.table->At(0, 0)) == *chosen.tenantId;
}

CredentialHolders HoldersOf(DeskSession& session, std::int32_t unitKey, std::int32_t rid) {
  const QueryResult rows = session.sql().Select(
      fmt::format("SELECT TenantID,Resident FROM TENANTS WHERE UnitKey={} AND {} ORDER BY TenantID",
                  unitKey, Holds(rid)));
  CredentialHolders holders;
  for (const ResultRow row : rows.rows()) {
    const bool isResident = qorcred::NumericValue(row[1]) != 0;
    (isResident ? holders.residents : holders.tenants).push_back(qorcred::ToLong(row[0]));
  }
  return holders;
}

void QueueHoldersSteps(DeskSession& session, std::int32_t unitKey, std::int32_t rid) {
  qorcred::Trap(session.ownHost(), "queue the holder's step", [&] {
    const CredentialHolders holders = HoldersOf(session, unitKey, rid);
    QueueSteps(session, unitKey, holders.tenants);
    QueueSteps(session, unitKey, holders.residents);
  });
}

void ReleaseHolders(DeskSession& session, std::int32_t unitKey, std::int32_t rid,
                    const CredentialHolders& holders) {
  // Which one of several the controller has taught, nobody knows.
  const bool haveOthers = holders.tenants.size() > 1;
  if (!haveOthers && holders.residents.empty()) {
    return;
  }
  qorcred::Trap(session.ownHost(), "release the holders of the credential", [&] {
    const qorcred::Connection connection(session.connection());
    for (const std::string_view slot : {"CREDENTIALID1", "CREDENTIALID2"}) {
      connection.Execute(fmt::format(
          "UPDATE TENANTS SET {0}=NULL,LASTMODIFIEDDATE={1} WHERE UNITKEY={2} AND {0}={3}", slot,
          qorcred::kLastModifiedLiteral, unitKey, rid));
    }
    if (haveOthers) {
      QueueSteps(session, unitKey, holders.tenants);
    }
    QueueSteps(session, unitKey, holders.residents);
  });
}

}  // namespace qorhost
