#include "host/desks/credential_list.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/credential_types.h"
#include "host/desks/field_names.h"
#include "host/desks/list_entries.h"
#include "host/desks/rows_by_rid.h"
#include "host/desks/tenant_name.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

// Columns of the detail query, behind the RID in column 0.
constexpr std::int32_t kDetailType = 1;
constexpr std::int32_t kDetailNumber = 2;
constexpr std::int32_t kDetailFacility = 3;
constexpr std::array kDetailCodes{4, 5, 6};  // ID code, sequence, button
constexpr std::int32_t kDetailDoor = 7;

struct Holder {
  Value tenantId = Null{};
  Value name = Null{};
};
using Holders = std::unordered_map<std::int32_t, Holder>;

/// Who holds each credential of the unit.
Holders ReadHolders(DeskSession& session, std::int32_t unitKey) {
  const QueryResult result = session.sql().Select(fmt::format(
      "SELECT TenantID, {}, CREDENTIALID1, CREDENTIALID2 FROM Tenants WHERE UnitKey={} AND "
      "(CREDENTIALID1 IS NOT NULL OR CREDENTIALID2 IS NOT NULL) ORDER BY TenantID",
      kFullNameColumns, unitKey));
  Holders holders;
  for (const ResultRow row : result.rows()) {
    const Holder holder{row[0], FullNameIn(row, 1)};
    for (const std::int32_t slot : {4, 5}) {
      const auto rid = static_cast<std::int32_t>(qorcred::NumericValue(row[slot]));
      holders.emplace(rid, holder);
    }
  }
  return holders;
}

Value DoorName(const ListModel& doors, const Value& doorCode) {
  const double code = qorcred::NumericValue(doorCode);
  if (code < 1) {
    return Null{};
  }
  return code < doors.count() ? Value(doors.Text(static_cast<std::int32_t>(code)))
                              : Value(qorcred::TextOrEmpty(doorCode));
}

Value TypeLabel(const Value& type) {
  const std::string_view name = TypeNameOf(qorcred::NumericValue(type));
  return name.empty() ? Value(Null{}) : Value(name);
}

}  // namespace

List CredentialList(DeskSession& session, CredentialDesk& desk) {
  List shown;
  shown.title = "Credentials";
  const auto field = [](std::string_view key, FieldKind kind = FieldKind::kNumber) {
    return NamedField(CredentialNames(), key, kind);
  };
  shown.fields = {field("rid"),       field("type", FieldKind::kCredentialType),
                  field("number"),    field("facility"),
                  field("id_code"),   field("sequence"),
                  field("button"),    field("door", FieldKind::kText),
                  field("tenant_id"), field("tenant", FieldKind::kText)};
  const ListModel& list = desk.screen().List("cboCredentials");
  const ListModel& doors = desk.screen().List("cboActivate");
  const QueryResult details = session.sql().Select(fmt::format(
      "SELECT RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, ButtonNumber, "
      "DOORCODE FROM CREDENTIALBANK WHERE UnitKey={}",
      desk.unitKey()));
  const auto rowOf = RowsByRid(details);
  const Holders holders = ReadHolders(session, desk.unitKey());
  for (std::int32_t index = placeholders::kInCredentials; index < list.count(); ++index) {
    const std::int32_t rid = list.ItemData(index);
    const auto found = rowOf.find(rid);
    if (found == rowOf.end()) {
      continue;  // deleted by someone else since the list was filled
    }
    const auto cell = [&](std::int32_t column) { return details.table->At(found->second, column); };
    const bool transmitter = qorcred::NumericValue(cell(kDetailType)) == qorcred::kTransmitter;
    std::vector<Value> row{rid, TypeLabel(cell(kDetailType)), cell(kDetailNumber),
                           cell(kDetailFacility)};
    for (const std::int32_t column : kDetailCodes) {
      row.push_back(transmitter ? cell(column) : Value(Null{}));
    }
    row.push_back(transmitter ? Value(Null{}) : DoorName(doors, cell(kDetailDoor)));
    const auto holder = holders.find(rid);
    const Holder held = holder == holders.end() ? Holder{} : holder->second;
    row.push_back(held.tenantId);
    row.push_back(held.name);
    shown.rows.push_back(std::move(row));
  }
  return shown;
}

}  // namespace qorhost
