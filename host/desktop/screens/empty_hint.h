// What a table says while it has no rows.
#pragma once

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <functional>

namespace qorhost {

/// What there is to be said; asked whenever the rows have changed.
using HintText = std::function<QString()>;
/// For rows that a line narrows: `empty`, but that nothing is found while something stands there.
/// The line must outlive the view.
[[nodiscard]] HintText HintOrNotFound(const QLineEdit& find, const QString& empty);

/// In the middle of a view that has a model, as long as that has no rows; owned by the view.
class EmptyHint final : public QLabel {
 public:
  static void Show(QAbstractItemView& view, HintText text);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  EmptyHint(QAbstractItemView& view, HintText text);
  void Tell();

  QAbstractItemView& view_;
  HintText text_;
};

}  // namespace qorhost
