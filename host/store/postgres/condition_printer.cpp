#include "host/dialect/comparison.h"
#include "host/dialect/grouping.h"
#include "host/store/postgres/statement_printer.h"

namespace qorhost::postgres {

using namespace dialect;

namespace {

std::string_view SignOf(Operator op) {
  switch (op) {
    case Operator::kNotEqual:
      return " <> ";
    case Operator::kLess:
      return " < ";
    case Operator::kLessOrEqual:
      return " <= ";
    case Operator::kGreater:
      return " > ";
    case Operator::kGreaterOrEqual:
      return " >= ";
    default:
      return " = ";
  }
}

/// The operator with its sides exchanged.
Operator Mirrored(Operator op) {
  switch (op) {
    case Operator::kLess:
      return Operator::kGreater;
    case Operator::kLessOrEqual:
      return Operator::kGreaterOrEqual;
    case Operator::kGreater:
      return Operator::kLess;
    case Operator::kGreaterOrEqual:
      return Operator::kLessOrEqual;
    default:
      return op;
  }
}

bool IsOrdering(Operator op) {
  return op != Operator::kEqual && op != Operator::kNotEqual;
}

bool IsNumberLiteral(const Expression& node) {
  return node.kind == NodeKind::kLiteral && FormOf(node) == Form::kDouble;
}

/// Val of a column of whole numbers.
bool IsShownWhole(const Expression& node) {
  return node.kind == NodeKind::kFunction && node.function == Function::kVal &&
         node.coercion == Coercion::kNone && IsWholeColumn(*node.operands[0]);
}

}  // namespace

void StatementPrinter::PrintCondition(const Expression& node) {
  if (IsCondition(node) && node.coercion == Coercion::kNone && !IsGroupKey(node)) {
    PrintTruth(node);
  } else {
    PrintTruthOfValue(node);
  }
}

void StatementPrinter::PrintTruthOfValue(const Expression& node) {
  switch (FormOf(node)) {
    case Form::kWhole:
    case Form::kDouble:
      Write("(");
      PrintValue(node);
      Write(" <> 0)");
      break;
    case Form::kText:
    case Form::kAny:
      Write("desktop.truth(");
      PrintAs(node, Form::kAny);
      Write(")");
      break;
    case Form::kNull:
      Write("NULL::boolean");
      break;
  }
}

void StatementPrinter::PrintTruth(const Expression& node) {
  switch (node.kind) {
    case NodeKind::kCompare:
      PrintPair(*node.operands[0], node.op, *node.operands[1], node.collated);
      break;
    case NodeKind::kAnd:
      PrintChain(node, 0, node.operands.size(), " AND ");
      break;
    case NodeKind::kOr:
      PrintChain(node, 0, node.operands.size(), " OR ");
      break;
    case NodeKind::kXor:
      Write("((NOT ");
      PrintCondition(*node.operands[0]);
      Write(") <> (NOT ");
      PrintCondition(*node.operands[1]);
      Write("))");
      break;
    case NodeKind::kNot:
      Write("(NOT ");
      PrintCondition(*node.operands[0]);
      Write(")");
      break;
    case NodeKind::kLike:
      Write(node.negated ? "(NOT desktop.like(" : "desktop.like(");
      PrintAs(*node.operands[0], Form::kText);
      Write(", ");
      PrintAs(*node.operands[1], Form::kText);
      Write(node.negated ? "))" : ")");
      break;
    case NodeKind::kBetween:
      Write(node.negated ? "(NOT (" : "(");
      PrintPair(*node.operands[0], Operator::kGreaterOrEqual, *node.operands[1], node.collated);
      Write(" AND ");
      PrintPair(*node.operands[0], Operator::kLessOrEqual, *node.operands[2], node.collated);
      Write(node.negated ? "))" : ")");
      break;
    case NodeKind::kInList:
      PrintInList(node);
      break;
    case NodeKind::kInSelect:
      PrintInSelect(node);
      break;
    case NodeKind::kExists:
      Write("EXISTS (");
      PrintQuery(*node.query, {});
      Write(")");
      break;
    case NodeKind::kIsNull:
    case NodeKind::kFunction:  // IsNull
      Write("(");
      PrintValue(*node.operands[0]);
      Write(node.kind == NodeKind::kIsNull && node.negated ? " IS NOT NULL)" : " IS NULL)");
      break;
    default:
      break;  // no condition
  }
}

/// One side of a comparison.
void StatementPrinter::PrintSide(const Expression& node, Comparing comparing) {
  switch (comparing) {
    case Comparing::kNumbers: {
      const Form form = FormOf(node);
      const bool isRead = form == Form::kText || form == Form::kAny;
      Write(isRead ? "desktop.column_number(" : "");
      PrintAs(node, form == Form::kNull ? Form::kDouble : form);
      Write(isRead ? ")" : "");
      break;
    }
    case Comparing::kTexts:
      PrintAs(node, Form::kText);
      break;
    case Comparing::kFolded:
      Write("desktop.key(");
      PrintAs(node, Form::kText);
      Write(")");
      break;
    case Comparing::kOrder:
      Write("desktop.order_of(");
      PrintAs(node, Form::kAny);
      Write(")");
      break;
  }
}

void StatementPrinter::PrintPair(const Expression& left, Operator op, const Expression& right,
                                 bool collated) {
  const Comparing comparing = ComparingOf(left, right, collated);
  Write("(");
  if (IsWholeColumn(left) && IsNumberLiteral(right)) {
    PrintSide(left, comparing);
    Write(SignOf(op));
    PrintWholeLiteral(right, op);
  } else if (IsWholeColumn(right) && IsNumberLiteral(left)) {
    PrintWholeLiteral(left, Mirrored(op));
    Write(SignOf(op));
    PrintSide(right, comparing);
  } else if (op == Operator::kEqual && grouped_ == nullptr && IsShownWhole(left) &&
             IsNumberLiteral(right) && !MayBeBoundAsText(right)) {
    PrintShownNumber(left, right);
  } else {
    const bool isText = comparing == Comparing::kTexts || comparing == Comparing::kFolded;
    PrintSide(left, comparing);
    Write(isText && IsOrdering(op) ? " COLLATE \"C\"" : "");
    Write(SignOf(op));
    PrintSide(right, comparing);
  }
  Write(")");
}

/// A number to the right of a column of whole numbers, as a whole number, so that an index of the
/// column can be used: 5.5 is above 5 and below 6, and equals none.
void StatementPrinter::PrintWholeLiteral(const Expression& literal, Operator op) {
  const bool fromBelow = op == Operator::kLess || op == Operator::kGreaterOrEqual;
  const bool fromAbove = op == Operator::kLessOrEqual || op == Operator::kGreater;
  Write(fromBelow ? "desktop.whole_from(" : fromAbove ? "desktop.whole_to(" : "desktop.whole(");
  PrintLiteral(literal);
  Write(")");
}

/// Val of a column of whole numbers beside a number. What is shown is compared, Null being 0, and
/// the column besides, so that an index of it can be used: who asks whether a number is free would
/// look at all of a unit's rows otherwise.
void StatementPrinter::PrintShownNumber(const Expression& shown, const Expression& literal) {
  const Expression& column = *shown.operands[0];
  PrintSide(shown, Comparing::kNumbers);
  Write(" = ");
  PrintLiteral(literal);
  const std::size_t number = printed_.parameters.size();
  Write(" AND (");
  PrintValue(column);
  Write(" = desktop.whole($");
  WriteNumber(number);
  Write("::");
  Write(TypeOf(Form::kDouble));
  Write(") OR ");
  PrintValue(column);
  Write(" IS NULL)");
}

void StatementPrinter::PrintInList(const Expression& node) {
  const Expression& tested = *node.operands[0];
  if (node.operands.size() == 1) {
    Write(node.negated ? "true" : "false");
    return;
  }
  // The list in the runs of values that are compared alike.
  Write(node.negated ? "(NOT (" : "(");
  for (std::size_t index = 1; index < node.operands.size();) {
    const Comparing comparing = ComparingOf(tested, *node.operands[index], node.collated);
    Write(index > 1 ? " OR " : "");
    PrintSide(tested, comparing);
    std::string_view separator = " IN (";
    for (; index < node.operands.size(); ++index) {
      const Expression& value = *node.operands[index];
      if (ComparingOf(tested, value, node.collated) != comparing) {
        break;
      }
      Write(separator);
      if (IsWholeColumn(tested) && IsNumberLiteral(value)) {
        PrintWholeLiteral(value, Operator::kEqual);
      } else {
        PrintSide(value, comparing);
      }
      separator = ", ";
    }
    Write(")");
  }
  Write(node.negated ? "))" : ")");
}

void StatementPrinter::PrintInSelect(const Expression& node) {
  const Expression& tested = *node.operands[0];
  const Comparing comparing = ComparingWithResult(tested, *node.query, node.collated);
  Write("(");
  PrintSide(tested, comparing);
  Write(node.negated ? " NOT IN (" : " IN (");
  PrintQuery(*node.query, {.named = false, .comparing = comparing, .single = false});
  Write("))");
}

bool StatementPrinter::IsGroupKey(const Expression& node) const {
  return grouped_ != nullptr && IsGrouped(*grouped_, node);
}

}  // namespace qorhost::postgres
