#include "host/store/postgres/printer.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/store/postgres/statement_printer.h"
#include "host/store/postgres/table_text.h"

namespace qorhost::postgres {

using namespace dialect;

PrintedStatement StatementPrinter::PrintStatement(const Statement& statement) {
  switch (statement.kind) {
    case StatementKind::kSelect:
      PrintQuery(statement.query, {.named = true, .comparing = std::nullopt, .single = false});
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

void StatementPrinter::WriteNumber(std::size_t number) {
  printed_.sql += fmt::format_int(number).c_str();
}

void StatementPrinter::WriteParameter(const Parameter& parameter, std::size_t offset,
                                      std::string_view type) {
  if (printed_.parameters.size() == kMostParameters) {
    Refuse(sql_, offset, "more than " + std::to_string(kMostParameters) + " values");
  }
  printed_.parameters.push_back(parameter);
  Write("$");
  WriteNumber(printed_.parameters.size());
  Write("::");
  Write(type);
}

void StatementPrinter::PrintInsert(const Statement& statement) {
  const Table& table = *statement.table.table;
  const std::string name = QuotedName(table.name);
  Write("INSERT INTO ");
  Write(name);
  Write(" (");
  std::string_view separator;
  for (const Assignment& assignment : statement.assignments) {
    Write(separator);
    Write(QuotedName(assignment.column->name));
    separator = ", ";
  }
  Write(") VALUES (");
  separator = {};
  bool isGiven = false;
  for (const Assignment& assignment : statement.assignments) {
    Write(separator);
    PrintAssigned(assignment);
    isGiven = isGiven || (assignment.column->type == ColumnType::kIdentity &&
                          assignment.value->kind != NodeKind::kNull);
    separator = ", ";
  }
  // An identity that the statement gives is not given out again.
  Write(isGiven ? ") RETURNING desktop.claimed('" : ") RETURNING \"RID\"");
  if (isGiven) {
    Write(name);
    Write("', \"RID\")");
  }
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
      Write("desktop.later_than(");
      PrintValue(*assignment.value);
      Write(", ");
      Write(QuotedName(statement.table.shownName()));
      Write(".");
      Write(QuotedName(assignment.column->name));
      Write(")");
    } else {
      PrintAssigned(assignment);
    }
    separator = ", ";
  }
  PrintWhere(statement.where);
}

void StatementPrinter::PrintAssigned(const Assignment& assignment) {
  const Expression& value = *assignment.value;
  if (value.kind == NodeKind::kNull) {
    Write(assignment.column->type == ColumnType::kIdentity ? "DEFAULT" : "NULL");
    return;
  }
  switch (assignment.column->type) {
    case ColumnType::kIdentity:
    case ColumnType::kBoolean:
      PrintAs(value, Form::kWhole);
      break;
    case ColumnType::kLong:
      PrintAs(value, TakesTimeStamps(*assignment.column) ? Form::kText : Form::kWhole);
      break;
    case ColumnType::kDouble:
      PrintAs(value, Form::kDouble);
      break;
    case ColumnType::kDate:
    case ColumnType::kText:
      PrintAs(value, Form::kText);
      break;
  }
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
    if (where.get() == unitKey_.row.condition) {
      PrintUnitKey();
    }
  }
}

/// The unit in which the row is looked for that the statement names by its identity alone.
void StatementPrinter::PrintUnitKey() {
  const TableName& table = *unitKey_.row.table;
  Write(" AND ");
  Write(QuotedName(table.shownName()));
  Write(".");
  Write(QuotedName(UnitColumnOf(*table.table)->name));
  Write(" = $");
  WriteNumber(unitKey_.parameter);
  Write("::int4");
}

PrintedStatement Print(std::string_view sql, const Statement& statement) {
  PrintedStatement printed = StatementPrinter(sql).PrintStatement(statement);
  const UnitKeyPlace unitKey{RowNamedAlone(statement), printed.parameters.size() + 1};
  if (unitKey.row.table != nullptr && unitKey.parameter <= kMostParameters) {
    printed.sqlInUnit = StatementPrinter(sql, unitKey).PrintStatement(statement).sql;
  }
  return printed;
}

}  // namespace qorhost::postgres
