#include "host/desks/seen_row.h"

#include <algorithm>
#include <iterator>

#include "frame/text.h"
#include "host/desks/shown_value.h"

namespace qorhost {

namespace {

bool IsOf(const RowChange& change, const RowsOfTable& rows) {
  return qorcred::CompareIgnoringCase(change.table, rows.table) == 0 &&
         (rows.rids.empty() ||
          std::any_of(rows.rids.begin(), rows.rids.end(), [&change](std::int32_t rid) {
            return change.rid <= rid && rid <= change.lastRid;
          }));
}

bool AreAsSeen(const std::vector<qorcred::Value>& now, const std::vector<qorcred::Value>& seen) {
  return now.size() <= seen.size() &&
         std::equal(now.begin(), now.end(), seen.begin(), [](const auto& one, const auto& other) {
           return ShownText(one) == ShownText(other);
         });
}

}  // namespace

std::vector<WorkEntry> ChangesBehind(DeskSession& session, std::int64_t entry, std::int32_t unitKey,
                                     std::span<const RowsOfTable> rows) {
  AuditLog& audit = session.sql().audit();
  std::vector<WorkEntry> all = audit.After(entry, unitKey);
  std::vector<WorkEntry> those;
  std::copy_if(all.begin(), all.end(), std::back_inserter(those), [&](const WorkEntry& work) {
    const std::vector<RowChange> changes = audit.RowsOf(work.entry);
    return std::any_of(changes.begin(), changes.end(), [rows](const RowChange& change) {
      return std::any_of(rows.begin(), rows.end(),
                         [&change](const RowsOfTable& of) { return IsOf(change, of); });
    });
  });
  return those.empty() ? all : those;
}

std::optional<Outcome> FindOvertaken(DeskSession& session, std::int32_t unitKey,
                                     const SeenRow& seen, const std::vector<qorcred::Value>& now,
                                     std::span<const RowsOfTable> rows) {
  if (!now.empty() && AreAsSeen(now, seen.cells)) {
    return std::nullopt;
  }
  Outcome outcome;
  outcome.ending = Ending::kStale;
  outcome.cause = now.empty() ? StaleCause::kRowDeleted : StaleCause::kRowChanged;
  outcome.changes = ChangesBehind(session, seen.entry, unitKey, rows);
  return outcome;
}

}  // namespace qorhost
