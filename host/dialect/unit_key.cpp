#include "host/dialect/unit_key.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "host/dialect/grouping.h"
#include "host/dialect/sources.h"

namespace qorhost::dialect {

namespace {

using Conditions = std::vector<const Expression*>;

/// A column that has the identities of another table's rows.
struct Link {
  std::string_view table;
  std::string_view column;
  std::string_view target;
};

constexpr std::array kLinks{
    Link{"Tenants", "CREDENTIALID1", "CredentialBank"},
    Link{"Tenants", "CREDENTIALID2", "CredentialBank"},
    Link{"Tenants", "DIRECTORYCODE", "DirectoryCode"},
    Link{"Tenants", "GROUPID", "TenantGroup"},
    Link{"TenantsBackup", "TenantID", "Tenants"},
};

/// Adds all that must hold for the condition to hold.
void AddConditions(const Expression* condition, Conditions& conditions) {
  if (condition == nullptr) {
    return;
  }
  if (condition->kind != NodeKind::kAnd) {
    conditions.push_back(condition);
    return;
  }
  for (const ExpressionPtr& operand : condition->operands) {
    AddConditions(operand.get(), conditions);
  }
}

/// What a column is compared with; null where the condition is something else than `column = ...`.
struct Equality {
  const Expression* column = nullptr;
  const Expression* other = nullptr;
};

Equality EqualityIn(const Expression& condition) {
  if (condition.kind != NodeKind::kCompare || condition.op != Operator::kEqual) {
    return {};
  }
  const Expression* const left = condition.operands[0].get();
  const Expression* const right = condition.operands[1].get();
  if (left->kind == NodeKind::kColumn) {
    return {left, right};
  }
  return right->kind == NodeKind::kColumn ? Equality{right, left} : Equality{};
}

bool IsNumber(const Expression* expression) {
  return expression->kind == NodeKind::kLiteral && expression->valueClass == ValueClass::kNumber;
}

bool IsIdentity(const Column& column) {
  return column.type == ColumnType::kIdentity || column.generated;
}

/// The number that the unit of a table's rows must equal; null where the conditions name none.
const Expression* UnitNamed(const Conditions& conditions, const TableName& table) {
  const Column* const unit = UnitColumnOf(*table.table);
  for (const Expression* condition : conditions) {
    const Equality equality = EqualityIn(*condition);
    if (equality.column != nullptr && equality.column->source == &table &&
        equality.column->column == unit && IsNumber(equality.other)) {
      return equality.other;
    }
  }
  return nullptr;
}

bool NamesRow(const Conditions& conditions, const TableName& table) {
  return std::any_of(conditions.begin(), conditions.end(), [&](const Expression* condition) {
    const Equality equality = EqualityIn(*condition);
    return equality.column != nullptr && equality.column->source == &table &&
           IsIdentity(*equality.column->column) && IsNumber(equality.other);
  });
}

NamedRow RowNamedIn(const TableName& table, const ExpressionPtr& where) {
  if (!where || UnitColumnOf(*table.table) == nullptr) {
    return {};
  }
  Conditions conditions;
  AddConditions(where.get(), conditions);
  return NamesRow(conditions, table) && UnitNamed(conditions, table) == nullptr
             ? NamedRow{&table, where.get()}
             : NamedRow{};
}

bool IsLinkTo(const Expression& from, const Expression& to) {
  return IsIdentity(*to.column) && std::any_of(kLinks.begin(), kLinks.end(), [&](const Link& link) {
           return link.table == from.source->table->name && link.column == from.column->name &&
                  link.target == to.source->table->name;
         });
}

/// The two tables that a condition links, by one link or by one of several.
std::optional<std::pair<const TableName*, const TableName*>> TablesLinkedBy(
    const Expression& condition) {
  if (condition.kind == NodeKind::kOr) {
    const auto linked = TablesLinkedBy(*condition.operands.front());
    const bool isSame = linked && std::all_of(condition.operands.begin(), condition.operands.end(),
                                              [&](const ExpressionPtr& operand) {
                                                return TablesLinkedBy(*operand) == linked;
                                              });
    return isSame ? linked : std::nullopt;
  }
  const Equality equality = EqualityIn(condition);
  if (equality.column == nullptr || equality.other->kind != NodeKind::kColumn) {
    return std::nullopt;
  }
  const Expression& one = *equality.column;
  const Expression& other = *equality.other;
  if (!IsLinkTo(one, other) && !IsLinkTo(other, one)) {
    return std::nullopt;
  }
  return std::minmax(one.source, other.source);
}

/// Adds what must hold of joined rows; false where a join keeps rows that are linked to nothing.
bool AddJoins(const Source& source, Conditions& conditions) {
  if (source.join == JoinKind::kNone) {
    return true;
  }
  AddConditions(source.on.get(), conditions);
  return source.join == JoinKind::kInner && AddJoins(*source.left, conditions) &&
         AddJoins(*source.right, conditions);
}

}  // namespace

const Column* UnitColumnOf(const Table& table) {
  return FindColumn(table, "UnitKey");
}

NamedRow RowNamedAlone(const Statement& statement) {
  switch (statement.kind) {
    case StatementKind::kUpdate:
    case StatementKind::kDelete:
      return RowNamedIn(statement.table, statement.where);
    case StatementKind::kInsert:
      return {};
    case StatementKind::kSelect:
      break;
  }
  const Query& query = statement.query;
  const Select& select = query.selects.front();
  const bool isOfOneTable = query.selects.size() == 1 && select.from.size() == 1 &&
                            select.from.front()->join == JoinKind::kNone;
  // An aggregate gives a row of no rows.
  return isOfOneTable && !IsAggregated(select, query.orderBy)
             ? RowNamedIn(select.from.front()->table, select.where)
             : NamedRow{};
}

std::vector<LinkedTable> LinkedTables(const Select& select) {
  Conditions conditions;
  AddConditions(select.where.get(), conditions);
  for (const std::unique_ptr<Source>& source : select.from) {
    if (!AddJoins(*source, conditions)) {
      return {};
    }
  }
  const std::vector<const TableName*> own = TablesOf(select);
  std::map<const TableName*, const Expression*> units;
  for (const TableName* table : own) {
    if (const Expression* unit = UnitNamed(conditions, *table)) {
      units.emplace(table, unit);
    }
  }
  std::vector<LinkedTable> linked;
  for (std::size_t before = 0; before != units.size();) {
    before = units.size();
    for (const Expression* condition : conditions) {
      const auto tables = TablesLinkedBy(*condition);
      if (!tables || units.contains(tables->first) == units.contains(tables->second)) {
        continue;
      }
      const bool isFirst = units.contains(tables->first);
      const TableName* const other = isFirst ? tables->second : tables->first;
      if (std::find(own.begin(), own.end(), other) == own.end()) {
        continue;  // of the query around this one
      }
      const Expression* const unit = units.at(isFirst ? tables->first : tables->second);
      units.emplace(other, unit);
      linked.push_back({other, unit});
    }
  }
  return linked;
}

}  // namespace qorhost::dialect
