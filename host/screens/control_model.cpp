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

constexpr std::int32_t kWindowBackground = static_cast<std::int32_t>(0x80000005U);
constexpr std::int32_t kDefaultWidth = 1215;  // in twips, the unit of the screens' designer

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

ControlModel::ControlModel() : backColor_(kWindowBackground), width_(kDefaultWidth) {}

void ControlModel::Attach(std::string name, std::shared_ptr<FocusHolder> focus) {
  name_ = std::move(name);
  focus_ = std::move(focus);
}

void ControlModel::SetFocus() {
  if (!enabled_ || !visible_) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  if (focus_ != nullptr) {
    focus_->focused = name_;
  }
}

Value ControlModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  return OwnMember(FindControlMember(member), kind, arguments);
}

Value ControlModel::CommonMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kEnabled:
      return Property(enabled_, kind, arguments, qorcred::ToBoolean);
    case ControlMember::kVisible:
      return Property(visible_, kind, arguments, qorcred::ToBoolean);
    case ControlMember::kBackColor:
      return Property(backColor_, kind, arguments, qorcred::ToLong);
    case ControlMember::kWidth:
      return Property(width_, kind, arguments, qorcred::ToLong);
    case ControlMember::kCaption:
      return Property(caption_, kind, arguments,
                      [](const Value& caption) { return qorcred::ToText(caption); });
    case ControlMember::kName:
      RefusePut(kind);
      RequireCount(arguments, 0);
      return Value(name_);
    case ControlMember::kSetFocus:
      RefusePut(kind);
      RequireCount(arguments, 0);
      SetFocus();
      return {};
    default:
      throw RuntimeError(ErrorNumber::kUnknownMember);
  }
}

}  // namespace qorhost
