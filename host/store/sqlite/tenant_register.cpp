#include "host/store/sqlite/tenant_register.h"

#include <algorithm>

#include "host/store/row_runs.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

namespace {

/// Whether the unit's counter was known; the codes are taken then.
bool TakeKnown(Session& session, std::int32_t unitKey, std::int32_t count) {
  return session.Writing([&] {
    LinkCodes::Known* const known =
        session.IsAlone() ? session.buffer().linkCodes().Of(unitKey) : nullptr;
    if (known == nullptr || known->counter == 0) {
      return false;
    }
    known->counter += count;
    known->changed = true;
    return true;
  });
}

}  // namespace

std::int32_t TenantRegister::TenantIdOf(std::int32_t unitKey, std::int32_t rid) {
  session_.work().RequireUsable();
  if (const auto held = HeldTenantId(session_.buffer(), unitKey, rid)) {
    return *held;
  }
  const StatementUse find(session_.Own("SELECT TenantID FROM Tenants WHERE RID=?2 AND UnitKey=?1"));
  find->BindNumber(1, unitKey);
  find->BindNumber(2, rid);
  return find->Step() ? static_cast<std::int32_t>(find->Number(0)) : 0;
}

void TenantRegister::EachName(const std::function<Reading(const StoredNames&)>& take) {
  enum Column { kUnit, kRid, kLast, kFirst, kInitial, kAtUnit, kResident };
  const StatementUse read(
      session_.Own("SELECT UnitKey, RID, LastName, FirstName, MiddleInitial, NameAtUnit, Resident "
                   "FROM Tenants ORDER BY RID"));
  auto reading = Reading::kGoesOn;
  while (reading == Reading::kGoesOn && read->Step()) {
    reading =
        take({static_cast<std::int32_t>(read->Number(kUnit)),
              static_cast<std::int32_t>(read->Number(kRid)), read->Text(kLast), read->Text(kFirst),
              read->Text(kInitial), read->Text(kAtUnit), read->Number(kResident) != 0});
  }
}

void TenantRegister::BackUp(std::int32_t unitKey, std::span<const std::int32_t> rids) {
  session_.Writing([&] {
    ForEachRun(rids, [&](std::int32_t first, std::int32_t last) {
      const StatementUse insert(session_.Own(
          "INSERT INTO TenantsBackup (UnitKey, TenantID) SELECT UnitKey, TenantID FROM Tenants "
          "WHERE UnitKey=?1 AND RID BETWEEN ?2 AND ?3 ORDER BY RID"));
      insert->BindNumber(1, unitKey);
      insert->BindNumber(2, first);
      insert->BindNumber(3, last);
      insert->Step();
    });
  });
}

LinkCodes::Known TenantRegister::ReadLinkCodes(std::int32_t unitKey) {
  const StatementUse read(
      session_.Own("SELECT coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=?1), 0),"
                   " coalesce((SELECT max(LINKCODE) FROM Tenants WHERE UnitKey=?1), 0) + 1"));
  read->BindNumber(1, unitKey);
  read->Step();
  return {unitKey, read->Number(0), read->Number(1), false};
}

std::int32_t TenantRegister::NextLinkCode(std::int32_t unitKey) {
  session_.work().RequireUsable();
  LinkCodes& codes = session_.buffer().linkCodes();
  const bool isAlone = session_.IsAlone() && !session_.database().readOnly();
  if (isAlone && codes.Of(unitKey) == nullptr) {
    session_.work().WriteHeld();  // what is known of another unit
    codes.Know(ReadLinkCodes(unitKey));
  }
  if (isAlone) {
    return CatchUp(*codes.Of(unitKey));
  }
  const LinkCodes::Known read = ReadLinkCodes(unitKey);
  const std::int32_t free = RequireLinkCode(read.next());
  // Asking is no reason to take the right to write.
  const bool mayWrite = !session_.database().readOnly() && !session_.work().open();
  if (read.counter < read.next() && mayWrite) {
    KeepCounter(unitKey, read.next());
  }
  return free;
}

void TenantRegister::TakeLinkCodes(std::int32_t unitKey, std::int32_t count) {
  if (TakeKnown(session_, unitKey, count)) {
    return;
  }
  const std::int64_t taken = session_.Writing([&] {
    const StatementUse take(
        session_.Own("UPDATE UnitCounters SET NextLinkCode = NextLinkCode + ?2 WHERE UnitKey=?1"));
    take->BindNumber(1, unitKey);
    take->BindNumber(2, count);
    take->Step();
    return session_.ChangedRows();
  });
  if (taken == 0) {
    KeepCounter(unitKey, std::int64_t{NextLinkCode(unitKey)} + count);
  }
}

void TenantRegister::KeepCounter(std::int32_t unitKey, std::int64_t nextCode) {
  session_.Writing([&] {
    const StatementUse keep(
        session_.Own("INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (?1, ?2) "
                     "ON CONFLICT (UnitKey) DO UPDATE SET NextLinkCode = ?2"));
    keep->BindNumber(1, unitKey);
    keep->BindNumber(2, nextCode);
    keep->Step();
  });
}

}  // namespace qorhost::sqlite
