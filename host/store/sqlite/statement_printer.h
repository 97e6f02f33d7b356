// The printer itself: a walk over the bound tree that writes the engine's SQL as it goes.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/dialect/printed_statement.h"
#include "host/dialect/tree.h"

namespace qorhost::sqlite {

class StatementPrinter {
 public:
  explicit StatementPrinter(std::string_view sql) : sql_(sql) {}

  dialect::PrintedStatement PrintStatement(const dialect::Statement& statement);

 private:
  // What a part of the statement adds to the stack of the engine's parser.
  static constexpr std::size_t kStackOfQuery = 10;
  static constexpr std::size_t kStackOfBrackets = 3;
  static constexpr std::size_t kStackOfCase = 6;

  // Counts what the engine's parser stacks up for as long as it lives.
  class Stacked {
   public:
    Stacked(StatementPrinter& printer, std::size_t entries, std::size_t offset);
    ~Stacked() { printer_.stack_ -= entries_; }
    Stacked(const Stacked&) = delete;
    Stacked& operator=(const Stacked&) = delete;

   private:
    StatementPrinter& printer_;
    std::size_t entries_;
  };

  void Write(std::string_view text) { printed_.sql += text; }
  void WriteParameter(const dialect::Parameter& parameter, std::size_t offset);

  // Statements.
  void PrintInsert(const dialect::Statement& statement);
  void PrintLaterThanOwn(const dialect::Assignment& assignment);
  void PrintUpdate(const dialect::Statement& statement);
  void PrintTable(const dialect::TableName& table);
  void PrintWhere(const dialect::ExpressionPtr& where);
  void PrintQuery(const dialect::Query& query, bool named);
  void PrintLimit(const dialect::Select& select);
  void PrintOrder(const dialect::Query& query, bool isUnion);
  void PrintSelect(const dialect::Select& select, bool isUnion, bool named);
  void PrintSource(const dialect::Source& source);

  // Conditions.
  void PrintCondition(const dialect::Expression& node);
  void PrintTruth(const dialect::Expression& node);
  void PrintNullTest(const dialect::Expression& tested, bool negated);
  void PrintCollated(const dialect::Expression& node);
  void PrintCompare(const dialect::Expression& node);
  void PrintInList(const dialect::Expression& node);
  void PrintXor(const dialect::Expression& node);

  // Values.
  void PrintKey(const dialect::Expression& node);
  void PrintValue(const dialect::Expression& node);
  void PrintUncoerced(const dialect::Expression& node);
  void PrintLiteral(const dialect::Expression& node);
  void PrintChain(const dialect::Expression& node, std::size_t first, std::size_t count,
                  std::string_view symbol);
  void PrintConcatenated(const dialect::Expression& node);
  void PrintNumber(const dialect::Expression& node);
  void PrintArithmetic(const dialect::Expression& node);
  void PrintFunction(const dialect::Expression& node);
  void PrintCall(std::string_view name, const dialect::Expression& node);
  void PrintCase(const dialect::Expression& node);
  void PrintFormat(const dialect::Expression& node);
  void PrintNullTo(const dialect::Expression& node);
  void PrintAggregate(const dialect::Expression& node);

  std::string_view sql_;
  dialect::PrintedStatement printed_;
  std::size_t stack_ = 0;
};

}  // namespace qorhost::sqlite
