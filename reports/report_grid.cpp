#include "reports/report_grid.h"

#include "frame/runtime_error.h"

namespace qorcred {

ObjectRef ReportGrid::NewValueItem() const {
  try {
    return RequireObject(Call(object(), "NewValueItem"));
  } catch (const RuntimeError& failure) {
    if (failure.number() == ErrorNumber::kUnknownMember) return nullptr;
    throw;
  }
}

}  // namespace qorcred
