#include "tests/support/late_bound.h"

#include <sstream>
#include <string_view>

#include "tests/support/transcript_text.h"

namespace qortest {

namespace {

using qorcred::ValueType;

std::string_view TypeName(ValueType type) {
  switch (type) {
    case ValueType::kBoolean:
      return "Boolean";
    case ValueType::kLong:
      return "Long";
    case ValueType::kString:
      return "String";
    case ValueType::kStringArray:
      return "String()";
    case ValueType::kObject:
      return "Object";
    case ValueType::kEmpty:
      return "Variant";
    default:
      return "?";
  }
}

}  // namespace

std::string Described(const qorcred::Member& member) {
  std::ostringstream out;
  out << member.id << ' ' << member.name;
  if (member.kind == qorcred::MemberKind::kProperty) {
    out << " As " << TypeName(member.type);
    return out.str();
  }
  out << '(';
  const char* separator = "";
  for (const qorcred::Parameter& parameter : member.parameters) {
    out << separator << (parameter.IsOptional() ? "Optional " : "")
        << (parameter.byRef ? "ByRef " : "ByVal ") << parameter.name << " As "
        << TypeName(parameter.type);
    if (parameter.IsOptional()) out << " = " << TranscriptText(parameter.Omitted());
    separator = ", ";
  }
  out << ')';
  if (member.type != ValueType::kEmpty) {
    out << " As " << TypeName(member.type);
  }
  return out.str();
}

Lines DescribedMembers(const qorcred::Controller& controller) {
  Lines described;
  for (const qorcred::Member& member : controller.Members()) {
    described.push_back(Described(member));
  }
  return described;
}

}  // namespace qortest
