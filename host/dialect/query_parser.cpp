// The parser's half for queries: SELECT with its clauses, joins and UNION.
#include <memory>
#include <string>
#include <utility>

#include "host/dialect/parser.h"
#include "host/dialect/statement_parser.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kMostTables = 16;
constexpr std::size_t kMostUnions = 100;
constexpr std::size_t kDeepestQuery = 8;

}  // namespace

Query StatementParser::ReadQuery() {
  const Nested level(*this, queryLevel_, kDeepestQuery);
  Query query;
  query.selects.push_back(ReadSelect());
  while (IsWord("UNION")) {
    if (query.selects.size() == kMostUnions) {
      RefuseAt(Peek().offset, "too many UNIONs");
    }
    Take();
    query.unionAll.push_back(TakeWord("ALL"));
    query.selects.push_back(ReadSelect());
  }
  if (TakeWord("ORDER")) {
    ExpectWord("BY");
    ReadOrderBy(query);
  }
  return query;
}

Select StatementParser::ReadSelect() {
  Select select;
  select.offset = Peek().offset;
  ExpectWord("SELECT");
  select.distinct = TakeWord("DISTINCT");
  if (!select.distinct) {
    TakeWord("ALL");
  }
  ReadTop(select);
  ReadSelectList(select);
  if (TakeWord("FROM")) {
    ReadFrom(select);
  }
  if (TakeWord("WHERE")) {
    select.where = ReadExpression();
  }
  if (TakeWord("GROUP")) {
    ExpectWord("BY");
    do {
      select.groupBy.push_back(ReadExpression());
    } while (TakeSymbol(","));
  }
  if (TakeWord("HAVING")) {
    select.having = ReadExpression();
  }
  return select;
}

void StatementParser::ReadTop(Select& select) {
  if (!TakeWord("TOP")) {
    return;
  }
  if (Peek().kind != TokenKind::kLiteral) {
    Unexpected("a number of rows");
  }
  select.top = Take().literal;
  if (IsWord("PERCENT")) {
    RefuseAt(Peek().offset, "TOP n PERCENT is not supported");
  }
}

void StatementParser::ReadSelectList(Select& select) {
  do {
    // A comma left before FROM comes from hosts that build the list in a loop.
    if (!select.items.empty() && IsWord("FROM")) {
      return;
    }
    SelectItem item;
    if (IsSymbol("*")) {
      item.expression = Make(NodeKind::kStar, Take().offset);
    } else if (IsName() && IsSymbol(".", 1) && IsSymbol("*", 2)) {
      item.expression = Make(NodeKind::kStar, Peek().offset);
      item.expression->qualifier = Take().text;
      next_ += 2;
    } else {
      item.expression = ReadExpression();
      item.alias = ReadAlias();
    }
    select.items.push_back(std::move(item));
  } while (TakeSymbol(","));
}

std::string StatementParser::ReadAlias() {
  const bool announced = TakeWord("AS");
  const Token& token = Peek();
  std::string alias;
  if (token.kind == TokenKind::kLiteral) {
    const Literal& literal = literals_[token.literal];
    if (literal.kind == LiteralKind::kText) {
      alias = TextOf(literal);
      structural_.push_back(token.literal);
    }
  } else if (IsName()) {
    alias = token.text;
  }
  if (!alias.empty()) {
    CheckAlias(alias, token.offset);
    Take();
  } else if (announced) {
    Unexpected("an alias");
  }
  return alias;
}

void StatementParser::ReadFrom(Select& select) {
  std::size_t tables = 0;
  do {
    if (!select.from.empty() && IsWord("WHERE")) {
      return;
    }
    select.from.push_back(ReadSource(tables));
  } while (TakeSymbol(","));
}

std::unique_ptr<Source> StatementParser::ReadSource(std::size_t& tables) {
  const Nested level(*this, level_, kDeepestNesting);
  std::unique_ptr<Source> source = ReadSingleSource(tables);
  while (true) {
    JoinKind join = JoinKind::kInner;
    if (TakeWord("LEFT")) {
      TakeWord("OUTER");
      join = JoinKind::kLeft;
    } else if (!TakeWord("INNER") && !IsWord("JOIN")) {
      return source;
    }
    ExpectWord("JOIN");
    auto joined = std::make_unique<Source>();
    joined->join = join;
    joined->left = std::move(source);
    joined->right = ReadSingleSource(tables);
    ExpectWord("ON");
    joined->on = ReadExpression();
    source = std::move(joined);
  }
}

std::unique_ptr<Source> StatementParser::ReadSingleSource(std::size_t& tables) {
  if (IsSymbol("(") && IsWord("SELECT", 1)) {
    RefuseAt(Peek().offset, "a SELECT in FROM is not supported");
  }
  if (TakeSymbol("(")) {
    std::unique_ptr<Source> source = ReadSource(tables);
    ExpectSymbol(")");
    return source;
  }
  if (++tables > kMostTables) {
    RefuseAt(Peek().offset, "more than " + std::to_string(kMostTables) + " tables");
  }
  auto source = std::make_unique<Source>();
  source->table = ReadAliasedTable();
  return source;
}

void StatementParser::ReadOrderBy(Query& query) {
  do {
    OrderItem item;
    item.offset = Peek().offset;
    item.expression = ReadExpression();
    if (item.expression->kind == NodeKind::kLiteral) {
      const Literal& literal = literals_[item.expression->literal];
      if (literal.kind != LiteralKind::kNumber || !literal.isLong || literal.number < 1 ||
          item.expression->negated) {
        RefuseAt(item.offset, "ORDER BY takes names, expressions or the number of a column");
      }
      item.position = static_cast<std::size_t>(literal.number);
      structural_.push_back(item.expression->literal);
      item.expression.reset();
    }
    item.descending = TakeWord("DESC");
    if (!item.descending) {
      TakeWord("ASC");
    }
    query.orderBy.push_back(std::move(item));
  } while (TakeSymbol(","));
}

}  // namespace qorhost::dialect
