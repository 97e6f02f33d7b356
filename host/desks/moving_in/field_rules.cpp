// The fields of the directory-code report.
#include <fmt/format.h>

#include "frame/text.h"
#include "host/desks/moving_in/row_rules.h"
#include "host/dialect/catalog.h"

namespace qorhost {

namespace {

/// Whether "Table.Column" is in the store.
bool IsColumn(std::string_view field) {
  const std::size_t point = field.find('.');
  if (point == std::string_view::npos) return false;
  const dialect::Table* table = dialect::FindTable(field.substr(0, point));
  return table != nullptr && dialect::FindColumn(*table, field.substr(point + 1)) != nullptr;
}

}  // namespace

void SettleReportFields(RuleWork& work) {
  const std::size_t name = work.At("FieldName");
  std::set<std::string> seen;
  work.Each([&](StagedRow& row) {
    const std::string_view field = TextIn(row.cells[name]);
    if (field.empty()) {
      work.Refuse(row, name, "null-name", "the field has no name");
    } else if (!IsColumn(field)) {
      work.Refuse(row, name, "unknown-field", "no table has such a column: the report would fail");
    } else if (!seen.insert(qorcred::UpperAscii(field)).second) {
      work.Refuse(row, name, "duplicate-field", "a row before it has the field");
    }
  });
}

}  // namespace qorhost
