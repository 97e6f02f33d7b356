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

/// The places of these columns, from the first of them.
namespace unit_column {
enum Column : std::int32_t {
  kCode,
  kPhone,
  kExtension,
  kTimeDelay,
  kDndSchedule,
  kIsDndChecked,
  kCfSchedule,
  kIsCfChecked,
  kCfPhone,
  kCfExtension,
  kCfTimeDelay,
  kActive,
  kStartDate,
  kEndDate,
  kDisplayName,
  kShowDisplayName,
  kShowDirectoryCode,
  kCount
};
}  // namespace unit_column

/// A SELECT of `columns` from the rows that are directory codes of the unit: their code is not
/// below 0.
[[nodiscard]] std::string SelectOfCodes(std::string_view columns, std::int32_t unitKey);

/// Whether a flag of a row is set; an empty one is not.
[[nodiscard]] bool IsSet(const qorcred::Value& flag);

struct RowReading {
  UnitCode code;         ///< in canonical form
  std::string obstacle;  ///< why the unit's notation cannot hold the row; "" when it can
};

/// The code in row `row`, whose first unit column is `firstColumn`. Seconds are not kept. Raises
/// what the table raises.
[[nodiscard]] RowReading CodeFromRow(const qorcred::TableView& rows, std::int32_t row,
                                     std::int32_t firstColumn);

}  // namespace qorhost
