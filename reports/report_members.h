// The members that both report controllers offer, for their member tables. Every class numbers its
// members by itself.
#pragma once

#include "frame/member_rows.h"
#include "reports/report_controller.h"

namespace qorcred::report_members {

inline constexpr Parameter kDelete[] = {
    kConnectionParameter, kUnitKeyParameter, {"lngRowsDeleted", ValueType::kLong, true}};
inline constexpr Parameter kMerge[] = {{"arrXDBObj1", ValueType::kObject, true},
                                       {"arrXDBObj2", ValueType::kObject, true}};
inline constexpr Parameter kValidate[] = {
    kConnectionParameter, kUnitKeyParameter, {"objDB", ValueType::kObject, true}};

consteval Member FilterScreen(int id) {
  return Property<&ReportController::gfrmTxFilter, &ReportController::set_gfrmTxFilter>(
      id, "gfrmTxFilter");
}
consteval Member UnitKey(int id) {
  return Property<&ReportController::mlngUnitKey, &ReportController::set_mlngUnitKey>(
      id, "mlngUnitKey");
}
consteval Member RidsForDeletion(int id) {
  return Property<&ReportController::gstrRIDsForDeletion,
                  &ReportController::set_gstrRIDsForDeletion>(id, "gstrRIDsForDeletion");
}
consteval Member PopulateOperators(int id) {
  return Operation<&ReportController::pbPopulateArrOperators>(id, "pbPopulateArrOperators");
}
consteval Member Delete(int id) {
  return Operation<&ReportController::pbDelete>(id, "pbDelete", kDelete);
}
consteval Member Merge(int id) {
  return Operation<&ReportController::pbMergeXArrayDBObjects>(id, "pbMergeXArrayDBObjects", kMerge);
}
consteval Member Validate(int id) {
  return Operation<&ReportController::pbValidate>(id, "pbValidate", kValidate);
}

}  // namespace qorcred::report_members
