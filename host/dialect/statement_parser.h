// The parser itself: recursive descent, with the operators of expressions by their rank.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/lexer.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

class StatementParser {
 public:
  StatementParser(std::string_view sql, const std::vector<Literal>& literals);

  [[nodiscard]] Statement Read();

 private:
  // Counts one level of nesting for as long as it lives.
  class Nested {
   public:
    Nested(const StatementParser& parser, std::size_t& level, std::size_t deepest);
    ~Nested() { --level_; }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

   private:
    std::size_t& level_;
  };

  // Tokens.
  [[nodiscard]] const Token& Peek(std::size_t ahead = 0) const;
  const Token& Take();
  [[nodiscard]] bool IsWord(std::string_view word, std::size_t ahead = 0) const;
  [[nodiscard]] bool IsSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool TakeWord(std::string_view word);
  bool TakeSymbol(std::string_view symbol);
  void ExpectWord(std::string_view word);
  void ExpectSymbol(std::string_view symbol);
  [[nodiscard]] bool IsName(std::size_t ahead = 0) const;
  std::string_view ExpectName(std::string_view what);
  [[noreturn]] void Unexpected(std::string_view expected) const;
  [[noreturn]] void RefuseAt(std::size_t offset, const std::string& message) const;

  // Statements.
  void ReadInsert(Statement& statement);
  void ReadUpdate(Statement& statement);
  void ReadDelete(Statement& statement);
  void ExpectEnd();
  TableName ReadTableName();
  TableName ReadAliasedTable();
  // Refuses an alias that is too long or no text.
  void CheckAlias(std::string_view alias, std::size_t offset) const;

  // Queries.
  Query ReadQuery();
  Select ReadSelect();
  void ReadTop(Select& select);
  void ReadSelectList(Select& select);
  std::string ReadAlias();
  void ReadFrom(Select& select);
  std::unique_ptr<Source> ReadSource(std::size_t& tables);
  std::unique_ptr<Source> ReadSingleSource(std::size_t& tables);
  void ReadOrderBy(Query& query);

  // Expressions.
  ExpressionPtr ReadExpression();
  ExpressionPtr ReadRanked(int lowestRank);
  ExpressionPtr ReadPrefixed();
  ExpressionPtr ReadPrimary();
  ExpressionPtr ReadNamed();
  ExpressionPtr ReadCall();
  ExpressionPtr ReadAggregate(Aggregate aggregate);
  ExpressionPtr ReadTest(ExpressionPtr operand);
  ExpressionPtr ReadIn(ExpressionPtr operand, bool negated);
  std::unique_ptr<Query> ReadSubQuery();
  ExpressionPtr Join(NodeKind kind, Operator op, ExpressionPtr left, ExpressionPtr right);
  void Adopt(Expression& parent, ExpressionPtr child);
  ExpressionPtr Make(NodeKind kind, std::size_t offset) const;

  std::string_view sql_;
  const std::vector<Literal>& literals_;
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
  std::size_t level_ = 0;
  std::size_t queryLevel_ = 0;
  std::size_t joinedConditions_ = 0;
  std::vector<std::size_t> structural_;
};

/// Whether a word has a meaning of its own, so that it is no name unless in brackets.
[[nodiscard]] bool IsReserved(std::string_view word);

}  // namespace qorhost::dialect
