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
  items_.clear();
  selected_ = kNone;
  newIndex_ = kNone;
}

void ListModel::AddItem(std::string text) {
  items_.push_back({std::move(text), 0});
  newIndex_ = count() - 1;
}

void ListModel::AddItem(std::string text, std::int32_t index) {
  if (index < 0 || index > count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  items_.insert(items_.begin() + index, Item{std::move(text), 0});
  newIndex_ = index;
  if (selected_ >= index) {
    ++selected_;
  }
}

void ListModel::RemoveItem(std::int32_t index) {
  if (index < 0 || index >= count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  items_.erase(items_.begin() + index);
  newIndex_ = kNone;
  if (selected_ == index) {
    selected_ = kNone;
  } else if (selected_ > index) {
    --selected_;
  }
}

void ListModel::Select(std::int32_t index) {
  if (index < kNone || index >= count()) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  if (index == selected_) {
    return;
  }
  selected_ = index;
  if (onSelect_) {
    // A copy: the handler may put another handler in its place.
    const SelectHandler handler = onSelect_;
    handler(index);
  }
}

std::string ListModel::SelectedText() const {
  return selected_ == kNone ? std::string() : Text(selected_);
}

std::int32_t ListModel::FindText(std::string_view text) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [text](const Item& item) { return item.text == text; });
  return found == items_.end() ? kNone : static_cast<std::int32_t>(found - items_.begin());
}

std::int32_t ListModel::FindData(std::int32_t data) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [data](const Item& item) { return item.data == data; });
  return found == items_.end() ? kNone : static_cast<std::int32_t>(found - items_.begin());
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
      RefusePut(kind);
      RequireCount(arguments, 0);
      return Value(newIndex_);
    case ControlMember::kItemData:
    case ControlMember::kList:
      return ItemMember(member, kind, arguments);
    case ControlMember::kListCount:
      RefusePut(kind);
      RequireCount(arguments, 0);
      return Value(count());
    case ControlMember::kListIndex:
      if (kind == InvokeKind::kPut) {
        RequireCount(arguments, 1);
        Select(ToLong(arguments.front()));
        return {};
      }
      RequireCount(arguments, 0);
      return Value(selected_);
    case ControlMember::kClear:
      RefusePut(kind);
      RequireCount(arguments, 0);
      Clear();
      return {};
    case ControlMember::kRemoveItem:
      RefusePut(kind);
      RequireCount(arguments, 1);
      RemoveItem(ToLong(arguments.front()));
      return {};
    case ControlMember::kDefault:
    case ControlMember::kText:
      return TextMember(kind, arguments);
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

Value ListModel::TextMember(InvokeKind kind, Arguments arguments) {
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 0);
    return Value(SelectedText());
  }
  RequireCount(arguments, 1);
  const std::int32_t found = FindText(qorcred::ToText(arguments.front()));
  if (found == kNone) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  Select(found);
  return {};
}

Value ListModel::ItemMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  RequireCount(arguments, kind == InvokeKind::kPut ? 2 : 1);
  Item& item = items_[Place(ToLong(arguments.front()))];
  if (kind == InvokeKind::kPut) {
    if (member == ControlMember::kItemData) {
      item.data = ToLong(arguments.back());
    } else {
      item.text = qorcred::ToText(arguments.back());
    }
    return {};
  }
  return member == ControlMember::kItemData ? Value(item.data) : Value(item.text);
}

}  // namespace qorhost
