#include "frame/capacity.h"

#include "frame/convert.h"
#include "frame/sql_text.h"

namespace qorcred {

std::string CapacityText(int capacity) {
  return EncodeBase64(std::to_string(capacity));
}

std::int16_t ReadUnitCapacity(Host& host, Base64Decoder& decoder, const DatabaseManager& manager,
                              const ObjectRef& connection, std::int32_t unitKey,
                              DatabaseError& error) {
  const TableView total = manager.ExecuteSelect(
      connection,
      Concat("SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = ", unitKey,
             " AND S.UNITTYPE = T.DESCRIPTION"),
      error);
  return ToInteger(decoder.Decode(host, TextOrEmpty(total.Cell(0, 0))));
}

}  // namespace qorcred
