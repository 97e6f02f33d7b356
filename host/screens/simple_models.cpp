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
  if (maxLength_ > 0) {
    text.resize(qorcred::LeftUtf16(text, static_cast<std::size_t>(maxLength_)).size());
  }
  text_ = std::move(text);
}

Value TextModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kDefault:
    case ControlMember::kText:
      if (kind != InvokeKind::kPut) {
        RequireCount(arguments, 0);
        return Value(text_);
      }
      RequireCount(arguments, 1);
      SetText(qorcred::ToText(arguments.front()));
      return {};
    case ControlMember::kMaxLength: {
      if (kind != InvokeKind::kPut) {
        RequireCount(arguments, 0);
        return Value(maxLength_);
      }
      RequireCount(arguments, 1);
      const std::int32_t length = qorcred::ToLong(arguments.front());
      if (length < 0) {
        throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
      }
      maxLength_ = length;
      SetText(std::move(text_));
      return {};
    }
    default:
      return CommonMember(member, kind, arguments);
  }
}

void CheckModel::SetState(std::int16_t state) {
  if (state < 0 || state > kGrayed) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  state_ = state;
}

Value CheckModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 0);
    return Value(state_);
  }
  RequireCount(arguments, 1);
  SetState(qorcred::ToInteger(arguments.front()));
  return {};
}

void OptionModel::Join(const std::vector<std::shared_ptr<OptionModel>>& buttons) {
  const auto group = std::make_shared<OptionGroup>(buttons.begin(), buttons.end());
  for (const auto& button : buttons) {
    button->group_ = group;
  }
}

void OptionModel::SetOn(bool on) {
  if (on && group_ != nullptr) {
    for (const auto& member : *group_) {
      if (const auto button = member.lock()) {
        button->on_ = false;
      }
    }
  }
  on_ = on;
}

Value OptionModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 0);
    return Value(on_);
  }
  RequireCount(arguments, 1);
  SetOn(qorcred::ToBoolean(arguments.front()));
  return {};
}

Value LabelModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  return CommonMember(member == ControlMember::kDefault ? ControlMember::kCaption : member, kind,
                      arguments);
}

Value ButtonModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  RefusePut(kind);
  RequireCount(arguments, 0);
  return Value(false);
}

Value SpinnerModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  if (!IsValue(member)) {
    return CommonMember(member, kind, arguments);
  }
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 0);
    return value_;
  }
  RequireCount(arguments, 1);
  value_ = arguments.front();
  return {};
}

ControlArrayModel::ControlArrayModel(std::vector<std::shared_ptr<ControlModel>> controls)
    : controls_(std::move(controls)) {}

void ControlArrayModel::Attach(const std::string& name, const std::shared_ptr<FocusHolder>& focus) {
  for (std::size_t at = 0; at < controls_.size(); ++at) {
    controls_[at]->Attach(fmt::format("{}({})", name, at), focus);
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
      RefusePut(kind);
      RequireCount(arguments, 0);
      return Value(static_cast<std::int32_t>(controls_.size()));
    default:
      throw RuntimeError(ErrorNumber::kUnknownMember);
  }
}

}  // namespace qorhost
