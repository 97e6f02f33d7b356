#include "host/desktop/binding/list_binding.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <QSignalBlocker>
#include <variant>

#include "host/desktop/binding/wheel_guard.h"

namespace qorhost {

ListBinding::ListBinding(ListModel& list, QWidget& widget)
    : ControlBinding(list, widget), list_(list) {}

void ListBinding::ShowOwn(ChangeKind kind) {
  if (kind == ChangeKind::kItems) {
    const QSignalBlocker quiet(widget());
    entries_.Show(std::get<ListState>(list_.held().own).items);
  }
  if (kind == ChangeKind::kItems || kind == ChangeKind::kSelection) {
    ShowSelection(list_.selected());
  }
}

void ListBinding::Choose(int index) {
  if (isPending(ChangeKind::kItems)) {
    Flush();  // it was chosen among entries that are gone
    return;
  }
  if (index == list_.selected()) {
    return;
  }
  if (onChoice_) {
    onChoice_(index);
    // Perhaps it was not selected after all.
    Flush();
    ShowSelection(list_.selected());
    return;
  }
  Put([this, index] { list_.Select(index); });
}

ComboBinding::ComboBinding(ListModel& list, QComboBox& combo)
    : ListBinding(list, combo), combo_(combo) {
  combo_.setModel(&entries());
  if (combo_.sizeAdjustPolicy() != QComboBox::AdjustToContents) {  // as a form asks for
    combo_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  }
  WheelGuard::Watch(combo_);
  if (auto* view = qobject_cast<QListView*>(combo_.view())) {
    view->setUniformItemSizes(true);
  }
  // Whatever the binding does not do itself is a person's choice, by mouse, arrow or letter.
  QObject::connect(&combo_, &QComboBox::currentIndexChanged, context(), [this](int index) {
    if (index >= 0) {
      Choose(index);
    }
  });
  ShowAll();
}

void ComboBinding::ShowSelection(std::int32_t index) {
  const QSignalBlocker quiet(combo_);
  combo_.setCurrentIndex(index);
}

ListBoxBinding::ListBoxBinding(ListModel& list, QListView& view)
    : ListBinding(list, view), view_(view) {
  view_.setUniformItemSizes(true);
  view_.setModel(&entries());
  QObject::connect(view_.selectionModel(), &QItemSelectionModel::currentChanged, context(),
                   [this](const QModelIndex& current) {
                     if (current.isValid() && !showing_) {
                       Choose(current.row());
                     }
                   });
  ShowAll();
}

void ListBoxBinding::ShowSelection(std::int32_t index) {
  QItemSelectionModel& selection = *view_.selectionModel();
  const QModelIndex row = entries().index(index, 0);
  if (selection.currentIndex() == row && selection.isSelected(row) == row.isValid()) {
    return;
  }
  showing_ = true;
  if (row.isValid()) {
    selection.setCurrentIndex(row, QItemSelectionModel::ClearAndSelect);
    view_.scrollTo(row);
  } else {
    selection.clear();
  }
  showing_ = false;
}

}  // namespace qorhost
