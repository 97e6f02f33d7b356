// The expressions of the statement parser.
#include <algorithm>
#include <array>
#include <utility>

#include "host/dialect/names.h"
#include "host/dialect/parser.h"
#include "host/dialect/refusal.h"
#include "host/dialect/statement_parser.h"

namespace qorhost::dialect {

namespace {

// Ranks of the operators: a higher one binds closer.
constexpr int kRankXor = 1;
constexpr int kRankOr = 2;
constexpr int kRankAnd = 3;
constexpr int kRankNot = 4;
constexpr int kRankCompare = 5;
constexpr int kRankConcat = 6;
constexpr int kRankAdd = 7;
constexpr int kRankModulo = 8;
constexpr int kRankWholeDivide = 9;
constexpr int kRankMultiply = 10;
constexpr int kRankNegate = 11;
constexpr int kRankPower = 12;

// The engine compares each condition of a WHERE with each other one.
constexpr std::size_t kMostJoinedConditions = 2000;

struct BinaryOperator {
  std::string_view text;
  int rank;
  NodeKind kind;
  Operator op;
};

constexpr std::array kWordOperators{
    BinaryOperator{"XOR", kRankXor, NodeKind::kXor, Operator::kNone},
    BinaryOperator{"OR", kRankOr, NodeKind::kOr, Operator::kNone},
    BinaryOperator{"AND", kRankAnd, NodeKind::kAnd, Operator::kNone},
    BinaryOperator{"MOD", kRankModulo, NodeKind::kArithmetic, Operator::kModulo},
};

constexpr std::array kSymbolOperators{
    BinaryOperator{"=", kRankCompare, NodeKind::kCompare, Operator::kEqual},
    BinaryOperator{"<>", kRankCompare, NodeKind::kCompare, Operator::kNotEqual},
    BinaryOperator{"<", kRankCompare, NodeKind::kCompare, Operator::kLess},
    BinaryOperator{"<=", kRankCompare, NodeKind::kCompare, Operator::kLessOrEqual},
    BinaryOperator{">", kRankCompare, NodeKind::kCompare, Operator::kGreater},
    BinaryOperator{">=", kRankCompare, NodeKind::kCompare, Operator::kGreaterOrEqual},
    BinaryOperator{"&", kRankConcat, NodeKind::kConcat, Operator::kNone},
    BinaryOperator{"+", kRankAdd, NodeKind::kArithmetic, Operator::kAdd},
    BinaryOperator{"-", kRankAdd, NodeKind::kArithmetic, Operator::kSubtract},
    BinaryOperator{"\\", kRankWholeDivide, NodeKind::kArithmetic, Operator::kWholeDivide},
    BinaryOperator{"*", kRankMultiply, NodeKind::kArithmetic, Operator::kMultiply},
    BinaryOperator{"/", kRankMultiply, NodeKind::kArithmetic, Operator::kDivide},
    BinaryOperator{"^", kRankPower, NodeKind::kArithmetic, Operator::kPower},
};

const BinaryOperator* OperatorOf(const Token& token) {
  if (token.kind == TokenKind::kSymbol) {
    const auto found = std::find_if(kSymbolOperators.begin(), kSymbolOperators.end(),
                                    [&](const auto& entry) { return entry.text == token.text; });
    return found == kSymbolOperators.end() ? nullptr : &*found;
  }
  if (token.kind == TokenKind::kWord) {
    const auto found =
        std::find_if(kWordOperators.begin(), kWordOperators.end(),
                     [&](const auto& entry) { return SameName(entry.text, token.text); });
    return found == kWordOperators.end() ? nullptr : &*found;
  }
  return nullptr;
}

struct FunctionEntry {
  std::string_view name;
  Function function;
  std::size_t fewest;
  std::size_t most;
};

constexpr std::array kFunctions{
    FunctionEntry{"iif", Function::kIif, 3, 3},
    FunctionEntry{"val", Function::kVal, 1, 1},
    FunctionEntry{"Format", Function::kFormat, 1, 2},
    FunctionEntry{"UCase", Function::kUpper, 1, 1},
    FunctionEntry{"LCase", Function::kLower, 1, 1},
    FunctionEntry{"Len", Function::kLength, 1, 1},
    FunctionEntry{"Trim", Function::kTrim, 1, 1},
    FunctionEntry{"LTrim", Function::kTrimLeft, 1, 1},
    FunctionEntry{"RTrim", Function::kTrimRight, 1, 1},
    FunctionEntry{"Left", Function::kLeft, 2, 2},
    FunctionEntry{"Right", Function::kRight, 2, 2},
    FunctionEntry{"Mid", Function::kMiddle, 2, 3},
    FunctionEntry{"IsNull", Function::kIsNull, 1, 1},
    FunctionEntry{"Nz", Function::kNullTo, 1, 2},
    FunctionEntry{"Now", Function::kNow, 0, 0},
    FunctionEntry{"Date", Function::kToday, 0, 0},
};

struct AggregateEntry {
  std::string_view name;
  Aggregate aggregate;
};

constexpr std::array kAggregates{
    AggregateEntry{"Count", Aggregate::kCount}, AggregateEntry{"Sum", Aggregate::kSum},
    AggregateEntry{"Min", Aggregate::kMinimum}, AggregateEntry{"Max", Aggregate::kMaximum},
    AggregateEntry{"Avg", Aggregate::kAverage},
};

struct ConstantEntry {
  std::string_view name;
  NodeKind kind;
};

constexpr std::array kConstants{
    ConstantEntry{"NULL", NodeKind::kNull},   ConstantEntry{"TRUE", NodeKind::kTrue},
    ConstantEntry{"FALSE", NodeKind::kFalse}, ConstantEntry{"YES", NodeKind::kTrue},
    ConstantEntry{"NO", NodeKind::kFalse},    ConstantEntry{"ON", NodeKind::kTrue},
    ConstantEntry{"OFF", NodeKind::kFalse},
};

template <typename Entries>
auto FindEntry(const Entries& entries, std::string_view name) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [name](const auto& entry) { return SameName(entry.name, name); });
  return found == entries.end() ? nullptr : &*found;
}

bool TakesAnyNumber(NodeKind kind) {
  return kind == NodeKind::kAnd || kind == NodeKind::kOr || kind == NodeKind::kConcat;
}

}  // namespace

ExpressionPtr StatementParser::Make(NodeKind kind, std::size_t offset) const {
  return std::make_unique<Expression>(kind, offset);
}

void StatementParser::Adopt(Expression& parent, ExpressionPtr child) {
  // A long chain of operators nests as deeply as brackets do.
  parent.depth = std::max(parent.depth, child->depth + 1);
  if (parent.depth > kDeepestNesting) {
    RefuseAt(child->offset, "the statement is nested too deeply");
  }
  parent.operands.push_back(std::move(child));
}

ExpressionPtr StatementParser::Join(NodeKind kind, Operator op, ExpressionPtr left,
                                    ExpressionPtr right) {
  const bool joinsConditions = kind == NodeKind::kAnd || kind == NodeKind::kOr;
  if (joinsConditions && ++joinedConditions_ > kMostJoinedConditions) {
    RefuseAt(right->offset, "more than " + std::to_string(kMostJoinedConditions) +
                                " conditions joined by AND and OR");
  }
  if (TakesAnyNumber(kind) && left->kind == kind) {
    Adopt(*left, std::move(right));
    return left;
  }
  ExpressionPtr joined = Make(kind, left->offset);
  joined->op = op;
  Adopt(*joined, std::move(left));
  Adopt(*joined, std::move(right));
  return joined;
}

ExpressionPtr StatementParser::ReadExpression() {
  return ReadRanked(kRankXor);
}

ExpressionPtr StatementParser::ReadRanked(int lowestRank) {
  const Nested level(*this, level_, kDeepestNesting);
  ExpressionPtr left = ReadPrefixed();
  while (true) {
    if (lowestRank <= kRankCompare) {
      const bool isTest =
          IsWord("LIKE") || IsWord("IN") || IsWord("BETWEEN") || IsWord("IS") ||
          (IsWord("NOT") && (IsWord("LIKE", 1) || IsWord("IN", 1) || IsWord("BETWEEN", 1)));
      if (isTest) {
        left = ReadTest(std::move(left));
        continue;
      }
    }
    const BinaryOperator* found = OperatorOf(Peek());
    if (found == nullptr || found->rank < lowestRank) {
      return left;
    }
    Take();
    ExpressionPtr right = ReadRanked(found->rank + 1);
    left = Join(found->kind, found->op, std::move(left), std::move(right));
  }
}

ExpressionPtr StatementParser::ReadPrefixed() {
  const std::size_t offset = Peek().offset;
  if (TakeWord("NOT")) {
    ExpressionPtr negation = Make(NodeKind::kNot, offset);
    Adopt(*negation, ReadRanked(kRankNot));
    return negation;
  }
  if (TakeSymbol("+")) {
    return ReadRanked(kRankNegate);
  }
  if (TakeSymbol("-")) {
    ExpressionPtr operand = ReadRanked(kRankNegate);
    if (operand->kind == NodeKind::kLiteral && !operand->negated &&
        literals_[operand->literal].kind == LiteralKind::kNumber) {
      operand->negated = true;
      return operand;
    }
    ExpressionPtr negation = Make(NodeKind::kNegate, offset);
    Adopt(*negation, std::move(operand));
    return negation;
  }
  return ReadPrimary();
}

ExpressionPtr StatementParser::ReadTest(ExpressionPtr operand) {
  if (TakeWord("IS")) {
    ExpressionPtr test = Make(NodeKind::kIsNull, operand->offset);
    test->negated = TakeWord("NOT");
    ExpectWord("NULL");
    Adopt(*test, std::move(operand));
    return test;
  }
  const bool negated = TakeWord("NOT");
  if (TakeWord("IN")) {
    return ReadIn(std::move(operand), negated);
  }
  const bool isLike = TakeWord("LIKE");
  if (!isLike) {
    ExpectWord("BETWEEN");
  }
  ExpressionPtr test = Make(isLike ? NodeKind::kLike : NodeKind::kBetween, operand->offset);
  test->negated = negated;
  Adopt(*test, std::move(operand));
  Adopt(*test, ReadRanked(kRankConcat));
  if (!isLike) {
    ExpectWord("AND");
    Adopt(*test, ReadRanked(kRankConcat));
  }
  return test;
}

ExpressionPtr StatementParser::ReadIn(ExpressionPtr operand, bool negated) {
  const bool isQuery = IsSymbol("(") && IsWord("SELECT", 1);
  ExpressionPtr test = Make(isQuery ? NodeKind::kInSelect : NodeKind::kInList, operand->offset);
  test->negated = negated;
  Adopt(*test, std::move(operand));
  ExpectSymbol("(");
  if (isQuery) {
    test->query = ReadSubQuery();
  } else if (!IsSymbol(")")) {
    do {
      Adopt(*test, ReadExpression());
    } while (TakeSymbol(","));
  }
  ExpectSymbol(")");
  return test;
}

std::unique_ptr<Query> StatementParser::ReadSubQuery() {
  return std::make_unique<Query>(ReadQuery());
}

ExpressionPtr StatementParser::ReadPrimary() {
  const Token& token = Peek();
  if (token.kind == TokenKind::kLiteral) {
    ExpressionPtr literal = Make(NodeKind::kLiteral, token.offset);
    literal->literal = token.literal;
    Take();
    return literal;
  }
  if (token.kind == TokenKind::kSymbol && token.text == "(") {
    Take();
    ExpressionPtr inner;
    if (IsWord("SELECT")) {
      inner = Make(NodeKind::kSubSelect, token.offset);
      inner->query = ReadSubQuery();
    } else {
      inner = ReadExpression();
    }
    ExpectSymbol(")");
    return inner;
  }
  if (token.kind == TokenKind::kWord || token.kind == TokenKind::kBracketed) {
    return ReadNamed();
  }
  Unexpected("a value");
}

ExpressionPtr StatementParser::ReadNamed() {
  const Token& token = Peek();
  if (token.kind == TokenKind::kWord) {
    if (IsSymbol("(", 1)) {
      return ReadCall();
    }
    if (const auto* constant = FindEntry(kConstants, token.text); constant != nullptr) {
      return Make(constant->kind, Take().offset);
    }
  }
  ExpressionPtr column = Make(NodeKind::kColumn, token.offset);
  column->name = ExpectName("a value");
  if (TakeSymbol(".")) {
    column->qualifier = column->name;
    column->name = ExpectName("a column name");
  }
  return column;
}

ExpressionPtr StatementParser::ReadCall() {
  const Token& token = Take();
  Take();  // the bracket
  if (SameName(token.text, "EXISTS")) {
    ExpressionPtr exists = Make(NodeKind::kExists, token.offset);
    exists->query = ReadSubQuery();
    ExpectSymbol(")");
    return exists;
  }
  if (const auto* aggregate = FindEntry(kAggregates, token.text); aggregate != nullptr) {
    ExpressionPtr call = ReadAggregate(aggregate->aggregate);
    call->offset = token.offset;
    return call;
  }
  const auto* function = FindEntry(kFunctions, token.text);
  if (function == nullptr && IsReserved(token.text)) {
    RefuseAt(token.offset, "expected a value but found " + Quoted(token.text));
  }
  if (function == nullptr) {
    RefuseAt(token.offset, "unknown function " + Quoted(token.text));
  }
  ExpressionPtr call = Make(NodeKind::kFunction, token.offset);
  call->function = function->function;
  if (!IsSymbol(")")) {
    do {
      Adopt(*call, ReadExpression());
    } while (TakeSymbol(","));
  }
  ExpectSymbol(")");
  if (call->operands.size() < function->fewest || call->operands.size() > function->most) {
    RefuseAt(token.offset, "wrong number of arguments for " + std::string(function->name));
  }
  return call;
}

ExpressionPtr StatementParser::ReadAggregate(Aggregate aggregate) {
  ExpressionPtr call = Make(NodeKind::kAggregate, Peek().offset);
  call->aggregate = aggregate;
  if (aggregate != Aggregate::kCount || !TakeSymbol("*")) {
    Adopt(*call, ReadExpression());
  }
  ExpectSymbol(")");
  return call;
}

}  // namespace qorhost::dialect
