// Rows of a result as entries of a list.
#pragma once

#include <cstdint>
#include <string>

#include "frame/controls.h"
#include "frame/data_services.h"

namespace qorcred {

/// AddItem, then the cell of the row, then ItemData at NewIndex: hosts see the calls in this order.
/// Returns the cell.
Value AddRow(const ListControl& list, std::string text, const TableView& rows, std::int32_t row,
             std::int32_t dataColumn);

/// Lists every row of a query for TenantID, LastName, FirstName and MiddleInitial by name. The
/// blanks between the parts of a name stay where a part is missing.
void AddTenants(const ListControl& list, const TableView& tenants);

}  // namespace qorcred
