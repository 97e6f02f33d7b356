#include "host/desktop/binding/control_binding.h"

#include <QLabel>
#include <QPalette>
#include <QPointer>
#include <array>
#include <utility>

#include "frame/runtime_error.h"
#include "host/desktop/binding/qt_text.h"

namespace qorhost {

namespace {

/// In the order in which they are shown.
constexpr std::array kShown{ChangeKind::kItems,     ChangeKind::kLimits, ChangeKind::kValue,
                            ChangeKind::kSelection, ChangeKind::kState,  ChangeKind::kLook};

constexpr std::uint32_t kWindowBackground = 0x80000005U;
constexpr std::uint32_t kButtonFace = 0x8000000FU;
constexpr std::uint32_t kSystemColors = 0x80000000U;

/// A colour as controllers write it: 0x00BBGGRR.
QColor ColorOf(std::uint32_t color) {
  constexpr std::uint32_t kByte = 0xFFU;
  return {static_cast<int>(color & kByte), static_cast<int>((color >> 8U) & kByte),
          static_cast<int>((color >> 16U) & kByte)};
}

/// The labels that name the widget: they come and go with it.
QList<QLabel*> LabelsOf(const QWidget& widget) {
  QList<QLabel*> named;
  const QWidget* form = widget.parentWidget();
  if (form == nullptr) {
    return named;
  }
  for (QLabel* label : form->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (label->buddy() == &widget) {
      named.append(label);
    }
  }
  return named;
}

}  // namespace

ControlBinding::ControlBinding(ControlModel& control, QWidget& widget)
    : control_(control), widget_(widget) {
  changes_ = control_.Observe([this](const Change& change) { Note(change.kind); });
}

void ControlBinding::ShowAll() {
  changed_ = 0;
  for (const ChangeKind kind : kShown) {
    Show(kind);
  }
}

void ControlBinding::Note(ChangeKind kind) {
  if (pending_ == nullptr || kind == ChangeKind::kVariable) {
    Show(kind);
    return;
  }
  if (kind == ChangeKind::kFocus) {
    Flush();  // whether the widget can have it
    Show(kind);
    return;
  }
  if (changed_ == 0) {
    pending_->Note(*this);
  }
  changed_ |= BitOf(kind);
}

void ControlBinding::Flush() {
  const unsigned changed = std::exchange(changed_, 0);
  for (const ChangeKind kind : kShown) {
    if ((changed & BitOf(kind)) != 0) {
      Show(kind);
    }
  }
}

void ControlBinding::Put(const std::function<void()>& put) {
  const QPointer<QWidget> there(&widget_);
  try {
    put();
  } catch (const qorcred::RuntimeError&) {
    ShowAll();  // the control does not take it and is as it was
    return;
  }
  if (there == nullptr) {
    return;
  }
  Flush();  // the control may have made something else of it
  if (onEdit_) {
    onEdit_(widget_);
  }
}

void ControlBinding::Show(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::kState:
      ShowState();
      break;
    case ChangeKind::kLook:
      ShowLook();
      break;
    case ChangeKind::kFocus:
      if (widget_.isVisible()) {
        widget_.setFocus(Qt::OtherFocusReason);
      }
      break;
    case ChangeKind::kVariable:
      break;
    case ChangeKind::kValue:
    case ChangeKind::kLimits:
    case ChangeKind::kItems:
    case ChangeKind::kSelection:
      ShowOwn(kind);
      break;
  }
}

void ControlBinding::ShowState() {
  widget_.setEnabled(control_.enabled());
  widget_.setVisible(control_.visible());
  for (QLabel* label : LabelsOf(widget_)) {
    label->setVisible(control_.visible());
  }
}

void ControlBinding::ShowLook() {
  if (!control_.caption().empty()) {
    ShowCaption(ToQt(control_.caption()));
  }
  // The width is for another font: layouts decide. The two system colours are the palette's.
  const auto color = static_cast<std::uint32_t>(control_.backColor());
  QPalette palette;
  if (color == kButtonFace) {
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
  } else if (color != kWindowBackground && (color & kSystemColors) == 0) {
    palette.setColor(QPalette::Base, ColorOf(color));
  } else {
    widget_.setPalette({});
    return;
  }
  widget_.setPalette(palette);
}

}  // namespace qorhost
