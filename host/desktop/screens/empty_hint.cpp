#include "host/desktop/screens/empty_hint.h"

#include <QEvent>
#include <utility>

namespace qorhost {

HintText HintOrNotFound(const QLineEdit& find, const QString& empty) {
  return [&find, empty] {
    return find.text().isEmpty() ? empty
                                 : EmptyHint::tr("Nothing here has “%1” in it.").arg(find.text());
  };
}

void EmptyHint::Show(QAbstractItemView& view, HintText text) {
  (new EmptyHint(view, std::move(text)))->Tell();
}

EmptyHint::EmptyHint(QAbstractItemView& view, HintText text)
    : QLabel(&view), view_(view), text_(std::move(text)) {
  setObjectName(QStringLiteral("emptyHint"));
  setAlignment(Qt::AlignCenter);
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setForegroundRole(QPalette::PlaceholderText);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setMargin(fontMetrics().height());
  setGeometry(view.viewport()->geometry());
  view.viewport()->installEventFilter(this);
  const QAbstractItemModel* model = view.model();
  connect(model, &QAbstractItemModel::modelReset, this, [this] { Tell(); });
  connect(model, &QAbstractItemModel::rowsInserted, this, [this] { Tell(); });
  connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { Tell(); });
}

void EmptyHint::Tell() {
  const bool isEmpty = view_.model()->rowCount() == 0;
  setText(isEmpty ? text_() : QString());
  setVisible(isEmpty);
  view_.setAccessibleDescription(text());
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
    setGeometry(view_.viewport()->geometry());
  }
  return QLabel::eventFilter(watched, event);
}

}  // namespace qorhost
