#include "host/components/tenant_object.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/store/method_table.h"
#include "host/store/step_queue.h"
#include "host/store/store_connection.h"

namespace qorhost {

namespace {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

void RequireLinkCodes(const Value& wantsLinkCode) {
  if (!qorcred::ToBoolean(wantsLinkCode)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall,
                       "Group ids are the identities of TenantGroup rows: ask for link codes");
  }
}

void KeepCounter(SqlSession& session, std::int32_t unitKey, std::int64_t nextCode) {
  const StatementUse keep(
      session.Own("INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (?1, ?2) "
                  "ON CONFLICT (UnitKey) DO UPDATE SET NextLinkCode = ?2"));
  keep->BindNumber(1, unitKey);
  keep->BindNumber(2, nextCode);
  keep->Step();
}

// The next free code. The counter knows the codes that were taken, the tenants those that came with
// their rows by another way; the counter catches up with them, so that taking a code counts on from
// the one that was given out.
std::int32_t FreeLinkCode(SqlSession& session, std::int32_t unitKey) {
  std::int64_t counter = 0;
  std::int64_t code = 0;
  {
    const StatementUse next(
        session.Own("SELECT coalesce((SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=?1), 0), "
                    "coalesce((SELECT max(LINKCODE) FROM Tenants WHERE UnitKey=?1), 0) + 1"));
    next->BindNumber(1, unitKey);
    next->Step();
    counter = next->Number(0);
    code = std::max(counter, next->Number(1));
  }
  if (code > std::numeric_limits<std::int32_t>::max()) {
    throw RuntimeError(ErrorNumber::kOverflow, "The unit has no link code left");
  }
  if (counter < code && !session.database().readOnly()) {
    KeepCounter(session, unitKey, code);
  }
  return static_cast<std::int32_t>(code);
}

}  // namespace

Value TenantObject::Invoke(std::string_view member, qorcred::InvokeKind kind, Arguments arguments) {
  using Self = TenantObject;
  static constexpr std::array kMethods{
      Method<Self>{"pbGetMaxGroupIDOrLinkID", 3, 3, &Self::NextLinkCode},
      Method<Self>{"pbIncrementMaxGroupIDOrLinkIDByOne", 4, 4, &Self::TakeLinkCodes},
      Method<Self>{"pbGetTenantID", 3, 3, &Self::TenantId},
      Method<Self>{"pvCreateProgramSteps", 3, 3, &Self::CreateProgramSteps},
  };
  return RunMethod<Self>(*this, "The tenant component", kMethods, member, kind, arguments);
}

Value TenantObject::NextLinkCode(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[1]);
  RequireLinkCodes(arguments[2]);
  return {FreeLinkCode(session, qorcred::ToLong(arguments[0]))};
}

Value TenantObject::TakeLinkCodes(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[1]);
  RequireLinkCodes(arguments[2]);
  const std::int32_t unitKey = qorcred::ToLong(arguments[0]);
  const std::int32_t count = qorcred::ToLong(arguments[3]);
  if (count < 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall, "Link codes only count upwards");
  }
  {
    const StatementUse take(
        session.Own("UPDATE UnitCounters SET NextLinkCode = NextLinkCode + ?2 WHERE UnitKey=?1"));
    take->BindNumber(1, unitKey);
    take->BindNumber(2, count);
    take->Step();
  }
  if (session.ChangedRows() == 0) {
    KeepCounter(session, unitKey, std::int64_t{FreeLinkCode(session, unitKey)} + count);
  }
  return {};
}

Value TenantObject::TenantId(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  const StatementUse find(session.Own("SELECT TenantID FROM Tenants WHERE RID=?2 AND UnitKey=?1"));
  find->BindNumber(1, qorcred::ToLong(arguments[1]));
  find->BindNumber(2, qorcred::ToLong(arguments[2]));
  return {find->Step() ? static_cast<std::int32_t>(find->Number(0)) : std::int32_t{0}};
}

Value TenantObject::CreateProgramSteps(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  QueueStep(session, qorcred::ToLong(arguments[1]), step::kProgramTenant,
            qorcred::ToLong(arguments[2]));
  return {};
}

}  // namespace qorhost
