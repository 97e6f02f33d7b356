// The tree of a statement: what the parser read, and what the binder found out about it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/catalog.h"
#include "host/dialect/parameters.h"
#include "host/dialect/translator.h"

namespace qorhost::dialect {

struct Query;

/// How values of an expression compare and convert.
enum class ValueClass : std::uint8_t { kUnknown, kNull, kNumber, kBoolean, kDate, kText };

[[nodiscard]] constexpr ValueClass ClassOf(ColumnType type) {
  switch (type) {
    case ColumnType::kIdentity:
    case ColumnType::kLong:
    case ColumnType::kDouble:
      return ValueClass::kNumber;
    case ColumnType::kBoolean:
      return ValueClass::kBoolean;
    case ColumnType::kDate:
      return ValueClass::kDate;
    case ColumnType::kText:
      return ValueClass::kText;
  }
  return ValueClass::kUnknown;
}

enum class NodeKind : std::uint8_t {
  kLiteral,
  kTrue,
  kFalse,
  kNull,
  kColumn,
  kStar,  ///< the list item * or name.*
  kNegate,
  kArithmetic,
  kConcat,   ///< any number of operands
  kCompare,  ///< also what becomes IS NULL
  kAnd,      ///< any number of operands
  kOr,       ///< any number of operands
  kXor,
  kNot,
  kLike,
  kBetween,
  kInList,    ///< the operand, then the list
  kInSelect,  ///< the operand, and a query
  kExists,
  kIsNull,
  kFunction,
  kAggregate,  ///< without operands: Count(*)
  kSubSelect,
};

enum class Operator : std::uint8_t {
  kNone,
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kWholeDivide,
  kModulo,
  kPower,
  kEqual,
  kNotEqual,
  kLess,
  kLessOrEqual,
  kGreater,
  kGreaterOrEqual,
};

enum class Function : std::uint8_t {
  kIif,
  kVal,
  kFormat,
  kUpper,
  kLower,
  kLength,
  kTrim,
  kTrimLeft,
  kTrimRight,
  kLeft,
  kRight,
  kMiddle,
  kIsNull,
  kNullTo,
  kNow,
  kToday,
};

/// What an expression's value is made by the engine before it is compared or stored.
enum class Coercion : std::uint8_t {
  kNone,
  kText,          ///< its text, dates in their default text
  kNumber,        ///< a number where the text is one, else the text
  kDate,          ///< a canonical date where it is one, else as it is
  kStoreLong,     ///< a whole number of 32 bits; anything else fails
  kStoreDouble,   ///< a number; anything else fails
  kStoreBoolean,  ///< -1 or 0; anything else fails
  kStoreDate,     ///< a canonical date; anything else fails
};

enum class Aggregate : std::uint8_t { kCount, kSum, kMinimum, kMaximum, kAverage };

struct TableName;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Expression {
  explicit Expression(NodeKind nodeKind, std::size_t at) : kind(nodeKind), offset(at) {}

  // What the parser read.
  NodeKind kind;
  Operator op = Operator::kNone;
  Function function = Function::kIif;
  Aggregate aggregate = Aggregate::kCount;
  bool negated = false;        ///< NOT IN, NOT LIKE, ...; a number with a minus sign
  std::size_t offset;          ///< of the first byte, for messages
  std::size_t depth = 1;       ///< the longest way down from here
  std::size_t literal = 0;     ///< of a literal: its position
  std::string_view qualifier;  ///< of a column or star: what stands before the point
  std::string_view name;       ///< of a column: its name as written
  std::vector<ExpressionPtr> operands;
  std::unique_ptr<Query> query;

  // What the binder found out.
  ValueClass valueClass = ValueClass::kUnknown;
  std::optional<ColumnType> type;     ///< the exact type, where there is one
  const Column* column = nullptr;     ///< of a column
  const TableName* source = nullptr;  ///< of a column: the table in FROM that has it
  Coercion coercion = Coercion::kNone;
  bool collated = false;                      ///< of a comparison: the collation must be named
  Conversion conversion = Conversion::kNone;  ///< of a literal: how its value is bound
  const Column* target = nullptr;             ///< of a literal written to a column
};

struct TableName {
  std::string_view name;  ///< as written
  std::string_view alias;
  std::size_t offset = 0;
  const Table* table = nullptr;  ///< set by the binder

  /// The name under which columns refer to it.
  [[nodiscard]] std::string_view shownName() const {
    return !alias.empty() || table == nullptr ? alias : table->name;
  }
};

enum class JoinKind : std::uint8_t { kNone, kInner, kLeft };

/// A table, or two joined sources with the condition that joins them.
struct Source {
  JoinKind join = JoinKind::kNone;
  TableName table;
  std::unique_ptr<Source> left;
  std::unique_ptr<Source> right;
  ExpressionPtr on;
  std::size_t depth = 1;
};

struct SelectItem {
  ExpressionPtr expression;
  std::string alias;
};

struct OrderItem {
  ExpressionPtr expression;  ///< null when `position` counts
  std::size_t position = 0;  ///< of the result column, from 1
  std::size_t offset = 0;
  bool descending = false;
};

/// One SELECT without UNION and ORDER BY.
struct Select {
  bool distinct = false;
  std::size_t offset = 0;
  std::optional<std::size_t> top;  ///< the literal after TOP
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<Source>> from;
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
};

/// What is known of a result column of a query.
struct ResultColumn {
  std::string_view name;  ///< its alias or the name of its column, or nothing
  ValueClass valueClass = ValueClass::kUnknown;
  std::optional<ColumnType> type;
  bool isTextColumn = false;  ///< has the collation of its column
};

/// A SELECT with its UNIONs and its order.
struct Query {
  std::vector<Select> selects;
  std::vector<bool> unionAll;  ///< between each two selects
  std::vector<OrderItem> orderBy;
  std::vector<ResultColumn> results;  ///< set by the binder
};

struct Assignment {
  std::string_view qualifier;
  std::string_view name;
  std::size_t offset = 0;
  ExpressionPtr value;
  const Column* column = nullptr;  ///< set by the binder
  /// Set by the binder: the time of the change goes into a date of an existing row, which must not
  /// carry the same date twice.
  bool laterThanOwn = false;
};

struct Statement {
  StatementKind kind = StatementKind::kSelect;
  Query query;                          ///< of a SELECT
  TableName table;                      ///< of the others
  std::vector<Assignment> assignments;  ///< of INSERT and UPDATE
  ExpressionPtr where;                  ///< of UPDATE and DELETE
  bool takesNewRow = false;             ///< set by the binder
  /// The literals that are printed or decide what is printed: two statements of one shape that
  /// differ in them are translated apart.
  std::vector<std::size_t> structural;
};

}  // namespace qorhost::dialect
