#include "reports/cls_credential_report.h"

#include "reports/report_members.h"

namespace qorcred {

namespace {

constexpr Parameter kGenSql[] = {report_members::kConnection,
                                 report_members::kUnitKey,
                                 {"arrXDBTx", ValueType::kObject, true},
                                 {"strSQL", ValueType::kString, true}};

Value RunGenSql(Controller& controller, InvokeKind, Arguments arguments) {
  ObjectRef rows = ObjectIn(arguments[2]);
  std::string statement = TextIn(arguments[3]);
  const bool done = static_cast<clsCredentialReport&>(controller)
                        .pbGenSql(ObjectIn(arguments[0]), LongIn(arguments[1]), rows, statement);
  arguments[2] = std::move(rows);
  arguments[3] = std::move(statement);
  return done;
}

constexpr Member kMembers[] = {
    report_members::FilterScreen(1),
    report_members::UnitKey(2),
    report_members::RidsForDeletion(3),
    report_members::PopulateOperators(4),
    {5, "pbGenSql", MemberKind::kOperation, kGenSql, ValueType::kBoolean, RunGenSql},
    report_members::Delete(6),
    report_members::Merge(7),
    report_members::Validate(8),
};

}  // namespace

std::span<const Member> clsCredentialReport::MemberTable() {
  return kMembers;
}

}  // namespace qorcred
