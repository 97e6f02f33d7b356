// qorTent.clsTenant: link codes, tenant ids and the programming steps of tenants.
#pragma once

#include "frame/object.h"

namespace qorhost {

/// Late-bound members:
/// pbGetMaxGroupIDOrLinkID(unitKey, conn, True) -> the unit's next free link code, from 1;
/// pbIncrementMaxGroupIDOrLinkIDByOne(unitKey, conn, True, 1): that code and those before it are
/// not given out again; pbGetTenantID(conn, unitKey, rid) -> tenant id, 0 when there is no such
/// row; pvCreateProgramSteps(conn, unitKey, tenant): queues the step that programs the tenant.
/// Group ids (False in place of True) are not kept here: kInvalidProcedureCall.
class TenantObject final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::Value NextLinkCode(qorcred::Arguments arguments);
  qorcred::Value TakeLinkCodes(qorcred::Arguments arguments);
  qorcred::Value TenantId(qorcred::Arguments arguments);
  qorcred::Value CreateProgramSteps(qorcred::Arguments arguments);
};

}  // namespace qorhost
