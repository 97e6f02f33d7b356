// Typed views of the screen and its controls. A view names a late-bound object's members and holds
// no state of its own; each of its functions is one visible call on the object unless it says which
// calls it makes. Fetching a control from a screen does not count as a call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/object.h"

namespace qorcred {

/// Base of the views: keeps the object alive for as long as the view.
/// Construction raises kObjectNotSet for a null reference.
class View {
 public:
  explicit View(ObjectRef object);

  [[nodiscard]] Object& object() const { return *object_; }
  [[nodiscard]] const ObjectRef& reference() const { return object_; }

 private:
  ObjectRef object_;
};

/// What every control has.
class Control : public View {
 public:
  using View::View;

  [[nodiscard]] bool IsEnabled() const { return ToBoolean(Get(object(), "Enabled")); }
  void SetEnabled(bool enabled) const { Put(object(), "Enabled", enabled); }
  void SetVisible(bool visible) const { Put(object(), "Visible", visible); }
  void SetBackColor(std::int32_t color) const { Put(object(), "BackColor", color); }
  void SetCaption(std::string_view caption) const { Put(object(), "Caption", caption); }
  void SetFocus() const { Call(object(), "SetFocus"); }
};

/// A text box.
class TextBox : public Control {
 public:
  using Control::Control;

  [[nodiscard]] std::string Text() const { return TextOrEmpty(Get(object(), "Text")); }
  void SetText(const Value& text) const { Put(object(), "Text", text); }
  /// The most characters that can be typed; 0 sets no limit.
  [[nodiscard]] std::int32_t MaxLength() const { return ToLong(Get(object(), "MaxLength")); }
  void SetMaxLength(double length) const { Put(object(), "MaxLength", length); }
};

/// Item data of the list entries that stand for no row.
inline constexpr std::int32_t kNoRow = -100;

/// A combo box or a list box. Indexes count from 0; -1 means none.
class ListControl : public Control {
 public:
  using Control::Control;

  void Clear() const { Call(object(), "Clear"); }
  void AddItem(std::string text) const { Call(object(), "AddItem", std::move(text)); }
  void AddItem(std::string text, std::int32_t index) const {
    Call(object(), "AddItem", std::move(text), index);
  }
  void RemoveItem(std::int32_t index) const { Call(object(), "RemoveItem", index); }
  [[nodiscard]] std::int32_t NewIndex() const { return ToLong(Get(object(), "NewIndex")); }
  [[nodiscard]] std::int32_t ListIndex() const { return ToLong(Get(object(), "ListIndex")); }
  void SetListIndex(std::int32_t index) const { Put(object(), "ListIndex", index); }
  [[nodiscard]] std::int32_t ListCount() const { return ToLong(Get(object(), "ListCount")); }
  [[nodiscard]] std::int32_t ItemData(std::int32_t index) const {
    return ToLong(Get(object(), "ItemData", index));
  }
  /// Attaches a number to an item; a text or a cell is handed over as it is.
  void SetItemData(std::int32_t index, const Value& data) const {
    Put(object(), "ItemData", index, data);
  }
  [[nodiscard]] std::string Text() const { return TextOrEmpty(Get(object(), "Text")); }
  /// The text of an item.
  [[nodiscard]] std::string ItemText(std::int32_t index) const {
    return TextOrEmpty(Get(object(), "List", index));
  }

  /// AddItem, then ItemData at NewIndex.
  void AddItemWithData(std::string text, const Value& data) const {
    AddItem(std::move(text));
    SetItemData(NewIndex(), data);
  }
  /// ListIndex, then ItemData: the number attached to the selected item.
  [[nodiscard]] std::int32_t SelectedItemData() const { return ItemData(ListIndex()); }
};

/// A check box (0, 1, 2) or an option button (True, False).
class CheckControl : public Control {
 public:
  using Control::Control;

  [[nodiscard]] Value State() const { return Get(object(), "Value"); }
  void SetState(const Value& state) const { Put(object(), "Value", state); }
};

/// A spinner; its number is its default member.
class Spinner : public Control {
 public:
  using Control::Control;

  [[nodiscard]] Value Number() const { return Get(object(), ""); }
  void SetNumber(double number) const { Put(object(), "", number); }
};

/// A date and time picker; its value is Null when no date is chosen.
class DatePicker : public Control {
 public:
  using Control::Control;

  [[nodiscard]] Value Chosen() const { return Get(object(), "Value"); }
  void SetChosen(const Value& date) const { Put(object(), "Value", date); }
  [[nodiscard]] Date MaxDate() const { return ToDate(Get(object(), "MaxDate")); }
  void SetYear(std::int32_t year) const { Put(object(), "Year", year); }
  void SetMonth(std::int32_t month) const { Put(object(), "Month", month); }
  void SetDay(std::int32_t day) const { Put(object(), "Day", day); }
  /// Sets Hour, Minute and Second, in that order, to 23, 59 and 59.
  void SetEndOfDay() const;
  void SetHour(std::int32_t hour) const { Put(object(), "Hour", hour); }
  void SetMinute(std::int32_t minute) const { Put(object(), "Minute", minute); }
  void SetSecond(std::int32_t second) const { Put(object(), "Second", second); }
};

/// Controls that share one name, told apart by an index from 0.
class ControlArray : public View {
 public:
  using View::View;

  [[nodiscard]] std::int32_t Count() const { return ToLong(Get(object(), "Count")); }
  [[nodiscard]] ListControl List(std::int32_t index) const { return ListControl(Item(index)); }
  [[nodiscard]] TextBox Box(std::int32_t index) const { return TextBox(Item(index)); }
  [[nodiscard]] CheckControl Check(std::int32_t index) const { return CheckControl(Item(index)); }
  [[nodiscard]] DatePicker Picker(std::int32_t index) const { return DatePicker(Item(index)); }

 private:
  [[nodiscard]] ObjectRef Item(std::int32_t index) const {
    return RequireObject(Get(object(), "", index));
  }
};

/// A screen: its controls and public variables by name.
class Screen : public View {
 public:
  using View::View;

  [[nodiscard]] ListControl List(std::string_view name) const { return ListControl(Member(name)); }
  [[nodiscard]] TextBox Box(std::string_view name) const { return TextBox(Member(name)); }
  [[nodiscard]] CheckControl Check(std::string_view name) const {
    return CheckControl(Member(name));
  }
  [[nodiscard]] Spinner Spin(std::string_view name) const { return Spinner(Member(name)); }
  [[nodiscard]] DatePicker Picker(std::string_view name) const { return DatePicker(Member(name)); }
  [[nodiscard]] Control Any(std::string_view name) const { return Control(Member(name)); }
  [[nodiscard]] ControlArray Array(std::string_view name) const {
    return ControlArray(Member(name));
  }

  [[nodiscard]] std::string Name() const { return ToText(Variable("Name")); }
  [[nodiscard]] Value Variable(std::string_view name) const { return Get(object(), name); }
  void SetVariable(std::string_view name, Value value) const {
    Put(object(), name, std::move(value));
  }

 private:
  [[nodiscard]] ObjectRef Member(std::string_view name) const {
    return RequireObject(Get(object(), name));
  }
};

}  // namespace qorcred
