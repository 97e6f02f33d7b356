#include "tests/contract/described_members.h"

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"

namespace qortest {

std::span<const qorcred::Member> MembersOf(std::string_view className) {
  if (className == "clsCredential") return qorcred::clsCredential::MemberTable();
  if (className == "clsDirCode") return qorcred::clsDirCode::MemberTable();
  if (className == "clsDirCodeReport") return qorcred::clsDirCodeReport::MemberTable();
  if (className == "clsCredentialReport") return qorcred::clsCredentialReport::MemberTable();
  return {};
}

}  // namespace qortest
