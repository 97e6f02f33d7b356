#include "host/desks/attention_desk.h"

#include <fmt/format.h>

#include <utility>

#include "frame/convert.h"
#include "frame/schedules.h"
#include "host/desks/list_entries.h"
#include "host/desks/row_names.h"
#include "host/desks/shown_value.h"

namespace qorhost {

namespace {

std::string OnlyFor(std::string_view reason) {
  return fmt::format("reason = {}", reason);
}

}  // namespace

AttentionDesk::AttentionDesk(DeskSession& session, std::int32_t unitKey, const AttentionDays& days,
                             std::vector<std::string> conditions, AttentionStep step)
    : session_(session),
      unitKey_(unitKey),
      days_(days),
      conditions_(std::move(conditions)),
      step_(step),
      tenants_(session, unitKey) {
  if (step == AttentionStep::kEnd) {
    conditions_.push_back(OnlyFor(attention::kExpiring));
    conditions_.emplace_back("days >= 1");  // an hour of today would become its last second
  } else {
    conditions_.push_back(OnlyFor(attention::kExpired));
  }
  // Choosing may find that somebody has written, and reads the tenants again.
  for (std::vector<std::int32_t> meant = Meant(); !meant.empty();) {
    tenants_.Choose({RowNames(meant)});
    std::vector<std::int32_t> now = Meant();
    if (now == meant) {
      break;
    }
    meant = std::move(now);
    if (meant.empty()) {
      tenants_.ChooseWhere({"rid = 0"});  // nobody
    }
  }
}

std::vector<std::int32_t> AttentionDesk::Meant() {
  return RidsIn(
      Answer(AttentionList(session_, unitKey_, days_, tenants_.tenants(), tenants_.links()),
             {conditions_, {}, {}, {}}));
}

ChangedTenants AttentionDesk::Run(Trial trial) {
  if (step_ == AttentionStep::kEnd) {
    return tenants_.End(ShownDay(days_.today), /*freeCards=*/true, trial);
  }
  TenantEntry entry;
  entry.schedules.fill(std::to_string(qorcred::kNoAccess.id));
  entry.cards = {std::string(kNoneWord)};
  return tenants_.Edit(entry, trial);
}

FreeCards::FreeCards(DeskSession& session, std::int32_t unitKey, const AttentionDays& days,
                     std::vector<std::string> conditions)
    : report_(session, unitKey, {}) {
  constexpr std::size_t kRid = 1;
  constexpr std::size_t kName = 2;
  conditions.push_back(OnlyFor(attention::kFreeCard));
  const List free =
      Answer(AttentionList(session, unitKey, days), {std::move(conditions), {}, {}, {}});
  for (const auto& row : free.rows) {
    cards_.push_back({qorcred::ToLong(row[kRid]), qorcred::TextOrEmpty(row[kName])});
  }
}

DeletedCredentials FreeCards::Delete() {
  std::vector<std::int32_t> rids;
  for (const Card& card : cards_) {
    rids.push_back(card.rid);
  }
  return report_.Delete(GivenRids::Named(RowNames(rids)));
}

}  // namespace qorhost
