// Tenants and what they refer to.
#include <fmt/format.h>

#include <limits>

#include "frame/schedules.h"
#include "frame/text.h"
#include "host/desks/moving_in/row_rules.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

struct TenantPlaces {
  explicit TenantPlaces(const RuleWork& work)
      : rid(work.At("RID")),
        id(work.At("TenantID")),
        unit(work.At("UnitKey")),
        lastName(work.At("LastName")),
        group(work.At("GROUPID")),
        link(work.At("LINKCODE")),
        start(work.At("ACTIVESTARTTIME")),
        end(work.At("ACTIVEENDTIME")),
        schedules{work.At("DOORSCHEDULE1"), work.At("DOORSCHEDULE2"), work.At("DOORSCHEDULE3"),
                  work.At("DOORSCHEDULE4")},
        credentials{work.At("CREDENTIALID1"), work.At("CREDENTIALID2")},
        code(work.At("DIRECTORYCODE")) {}

  std::size_t rid;
  std::size_t id;
  std::size_t unit;
  std::size_t lastName;
  std::size_t group;
  std::size_t link;
  std::size_t start;
  std::size_t end;
  std::array<std::size_t, 4> schedules;
  std::array<std::size_t, 2> credentials;
  std::size_t code;
};

/// What tenants before this one have.
struct Taken {
  std::unordered_map<std::int32_t, std::int32_t> holders;               // RIDs by the credential's
  std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> links;  // RIDs by unit and code
};

class TenantRow {
 public:
  TenantRow(RuleWork& work, const TenantPlaces& at, const AcceptedRows& accepted, StagedRow& row)
      : work_(work),
        at_(at),
        accepted_(accepted),
        row_(row),
        unit_(*LongIn(row.cells[at.unit])),
        rid_(*LongIn(row.cells[at.rid])) {}

  void Settle(Taken& taken) {
    SettleName();
    SettleGroup();
    SettleLink(taken);
    SettlePeriod();
    for (const std::size_t place : at_.schedules) SettleSchedule(place);
    for (const std::size_t place : at_.credentials) SettleCredential(place, taken);
    SettleCode();
  }

 private:
  [[nodiscard]] const Value& Cell(std::size_t place) const { return row_.cells[place]; }

  void SettleName() {
    const std::string_view name = TextIn(Cell(at_.lastName));
    if (!name.empty() && name.find_first_not_of(" \t\r\n") == std::string_view::npos) {
      work_.Keep(row_, at_.lastName, "blank-name", "the name is nothing but blanks");
    }
  }

  void SettleGroup() {
    const std::optional<std::int32_t> group = LongIn(Cell(at_.group));
    if (!group || *group == 0) return;
    const auto found = accepted_.unitOfGroup.find(*group);
    if (found == accepted_.unitOfGroup.end() || found->second != unit_) {
      work_.Adjust(row_, at_.group, accepted_.units.at(unit_).groupZero.value_or(0),
                   "missing-group",
                   "the unit has no such group: the tenant is in the one of new tenants");
    }
  }

  void SettleLink(Taken& taken) {
    const std::optional<std::int32_t> link = LongIn(Cell(at_.link));
    if (!link || *link <= 0) return;
    if (*link == std::numeric_limits<std::int32_t>::max()) {
      work_.Keep(row_, at_.link, "link-range",
                 "it is the last link code there is: no tenant can be added to the unit");
    }
    const auto [holder, isFirst] = taken.links.try_emplace({unit_, *link}, rid_);
    if (!isFirst) {
      work_.Keep(row_, at_.link, "duplicate-link",
                 fmt::format("the tenant with RID {} has the link code, too", holder->second));
    }
  }

  void SettlePeriod() {
    const std::string_view start = TextIn(Cell(at_.start));
    const std::string_view end = TextIn(Cell(at_.end));
    if (!start.empty() && !end.empty() && end < start) {
      work_.Keep(row_, at_.end, "period", "the period ends before it begins");
    }
  }

  void SettleSchedule(std::size_t place) {
    const std::optional<std::int32_t> id = LongIn(Cell(place));
    if (id && !accepted_.schedules.contains({unit_, *id})) {
      work_.Adjust(row_, place, qorcred::kNoAccess.id, "missing-schedule",
                   "the unit has no such schedule: the door stays closed to the tenant");
    }
  }

  // A reference to nothing is not kept: a later row may get that identity.
  void SettleCredential(std::size_t place, Taken& taken) {
    const std::optional<std::int32_t> credential = LongIn(Cell(place));
    if (!credential) return;
    const auto found = accepted_.unitOfCredential.find(*credential);
    if (found == accepted_.unitOfCredential.end()) {
      work_.Adjust(row_, place, Null{}, "missing-credential",
                   "there is no such credential, or its row was refused");
      return;
    }
    if (found->second != unit_) {
      work_.Adjust(row_, place, Null{}, "foreign-credential",
                   fmt::format("the credential is one of unit {}", found->second));
      return;
    }
    const auto [holder, isFirst] = taken.holders.try_emplace(*credential, rid_);
    if (isFirst) return;
    if (holder->second == rid_) {
      work_.Adjust(row_, place, Null{}, "repeated-credential",
                   "the tenant has the credential in the first place already");
    } else {
      work_.Keep(row_, place, "shared-credential",
                 fmt::format("the tenant with RID {} holds the credential, too", holder->second));
    }
  }

  void SettleCode() {
    const std::optional<std::int32_t> code = LongIn(Cell(at_.code));
    if (!code) return;
    const auto found = accepted_.unitOfCode.find(*code);
    if (found == accepted_.unitOfCode.end() || found->second != unit_) {
      work_.Adjust(row_, at_.code, Null{}, "missing-directory-code",
                   "the unit has no such directory code, or its row was refused");
    }
  }

  RuleWork& work_;
  const TenantPlaces& at_;
  const AcceptedRows& accepted_;
  StagedRow& row_;
  std::int32_t unit_;
  std::int32_t rid_;
};

/// In a store both are one number; where a file has the id alone it is taken for both.
void SettleIds(RuleWork& work, const TenantPlaces& at) {
  if (!work.table().IsGiven(at.rid) && work.table().IsGiven(at.id)) {
    for (StagedRow& row : work.table().rows()) row.cells[at.rid] = row.cells[at.id];
    work.table().MarkGiven(at.rid);
  }
}

}  // namespace

void SettleTenants(RuleWork& work, AcceptedRows& accepted) {
  const TenantPlaces at(work);
  SettleIds(work, at);
  SettleIdentities(work);
  RequireUnit(work, accepted);
  Taken taken;
  work.Each([&](StagedRow& row) {
    const std::int32_t rid = *LongIn(row.cells[at.rid]);
    const std::int32_t unit = *LongIn(row.cells[at.unit]);
    const std::optional<std::int32_t> id = LongIn(row.cells[at.id]);
    const std::pair key(unit, id.value_or(rid));
    if (id == rid) {
      accepted.tenants.insert_or_assign(key, rid);  // also where another one has the id
    } else {
      accepted.tenants.try_emplace(key, rid);
    }
    if (work.table().IsGiven(at.id) && id != rid) {
      work.Adjust(row, at.id, rid, "other-tenant-id",
                  "a tenant's id is its RID, and what refers to the id follows it");
    }
    TenantRow(work, at, accepted, row).Settle(taken);
  });
}

void SettleTenantBackups(RuleWork& work, const AcceptedRows& accepted) {
  RequireUnit(work, accepted);
  const std::size_t unit = work.At("UnitKey");
  const std::size_t id = work.At("TenantID");
  std::set<std::pair<std::int32_t, std::int32_t>> seen;
  work.Each([&](StagedRow& row) {
    const std::optional<std::int32_t> tenant = LongIn(row.cells[id]);
    if (!tenant) {
      work.Refuse(row, id, "null-id", "the row belongs to no tenant");
      return;
    }
    const std::pair key(*LongIn(row.cells[unit]), *tenant);
    const auto found = accepted.tenants.find(key);
    if (found == accepted.tenants.end()) {
      work.Refuse(row, id, "missing-tenant", "the unit has no such tenant, or its row was refused");
    } else if (!seen.insert(key).second) {
      work.Refuse(row, id, "duplicate-id", "a row before it belongs to the tenant");
    } else if (found->second != *tenant) {
      work.Adjust(row, id, found->second, "other-tenant-id",
                  "it follows its tenant, whose id is the RID now");
    }
  });
}

}  // namespace qorhost
