// The controls with one value or none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/screens/control_model.h"

namespace qorhost {

/// Members: Text (the default member), MaxLength. With a MaxLength above 0 a text is cut to that
/// many UTF-16 units; a negative one raises kInvalidProcedureCall.
class TextModel final : public ControlModel {
 public:
  TextModel() : ControlModel(TextState{}) {}

  [[nodiscard]] const std::string& text() const { return Own<TextState>().text; }
  [[nodiscard]] std::int32_t maxLength() const { return Own<TextState>().maxLength; }
  void SetText(std::string text);
  /// Cuts the text, too. Raises kInvalidProcedureCall for a negative length.
  void SetMaxLength(std::int32_t length);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;
};

/// Member: Value (the default member), 0 unchecked, 1 checked, 2 grayed; any other number raises
/// kInvalidProcedureCall. Reads as an Integer.
class CheckModel final : public ControlModel {
 public:
  CheckModel() : ControlModel(CheckState{}) {}

  [[nodiscard]] std::int16_t state() const { return Own<CheckState>().state; }
  void SetState(std::int16_t state);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;
};

class OptionModel;

/// The option buttons of which at most one is True; they share it.
using OptionGroup = std::vector<std::weak_ptr<OptionModel>>;

/// Member: Value (the default member), Boolean. Setting a button True sets the other buttons of its
/// group False.
class OptionModel final : public ControlModel {
 public:
  OptionModel() : ControlModel(OptionState{}) {}

  [[nodiscard]] bool on() const { return Own<OptionState>().on; }
  void SetOn(bool on);

  /// Makes one group of the buttons.
  static void Join(const std::vector<std::shared_ptr<OptionModel>>& buttons);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  std::shared_ptr<OptionGroup> group_;
};

/// Caption and the other common members; Caption is the default member.
class LabelModel : public ControlModel {
 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;
};

/// A push button: the common members, and Value (the default member), which reads False.
class ButtonModel final : public ControlModel {
 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;
};

/// A number box: Value (the default member), any value as it was put; 0 at first.
class SpinnerModel final : public ControlModel {
 public:
  SpinnerModel() : ControlModel(SpinnerState{}) {}

  [[nodiscard]] const qorcred::Value& value() const { return Own<SpinnerState>().value; }
  void SetValue(qorcred::Value value) {
    Assign(Own<SpinnerState>().value, std::move(value), ChangeKind::kValue);
  }

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;
};

/// Controls that share a name. Members: the default member with an index from 0 (get), Count. An
/// index outside raises kIndexOutOfRange. It has none of the common members.
class ControlArrayModel final : public qorcred::Object {
 public:
  explicit ControlArrayModel(std::vector<std::shared_ptr<ControlModel>> controls);

  [[nodiscard]] std::size_t size() const { return controls_.size(); }
  [[nodiscard]] const std::shared_ptr<ControlModel>& at(std::size_t index) const {
    return controls_.at(index);
  }
  /// Names its controls "name(0)", "name(1)", ...
  void Attach(const std::string& name, const std::shared_ptr<ScreenLink>& link);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::vector<std::shared_ptr<ControlModel>> controls_;
};

}  // namespace qorhost
