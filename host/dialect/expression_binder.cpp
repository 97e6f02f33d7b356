#include <string>
#include <utility>

#include "host/dialect/common_type.h"
#include "host/dialect/comparison.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/dialect/statement_binder.h"

namespace qorhost::dialect {

namespace {

void SetType(Expression& node, ColumnType type) {
  node.type = type;
  node.valueClass = ClassOf(type);
}

void SetCommon(Expression& node, const Expression& one, const Expression& other) {
  node.valueClass = CommonClass(one.valueClass, other.valueClass);
  node.type = CommonType(one.valueClass, one.type, other.valueClass, other.type);
}

ValueClass ClassOfArithmetic(const Expression& node) {
  const ValueClass left = node.operands[0]->valueClass;
  const ValueClass right = node.operands[1]->valueClass;
  if (node.op == Operator::kAdd && left == ValueClass::kText && right == ValueClass::kText) {
    return ValueClass::kText;
  }
  const bool hasDate = left == ValueClass::kDate || right == ValueClass::kDate;
  const bool bothDates = left == ValueClass::kDate && right == ValueClass::kDate;
  if (hasDate && (node.op == Operator::kAdd || (node.op == Operator::kSubtract && !bothDates))) {
    return ValueClass::kDate;
  }
  return ValueClass::kNumber;
}

// What stands where a text is expected. The engine's functions read numbers as texts themselves,
// but a date they would read in its canonical text.
void AsText(Expression& operand) {
  if (operand.kind == NodeKind::kLiteral) {
    operand.conversion = Conversion::kToText;
  } else if (operand.valueClass == ValueClass::kDate) {
    operand.coercion = Coercion::kText;
  }
}

void BindConcat(Expression& node) {
  SetType(node, ColumnType::kText);
  for (const ExpressionPtr& operand : node.operands) {
    AsText(*operand);
    if (operand->kind != NodeKind::kLiteral && operand->valueClass != ValueClass::kText) {
      operand->coercion = Coercion::kText;
    }
  }
}

void BindCompare(Expression& node) {
  Expression& left = *node.operands[0];
  Expression& right = *node.operands[1];
  const bool isEquality = node.op == Operator::kEqual || node.op == Operator::kNotEqual;
  // Hosts write "= NULL" and "<> NULL" and mean IS NULL and IS NOT NULL.
  if (isEquality && (left.kind == NodeKind::kNull || right.kind == NodeKind::kNull)) {
    node.kind = NodeKind::kIsNull;
    node.negated = node.op == Operator::kNotEqual;
    if (left.kind == NodeKind::kNull) {
      std::swap(node.operands[0], node.operands[1]);
    }
    node.operands.pop_back();
    return;
  }
  Align(left, right, !isEquality);
  node.collated = NeedsCollation(left, right);
}

// What stands where a text of one kind is expected, to which a literal is held when it is bound.
void AsTextOfKind(Expression& operand, Conversion conversion) {
  AsText(operand);
  if (operand.kind == NodeKind::kLiteral) {
    operand.conversion = conversion;
  }
}

void BindLike(Expression& node) {
  AsText(*node.operands[0]);
  AsTextOfKind(*node.operands[1], Conversion::kPattern);
}

void BindFormat(Expression& node) {
  SetType(node, ColumnType::kText);
  if (node.operands.size() > 1) {
    AsTextOfKind(*node.operands[1], Conversion::kPicture);
  }
}

void BindBetween(Expression& node) {
  Expression& tested = *node.operands[0];
  for (std::size_t index = 1; index < node.operands.size(); ++index) {
    Align(tested, *node.operands[index], true);
  }
  node.collated =
      NeedsCollation(tested, *node.operands[1]) || NeedsCollation(tested, *node.operands[2]);
}

void BindInList(Expression& node) {
  Expression& tested = *node.operands[0];
  for (std::size_t index = 1; index < node.operands.size(); ++index) {
    Align(tested, *node.operands[index], false);
  }
  node.collated = !IsTextColumn(tested) && MayBeText(tested);
}

void BindNullTo(Expression& node) {
  const Expression& tested = *node.operands[0];
  if (node.operands.size() == 2) {
    SetCommon(node, tested, *node.operands[1]);
    return;
  }
  // Without a value of its own, Null becomes 0 among numbers and '' elsewhere.
  node.valueClass = tested.valueClass;
  node.type = tested.type;
  if (tested.valueClass == ValueClass::kDate || tested.valueClass == ValueClass::kNull) {
    node.valueClass = ValueClass::kUnknown;
    node.type.reset();
  }
}

}  // namespace

void StatementBinder::BindCondition(Expression& expression, const Scope& scope, bool aggregates) {
  BindExpression(expression, scope, aggregates);
  RequireCondition(expression);
}

void StatementBinder::RequireCondition(const Expression& expression) const {
  if (expression.valueClass == ValueClass::kText || expression.valueClass == ValueClass::kDate) {
    RefuseAt(expression.offset, "a condition is expected, not a text or a date");
  }
}

void StatementBinder::BindOperands(Expression& node, const Scope& scope, bool aggregates) {
  for (const ExpressionPtr& operand : node.operands) {
    BindExpression(*operand, scope, aggregates);
  }
}

void StatementBinder::BindExpression(Expression& node, const Scope& scope, bool aggregates) {
  if (node.kind == NodeKind::kAggregate) {
    BindAggregate(node, scope, aggregates);
    return;
  }
  BindOperands(node, scope, aggregates);
  if (IsCondition(node)) {
    SetType(node, ColumnType::kBoolean);
  }
  switch (node.kind) {
    case NodeKind::kLiteral:
      BindLiteral(node);
      break;
    case NodeKind::kTrue:
    case NodeKind::kFalse:
      SetType(node, ColumnType::kBoolean);
      break;
    case NodeKind::kNull:
      node.valueClass = ValueClass::kNull;
      break;
    case NodeKind::kColumn:
      BindColumn(node, scope);
      break;
    case NodeKind::kStar:
      RefuseAt(node.offset, "'*' has no meaning here");
    case NodeKind::kNegate:
      node.valueClass = ValueClass::kNumber;
      break;
    case NodeKind::kArithmetic:
      node.valueClass = ClassOfArithmetic(node);
      break;
    case NodeKind::kConcat:
      BindConcat(node);
      break;
    case NodeKind::kCompare:
      BindCompare(node);
      break;
    case NodeKind::kAnd:
    case NodeKind::kOr:
    case NodeKind::kXor:
    case NodeKind::kNot:
      for (const ExpressionPtr& operand : node.operands) {
        RequireCondition(*operand);
      }
      break;
    case NodeKind::kLike:
      BindLike(node);
      break;
    case NodeKind::kBetween:
      BindBetween(node);
      break;
    case NodeKind::kInList:
      BindInList(node);
      break;
    case NodeKind::kInSelect:
      BindInSelect(node, scope);
      break;
    case NodeKind::kExists:
      BindSubQuery(node, scope);
      break;
    case NodeKind::kSubSelect:
      BindSubQuery(node, scope);
      node.valueClass = node.query->results.front().valueClass;
      node.type = node.query->results.front().type;
      break;
    case NodeKind::kFunction:
      BindFunction(node);
      break;
    case NodeKind::kIsNull:
    case NodeKind::kAggregate:
      break;
  }
}

void StatementBinder::BindLiteral(Expression& node) const {
  switch (literals_[node.literal].kind) {
    case LiteralKind::kNumber:
      node.valueClass = ValueClass::kNumber;
      break;
    case LiteralKind::kText:
      SetType(node, ColumnType::kText);
      break;
    case LiteralKind::kDate:
    case LiteralKind::kTimeStamp:
      SetType(node, ColumnType::kDate);
      break;
  }
}

void StatementBinder::BindColumn(Expression& node, const Scope& scope) const {
  for (const Scope* around = &scope; around != nullptr; around = around->outer) {
    if (FindInScope(node, *around)) {
      node.type = node.column->type;
      node.valueClass = ClassOf(node.column->type);
      return;
    }
  }
  if (node.qualifier.empty()) {
    RefuseAt(node.offset, "unknown name " + Quoted(node.name));
  }
  RefuseAt(node.offset, "unknown table " + Quoted(node.qualifier));
}

bool StatementBinder::FindInScope(Expression& node, const Scope& scope) const {
  for (const TableName* table : scope.tables) {
    if (!node.qualifier.empty() && !SameName(node.qualifier, table->shownName())) {
      continue;
    }
    const Column* column = FindColumn(*table->table, node.name);
    if (column == nullptr && !node.qualifier.empty()) {
      RefuseAt(node.offset, "unknown column " + Quoted(node.name) + " of table " +
                                std::string(table->table->name));
    }
    if (column != nullptr && node.column != nullptr) {
      RefuseAt(node.offset, "the name " + Quoted(node.name) + " stands in more than one table");
    }
    if (column != nullptr) {
      node.column = column;
      node.source = table;
    }
  }
  return node.column != nullptr;
}

void StatementBinder::BindInSelect(Expression& node, const Scope& scope) {
  BindSubQuery(node, scope);
  Expression& tested = *node.operands[0];
  AlignWithResult(tested, node.query->results.front());
  node.collated = !IsTextColumn(tested) && MayBeText(tested);
}

void StatementBinder::BindAggregate(Expression& node, const Scope& scope, bool allowed) {
  if (!allowed) {
    RefuseAt(node.offset, "an aggregate function cannot stand here");
  }
  BindOperands(node, scope, false);
  switch (node.aggregate) {
    case Aggregate::kCount:
      SetType(node, ColumnType::kLong);
      break;
    case Aggregate::kSum:
      RequireNumber(*node.operands[0]);
      node.valueClass = ValueClass::kNumber;
      break;
    case Aggregate::kAverage:
      RequireNumber(*node.operands[0]);
      SetType(node, ColumnType::kDouble);
      break;
    case Aggregate::kMinimum:
    case Aggregate::kMaximum:
      node.valueClass = node.operands[0]->valueClass;
      node.type = node.operands[0]->type;
      break;
  }
}

void StatementBinder::RequireNumber(const Expression& operand) const {
  if (operand.valueClass == ValueClass::kText || operand.valueClass == ValueClass::kDate) {
    RefuseAt(operand.offset, "a number is expected, not a text or a date");
  }
}

void StatementBinder::BindFunction(Expression& node) const {
  switch (node.function) {
    case Function::kIif:
      RequireCondition(*node.operands[0]);
      SetCommon(node, *node.operands[1], *node.operands[2]);
      break;
    case Function::kVal:
      AsText(*node.operands[0]);
      SetType(node, ColumnType::kDouble);
      break;
    case Function::kFormat:
      BindFormat(node);
      break;
    case Function::kUpper:
    case Function::kLower:
    case Function::kTrim:
    case Function::kTrimLeft:
    case Function::kTrimRight:
    case Function::kLeft:
    case Function::kRight:
    case Function::kMiddle:
      AsText(*node.operands[0]);
      SetType(node, ColumnType::kText);
      break;
    case Function::kLength:
      AsText(*node.operands[0]);
      SetType(node, ColumnType::kLong);
      break;
    case Function::kNullTo:
      BindNullTo(node);
      break;
    case Function::kNow:
    case Function::kToday:
      SetType(node, ColumnType::kDate);
      break;
    case Function::kIsNull:
      break;
  }
}

}  // namespace qorhost::dialect
