// How far a long operation has come, and the button that stops it.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>
#include <cstdint>

namespace qorhost {

/// Hidden until it is told of something.
class BusyBar final : public QWidget {
  Q_OBJECT

 public:
  explicit BusyBar(QWidget* parent = nullptr);

  [[nodiscard]] QPushButton& cancelButton() { return *cancel_; }
  /// A `total` of 0 or less is not known.
  void Tell(const QString& what, std::int64_t done, std::int64_t total);
  /// Another program is writing, and the operation waits for it.
  void TellWaiting();
  void Finish();

 private:
  QLabel* what_;
  QProgressBar* bar_;
  QPushButton* cancel_;
};

}  // namespace qorhost
