// Bindings of combo boxes and list boxes.
#pragma once

#include <QComboBox>
#include <QListView>
#include <QObject>
#include <cstdint>
#include <functional>

#include "host/desktop/binding/control_binding.h"
#include "host/desktop/binding/list_entries_model.h"
#include "host/screens/list_model.h"

namespace qorhost {

/// Told of the entry that a person has chosen, in place of its selection in the model: for a list
/// whose selection loads something.
using ChoiceOfEntry = std::function<void(std::int32_t index)>;

/// What both kinds have in common. Entries that a controller adds one by one are shown together.
class ListBinding : public ControlBinding {
 public:
  void OnChoice(ChoiceOfEntry handler) { onChoice_ = std::move(handler); }
  void ShowTextsBy(EntryText text) { entries_.ShowTextsBy(std::move(text)); }
  [[nodiscard]] ListModel& list() const { return list_; }

 protected:
  ListBinding(ListModel& list, QWidget& widget);

  void ShowOwn(ChangeKind kind) override;
  virtual void ShowSelection(std::int32_t index) = 0;
  /// A person has chosen an entry of those that are shown.
  void Choose(int index);
  [[nodiscard]] ListEntriesModel& entries() { return entries_; }

 private:
  ListModel& list_;
  ListEntriesModel entries_;
  ChoiceOfEntry onChoice_;
};

/// A combo box in which typing finds entries, and which a wheel changes only with the focus.
class ComboBinding final : public ListBinding {
 public:
  ComboBinding(ListModel& list, QComboBox& combo);

 private:
  void ShowSelection(std::int32_t index) override;

  QComboBox& combo_;
};

class ListBoxBinding final : public ListBinding {
 public:
  ListBoxBinding(ListModel& list, QListView& view);

 private:
  void ShowSelection(std::int32_t index) override;

  QListView& view_;
  bool showing_ = false;  // what changes in the view is no choice
};

}  // namespace qorhost
