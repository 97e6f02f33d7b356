#include "host/desktop/binding/list_entries_model.h"

#include <algorithm>
#include <utility>

#include "host/desktop/binding/qt_text.h"

namespace qorhost {

void ListEntriesModel::Show(const ListItems& items) {
  const std::size_t before = items_.size();
  const bool keepsThose =
      items.size() >= before && std::equal(items_.begin(), items_.end(), items.begin());
  if (keepsThose && items.size() == before) {
    items_ = items;  // filled again with the same: the view has nothing to do
    return;
  }
  if (keepsThose && before > 0) {
    beginInsertRows({}, static_cast<int>(before), static_cast<int>(items.size()) - 1);
    items_ = items;
    endInsertRows();
    return;
  }
  beginResetModel();
  items_ = items;
  endResetModel();
}

void ListEntriesModel::ShowTextsBy(EntryText text) {
  text_ = std::move(text);
  if (items_.size() > 0) {
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
  }
}

int ListEntriesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant ListEntriesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) {
    return {};
  }
  if (role != Qt::DisplayRole && role != Qt::EditRole) {
    return {};
  }
  const QString text = ToQt(items_[static_cast<std::size_t>(index.row())].text);
  return text_ ? text_(text) : text;
}

}  // namespace qorhost
