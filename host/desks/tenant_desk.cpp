#include "host/desks/tenant_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "frame/convert.h"
#include "host/desks/credential_choice.h"
#include "host/desks/credential_slots.h"
#include "host/desks/desk_error.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/own_work.h"
#include "host/desks/row_names.h"
#include "host/desks/tenant_adding.h"
#include "host/desks/tenant_choice.h"
#include "host/desks/tenant_conditions.h"
#include "host/desks/tenant_fields.h"
#include "host/desks/tenant_name.h"
#include "host/desks/words.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

Outcome Failed(const StoreError& failure) {
  Outcome outcome;
  outcome.ending = Ending::kFailed;
  outcome.failures.emplace_back(failure.what());
  return outcome;
}

Outcome Done() {
  Outcome outcome;
  outcome.returned = true;
  return outcome;
}

Outcome Stale() {
  Outcome outcome;
  outcome.ending = Ending::kStale;
  return outcome;
}

}  // namespace

TenantDesk::TenantDesk(DeskSession& session, std::int32_t unitKey)
    : session_(session), unitKey_(unitKey), shown_(session, unitKey) {
  shown_.TakeUnit();
  Read();
}

void TenantDesk::Read() {
  tenants_ = ReadTenants(session_, unitKey_);
  links_ = TenantLinks(session_, unitKey_);
  outdated_ = false;
}

void TenantDesk::ChooseBy(const std::function<std::vector<TenantRow>()>& choose) {
  const auto take = [this] {
    if (session_.sql().work().open()) {
      return true;  // beside nobody else
    }
    std::vector<ShownSelect> selects;
    for (std::string& select : SelectsOfTenants(unitKey_, ChosenRids())) {
      selects.push_back({std::move(select), ShownAs::kRow, "TENANTS"});
    }
    return shown_.TakeRows(std::move(selects));
  };
  if (outdated_) {
    shown_.TakeUnit();
    Read();
  }
  chosen_ = choose();
  while (!take()) {
    shown_.TakeUnit();
    Read();
    chosen_ = choose();
  }
}

void TenantDesk::Choose(const std::vector<std::string>& names) {
  ChooseBy([&] { return TenantsNamed(names, tenants_, *links_, unitKey_); });
}

void TenantDesk::ChooseWhere(const std::vector<std::string>& conditions) {
  ChooseBy([&] {
    const TenantConditions met(conditions, *links_);
    std::vector<TenantRow> rows;
    std::copy_if(tenants_.begin(), tenants_.end(), std::back_inserter(rows),
                 [&met](const TenantRow& tenant) { return met.AreMetBy(tenant); });
    return rows;
  });
}

std::vector<std::int32_t> TenantDesk::ChosenRids() const {
  std::vector<std::int32_t> rids;
  rids.reserve(chosen_.size());
  for (const TenantRow& tenant : chosen_) {
    rids.push_back(tenant.rid);
  }
  return rids;
}

/// "edit tenant Tanaka Xenia" or "edit 12 tenants"
std::string TenantDesk::Described(std::string_view what) const {
  return chosen_.size() == 1 ? fmt::format("{} tenant {}", what, chosen_.front().Name())
                             : fmt::format("{} {} tenants", what, chosen_.size());
}

Outcome TenantDesk::Stored(std::string what, const std::function<Outcome()>& run) {
  const bool isPart = session_.sql().work().open();
  if (!isPart) {
    credentials_.reset();  // its lists are to show what is stored
  }
  const auto runTrapped = [&] {
    try {
      return run();
    } catch (const StoreError& failure) {
      return Failed(failure);
    }
  };
  constexpr bool kKeepsShowing = false;  // who was changed has to be chosen again
  return RunAsWork(session_, shown_,
                   {std::move(what), runTrapped, [this] { credentials_.reset(); }, kKeepsShowing});
}

/// Does it beside nobody else, and undoes it.
Outcome TenantDesk::Tried(std::string what, const std::function<Outcome()>& run) {
  credentials_.reset();
  OwnWork work(session_, {unitKey_}, std::move(what));
  Outcome outcome = run();
  work.End(Trial::kYes);
  credentials_.reset();
  return outcome;
}

ChangedTenants TenantDesk::Run(std::string what, Trial trial, const Work& work) {
  ChangedTenants changed;
  const auto once = [&] {
    changed = {};
    return work(changed);
  };
  const Outcome outcome =
      trial == Trial::kYes ? Tried(std::move(what), once) : Stored(std::move(what), once);
  static_cast<Outcome&>(changed) = outcome;
  changed.meant = chosen_.size();
  changed.written = trial == Trial::kNo && outcome.done() && !outcome.unchanged;
  changed.steps = session_.sql().work().stepsQueued();
  if (changed.written) {
    outdated_ = true;
    chosen_.clear();
  }
  return changed;
}

CredentialDesk& TenantDesk::Credentials() {
  if (!credentials_) {
    credentials_.emplace(session_, unitKey_, DeskScreen::kCredentials);
  }
  return *credentials_;
}

std::optional<std::vector<std::int32_t>> TenantDesk::CardsIn(const TenantEntry& entry) {
  if (entry.cards.empty()) {
    return std::nullopt;
  }
  std::vector<std::int32_t> cards;
  if (entry.cards.size() == 1 && SaysNone(entry.cards.front())) {
    return cards;
  }
  if (entry.cards.size() > kTenantCards) {
    throw InputFault(tenant_field::kCard, entry.cards.back(),
                     fmt::format("{{field}} '{{value}}' is one too many: a tenant holds at most {}",
                                 kTenantCards));
  }
  for (const std::string& given : entry.cards) {
    const ListModel& list = Credentials().credentials();
    const std::int32_t card = list.ItemData(FindCredential(session_, unitKey_, list, given));
    if (std::find(cards.begin(), cards.end(), card) == cards.end()) {
      cards.push_back(card);
    }
  }
  return cards;
}

void TenantDesk::RequireFree(const std::vector<std::int32_t>& cards, std::int32_t but) {
  for (const std::int32_t card : cards) {
    const QueryResult holders = session_.sql().Select(fmt::format(
        "SELECT RID FROM TENANTS WHERE UnitKey={} AND RID<>{} AND {}", unitKey_, but, Holds(card)));
    if (holders.rowCount == 0) {
      continue;
    }
    const std::int32_t rid = qorcred::ToLong(holders.table->At(0, 0));
    const std::vector<TenantRow> all = ReadTenants(session_, unitKey_);
    const auto holder = std::find_if(all.begin(), all.end(),
                                     [rid](const TenantRow& tenant) { return tenant.rid == rid; });
    const std::string entry = qorcred::TextOrEmpty(links_->Card(card));
    throw InputFault(tenant_field::kCard, entry,
                     fmt::format("{{field}} '{{value}}' is held by {}: take it from there first",
                                 holder == all.end() ? WithRid("a tenant", rid)
                                                     : InReason(holder->NameWithRid())));
  }
}

/// The controller puts it into the free slot and queues the step.
Outcome TenantDesk::Give(std::int32_t card, const TenantRow& tenant) {
  CredentialDesk& desk = Credentials();
  ListModel& takers = desk.screen().List("cboAssignedTo");
  const std::int32_t taker = takers.FindData(tenant.tenantId);
  if (taker < placeholders::kInTenants) {
    throw InputFault(tenant_field::kCard, qorcred::TextOrEmpty(links_->Card(card)),
                     fmt::format("{} is a resident: {{field}} '{{value}}' can be given to a tenant "
                                 "who is none",
                                 InReason(tenant.NameWithRid())));
  }
  (void)desk.Select(RowName(card));
  takers.Select(taker);
  return WithoutFacts(desk.SaveEdited());
}

ChangedTenants TenantDesk::Edit(const TenantEntry& entry, Trial trial) {
  return Run(Described("edit"), trial,
             [&](ChangedTenants& changed) { return EditOnce(entry, changed); });
}

ChangedTenants TenantDesk::End(const std::string& on, bool freeCards, Trial trial) {
  TenantEntry entry;
  entry.to = on;
  entry.active = "yes";
  if (freeCards) {
    entry.cards = {std::string(kNoneWord)};
  }
  if (SaysNone(on)) {
    throw InputFault(tenant_field::kEnd, on, "{field} '{value}' is no date: a lease ends on one");
  }
  return Run(Described("end the lease of"), trial,
             [&](ChangedTenants& changed) { return EditOnce(entry, changed); });
}

Outcome TenantDesk::EditOnce(const TenantEntry& entry, ChangedTenants& changed) {
  links_ = TenantLinks(session_, unitKey_);
  const auto cards = CardsIn(entry);
  if (cards && !cards->empty() && chosen_.size() > 1) {
    throw InputFault(tenant_field::kCard, entry.cards.front(),
                     "{field} '{value}' can be given to one tenant only: name one");
  }
  const TenantValues values(session_, unitKey_, entry, *links_, cards);

  std::map<std::string, std::vector<std::int32_t>> settings;  // the same ones at once
  std::vector<std::pair<std::int32_t, TenantRow>> given;      // cards, and to whom
  std::vector<std::int32_t> rids;
  for (const TenantRow& before : chosen_) {
    const TenantRow after = values.AppliedTo(before);
    std::string columns = Differences(before, after, *links_, changed.changes);
    if (columns.empty()) {
      continue;
    }
    rids.push_back(before.rid);
    // Cards that are given are the controller's to write. Those that go are not: it releases no
    // resident's.
    TenantRow written = after;
    for (std::int32_t& card : written.cards) {
      if (card != 0 && !HoldsCard(before, card)) {
        given.emplace_back(card, after);
        card = 0;
      }
    }
    for (const std::int32_t card : CardsMissing(before, after)) {
      changed.freed.push_back(qorcred::TextOrEmpty(links_->Card(card)));
    }
    if (written.cards != after.cards) {
      std::vector<TenantChange> toldAlready;
      columns = Differences(before, written, *links_, toldAlready);
    }
    if (!columns.empty()) {
      settings[columns].push_back(before.rid);
    }
  }
  changed.tenants = rids.size();
  if (rids.empty()) {
    return Outcome::Unchanged();
  }
  for (const auto& [card, tenant] : given) {
    RequireFree({card}, tenant.rid);
  }

  for (const auto& [columns, rows] : settings) {
    std::int64_t written = 0;
    for (const std::string& condition : ConditionsOnRids(rows)) {
      written += session_.sql()
                     .Change(fmt::format("UPDATE Tenants SET {}, LASTMODIFIEDDATE='_LMDATE_' WHERE "
                                         "UnitKey={} AND {}",
                                         columns, unitKey_, condition),
                             dialect::StatementKind::kUpdate)
                     .rows;
    }
    if (written != static_cast<std::int64_t>(rows.size())) {
      return Stale();
    }
  }
  for (const auto& [card, tenant] : given) {
    Outcome assigned = Give(card, tenant);
    if (!assigned.done()) {
      return assigned;
    }
  }
  session_.sql().steps().QueueAllOnce(unitKey_, step::kProgramTenant, std::move(rids));
  return Done();
}

ChangedTenants TenantDesk::Delete(Trial trial) {
  return Run(Described("delete"), trial,
             [this](ChangedTenants& changed) { return DeleteOnce(changed); });
}

Outcome TenantDesk::DeleteOnce(ChangedTenants& changed) {
  std::vector<std::int32_t> rids;
  for (const TenantRow& tenant : chosen_) {
    if (session_.sql().DeleteRow("Tenants", tenant.rid) != 1) {
      return Stale();
    }
    rids.push_back(tenant.rid);
    changed.changes.push_back(
        {tenant.rid, tenant.Name(), {"Tenant", "tenant"}, tenant.Name(), qorcred::Null{}});
    for (const std::int32_t card : CardsMissing(tenant, TenantRow{})) {
      changed.freed.push_back(qorcred::TextOrEmpty(links_->Card(card)));
    }
  }
  changed.tenants = rids.size();
  session_.sql().steps().QueueAllOnce(unitKey_, step::kProgramTenant, std::move(rids));
  return chosen_.empty() ? Outcome::Unchanged() : Done();
}

AddedTenant TenantDesk::Add(const TenantEntry& entry, Trial trial) {
  if (!entry.lastName) {
    throw InputFault(tenant_field::kLastName, "", "{field} is needed: lists show tenants by it");
  }
  AddedTenant added;
  shown_.TakeUnit();
  const auto once = [&] { return AddOnce(entry, added.tenant); };
  std::string what = fmt::format(
      "add tenant {}",
      FullName(*entry.lastName, entry.firstName.value_or(""), entry.initial.value_or("")));
  static_cast<Outcome&>(added) =
      trial == Trial::kYes ? Tried(std::move(what), once) : Stored(std::move(what), once);
  added.written = trial == Trial::kNo && added.done();
  outdated_ = outdated_ || added.written;
  return added;
}

Outcome TenantDesk::AddOnce(const TenantEntry& entry, TenantRow& added) {
  links_ = TenantLinks(session_, unitKey_);
  const auto cards = CardsIn(entry);
  if (cards) {
    RequireFree(*cards, 0);
  }
  TenantAdding adding(session_, unitKey_);
  added = TenantValues(session_, unitKey_, entry, *links_, cards).AppliedTo(adding.fresh());
  adding.Store(added);
  adding.Finish();
  added.tenantId = session_.sql().tenants().TenantIdOf(unitKey_, added.rid);
  return Done();
}

}  // namespace qorhost
