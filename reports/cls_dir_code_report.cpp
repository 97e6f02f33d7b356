#include "reports/cls_dir_code_report.h"

#include "reports/report_members.h"

namespace qorcred {

namespace {

constexpr Parameter kResult[] = {
    kUnitKeyParameter,
    {"objCon", ValueType::kObject, true},
    {"objGrid", ValueType::kObject, true},
    {"strSQL", ValueType::kString},
    {"objColGrid", ValueType::kObject, true},
    {"colValueItem", ValueType::kObject, true, Omitting::kGivesNothing}};
constexpr Parameter kGenSql[] = {kConnectionParameter, {"intUnitKey", ValueType::kLong}};
constexpr Parameter kEntryLength[] = {{"objCon", ValueType::kObject, true},
                                      {"blnDirLength", ValueType::kBoolean, true, false}};
constexpr Parameter kConnectionAlone[] = {kConnectionParameter};

constexpr Member kMembers[] = {
    report_members::FilterScreen(1),
    report_members::UnitKey(2),
    report_members::RidsForDeletion(3),
    Operation<&clsDirCodeReport::pvDirCodeReportResult>(4, "pvDirCodeReportResult", kResult),
    Operation<&clsDirCodeReport::pbGetUnitName>(5, "pbGetUnitName", kConnectionAndUnitParameters),
    report_members::PopulateOperators(6),
    Operation<&clsDirCodeReport::pbGenSql>(7, "pbGenSql", kGenSql),
    Operation<&clsDirCodeReport::pbGetEntryLength>(8, "pbGetEntryLength", kEntryLength),
    report_members::Delete(9),
    report_members::Merge(10),
    Operation<&clsDirCodeReport::pbComboData>(11, "pbComboData", kConnectionAlone),
    report_members::Validate(12),
};

}  // namespace

std::span<const Member> clsDirCodeReport::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
