// The data grid of a report screen in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frame/object.h"
#include "host/screens/change.h"

namespace qorhost {

/// A pair of a stored value and the text that stands for it. Members: Value, DisplayValue.
class GridValueItem final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::Value value_;
  qorcred::Value displayValue_;
};

/// What a column shows instead of its values. Members: Add(item), Count, Presentation (Integer),
/// Translate, DropDownList (Boolean). Add copies Value and DisplayValue of any object that has
/// them: what happens to the item later does not matter. Of two items for one value the first
/// counts.
class GridValueItems final : public qorcred::Object {
 public:
  /// The text of the item whose value has the same text as the cell; Booleans count as -1 and 0,
  /// Null and Empty as "". Null pointer without such an item, and always without Translate.
  [[nodiscard]] const std::string* Translation(const qorcred::Value& cell) const;

  void Add(const qorcred::Value& value, std::string_view displayValue);
  [[nodiscard]] std::size_t count() const { return count_; }
  [[nodiscard]] bool translate() const { return translate_; }
  [[nodiscard]] std::int16_t presentation() const { return presentation_; }

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::unordered_map<std::string, std::string> shownFor_;
  std::size_t count_ = 0;
  std::int16_t presentation_ = 0;
  bool translate_ = false;
  bool dropDownList_ = false;
};

/// A column of the grid. Members: Caption (the default member), Width (twips, not negative),
/// Visible, ValueItems (get).
class GridColumnModel final : public qorcred::Object {
 public:
  [[nodiscard]] const std::string& caption() const { return caption_; }
  [[nodiscard]] double width() const { return width_; }
  [[nodiscard]] bool visible() const { return visible_; }
  [[nodiscard]] GridValueItems& items() const { return *items_; }

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  std::shared_ptr<GridValueItems> items_ = std::make_shared<GridValueItems>();
  std::string caption_;
  double width_ = 1215;
  bool visible_ = true;
};

/// The columns of a grid, counted from 0. Members: the default member with an index (get), Count,
/// Remove(index). An index outside raises kIndexOutOfRange.
class GridColumnsModel final : public qorcred::Object {
 public:
  explicit GridColumnsModel(std::size_t count);

  [[nodiscard]] std::size_t size() const { return columns_.size(); }
  [[nodiscard]] GridColumnModel& at(std::size_t index) const { return *columns_.at(index); }

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  [[nodiscard]] std::size_t Place(const qorcred::Value& index) const;

  std::vector<std::shared_ptr<GridColumnModel>> columns_;
};

/// Members: Columns (get; with an index the column), Array get/put (a result table or Nothing),
/// ReBind, Refresh, NewValueItem (a new value item). The rows of the table that was in Array at the
/// last ReBind are shown, as they are when they are looked at. A member that an object of the grid
/// does not have raises kUnknownMember, a wrong number of arguments kWrongArgumentCount.
class GridModel final : public qorcred::Object {
 public:
  static constexpr std::size_t kColumns = 17;

  explicit GridModel(std::size_t columns = kColumns);

  [[nodiscard]] const GridColumnsModel& columns() const { return *columns_; }
  /// The table bound at the last ReBind; null before it.
  [[nodiscard]] const qorcred::ObjectRef& bound() const { return bound_; }
  [[nodiscard]] std::size_t rowCount() const;
  /// What the grid shows in a column for a row from 0: the translation of the cell, else its own
  /// text; "" in a column that the table does not have. Raises kIndexOutOfRange for a row that is
  /// not there.
  [[nodiscard]] std::string Shown(std::size_t row, std::size_t column) const;
  /// Calls the handler, with kItems, after every ReBind and Refresh: what is shown may be new then.
  [[nodiscard]] Subscription Observe(ChangeHandler handler) {
    return observers_.Add(std::move(handler));
  }

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  void Tell();

  std::shared_ptr<GridColumnsModel> columns_;
  qorcred::ObjectRef array_;
  qorcred::ObjectRef bound_;
  Observers observers_;
};

}  // namespace qorhost
