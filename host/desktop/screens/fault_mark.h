// Shows at a widget what is wrong with it.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QWidget>

namespace qorhost {

/// A frame around the widget and a note under it, above the other widgets of the page. Both follow
/// the widget and are gone with Clear(). A screen reader hears the note as the widget's
/// description.
class FaultMark final : public QWidget {
 public:
  /// The page holds the widgets that can be marked, and owns the mark.
  explicit FaultMark(QWidget& page);

  void Show(QWidget& widget, const QString& why);
  void Clear();
  /// The widget that is marked; null without one.
  [[nodiscard]] QWidget* marked() const { return marked_; }
  [[nodiscard]] QString why() const { return marked_ == nullptr ? QString() : note_->text(); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Place();

  QWidget& page_;
  QLabel* note_;
  QPointer<QWidget> marked_;
};

}  // namespace qorhost
