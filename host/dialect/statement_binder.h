// The binder itself: a walk over the tree, with the tables that names may mean.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/lexer.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

class StatementBinder {
 public:
  StatementBinder(std::string_view sql, const std::vector<Literal>& literals)
      : sql_(sql), literals_(literals) {}

  void BindStatement(Statement& statement);

 private:
  // The tables that names in one SELECT, UPDATE or DELETE may mean, then those around it.
  struct Scope {
    std::vector<const TableName*> tables;
    const Scope* outer = nullptr;
  };

  [[noreturn]] void RefuseAt(std::size_t offset, const std::string& message) const;

  // Statements that change a table.
  void BindInsert(Statement& statement);
  void BindChange(Statement& statement);
  void BindTarget(const Statement& statement, Assignment& assignment) const;
  void BindStored(Assignment& assignment, const Scope& scope);
  void BindTable(TableName& table) const;

  // Queries.
  void BindQuery(Query& query, const Scope* outer);
  void MergeResults(Query& query, const Select& select, std::vector<ResultColumn> results) const;
  std::vector<ResultColumn> BindSelect(Select& select, Scope& scope);
  void RequireAtMost(std::size_t count, std::size_t most, std::size_t offset,
                     std::string_view what) const;
  void BindSource(Source& source, Scope& scope);
  void ExpandStars(Select& select, const Scope& scope) const;
  void ExpandStar(const Expression& star, const Scope& scope, std::vector<SelectItem>& items) const;
  void BindOrder(Query& query, const Select& select, const Scope& scope);
  void BindOrderOfUnion(const Query& query, OrderItem& item) const;
  void CheckPosition(const Query& query, const OrderItem& item) const;
  void BindSubQuery(const Expression& node, const Scope& scope);

  // Expressions. `aggregates` tells whether Count and the like may stand here.
  void BindCondition(Expression& expression, const Scope& scope, bool aggregates);
  void RequireCondition(const Expression& expression) const;
  void BindOperands(Expression& node, const Scope& scope, bool aggregates);
  void BindExpression(Expression& node, const Scope& scope, bool aggregates);
  void BindLiteral(Expression& node) const;
  void BindColumn(Expression& node, const Scope& scope) const;
  bool FindInScope(Expression& node, const Scope& scope) const;
  void BindInSelect(Expression& node, const Scope& scope);
  void BindAggregate(Expression& node, const Scope& scope, bool allowed);
  void RequireNumber(const Expression& operand) const;
  void BindFunction(Expression& node) const;

  std::string_view sql_;
  const std::vector<Literal>& literals_;
};

}  // namespace qorhost::dialect
