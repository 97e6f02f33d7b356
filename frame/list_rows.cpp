#include "frame/list_rows.h"

#include <utility>

#include "frame/convert.h"
#include "frame/sql_text.h"

namespace qorcred {

namespace {

enum TenantColumn : std::int32_t { kTenantId, kLastName, kFirstName, kMiddleInitial };

std::string NameIn(const TableView& tenants, std::int32_t row) {
  const std::string last = TextOrEmpty(tenants.Cell(row, kLastName));
  const std::string first = TextOrEmpty(tenants.Cell(row, kFirstName));
  const std::string initial = TextOrEmpty(tenants.Cell(row, kMiddleInitial));
  return Concat(last, " ", first, " ", initial);
}

}  // namespace

Value AddRow(const ListControl& list, std::string text, const TableView& rows, std::int32_t row,
             std::int32_t dataColumn) {
  list.AddItem(std::move(text));
  Value data = rows.Cell(row, dataColumn);
  list.SetItemData(list.NewIndex(), data);
  return data;
}

void AddTenants(const ListControl& list, const TableView& tenants) {
  for (std::int32_t row = tenants.LowerRow(), last = tenants.UpperRow(); row <= last; ++row) {
    AddRow(list, NameIn(tenants, row), tenants, row, kTenantId);
  }
}

}  // namespace qorcred
