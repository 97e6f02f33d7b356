#include "host/desks/tenant_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "frame/convert.h"
#include "frame/schedules.h"
#include "frame/schema.h"
#include "frame/text.h"
#include "frame/utf8.h"
#include "host/desks/credential_types.h"
#include "host/desks/listed_rows.h"
#include "host/desks/name_words.h"
#include "host/desks/row_names.h"
#include "host/desks/stored_row.h"
#include "host/desks/tenant_name.h"
#include "host/desks/words.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr std::string_view kReadColumns =
    "RID, TenantID, LastName, FirstName, MiddleInitial, NameAtUnit, GROUPID, ACTIVETENANT, "
    "ACTIVESTARTTIME, ACTIVEENDTIME, DOORSCHEDULE1, DOORSCHEDULE2, DOORSCHEDULE3, DOORSCHEDULE4, "
    "CREDENTIALID1, CREDENTIALID2, DIRECTORYCODE, Resident";

std::optional<qorcred::Date> DateIn(const Value& cell) {
  const auto* date = cell.As<qorcred::Date>();
  return date == nullptr ? std::nullopt : std::optional(*date);
}

TenantRow RowIn(const ResultRow& cells) {
  TenantRow row;
  std::int32_t column = 0;
  row.rid = StoredNumber(cells[column++]);
  row.tenantId = StoredNumber(cells[column++]);
  row.lastName = qorcred::TextOrEmpty(cells[column++]);
  row.firstName = qorcred::TextOrEmpty(cells[column++]);
  row.initial = qorcred::TextOrEmpty(cells[column++]);
  row.nameAtUnit = qorcred::TextOrEmpty(cells[column++]);
  row.group = StoredNumber(cells[column++]);
  const Value& active = cells[column++];
  row.active = !qorcred::IsEmptyText(active) && qorcred::ToBoolean(active);
  row.start = DateIn(cells[column++]);
  row.end = DateIn(cells[column++]);
  for (std::int32_t& schedule : row.schedules) {
    schedule = StoredNumber(cells[column++]);
  }
  for (std::int32_t& card : row.cards) {
    card = StoredNumber(cells[column++]);
  }
  row.code = StoredNumber(cells[column++]);
  row.resident = StoredNumber(cells[column]) != 0;
  return row;
}

Value TextShown(const std::string& text) {
  return text.empty() ? Value(Null{}) : Value(text);
}

Value DateShown(const std::optional<qorcred::Date>& date) {
  return date ? Value(*date) : Value(Null{});
}

std::string OrNull(std::int32_t rid) {
  return rid == 0 ? "NULL" : std::to_string(rid);
}

std::string OrNull(const std::string& text) {
  return text.empty() ? "NULL" : TextLiteral(text);
}

std::string OrNull(const std::optional<qorcred::Date>& date) {
  return date ? TextLiteral(dialect::CanonicalDate(*date)) : "NULL";
}

template <std::size_t Door>
constexpr TenantColumn ScheduleColumn(std::string_view column, std::string_view title,
                                      std::string_view key) {
  return {column,
          title,
          key,
          FieldKind::kSchedule,
          [](const TenantRow& row, const TenantLinks& links) {
            return Value(links.Schedule(row.schedules[Door]));
          },
          [](const TenantRow& row) { return std::to_string(row.schedules[Door]); }};
}

template <std::size_t Slot>
constexpr TenantColumn CardColumn(std::string_view column, std::string_view title,
                                  std::string_view key) {
  return {
      column,
      title,
      key,
      FieldKind::kText,
      [](const TenantRow& row, const TenantLinks& links) { return links.Card(row.cards[Slot]); },
      [](const TenantRow& row) { return OrNull(row.cards[Slot]); }};
}

constexpr std::array kColumns{
    TenantColumn{"LastName", "Last name", "last_name", FieldKind::kText,
                 [](const TenantRow& row, const TenantLinks&) { return TextShown(row.lastName); },
                 [](const TenantRow& row) { return OrNull(row.lastName); }},
    TenantColumn{"FirstName", "First name", "first_name", FieldKind::kText,
                 [](const TenantRow& row, const TenantLinks&) { return TextShown(row.firstName); },
                 [](const TenantRow& row) { return OrNull(row.firstName); }},
    TenantColumn{"MiddleInitial", "Initial", "initial", FieldKind::kText,
                 [](const TenantRow& row, const TenantLinks&) { return TextShown(row.initial); },
                 [](const TenantRow& row) { return OrNull(row.initial); }},
    TenantColumn{"NameAtUnit", "Name at unit", "name_at_unit", FieldKind::kText,
                 [](const TenantRow& row, const TenantLinks&) { return TextShown(row.nameAtUnit); },
                 [](const TenantRow& row) { return OrNull(row.nameAtUnit); }},
    TenantColumn{"GROUPID", "Group", "group", FieldKind::kNumber,
                 [](const TenantRow& row, const TenantLinks&) { return Value(row.group); },
                 [](const TenantRow& row) { return std::to_string(row.group); }},
    TenantColumn{"ACTIVETENANT", "Active", "active", FieldKind::kYesNo,
                 [](const TenantRow& row, const TenantLinks&) { return Value(row.active); },
                 [](const TenantRow& row) { return std::string(row.active ? "True" : "False"); }},
    TenantColumn{"ACTIVESTARTTIME", "Start", "start", FieldKind::kDate,
                 [](const TenantRow& row, const TenantLinks&) { return DateShown(row.start); },
                 [](const TenantRow& row) { return OrNull(row.start); }},
    TenantColumn{"ACTIVEENDTIME", "End", "end", FieldKind::kDate,
                 [](const TenantRow& row, const TenantLinks&) { return DateShown(row.end); },
                 [](const TenantRow& row) { return OrNull(row.end); }},
    ScheduleColumn<0>("DOORSCHEDULE1", "Schedule 1", "schedule1"),
    ScheduleColumn<1>("DOORSCHEDULE2", "Schedule 2", "schedule2"),
    ScheduleColumn<2>("DOORSCHEDULE3", "Schedule 3", "schedule3"),
    ScheduleColumn<3>("DOORSCHEDULE4", "Schedule 4", "schedule4"),
    CardColumn<0>("CREDENTIALID1", "Card 1", "card1"),
    CardColumn<1>("CREDENTIALID2", "Card 2", "card2"),
    TenantColumn{
        "DIRECTORYCODE", "Code", "code", FieldKind::kNumber,
        [](const TenantRow& row, const TenantLinks& links) { return links.Code(row.code); },
        [](const TenantRow& row) { return OrNull(row.code); }},
    TenantColumn{"Resident", "Resident", "resident", FieldKind::kYesNo,
                 [](const TenantRow& row, const TenantLinks&) { return Value(row.resident); },
                 [](const TenantRow& row) { return std::string(row.resident ? "1" : "0"); }}};

bool HasAsciiName(const TenantRow& row) {
  return qorcred::IsAscii(row.lastName) && qorcred::IsAscii(row.firstName) &&
         qorcred::IsAscii(row.initial);
}

/// The store has sorted letters with accents behind Z; without any its order is that of people.
/// Names that differ by accents alone stay in the store's order.
void SortByName(std::vector<TenantRow>& rows) {
  if (std::all_of(rows.begin(), rows.end(), HasAsciiName)) {
    return;
  }
  constexpr char kBetween = '\n';  // stands in front of every letter: the shorter name comes first
  std::vector<std::pair<std::string, std::size_t>> order;
  order.reserve(rows.size());
  for (const TenantRow& row : rows) {
    order.emplace_back(Plain(row.lastName + kBetween + row.firstName + kBetween + row.initial),
                       order.size());
  }
  std::sort(order.begin(), order.end());
  std::vector<TenantRow> sorted;
  sorted.reserve(rows.size());
  for (const auto& [name, at] : order) {
    sorted.push_back(std::move(rows[at]));
  }
  rows = std::move(sorted);
}

}  // namespace

std::string TenantRow::Name() const {
  return FullName(lastName, firstName, initial);
}

std::string TenantRow::SpokenName() const {
  return FullName(firstName, lastName, {});
}

std::string TenantRow::NameWithRid() const {
  return WithRid(Name(), rid);
}

std::vector<TenantRow> ReadTenants(DeskSession& session, std::int32_t unitKey) {
  const QueryResult result = session.sql().Select(
      fmt::format("SELECT {} FROM Tenants WHERE UnitKey={} ORDER BY LastName, FirstName, "
                  "MiddleInitial, RID",
                  kReadColumns, unitKey));
  std::vector<TenantRow> rows;
  rows.reserve(result.rowCount);
  for (const ResultRow row : result.rows()) {
    rows.push_back(RowIn(row));
  }
  SortByName(rows);
  return rows;
}

std::vector<std::string> ConditionsOnRids(std::span<const std::int32_t> rids) {
  // Each length is another statement to translate and to keep.
  constexpr std::array<std::size_t, 4> kLengths{1, 8, 64, 512};
  constexpr std::size_t kAtOnce = kLengths.back();
  std::vector<std::string> conditions;
  for (std::size_t first = 0; first < rids.size(); first += kAtOnce) {
    const auto some = rids.subspan(first, std::min(kAtOnce, rids.size() - first));
    std::vector<std::int32_t> places(some.begin(), some.end());
    places.resize(*std::lower_bound(kLengths.begin(), kLengths.end(), places.size()),
                  places.back());
    conditions.push_back(fmt::format("RID IN ({})", fmt::join(places, ",")));
  }
  return conditions;
}

std::vector<std::string> SelectsOfTenants(std::int32_t unitKey,
                                          std::span<const std::int32_t> rids) {
  std::vector<std::string> selects;
  for (const std::string& condition : ConditionsOnRids(rids)) {
    selects.push_back(fmt::format("SELECT * FROM TENANTS WHERE UnitKey={} AND {} ORDER BY RID",
                                  unitKey, condition));
  }
  return selects;
}

TenantLinks::TenantLinks(DeskSession& session, std::int32_t unitKey)
    : offered(OfferedSchedules(session, unitKey)) {
  const QueryResult named = session.sql().Select(
      fmt::format("SELECT ScheduleID, ScheduleName FROM Schedules WHERE UnitKey={}", unitKey));
  for (const ResultRow row : named.rows()) {
    schedules[StoredNumber(row[0])] = qorcred::TextOrEmpty(row[1]);
  }
  for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
    schedules[fixed.id] = fixed.name;
  }
  const QueryResult held = session.sql().Select(fmt::format(
      "SELECT RID, CredentialType, PINNo FROM CREDENTIALBANK WHERE UnitKey={}", unitKey));
  for (const ResultRow row : held.rows()) {
    const double number = qorcred::NumericValue(row[2]);
    cards.emplace(
        StoredNumber(row[0]),
        StoredCard{CardEntry(qorcred::NumericValue(row[1]), qorcred::NumberText(number)), number});
  }
  const QueryResult dialled = session.sql().Select(fmt::format(
      "SELECT RID, DIRECTORYCODE, MODIFIED FROM DIRECTORYCODE WHERE UNITKEY={}", unitKey));
  for (const ResultRow row : dialled.rows()) {
    codes.emplace(StoredNumber(row[0]),
                  ListedCode{qorcred::NumericValue(row[1]), IsListedCode(row[1], row[2])});
  }
}

std::string TenantLinks::Schedule(std::int32_t id) const {
  const auto found = schedules.find(id);
  return found == schedules.end() ? std::to_string(id) : found->second;
}

Value TenantLinks::Card(std::int32_t rid) const {
  if (rid == 0) {
    return Null{};
  }
  const auto found = cards.find(rid);
  return found == cards.end() ? RowName(rid) : found->second.entry;
}

qorcred::StringArray TenantLinks::Cards(const TenantRow& tenant) const {
  qorcred::StringArray held;
  for (const std::int32_t card : tenant.cards) {
    if (card != 0) {
      held.push_back(qorcred::TextOrEmpty(Card(card)));
    }
  }
  return held;
}

Value TenantLinks::Code(std::int32_t rid) const {
  if (rid == 0) {
    return Null{};
  }
  const auto found = codes.find(rid);
  return found == codes.end() ? Value(RowName(rid)) : Value(found->second.number);
}

std::span<const TenantColumn> TenantColumns() {
  return kColumns;
}

std::string TextLiteral(std::string_view text) {
  // This text alone would be the time stamp.
  if (text == qorcred::kLastModifiedText) {
    return fmt::format("'{}' & '{}'", text.substr(0, 1), text.substr(1));
  }
  return fmt::format("'{}'", qorcred::ReplaceAll(text, "'", "''"));
}

}  // namespace qorhost
