// docs/reference.md is the member tables, printed. QORCRED_UPDATE_GOLDEN=1 writes it anew.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "frame/convert.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"

namespace {

using qorcred::Member;
using qorcred::MemberKind;
using qorcred::Parameter;
using qorcred::ValueType;

std::string_view TypeName(ValueType type) {
  switch (type) {
    case ValueType::kBoolean:
      return "Boolean";
    case ValueType::kInteger:
      return "16-bit integer";
    case ValueType::kLong:
      return "32-bit integer";
    case ValueType::kDouble:
      return "double";
    case ValueType::kDate:
      return "date";
    case ValueType::kString:
      return "string";
    case ValueType::kObject:
      return "object";
    case ValueType::kStringArray:
      return "array of strings";
    default:
      return "none";
  }
}

std::string DefaultText(const Parameter& parameter) {
  const qorcred::Value omitted = parameter.Omitted();
  return omitted.Is(ValueType::kObject) ? "nothing" : qorcred::ToText(omitted);
}

std::string ArgumentText(const Parameter& parameter) {
  std::string text = "`" + std::string(parameter.name) + "` (";
  if (parameter.IsOptional()) text += "optional ";
  text += TypeName(parameter.type);
  if (parameter.byRef) text += ", ByRef";
  if (parameter.IsOptional()) text += ", default " + DefaultText(parameter);
  return text + ")";
}

std::string ClassText(std::string_view name, std::span<const Member> members) {
  std::string text = "\n## `" + std::string(name) + "`\n\n";
  text += "| Id | Member | Kind | Arguments | Result |\n|---|---|---|---|---|\n";
  for (const Member& member : members) {
    std::string arguments;
    for (const Parameter& parameter : member.parameters) {
      if (!arguments.empty()) arguments += ", ";
      arguments += ArgumentText(parameter);
    }
    const bool property = member.kind == MemberKind::kProperty;
    text += "| " + std::to_string(member.id) + " | `" + std::string(member.name) + "` | " +
            (property ? "property" : "operation") + " | " + arguments + " | " +
            std::string(TypeName(member.type)) + " |\n";
  }
  return text;
}

std::string Reference() {
  return "# Members of the controllers\n\n"
         "Names, identifiers and arguments for late-bound and native callers alike. ByRef: the "
         "argument may be written back. An optional argument that is left out counts as its "
         "default; the -1 of `pbRetrieveCredentials` and `pbRetrieveDirCodes` stands for all rows. "
         "Identifiers never change.\n" +
         ClassText("clsCredential", qorcred::clsCredential::MemberTable()) +
         ClassText("clsDirCode", qorcred::clsDirCode::MemberTable()) +
         ClassText("clsDirCodeReport", qorcred::clsDirCodeReport::MemberTable()) +
         ClassText("clsCredentialReport", qorcred::clsCredentialReport::MemberTable());
}

std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(Reference, DocumentsEveryMember) {
  const std::string path = std::string(QORCRED_DOCS_DIR) + "/reference.md";
  if (std::getenv("QORCRED_UPDATE_GOLDEN") != nullptr) {
    ASSERT_EQ(std::getenv("CI"), nullptr) << "goldens are not written in CI";
    std::ofstream(path, std::ios::binary) << Reference();
  }
  EXPECT_EQ(FileText(path), Reference());
}

}  // namespace
