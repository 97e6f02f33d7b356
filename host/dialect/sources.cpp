#include "host/dialect/sources.h"

namespace qorhost::dialect {

namespace {

void AddTables(const Source& source, std::vector<const TableName*>& tables) {
  if (source.join == JoinKind::kNone) {
    tables.push_back(&source.table);
    return;
  }
  AddTables(*source.left, tables);
  AddTables(*source.right, tables);
}

}  // namespace

std::vector<const TableName*> TablesOf(const Select& select) {
  std::vector<const TableName*> tables;
  for (const std::unique_ptr<Source>& source : select.from) {
    AddTables(*source, tables);
  }
  return tables;
}

}  // namespace qorhost::dialect
