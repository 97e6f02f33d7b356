// From the store's rows of directory codes to a unit's notation.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/data_services.h"
#include "host/unit/unit_code.h"

namespace qorhost {

/// The columns of a row that a unit knows, in the order in which CodeFromRow() expects them.
inline constexpr std::string_view kUnitColumns =
    "DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,"
    "ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,"
    "SHOWDISPLAYNAME,SHOWDIRECTORYCODE";

struct RowReading {
  UnitCode code;         ///< in canonical form
  std::string obstacle;  ///< why the unit's notation cannot hold the row; "" when it can
};

/// The code in row `row`, whose first unit column is `firstColumn`. Seconds are not kept. Raises
/// what the table raises.
[[nodiscard]] RowReading CodeFromRow(const qorcred::TableView& rows, std::int32_t row,
                                     std::int32_t firstColumn);

}  // namespace qorhost
