// The screens of a store that is open, each made when it is first looked at.
#pragma once

#include <QStackedWidget>
#include <QString>
#include <vector>

#include "host/desktop/running/workplace.h"
#include "host/desktop/shell/screens_table.h"

namespace qorhost {

/// Shows the start page while no store is open. The runner must outlive it; the workplace until
/// another one is taken.
class PageStack final : public QStackedWidget {
  Q_OBJECT

 public:
  /// Owns the start page.
  PageStack(OperationRunner& runner, QWidget* start, QWidget* parent);
  ~PageStack() override;

  /// Drops all screens; null shows the start page.
  void Take(Workplace* place);
  /// Drops all screens: they are made anew when they are shown.
  void Drop();
  /// Drops all but the one in front.
  void DropOthers();
  /// Shows a line of the table of screens. Where the screen cannot be opened, says why, and tries
  /// again when it is shown again.
  void Show(int row);
  /// The store was changed: screens behind the one in front show it when they come to the front.
  void NoteChange();

  /// The screen in front; null where none is.
  [[nodiscard]] ScreenPage* page() const;
  /// The titles of the screens that lose something when they are left.
  [[nodiscard]] QStringList WithEntries() const;
  [[nodiscard]] bool HasEntries() const { return !WithEntries().isEmpty(); }

 private:
  /// False while another operation runs.
  [[nodiscard]] bool Make(int row);
  void ShowProblem(int row, const QString& why);

  OperationRunner& runner_;
  QWidget* start_;
  Workplace* place_ = nullptr;
  std::vector<QWidget*> made_;  // for each line of the table; null until it is looked at
  std::vector<bool> outdated_;  // the store has changed since it was shown
};

}  // namespace qorhost
