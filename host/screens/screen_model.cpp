#include "host/screens/screen_model.h"

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::Value;
using qorcred::ValueType;

namespace {

constexpr std::string_view kName = "Name";

char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

/// What a variable declared with the type of `declared` holds after `value` is put into it.
Value ConvertLike(const Value& declared, const Value& value) {
  switch (declared.type()) {
    case ValueType::kBoolean:
      return Value(qorcred::ToBoolean(value));
    case ValueType::kInteger:
      return Value(qorcred::ToInteger(value));
    case ValueType::kLong:
      return Value(qorcred::ToLong(value));
    case ValueType::kDouble:
      return Value(qorcred::ToDouble(value));
    case ValueType::kDate:
      return Value(qorcred::ToDate(value));
    case ValueType::kString:
      return Value(qorcred::ToText(value));
    default:
      return value;
  }
}

}  // namespace

bool ScreenModel::NameLess::operator()(std::string_view one,
                                       std::string_view other) const noexcept {
  return std::lexicographical_compare(
      one.begin(), one.end(), other.begin(), other.end(),
      [](char left, char right) { return LowerAscii(left) < LowerAscii(right); });
}

ScreenModel::ScreenModel(std::string name)
    : name_(std::move(name)), focus_(std::make_shared<FocusHolder>()) {}

void ScreenModel::AddVariable(std::string name, Value initial) {
  AddMember(std::move(name), {nullptr, std::move(initial)});
}

void ScreenModel::AddMember(std::string name, Member member) {
  if (name.empty() || qorcred::SameMember(name, kName) ||
      !members_.emplace(std::move(name), std::move(member)).second) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
}

const ScreenModel::Member& ScreenModel::Find(std::string_view name) const {
  const auto found = members_.find(name);
  if (found == members_.end()) {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
  return found->second;
}

void ScreenModel::RaiseWrongKind() {
  throw RuntimeError(ErrorNumber::kTypeMismatch);
}

std::string_view ScreenModel::SpelledName(std::string_view name) const {
  if (qorcred::SameMember(name, kName)) {
    return kName;
  }
  const auto found = members_.find(name);
  return found == members_.end() ? std::string_view() : std::string_view(found->first);
}

std::vector<std::string_view> ScreenModel::Names() const {
  std::vector<std::string_view> names;
  names.reserve(members_.size());
  for (const auto& [name, member] : members_) {
    names.emplace_back(name);
  }
  return names;
}

const Value& ScreenModel::Variable(std::string_view name) const {
  const Member& member = Find(name);
  if (member.control != nullptr) {
    RaiseWrongKind();
  }
  return member.variable;
}

void ScreenModel::SetVariable(std::string_view name, const Value& value) {
  const auto found = members_.find(name);
  if (found == members_.end()) {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
  Member& member = found->second;
  if (member.control != nullptr) {
    RaiseWrongKind();
  }
  auto* const held = member.variable.As<std::string>();
  const auto* const text = value.As<std::string>();
  if (held != nullptr && text != nullptr) {
    *held = *text;  // keeps its room: a long list of ids comes anew with every id
    return;
  }
  member.variable = ConvertLike(member.variable, value);
}

Value ScreenModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (qorcred::SameMember(member, kName)) {
    RefusePut(kind);
    RequireCount(arguments, 0);
    return Value(name_);
  }
  const Member& found = Find(member);
  if (found.control != nullptr) {
    // "screen.control(2)" and "screen.control = 3" mean the control's default member.
    return arguments.empty() ? Value(found.control) : found.control->Invoke("", kind, arguments);
  }
  if (kind == InvokeKind::kPut) {
    RequireCount(arguments, 1);
    SetVariable(member, arguments.front());
    return {};
  }
  RequireCount(arguments, 0);
  return found.variable;
}

}  // namespace qorhost
