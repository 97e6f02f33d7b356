// What every widget that is bound to a control of a screen has in common.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

#include "host/desktop/binding/pending_shows.h"
#include "host/screens/control_model.h"

namespace qorhost {

/// Told of the widget in which a person changed something.
using EditHandler = std::function<void(QWidget& widget)>;

/// Keeps a widget and a control the same: what changes in the control is shown as PendingShows
/// says, what a person does to the widget is put into the control, and what the control refuses is
/// taken back from the widget. What is shown is never taken for something that a person did. The
/// control and the widget must outlive the binding. One thread.
class ControlBinding : public ShownLater {
 public:
  virtual ~ControlBinding() = default;
  ControlBinding(const ControlBinding&) = delete;
  ControlBinding& operator=(const ControlBinding&) = delete;

  [[nodiscard]] ControlModel& control() const { return control_; }
  [[nodiscard]] QWidget& widget() const { return widget_; }
  void OnEdit(EditHandler handler) { onEdit_ = std::move(handler); }
  /// Puts off what changes from now on until `pending` shows it, which must outlive the binding.
  void ShowLater(PendingShows& pending) { pending_ = &pending; }
  void Flush() override;

 protected:
  ControlBinding(ControlModel& control, QWidget& widget);

  /// Shows all that the control holds; for the end of a constructor.
  void ShowAll();
  /// Shows the control's own state after a change of that kind; ShowAll() asks for every kind.
  virtual void ShowOwn(ChangeKind kind) = 0;
  /// Shows a caption that the controller gave; widgets without one leave it.
  virtual void ShowCaption(const QString& caption) { (void)caption; }
  /// The context of connections to the widget, which outlives the binding: they end with it.
  [[nodiscard]] QObject* context() { return &context_; }
  /// Whether a change of that kind is not shown yet.
  [[nodiscard]] bool isPending(ChangeKind kind) const { return (changed_ & BitOf(kind)) != 0; }
  /// Puts what a person did into the control.
  void Put(const std::function<void()>& put);

 private:
  static unsigned BitOf(ChangeKind kind) { return 1U << static_cast<unsigned>(kind); }
  void Note(ChangeKind kind);
  void Show(ChangeKind kind);
  void ShowState();
  void ShowLook();

  ControlModel& control_;
  QWidget& widget_;
  EditHandler onEdit_;
  PendingShows* pending_ = nullptr;
  unsigned changed_ = 0;  // a bit for each kind of change that is not shown yet
  QObject context_;
  Subscription changes_;
};

}  // namespace qorhost
