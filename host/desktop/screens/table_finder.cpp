#include "host/desktop/screens/table_finder.h"

#include <QEvent>
#include <QKeyEvent>
#include <QStringList>
#include <algorithm>

#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/screens/wanted_text.h"

namespace qorhost {

namespace {

constexpr qint64 kOneGo = 1000;  // milliseconds between two keys of one text

int ChosenRow(const QTableView& view) {
  const QModelIndexList rows = view.selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.front().row();
}

QStringList CellsOf(const QTableView& view, int row) {
  QStringList cells;
  for (int column = 0; column < view.model()->columnCount(); ++column) {
    if (!view.isColumnHidden(column)) {
      cells.append(view.model()->index(row, column).data().toString());
    }
  }
  return cells;
}

/// Letters and digits, and within a text blanks and signs as well.
bool IsTyped(const QKeyEvent& key, const QString& before) {
  const auto modifiers = key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  return modifiers == Qt::NoModifier && key.text().size() == 1 && key.text().front().isPrint() &&
         (!before.isEmpty() || key.text().front().isLetterOrNumber());
}

}  // namespace

bool ChooseRowWith(QTableView& view, const QString& text, bool behind) {
  const int count = view.model()->rowCount();
  const int chosen = ChosenRow(view);
  const int start = std::max(chosen, 0) + (behind && chosen >= 0 ? 1 : 0);
  const WantedText wanted(text);
  for (int step = 0; step < count; ++step) {
    const int row = (start + step) % count;
    if (!wanted.IsIn(CellsOf(view, row))) {
      continue;
    }
    if (row != chosen) {
      view.selectRow(row);
      view.scrollTo(view.model()->index(row, 0));
    }
    return true;
  }
  return false;
}

void FindRowsBy(QLineEdit& line, QTableView& view) {
  new TypingPause(line, [&line, &view](bool next) {
    if (!line.text().isEmpty()) {
      (void)ChooseRowWith(view, line.text(), next);
    }
  });
}

void TypeAhead::Watch(QTableView& view) {
  view.installEventFilter(new TypeAhead(view));
}

TypeAhead::TypeAhead(QTableView& view) : QObject(&view), view_(view) {}

bool TypeAhead::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress ||
      view_.editTriggers() != QAbstractItemView::NoEditTriggers) {
    return QObject::eventFilter(watched, event);
  }
  if (!sinceKey_.isValid() || sinceKey_.elapsed() > kOneGo) {
    typed_.clear();
  }
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (!IsTyped(key, typed_)) {
    typed_.clear();
    return QObject::eventFilter(watched, event);
  }
  sinceKey_.start();
  typed_ += key.text();
  (void)ChooseRowWith(view_, typed_, false);
  return true;
}

}  // namespace qorhost
