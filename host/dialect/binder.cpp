#include "host/dialect/binder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/dialect/comparison.h"
#include "host/dialect/grouping.h"
#include "host/dialect/names.h"

namespace qorhost::dialect {

namespace {

// The tables that names in one SELECT, UPDATE or DELETE may mean, then those around it.
struct Scope {
  std::vector<const TableName*> tables;
  const Scope* outer = nullptr;
};

class Binder {
 public:
  Binder(std::string_view sql, const std::vector<Literal>& literals)
      : sql_(sql), literals_(literals) {}

  void BindStatement(Statement& statement) {
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

 private:
  [[noreturn]] void RefuseAt(std::size_t offset, const std::string& message) const {
    Refuse(sql_, offset, message);
  }

  // Statements that change a table.

  void BindInsert(Statement& statement) {
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

  void BindChange(Statement& statement) {
    BindTable(statement.table);
    Scope scope;
    scope.tables.push_back(&statement.table);
    for (Assignment& assignment : statement.assignments) {
      BindTarget(statement, assignment);
      if (assignment.column->type == ColumnType::kIdentity) {
        RefuseAt(assignment.offset, "the identity " + std::string(assignment.column->name) +
                                        " of a row cannot be changed");
      }
      BindStored(assignment, scope);
    }
    if (statement.where) {
      BindCondition(*statement.where, scope, false);
    }
  }

  static bool IsRowIdText(const Expression& value) {
    return value.kind == NodeKind::kColumn && value.qualifier.empty() &&
           SameName(value.name, kRowIdText);
  }

  void BindTarget(const Statement& statement, Assignment& assignment) const {
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

  void BindStored(Assignment& assignment, const Scope& scope) {
    BindExpression(*assignment.value, scope, false);
    AlignWithColumn(*assignment.value, *assignment.column);
  }

  void BindTable(TableName& table) const {
    table.table = FindTable(table.name);
    if (table.table == nullptr) {
      RefuseAt(table.offset, "unknown table " + Quoted(table.name));
    }
  }

  // Queries.

  void BindQuery(Query& query, const Scope* outer) {
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

  void MergeResults(Query& query, const Select& select, std::vector<ResultColumn> results) const {
    if (&select == &query.selects.front()) {
      query.results = std::move(results);
      return;
    }
    if (results.size() != query.results.size()) {
      RefuseAt(select.offset, "the SELECTs of a UNION have different numbers of columns");
    }
    for (std::size_t index = 0; index < results.size(); ++index) {
      ResultColumn& merged = query.results[index];
      merged.type = CommonType(merged.valueClass, merged.type, results[index].valueClass,
                               results[index].type);
      merged.valueClass = CommonClass(merged.valueClass, results[index].valueClass);
      merged.isTextColumn = merged.isTextColumn && results[index].isTextColumn;
    }
  }

  std::vector<ResultColumn> BindSelect(Select& select, Scope& scope) {
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

  void RequireAtMost(std::size_t count, std::size_t most, std::size_t offset,
                     std::string_view what) const {
    if (count > most) {
      RefuseAt(offset, "more than " + std::to_string(most) + " " + std::string(what));
    }
  }

  static ResultColumn ResultOf(const SelectItem& item) {
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

  void BindSource(Source& source, Scope& scope) {
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
  void ExpandStars(Select& select, const Scope& scope) const {
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

  void ExpandStar(const Expression& star, const Scope& scope,
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

  void BindOrder(Query& query, const Select& select, const Scope& scope) {
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

  // Whether an expression is the same for every row: the engine may take it for the number of a
  // column.
  static bool IsConstant(const Expression& expression) {
    return expression.column == nullptr && expression.query == nullptr &&
           expression.kind != NodeKind::kAggregate &&
           std::all_of(expression.operands.begin(), expression.operands.end(),
                       [](const ExpressionPtr& operand) { return IsConstant(*operand); });
  }

  static std::size_t PositionOfAlias(const Select& select, const Expression& key) {
    if (key.kind == NodeKind::kColumn && key.qualifier.empty()) {
      for (std::size_t index = 0; index < select.items.size(); ++index) {
        if (!select.items[index].alias.empty() && SameName(select.items[index].alias, key.name)) {
          return index + 1;
        }
      }
    }
    return 0;
  }

  void BindOrderOfUnion(const Query& query, OrderItem& item) const {
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

  void CheckPosition(const Query& query, const OrderItem& item) const {
    if (item.position > query.results.size()) {
      RefuseAt(item.offset, "there is no column " + std::to_string(item.position));
    }
  }

  void BindSubQuery(const Expression& node, const Scope& scope) {
    BindQuery(*node.query, &scope);
    if (node.kind != NodeKind::kExists && node.query->results.size() != 1) {
      RefuseAt(node.offset, "a SELECT that stands for a value must have one column");
    }
  }

  // Expressions. `aggregates` tells whether Count and the like may stand here.

  void BindCondition(Expression& expression, const Scope& scope, bool aggregates) {
    BindExpression(expression, scope, aggregates);
    RequireCondition(expression);
  }

  void RequireCondition(const Expression& expression) const {
    if (expression.valueClass == ValueClass::kText || expression.valueClass == ValueClass::kDate) {
      RefuseAt(expression.offset, "a condition is expected, not a text or a date");
    }
  }

  void BindOperands(Expression& node, const Scope& scope, bool aggregates) {
    for (const ExpressionPtr& operand : node.operands) {
      BindExpression(*operand, scope, aggregates);
    }
  }

  void BindExpression(Expression& node, const Scope& scope, bool aggregates) {
    if (node.kind == NodeKind::kAggregate) {
      BindAggregate(node, scope, aggregates);
      return;
    }
    BindOperands(node, scope, aggregates);
    if (IsCondition(node)) {
      SetType(node, ColumnType::kBoolean);
    }
    switch (node.kind) {
      case NodeKind::kLiteral:
        BindLiteral(node);
        break;
      case NodeKind::kTrue:
      case NodeKind::kFalse:
        SetType(node, ColumnType::kBoolean);
        break;
      case NodeKind::kNull:
        node.valueClass = ValueClass::kNull;
        break;
      case NodeKind::kColumn:
        BindColumn(node, scope);
        break;
      case NodeKind::kStar:
        RefuseAt(node.offset, "'*' has no meaning here");
      case NodeKind::kNegate:
        node.valueClass = ValueClass::kNumber;
        break;
      case NodeKind::kArithmetic:
        node.valueClass = ClassOfArithmetic(node);
        break;
      case NodeKind::kConcat:
        BindConcat(node);
        break;
      case NodeKind::kCompare:
        BindCompare(node);
        break;
      case NodeKind::kAnd:
      case NodeKind::kOr:
      case NodeKind::kXor:
      case NodeKind::kNot:
        for (const ExpressionPtr& operand : node.operands) {
          RequireCondition(*operand);
        }
        break;
      case NodeKind::kLike:
        BindLike(node);
        break;
      case NodeKind::kBetween:
        BindBetween(node);
        break;
      case NodeKind::kInList:
        BindInList(node);
        break;
      case NodeKind::kInSelect:
        BindInSelect(node, scope);
        break;
      case NodeKind::kExists:
        BindSubQuery(node, scope);
        break;
      case NodeKind::kSubSelect:
        BindSubQuery(node, scope);
        node.valueClass = node.query->results.front().valueClass;
        node.type = node.query->results.front().type;
        break;
      case NodeKind::kFunction:
        BindFunction(node);
        break;
      case NodeKind::kIsNull:
      case NodeKind::kAggregate:
        break;
    }
  }

  static void SetType(Expression& node, ColumnType type) {
    node.type = type;
    node.valueClass = ClassOf(type);
  }

  void BindLiteral(Expression& node) const {
    switch (literals_[node.literal].kind) {
      case LiteralKind::kNumber:
        node.valueClass = ValueClass::kNumber;
        break;
      case LiteralKind::kText:
        SetType(node, ColumnType::kText);
        break;
      case LiteralKind::kDate:
      case LiteralKind::kTimeStamp:
        SetType(node, ColumnType::kDate);
        break;
    }
  }

  void BindColumn(Expression& node, const Scope& scope) const {
    for (const Scope* around = &scope; around != nullptr; around = around->outer) {
      if (FindInScope(node, *around)) {
        node.type = node.column->type;
        node.valueClass = ClassOf(node.column->type);
        return;
      }
    }
    if (node.qualifier.empty()) {
      RefuseAt(node.offset, "unknown name " + Quoted(node.name));
    }
    RefuseAt(node.offset, "unknown table " + Quoted(node.qualifier));
  }

  bool FindInScope(Expression& node, const Scope& scope) const {
    for (const TableName* table : scope.tables) {
      if (!node.qualifier.empty() && !SameName(node.qualifier, table->shownName())) {
        continue;
      }
      const Column* column = FindColumn(*table->table, node.name);
      if (column == nullptr && !node.qualifier.empty()) {
        RefuseAt(node.offset, "unknown column " + Quoted(node.name) + " of table " +
                                  std::string(table->table->name));
      }
      if (column != nullptr && node.column != nullptr) {
        RefuseAt(node.offset, "the name " + Quoted(node.name) + " stands in more than one table");
      }
      if (column != nullptr) {
        node.column = column;
        node.source = table;
      }
    }
    return node.column != nullptr;
  }

  static ValueClass ClassOfArithmetic(const Expression& node) {
    const ValueClass left = node.operands[0]->valueClass;
    const ValueClass right = node.operands[1]->valueClass;
    if (node.op == Operator::kAdd && left == ValueClass::kText && right == ValueClass::kText) {
      return ValueClass::kText;
    }
    const bool hasDate = left == ValueClass::kDate || right == ValueClass::kDate;
    const bool bothDates = left == ValueClass::kDate && right == ValueClass::kDate;
    if (hasDate && (node.op == Operator::kAdd || (node.op == Operator::kSubtract && !bothDates))) {
      return ValueClass::kDate;
    }
    return ValueClass::kNumber;
  }

  static void BindConcat(Expression& node) {
    SetType(node, ColumnType::kText);
    for (const ExpressionPtr& operand : node.operands) {
      AsText(*operand);
      if (operand->kind != NodeKind::kLiteral && operand->valueClass != ValueClass::kText) {
        operand->coercion = Coercion::kText;
      }
    }
  }

  // What stands where a text is expected. The engine's functions read numbers as texts themselves,
  // but a date they would read in its canonical text.
  static void AsText(Expression& operand) {
    if (operand.kind == NodeKind::kLiteral) {
      operand.conversion = Conversion::kToText;
    } else if (operand.valueClass == ValueClass::kDate) {
      operand.coercion = Coercion::kText;
    }
  }

  static void BindCompare(Expression& node) {
    Expression& left = *node.operands[0];
    Expression& right = *node.operands[1];
    const bool isEquality = node.op == Operator::kEqual || node.op == Operator::kNotEqual;
    // Hosts write "= NULL" and "<> NULL" and mean IS NULL and IS NOT NULL.
    if (isEquality && (left.kind == NodeKind::kNull || right.kind == NodeKind::kNull)) {
      node.kind = NodeKind::kIsNull;
      node.negated = node.op == Operator::kNotEqual;
      if (left.kind == NodeKind::kNull) {
        std::swap(node.operands[0], node.operands[1]);
      }
      node.operands.pop_back();
      return;
    }
    Align(left, right, !isEquality);
    node.collated = NeedsCollation(left, right);
  }

  static void BindLike(Expression& node) {
    AsText(*node.operands[0]);
    AsText(*node.operands[1]);
  }

  static void BindBetween(Expression& node) {
    Expression& tested = *node.operands[0];
    for (std::size_t index = 1; index < node.operands.size(); ++index) {
      Align(tested, *node.operands[index], true);
    }
    node.collated =
        NeedsCollation(tested, *node.operands[1]) || NeedsCollation(tested, *node.operands[2]);
  }

  static void BindInList(Expression& node) {
    Expression& tested = *node.operands[0];
    for (std::size_t index = 1; index < node.operands.size(); ++index) {
      Align(tested, *node.operands[index], false);
    }
    node.collated = !IsTextColumn(tested) && MayBeText(tested);
  }

  void BindInSelect(Expression& node, const Scope& scope) {
    BindSubQuery(node, scope);
    Expression& tested = *node.operands[0];
    AlignWithResult(tested, node.query->results.front());
    node.collated = !IsTextColumn(tested) && MayBeText(tested);
  }

  void BindAggregate(Expression& node, const Scope& scope, bool allowed) {
    if (!allowed) {
      RefuseAt(node.offset, "an aggregate function cannot stand here");
    }
    BindOperands(node, scope, false);
    switch (node.aggregate) {
      case Aggregate::kCount:
        SetType(node, ColumnType::kLong);
        break;
      case Aggregate::kSum:
        RequireNumber(*node.operands[0]);
        node.valueClass = ValueClass::kNumber;
        break;
      case Aggregate::kAverage:
        RequireNumber(*node.operands[0]);
        SetType(node, ColumnType::kDouble);
        break;
      case Aggregate::kMinimum:
      case Aggregate::kMaximum:
        node.valueClass = node.operands[0]->valueClass;
        node.type = node.operands[0]->type;
        break;
    }
  }

  void RequireNumber(const Expression& operand) const {
    if (operand.valueClass == ValueClass::kText || operand.valueClass == ValueClass::kDate) {
      RefuseAt(operand.offset, "a number is expected, not a text or a date");
    }
  }

  void BindFunction(Expression& node) const {
    switch (node.function) {
      case Function::kIif:
        RequireCondition(*node.operands[0]);
        SetCommon(node, *node.operands[1], *node.operands[2]);
        break;
      case Function::kVal:
        AsText(*node.operands[0]);
        SetType(node, ColumnType::kDouble);
        break;
      case Function::kFormat:
        SetType(node, ColumnType::kText);
        break;
      case Function::kUpper:
      case Function::kLower:
      case Function::kTrim:
      case Function::kTrimLeft:
      case Function::kTrimRight:
      case Function::kLeft:
      case Function::kRight:
      case Function::kMiddle:
        AsText(*node.operands[0]);
        SetType(node, ColumnType::kText);
        break;
      case Function::kLength:
        AsText(*node.operands[0]);
        SetType(node, ColumnType::kLong);
        break;
      case Function::kNullTo:
        BindNullTo(node);
        break;
      case Function::kNow:
      case Function::kToday:
        SetType(node, ColumnType::kDate);
        break;
      case Function::kIsNull:
        break;
    }
  }

  static void BindNullTo(Expression& node) {
    const Expression& tested = *node.operands[0];
    if (node.operands.size() == 2) {
      SetCommon(node, tested, *node.operands[1]);
      return;
    }
    // Without a value of its own, Null becomes 0 among numbers and '' elsewhere.
    node.valueClass = tested.valueClass;
    node.type = tested.type;
    if (tested.valueClass == ValueClass::kDate || tested.valueClass == ValueClass::kNull) {
      node.valueClass = ValueClass::kUnknown;
      node.type.reset();
    }
  }

  static void SetCommon(Expression& node, const Expression& one, const Expression& other) {
    node.valueClass = CommonClass(one.valueClass, other.valueClass);
    node.type = CommonType(one.valueClass, one.type, other.valueClass, other.type);
  }

  static ValueClass CommonClass(ValueClass one, ValueClass other) {
    const auto isNumber = [](ValueClass valueClass) {
      return valueClass == ValueClass::kNumber || valueClass == ValueClass::kBoolean;
    };
    if (one == other || other == ValueClass::kNull) {
      return one;
    }
    if (one == ValueClass::kNull) {
      return other;
    }
    return isNumber(one) && isNumber(other) ? ValueClass::kNumber : ValueClass::kUnknown;
  }

  static std::optional<ColumnType> CommonType(ValueClass oneClass, std::optional<ColumnType> one,
                                              ValueClass otherClass,
                                              std::optional<ColumnType> other) {
    if (oneClass == ValueClass::kNull) {
      return other;
    }
    return otherClass == ValueClass::kNull || one == other ? one : std::nullopt;
  }

  static constexpr std::size_t kMostColumns = 1000;
  static constexpr std::size_t kMostKeys = 64;  // of GROUP BY and ORDER BY

  std::string_view sql_;
  const std::vector<Literal>& literals_;
};

}  // namespace

void Bind(std::string_view sql, const std::vector<Literal>& literals, Statement& statement) {
  Binder(sql, literals).BindStatement(statement);
}

}  // namespace qorhost::dialect
