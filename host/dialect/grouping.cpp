#include "host/dialect/grouping.h"

#include <algorithm>
#include <string>

#include "host/dialect/refusal.h"

namespace qorhost::dialect {

namespace {

// Whether two bound expressions are the same. Literals count as the same whatever their value: they
// are not part of a statement's shape, on which the answer may depend.
bool IsSame(const Expression& one, const Expression& other) {
  return one.kind == other.kind && one.op == other.op && one.function == other.function &&
         one.negated == other.negated && one.column == other.column && one.source == other.source &&
         one.query == nullptr && other.query == nullptr &&
         std::equal(one.operands.begin(), one.operands.end(), other.operands.begin(),
                    other.operands.end(),
                    [](const ExpressionPtr& left, const ExpressionPtr& right) {
                      return IsSame(*left, *right);
                    });
}

bool HasAggregate(const Expression& expression) {
  return expression.kind == NodeKind::kAggregate ||
         std::any_of(expression.operands.begin(), expression.operands.end(),
                     [](const ExpressionPtr& operand) { return HasAggregate(*operand); });
}

bool Contains(const Source& source, const TableName* table) {
  return source.join == JoinKind::kNone
             ? &source.table == table
             : Contains(*source.left, table) || Contains(*source.right, table);
}

class GroupingCheck {
 public:
  GroupingCheck(std::string_view sql, const Select& select) : sql_(sql), select_(select) {}

  void Check(const Expression& expression) const {
    if (expression.kind == NodeKind::kAggregate || IsGrouped(select_, expression)) {
      return;
    }
    if (expression.kind == NodeKind::kColumn && IsOwn(expression.source)) {
      Refuse(sql_, expression.offset,
             "column " + std::string(expression.column->name) +
                 " is neither grouped by nor inside an aggregate function");
    }
    for (const ExpressionPtr& operand : expression.operands) {
      Check(*operand);
    }
  }

 private:
  // A column of a query around this one is the same for every row of a group.
  [[nodiscard]] bool IsOwn(const TableName* table) const {
    return std::any_of(select_.from.begin(), select_.from.end(),
                       [table](const auto& source) { return Contains(*source, table); });
  }

  std::string_view sql_;
  const Select& select_;
};

bool HasAggregates(const Select& select, const std::vector<OrderItem>& orderBy) {
  const auto isAggregated = [](const SelectItem& item) { return HasAggregate(*item.expression); };
  const auto isOrderedByAggregate = [](const OrderItem& item) {
    return item.expression && HasAggregate(*item.expression);
  };
  return std::any_of(select.items.begin(), select.items.end(), isAggregated) ||
         std::any_of(orderBy.begin(), orderBy.end(), isOrderedByAggregate) ||
         (select.having && HasAggregate(*select.having));
}

}  // namespace

bool IsAggregated(const Select& select, const std::vector<OrderItem>& orderBy) {
  return !select.groupBy.empty() || HasAggregates(select, orderBy);
}

bool IsGrouped(const Select& select, const Expression& expression) {
  return std::any_of(select.groupBy.begin(), select.groupBy.end(),
                     [&](const ExpressionPtr& key) { return IsSame(*key, expression); });
}

void CheckGrouping(std::string_view sql, const Select& select,
                   const std::vector<OrderItem>& orderBy) {
  if (select.having && select.groupBy.empty() && !HasAggregates(select, orderBy)) {
    Refuse(sql, select.having->offset, "HAVING needs GROUP BY or an aggregate function");
  }
  if (!IsAggregated(select, orderBy)) {
    return;
  }
  const GroupingCheck check(sql, select);
  for (const SelectItem& item : select.items) {
    check.Check(*item.expression);
  }
  if (select.having) {
    check.Check(*select.having);
  }
  for (const OrderItem& item : orderBy) {
    if (item.position == 0) {
      check.Check(*item.expression);
    }
  }
}

}  // namespace qorhost::dialect
