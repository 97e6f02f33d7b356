#include "reports/cls_dir_code_report.h"

#include "reports/report_members.h"

namespace qorcred {

namespace {

using report_members::kConnection;
using report_members::kUnitKey;

clsDirCodeReport& Self(Controller& controller) {
  return static_cast<clsDirCodeReport&>(controller);
}

constexpr Parameter kConnectionAndUnit[] = {kConnection, kUnitKey};
constexpr Parameter kResult[] = {kUnitKey,
                                 {"objCon", ValueType::kObject, true},
                                 {"objGrid", ValueType::kObject, true},
                                 {"strSQL", ValueType::kString},
                                 {"objColGrid", ValueType::kObject, true},
                                 {"colValueItem", ValueType::kObject, true, true}};
constexpr Parameter kGenSql[] = {kConnection, {"intUnitKey", ValueType::kLong}};
constexpr Parameter kEntryLength[] = {{"objCon", ValueType::kObject, true},
                                      {"blnDirLength", ValueType::kBoolean, true, true}};
constexpr Parameter kConnectionAlone[] = {kConnection};

Value RunResult(Controller& controller, InvokeKind, Arguments arguments) {
  ObjectRef layout = ObjectIn(arguments[4]);
  Self(controller)
      .pvDirCodeReportResult(LongIn(arguments[0]), ObjectIn(arguments[1]), ObjectIn(arguments[2]),
                             TextIn(arguments[3]), layout, ObjectOrNone(arguments[5]));
  arguments[4] = std::move(layout);
  return {};
}

Value RunUnitName(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbGetUnitName(ObjectIn(arguments[0]), LongIn(arguments[1]));
}

Value RunGenSql(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbGenSql(ObjectIn(arguments[0]), LongIn(arguments[1]));
}

Value RunEntryLength(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbGetEntryLength(ObjectIn(arguments[0]), BooleanOr(arguments[1], false));
}

Value RunComboData(Controller& controller, InvokeKind, Arguments arguments) {
  return Self(controller).pbComboData(ObjectIn(arguments[0]));
}

constexpr Member kMembers[] = {
    report_members::FilterScreen(1),
    report_members::UnitKey(2),
    report_members::RidsForDeletion(3),
    {4, "pvDirCodeReportResult", MemberKind::kOperation, kResult, ValueType::kEmpty, RunResult},
    {5, "pbGetUnitName", MemberKind::kOperation, kConnectionAndUnit, ValueType::kString,
     RunUnitName},
    report_members::PopulateOperators(6),
    {7, "pbGenSql", MemberKind::kOperation, kGenSql, ValueType::kString, RunGenSql},
    {8, "pbGetEntryLength", MemberKind::kOperation, kEntryLength, ValueType::kLong, RunEntryLength},
    report_members::Delete(9),
    report_members::Merge(10),
    {11, "pbComboData", MemberKind::kOperation, kConnectionAlone, ValueType::kString, RunComboData},
    report_members::Validate(12),
};

}  // namespace

std::span<const Member> clsDirCodeReport::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
