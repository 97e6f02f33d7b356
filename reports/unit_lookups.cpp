// What the directory-code report screen asks of the store beside its report.
#include "frame/convert.h"
#include "frame/sql_text.h"
#include "frame/trap.h"
#include "reports/cls_dir_code_report.h"

namespace qorcred {

std::string clsDirCodeReport::pbGetUnitName(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  std::string name;
  Trap(host(), "pbGetUnitName", [&] {
    const TableView units = NewManager().ExecuteSelect(
        objConn, Concat("SELECT UnitName FROM Units WHERE UnitKey = ", lngUnitKey), error());
    if (!units.HasNoRows()) name = ToText(units.Cell(0, 0));
  });
  return name;
}

std::int32_t clsDirCodeReport::pbGetEntryLength(const ObjectRef& objCon, bool blnDirLength) {
  std::int32_t length = 0;
  Trap(host(), "pbGetEntryLength", [&] {
    const TableView settings = NewManager().ExecuteSelect(
        objCon,
        Concat("SELECT ", blnDirLength ? "MaxDigitsDirectoryCode" : "MaxDigitsEntryCode",
               " FROM UnitSettings WHERE UnitKey = ", mlngUnitKey()),
        error());
    if (!settings.HasNoRows()) length = ToLong(settings.Cell(0, 0));
  });
  return length;
}

}  // namespace qorcred
