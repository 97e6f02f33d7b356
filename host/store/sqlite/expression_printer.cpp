#include <algorithm>

#include "host/dialect/comparison.h"
#include "host/dialect/names.h"
#include "host/store/sqlite/engine_names.h"
#include "host/store/sqlite/statement_printer.h"

namespace qorhost::sqlite {

using namespace dialect;

namespace {

constexpr std::size_t kChainLength = 16;

}  // namespace

// A value by which rows are told apart or ordered: texts without regard to case.
void StatementPrinter::PrintKey(const Expression& node) {
  PrintValue(node);
  if (MayBeText(node) && !IsTextColumn(node)) {
    Write(kCollate);
  }
}

void StatementPrinter::PrintValue(const Expression& node) {
  if (node.coercion == Coercion::kNone) {
    PrintUncoerced(node);
    return;
  }
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  Write(FunctionOf(node.coercion, node.valueClass));
  Write("(");
  PrintUncoerced(node);
  Write(")");
}

void StatementPrinter::PrintUncoerced(const Expression& node) {
  if (IsCondition(node)) {
    // The engine's truth is 1, the dialect's is -1.
    const Stacked stacked(*this, kStackOfBrackets, node.offset);
    Write("(-(");
    PrintTruth(node);
    Write("))");
    return;
  }
  switch (node.kind) {
    case NodeKind::kLiteral:
      PrintLiteral(node);
      break;
    case NodeKind::kTrue:
      Write("-1");
      break;
    case NodeKind::kFalse:
      Write("0");
      break;
    case NodeKind::kNull:
      Write("NULL");
      break;
    case NodeKind::kColumn:
      Write(QuotedName(node.source->shownName()));
      Write(".");
      Write(QuotedName(node.column->name));
      break;
    case NodeKind::kNegate: {
      const Stacked stacked(*this, kStackOfBrackets, node.offset);
      Write("(- ");  // two signs together would begin a comment
      PrintNumber(*node.operands[0]);
      Write(")");
      break;
    }
    case NodeKind::kArithmetic:
      PrintArithmetic(node);
      break;
    case NodeKind::kConcat:
      PrintChain(node, 0, node.operands.size(), " || ");
      break;
    case NodeKind::kSubSelect:
      Write("(");
      PrintQuery(*node.query, false);
      Write(")");
      break;
    case NodeKind::kFunction:
      PrintFunction(node);
      break;
    case NodeKind::kAggregate:
      PrintAggregate(node);
      break;
    default:
      break;  // the conditions, printed above
  }
}

void StatementPrinter::PrintLiteral(const Expression& node) {
  Parameter parameter;
  parameter.conversion = node.conversion;
  parameter.negated = node.negated;
  parameter.literal = node.literal;
  parameter.target = node.target;
  WriteParameter(parameter, node.offset);
}

// A chain of operators that may be bracketed at will: long ones in groups, so that the engine
// does not nest them one by one.
void StatementPrinter::PrintChain(const Expression& node, std::size_t first, std::size_t count,
                                  std::string_view symbol) {
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  std::size_t group = 1;
  while (group * kChainLength < count) {
    group *= kChainLength;
  }
  Write("(");
  for (std::size_t done = 0; done < count; done += group) {
    Write(done > 0 ? symbol : "");
    const std::size_t size = std::min(group, count - done);
    if (size > 1) {
      PrintChain(node, first + done, size, symbol);
    } else if (node.kind == NodeKind::kConcat) {
      PrintConcatenated(*node.operands[first + done]);
    } else {
      PrintCondition(*node.operands[first + done]);
    }
  }
  Write(")");
}

// Null is '' beside other texts.
void StatementPrinter::PrintConcatenated(const Expression& node) {
  if (node.kind == NodeKind::kLiteral) {
    PrintLiteral(node);
    return;
  }
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  Write("ifnull(");
  PrintValue(node);
  Write(", '')");
}

// An operand of arithmetic.
void StatementPrinter::PrintNumber(const Expression& node) {
  const bool isDate = node.valueClass == ValueClass::kDate;
  const bool isPlain = node.valueClass == ValueClass::kNumber ||
                       node.valueClass == ValueClass::kBoolean ||
                       node.valueClass == ValueClass::kNull;
  const Stacked stacked(*this, isPlain ? 0 : kStackOfBrackets, node.offset);
  Write(isPlain ? "" : isDate ? "desktop_serial(" : "desktop_store_double(");
  PrintValue(node);
  Write(isPlain ? "" : ")");
}

void StatementPrinter::PrintArithmetic(const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  const Expression& left = *node.operands[0];
  const Expression& right = *node.operands[1];
  if (node.valueClass == ValueClass::kText) {
    Write("(");
    PrintValue(left);
    Write(" || ");
    PrintValue(right);
    Write(")");
    return;
  }
  const bool isDate = node.valueClass == ValueClass::kDate;
  Write(isDate ? "desktop_from_serial" : FunctionOf(node.op));
  Write("(");
  PrintNumber(left);
  Write(SymbolOf(node.op));
  PrintNumber(right);
  Write(")");
}

void StatementPrinter::PrintFunction(const Expression& node) {
  switch (node.function) {
    case Function::kIif:
      PrintCase(node);
      break;
    case Function::kFormat:
      PrintFormat(node);
      break;
    case Function::kNullTo:
      PrintNullTo(node);
      break;
    case Function::kNow:
    case Function::kToday: {
      Parameter parameter;
      parameter.source =
          node.function == Function::kNow ? ParameterSource::kNow : ParameterSource::kToday;
      WriteParameter(parameter, node.offset);
      break;
    }
    default:
      PrintCall(FunctionOf(node.function), node);
      break;
  }
}

void StatementPrinter::PrintCall(std::string_view name, const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets + 2, node.offset);
  Write(name);
  Write("(");
  std::string_view separator;
  for (const ExpressionPtr& operand : node.operands) {
    Write(separator);
    PrintValue(*operand);
    separator = ", ";
  }
  Write(")");
}

void StatementPrinter::PrintCase(const Expression& node) {
  const Stacked stacked(*this, kStackOfCase, node.offset);
  Write("CASE WHEN ");
  PrintCondition(*node.operands[0]);
  Write(" THEN ");
  PrintValue(*node.operands[1]);
  Write(" ELSE ");
  PrintValue(*node.operands[2]);
  Write(" END");
}

void StatementPrinter::PrintFormat(const Expression& node) {
  const bool isDate = node.operands[0]->valueClass == ValueClass::kDate;
  PrintCall(isDate ? "desktop_format_date" : "desktop_format", node);
}

void StatementPrinter::PrintNullTo(const Expression& node) {
  if (node.operands.size() == 2) {
    PrintCall("ifnull", node);
    return;
  }
  const Stacked stacked(*this, kStackOfBrackets + 2, node.offset);
  const ValueClass tested = node.operands[0]->valueClass;
  const bool isNumber = tested == ValueClass::kNumber || tested == ValueClass::kBoolean;
  Write("ifnull(");
  PrintValue(*node.operands[0]);
  Write(isNumber ? ", 0)" : ", '')");
}

void StatementPrinter::PrintAggregate(const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  Write(FunctionOf(node.aggregate));
  Write("(");
  if (node.operands.empty()) {
    Write("*");
  } else if (node.aggregate == Aggregate::kMinimum || node.aggregate == Aggregate::kMaximum) {
    PrintKey(*node.operands[0]);
  } else {
    PrintValue(*node.operands[0]);
  }
  Write(")");
}

}  // namespace qorhost::sqlite
