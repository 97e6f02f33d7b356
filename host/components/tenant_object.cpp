#include "host/components/tenant_object.h"

#include <array>
#include <cstdint>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/store/method_table.h"
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
  return {session.tenants().NextLinkCode(qorcred::ToLong(arguments[0]))};
}

Value TenantObject::TakeLinkCodes(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[1]);
  RequireLinkCodes(arguments[2]);
  const std::int32_t unitKey = qorcred::ToLong(arguments[0]);
  const std::int32_t count = qorcred::ToLong(arguments[3]);
  if (count < 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall, "Link codes only count upwards");
  }
  session.tenants().TakeLinkCodes(unitKey, count);
  return {};
}

Value TenantObject::TenantId(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return {
      session.tenants().TenantIdOf(qorcred::ToLong(arguments[1]), qorcred::ToLong(arguments[2]))};
}

Value TenantObject::CreateProgramSteps(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  session.steps().Queue(qorcred::ToLong(arguments[1]), step::kProgramTenant,
                        qorcred::ToLong(arguments[2]));
  return {};
}

}  // namespace qorhost
