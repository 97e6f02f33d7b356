#include "frame/member_table.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorcred {

Value Parameter::Omitted() const {
  if (const bool* flag = std::get_if<bool>(&omitted)) return *flag;
  if (const std::int32_t* number = std::get_if<std::int32_t>(&omitted)) return *number;
  return ObjectRef();
}

// Of its own type a value is taken as it is. A reference to nothing is an object: the operation
// meets it where it uses the object.
Value ConvertArgument(ValueType type, Value value) {
  if (value.Is(type)) return value;
  switch (type) {
    case ValueType::kBoolean:
      return ToBoolean(value);
    case ValueType::kInteger:
      return ToInteger(value);
    case ValueType::kLong:
      return ToLong(value);
    case ValueType::kDouble:
      return ToDouble(value);
    case ValueType::kDate:
      return ToDate(value);
    case ValueType::kString:
      return ToText(std::move(value));
    case ValueType::kObject:
      throw RuntimeError(ErrorNumber::kObjectRequired);
    case ValueType::kStringArray:
      throw RuntimeError(ErrorNumber::kTypeMismatch);
    case ValueType::kEmpty:
    case ValueType::kNull:
    case ValueType::kMissing:
      return value;
  }
  return value;
}

namespace {

// A property may be set to nothing, so that the host can release a screen.
Value ConvertPropertyValue(ValueType type, Value value) {
  if (type == ValueType::kObject && value.Is(ValueType::kEmpty)) return ObjectRef();
  return ConvertArgument(type, std::move(value));
}

std::vector<Value> ConvertArguments(std::span<const Parameter> parameters, Arguments arguments) {
  if (arguments.size() > parameters.size()) throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  std::vector<Value> converted;
  converted.reserve(parameters.size());
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const bool given = i < arguments.size() && !arguments[i].Is(ValueType::kMissing);
    if (given) {
      converted.push_back(ConvertArgument(parameters[i].type, arguments[i]));
    } else if (parameters[i].IsOptional()) {
      converted.push_back(parameters[i].Omitted());
    } else {
      throw RuntimeError(ErrorNumber::kArgumentNotOptional);
    }
  }
  return converted;
}

void HandBack(std::span<const Parameter> parameters, std::vector<Value>& converted,
              Arguments arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (parameters[i].byRef && !arguments[i].Is(ValueType::kMissing)) {
      arguments[i] = std::move(converted[i]);
    }
  }
}

}  // namespace

Value Controller::Invoke(std::string_view name, InvokeKind kind, Arguments arguments) {
  const Member* member = FindMember(Members(), name);
  if (member == nullptr) throw RuntimeError(ErrorNumber::kUnknownMember);

  if (member->kind == MemberKind::kProperty) {
    if (kind == InvokeKind::kPut) {
      if (arguments.size() != 1) throw RuntimeError(ErrorNumber::kWrongArgumentCount);
      Value value = ConvertPropertyValue(member->type, arguments[0]);
      return member->run(*this, kind, {&value, 1});
    }
    if (!arguments.empty()) throw RuntimeError(ErrorNumber::kWrongArgumentCount);
    return member->run(*this, InvokeKind::kGet, {});
  }

  if (kind == InvokeKind::kPut) throw RuntimeError(ErrorNumber::kUnknownMember);
  std::vector<Value> converted = ConvertArguments(member->parameters, arguments);
  Value result = member->run(*this, InvokeKind::kCall, converted);
  HandBack(member->parameters, converted, arguments);
  return result;
}

const Member* FindMember(std::span<const Member> members, std::string_view name) {
  const auto found = std::find_if(members.begin(), members.end(), [name](const Member& member) {
    return SameMember(member.name, name);
  });
  return found == members.end() ? nullptr : &*found;
}

}  // namespace qorcred
