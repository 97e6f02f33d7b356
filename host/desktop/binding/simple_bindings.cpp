#include "host/desktop/binding/simple_bindings.h"

#include <QSignalBlocker>
#include <algorithm>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/desktop/binding/qt_text.h"

namespace qorhost {

namespace {

constexpr std::int16_t kChecked = 1;
constexpr std::int16_t kGrayed = 2;

/// The number nearest to the value that the box can show.
int NearestIn(const QSpinBox& box, const qorcred::Value& value) {
  try {
    return static_cast<int>(std::clamp(qorcred::RoundHalfToEven(qorcred::NumericValue(value)),
                                       static_cast<double>(box.minimum()),
                                       static_cast<double>(box.maximum())));
  } catch (const qorcred::RuntimeError&) {
    return box.minimum();
  }
}

}  // namespace

TextBinding::TextBinding(TextModel& box, QLineEdit& edit)
    : ControlBinding(box, edit), box_(box), edit_(edit) {
  QObject::connect(&edit_, &QLineEdit::textEdited, context(), [this](const QString& text) {
    Put([this, &text] { box_.SetText(FromQt(text)); });
    ShowOwn(ChangeKind::kValue);  // the box may have cut it
  });
  ShowAll();
}

void TextBinding::ShowOwn(ChangeKind /*kind*/) {
  // The box itself cuts: the widget would cut characters of two units in half.
  const QString text = ToQt(box_.text());
  if (edit_.text() != text) {
    const int cursor = edit_.cursorPosition();
    edit_.setText(text);
    edit_.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
  }
}

CheckBinding::CheckBinding(CheckModel& box, QCheckBox& check)
    : ControlBinding(box, check), box_(box), check_(check) {
  QObject::connect(&check_, &QCheckBox::clicked, context(), [this](bool checked) {
    check_.setTristate(false);
    Put([this, checked] { box_.SetState(checked ? kChecked : std::int16_t{0}); });
  });
  ShowAll();
}

void CheckBinding::ShowOwn(ChangeKind /*kind*/) {
  const QSignalBlocker quiet(check_);
  check_.setTristate(box_.state() == kGrayed);
  check_.setCheckState(box_.state() == kChecked  ? Qt::Checked
                       : box_.state() == kGrayed ? Qt::PartiallyChecked
                                                 : Qt::Unchecked);
}

OptionBinding::OptionBinding(OptionModel& option, QRadioButton& button)
    : ControlBinding(option, button), option_(option), button_(button) {
  QObject::connect(&button_, &QRadioButton::clicked, context(),
                   [this] { Put([this] { option_.SetOn(true); }); });
  ShowAll();
}

void OptionBinding::ShowOwn(ChangeKind /*kind*/) {
  const QSignalBlocker quiet(button_);
  // An exclusive button cannot be switched off by itself.
  const bool exclusive = button_.autoExclusive();
  button_.setAutoExclusive(false);
  button_.setChecked(option_.on());
  button_.setAutoExclusive(exclusive);
}

SpinnerBinding::SpinnerBinding(SpinnerModel& spinner, QSpinBox& box)
    : ControlBinding(spinner, box), spinner_(spinner), box_(box) {
  QObject::connect(&box_, &QSpinBox::valueChanged, context(), [this](int value) {
    Put([this, value] { spinner_.SetValue(qorcred::Value(static_cast<std::int32_t>(value))); });
  });
  ShowAll();
}

void SpinnerBinding::ShowOwn(ChangeKind /*kind*/) {
  const QSignalBlocker quiet(box_);
  box_.setValue(NearestIn(box_, spinner_.value()));
}

}  // namespace qorhost
