#include "host/screens/simple_models.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::Value;

namespace {

constexpr std::int16_t kGrayed = 2;

bool IsValue(ControlMember member) {
  return member == ControlMember::kDefault || member == ControlMember::kValue;
}

}  // namespace

void TextModel::SetText(std::string text) {
  if (maxLength() > 0) {
    text.resize(qorcred::LeftUtf16(text, static_cast<std::size_t>(maxLength())).size());
  }
  Assign(Own<TextState>().text, std::move(text), ChangeKind::kValue);
}

void TextModel::SetMaxLength(std::int32_t length) {
  if (length < 0) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  Assign(Own<TextState>().maxLength, length, ChangeKind::kLimits);
  SetText(text());
}

Value TextModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kDefault:
    case ControlMember::kText:
      return Property(text(), kind, arguments,
                      [this](const Value& put) { SetText(qorcred::ToText(put)); });
    case ControlMember::kMaxLength:
      return Property(maxLength(), kind, arguments,
                      [this](const Value& put) { SetMaxLength(qorcred::ToLong(put)); });
    default:
      return CommonMember(member, kind, arguments);
  }
}

void CheckModel::SetState(std::int16_t state) {
  if (state < 0 || state > kGrayed) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  Assign(Own<CheckState>().state, state, ChangeKind::kValue);
}

Value CheckModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  return Property(state(), kind, arguments,
                  [this](const Value& put) { SetState(qorcred::ToInteger(put)); });
}

void OptionModel::Join(const std::vector<std::shared_ptr<OptionModel>>& buttons) {
  const auto group = std::make_shared<OptionGroup>(buttons.begin(), buttons.end());
  for (const auto& button : buttons) {
    button->group_ = group;
  }
}

void OptionModel::SetOn(bool on) {
  std::vector<std::shared_ptr<OptionModel>> released;
  if (on && group_ != nullptr) {
    for (const auto& member : *group_) {
      auto button = member.lock();
      if (button != nullptr && button.get() != this && button->on()) {
        button->Own<OptionState>().on = false;
        released.push_back(std::move(button));
      }
    }
  }
  const bool changed = Own<OptionState>().on != on;
  Own<OptionState>().on = on;
  // Nobody sees two buttons of a group on, nor the moment between.
  for (const auto& button : released) {
    button->Tell(ChangeKind::kValue);
  }
  if (changed) {
    Tell(ChangeKind::kValue);
  }
}

Value OptionModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  return Property(on(), kind, arguments,
                  [this](const Value& put) { SetOn(qorcred::ToBoolean(put)); });
}

Value LabelModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  return CommonMember(member == ControlMember::kDefault ? ControlMember::kCaption : member, kind,
                      arguments);
}

Value ButtonModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  RequireRead(kind, arguments);
  return Value(false);
}

Value SpinnerModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  return Property(value(), kind, arguments, [this](const Value& put) { SetValue(put); });
}

ControlArrayModel::ControlArrayModel(std::vector<std::shared_ptr<ControlModel>> controls)
    : controls_(std::move(controls)) {}

void ControlArrayModel::Attach(const std::string& name, const std::shared_ptr<ScreenLink>& link) {
  for (std::size_t at = 0; at < controls_.size(); ++at) {
    controls_[at]->Attach(fmt::format("{}({})", name, at), link);
  }
}

Value ControlArrayModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  switch (FindControlMember(member)) {
    case ControlMember::kDefault: {
      RefusePut(kind);
      RequireCount(arguments, 1);
      const std::int32_t index = qorcred::ToLong(arguments.front());
      if (index < 0 || static_cast<std::size_t>(index) >= controls_.size()) {
        throw RuntimeError(ErrorNumber::kIndexOutOfRange);
      }
      return Value(qorcred::ObjectRef(controls_[static_cast<std::size_t>(index)]));
    }
    case ControlMember::kCount:
      RequireRead(kind, arguments);
      return Value(static_cast<std::int32_t>(controls_.size()));
    default:
      throw RuntimeError(ErrorNumber::kUnknownMember);
  }
}

}  // namespace qorhost
