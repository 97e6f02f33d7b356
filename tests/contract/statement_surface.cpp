#include "tests/contract/statement_surface.h"

#include <vector>

#include "host/dialect/binder.h"
#include "host/dialect/lexer.h"
#include "host/dialect/parser.h"

namespace qortest {

namespace dialect = qorhost::dialect;

namespace {

/// Walks a bound tree and collects the columns that it meets.
class Collector {
 public:
  [[nodiscard]] std::set<NamedColumn> Of(const dialect::Statement& statement) {
    if (statement.kind == dialect::StatementKind::kSelect) Visit(statement.query);
    if (statement.kind == dialect::StatementKind::kDelete) Add(statement.table.table, nullptr);
    for (const dialect::Assignment& assignment : statement.assignments) {
      named_.insert({std::string(statement.table.table->name), std::string(assignment.column->name),
                     ColumnUse::kWritten});
      Visit(assignment.value);
    }
    Visit(statement.where);
    return named_;
  }

 private:
  void Add(const dialect::Table* table, const dialect::Column* column) {
    const ColumnUse use = column == nullptr ? ColumnUse::kWritten : ColumnUse::kRead;
    named_.insert(
        {std::string(table->name), column == nullptr ? "" : std::string(column->name), use});
  }

  void Visit(const dialect::ExpressionPtr& expression) {
    if (expression == nullptr) return;
    if (expression->column != nullptr) Add(expression->source->table, expression->column);
    for (const dialect::ExpressionPtr& operand : expression->operands) Visit(operand);
    if (expression->query != nullptr) Visit(*expression->query);
  }

  void Visit(const dialect::Source& source) {
    if (source.left != nullptr) Visit(*source.left);
    if (source.right != nullptr) Visit(*source.right);
    Visit(source.on);
  }

  void Visit(const dialect::Query& query) {
    for (const dialect::Select& select : query.selects) {
      for (const dialect::SelectItem& item : select.items) Visit(item.expression);
      for (const auto& source : select.from) Visit(*source);
      Visit(select.where);
      for (const dialect::ExpressionPtr& group : select.groupBy) Visit(group);
      Visit(select.having);
    }
    for (const dialect::OrderItem& item : query.orderBy) Visit(item.expression);
  }

  std::set<NamedColumn> named_;
};

}  // namespace

std::set<NamedColumn> ColumnsNamedIn(std::string_view statement) {
  std::string key;
  std::vector<dialect::Literal> literals;
  dialect::ReadShape(statement, key, literals);
  dialect::Statement tree = dialect::Parse(statement, literals);
  dialect::Bind(statement, literals, tree);
  return Collector().Of(tree);
}

}  // namespace qortest
