#include "host/store/postgres/value_form.h"

#include "host/dialect/comparison.h"
#include "host/store/postgres/table_text.h"

namespace qorhost::postgres {

using namespace dialect;

namespace {

Form FormOfColumn(const Column& column) {
  switch (column.type) {
    case ColumnType::kLong:
      return TakesTimeStamps(column) ? Form::kAny : Form::kWhole;
    case ColumnType::kIdentity:
    case ColumnType::kBoolean:
      return Form::kWhole;
    case ColumnType::kDouble:
      return Form::kDouble;
    case ColumnType::kDate:
    case ColumnType::kText:
      break;
  }
  return Form::kText;
}

Form FormOfLiteral(const Expression& node) {
  switch (node.conversion) {
    case Conversion::kNone:
      return node.valueClass == ValueClass::kNumber ? Form::kDouble : Form::kText;
    case Conversion::kCompareNumber:
    case Conversion::kCompareBoolean:
      return Form::kDouble;
    case Conversion::kRowCount:
      return Form::kWhole;
    case Conversion::kStore:
      return TakesTimeStamps(*node.target) ? Form::kText : FormOfColumn(*node.target);
    case Conversion::kToText:
    case Conversion::kPattern:
    case Conversion::kPicture:
    case Conversion::kCompareDate:
    case Conversion::kOrderDate:
      break;
  }
  return Form::kText;
}

Form FormOfArithmetic(const Expression& node) {
  if (node.valueClass == ValueClass::kText || node.valueClass == ValueClass::kDate) {
    return Form::kText;
  }
  const bool isWhole = node.op == Operator::kWholeDivide || node.op == Operator::kModulo;
  return isWhole ? Form::kWhole : Form::kDouble;
}

Form FormOfFunction(const Expression& node) {
  switch (node.function) {
    case Function::kIif:
      return CommonForm(FormOf(*node.operands[1]), FormOf(*node.operands[2]));
    case Function::kNullTo:
      if (node.operands.size() == 2) {
        return CommonForm(FormOf(*node.operands[0]), FormOf(*node.operands[1]));
      }
      return CommonForm(FormOf(*node.operands[0]), Form::kNull) == Form::kNull
                 ? Form::kText
                 : FormOf(*node.operands[0]);
    case Function::kVal:
      return Form::kDouble;
    case Function::kLength:
      return Form::kWhole;
    default:
      return Form::kText;
  }
}

Form FormOfAggregate(const Expression& node) {
  switch (node.aggregate) {
    case Aggregate::kCount:
      return Form::kWhole;
    case Aggregate::kSum:
    case Aggregate::kAverage:
      return Form::kDouble;
    case Aggregate::kMinimum:
    case Aggregate::kMaximum:
      break;
  }
  return FormOf(*node.operands[0]);
}

bool IsNumeric(Form form) {
  return form == Form::kWhole || form == Form::kDouble;
}

bool IsNumericColumn(const Expression& node) {
  return node.kind == NodeKind::kColumn && node.coercion == Coercion::kNone &&
         IsNumeric(OwnFormOf(node));
}

}  // namespace

Form OwnFormOf(const Expression& node) {
  if (IsCondition(node)) {
    return Form::kWhole;
  }
  switch (node.kind) {
    case NodeKind::kLiteral:
      return FormOfLiteral(node);
    case NodeKind::kNull:
      return Form::kNull;
    case NodeKind::kColumn:
      return FormOfColumn(*node.column);
    case NodeKind::kNegate:
      return Form::kDouble;
    case NodeKind::kArithmetic:
      return FormOfArithmetic(node);
    case NodeKind::kConcat:
      return Form::kText;
    case NodeKind::kSubSelect:
      return FormOfResult(*node.query, 0);
    case NodeKind::kFunction:
      return FormOfFunction(node);
    case NodeKind::kAggregate:
      return FormOfAggregate(node);
    default:
      return Form::kWhole;  // True and False
  }
}

Form FormOf(const Expression& node) {
  switch (node.coercion) {
    case Coercion::kNone:
      return OwnFormOf(node);
    case Coercion::kNumber:
    case Coercion::kStoreDouble:
      return Form::kDouble;
    case Coercion::kStoreLong:
    case Coercion::kStoreBoolean:
      return Form::kWhole;
    case Coercion::kText:
    case Coercion::kDate:
    case Coercion::kStoreDate:
      break;
  }
  return Form::kText;
}

bool MayBeBoundAsText(const Expression& node) {
  const bool isCompared = node.conversion == Conversion::kCompareNumber ||
                          node.conversion == Conversion::kCompareBoolean;
  return node.kind == NodeKind::kLiteral && isCompared && node.valueClass != ValueClass::kNumber;
}

Form CommonForm(Form one, Form other) {
  if (one == other || other == Form::kNull) {
    return one;
  }
  if (one == Form::kNull) {
    return other;
  }
  return IsNumeric(one) && IsNumeric(other) ? Form::kDouble : Form::kAny;
}

Form FormOfResult(const Query& query, std::size_t column) {
  Form form = Form::kNull;
  for (const Select& select : query.selects) {
    form = CommonForm(form, FormOf(*select.items[column].expression));
  }
  return form;
}

std::string_view TypeOf(Form form) {
  switch (form) {
    case Form::kWhole:
      return "int4";
    case Form::kDouble:
      return "float8";
    case Form::kAny:
      return "jsonb";
    case Form::kText:
    case Form::kNull:
      break;
  }
  return "text";
}

namespace {

/// What a comparison knows of one side.
struct Side {
  Form form = Form::kNull;
  bool isTextColumn = false;
  bool isNumericColumn = false;
};

Comparing ComparingOfSides(const Side& one, const Side& other, bool collated) {
  const bool hasTextColumn = one.isTextColumn || other.isTextColumn;
  const bool hasNumericColumn = one.isNumericColumn || other.isNumericColumn;
  const Form common = CommonForm(one.form, other.form);
  switch (common) {
    case Form::kWhole:
    case Form::kDouble:
      return Comparing::kNumbers;
    case Form::kText:
    case Form::kNull:
      return hasTextColumn || collated ? Comparing::kFolded : Comparing::kTexts;
    case Form::kAny:
      break;
  }
  // A column has the other side read as its own values are.
  if (hasNumericColumn) {
    return Comparing::kNumbers;
  }
  return hasTextColumn ? Comparing::kFolded : Comparing::kOrder;
}

Side SideOf(const Expression& node) {
  return {FormOf(node), IsTextColumn(node), IsNumericColumn(node)};
}

}  // namespace

Comparing ComparingOf(const Expression& one, const Expression& other, bool collated) {
  return ComparingOfSides(SideOf(one), SideOf(other), collated);
}

Comparing ComparingWithResult(const Expression& one, const Query& query, bool collated) {
  return ComparingOfSides(SideOf(one), {FormOfResult(query, 0), false, false}, collated);
}

bool IsWholeColumn(const Expression& node) {
  return IsNumericColumn(node) && OwnFormOf(node) == Form::kWhole;
}

}  // namespace qorhost::postgres
