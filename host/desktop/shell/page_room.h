// The place of the screens in the window.
#pragma once

#include <QScrollArea>

namespace qorhost {

/// The screens get at least what they need; what does not fit beside the rest of the window on the
/// computer's screen, as with text of twice the size, is scrolled.
class PageRoom final : public QScrollArea {
 public:
  /// `pages` is its own then; `beside` stands beside it in the window, and must outlive it.
  PageRoom(QWidget* pages, const QWidget& beside, QWidget* parent = nullptr);

  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Fit();

  const QWidget& beside_;
};

/// The part of a computer's screen that a window may take: of a very small one, more than all.
[[nodiscard]] QRect RoomOnScreen(const QWidget& window);

}  // namespace qorhost
