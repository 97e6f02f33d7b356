#include "host/screens/list_model.h"

#include <algorithm>
#include <utility>

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::ToLong;
using qorcred::Value;

void ListModel::Clear() {
  const bool had = count() > 0;
  own().items.Clear();
  own().selected = kNone;
  own().newIndex = kNone;
  if (had) {
    Tell(ChangeKind::kItems);
  }
}

std::int32_t ListModel::AddItemWithData(std::string text, std::int32_t data) {
  own().items.Append({std::move(text), data});
  const std::int32_t index = count() - 1;
  own().newIndex = index;
  Tell(ChangeKind::kItems);
  return index;
}

void ListModel::AddItem(std::string text, std::int32_t index) {
  if (index < 0 || index > count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  own().items.Insert(static_cast<std::size_t>(index), {std::move(text), 0});
  own().newIndex = index;
  if (own().selected >= index) {
    ++own().selected;
  }
  Tell(ChangeKind::kItems);
}

void ListModel::RemoveItem(std::int32_t index) {
  if (index < 0 || index >= count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  own().items.Erase(static_cast<std::size_t>(index));
  own().newIndex = kNone;
  if (own().selected == index) {
    own().selected = kNone;
  } else if (own().selected > index) {
    --own().selected;
  }
  Tell(ChangeKind::kItems);
}

void ListModel::SetText(std::int32_t index, std::string text) {
  if (Text(index) != text) {
    own().items.SetText(Place(index), std::move(text));
    Tell(ChangeKind::kItems);
  }
}

void ListModel::SetItemData(std::int32_t index, std::int32_t data) {
  if (ItemData(index) != data) {
    own().items.SetData(Place(index), data);
    Tell(ChangeKind::kItems);
  }
}

void ListModel::Select(std::int32_t index) {
  if (index < kNone || index >= count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  Assign(own().selected, index, ChangeKind::kSelection);
}

void ListModel::SelectText(std::string_view text) {
  const std::int32_t found = FindText(text);
  if (found == kNone) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  Select(found);
}

Subscription ListModel::OnSelect(SelectHandler handler) {
  return Observe([this, handler = std::move(handler)](const Change& change) {
    if (change.kind == ChangeKind::kSelection && !change.restored) {
      handler(selected());
    }
  });
}

std::string ListModel::SelectedText() const {
  return selected() == kNone ? std::string() : Text(selected());
}

std::int32_t ListModel::FindText(std::string_view text) const {
  const auto* const found =
      std::find_if(own().items.begin(), own().items.end(),
                   [text](const ListItem& item) { return item.text == text; });
  return found == own().items.end() ? kNone
                                    : static_cast<std::int32_t>(found - own().items.begin());
}

std::int32_t ListModel::FindData(std::int32_t data) const {
  const auto* const found =
      std::find_if(own().items.begin(), own().items.end(),
                   [data](const ListItem& item) { return item.data == data; });
  return found == own().items.end() ? kNone
                                    : static_cast<std::int32_t>(found - own().items.begin());
}

std::size_t ListModel::Place(std::int32_t index) const {
  if (index < 0 || index >= count()) {
    throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  }
  return static_cast<std::size_t>(index);
}

Value ListModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kAddItem:
      return AddItemMember(kind, arguments);
    case ControlMember::kNewIndex:
      RequireRead(kind, arguments);
      return Value(newIndex());
    case ControlMember::kItemData:
    case ControlMember::kList:
      return ItemMember(member, kind, arguments);
    case ControlMember::kListCount:
      RequireRead(kind, arguments);
      return Value(count());
    case ControlMember::kListIndex:
      return Property(selected(), kind, arguments,
                      [this](const Value& put) { Select(ToLong(put)); });
    case ControlMember::kClear:
      RequireRead(kind, arguments);
      Clear();
      return {};
    case ControlMember::kRemoveItem:
      RefusePut(kind);
      RequireCount(arguments, 1);
      RemoveItem(ToLong(arguments.front()));
      return {};
    case ControlMember::kDefault:
    case ControlMember::kText:
      return Property(SelectedText(), kind, arguments,
                      [this](const Value& put) { SelectText(qorcred::ToText(put)); });
    default:
      return CommonMember(member, kind, arguments);
  }
}

Value ListModel::AddItemMember(InvokeKind kind, Arguments arguments) {
  RefusePut(kind);
  const bool atIndex = arguments.size() == 2 && !arguments.back().Is(qorcred::ValueType::kMissing);
  if (!atIndex && arguments.size() != 2) {
    RequireCount(arguments, 1);
  }
  const std::string* text = arguments.front().As<std::string>();
  std::string itemText = text != nullptr ? *text : qorcred::ToText(arguments.front());
  if (atIndex) {
    AddItem(std::move(itemText), ToLong(arguments.back()));
  } else {
    AddItem(std::move(itemText));
  }
  return {};
}

Value ListModel::ItemMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  const bool isData = member == ControlMember::kItemData;
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 1);
    const std::int32_t index = ToLong(arguments.front());
    return isData ? Value(ItemData(index)) : Value(Text(index));
  }
  RequireCount(arguments, 2);
  const std::int32_t index = ToLong(arguments.front());
  (void)Place(index);  // a wrong index is told before a wrong value
  if (isData) {
    SetItemData(index, ToLong(arguments.back()));
  } else {
    SetText(index, qorcred::ToText(arguments.back()));
  }
  return {};
}

}  // namespace qorhost
