#include "host/desks/exported_codes.h"

#include <fmt/format.h>

#include <utility>

#include "dircodes/unit_notation.h"
#include "frame/convert.h"
#include "frame/data_services.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

ExportedCodes ExportCodes(DeskSession& session, std::int32_t unitKey) {
  const QueryResult rows =
      session.sql().Select(SelectOfCodes(fmt::format("RID,{}", kUnitColumns), unitKey) +
                           " ORDER BY DIRECTORYCODE, RID");
  const qorcred::TableView table{qorcred::ObjectRef(rows.table)};
  ExportedCodes read;
  for (const ResultRow row : rows.rows()) {
    RowReading reading = CodeFromRow(table, row.number(), 1);
    if (reading.obstacle.empty() && !read.codes.empty() &&
        NumberOf(read.codes.back()) == NumberOf(reading.code)) {
      reading.obstacle = "another row has the same code";
    }
    if (reading.obstacle.empty()) {
      read.codes.push_back(std::move(reading.code));
    } else {
      read.obstacles.push_back(
          {qorcred::NumericValue(row[1]), qorcred::ToLong(row[0]), std::move(reading.obstacle)});
    }
  }
  return read;
}

UnitFile MakeUnitFile(std::vector<UnitCode> codes, const std::string& firmware) {
  UnitFile unit;
  if (!firmware.empty()) {
    unit.firmware = firmware;
  }
  unit.codes = std::move(codes);
  if (unit.firmware == qorcred::kFirmwareWithoutDisplay) {
    for (UnitCode& code : unit.codes) {
      code[qorcred::unit_place::kDisplayMode] = "0";
    }
  }
  return unit;
}

}  // namespace qorhost
