// Bindings of the widgets with one value or none.
#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

#include "host/desktop/binding/control_binding.h"
#include "host/screens/simple_models.h"

namespace qorhost {

/// What is typed goes into the box as it is typed, cut as the box cuts it.
class TextBinding final : public ControlBinding {
 public:
  TextBinding(TextModel& box, QLineEdit& edit);

 private:
  void ShowOwn(ChangeKind kind) override;

  TextModel& box_;
  QLineEdit& edit_;
};

/// A grayed box is shown half checked; a person checks or unchecks it.
class CheckBinding final : public ControlBinding {
 public:
  CheckBinding(CheckModel& box, QCheckBox& check);

 private:
  void ShowOwn(ChangeKind kind) override;
  void ShowCaption(const QString& caption) override { check_.setText(caption); }

  CheckModel& box_;
  QCheckBox& check_;
};

/// One button of a group: the models know which of them exclude each other, the widgets do not.
class OptionBinding final : public ControlBinding {
 public:
  OptionBinding(OptionModel& option, QRadioButton& button);

 private:
  void ShowOwn(ChangeKind kind) override;
  void ShowCaption(const QString& caption) override { button_.setText(caption); }

  OptionModel& option_;
  QRadioButton& button_;
};

/// A value that is no whole number, or outside the widget's range, is shown as the nearest that it
/// has; it stays as it is until a person changes it.
class SpinnerBinding final : public ControlBinding {
 public:
  SpinnerBinding(SpinnerModel& spinner, QSpinBox& box);

 private:
  void ShowOwn(ChangeKind kind) override;

  SpinnerModel& spinner_;
  QSpinBox& box_;
};

/// A caption that nobody gave stays that of the form.
class LabelBinding final : public ControlBinding {
 public:
  LabelBinding(LabelModel& label, QLabel& shown) : ControlBinding(label, shown), shown_(shown) {
    ShowAll();
  }

 private:
  void ShowOwn(ChangeKind /*kind*/) override {}
  void ShowCaption(const QString& caption) override { shown_.setText(caption); }

  QLabel& shown_;
};

/// Whoever runs what the button stands for listens to the widget.
class ButtonBinding final : public ControlBinding {
 public:
  ButtonBinding(ButtonModel& button, QAbstractButton& shown)
      : ControlBinding(button, shown), shown_(shown) {
    ShowAll();
  }

 private:
  void ShowOwn(ChangeKind /*kind*/) override {}
  void ShowCaption(const QString& caption) override { shown_.setText(caption); }

  QAbstractButton& shown_;
};

}  // namespace qorhost
