// When somebody who types into a line that finds rows has stopped for a moment.
#pragma once

#include <QLineEdit>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

namespace qorhost {

/// Owned by the line.
class TypingPause final : public QObject {
 public:
  /// `find` is called a moment after the last change of the line, and with Return at once: with
  /// `next` when it was called for this text before.
  TypingPause(QLineEdit& line, std::function<void(bool next)> find);

  /// From now on it is called before the line is left, and before a key with Alt or Control: what
  /// a person does next is done to what was found.
  void EndWhenLeft();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Find(bool next);

  QLineEdit& line_;
  std::function<void(bool next)> find_;
  QTimer pause_;
};

/// Has rows narrowed to the text of the line, at its pauses.
void NarrowBy(QLineEdit& line, std::function<void(const QString& text)> narrow);

}  // namespace qorhost
