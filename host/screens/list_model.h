// A combo box or list box in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "host/screens/control_model.h"

namespace qorhost {

/// Items with a text and a 32-bit number each, counted from 0, one of them selected or none (-1).
/// Members: Clear, AddItem(text[, index]), RemoveItem(index), NewIndex, ItemData(index) get/put,
/// ListIndex get/put, ListCount, List(index) get/put (the default member is Text), Text.
/// An index outside the list raises kIndexOutOfRange in ItemData and List, kInvalidProcedureCall
/// everywhere else; a Text that no item has raises kInvalidProcedureCall. Nothing changes then.
class ListModel final : public ControlModel {
 public:
  using SelectHandler = std::function<void(std::int32_t index)>;

  static constexpr std::int32_t kNone = -1;

  ListModel() : ControlModel(ListState{}) {}

  /// Removes all items; nothing is selected and NewIndex is -1.
  void Clear();
  /// Appends an item; its number is 0.
  void AddItem(std::string text) { AddItemWithData(std::move(text), 0); }
  /// Appends an item with its number and returns its index.
  std::int32_t AddItemWithData(std::string text, std::int32_t data);
  /// Inserts an item; the selection stays on the item that it was on.
  void AddItem(std::string text, std::int32_t index);
  /// Removes an item and with it the selection when it was on that item; NewIndex becomes -1.
  void RemoveItem(std::int32_t index);
  void SetText(std::int32_t index, std::string text);
  void SetItemData(std::int32_t index, std::int32_t data);
  /// Selects an item, or none.
  void Select(std::int32_t index);
  /// Selects the first item with that text; raises kInvalidProcedureCall when there is none.
  void SelectText(std::string_view text);

  [[nodiscard]] std::int32_t count() const { return static_cast<std::int32_t>(own().items.size()); }
  [[nodiscard]] std::int32_t selected() const { return own().selected; }
  [[nodiscard]] std::int32_t newIndex() const { return own().newIndex; }
  [[nodiscard]] const std::string& Text(std::int32_t index) const {
    return own().items[Place(index)].text;
  }
  [[nodiscard]] std::int32_t ItemData(std::int32_t index) const {
    return own().items[Place(index)].data;
  }
  /// The selected item's text, or "".
  [[nodiscard]] std::string SelectedText() const;
  /// The index of the first item with that text or number; kNone when there is none.
  [[nodiscard]] std::int32_t FindText(std::string_view text) const;
  [[nodiscard]] std::int32_t FindData(std::int32_t data) const;

  /// Calls the handler after another item, or none, was selected: not when Clear or RemoveItem took
  /// the selection away, and not when the screen was put back.
  [[nodiscard]] Subscription OnSelect(SelectHandler handler);

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  /// The place of an item; raises kIndexOutOfRange.
  [[nodiscard]] std::size_t Place(std::int32_t index) const;
  qorcred::Value AddItemMember(qorcred::InvokeKind kind, qorcred::Arguments arguments);
  qorcred::Value ItemMember(ControlMember member, qorcred::InvokeKind kind,
                            qorcred::Arguments arguments);

  [[nodiscard]] ListState& own() { return Own<ListState>(); }
  [[nodiscard]] const ListState& own() const { return Own<ListState>(); }
};

}  // namespace qorhost
