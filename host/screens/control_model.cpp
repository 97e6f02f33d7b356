#include "host/screens/control_model.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::Value;

namespace {

struct MemberName {
  std::string_view name;
  ControlMember member;
};

// By length, so that a look-up compares only the few names of the right length.
constexpr std::array kMemberNames{
    MemberName{"Day", ControlMember::kDay},
    MemberName{"Text", ControlMember::kText},
    MemberName{"Name", ControlMember::kName},
    MemberName{"List", ControlMember::kList},
    MemberName{"Hour", ControlMember::kHour},
    MemberName{"Year", ControlMember::kYear},
    MemberName{"Value", ControlMember::kValue},
    MemberName{"Clear", ControlMember::kClear},
    MemberName{"Count", ControlMember::kCount},
    MemberName{"Month", ControlMember::kMonth},
    MemberName{"Width", ControlMember::kWidth},
    MemberName{"Minute", ControlMember::kMinute},
    MemberName{"Second", ControlMember::kSecond},
    MemberName{"AddItem", ControlMember::kAddItem},
    MemberName{"Enabled", ControlMember::kEnabled},
    MemberName{"Visible", ControlMember::kVisible},
    MemberName{"Caption", ControlMember::kCaption},
    MemberName{"MaxDate", ControlMember::kMaxDate},
    MemberName{"MinDate", ControlMember::kMinDate},
    MemberName{"ItemData", ControlMember::kItemData},
    MemberName{"NewIndex", ControlMember::kNewIndex},
    MemberName{"SetFocus", ControlMember::kSetFocus},
    MemberName{"ListIndex", ControlMember::kListIndex},
    MemberName{"ListCount", ControlMember::kListCount},
    MemberName{"BackColor", ControlMember::kBackColor},
    MemberName{"MaxLength", ControlMember::kMaxLength},
    MemberName{"RemoveItem", ControlMember::kRemoveItem},
};
static_assert(std::is_sorted(kMemberNames.begin(), kMemberNames.end(),
                             [](const MemberName& one, const MemberName& other) {
                               return one.name.size() < other.name.size();
                             }));

constexpr std::size_t kLongestName = kMemberNames.back().name.size();

/// kFirstOfLength[n] is where the names of n characters start, kFirstOfLength[n + 1] where they
/// end.
constexpr auto kFirstOfLength = [] {
  std::array<std::size_t, kLongestName + 2> first{};
  for (std::size_t length = 0; length < first.size(); ++length) {
    std::size_t at = 0;
    while (at < kMemberNames.size() && kMemberNames[at].name.size() < length) {
      ++at;
    }
    first[length] = at;
  }
  return first;
}();

}  // namespace

ControlMember FindControlMember(std::string_view name) noexcept {
  if (name.empty()) {
    return ControlMember::kDefault;
  }
  if (name.size() > kLongestName) {
    return ControlMember::kUnknown;
  }
  for (std::size_t at = kFirstOfLength[name.size()]; at < kFirstOfLength[name.size() + 1]; ++at) {
    if (qorcred::SameMember(kMemberNames[at].name, name)) {
      return kMemberNames[at].member;
    }
  }
  return ControlMember::kUnknown;
}

void RequireCount(Arguments arguments, std::size_t count) {
  if (arguments.size() != count) {
    throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  }
}

void RefusePut(InvokeKind kind) {
  if (kind == InvokeKind::kPut) {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
}

void RequireRead(InvokeKind kind, Arguments arguments) {
  RefusePut(kind);
  RequireCount(arguments, 0);
}

void ControlModel::Attach(std::string name, std::shared_ptr<ScreenLink> link) {
  name_ = std::move(name);
  link_ = std::move(link);
}

void ControlModel::SetFocus() {
  if (!enabled() || !visible()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  if (link_ != nullptr && link_->focused != name_) {
    link_->focused = name_;
    Tell(ChangeKind::kFocus);
  }
}

void ControlModel::Tell(ChangeKind kind, bool restored) {
  if (!observed()) {
    return;
  }
  const Change change{name_, this, kind, restored};
  observers_.Notify(change);
  if (link_ != nullptr) {
    link_->observers.Notify(change);
  }
}

Value ControlModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  return OwnMember(FindControlMember(member), kind, arguments);
}

Value ControlModel::CommonMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kEnabled:
      return Property(enabled(), kind, arguments,
                      [this](const Value& put) { SetEnabled(qorcred::ToBoolean(put)); });
    case ControlMember::kVisible:
      return Property(visible(), kind, arguments,
                      [this](const Value& put) { SetVisible(qorcred::ToBoolean(put)); });
    case ControlMember::kBackColor:
      return Property(backColor(), kind, arguments,
                      [this](const Value& put) { SetBackColor(qorcred::ToLong(put)); });
    case ControlMember::kWidth:
      return Property(width(), kind, arguments,
                      [this](const Value& put) { SetWidth(qorcred::ToLong(put)); });
    case ControlMember::kCaption:
      return Property(caption(), kind, arguments,
                      [this](const Value& put) { SetCaption(qorcred::ToText(put)); });
    case ControlMember::kName:
      RequireRead(kind, arguments);
      return Value(name_);
    case ControlMember::kSetFocus:
      RequireRead(kind, arguments);
      SetFocus();
      return {};
    default:
      throw RuntimeError(ErrorNumber::kUnknownMember);
  }
}

}  // namespace qorhost
