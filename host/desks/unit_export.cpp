#include "host/desks/unit_export.h"

#include <fmt/format.h>

#include <utility>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "host/desks/store_file.h"
#include "host/files/whole_file.h"
#include "host/unit/unit_file.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

void ReadCodes(DeskSession& session, std::int32_t unitKey, ExportedUnit& unit) {
  const QueryResult rows = session.sql().Select(
      SelectOfCodes(fmt::format("RID,{}", kUnitColumns), unitKey) + " ORDER BY DIRECTORYCODE, RID");
  const qorcred::TableView table{qorcred::ObjectRef(rows.table)};
  std::vector<UnitCode>& codes = unit.file.codes;
  for (const ResultRow row : rows.rows()) {
    RowReading reading = CodeFromRow(table, row.number(), 1);
    if (reading.obstacle.empty() && !codes.empty() &&
        NumberOf(codes.back()) == NumberOf(reading.code)) {
      reading.obstacle = "another row has the same code";
    }
    if (reading.obstacle.empty()) {
      codes.push_back(std::move(reading.code));
    } else {
      unit.obstacles.push_back(
          {qorcred::NumericValue(row[1]), qorcred::ToLong(row[0]), std::move(reading.obstacle)});
    }
  }
}

void DropDisplayOptions(std::vector<UnitCode>& codes) {
  for (UnitCode& code : codes) {
    code[qorcred::unit_place::kDisplayMode] = "0";
  }
}

}  // namespace

UnholdableCodes::UnholdableCodes(std::vector<Obstacle> obstacles)
    : RefusedError(fmt::format("a unit cannot hold {} of the codes, so nothing was written: change "
                               "them",
                               obstacles.size())),
      obstacles_(std::move(obstacles)) {}

ExportedUnit ExportUnit(DeskSession& session, std::int32_t unitKey, const std::string& firmware,
                        Unholdable unholdable) {
  ExportedUnit unit;
  if (!firmware.empty()) {
    if (const std::string fault = FaultInFirmware(firmware); !fault.empty()) {
      throw RefusedError(fault);
    }
    unit.file.firmware = firmware;
  }
  ReadCodes(session, unitKey, unit);
  if (!unit.obstacles.empty() && unholdable == Unholdable::kRefused) {
    throw UnholdableCodes(std::move(unit.obstacles));
  }
  if (unit.file.firmware == kFirmwareWithoutDisplay) {
    DropDisplayOptions(unit.file.codes);
  }
  return unit;
}

void WriteExport(const UnitFile& unit, const std::filesystem::path& to, Standing existing,
                 const std::filesystem::path& store) {
  WriteWholeFile(to, {existing, FilesOfStore(store)},
                 [&unit](std::ostream& out) { WriteUnitFile(out, unit); });
}

}  // namespace qorhost
