// What every in-memory control has, and the table of member names that all of them share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "frame/object.h"

namespace qorhost {

/// Every member that some control has.
enum class ControlMember : std::uint8_t {
  kUnknown,
  kDefault,  ///< the empty name
  kAddItem,
  kBackColor,
  kCaption,
  kClear,
  kCount,
  kDay,
  kEnabled,
  kHour,
  kItemData,
  kList,
  kListCount,
  kListIndex,
  kMaxDate,
  kMaxLength,
  kMinDate,
  kMinute,
  kMonth,
  kName,
  kNewIndex,
  kRemoveItem,
  kSecond,
  kSetFocus,
  kText,
  kValue,
  kVisible,
  kWidth,
  kYear,
};

/// The member of that name, letter case not counting; kUnknown when there is none.
[[nodiscard]] ControlMember FindControlMember(std::string_view name) noexcept;

/// Which control of a screen has the input focus; shared by the screen and its controls.
struct FocusHolder {
  std::string focused;
};

/// Base of the in-memory controls. Common members: Enabled, Visible (Boolean), BackColor, Width
/// (Long), Caption (String), Name (get), SetFocus. SetFocus on a control that is disabled or hidden
/// raises kInvalidProcedureCall, as a real one does. A member that the control does not have raises
/// kUnknownMember, so does a put on a read-only one; a wrong number of arguments raises
/// kWrongArgumentCount. Reading and calling are the same, as late-bound clients cannot tell.
class ControlModel : public qorcred::Object {
 public:
  ControlModel();

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) final;

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] bool enabled() const { return enabled_; }
  [[nodiscard]] bool visible() const { return visible_; }
  [[nodiscard]] std::int32_t backColor() const { return backColor_; }
  [[nodiscard]] const std::string& caption() const { return caption_; }
  void SetEnabled(bool enabled) { enabled_ = enabled; }
  void SetVisible(bool visible) { visible_ = visible; }
  void SetCaption(std::string caption) { caption_ = std::move(caption); }

  /// Gives the control its name and its screen's focus; the screen does so when it takes it in.
  void Attach(std::string name, std::shared_ptr<FocusHolder> focus);
  /// Takes the input focus; raises kInvalidProcedureCall when the control cannot have it.
  void SetFocus();

 protected:
  /// Answers the control's own members; asks CommonMember() for the others.
  virtual qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                                   qorcred::Arguments arguments) = 0;
  qorcred::Value CommonMember(ControlMember member, qorcred::InvokeKind kind,
                              qorcred::Arguments arguments);

 private:
  std::string name_;
  std::shared_ptr<FocusHolder> focus_;
  std::string caption_;
  std::int32_t backColor_;
  std::int32_t width_;
  bool enabled_ = true;
  bool visible_ = true;
};

/// Raises kWrongArgumentCount unless there are `count` arguments.
void RequireCount(qorcred::Arguments arguments, std::size_t count);

/// A property that is read without arguments and written with one.
template <typename Field, typename Convert>
qorcred::Value Property(Field& field, qorcred::InvokeKind kind, qorcred::Arguments arguments,
                        Convert convert) {
  if (kind == qorcred::InvokeKind::kPut) {
    RequireCount(arguments, 1);
    field = convert(arguments.front());
    return {};
  }
  RequireCount(arguments, 0);
  return qorcred::Value(field);
}

/// Raises kUnknownMember for a put on a member that can only be read or called.
void RefusePut(qorcred::InvokeKind kind);

}  // namespace qorhost
