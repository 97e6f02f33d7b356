#include "host/desktop/screens/list_table_model.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <algorithm>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/list_words.h"
#include "host/desktop/words/shown_word.h"

namespace qorhost {

namespace {

constexpr int kRowsMeasured = 200;  // those that a person may see at first

/// Fits a table again whenever its letters change; owned by the table.
class FontWatch final : public QObject {
 public:
  explicit FontWatch(QTableView& view) : QObject(&view), view_(view) {
    view.installEventFilter(this);
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::User) {
      FitColumns(view_);
      return true;
    }
    return QObject::event(event);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FontChange) {
      // Behind the event: by then the titles have their new letters, too.
      QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QTableView& view_;
};

bool Holds(const std::vector<ListField>& fields, const std::vector<qorcred::Value>& row,
           const QString& text) {
  for (std::size_t at = 0; at < fields.size(); ++at) {
    if (ShownInList(fields[at], row.at(at)).contains(text, Qt::CaseInsensitive)) {
      return true;
    }
  }
  return false;
}

}  // namespace

void ListTableModel::Show(List list) {
  all_ = WithExtras(std::move(list));
  ShowAsAsked();
}

void ListTableModel::Show(const Table& table) {
  List list;
  for (const TableColumn& column : table.columns) {
    list.fields.push_back({column.title, column.key});
  }
  list.rows = table.rows;
  Show(std::move(list));
}

void ListTableModel::Narrow(const QString& text) {
  text_ = text;
  ShowAsAsked();
}

void ListTableModel::sort(int column, Qt::SortOrder order) {
  sortedBy_ = column;
  downwards_ = order == Qt::DescendingOrder;
  ShowAsAsked();
}

void ListTableModel::ShowAsAsked() {
  beginResetModel();
  ListQuery query;
  if (sortedBy_ >= 0 && sortedBy_ < static_cast<int>(all_.fields.size())) {
    query.sort = (downwards_ ? "-" : "") + all_.fields[static_cast<std::size_t>(sortedBy_)].key;
  }
  shown_ = Answer(all_, query);
  if (!text_.isEmpty()) {
    std::erase_if(shown_.rows,
                  [this](const auto& row) { return !Holds(shown_.fields, row, text_); });
  }
  endResetModel();
}

int ListTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.rows.size());
}

int ListTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(all_.fields.size());
}

QVariant ListTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) {
    return {};
  }
  const auto column = static_cast<std::size_t>(index.column());
  return ShownInList(all_.fields[column], Row(index.row()).at(column));
}

QVariant ListTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
      section >= columnCount()) {
    return {};
  }
  return ShownTitle(all_.fields[static_cast<std::size_t>(section)].title);
}

void SetUp(QTableView& view, QAbstractItemModel& model) {
  view.setModel(&model);
  view.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  view.horizontalHeader()->setStretchLastSection(true);
  view.horizontalHeader()->setResizeContentsPrecision(kRowsMeasured);
  view.horizontalHeader()->setHighlightSections(false);
  view.verticalHeader()->hide();
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  KeepFit(view);
}

void KeepFit(QTableView& view) {
  FitColumns(view);
  new FontWatch(view);
}

void FitColumns(QTableView& view) {
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() * 3 / 2);
  view.resizeColumnsToContents();
}

}  // namespace qorhost
