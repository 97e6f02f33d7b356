#include "host/desks/attention_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/schedules.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;
using Row = std::vector<Value>;

constexpr std::size_t kRidColumn = 1;

/// Collects the rows of each reason, to be put behind each other.
class Attention {
 public:
  Attention(const AttentionDays& days, const TenantLinks& links) : days_(days), links_(links) {}

  void LookAt(const TenantRow& tenant) {
    held_.insert(tenant.cards.begin(), tenant.cards.end());
    const bool hasCard = std::any_of(tenant.cards.begin(), tenant.cards.end(),
                                     [](std::int32_t card) { return card != 0; });
    const bool hasDoor =
        std::any_of(tenant.schedules.begin(), tenant.schedules.end(),
                    [](std::int32_t schedule) { return schedule != qorcred::kNoAccess.id; });
    if (tenant.active && tenant.end && days_.IsPast(*tenant.end)) {
      if (hasCard || hasDoor) {
        Add(expired_, attention::kExpired, tenant);
      }
      return;  // and needs nothing any more
    }
    if (tenant.active && tenant.end && days_.IsSoon(*tenant.end)) {
      Add(expiring_, attention::kExpiring, tenant);
    }
    if (!hasCard && !tenant.resident) {
      Add(withoutCard_, attention::kNoCard, tenant);
    }
    if (tenant.code == 0) {
      Add(withoutCode_, attention::kNoCode, tenant);
    }
  }

  void LookAtCode(std::int32_t rid, const Value& end) {
    const auto* date = end.As<qorcred::Date>();
    if (date == nullptr || !links_.codes.contains(rid)) {
      return;
    }
    if (days_.IsPast(*date)) {
      AddCode(expiredCodes_, attention::kExpiredCode, rid, *date);
    } else if (days_.IsSoon(*date)) {
      AddCode(expiringCodes_, attention::kExpiringCode, rid, *date);
    }
  }

  /// Behind all tenants: it is known then who holds what.
  void LookAtCards() {
    for (const auto& [rid, card] : links_.cards) {
      if (!held_.contains(rid)) {
        freeCards_.push_back({Value(attention::kFreeCard), rid, card.entry, Null{}, Null{},
                              qorcred::StringArray{}, Null{}});
      }
    }
    // Cards of one type by their numbers, whatever the entries have in front.
    std::sort(freeCards_.begin(), freeCards_.end(), [this](const Row& one, const Row& other) {
      const StoredCard& first = CardIn(one);
      const StoredCard& second = CardIn(other);
      return std::pair(TypeOf(first), first.number) < std::pair(TypeOf(second), second.number);
    });
  }

  [[nodiscard]] std::vector<Row> Rows() {
    std::vector<Row> rows;
    for (auto* part : {&expired_, &expiring_, &expiredCodes_, &expiringCodes_}) {
      std::stable_sort(part->begin(), part->end(), EndsEarlier);
    }
    for (auto* part : {&expired_, &expiring_, &expiredCodes_, &expiringCodes_, &withoutCard_,
                       &withoutCode_, &freeCards_}) {
      rows.insert(rows.end(), std::make_move_iterator(part->begin()),
                  std::make_move_iterator(part->end()));
    }
    return rows;
  }

 private:
  static constexpr std::size_t kEnd = 3;

  static bool EndsEarlier(const Row& one, const Row& other) {
    return qorcred::SecondsBetween(*one[kEnd].As<qorcred::Date>(),
                                   *other[kEnd].As<qorcred::Date>()) > 0;
  }
  [[nodiscard]] const StoredCard& CardIn(const Row& row) const {
    return links_.cards.at(*row[kRidColumn].As<std::int32_t>());
  }
  static std::string_view TypeOf(const StoredCard& card) {
    return std::string_view(card.entry).substr(0, card.entry.rfind('-'));
  }

  void Add(std::vector<Row>& part, std::string_view reason, const TenantRow& tenant) const {
    Row& row = part.emplace_back(Row{reason, tenant.rid, tenant.Name(), Null{}, Null{},
                                     links_.Cards(tenant), links_.Code(tenant.code)});
    if (tenant.active && tenant.end) {
      SetEnd(row, *tenant.end);
    }
  }
  void AddCode(std::vector<Row>& part, std::string_view reason, std::int32_t rid,
               qorcred::Date end) const {
    const Value code = links_.Code(rid);
    Row& row = part.emplace_back(
        Row{reason, rid, qorcred::TextOrEmpty(code), Null{}, Null{}, qorcred::StringArray{}, code});
    SetEnd(row, end);
  }
  void SetEnd(Row& row, qorcred::Date end) const {
    row[kEnd] = end;
    row[kEnd + 1] = static_cast<double>(days_.Until(end));
  }

  AttentionDays days_;
  const TenantLinks& links_;
  std::unordered_set<std::int32_t> held_;
  std::vector<Row> expired_, expiring_, expiredCodes_, expiringCodes_;
  std::vector<Row> withoutCard_, withoutCode_, freeCards_;
};

}  // namespace

List AttentionList(DeskSession& session, std::int32_t unitKey, const AttentionDays& days,
                   const std::vector<TenantRow>& tenants, const TenantLinks& links) {
  Attention found(days, links);
  for (const TenantRow& tenant : tenants) {
    found.LookAt(tenant);
  }
  const QueryResult codes = session.sql().Select(
      fmt::format("SELECT RID, ENDDATE FROM DIRECTORYCODE WHERE UNITKEY={} AND {} "
                  "ORDER BY DIRECTORYCODE",
                  unitKey, CodesThatEnd()));
  for (const ResultRow row : codes.rows()) {
    found.LookAtCode(qorcred::ToLong(row[0]), row[1]);
  }
  found.LookAtCards();
  List list;
  list.title = "To be looked at";
  list.fields = {{"Reason", "reason"},
                 {"RID", "rid", FieldKind::kNumber},
                 {"Name", "name"},
                 {"End", "end", FieldKind::kDate},
                 {"Days", "days", FieldKind::kNumber},
                 {"Cards", "cards"},
                 {"Code", "code", FieldKind::kNumber}};
  list.rows = found.Rows();
  return list;
}

List AttentionList(DeskSession& session, std::int32_t unitKey, const AttentionDays& days) {
  const TenantLinks links(session, unitKey);
  return AttentionList(session, unitKey, days, ReadTenants(session, unitKey), links);
}

std::vector<std::int32_t> RidsIn(const List& list) {
  std::vector<std::int32_t> rids;
  for (const Row& row : list.rows) {
    rids.push_back(*row[kRidColumn].As<std::int32_t>());
  }
  return rids;
}

}  // namespace qorhost
