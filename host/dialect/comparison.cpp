#include "host/dialect/comparison.h"

namespace qorhost::dialect {

namespace {

bool IsLiteral(const Expression& expression) {
  return expression.kind == NodeKind::kLiteral;
}

bool IsNumeric(ValueClass valueClass) {
  return valueClass == ValueClass::kNumber || valueClass == ValueClass::kBoolean;
}

// What a literal becomes beside values of a class.
Conversion ConversionFor(ValueClass valueClass, bool ordering) {
  switch (valueClass) {
    case ValueClass::kNumber:
      return Conversion::kCompareNumber;
    case ValueClass::kBoolean:
      return Conversion::kCompareBoolean;
    case ValueClass::kDate:
      return ordering ? Conversion::kOrderDate : Conversion::kCompareDate;
    case ValueClass::kText:
      return Conversion::kToText;
    case ValueClass::kUnknown:
    case ValueClass::kNull:
      break;
  }
  return Conversion::kNone;
}

void AlignLiterals(Expression& one, Expression& other, bool ordering) {
  if (one.valueClass == ValueClass::kText && other.valueClass != ValueClass::kText) {
    one.conversion = ConversionFor(other.valueClass, ordering);
  } else if (other.valueClass == ValueClass::kText && one.valueClass != ValueClass::kText) {
    other.conversion = ConversionFor(one.valueClass, ordering);
  }
}

// A text beside a number, neither of them a literal.
void AlignTextWithNumber(Expression& text, Expression& number) {
  const bool textIsColumn = text.kind == NodeKind::kColumn;
  if (textIsColumn && number.kind == NodeKind::kColumn) {
    return;  // the engine compares the two columns as numbers
  }
  if (textIsColumn) {
    number.coercion = Coercion::kText;
  } else {
    text.coercion = Coercion::kNumber;
  }
}

}  // namespace

bool IsCondition(const Expression& expression) {
  switch (expression.kind) {
    case NodeKind::kCompare:
    case NodeKind::kAnd:
    case NodeKind::kOr:
    case NodeKind::kXor:
    case NodeKind::kNot:
    case NodeKind::kLike:
    case NodeKind::kBetween:
    case NodeKind::kInList:
    case NodeKind::kInSelect:
    case NodeKind::kExists:
    case NodeKind::kIsNull:
      return true;
    case NodeKind::kFunction:
      return expression.function == Function::kIsNull;
    default:
      return false;
  }
}

bool IsTextColumn(const Expression& expression) {
  return expression.kind == NodeKind::kColumn && expression.type == ColumnType::kText &&
         expression.coercion == Coercion::kNone;
}

bool MayBeText(const Expression& expression) {
  return expression.valueClass == ValueClass::kText ||
         expression.valueClass == ValueClass::kUnknown || expression.coercion == Coercion::kText ||
         expression.conversion == Conversion::kToText;
}

void Align(Expression& one, Expression& other, bool ordering) {
  if (IsLiteral(one) && IsLiteral(other)) {
    AlignLiterals(one, other, ordering);
  } else if (IsLiteral(one)) {
    one.conversion = ConversionFor(other.valueClass, ordering);
  } else if (IsLiteral(other)) {
    other.conversion = ConversionFor(one.valueClass, ordering);
  } else if (one.valueClass == ValueClass::kText && IsNumeric(other.valueClass)) {
    AlignTextWithNumber(one, other);
  } else if (other.valueClass == ValueClass::kText && IsNumeric(one.valueClass)) {
    AlignTextWithNumber(other, one);
  } else if (one.valueClass == ValueClass::kDate && other.valueClass != ValueClass::kDate) {
    other.coercion = Coercion::kDate;
  } else if (other.valueClass == ValueClass::kDate && one.valueClass != ValueClass::kDate) {
    one.coercion = Coercion::kDate;
  }
}

void AlignWithResult(Expression& left, const ResultColumn& result) {
  if (IsLiteral(left)) {
    left.conversion = ConversionFor(result.valueClass, false);
  } else if (left.valueClass == ValueClass::kText && IsNumeric(result.valueClass)) {
    left.coercion = Coercion::kNumber;
  } else if (IsNumeric(left.valueClass) && result.valueClass == ValueClass::kText) {
    left.coercion = Coercion::kText;
  } else if (left.valueClass != ValueClass::kDate && result.valueClass == ValueClass::kDate) {
    left.coercion = Coercion::kDate;
  }
}

void AlignWithColumn(Expression& value, const Column& column) {
  if (IsLiteral(value)) {
    value.conversion = Conversion::kStore;
    value.target = &column;
    return;
  }
  if (value.kind == NodeKind::kNull || value.type == column.type) {
    return;
  }
  switch (column.type) {
    case ColumnType::kIdentity:
    case ColumnType::kLong:
      if (value.type != ColumnType::kIdentity && value.type != ColumnType::kBoolean) {
        value.coercion = Coercion::kStoreLong;
      }
      break;
    case ColumnType::kDouble:
      if (!IsNumeric(value.valueClass)) {
        value.coercion = Coercion::kStoreDouble;
      }
      break;
    case ColumnType::kBoolean:
      value.coercion = Coercion::kStoreBoolean;
      break;
    case ColumnType::kDate:
      value.coercion = Coercion::kStoreDate;
      break;
    case ColumnType::kText:
      value.coercion = Coercion::kText;
      break;
  }
}

bool NeedsCollation(const Expression& one, const Expression& other) {
  const auto isOtherColumn = [](const Expression& side) {
    return side.kind == NodeKind::kColumn && side.valueClass != ValueClass::kText;
  };
  return !IsTextColumn(one) && !IsTextColumn(other) && !isOtherColumn(one) &&
         !isOtherColumn(other) && (MayBeText(one) || MayBeText(other));
}

}  // namespace qorhost::dialect
