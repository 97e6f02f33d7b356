#include <string>

#include "host/dialect/comparison.h"
#include "host/dialect/grouping.h"
#include "host/dialect/names.h"
#include "host/dialect/sources.h"
#include "host/store/postgres/statement_printer.h"
#include "host/store/postgres/table_text.h"

namespace qorhost::postgres {

using namespace dialect;

namespace {

/// Whether the server names a printed item as the dialect does.
bool IsNamedByServer(const Select& select, const Expression& expression) {
  return expression.kind == NodeKind::kColumn && !TakesTimeStamps(*expression.column) &&
         (expression.column->type != ColumnType::kText || !IsGrouped(select, expression));
}

}  // namespace

std::string StatementPrinter::NameOf(const Select& select, std::size_t column) {
  const SelectItem& item = select.items[column];
  if (!item.alias.empty()) {
    return item.alias;
  }
  return item.expression->kind == NodeKind::kColumn ? std::string(item.expression->column->name)
                                                    : "Expr" + std::to_string(column + 1);
}

void StatementPrinter::PrintQuery(const Query& query, const Use& use) {
  const Select& select = query.selects.front();
  if (query.selects.size() > 1) {
    if (use.comparing) {
      PrintComparedParts(query, *use.comparing);
    } else {
      PrintUnion(query, use);
    }
  } else if (select.distinct && (use.named || select.top)) {
    PrintDistinct(query, use);
  } else {
    PrintPlain(query, use);
  }
}

void StatementPrinter::PrintPlain(const Query& query, const Use& use) {
  const Select& select = query.selects.front();
  Write("SELECT ");
  PrintItems(query, select, use);
  PrintRows(select);
  PrintOrder(query, select, use.named || use.single || select.top.has_value());
  PrintLimit(select, use.single);
}

void StatementPrinter::PrintItems(const Query& query, const Select& select, const Use& use) {
  const Grouped groups(*this, &select);
  std::string_view separator;
  for (std::size_t column = 0; column < select.items.size(); ++column) {
    const Expression& expression = *select.items[column].expression;
    Write(separator);
    separator = ", ";
    if (use.comparing) {
      PrintSide(expression, *use.comparing);
      continue;
    }
    PrintAs(expression, FormOfResult(query, column));
    if (use.named &&
        (!select.items[column].alias.empty() || !IsNamedByServer(select, expression))) {
      Write(" AS ");
      Write(QuotedName(NameOf(select, column)));
    }
  }
}

/// The rows of a SELECT: what stands behind its items, but for their order.
void StatementPrinter::PrintRows(const Select& select) {
  const Grouped noGroups(*this, nullptr);
  std::string_view separator = " FROM ";
  for (const std::unique_ptr<Source>& source : select.from) {
    Write(separator);
    PrintSource(*source);
    separator = ", ";
  }
  PrintWhere(select.where);
  PrintUnitsOfLinked(select);
  separator = " GROUP BY ";
  for (const ExpressionPtr& key : select.groupBy) {
    Write(separator);
    PrintOrderKey(*key);
    separator = ", ";
  }
  if (select.having) {
    const Grouped groups(*this, &select);
    Write(" HAVING ");
    PrintCondition(*select.having);
  }
}

/// The rows of one unit lie together: what is linked to them is looked for nowhere else.
void StatementPrinter::PrintUnitsOfLinked(const Select& select) {
  std::string_view separator = select.where ? " AND " : " WHERE ";
  for (const LinkedTable& linked : LinkedTables(select)) {
    Expression column(NodeKind::kColumn, select.offset);
    column.source = linked.table;
    column.column = UnitColumnOf(*linked.table->table);
    column.name = column.column->name;
    column.type = column.column->type;
    column.valueClass = ClassOf(column.column->type);
    Write(separator);
    PrintPair(column, Operator::kEqual, *linked.unit, false);
    separator = " AND ";
  }
}

void StatementPrinter::PrintSource(const Source& source) {
  if (source.join == JoinKind::kNone) {
    PrintTable(source.table);
    return;
  }
  PrintSource(*source.left);
  Write(source.join == JoinKind::kLeft ? " LEFT JOIN " : " INNER JOIN ");
  const bool isNested = source.right->join != JoinKind::kNone;
  Write(isNested ? "(" : "");
  PrintSource(*source.right);
  Write(isNested ? ")" : "");
  Write(" ON ");
  PrintCondition(*source.on);
}

/// The order of a single SELECT. Null comes first. What it leaves open is decided by the rows'
/// identities, or by what the rows are grouped by.
void StatementPrinter::PrintOrder(const Query& query, const Select& select, bool needsOrder) {
  const Grouped groups(*this, &select);
  std::string_view separator = " ORDER BY ";
  for (const OrderItem& item : query.orderBy) {
    Write(separator);
    PrintOrderKey(item.position > 0 ? *select.items[item.position - 1].expression
                                    : *item.expression);
    Write(item.descending ? " DESC NULLS LAST" : " NULLS FIRST");
    separator = ", ";
  }
  if (query.orderBy.empty() && !needsOrder) {
    return;
  }
  if (!IsAggregated(select, query.orderBy)) {
    PrintIdentities(select, separator);
    return;
  }
  for (const ExpressionPtr& key : select.groupBy) {
    Write(separator);
    PrintOrderKey(*key);
    Write(" NULLS FIRST");
    separator = ", ";
  }
}

/// What rows are ordered and grouped by: texts without regard to case.
void StatementPrinter::PrintOrderKey(const Expression& node) {
  switch (FormOf(node)) {
    case Form::kText:
    case Form::kNull:
      Write(MayBeText(node) ? "desktop.key(" : "");
      PrintAs(node, Form::kText);
      Write(MayBeText(node) ? ") COLLATE \"C\"" : "");
      break;
    case Form::kAny:
      Write("desktop.order_of(");
      PrintValue(node);
      Write(")");
      break;
    case Form::kWhole:
    case Form::kDouble:
      PrintValue(node);
      break;
  }
}

void StatementPrinter::PrintIdentities(const Select& select, std::string_view separator) {
  for (const TableName* table : TablesOf(select)) {
    Write(separator);
    Write(QuotedName(table->shownName()));
    Write(".\"RID\"");
    separator = ", ";
  }
}

void StatementPrinter::PrintLimit(const Select& select, bool single) {
  if (!select.top) {
    Write(single ? " LIMIT 1" : "");
    return;
  }
  Parameter parameter;
  parameter.conversion = Conversion::kRowCount;
  parameter.literal = *select.top;
  Write(single ? " LIMIT least(1, " : " LIMIT ");
  WriteParameter(parameter, select.offset, "int4");
  Write(single ? ")" : "");
}

}  // namespace qorhost::postgres
