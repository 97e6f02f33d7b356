// The tenants of one unit, worked as an operator works them: one or many at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/desks/credential_desk.h"
#include "host/desks/desk_work.h"
#include "host/desks/outcome.h"
#include "host/desks/session.h"
#include "host/desks/tenant_changes.h"
#include "host/desks/tenant_entry.h"
#include "host/desks/tenant_rows.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What an operation on tenants tells. Of a trial: what it would be.
struct ChangedTenants : Outcome {
  std::size_t meant = 0;              ///< tenants who were chosen
  std::size_t tenants = 0;            ///< who were changed; the others are stored so already
  std::vector<TenantChange> changes;  ///< field by field; who is deleted as one field
  std::vector<std::string> freed;     ///< cards that nobody holds now, as the screens list them
  std::int64_t steps = 0;             ///< programming steps that were queued, or would be
  bool written = true;                ///< false for a trial: nothing was changed
};

struct AddedTenant : Outcome {
  TenantRow tenant;     ///< as it is stored, or would be
  bool written = true;  ///< false for a trial
};

/// Every operation is a unit of work: all tenants or none. Each tenant who is changed gets one step
/// "program tenant", in place of one that was not sent yet; so does one who is deleted, whose row
/// is gone when the step is sent: the unit is to forget the tenant. What is stored already is not
/// written, and queues nothing. An operation is stale when someone else has changed one of the
/// chosen tenants meanwhile.
class TenantDesk {
 public:
  /// The session must outlive the desk.
  TenantDesk(DeskSession& session, std::int32_t unitKey);

  /// All tenants of the unit, in the order of their names, as they were read last.
  [[nodiscard]] const std::vector<TenantRow>& tenants() const { return tenants_; }
  [[nodiscard]] const TenantLinks& links() const { return *links_; }
  /// Those that the next operation is meant for.
  [[nodiscard]] const std::vector<TenantRow>& chosen() const { return chosen_; }

  /// Chooses tenants by names, ids or rows. Raises InputFault for one who is not there or not the
  /// only one.
  void Choose(const std::vector<std::string>& names);
  /// Chooses the tenants who meet all conditions; perhaps nobody. Raises InputFault for what is no
  /// condition.
  void ChooseWhere(const std::vector<std::string>& conditions);

  /// Adds a tenant of the unit's group zero with Full Access and the unit's default period, but for
  /// what is entered. Raises InputFault for what cannot be entered; a last name is needed.
  AddedTenant Add(const TenantEntry& entry, Trial trial);
  /// Changes those who are chosen. A card that somebody else holds is refused by InputFault. Cards
  /// that are given go through the credential screen's controller.
  ChangedTenants Edit(const TenantEntry& entry, Trial trial);
  /// Ends their leases: their periods end on a date. Their cards are free at once, if `freeCards`.
  ChangedTenants End(const std::string& on, bool freeCards, Trial trial);
  /// Deletes those who are chosen; their cards are free then.
  ChangedTenants Delete(Trial trial);

 private:
  using Work = std::function<Outcome(ChangedTenants&)>;

  void Read();
  void ChooseBy(const std::function<std::vector<TenantRow>()>& choose);
  [[nodiscard]] std::vector<std::int32_t> ChosenRids() const;
  [[nodiscard]] std::string Described(std::string_view what) const;
  [[nodiscard]] ChangedTenants Run(std::string what, Trial trial, const Work& work);
  [[nodiscard]] Outcome Tried(std::string what, const std::function<Outcome()>& run);
  [[nodiscard]] Outcome Stored(std::string what, const std::function<Outcome()>& run);
  [[nodiscard]] Outcome EditOnce(const TenantEntry& entry, ChangedTenants& changed);
  [[nodiscard]] Outcome DeleteOnce(ChangedTenants& changed);
  [[nodiscard]] Outcome AddOnce(const TenantEntry& entry, TenantRow& added);
  [[nodiscard]] CredentialDesk& Credentials();
  [[nodiscard]] std::optional<std::vector<std::int32_t>> CardsIn(const TenantEntry& entry);
  void RequireFree(const std::vector<std::int32_t>& cards, std::int32_t but);
  [[nodiscard]] Outcome Give(std::int32_t card, const TenantRow& tenant);

  DeskSession& session_;
  std::int32_t unitKey_;
  ShownState shown_;
  std::vector<TenantRow> tenants_;
  std::optional<TenantLinks> links_;
  bool outdated_ = false;  // by an operation of the desk's own
  std::vector<TenantRow> chosen_;
  std::optional<CredentialDesk> credentials_;  // once cards are asked for
};

}  // namespace qorhost
