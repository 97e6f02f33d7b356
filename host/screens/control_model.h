// What every in-memory control has, and the table of member names that all of them share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "frame/object.h"
#include "host/screens/change.h"
#include "host/screens/control_state.h"

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

/// What a screen shares with its controls: which of them has the input focus, and who observes all
/// of them.
struct ScreenLink {
  std::string focused;
  Observers observers;
};

/// Base of the in-memory controls. Common members: Enabled, Visible (Boolean), BackColor, Width
/// (Long), Caption (String), Name (get), SetFocus. SetFocus on a control that is disabled or hidden
/// raises kInvalidProcedureCall, as a real one does. A member that the control does not have raises
/// kUnknownMember, so does a put on a read-only one; a wrong number of arguments raises
/// kWrongArgumentCount. Reading and calling are the same, as late-bound clients cannot tell.
class ControlModel : public qorcred::Object {
 public:
  explicit ControlModel(OwnState own = NoState{}) : held_{{}, std::move(own)} {}

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) final;

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] bool enabled() const { return held_.common.enabled; }
  [[nodiscard]] bool visible() const { return held_.common.visible; }
  [[nodiscard]] std::int32_t backColor() const { return held_.common.backColor; }
  [[nodiscard]] std::int32_t width() const { return held_.common.width; }
  [[nodiscard]] const std::string& caption() const { return held_.common.caption; }
  void SetEnabled(bool enabled) { Assign(held_.common.enabled, enabled, ChangeKind::kState); }
  void SetVisible(bool visible) { Assign(held_.common.visible, visible, ChangeKind::kState); }
  void SetBackColor(std::int32_t color) {
    Assign(held_.common.backColor, color, ChangeKind::kLook);
  }
  void SetWidth(std::int32_t twips) { Assign(held_.common.width, twips, ChangeKind::kLook); }
  void SetCaption(std::string caption) {
    Assign(held_.common.caption, std::move(caption), ChangeKind::kLook);
  }
  /// Takes the input focus; raises kInvalidProcedureCall when the control cannot have it.
  void SetFocus();

  /// Calls the handler after every change of this control, before the screen's observers hear of
  /// it. Nothing is told when a value is put that the control has already. The control must not be
  /// destroyed by a handler.
  [[nodiscard]] Subscription Observe(ChangeHandler handler) {
    return observers_.Add(std::move(handler));
  }
  /// Whether anybody observes the control or its screen.
  [[nodiscard]] bool observed() const {
    return !observers_.empty() || (link_ != nullptr && !link_->observers.empty());
  }

  /// All that the control holds now.
  [[nodiscard]] const ControlState& held() const { return held_; }

  /// Gives the control its name and its screen's link; the screen does so when it takes it in.
  void Attach(std::string name, std::shared_ptr<ScreenLink> link);
  /// Puts a state back that fits, telling nobody: the screen does so, and then tells of all.
  void PutBack(const ControlState& state) { held_ = state; }
  /// Tells the observers of a change.
  void Tell(ChangeKind kind, bool restored = false);

 protected:
  /// Answers the control's own members; asks CommonMember() for the others.
  virtual qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                                   qorcred::Arguments arguments) = 0;
  qorcred::Value CommonMember(ControlMember member, qorcred::InvokeKind kind,
                              qorcred::Arguments arguments);
  /// What the control holds besides the common members; of the kind given to the constructor.
  template <typename State>
  [[nodiscard]] State& Own() {
    return std::get<State>(held_.own);
  }
  template <typename State>
  [[nodiscard]] const State& Own() const {
    return std::get<State>(held_.own);
  }

  /// Writes a field and tells of it when it was another.
  template <typename Field>
  void Assign(Field& field, Field value, ChangeKind kind) {
    if (!(field == value)) {
      field = std::move(value);
      Tell(kind);
    }
  }

 private:
  std::string name_;
  std::shared_ptr<ScreenLink> link_;
  ControlState held_;
  Observers observers_;
};

/// Raises kWrongArgumentCount unless there are `count` arguments.
void RequireCount(qorcred::Arguments arguments, std::size_t count);

/// A property that is read without arguments and written with one, which `put` takes.
template <typename Held, typename Put>
qorcred::Value Property(const Held& held, qorcred::InvokeKind kind, qorcred::Arguments arguments,
                        Put put) {
  if (kind == qorcred::InvokeKind::kPut) {
    RequireCount(arguments, 1);
    put(arguments.front());
    return {};
  }
  RequireCount(arguments, 0);
  return qorcred::Value(held);
}

/// A member that is read or called without arguments. Raises for anything else.
void RequireRead(qorcred::InvokeKind kind, qorcred::Arguments arguments);

/// Raises kUnknownMember for a put on a member that can only be read or called.
void RefusePut(qorcred::InvokeKind kind);

}  // namespace qorhost
