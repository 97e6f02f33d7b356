#include "host/dialect/binder.h"

#include <algorithm>
#include <string>

#include "host/dialect/comparison.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/dialect/statement_binder.h"

namespace qorhost::dialect {

namespace {

bool IsRowIdText(const Expression& value) {
  return value.kind == NodeKind::kColumn && value.qualifier.empty() &&
         SameName(value.name, kRowIdText);
}

}  // namespace

void StatementBinder::BindStatement(Statement& statement) {
  switch (statement.kind) {
    case StatementKind::kSelect:
      BindQuery(statement.query, nullptr);
      break;
    case StatementKind::kInsert:
      BindInsert(statement);
      break;
    case StatementKind::kUpdate:
    case StatementKind::kDelete:
      BindChange(statement);
      break;
  }
}

void StatementBinder::RefuseAt(std::size_t offset, const std::string& message) const {
  Refuse(sql_, offset, message);
}

void StatementBinder::BindInsert(Statement& statement) {
  BindTable(statement.table);
  const Scope noTables;
  for (Assignment& assignment : statement.assignments) {
    BindTarget(statement, assignment);
    if (assignment.column->type == ColumnType::kIdentity && IsRowIdText(*assignment.value)) {
      assignment.value->kind = NodeKind::kNull;
      statement.takesNewRow = true;
    }
    BindStored(assignment, noTables);
  }
}

void StatementBinder::BindChange(Statement& statement) {
  BindTable(statement.table);
  Scope scope;
  scope.tables.push_back(&statement.table);
  for (Assignment& assignment : statement.assignments) {
    BindTarget(statement, assignment);
    if (assignment.column->type == ColumnType::kIdentity) {
      RefuseAt(assignment.offset, "the identity " + std::string(assignment.column->name) +
                                      " of a row cannot be changed");
    }
    assignment.laterThanOwn = assignment.column->type == ColumnType::kDate &&
                              assignment.value->kind == NodeKind::kLiteral &&
                              literals_[assignment.value->literal].kind == LiteralKind::kTimeStamp;
    BindStored(assignment, scope);
  }
  if (statement.where) {
    BindCondition(*statement.where, scope, false);
  }
}

void StatementBinder::BindTarget(const Statement& statement, Assignment& assignment) const {
  if (!assignment.qualifier.empty() &&
      !SameName(assignment.qualifier, statement.table.shownName())) {
    RefuseAt(assignment.offset, "unknown table " + Quoted(assignment.qualifier));
  }
  assignment.column = FindColumn(*statement.table.table, assignment.name);
  if (assignment.column == nullptr) {
    RefuseAt(assignment.offset, "unknown column " + Quoted(assignment.name) + " of table " +
                                    std::string(statement.table.table->name));
  }
  if (assignment.column->generated) {
    RefuseAt(assignment.offset, "column " + std::string(assignment.column->name) +
                                    " always equals the row's identity and cannot be written");
  }
  const auto isSame = [&assignment](const Assignment& earlier) {
    return &earlier != &assignment && earlier.column == assignment.column;
  };
  if (std::any_of(statement.assignments.begin(), statement.assignments.end(), isSame)) {
    RefuseAt(assignment.offset,
             "column " + std::string(assignment.column->name) + " is named twice");
  }
}

void StatementBinder::BindStored(Assignment& assignment, const Scope& scope) {
  BindExpression(*assignment.value, scope, false);
  AlignWithColumn(*assignment.value, *assignment.column);
}

void StatementBinder::BindTable(TableName& table) const {
  table.table = FindTable(table.name);
  if (table.table == nullptr) {
    RefuseAt(table.offset, "unknown table " + Quoted(table.name));
  }
}

void Bind(std::string_view sql, const std::vector<Literal>& literals, Statement& statement) {
  StatementBinder(sql, literals).BindStatement(statement);
}

}  // namespace qorhost::dialect
