#include "host/store/sqlite/printer.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>

#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/store/sqlite/engine_names.h"
#include "host/store/sqlite/statement_printer.h"

namespace qorhost::sqlite {

using namespace dialect;

namespace {

// The engine reads statements with a stack of 100 entries and expressions to a depth of 1000.
constexpr std::size_t kMostStack = 90;
constexpr std::size_t kMostParameters = 200'000;

}  // namespace

StatementPrinter::Stacked::Stacked(StatementPrinter& printer, std::size_t entries,
                                   std::size_t offset)
    : printer_(printer), entries_(entries) {
  if (printer_.stack_ + entries > kMostStack) {
    Refuse(printer_.sql_, offset, "the statement is nested too deeply");
  }
  printer_.stack_ += entries;
}

PrintedStatement StatementPrinter::PrintStatement(const Statement& statement) {
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

void StatementPrinter::WriteParameter(const Parameter& parameter, std::size_t offset) {
  if (printed_.parameters.size() == kMostParameters) {
    Refuse(sql_, offset, "more than " + std::to_string(kMostParameters) + " values");
  }
  printed_.parameters.push_back(parameter);
  // Numbered, the engine would look each up in a list of all.
  Write("?");
}

void StatementPrinter::PrintInsert(const Statement& statement) {
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

void StatementPrinter::PrintUpdate(const Statement& statement) {
  Write("UPDATE ");
  PrintTable(statement.table);
  std::string_view separator = " SET ";
  for (const Assignment& assignment : statement.assignments) {
    Write(separator);
    Write(QuotedName(assignment.column->name));
    Write(" = ");
    if (assignment.laterThanOwn) {
      PrintLaterThanOwn(assignment);
    } else {
      PrintValue(*assignment.value);
    }
    separator = ", ";
  }
  PrintWhere(statement.where);
}

void StatementPrinter::PrintLaterThanOwn(const Assignment& assignment) {
  Write(kLaterThanDate.beforeTime);
  PrintValue(*assignment.value);
  Write(kLaterThanDate.beforeDate);
  Write(QuotedName(assignment.column->name));
  Write(kLaterThanDate.end);
}

void StatementPrinter::PrintTable(const TableName& table) {
  Write(QuotedName(table.table->name));
  if (!table.alias.empty()) {
    Write(" AS ");
    Write(QuotedName(table.alias));
  }
}

void StatementPrinter::PrintWhere(const ExpressionPtr& where) {
  if (where) {
    Write(" WHERE ");
    PrintCondition(*where);
  }
}

void StatementPrinter::PrintQuery(const Query& query, bool named) {
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

void StatementPrinter::PrintLimit(const Select& select) {
  Write(" LIMIT ");
  Parameter parameter;
  parameter.conversion = Conversion::kRowCount;
  parameter.literal = *select.top;
  WriteParameter(parameter, select.offset);
}

void StatementPrinter::PrintOrder(const Query& query, bool isUnion) {
  std::string_view separator = " ORDER BY ";
  for (const OrderItem& item : query.orderBy) {
    Write(separator);
    if (item.position > 0) {
      const ResultColumn& result = query.results[item.position - 1];
      printed_.sql += fmt::format_int(item.position).c_str();
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

void StatementPrinter::PrintSelect(const Select& select, bool isUnion, bool named) {
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
      printed_.sql += fmt::format(" AS \"Expr{}\"", position);
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

void StatementPrinter::PrintSource(const Source& source) {
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

PrintedStatement Print(std::string_view sql, const Statement& statement) {
  return StatementPrinter(sql).PrintStatement(statement);
}

}  // namespace qorhost::sqlite
