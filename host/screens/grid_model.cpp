#include "host/screens/grid_model.h"

#include "frame/convert.h"
#include "frame/data_services.h"
#include "frame/runtime_error.h"
#include "host/screens/control_model.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::RuntimeError;
using qorcred::SameMember;
using qorcred::TableView;
using qorcred::Value;

namespace {

/// By what a cell and an item's value are compared.
std::string ComparedText(const Value& value) {
  const bool* flag = value.As<bool>();
  return flag != nullptr ? (*flag ? "-1" : "0") : qorcred::TextOrEmpty(value);
}

Value Same(const Value& value) {
  return value;
}

/// An object or Nothing.
ObjectRef ObjectOrNothing(const Value& value) {
  const ObjectRef* object = value.As<ObjectRef>();
  if (object == nullptr) {
    throw RuntimeError(ErrorNumber::kObjectRequired);
  }
  return *object;
}

/// A property that is a field, written with what `convert` makes of a value.
template <typename Field, typename Convert>
Value FieldProperty(Field& field, InvokeKind kind, Arguments arguments, Convert convert) {
  return Property(field, kind, arguments,
                  [&field, convert](const Value& put) { field = convert(put); });
}

double WidthOf(const Value& value) {
  const double width = qorcred::ToDouble(value);
  if (!(width >= 0)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  return width;
}

}  // namespace

Value GridValueItem::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, "Value")) {
    return FieldProperty(value_, kind, arguments, Same);
  }
  if (SameMember(member, "DisplayValue")) {
    return FieldProperty(displayValue_, kind, arguments, Same);
  }
  throw RuntimeError(ErrorNumber::kUnknownMember);
}

void GridValueItems::Add(const Value& value, std::string_view displayValue) {
  shownFor_.try_emplace(ComparedText(value), displayValue);
  ++count_;
}

const std::string* GridValueItems::Translation(const Value& cell) const {
  if (!translate_) {
    return nullptr;
  }
  const auto found = shownFor_.find(ComparedText(cell));
  return found == shownFor_.end() ? nullptr : &found->second;
}

Value GridValueItems::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, "Add")) {
    RefusePut(kind);
    RequireCount(arguments, 1);
    qorcred::Object& item = qorcred::RequireSet(qorcred::RequireObject(arguments.front()));
    const Value value = qorcred::Get(item, "Value");
    Add(value, qorcred::TextOrEmpty(qorcred::Get(item, "DisplayValue")));
    return {};
  }
  if (SameMember(member, "Count")) {
    RequireRead(kind, arguments);
    return Value(static_cast<std::int32_t>(count_));
  }
  if (SameMember(member, "Presentation")) {
    return FieldProperty(presentation_, kind, arguments, qorcred::ToInteger);
  }
  if (SameMember(member, "Translate")) {
    return FieldProperty(translate_, kind, arguments, qorcred::ToBoolean);
  }
  if (SameMember(member, "DropDownList")) {
    return FieldProperty(dropDownList_, kind, arguments, qorcred::ToBoolean);
  }
  throw RuntimeError(ErrorNumber::kUnknownMember);
}

Value GridColumnModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, "Caption") || member.empty()) {
    return FieldProperty(caption_, kind, arguments,
                         [](const Value& caption) { return qorcred::ToText(caption); });
  }
  if (SameMember(member, "Width")) {
    return FieldProperty(width_, kind, arguments, WidthOf);
  }
  if (SameMember(member, "Visible")) {
    return FieldProperty(visible_, kind, arguments, qorcred::ToBoolean);
  }
  if (SameMember(member, "ValueItems")) {
    RequireRead(kind, arguments);
    return Value(ObjectRef(items_));
  }
  throw RuntimeError(ErrorNumber::kUnknownMember);
}

GridColumnsModel::GridColumnsModel(std::size_t count) {
  columns_.reserve(count);
  for (std::size_t index = 0; index < count; ++index) {
    columns_.push_back(std::make_shared<GridColumnModel>());
  }
}

std::size_t GridColumnsModel::Place(const Value& index) const {
  const std::int32_t place = qorcred::ToLong(index);
  if (place < 0 || static_cast<std::size_t>(place) >= columns_.size()) {
    throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  }
  return static_cast<std::size_t>(place);
}

Value GridColumnsModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  RefusePut(kind);
  if (member.empty()) {
    RequireCount(arguments, 1);
    return Value(ObjectRef(columns_[Place(arguments.front())]));
  }
  if (SameMember(member, "Count")) {
    RequireCount(arguments, 0);
    return Value(static_cast<std::int32_t>(columns_.size()));
  }
  if (SameMember(member, "Remove")) {
    RequireCount(arguments, 1);
    columns_.erase(columns_.begin() + static_cast<std::ptrdiff_t>(Place(arguments.front())));
    return {};
  }
  throw RuntimeError(ErrorNumber::kUnknownMember);
}

GridModel::GridModel(std::size_t columns) : columns_(std::make_shared<GridColumnsModel>(columns)) {}

std::size_t GridModel::rowCount() const {
  if (bound_ == nullptr) {
    return 0;
  }
  const TableView table(bound_);
  const std::int64_t rows = std::int64_t{table.UpperRow()} - table.LowerRow() + 1;
  return rows > 0 ? static_cast<std::size_t>(rows) : 0;
}

std::string GridModel::Shown(std::size_t row, std::size_t column) const {
  if (bound_ == nullptr) {
    throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  }
  const TableView table(bound_);
  const auto tableColumn = static_cast<std::int32_t>(column);
  if (tableColumn > table.UpperColumn()) {
    return {};
  }
  const auto tableRow = static_cast<std::int32_t>(row) + table.LowerRow();
  const Value cell = table.Cell(tableRow, tableColumn);
  const std::string* translation = columns_->at(column).items().Translation(cell);
  return translation != nullptr ? *translation : qorcred::TextOrEmpty(cell);
}

void GridModel::Tell() {
  observers_.Notify(Change{"", nullptr, ChangeKind::kItems});
}

Value GridModel::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, "Columns")) {
    RefusePut(kind);
    return arguments.empty() ? Value(ObjectRef(columns_)) : columns_->Invoke("", kind, arguments);
  }
  if (SameMember(member, "Array")) {
    return FieldProperty(array_, kind, arguments, ObjectOrNothing);
  }
  if (SameMember(member, "ReBind")) {
    RequireRead(kind, arguments);
    bound_ = array_;
    Tell();
    return {};
  }
  if (SameMember(member, "Refresh")) {
    RequireRead(kind, arguments);
    Tell();
    return {};
  }
  if (SameMember(member, "NewValueItem")) {
    RequireRead(kind, arguments);
    return Value(ObjectRef(std::make_shared<GridValueItem>()));
  }
  throw RuntimeError(ErrorNumber::kUnknownMember);
}

}  // namespace qorhost
