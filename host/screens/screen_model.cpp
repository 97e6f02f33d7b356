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
  // Names are mostly asked for as they are spelt.
  const auto [left, right] = std::mismatch(
      one.begin(), one.end(), other.begin(), other.end(), [](char first, char second) {
        return first == second || LowerAscii(first) == LowerAscii(second);
      });
  if (left == one.end() || right == other.end()) {
    return one.size() < other.size();
  }
  return LowerAscii(*left) < LowerAscii(*right);
}

ScreenModel::ScreenModel(std::string name)
    : name_(std::move(name)), link_(std::make_shared<ScreenLink>()) {}

void ScreenModel::AttachTo(const std::string& name, ControlModel& control) {
  control.Attach(name, link_);
  controls_.push_back(&control);
}

void ScreenModel::AttachTo(const std::string& name, ControlArrayModel& controls) {
  controls.Attach(name, link_);
  for (std::size_t at = 0; at < controls.size(); ++at) {
    controls_.push_back(controls.at(at).get());
  }
}

void ScreenModel::ClearFocus() {
  if (!link_->focused.empty()) {
    link_->focused.clear();
    link_->observers.Notify(Change{"", nullptr, ChangeKind::kFocus});
  }
}

void ScreenModel::AddVariable(std::string name, Value initial) {
  AddMember(std::move(name), {nullptr, std::move(initial)});
}

void ScreenModel::AddMember(std::string name, Member member) {
  if (name.empty() || qorcred::SameMember(name, kName) || members_.contains(name)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  const auto added = members_.emplace(std::move(name), std::move(member)).first;
  bySpelling_.emplace(added->first, &added->second);
}

const ScreenModel::Member& ScreenModel::Find(std::string_view name) const {
  if (const auto spelt = bySpelling_.find(name); spelt != bySpelling_.end()) {
    return *spelt->second;
  }
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
    if (*held == *text) {
      return;
    }
    *held = *text;  // keeps its room: a long list of ids comes anew with every id
  } else {
    Value converted = ConvertLike(member.variable, value);
    if (converted == member.variable) {
      return;
    }
    member.variable = std::move(converted);
  }
  link_->observers.Notify(Change{found->first, nullptr, ChangeKind::kVariable});
}

ScreenSnapshot ScreenModel::Snapshot() const {
  ScreenSnapshot snapshot;
  snapshot.controls.reserve(controls_.size());
  for (const ControlModel* control : controls_) {
    snapshot.controls.push_back({control->name(), control->held()});
  }
  for (const auto& [name, member] : members_) {
    if (member.control == nullptr) {
      snapshot.variables.push_back({name, member.variable});
    }
  }
  snapshot.focused = link_->focused;
  return snapshot;
}

void ScreenModel::Restore(const ScreenSnapshot& snapshot) {
  if (!Fits(snapshot)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  const std::vector<Change> changes = ChangesTo(snapshot);
  PutBack(snapshot);
  // Only now, so that every observer sees the whole screen as it was.
  for (const Change& change : changes) {
    if (change.control != nullptr) {
      change.control->Tell(change.kind, change.restored);
    } else {
      link_->observers.Notify(change);
    }
  }
}

bool ScreenModel::Fits(const ScreenSnapshot& snapshot) const {
  const bool controls =
      std::equal(controls_.begin(), controls_.end(), snapshot.controls.begin(),
                 snapshot.controls.end(), [](const ControlModel* control, const auto& kept) {
                   return control->name() == kept.name &&
                          control->held().own.index() == kept.state.own.index();
                 });
  auto kept = snapshot.variables.begin();
  for (const auto& [name, member] : members_) {
    if (member.control == nullptr) {
      if (kept == snapshot.variables.end() || kept->name != name) {
        return false;
      }
      ++kept;
    }
  }
  return controls && kept == snapshot.variables.end();
}

void ScreenModel::PutBack(const ScreenSnapshot& snapshot) {
  for (std::size_t at = 0; at < controls_.size(); ++at) {
    controls_[at]->PutBack(snapshot.controls[at].state);
  }
  auto kept = snapshot.variables.begin();  // which stand in the same order
  for (auto& [name, member] : members_) {
    if (member.control == nullptr) {
      member.variable = (kept++)->value;
    }
  }
  link_->focused = snapshot.focused;
}

/// What Restore() has to tell: of the controls that somebody observes, and of the variables.
std::vector<Change> ScreenModel::ChangesTo(const ScreenSnapshot& snapshot) const {
  constexpr bool kRestored = true;
  const bool focusMoves = link_->focused != snapshot.focused;
  std::vector<Change> changes;
  for (std::size_t at = 0; at < controls_.size(); ++at) {
    ControlModel* control = controls_[at];
    if (!control->observed()) {
      continue;
    }
    for (const ChangeKind kind : ChangesBetween(control->held(), snapshot.controls[at].state)) {
      changes.push_back({control->name(), control, kind, kRestored});
    }
    if (focusMoves && control->name() == snapshot.focused) {
      changes.push_back({control->name(), control, ChangeKind::kFocus, kRestored});
    }
  }
  if (link_->observers.empty()) {
    return changes;
  }
  for (const ScreenSnapshot::Variable& kept : snapshot.variables) {
    const auto& [name, member] = *members_.find(kept.name);
    if (!(member.variable == kept.value)) {
      changes.push_back({name, nullptr, ChangeKind::kVariable, kRestored});
    }
  }
  if (focusMoves && snapshot.focused.empty()) {
    changes.push_back({"", nullptr, ChangeKind::kFocus, kRestored});
  }
  return changes;
}

Value ScreenModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (qorcred::SameMember(member, kName)) {
    RequireRead(kind, arguments);
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
