#include "host/desks/merge_aftermath.h"

#include <fmt/format.h>

#include <limits>
#include <string>
#include <unordered_set>

#include "frame/data_services.h"
#include "frame/schema.h"

namespace qorhost {

namespace {

constexpr std::int32_t kTakenByLibrary = 1;
constexpr std::int32_t kOutOfSight = std::numeric_limits<std::int32_t>::min();

void MoveTenants(DeskSession& session, std::int32_t unitKey, std::int32_t from, std::int32_t to) {
  qorcred::Connection(session.connection())
      .Execute(fmt::format("UPDATE TENANTS SET DIRECTORYCODE={} WHERE UNITKEY={} AND "
                           "DIRECTORYCODE={}",
                           to, unitKey, from));
}

bool IsChangeOfRow(const ProgramStep& step) {
  return step.kind == step::kProgramDirectoryCode || step.kind == step::kChangeDirectoryCode;
}

}  // namespace

std::size_t ReleaseTenants(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                           const std::vector<StoredCode>& stored) {
  const qorcred::Connection connection(session.connection());
  std::size_t released = 0;
  for (const MergeStep& step : plan.steps) {
    if (step.action != MergeAction::kDelete || stored[step.stored].tenants.empty()) {
      continue;
    }
    connection.Execute(
        fmt::format("UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE={} WHERE "
                    "UNITKEY={} AND DIRECTORYCODE={}",
                    qorcred::kLastModifiedLiteral, unitKey, stored[step.stored].rid));
    released += stored[step.stored].tenants.size();
  }
  return released;
}

void HideTenantsFromDeletions(DeskSession& session, std::int32_t unitKey) {
  MoveTenants(session, unitKey, kTakenByLibrary, kOutOfSight);
}

void ShowTenantsAgain(DeskSession& session, std::int32_t unitKey) {
  MoveTenants(session, unitKey, kOutOfSight, kTakenByLibrary);
}

std::size_t WithdrawMootSteps(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                              const MergeSides& sides) {
  std::unordered_set<std::int32_t> rows;
  std::unordered_set<std::string> inserted;
  for (const MergeStep& step : plan.steps) {
    if (step.action == MergeAction::kInsert) {
      inserted.insert(std::to_string(NumberOf(sides.unit[step.unitCode])));
    } else {
      rows.insert(sides.stored[step.stored].rid);
    }
  }
  std::size_t withdrawn = 0;
  for (const ProgramStep& waiting : session.sql().steps().List(unitKey)) {
    const bool moot = IsChangeOfRow(waiting) ? rows.contains(waiting.subjectRid)
                                             : waiting.kind == step::kDeleteDirectoryCode &&
                                                   inserted.contains(waiting.code);
    if (moot && !waiting.sent) {
      withdrawn += static_cast<std::size_t>(
          session.sql().steps().Withdraw(unitKey, waiting.kind, waiting.subjectRid));
    }
  }
  return withdrawn;
}

}  // namespace qorhost
