#include "host/desktop/screens/list_table_model.h"

#include <algorithm>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/list_words.h"
#include "host/desktop/words/shown_word.h"

namespace qorhost {

namespace {

QStringList TextsOf(const std::vector<ListField>& fields, const std::vector<qorcred::Value>& row) {
  QStringList texts;
  for (std::size_t at = 0; at < fields.size(); ++at) {
    texts.append(ShownInList(fields[at], row.at(at)));
  }
  return texts;
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
  text_ = WantedText(text);
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
  std::erase_if(shown_.rows, [this](const auto& row) {
    return !text_.Shows([&] { return TextsOf(shown_.fields, row); });
  });
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

}  // namespace qorhost
