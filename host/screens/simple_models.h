// The controls with one value or none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/screens/control_model.h"

namespace qorhost {

/// Members: Text (the default member), MaxLength. With a MaxLength above 0 a text is cut to that
/// many UTF-16 units; a negative one raises kInvalidProcedureCall.
class TextModel final : public ControlModel {
 public:
  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::int32_t maxLength() const { return maxLength_; }
  void SetText(std::string text);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  std::string text_;
  std::int32_t maxLength_ = 0;
};

/// Member: Value (the default member), 0 unchecked, 1 checked, 2 grayed; any other number raises
/// kInvalidProcedureCall. Reads as an Integer.
class CheckModel final : public ControlModel {
 public:
  [[nodiscard]] std::int16_t state() const { return state_; }
  void SetState(std::int16_t state);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  std::int16_t state_ = 0;
};

class OptionModel;

/// The option buttons of which at most one is True; they share it.
using OptionGroup = std::vector<std::weak_ptr<OptionModel>>;

/// Member: Value (the default member), Boolean. Setting a button True sets the other buttons of its
/// group False.
class OptionModel final : public ControlModel {
 public:
  [[nodiscard]] bool on() const { return on_; }
  void SetOn(bool on);

  /// Makes one group of the buttons.
  static void Join(const std::vector<std::shared_ptr<OptionModel>>& buttons);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  std::shared_ptr<OptionGroup> group_;
  bool on_ = false;
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
 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  qorcred::Value value_ = std::int32_t{0};
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
  void Attach(const std::string& name, const std::shared_ptr<FocusHolder>& focus);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::vector<std::shared_ptr<ControlModel>> controls_;
};

}  // namespace qorhost
