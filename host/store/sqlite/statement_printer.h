// The printer itself: a walk over the bound tree that writes the engine's SQL as it goes.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/dialect/tree.h"
#include "host/store/sqlite/printer.h"

namespace qorhost::dialect {

class StatementPrinter {
 public:
  explicit StatementPrinter(std::string_view sql) : sql_(sql) {}

  PrintedStatement PrintStatement(const Statement& statement);

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
  void WriteParameter(const Parameter& parameter, std::size_t offset);

  // Statements.
  void PrintInsert(const Statement& statement);
  void PrintUpdate(const Statement& statement);
  void PrintTable(const TableName& table);
  void PrintWhere(const ExpressionPtr& where);
  void PrintQuery(const Query& query, bool named);
  void PrintLimit(const Select& select);
  void PrintOrder(const Query& query, bool isUnion);
  void PrintSelect(const Select& select, bool isUnion, bool named);
  void PrintSource(const Source& source);

  // Conditions.
  void PrintCondition(const Expression& node);
  void PrintTruth(const Expression& node);
  void PrintNullTest(const Expression& tested, bool negated);
  void PrintCollated(const Expression& node);
  void PrintCompare(const Expression& node);
  void PrintInList(const Expression& node);
  void PrintXor(const Expression& node);

  // Values.
  void PrintKey(const Expression& node);
  void PrintValue(const Expression& node);
  void PrintUncoerced(const Expression& node);
  void PrintLiteral(const Expression& node);
  void PrintChain(const Expression& node, std::size_t first, std::size_t count,
                  std::string_view symbol);
  void PrintConcatenated(const Expression& node);
  void PrintNumber(const Expression& node);
  void PrintArithmetic(const Expression& node);
  void PrintFunction(const Expression& node);
  void PrintCall(std::string_view name, const Expression& node);
  void PrintCase(const Expression& node);
  void PrintFormat(const Expression& node);
  void PrintNullTo(const Expression& node);
  void PrintAggregate(const Expression& node);

  std::string_view sql_;
  PrintedStatement printed_;
  std::size_t stack_ = 0;
};

}  // namespace qorhost::dialect
