// Typed views of the data grid in which a report's rows appear.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/controls.h"

namespace qorcred {

/// One pair of a stored value and what the grid shows for it.
class ValueItem : public View {
 public:
  using View::View;

  void SetValue(const Value& value) const { Put(object(), "Value", value); }
  void SetDisplayValue(std::string_view text) const { Put(object(), "DisplayValue", text); }
};

/// The value items of a column.
class ValueItems : public View {
 public:
  using View::View;

  /// Adds a copy of the item: the same item may be filled and added again.
  void Add(const ValueItem& item) const { Call(object(), "Add", item.reference()); }
  void SetPresentation(std::int32_t presentation) const {
    Put(object(), "Presentation", presentation);
  }
  void SetTranslate(bool translate) const { Put(object(), "Translate", translate); }
};

/// A column of the grid.
class GridColumn : public Control {
 public:
  using Control::Control;

  [[nodiscard]] std::string Caption() const { return TextOrEmpty(Get(object(), "Caption")); }
  /// A cell of the layout is handed over as it is.
  void SetWidth(const Value& width) const { Put(object(), "Width", width); }
  [[nodiscard]] ValueItems Items() const {
    return ValueItems(RequireObject(Get(object(), "ValueItems")));
  }
};

/// The columns of the grid, by position from 0.
class GridColumns : public View {
 public:
  using View::View;

  [[nodiscard]] std::int32_t Count() const { return ToLong(Get(object(), "Count")); }
  [[nodiscard]] GridColumn At(std::int32_t index) const {
    return GridColumn(RequireObject(Get(object(), "", index)));
  }
  void Remove(std::int32_t index) const { Call(object(), "Remove", index); }
};

/// The data grid.
class ReportGrid : public View {
 public:
  using View::View;

  [[nodiscard]] GridColumns Columns() const {
    return GridColumns(RequireObject(Get(object(), "Columns")));
  }
  void SetArray(const ObjectRef& rows) const { Put(object(), "Array", rows); }
  void ReBind() const { Call(object(), "ReBind"); }
  void Refresh() const { Call(object(), "Refresh"); }
  /// A new value item of the grid's own kind; null when the grid makes none.
  [[nodiscard]] ObjectRef NewValueItem() const;
};

}  // namespace qorcred
