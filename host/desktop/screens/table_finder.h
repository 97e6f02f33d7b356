// Finding rows of a table by typing, where all rows stay to be seen.
#pragma once

#include <QElapsedTimer>
#include <QLineEdit>
#include <QObject>
#include <QString>
#include <QTableView>

namespace qorhost {

/// Chooses the first row from the chosen one on, and then from the beginning, in whose visible
/// cells WantedText finds the text; with `behind` from the one behind that. False when no row has
/// it.
bool ChooseRowWith(QTableView& view, const QString& text, bool behind);

/// Has the line choose rows of the view at its pauses, and the next one with Return. The view must
/// outlive the line.
void FindRowsBy(QLineEdit& line, QTableView& view);

/// Typing while the table itself has the focus chooses rows likewise; what is typed in one go is
/// one text. Not for tables whose cells are typed into. Owned by the view.
class TypeAhead final : public QObject {
 public:
  static void Watch(QTableView& view);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit TypeAhead(QTableView& view);

  QTableView& view_;
  QString typed_;
  QElapsedTimer sinceKey_;
};

}  // namespace qorhost
