#include <algorithm>

#include "host/dialect/comparison.h"
#include "host/dialect/names.h"
#include "host/store/postgres/statement_printer.h"
#include "host/store/postgres/table_text.h"

namespace qorhost::postgres {

using namespace dialect;

namespace {

constexpr std::size_t kChainLength = 16;

/// Whether rows are grouped by the column as it stands.
bool IsItsOwnKey(const Expression& node) {
  return node.kind == NodeKind::kColumn && node.column->type != ColumnType::kText &&
         !TakesTimeStamps(*node.column);
}

std::string_view CallOf(Operator op) {
  switch (op) {
    case Operator::kMultiply:
      return "desktop.multiply(";
    case Operator::kDivide:
      return "desktop.divide(";
    case Operator::kWholeDivide:
      return "desktop.whole_divide(";
    case Operator::kModulo:
      return "desktop.modulo(";
    case Operator::kPower:
      return "desktop.power(";
    default:
      return "(";
  }
}

std::string_view BetweenOperands(Operator op) {
  switch (op) {
    case Operator::kAdd:
      return " + ";
    case Operator::kSubtract:
      return " - ";
    default:
      return ", ";
  }
}

std::string_view CallOf(Function function) {
  switch (function) {
    case Function::kUpper:
      return "desktop.ucase(";
    case Function::kLower:
      return "desktop.lcase(";
    case Function::kLength:
      return "desktop.len(";
    case Function::kTrim:
      return "desktop.trim(";
    case Function::kTrimLeft:
      return "desktop.ltrim(";
    case Function::kTrimRight:
      return "desktop.rtrim(";
    case Function::kLeft:
      return "desktop.left(";
    case Function::kRight:
      return "desktop.right(";
    case Function::kMiddle:
      return "desktop.mid(";
    default:
      return "(";
  }
}

}  // namespace

void StatementPrinter::PrintOwn(const Expression& node) {
  // The server knows a group's key again where it is a column and no other expression; the others
  // are the same for all rows of the group, but for letter case.
  if (!IsGroupKey(node) || IsItsOwnKey(node)) {
    PrintUngrouped(node);
    return;
  }
  const Grouped inside(*this, nullptr);
  Write("desktop.first(");
  PrintUngrouped(node);
  Write(")");
}

void StatementPrinter::PrintUngrouped(const Expression& node) {
  if (IsCondition(node)) {
    // The server's truth is 1, the dialect's is -1.
    Write("(-(");
    PrintTruth(node);
    Write(")::int4)");
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
      PrintColumn(node);
      break;
    case NodeKind::kNegate:
      Write("(- ");  // two signs together would begin a comment
      PrintNumber(*node.operands[0]);
      Write(")");
      break;
    case NodeKind::kArithmetic:
      PrintArithmetic(node);
      break;
    case NodeKind::kConcat:
      PrintChain(node, 0, node.operands.size(), " || ");
      break;
    case NodeKind::kSubSelect:
      Write("(");
      PrintQuery(*node.query, {.named = false, .comparing = std::nullopt, .single = true});
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

void StatementPrinter::PrintColumn(const Expression& node) {
  const bool isRead = TakesTimeStamps(*node.column);
  Write(isRead ? "desktop.stored_value(" : "");
  Write(QuotedName(node.source->shownName()));
  Write(".");
  Write(QuotedName(node.column->name));
  Write(isRead ? ")" : "");
}

void StatementPrinter::PrintLiteral(const Expression& node) {
  PrintLiteral(node, MayBeBoundAsText(node) ? "desktop.bound_number(" : "");
}

/// A literal; `reader` is what reads its text, where it is bound as one.
void StatementPrinter::PrintLiteral(const Expression& node, std::string_view reader) {
  Parameter parameter;
  parameter.conversion = node.conversion;
  parameter.negated = node.negated;
  parameter.literal = node.literal;
  parameter.target = node.target;
  Write(reader);
  WriteParameter(parameter, node.offset, reader.empty() ? TypeOf(OwnFormOf(node)) : "text");
  Write(reader.empty() ? "" : ")");
}

// A chain of operators that may be bracketed at will: long ones in groups, so that the server does
// not nest them one by one.
void StatementPrinter::PrintChain(const Expression& node, std::size_t first, std::size_t count,
                                  std::string_view symbol) {
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
  const bool mayBeNull = node.kind != NodeKind::kLiteral;
  Write(mayBeNull ? "coalesce(" : "");
  PrintAs(node, Form::kText);
  Write(mayBeNull ? ", '')" : "");
}

// An operand of arithmetic.
void StatementPrinter::PrintNumber(const Expression& node) {
  if (node.valueClass == ValueClass::kDate) {
    Write("desktop.serial(");
    PrintAs(node, Form::kText);
    Write(")");
  } else {
    PrintAs(node, Form::kDouble);
  }
}

void StatementPrinter::PrintArithmetic(const Expression& node) {
  const Expression& left = *node.operands[0];
  const Expression& right = *node.operands[1];
  if (node.valueClass == ValueClass::kText) {
    Write("(");
    PrintAs(left, Form::kText);
    Write(" || ");
    PrintAs(right, Form::kText);
    Write(")");
    return;
  }
  const bool isDate = node.valueClass == ValueClass::kDate;
  Write(isDate ? "desktop.from_serial(" : CallOf(node.op));
  PrintNumber(left);
  Write(BetweenOperands(node.op));
  PrintNumber(right);
  Write(")");
}

void StatementPrinter::PrintFunction(const Expression& node) {
  switch (node.function) {
    case Function::kIif:
      PrintCase(node);
      break;
    case Function::kVal:
      // A number is read from what it shows: a whole one shows all of itself.
      if (FormOf(*node.operands[0]) == Form::kWhole && IsWholeColumn(*node.operands[0])) {
        Write("coalesce(");
        PrintAs(*node.operands[0], Form::kDouble);
        Write(", 0)");
        break;
      }
      Write("desktop.val(");
      PrintAs(*node.operands[0], Form::kText);
      Write(")");
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
      WriteParameter(parameter, node.offset, "text");
      break;
    }
    default:
      PrintTextCall(CallOf(node.function), node);
      break;
  }
}

/// A function of a text and of numbers behind it.
void StatementPrinter::PrintTextCall(std::string_view name, const Expression& node) {
  Write(name);
  PrintAs(*node.operands[0], Form::kText);
  for (std::size_t index = 1; index < node.operands.size(); ++index) {
    Write(", ");
    PrintAs(*node.operands[index], Form::kDouble);
  }
  Write(")");
}

void StatementPrinter::PrintCase(const Expression& node) {
  const Form form = OwnFormOf(node);
  Write("CASE WHEN ");
  PrintCondition(*node.operands[0]);
  Write(" THEN ");
  PrintAs(*node.operands[1], form);
  Write(" ELSE ");
  PrintAs(*node.operands[2], form);
  Write(" END");
}

void StatementPrinter::PrintFormat(const Expression& node) {
  const Expression& value = *node.operands[0];
  const Form form = FormOf(value);
  const bool isDate = value.valueClass == ValueClass::kDate && form == Form::kText;
  Write(isDate ? "desktop.format_date(" : "desktop.format(");
  PrintAs(value, form == Form::kWhole ? Form::kDouble : form == Form::kNull ? Form::kText : form);
  Write(", ");
  if (node.operands.size() > 1) {
    PrintAs(*node.operands[1], Form::kText);
  } else {
    Write("NULL::text");
  }
  Write(")");
}

void StatementPrinter::PrintNullTo(const Expression& node) {
  const Form form = OwnFormOf(node);
  Write("coalesce(");
  PrintAs(*node.operands[0], form);
  if (node.operands.size() == 2) {
    Write(", ");
    PrintAs(*node.operands[1], form);
    Write(")");
    return;
  }
  const ValueClass tested = node.operands[0]->valueClass;
  const bool isNumber = tested == ValueClass::kNumber || tested == ValueClass::kBoolean;
  if (form == Form::kAny) {
    Write(isNumber ? ", '0'::jsonb)" : ", '\"\"'::jsonb)");
  } else {
    Write(isNumber ? ", 0)" : ", '')");
  }
}

void StatementPrinter::PrintAggregate(const Expression& node) {
  const Grouped inside(*this, nullptr);
  if (node.operands.empty()) {
    Write("count(*)");
    return;
  }
  const Expression& operand = *node.operands[0];
  const Form form = FormOf(operand);
  const bool isNumeric = form == Form::kWhole || form == Form::kDouble;
  const bool isLowest = node.aggregate == Aggregate::kMinimum;
  switch (node.aggregate) {
    case Aggregate::kCount:
      Write("count(");
      PrintValue(operand);
      break;
    case Aggregate::kSum:
    case Aggregate::kAverage:
      Write(node.aggregate == Aggregate::kSum ? "sum(" : "avg(");
      PrintNumber(operand);
      break;
    case Aggregate::kMinimum:
    case Aggregate::kMaximum:
      if (isNumeric) {
        Write(isLowest ? "min(" : "max(");
      } else {
        Write(isLowest ? "desktop.lowest(" : "desktop.highest(");
      }
      PrintAs(operand, form == Form::kNull ? Form::kText : form);
      break;
  }
  Write(")");
}

}  // namespace qorhost::postgres
