#include "reports/cls_credential_report.h"

#include "reports/report_members.h"

namespace qorcred {

namespace {

constexpr Parameter kGenSql[] = {kConnectionParameter,
                                 kUnitKeyParameter,
                                 {"arrXDBTx", ValueType::kObject, true},
                                 {"strSQL", ValueType::kString, true}};

constexpr Member kMembers[] = {
    report_members::FilterScreen(1),
    report_members::UnitKey(2),
    report_members::RidsForDeletion(3),
    report_members::PopulateOperators(4),
    Operation<&clsCredentialReport::pbGenSql>(5, "pbGenSql", kGenSql),
    report_members::Delete(6),
    report_members::Merge(7),
    report_members::Validate(8),
};

}  // namespace

std::span<const Member> clsCredentialReport::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
