#include "host/desktop/screens/history_page.h"

#include <screens/ui_history_page.h>

#include <algorithm>

#include "host/desks/desk_error.h"
#include "host/desks/history.h"
#include "host/desks/history_undo.h"
#include "host/desks/list.h"
#include "host/desks/shown_value.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

constexpr std::size_t kEntry = 0;  // the column of its number
constexpr int kLastRid = 2;        // of rows that were changed alike

/// A column that says nothing takes no room from the others.
void HideEmptyColumn(QTableView& view, int column) {
  const QAbstractItemModel& model = *view.model();
  bool isEmpty = true;
  for (int row = 0; row < model.rowCount() && isEmpty; ++row) {
    isEmpty = model.index(row, column).data().toString().isEmpty();
  }
  view.setColumnHidden(column, isEmpty);
}

}  // namespace

HistoryPage::HistoryPage(Workplace& place)
    : ScreenPage(place), ui_(std::make_unique<Ui::HistoryPage>()) {
  ui_->setupUi(this);
  ui_->entries->setSelectionMode(QAbstractItemView::SingleSelection);
  SetUp(*ui_->entries, entries_);
  SetUp(*ui_->rows, rows_);
  SqueezeColumns(*ui_->entries);
  SqueezeColumns(*ui_->rows);
  EmptyHint::Show(*ui_->entries,
                  HintOrNotFound(*ui_->findEntry, tr("Nothing was done in this unit yet.")));
  EmptyHint::Show(*ui_->rows,
                  [] { return tr("Choose an entry to see what it made of the rows."); });
  NarrowBy(*ui_->findEntry, [this](const QString& text) {
    entries_.Narrow(text);
    (void)Look(tr("The entry cannot be shown."), [this] { ShowRows(); });
  });
  connect(ui_->entries->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { (void)Look(tr("The entry cannot be shown."), [this] { ShowRows(); }); });
  connect(ui_->undoButton, &QPushButton::clicked, this, [this] { Undo(); });
  ShowEntries();
}

HistoryPage::~HistoryPage() = default;

void HistoryPage::Refresh() {
  (void)Look(tr("The history cannot be shown."), [this] { ShowEntries(); });
}

void HistoryPage::ShowEntries() {
  HistoryQuery query;
  query.unitKey = place().unitKey();
  List list = HistoryList(session(), query);
  std::reverse(list.rows.begin(), list.rows.end());  // a person looks for the latest
  entries_.Show(Answer(std::move(list), {}));
  FitColumns(*ui_->entries);
  ShowRows();
}

std::string HistoryPage::Chosen() const {
  const QModelIndexList chosen = ui_->entries->selectionModel()->selectedRows();
  return chosen.isEmpty() ? "" : ShownText(entries_.Row(chosen.front().row()).at(kEntry));
}

void HistoryPage::ShowRows() {
  const std::string entry = Chosen();
  rows_.Show(entry.empty() ? Table{} : EntryTable(session(), EntryOf(session(), entry).entry));
  HideEmptyColumn(*ui_->rows, kLastRid);
  FitColumns(*ui_->rows);
  ui_->undoButton->setEnabled(!entry.empty());
}

void HistoryPage::Undo() {
  const std::string entry = Chosen();
  WorkEntry described;
  if (!Look(tr("The entry cannot be shown."), [&] { described = EntryOf(session(), entry); })) {
    return;
  }
  if (!AskToGoOn(this, tr("Undo %1? The rows become what they were before it, and the steps that "
                          "tell the unit are queued.")
                           .arg(Told(DescriptionOf(described))))) {
    return;
  }
  Undoing undone;
  const bool ran = Run(tr("Undoing the entry"), [&] {
    undone = UndoEntry(session(), entry, Trial::kNo);
    if (!undone.done()) {
      throw RefusedError(undone.reason);
    }
  });
  if (ran) {
    place().Tell(tr("Undone: %1.").arg(Told(DescriptionOf(undone.entries.front().entry))));
    (void)LookBehind(tr("The history cannot be shown."), [this] { ShowEntries(); });
    place().TellChanged();
  }
}

}  // namespace qorhost
