// The screen with the filter rows of a report, without windows.
#pragma once

#include <cstddef>
#include <memory>

#include "frame/value.h"
#include "host/screens/screen_model.h"

namespace qorhost {

/// The directory-code report reads that many filter rows, whatever is chosen in them.
inline constexpr std::size_t kFewestFilterRows = 5;

/// The filter screen as it opens, with `rows` filter rows (at least kFewestFilterRows): empty lists
/// and boxes, nothing checked, `today` chosen in the pickers. What cboFilter and cboType offer is
/// up to the host: it depends on the field that is chosen in the row.
[[nodiscard]] std::shared_ptr<ScreenModel> MakeReportFilterScreen(std::size_t rows,
                                                                  qorcred::Date today);

}  // namespace qorhost
