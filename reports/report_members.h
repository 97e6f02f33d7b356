// The members that both report controllers offer, for their member tables.
#pragma once

#include "frame/member_table.h"

namespace qorcred::report_members {

Value RunFilterScreen(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunUnitKey(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunRidsForDeletion(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunPopulateOperators(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunDelete(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunMerge(Controller& controller, InvokeKind kind, Arguments arguments);
Value RunValidate(Controller& controller, InvokeKind kind, Arguments arguments);

inline constexpr Parameter kConnection{"objConn", ValueType::kObject, true};
inline constexpr Parameter kUnitKey{"lngUnitKey", ValueType::kLong};

inline constexpr Parameter kDelete[] = {
    kConnection, kUnitKey, {"lngRowsDeleted", ValueType::kLong, true}};
inline constexpr Parameter kMerge[] = {{"arrXDBObj1", ValueType::kObject, true},
                                       {"arrXDBObj2", ValueType::kObject, true}};
inline constexpr Parameter kValidate[] = {
    kConnection, kUnitKey, {"objDB", ValueType::kObject, true}};

/// A row of a class's table; every class numbers its members by itself.
constexpr Member FilterScreen(int id) {
  return {id, "gfrmTxFilter", MemberKind::kProperty, {}, ValueType::kObject, RunFilterScreen};
}
constexpr Member UnitKey(int id) {
  return {id, "mlngUnitKey", MemberKind::kProperty, {}, ValueType::kLong, RunUnitKey};
}
constexpr Member RidsForDeletion(int id) {
  return {id, "gstrRIDsForDeletion", MemberKind::kProperty,
          {}, ValueType::kString,    RunRidsForDeletion};
}
constexpr Member PopulateOperators(int id) {
  return {id, "pbPopulateArrOperators", MemberKind::kOperation,
          {}, ValueType::kBoolean,      RunPopulateOperators};
}
constexpr Member Delete(int id) {
  return {id, "pbDelete", MemberKind::kOperation, kDelete, ValueType::kBoolean, RunDelete};
}
constexpr Member Merge(int id) {
  return {id,     "pbMergeXArrayDBObjects", MemberKind::kOperation,
          kMerge, ValueType::kBoolean,      RunMerge};
}
constexpr Member Validate(int id) {
  return {id, "pbValidate", MemberKind::kOperation, kValidate, ValueType::kBoolean, RunValidate};
}

}  // namespace qorcred::report_members
