#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "host/dialect/common_type.h"
#include "host/dialect/comparison.h"
#include "host/dialect/grouping.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/dialect/statement_binder.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kMostColumns = 1000;
constexpr std::size_t kMostKeys = 64;  // of GROUP BY and ORDER BY

ResultColumn ResultOf(const SelectItem& item) {
  const Expression& expression = *item.expression;
  ResultColumn result;
  result.name = item.alias;
  if (item.alias.empty() && expression.column != nullptr) {
    result.name = expression.column->name;
  }
  result.valueClass = expression.valueClass;
  result.type = expression.type;
  result.isTextColumn = IsTextColumn(expression);
  return result;
}

// Whether an expression is the same for every row: the engine may take it for the number of a
// column.
bool IsConstant(const Expression& expression) {
  return expression.column == nullptr && expression.query == nullptr &&
         expression.kind != NodeKind::kAggregate &&
         std::all_of(expression.operands.begin(), expression.operands.end(),
                     [](const ExpressionPtr& operand) { return IsConstant(*operand); });
}

std::size_t PositionOfAlias(const Select& select, const Expression& key) {
  if (key.kind == NodeKind::kColumn && key.qualifier.empty()) {
    for (std::size_t index = 0; index < select.items.size(); ++index) {
      if (!select.items[index].alias.empty() && SameName(select.items[index].alias, key.name)) {
        return index + 1;
      }
    }
  }
  return 0;
}

}  // namespace

void StatementBinder::BindQuery(Query& query, const Scope* outer) {
  if (query.orderBy.size() > kMostKeys) {
    RequireAtMost(query.orderBy.size(), kMostKeys, query.orderBy.back().offset,
                  "names in ORDER BY");
  }
  for (Select& select : query.selects) {
    Scope scope;
    scope.outer = outer;
    std::vector<ResultColumn> results = BindSelect(select, scope);
    if (query.selects.size() == 1) {
      query.results = std::move(results);
      BindOrder(query, select, scope);
      CheckGrouping(sql_, select, query.orderBy);
      return;
    }
    CheckGrouping(sql_, select, {});
    MergeResults(query, select, std::move(results));
  }
  for (OrderItem& item : query.orderBy) {
    BindOrderOfUnion(query, item);
  }
}

void StatementBinder::MergeResults(Query& query, const Select& select,
                                   std::vector<ResultColumn> results) const {
  if (&select == &query.selects.front()) {
    query.results = std::move(results);
    return;
  }
  if (results.size() != query.results.size()) {
    RefuseAt(select.offset, "the SELECTs of a UNION have different numbers of columns");
  }
  for (std::size_t index = 0; index < results.size(); ++index) {
    ResultColumn& merged = query.results[index];
    merged.type =
        CommonType(merged.valueClass, merged.type, results[index].valueClass, results[index].type);
    merged.valueClass = CommonClass(merged.valueClass, results[index].valueClass);
    merged.isTextColumn = merged.isTextColumn && results[index].isTextColumn;
  }
}

std::vector<ResultColumn> StatementBinder::BindSelect(Select& select, Scope& scope) {
  for (const std::unique_ptr<Source>& source : select.from) {
    BindSource(*source, scope);
  }
  ExpandStars(select, scope);
  RequireAtMost(select.items.size(), kMostColumns, select.offset, "columns");
  RequireAtMost(select.groupBy.size(), kMostKeys, select.offset, "names in GROUP BY");
  std::vector<ResultColumn> results;
  results.reserve(select.items.size());
  for (SelectItem& item : select.items) {
    BindExpression(*item.expression, scope, true);
    results.push_back(ResultOf(item));
  }
  if (select.where) {
    BindCondition(*select.where, scope, false);
  }
  for (const ExpressionPtr& key : select.groupBy) {
    BindExpression(*key, scope, false);
    if (IsConstant(*key)) {
      RefuseAt(key->offset, "GROUP BY takes names and expressions, not a constant");
    }
  }
  if (select.having) {
    BindCondition(*select.having, scope, true);
  }
  return results;
}

void StatementBinder::RequireAtMost(std::size_t count, std::size_t most, std::size_t offset,
                                    std::string_view what) const {
  if (count > most) {
    RefuseAt(offset, "more than " + std::to_string(most) + " " + std::string(what));
  }
}

void StatementBinder::BindSource(Source& source, Scope& scope) {
  if (source.join != JoinKind::kNone) {
    BindSource(*source.left, scope);
    BindSource(*source.right, scope);
    BindCondition(*source.on, scope, false);
    return;
  }
  BindTable(source.table);
  const auto isSame = [&source](const TableName* other) {
    return SameName(other->shownName(), source.table.shownName());
  };
  if (std::any_of(scope.tables.begin(), scope.tables.end(), isSame)) {
    RefuseAt(source.table.offset,
             "the name " + Quoted(source.table.shownName()) + " stands twice in FROM");
  }
  scope.tables.push_back(&source.table);
}

// Replaces * and name.* by the columns they stand for.
void StatementBinder::ExpandStars(Select& select, const Scope& scope) const {
  const auto isStar = [](const SelectItem& item) {
    return item.expression->kind == NodeKind::kStar;
  };
  if (std::none_of(select.items.begin(), select.items.end(), isStar)) {
    return;
  }
  std::vector<SelectItem> items;
  for (SelectItem& item : select.items) {
    if (!isStar(item)) {
      items.push_back(std::move(item));
    } else if (items.size() <= kMostColumns) {
      ExpandStar(*item.expression, scope, items);
    }
  }
  select.items = std::move(items);
}

void StatementBinder::ExpandStar(const Expression& star, const Scope& scope,
                                 std::vector<SelectItem>& items) const {
  bool found = false;
  for (const TableName* table : scope.tables) {
    if (!star.qualifier.empty() && !SameName(star.qualifier, table->shownName())) {
      continue;
    }
    found = true;
    for (const Column& column : table->table->columns) {
      SelectItem item;
      item.expression = std::make_unique<Expression>(NodeKind::kColumn, star.offset);
      item.expression->qualifier = table->shownName();
      item.expression->name = column.name;
      items.push_back(std::move(item));
    }
  }
  if (!found) {
    RefuseAt(star.offset, star.qualifier.empty() ? std::string("'*' needs a table in FROM")
                                                 : "unknown table " + Quoted(star.qualifier));
  }
}

void StatementBinder::BindOrder(Query& query, const Select& select, const Scope& scope) {
  for (OrderItem& item : query.orderBy) {
    if (item.position == 0) {
      item.position = PositionOfAlias(select, *item.expression);
    }
    if (item.position == 0) {
      BindExpression(*item.expression, scope, true);
      if (IsConstant(*item.expression)) {
        RefuseAt(item.offset, "ORDER BY takes names and expressions, not a constant");
      }
    }
    CheckPosition(query, item);
  }
}

void StatementBinder::BindOrderOfUnion(const Query& query, OrderItem& item) const {
  if (item.position == 0 && item.expression->kind == NodeKind::kColumn &&
      item.expression->qualifier.empty()) {
    for (std::size_t index = 0; index < query.results.size() && item.position == 0; ++index) {
      if (SameName(query.results[index].name, item.expression->name)) {
        item.position = index + 1;
      }
    }
  }
  if (item.position == 0) {
    RefuseAt(item.offset, "ORDER BY of a UNION takes the names and numbers of its columns");
  }
  CheckPosition(query, item);
}

void StatementBinder::CheckPosition(const Query& query, const OrderItem& item) const {
  if (item.position > query.results.size()) {
    RefuseAt(item.offset, "there is no column " + std::to_string(item.position));
  }
}

void StatementBinder::BindSubQuery(const Expression& node, const Scope& scope) {
  BindQuery(*node.query, &scope);
  if (node.kind != NodeKind::kExists && node.query->results.size() != 1) {
    RefuseAt(node.offset, "a SELECT that stands for a value must have one column");
  }
}

}  // namespace qorhost::dialect
