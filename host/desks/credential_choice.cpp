#include "host/desks/credential_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/credential_fields.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/row_names.h"
#include "host/desks/whole_number.h"

namespace qorhost {

namespace {

/// The rows that a person may mean.
std::vector<std::int32_t> RowsNamed(DeskSession& session, std::int32_t unitKey,
                                    const ListModel& list, std::string_view given) {
  const std::string_view wanted = qorcred::Trim(given);
  if (const auto rid = RowNamed(credential_field::kCredential, wanted)) {
    return {*rid};
  }
  std::vector<std::int32_t> rids;
  if (const auto number = WholeNumber(wanted)) {
    const QueryResult found = session.sql().Select(
        fmt::format("SELECT RID FROM CREDENTIALBANK WHERE UnitKey={} AND PINNo={} ORDER BY RID",
                    unitKey, *number));
    for (const ResultRow row : found.rows()) {
      rids.push_back(qorcred::ToLong(row[0]));
    }
    return rids;
  }
  for (const std::int32_t index : EntriesWithText(list, wanted, placeholders::kInCredentials)) {
    rids.push_back(list.ItemData(index));
  }
  return rids;
}

/// "Transmitter 301, facility code 7 (rid:609); ...", not too many of them.
std::string Described(DeskSession& session, std::int32_t unitKey, std::vector<std::int32_t> rids) {
  constexpr std::size_t kMost = 10;
  const bool more = rids.size() > kMost;
  rids.resize(std::min(rids.size(), kMost));
  const QueryResult found = session.sql().Select(fmt::format(
      "SELECT RID, CredentialType, PINNo, FacilityCode FROM CREDENTIALBANK WHERE UnitKey={} AND "
      "RID IN ({}) ORDER BY RID",
      unitKey, fmt::join(rids, ",")));
  std::string described;
  for (const ResultRow row : found.rows()) {
    const std::string_view label = ScreenLabelOf(qorcred::NumericValue(row[1]));
    described += fmt::format("{}{} {}, facility code {} ({})", described.empty() ? "" : "; ",
                             label.empty() ? "Credential" : label, qorcred::TextOrEmpty(row[2]),
                             qorcred::TextOrEmpty(row[3]), RowName(qorcred::ToLong(row[0])));
  }
  return more ? described + "; ..." : described;
}

}  // namespace

std::int32_t FindCredential(DeskSession& session, std::int32_t unitKey,
                            const ListModel& credentials, std::string_view given) {
  const std::vector<std::int32_t> rids = RowsNamed(session, unitKey, credentials, given);
  if (rids.size() > 1) {
    throw InputFault(credential_field::kCredential, given,
                     fmt::format("{} credentials are called '{{value}}', say rid:N: {}",
                                 rids.size(), InReason(Described(session, unitKey, rids))));
  }
  const std::int32_t index = rids.empty() ? ListModel::kNone : credentials.FindData(rids.front());
  if (index < placeholders::kInCredentials) {
    throw InputFault(credential_field::kCredential, given,
                     fmt::format("unit {} has no credential '{{value}}'", unitKey),
                     InputFault::Kind::kSeeList);
  }
  return index;
}

}  // namespace qorhost
