#include "host/dialect/parser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/utf8.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"
#include "host/dialect/statement_parser.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kLongestAlias = 64;

constexpr auto kReserved = std::to_array<std::string_view>(
    {"ALL",      "AND",    "AS",     "ASC",    "BETWEEN", "BY",     "DELETE", "DESC",
     "DISTINCT", "EXISTS", "FALSE",  "FROM",   "GROUP",   "HAVING", "IN",     "INNER",
     "INSERT",   "INTO",   "IS",     "JOIN",   "LEFT",    "LIKE",   "MOD",    "NOT",
     "NULL",     "ON",     "OR",     "ORDER",  "RIGHT",   "SELECT", "SET",    "TOP",
     "TRUE",     "UNION",  "UPDATE", "VALUES", "WHERE",   "XOR"});

}  // namespace

bool IsReserved(std::string_view word) {
  return std::any_of(kReserved.begin(), kReserved.end(),
                     [word](std::string_view reserved) { return SameName(reserved, word); });
}

Statement Parse(std::string_view sql, const std::vector<Literal>& literals) {
  return StatementParser(sql, literals).Read();
}

StatementParser::StatementParser(std::string_view sql, const std::vector<Literal>& literals)
    : sql_(sql), literals_(literals), tokens_(Tokenize(sql)) {}

StatementParser::Nested::Nested(const StatementParser& parser, std::size_t& level,
                                std::size_t deepest)
    : level_(level) {
  if (level == deepest) {
    parser.RefuseAt(parser.Peek().offset, "the statement is nested too deeply");
  }
  ++level_;
}

const Token& StatementParser::Peek(std::size_t ahead) const {
  return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
}

const Token& StatementParser::Take() {
  const Token& token = Peek();
  ++next_;
  return token;
}

bool StatementParser::IsWord(std::string_view word, std::size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.kind == TokenKind::kWord && SameName(token.text, word);
}

bool StatementParser::IsSymbol(std::string_view symbol, std::size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.kind == TokenKind::kSymbol && token.text == symbol;
}

bool StatementParser::TakeWord(std::string_view word) {
  const bool found = IsWord(word);
  next_ += found ? 1 : 0;
  return found;
}

bool StatementParser::TakeSymbol(std::string_view symbol) {
  const bool found = IsSymbol(symbol);
  next_ += found ? 1 : 0;
  return found;
}

void StatementParser::ExpectWord(std::string_view word) {
  if (!TakeWord(word)) {
    Unexpected(word);
  }
}

void StatementParser::ExpectSymbol(std::string_view symbol) {
  if (!TakeSymbol(symbol)) {
    Unexpected(Quoted(symbol));
  }
}

bool StatementParser::IsName(std::size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.kind == TokenKind::kBracketed ||
         (token.kind == TokenKind::kWord && !IsReserved(token.text));
}

std::string_view StatementParser::ExpectName(std::string_view what) {
  if (!IsName()) {
    Unexpected(what);
  }
  return Take().text;
}

void StatementParser::Unexpected(std::string_view expected) const {
  const Token& token = Peek();
  const std::string found =
      token.kind == TokenKind::kEnd ? std::string("the end") : Quoted(token.text);
  RefuseAt(token.offset, "expected " + std::string(expected) + " but found " + found);
}

void StatementParser::RefuseAt(std::size_t offset, const std::string& message) const {
  Refuse(sql_, offset, message);
}

Statement StatementParser::Read() {
  Statement statement;
  if (IsWord("SELECT")) {
    statement.kind = StatementKind::kSelect;
    statement.query = ReadQuery();
  } else if (TakeWord("INSERT")) {
    statement.kind = StatementKind::kInsert;
    ReadInsert(statement);
  } else if (TakeWord("UPDATE")) {
    statement.kind = StatementKind::kUpdate;
    ReadUpdate(statement);
  } else if (TakeWord("DELETE")) {
    statement.kind = StatementKind::kDelete;
    ReadDelete(statement);
  } else {
    Unexpected("SELECT, INSERT, UPDATE or DELETE");
  }
  ExpectEnd();
  std::sort(structural_.begin(), structural_.end());
  statement.structural = std::move(structural_);
  return statement;
}

void StatementParser::ExpectEnd() {
  if (TakeSymbol(";") && Peek().kind != TokenKind::kEnd) {
    RefuseAt(Peek().offset, "only one statement is allowed");
  }
  if (Peek().kind != TokenKind::kEnd) {
    Unexpected("the end of the statement");
  }
}

void StatementParser::ReadInsert(Statement& statement) {
  ExpectWord("INTO");
  statement.table = ReadTableName();
  ExpectSymbol("(");
  do {
    Assignment assignment;
    assignment.offset = Peek().offset;
    assignment.name = ExpectName("a column name");
    statement.assignments.push_back(std::move(assignment));
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  ExpectWord("VALUES");
  const std::size_t values = Peek().offset;
  ExpectSymbol("(");
  std::size_t count = 0;
  do {
    ExpressionPtr value = ReadExpression();
    if (count < statement.assignments.size()) {
      statement.assignments[count].value = std::move(value);
    }
    ++count;
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  if (count != statement.assignments.size()) {
    RefuseAt(values, std::to_string(count) + " values for " +
                         std::to_string(statement.assignments.size()) + " columns");
  }
}

void StatementParser::ReadUpdate(Statement& statement) {
  statement.table = ReadAliasedTable();
  ExpectWord("SET");
  do {
    // A comma left before WHERE comes from hosts that leave out the last assignments.
    if (!statement.assignments.empty() && IsWord("WHERE")) {
      break;
    }
    Assignment assignment;
    assignment.offset = Peek().offset;
    assignment.name = ExpectName("a column name");
    if (TakeSymbol(".")) {
      assignment.qualifier = assignment.name;
      assignment.name = ExpectName("a column name");
    }
    ExpectSymbol("=");
    assignment.value = ReadExpression();
    statement.assignments.push_back(std::move(assignment));
  } while (TakeSymbol(","));
  if (TakeWord("WHERE")) {
    statement.where = ReadExpression();
  }
}

void StatementParser::ReadDelete(Statement& statement) {
  TakeSymbol("*");
  ExpectWord("FROM");
  statement.table = ReadAliasedTable();
  if (TakeWord("WHERE")) {
    statement.where = ReadExpression();
  }
}

TableName StatementParser::ReadTableName() {
  TableName table;
  table.offset = Peek().offset;
  table.name = ExpectName("a table name");
  return table;
}

TableName StatementParser::ReadAliasedTable() {
  TableName table = ReadTableName();
  const bool announced = TakeWord("AS");
  if (announced || IsName()) {
    const std::size_t offset = Peek().offset;
    table.alias = ExpectName("an alias");
    CheckAlias(table.alias, offset);
  }
  return table;
}

void StatementParser::CheckAlias(std::string_view alias, std::size_t offset) const {
  if (alias.size() > kLongestAlias || !qorcred::IsUtf8(alias)) {
    RefuseAt(offset,
             "an alias of at most " + std::to_string(kLongestAlias) + " bytes of text is expected");
  }
}

}  // namespace qorhost::dialect
