// Queries whose rows are told apart: DISTINCT and UNION, as a query around the rows.
#include <string>
#include <vector>

#include "host/dialect/grouping.h"
#include "host/dialect/names.h"
#include "host/dialect/sources.h"
#include "host/store/postgres/statement_printer.h"

namespace qorhost::postgres {

using namespace dialect;

namespace {

/// Whether texts of a result column are told apart without regard to case.
bool IsFolded(const ResultColumn& result) {
  return result.valueClass == ValueClass::kText || result.valueClass == ValueClass::kUnknown;
}

}  // namespace

void StatementPrinter::PrintDistinct(const Query& query, const Use& use) {
  const Select& select = query.selects.front();
  Write("SELECT ");
  PrintColumns(query, use);
  Write(" FROM (");
  PrintFirstOfEach(query, select);
  Write(") AS firsts");
  std::string further;
  if (!IsAggregated(select, query.orderBy)) {
    for (std::size_t index = 0; index < TablesOf(select).size(); ++index) {
      further.append(further.empty() ? "" : ", ").append("i").append(std::to_string(index + 1));
    }
  }
  PrintColumnOrder(query, further);
  PrintLimit(select, use.single);
}

/// The rows c1, c2, ... that differ, each as it first comes, with o1, o2, ... by which they are
/// ordered beside their columns, and the identities i1, i2, ... of what they were made from.
void StatementPrinter::PrintFirstOfEach(const Query& query, const Select& select) {
  const bool isAggregated = IsAggregated(select, query.orderBy);
  Write("SELECT DISTINCT ON (");
  PrintColumnKeys(query);
  Write(") * FROM (SELECT ");
  PrintItemsAsColumns(query, select);
  {
    const Grouped groups(*this, &select);
    for (std::size_t index = 0; index < query.orderBy.size(); ++index) {
      if (query.orderBy[index].position == 0) {
        Write(", ");
        PrintOrderKey(*query.orderBy[index].expression);
        Write(" AS ");
        WriteNumbered("o", index + 1);
      }
    }
  }
  const std::vector<const TableName*> tables =
      isAggregated ? std::vector<const TableName*>() : TablesOf(select);
  for (std::size_t index = 0; index < tables.size(); ++index) {
    Write(", ");
    Write(QuotedName(tables[index]->shownName()));
    Write(".\"RID\" AS ");
    WriteNumbered("i", index + 1);
  }
  PrintRows(select);
  Write(") AS every ORDER BY ");
  PrintColumnKeys(query);
  for (std::size_t index = 0; index < tables.size(); ++index) {
    Write(", ");
    WriteNumbered("i", index + 1);
  }
}

void StatementPrinter::PrintItemsAsColumns(const Query& query, const Select& select) {
  const Grouped groups(*this, &select);
  for (std::size_t column = 0; column < select.items.size(); ++column) {
    Write(column > 0 ? ", " : "");
    PrintAs(*select.items[column].expression, FormOfResult(query, column));
    Write(" AS ");
    WriteNumbered("c", column + 1);
  }
}

void StatementPrinter::PrintUnion(const Query& query, const Use& use) {
  // Up to the last UNION without ALL all rows are told apart.
  std::size_t apart = query.selects.size();
  while (apart > 1 && query.unionAll[apart - 2]) {
    --apart;
  }
  Write("SELECT ");
  PrintColumns(query, use);
  Write(" FROM (");
  if (apart > 1) {
    // Of rows that differ in case the last SELECT's stays.
    Write("(SELECT DISTINCT ON (");
    PrintColumnKeys(query);
    Write(") * FROM (");
    PrintParts(query, 0, apart);
    Write(") AS every ORDER BY ");
    PrintColumnKeys(query);
    Write(", part DESC)");
    Write(apart < query.selects.size() ? " UNION ALL " : "");
    PrintParts(query, apart, query.selects.size());
  } else {
    PrintParts(query, 0, query.selects.size());
  }
  Write(") AS parts");
  const bool isToldApart = apart == query.selects.size();
  if (isToldApart || !query.orderBy.empty()) {
    PrintColumnOrder(query, isToldApart ? "" : "part");
  }
  Write(use.single ? " LIMIT 1" : "");
}

void StatementPrinter::PrintParts(const Query& query, std::size_t first, std::size_t end) {
  for (std::size_t index = first; index < end; ++index) {
    Write(index > first ? " UNION ALL " : "");
    PrintPart(query, index);
  }
}

/// The rows c1, c2, ... of one SELECT of a UNION, and its number.
void StatementPrinter::PrintPart(const Query& query, std::size_t index) {
  const Select& select = query.selects[index];
  const bool isAggregated = IsAggregated(select, {});
  Write("(SELECT ");
  if (select.distinct) {
    for (std::size_t column = 0; column < select.items.size(); ++column) {
      WriteNumbered("c", column + 1);
      Write(", ");
    }
    WriteNumber(index);
    Write(" AS part FROM (");
    PrintFirstOfEach(query, select);
    Write(") AS firsts");
    for (std::size_t table = 0; !isAggregated && table < TablesOf(select).size(); ++table) {
      Write(table > 0 ? ", " : " ORDER BY ");
      WriteNumbered("i", table + 1);
    }
  } else {
    PrintItemsAsColumns(query, select);
    Write(", ");
    WriteNumber(index);
    Write(" AS part");
    PrintRows(select);
    if (!isAggregated) {
      PrintIdentities(select, " ORDER BY ");
    }
  }
  PrintLimit(select, false);
  Write(")");
}

/// A UNION that something is looked for in: doubles do no harm.
void StatementPrinter::PrintComparedParts(const Query& query, Comparing comparing) {
  std::string_view separator;
  for (const Select& select : query.selects) {
    Write(separator);
    separator = " UNION ALL ";
    Write("(SELECT ");
    PrintItems(query, select, {.named = false, .comparing = comparing, .single = false});
    PrintRows(select);
    if (select.top && !IsAggregated(select, {})) {
      PrintIdentities(select, " ORDER BY ");
    }
    PrintLimit(select, false);
    Write(")");
  }
}

void StatementPrinter::WriteNumbered(std::string_view name, std::size_t index) {
  Write(name);
  WriteNumber(index);
}

void StatementPrinter::PrintColumns(const Query& query, const Use& use) {
  const Select& select = query.selects.front();
  for (std::size_t column = 0; column < select.items.size(); ++column) {
    Write(column > 0 ? ", " : "");
    const Form form = FormOfResult(query, column);
    std::string_view before;
    std::string_view behind;
    if (use.comparing) {
      const bool isText = form == Form::kText || form == Form::kNull;
      switch (*use.comparing) {
        case Comparing::kNumbers:
          before = isText || form == Form::kAny ? "desktop.column_number(" : "(";
          break;
        case Comparing::kTexts:
          before = isText ? "(" : "desktop.text_of(";
          break;
        case Comparing::kFolded:
          before = isText ? "desktop.key(" : "desktop.key(desktop.text_of(";
          break;
        case Comparing::kOrder:
          before = form == Form::kAny ? "desktop.order_of(" : "desktop.order_of(to_jsonb(";
          break;
      }
      const bool isTwice = before.find('(') != before.rfind('(');
      behind = isTwice ? "))" : ")";
    }
    Write(before);
    WriteNumbered("c", column + 1);
    Write(behind);
    if (use.named) {
      Write(" AS ");
      Write(QuotedName(NameOf(select, column)));
    }
  }
}

void StatementPrinter::PrintColumnKey(const Query& query, std::size_t column) {
  const Form form = FormOfResult(query, column);
  const bool isText = form == Form::kText || form == Form::kNull;
  const bool isFolded = isText && IsFolded(query.results[column]);
  Write(isFolded ? "desktop.key(" : form == Form::kAny ? "desktop.order_of(" : "");
  WriteNumbered("c", column + 1);
  Write(isFolded || form == Form::kAny ? ")" : "");
  Write(isText ? " COLLATE \"C\"" : "");
}

void StatementPrinter::PrintColumnKeys(const Query& query) {
  for (std::size_t column = 0; column < query.selects.front().items.size(); ++column) {
    Write(column > 0 ? ", " : "");
    PrintColumnKey(query, column);
  }
}

/// The order of rows c1, c2, ...; `further` decides what it leaves open, and the columns after
/// that.
void StatementPrinter::PrintColumnOrder(const Query& query, std::string_view further) {
  std::string_view separator = " ORDER BY ";
  for (std::size_t index = 0; index < query.orderBy.size(); ++index) {
    const OrderItem& item = query.orderBy[index];
    Write(separator);
    if (item.position > 0) {
      PrintColumnKey(query, item.position - 1);
    } else {
      WriteNumbered("o", index + 1);
    }
    Write(item.descending ? " DESC NULLS LAST" : " NULLS FIRST");
    separator = ", ";
  }
  if (!further.empty()) {
    Write(separator);
    Write(further);
    separator = ", ";
  }
  for (std::size_t column = 0; column < query.selects.front().items.size(); ++column) {
    Write(separator);
    PrintColumnKey(query, column);
    Write(" NULLS FIRST");
    separator = ", ";
  }
}

}  // namespace qorhost::postgres
