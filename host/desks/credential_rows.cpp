#include "host/desks/credential_rows.h"

#include <fmt/format.h>

#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "host/desks/credential_types.h"
#include "host/desks/list_entries.h"

namespace qorhost {

namespace {

/// Those that have entries, in the order in which the controller reads them, to which Null is the
/// first type; or, with "NOT", the others.
QueryResult RowsOf(DeskSession& session, std::int32_t unitKey, std::string_view isKnown) {
  std::vector<std::int16_t> types;
  for (const qorcred::CredentialTypeName& known : qorcred::kCredentialTypes) {
    types.push_back(known.type);
  }
  return session.sql().Select(
      fmt::format("SELECT RID, CredentialType, PINNo FROM CREDENTIALBANK WHERE UnitKey={} AND {} "
                  "(CredentialType IS NULL OR CredentialType IN ({})) ORDER BY "
                  "CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber",
                  unitKey, isKnown, fmt::join(types, ",")));
}

}  // namespace

EntryRows GiveEntriesTheirRows(DeskSession& session, std::int32_t unitKey, ListModel& credentials) {
  constexpr std::int32_t kAddNew = -100;  // of "<Add New>", where there are credentials
  const std::int64_t entries = credentials.count() - placeholders::kInCredentials;
  const std::int64_t stored = session.sql().units().Count(unitKey).credentials;
  if (stored == entries) {
    return EntryRows::kOwn;
  }
  const QueryResult rows = RowsOf(session, unitKey, "");
  if (static_cast<std::int64_t>(rows.rowCount) != entries) {
    return EntryRows::kOlder;
  }
  credentials.SetItemData(0, kAddNew);
  std::int32_t index = placeholders::kInCredentials;
  for (const ResultRow row : rows.rows()) {
    credentials.SetItemData(index++, qorcred::ToLong(row[0]));
  }
  const QueryResult others = RowsOf(session, unitKey, "NOT");
  for (const ResultRow row : others.rows()) {
    credentials.AddItemWithData(
        CardEntry(qorcred::NumericValue(row[1]), qorcred::TextOrEmpty(row[2])),
        qorcred::ToLong(row[0]));
  }
  return EntryRows::kMended;
}

}  // namespace qorhost
