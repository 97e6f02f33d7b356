// A screen in memory: its controls and its public variables by name.
#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/object.h"
#include "host/screens/change.h"
#include "host/screens/list_model.h"
#include "host/screens/picker_model.h"
#include "host/screens/screen_snapshot.h"
#include "host/screens/simple_models.h"

namespace qorhost {

/// Members: every control (get; its default member when arguments or a value are handed over),
/// every variable (get/put) and Name (get). Letter case does not count; names keep the spelling
/// with which they were added. A variable converts what is put to the type of its initial value;
/// one that starts Empty takes anything. An unknown name raises kUnknownMember.
class ScreenModel final : public qorcred::Object {
 public:
  explicit ScreenModel(std::string name);
  ScreenModel(const ScreenModel&) = delete;
  ScreenModel& operator=(const ScreenModel&) = delete;

  /// Takes a control in under a name; a name that is taken already raises kInvalidProcedureCall.
  /// Returns the control.
  template <typename Kind>
  std::shared_ptr<Kind> Add(std::string name, std::shared_ptr<Kind> control) {
    AddMember(name, {control, {}});
    AttachTo(name, *control);
    return control;
  }
  /// Takes a new control of one kind in under each name.
  template <typename Kind>
  void AddAll(std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) Add(std::string(name), std::make_shared<Kind>());
  }
  /// Declares a public variable with its initial value.
  void AddVariable(std::string name, qorcred::Value initial);

  [[nodiscard]] const std::string& name() const { return name_; }
  /// The name of the control that got the focus last; "" at first.
  [[nodiscard]] const std::string& focused() const { return link_->focused; }
  void ClearFocus();
  /// The spelling under which a control or variable was added; "" when there is none.
  [[nodiscard]] std::string_view SpelledName(std::string_view name) const;
  /// All controls, also those of arrays ("cboField(0)"), in the order in which they were taken in.
  [[nodiscard]] const std::vector<ControlModel*>& controls() const { return controls_; }
  /// The names of all controls and variables, by letter.
  [[nodiscard]] std::vector<std::string_view> Names() const;

  /// A control by name and kind; raises kUnknownMember when there is none of that name and
  /// kTypeMismatch when it is of another kind.
  template <typename Kind>
  [[nodiscard]] Kind& Get(std::string_view name) const {
    return Cast<Kind>(Find(name).control);
  }
  [[nodiscard]] ListModel& List(std::string_view name) const { return Get<ListModel>(name); }
  [[nodiscard]] TextModel& Box(std::string_view name) const { return Get<TextModel>(name); }
  [[nodiscard]] PickerModel& Date(std::string_view name) const { return Get<PickerModel>(name); }
  [[nodiscard]] CheckModel& Check(std::string_view name) const { return Get<CheckModel>(name); }
  [[nodiscard]] OptionModel& Option(std::string_view name) const { return Get<OptionModel>(name); }
  [[nodiscard]] SpinnerModel& Spin(std::string_view name) const { return Get<SpinnerModel>(name); }
  [[nodiscard]] ControlModel& Any(std::string_view name) const { return Get<ControlModel>(name); }
  [[nodiscard]] const qorcred::Value& Variable(std::string_view name) const;
  void SetVariable(std::string_view name, const qorcred::Value& value);

  /// Calls the handler after every change of a control or variable, behind the control's own
  /// observers. Nothing is told when a value is put that is there already. The screen must not be
  /// destroyed by a handler.
  [[nodiscard]] Subscription Observe(ChangeHandler handler) {
    return link_->observers.Add(std::move(handler));
  }

  /// All that the screen holds now.
  [[nodiscard]] ScreenSnapshot Snapshot() const;
  /// Puts the screen back as it was at a snapshot, then tells of every control and variable that
  /// was not so, marked as restored. Raises kInvalidProcedureCall, with nothing changed, for the
  /// snapshot of a screen with other controls or variables.
  void Restore(const ScreenSnapshot& snapshot);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  /// A control, or a variable when there is no control.
  struct Member {
    qorcred::ObjectRef control;
    qorcred::Value variable;
  };
  struct NameLess {
    using is_transparent = void;
    bool operator()(std::string_view one, std::string_view other) const noexcept;
  };

  void AttachTo(const std::string& name, ControlModel& control);
  void AttachTo(const std::string& name, ControlArrayModel& controls);
  void AddMember(std::string name, Member member);
  [[nodiscard]] const Member& Find(std::string_view name) const;
  [[nodiscard]] bool Fits(const ScreenSnapshot& snapshot) const;
  void PutBack(const ScreenSnapshot& snapshot);
  [[nodiscard]] std::vector<Change> ChangesTo(const ScreenSnapshot& snapshot) const;

  template <typename Kind>
  [[nodiscard]] static Kind& Cast(const qorcred::ObjectRef& object) {
    auto* control = dynamic_cast<Kind*>(object.get());
    if (control == nullptr) {
      RaiseWrongKind();
    }
    return *control;
  }
  [[noreturn]] static void RaiseWrongKind();

  std::string name_;
  std::shared_ptr<ScreenLink> link_;
  std::map<std::string, Member, NameLess> members_;
  std::unordered_map<std::string_view, Member*>
      bySpelling_;                       // of members_, as they are mostly asked
  std::vector<ControlModel*> controls_;  // all, also those of arrays; members_ owns them
};

}  // namespace qorhost
