#include "reports/report_members.h"

#include "reports/report_controller.h"

namespace qorcred::report_members {

namespace {

ReportController& Self(Controller& controller) {
  return static_cast<ReportController&>(controller);
}

}  // namespace

Value RunFilterScreen(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).gfrmTxFilter();
  Self(controller).set_gfrmTxFilter(ObjectIn(arguments[0]));
  return {};
}

Value RunUnitKey(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).mlngUnitKey();
  Self(controller).set_mlngUnitKey(LongIn(arguments[0]));
  return {};
}

Value RunRidsForDeletion(Controller& controller, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kGet) return Self(controller).gstrRIDsForDeletion();
  Self(controller).set_gstrRIDsForDeletion(TextIn(arguments[0]));
  return {};
}

Value RunPopulateOperators(Controller& controller, InvokeKind, Arguments) {
  return Self(controller).pbPopulateArrOperators();
}

Value RunDelete(Controller& controller, InvokeKind, Arguments arguments) {
  std::int32_t deleted = LongIn(arguments[2]);
  const bool done =
      Self(controller).pbDelete(ObjectIn(arguments[0]), LongIn(arguments[1]), deleted);
  arguments[2] = deleted;
  return done;
}

Value RunMerge(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbMergeXArrayDBObjects(ObjectIn(arguments[0]), ObjectIn(arguments[1]));
}

Value RunValidate(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller)
      .pbValidate(ObjectIn(arguments[0]), LongIn(arguments[1]), ObjectIn(arguments[2]));
}

}  // namespace qorcred::report_members
