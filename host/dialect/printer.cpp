#include "host/dialect/printer.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/dialect/comparison.h"
#include "host/dialect/lexer.h"
#include "host/dialect/names.h"

namespace qorhost::dialect {

namespace {

constexpr std::string_view kCollate = " COLLATE \"DESKTOP\"";

// The engine reads statements with a stack of 100 entries and expressions to a depth of 1000.
constexpr std::size_t kMostStack = 90;
constexpr std::size_t kStackOfQuery = 10;
constexpr std::size_t kStackOfBrackets = 3;
constexpr std::size_t kStackOfCase = 6;
constexpr std::size_t kChainLength = 16;
constexpr std::size_t kMostParameters = 200'000;

std::string_view SymbolOf(Operator op) {
  switch (op) {
    case Operator::kAdd:
      return " + ";
    case Operator::kSubtract:
      return " - ";
    case Operator::kMultiply:
      return " * ";
    case Operator::kEqual:
      return " = ";
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
    case Operator::kDivide:
    case Operator::kWholeDivide:
    case Operator::kModulo:
    case Operator::kPower:
    case Operator::kNone:
      break;
  }
  return ", ";  // printed as a function of two arguments
}

std::string_view FunctionOf(Operator op) {
  switch (op) {
    case Operator::kDivide:
      return "desktop_divide";
    case Operator::kWholeDivide:
      return "desktop_whole_divide";
    case Operator::kModulo:
      return "desktop_modulo";
    case Operator::kPower:
      return "desktop_power";
    default:
      return "";
  }
}

std::string_view FunctionOf(Function function) {
  switch (function) {
    case Function::kVal:
      return "desktop_val";
    case Function::kFormat:
      return "desktop_format";
    case Function::kUpper:
      return "desktop_ucase";
    case Function::kLower:
      return "desktop_lcase";
    case Function::kLength:
      return "desktop_len";
    case Function::kTrim:
      return "desktop_trim";
    case Function::kTrimLeft:
      return "desktop_ltrim";
    case Function::kTrimRight:
      return "desktop_rtrim";
    case Function::kLeft:
      return "desktop_left";
    case Function::kRight:
      return "desktop_right";
    case Function::kMiddle:
      return "desktop_mid";
    case Function::kIif:
    case Function::kIsNull:
    case Function::kNullTo:
    case Function::kNow:
    case Function::kToday:
      break;
  }
  return "";
}

std::string_view FunctionOf(Aggregate aggregate) {
  switch (aggregate) {
    case Aggregate::kCount:
      return "count";
    case Aggregate::kSum:
      return "sum";
    case Aggregate::kMinimum:
      return "min";
    case Aggregate::kMaximum:
      return "max";
    case Aggregate::kAverage:
      return "avg";
  }
  return "";
}

std::string_view FunctionOf(Coercion coercion, ValueClass valueClass) {
  switch (coercion) {
    case Coercion::kText:
      return valueClass == ValueClass::kDate ? "desktop_date_text" : "desktop_text";
    case Coercion::kNumber:
      return "desktop_number";
    case Coercion::kDate:
      return "desktop_date";
    case Coercion::kStoreLong:
      return "desktop_store_long";
    case Coercion::kStoreDouble:
      return "desktop_store_double";
    case Coercion::kStoreBoolean:
      return "desktop_store_boolean";
    case Coercion::kStoreDate:
      return "desktop_store_date";
    case Coercion::kNone:
      break;
  }
  return "";
}

class Printer {
 public:
  explicit Printer(std::string_view sql) : sql_(sql) {}

  PrintedStatement PrintStatement(const Statement& statement) {
    switch (statement.kind) {
      case StatementKind::kSelect:
        PrintQuery(statement.query, true);
        break;
      case StatementKind::kInsert:
        PrintInsert(statement);
        break;
      case StatementKind::kUpdate:
        PrintUpdate(statement);
        break;
      case StatementKind::kDelete:
        Write("DELETE FROM ");
        PrintTable(statement.table);
        PrintWhere(statement.where);
        break;
    }
    return std::move(printed_);
  }

 private:
  // Counts what the engine's parser stacks up for as long as it lives.
  class Stacked {
   public:
    Stacked(Printer& printer, std::size_t entries, std::size_t offset)
        : printer_(printer), entries_(entries) {
      if (printer_.stack_ + entries > kMostStack) {
        Refuse(printer_.sql_, offset, "the statement is nested too deeply");
      }
      printer_.stack_ += entries;
    }
    ~Stacked() { printer_.stack_ -= entries_; }
    Stacked(const Stacked&) = delete;
    Stacked& operator=(const Stacked&) = delete;

   private:
    Printer& printer_;
    std::size_t entries_;
  };

  void Write(std::string_view text) { printed_.sql += text; }

  void WriteParameter(const Parameter& parameter, std::size_t offset) {
    if (printed_.parameters.size() == kMostParameters) {
      Refuse(sql_, offset, "more than " + std::to_string(kMostParameters) + " values");
    }
    printed_.parameters.push_back(parameter);
    // Numbered, the engine would look each up in a list of all.
    Write("?");
  }

  // Statements.

  void PrintInsert(const Statement& statement) {
    Write("INSERT INTO ");
    Write(QuotedName(statement.table.table->name));
    Write(" (");
    std::string_view separator;
    for (const Assignment& assignment : statement.assignments) {
      Write(separator);
      Write(QuotedName(assignment.column->name));
      separator = ", ";
    }
    Write(") VALUES (");
    separator = {};
    for (const Assignment& assignment : statement.assignments) {
      Write(separator);
      PrintValue(*assignment.value);
      separator = ", ";
    }
    Write(")");
  }

  void PrintUpdate(const Statement& statement) {
    Write("UPDATE ");
    PrintTable(statement.table);
    std::string_view separator = " SET ";
    for (const Assignment& assignment : statement.assignments) {
      Write(separator);
      Write(QuotedName(assignment.column->name));
      Write(" = ");
      PrintValue(*assignment.value);
      separator = ", ";
    }
    PrintWhere(statement.where);
  }

  void PrintTable(const TableName& table) {
    Write(QuotedName(table.table->name));
    if (!table.alias.empty()) {
      Write(" AS ");
      Write(QuotedName(table.alias));
    }
  }

  void PrintWhere(const ExpressionPtr& where) {
    if (where) {
      Write(" WHERE ");
      PrintCondition(*where);
    }
  }

  void PrintQuery(const Query& query, bool named) {
    const Stacked stacked(*this, kStackOfQuery, query.selects.front().offset);
    const bool isUnion = query.selects.size() > 1;
    for (std::size_t index = 0; index < query.selects.size(); ++index) {
      const Select& select = query.selects[index];
      if (index > 0) {
        Write(query.unionAll[index - 1] ? " UNION ALL " : " UNION ");
      }
      // A limit inside a union needs a SELECT of its own.
      const bool isLimited = isUnion && select.top.has_value();
      Write(isLimited ? "SELECT * FROM (" : "");
      PrintSelect(select, isUnion, named && index == 0);
      if (isLimited) {
        PrintLimit(select);
        Write(")");
      }
    }
    PrintOrder(query, isUnion);
    if (!isUnion && query.selects.front().top) {
      PrintLimit(query.selects.front());
    }
  }

  void PrintLimit(const Select& select) {
    Write(" LIMIT ");
    Parameter parameter;
    parameter.conversion = Conversion::kRowCount;
    parameter.literal = *select.top;
    WriteParameter(parameter, select.offset);
  }

  void PrintOrder(const Query& query, bool isUnion) {
    std::string_view separator = " ORDER BY ";
    for (const OrderItem& item : query.orderBy) {
      Write(separator);
      if (item.position > 0) {
        const ResultColumn& result = query.results[item.position - 1];
        fmt::format_to(std::back_inserter(printed_.sql), "{}", item.position);
        const bool mayBeText =
            result.valueClass == ValueClass::kText || result.valueClass == ValueClass::kUnknown;
        Write(mayBeText && (isUnion || !result.isTextColumn) ? kCollate : "");
      } else {
        PrintKey(*item.expression);
      }
      Write(item.descending ? " DESC" : "");
      separator = ", ";
    }
  }

  void PrintSelect(const Select& select, bool isUnion, bool named) {
    Write(select.distinct ? "SELECT DISTINCT " : "SELECT ");
    std::string_view separator;
    std::size_t position = 0;
    for (const SelectItem& item : select.items) {
      Write(separator);
      ++position;
      if (select.distinct || isUnion) {
        PrintKey(*item.expression);
      } else {
        PrintValue(*item.expression);
      }
      if (!item.alias.empty()) {
        Write(" AS ");
        Write(QuotedName(item.alias));
      } else if (named && item.expression->kind != NodeKind::kColumn) {
        fmt::format_to(std::back_inserter(printed_.sql), " AS \"Expr{}\"", position);
      }
      separator = ", ";
    }
    separator = " FROM ";
    for (const std::unique_ptr<Source>& source : select.from) {
      Write(separator);
      PrintSource(*source);
      separator = ", ";
    }
    PrintWhere(select.where);
    separator = " GROUP BY ";
    for (const ExpressionPtr& key : select.groupBy) {
      Write(separator);
      PrintKey(*key);
      separator = ", ";
    }
    if (select.having) {
      Write(" HAVING ");
      PrintCondition(*select.having);
    }
  }

  void PrintSource(const Source& source) {
    if (source.join == JoinKind::kNone) {
      PrintTable(source.table);
      return;
    }
    PrintSource(*source.left);
    Write(source.join == JoinKind::kLeft ? " LEFT JOIN " : " INNER JOIN ");
    const bool isNested = source.right->join != JoinKind::kNone;
    const Stacked stacked(*this, isNested ? kStackOfBrackets + 2 : 0, source.on->offset);
    Write(isNested ? "(" : "");
    PrintSource(*source.right);
    Write(isNested ? ")" : "");
    Write(" ON ");
    PrintCondition(*source.on);
  }

  // Expressions.

  // A value by which rows are told apart or ordered: texts without regard to case.
  void PrintKey(const Expression& node) {
    PrintValue(node);
    if (MayBeText(node) && !IsTextColumn(node)) {
      Write(kCollate);
    }
  }

  void PrintCondition(const Expression& node) {
    if (IsCondition(node) && node.coercion == Coercion::kNone) {
      PrintTruth(node);
    } else {
      PrintValue(node);
    }
  }

  void PrintValue(const Expression& node) {
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

  void PrintUncoerced(const Expression& node) {
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

  void PrintLiteral(const Expression& node) {
    Parameter parameter;
    parameter.conversion = node.conversion;
    parameter.negated = node.negated;
    parameter.literal = node.literal;
    parameter.target = node.target;
    WriteParameter(parameter, node.offset);
  }

  void PrintTruth(const Expression& node) {
    switch (node.kind) {
      case NodeKind::kCompare:
        PrintCompare(node);
        break;
      case NodeKind::kAnd:
        PrintChain(node, 0, node.operands.size(), " AND ");
        break;
      case NodeKind::kOr:
        PrintChain(node, 0, node.operands.size(), " OR ");
        break;
      case NodeKind::kXor:
        PrintXor(node);
        break;
      case NodeKind::kNot: {
        const Stacked stacked(*this, kStackOfBrackets - 1, node.offset);
        Write("(NOT ");
        PrintCondition(*node.operands[0]);
        Write(")");
        break;
      }
      case NodeKind::kLike: {
        const Stacked stacked(*this, kStackOfBrackets, node.offset);
        Write("(");
        PrintValue(*node.operands[0]);
        Write(node.negated ? " NOT LIKE " : " LIKE ");
        PrintValue(*node.operands[1]);
        Write(")");
        break;
      }
      case NodeKind::kBetween: {
        const Stacked stacked(*this, kStackOfBrackets + 2, node.offset);
        Write("(");
        PrintCollated(node);
        Write(node.negated ? " NOT BETWEEN " : " BETWEEN ");
        PrintValue(*node.operands[1]);
        Write(" AND ");
        PrintValue(*node.operands[2]);
        Write(")");
        break;
      }
      case NodeKind::kInList:
        PrintInList(node);
        break;
      case NodeKind::kInSelect: {
        const Stacked stacked(*this, kStackOfBrackets, node.offset);
        Write("(");
        PrintCollated(node);
        Write(node.negated ? " NOT IN (" : " IN (");
        PrintQuery(*node.query, false);
        Write("))");
        break;
      }
      case NodeKind::kExists: {
        const Stacked stacked(*this, kStackOfBrackets, node.offset);
        Write("EXISTS (");
        PrintQuery(*node.query, false);
        Write(")");
        break;
      }
      case NodeKind::kIsNull:
        PrintNullTest(*node.operands[0], node.negated);
        break;
      case NodeKind::kFunction:  // IsNull
        PrintNullTest(*node.operands[0], false);
        break;
      default:
        break;  // no condition
    }
  }

  void PrintNullTest(const Expression& tested, bool negated) {
    const Stacked stacked(*this, kStackOfBrackets, tested.offset);
    Write("(");
    PrintValue(tested);
    Write(negated ? " IS NOT NULL)" : " IS NULL)");
  }

  void PrintCollated(const Expression& node) {
    PrintValue(*node.operands[0]);
    Write(node.collated ? kCollate : "");
  }

  void PrintCompare(const Expression& node) {
    const Stacked stacked(*this, kStackOfBrackets, node.offset);
    Write("(");
    PrintCollated(node);
    Write(SymbolOf(node.op));
    PrintValue(*node.operands[1]);
    Write(")");
  }

  void PrintInList(const Expression& node) {
    const Stacked stacked(*this, kStackOfBrackets + 3, node.offset);
    Write("(");
    PrintCollated(node);
    Write(node.negated ? " NOT IN (" : " IN (");
    for (std::size_t index = 1; index < node.operands.size(); ++index) {
      Write(index > 1 ? ", " : "");
      PrintValue(*node.operands[index]);
    }
    Write("))");
  }

  void PrintXor(const Expression& node) {
    const Stacked stacked(*this, kStackOfBrackets * 2, node.offset);
    Write("((NOT ");
    PrintCondition(*node.operands[0]);
    Write(") <> (NOT ");
    PrintCondition(*node.operands[1]);
    Write("))");
  }

  // A chain of operators that may be bracketed at will: long ones in groups, so that the engine
  // does not nest them one by one.
  void PrintChain(const Expression& node, std::size_t first, std::size_t count,
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
  void PrintConcatenated(const Expression& node) {
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
  void PrintNumber(const Expression& node) {
    const bool isDate = node.valueClass == ValueClass::kDate;
    const bool isPlain = node.valueClass == ValueClass::kNumber ||
                         node.valueClass == ValueClass::kBoolean ||
                         node.valueClass == ValueClass::kNull;
    const Stacked stacked(*this, isPlain ? 0 : kStackOfBrackets, node.offset);
    Write(isPlain ? "" : isDate ? "desktop_serial(" : "desktop_store_double(");
    PrintValue(node);
    Write(isPlain ? "" : ")");
  }

  void PrintArithmetic(const Expression& node) {
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

  void PrintFunction(const Expression& node) {
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

  void PrintCall(std::string_view name, const Expression& node) {
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

  void PrintCase(const Expression& node) {
    const Stacked stacked(*this, kStackOfCase, node.offset);
    Write("CASE WHEN ");
    PrintCondition(*node.operands[0]);
    Write(" THEN ");
    PrintValue(*node.operands[1]);
    Write(" ELSE ");
    PrintValue(*node.operands[2]);
    Write(" END");
  }

  void PrintFormat(const Expression& node) {
    const bool isDate = node.operands[0]->valueClass == ValueClass::kDate;
    PrintCall(isDate ? "desktop_format_date" : "desktop_format", node);
  }

  void PrintNullTo(const Expression& node) {
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

  void PrintAggregate(const Expression& node) {
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

  std::string_view sql_;
  PrintedStatement printed_;
  std::size_t stack_ = 0;
};

}  // namespace

PrintedStatement Print(std::string_view sql, const Statement& statement) {
  return Printer(sql).PrintStatement(statement);
}

}  // namespace qorhost::dialect
