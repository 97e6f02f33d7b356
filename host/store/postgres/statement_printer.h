// The printer itself: a walk over the bound tree that writes the server's SQL as it goes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/dialect/printed_statement.h"
#include "host/dialect/tree.h"
#include "host/dialect/unit_key.h"
#include "host/store/postgres/value_form.h"

namespace qorhost::postgres {

/// Where a statement gets the key of a unit that it does not name itself.
struct UnitKeyPlace {
  dialect::NamedRow row;
  std::size_t parameter = 0;  ///< the number of the key, from 1
};

class StatementPrinter {
 public:
  explicit StatementPrinter(std::string_view sql, const UnitKeyPlace& unitKey = {})
      : sql_(sql), unitKey_(unitKey) {}

  dialect::PrintedStatement PrintStatement(const dialect::Statement& statement);

 private:
  /// What a query is printed for.
  struct Use {
    bool named = false;                  ///< its columns are shown
    std::optional<Comparing> comparing;  ///< its one column is compared so
    bool single = false;                 ///< its first row alone counts
  };

  /// Which expressions are the same for every row of a group, as long as it lives.
  class Grouped {
   public:
    Grouped(StatementPrinter& printer, const dialect::Select* select)
        : printer_(printer), before_(printer.grouped_) {
      printer_.grouped_ = select;
    }
    ~Grouped() { printer_.grouped_ = before_; }
    Grouped(const Grouped&) = delete;
    Grouped& operator=(const Grouped&) = delete;

   private:
    StatementPrinter& printer_;
    const dialect::Select* before_;
  };

  void Write(std::string_view text) { printed_.sql += text; }
  void WriteNumber(std::size_t number);
  void WriteParameter(const dialect::Parameter& parameter, std::size_t offset,
                      std::string_view type);

  // Statements.
  void PrintInsert(const dialect::Statement& statement);
  void PrintUpdate(const dialect::Statement& statement);
  void PrintAssigned(const dialect::Assignment& assignment);
  void PrintTable(const dialect::TableName& table);
  void PrintWhere(const dialect::ExpressionPtr& where);
  void PrintUnitKey();

  // Queries.
  void PrintQuery(const dialect::Query& query, const Use& use);
  void PrintPlain(const dialect::Query& query, const Use& use);
  void PrintDistinct(const dialect::Query& query, const Use& use);
  void PrintFirstOfEach(const dialect::Query& query, const dialect::Select& select);
  void PrintUnion(const dialect::Query& query, const Use& use);
  void PrintParts(const dialect::Query& query, std::size_t first, std::size_t end);
  void PrintPart(const dialect::Query& query, std::size_t index);
  void PrintComparedParts(const dialect::Query& query, Comparing comparing);
  void PrintItems(const dialect::Query& query, const dialect::Select& select, const Use& use);
  void PrintItemsAsColumns(const dialect::Query& query, const dialect::Select& select);
  void PrintRows(const dialect::Select& select);
  void PrintUnitsOfLinked(const dialect::Select& select);
  void PrintSource(const dialect::Source& source);
  void PrintOrder(const dialect::Query& query, const dialect::Select& select, bool needsOrder);
  void PrintOrderKey(const dialect::Expression& node);
  void PrintIdentities(const dialect::Select& select, std::string_view separator);
  void PrintLimit(const dialect::Select& select, bool single);

  // The columns of a query inside a query: c1, c2, ...
  void PrintColumns(const dialect::Query& query, const Use& use);
  void PrintColumnKey(const dialect::Query& query, std::size_t column);
  void PrintColumnKeys(const dialect::Query& query);
  void PrintColumnOrder(const dialect::Query& query, std::string_view further);
  void WriteNumbered(std::string_view name, std::size_t index);

  // Conditions.
  void PrintCondition(const dialect::Expression& node);
  void PrintTruth(const dialect::Expression& node);
  void PrintTruthOfValue(const dialect::Expression& node);
  void PrintSide(const dialect::Expression& node, Comparing comparing);
  void PrintPair(const dialect::Expression& left, dialect::Operator op,
                 const dialect::Expression& right, bool collated);
  void PrintWholeLiteral(const dialect::Expression& literal, dialect::Operator op);
  void PrintShownNumber(const dialect::Expression& shown, const dialect::Expression& literal);
  void PrintInList(const dialect::Expression& node);
  void PrintInSelect(const dialect::Expression& node);

  // Values.
  void PrintValue(const dialect::Expression& node);
  void PrintAs(const dialect::Expression& node, Form form);
  void PrintConverted(const dialect::Expression& node, Form own, Form form);
  void PrintCoerced(const dialect::Expression& node);
  void PrintOwn(const dialect::Expression& node);
  void PrintOwnAs(const dialect::Expression& node, Form form);
  void PrintUngrouped(const dialect::Expression& node);
  void PrintColumn(const dialect::Expression& node);
  void PrintLiteral(const dialect::Expression& node);
  void PrintLiteral(const dialect::Expression& node, std::string_view reader);
  void PrintChain(const dialect::Expression& node, std::size_t first, std::size_t count,
                  std::string_view symbol);
  void PrintConcatenated(const dialect::Expression& node);
  void PrintNumber(const dialect::Expression& node);
  void PrintArithmetic(const dialect::Expression& node);
  void PrintFunction(const dialect::Expression& node);
  void PrintTextCall(std::string_view name, const dialect::Expression& node);
  void PrintCase(const dialect::Expression& node);
  void PrintFormat(const dialect::Expression& node);
  void PrintNullTo(const dialect::Expression& node);
  void PrintAggregate(const dialect::Expression& node);

  [[nodiscard]] bool IsGroupKey(const dialect::Expression& node) const;
  /// What a result column is called.
  [[nodiscard]] static std::string NameOf(const dialect::Select& select, std::size_t column);

  std::string_view sql_;
  UnitKeyPlace unitKey_;
  dialect::PrintedStatement printed_;
  const dialect::Select* grouped_ = nullptr;  // the SELECT whose groups are shown here
};

}  // namespace qorhost::postgres
