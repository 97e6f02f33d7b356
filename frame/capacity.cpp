#include "frame/capacity.h"

#include "frame/convert.h"
#include "frame/sql_text.h"

namespace qorcred {

std::string CapacityText(int capacity) {
  return EncodeBase64(std::to_string(capacity));
}

std::string CapacityQuery(std::int32_t unitKey) {
  return Concat("SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = ", unitKey,
                " AND S.UNITTYPE = T.DESCRIPTION");
}

std::string DecodedCapacity(Host& host, Base64Decoder& decoder, const TableView& answer) {
  return decoder.Decode(host, TextOrEmpty(answer.Cell(0, 0)));
}

std::int16_t ReadUnitCapacity(Host& host, Base64Decoder& decoder, const DatabaseManager& manager,
                              const ObjectRef& connection, std::int32_t unitKey,
                              DatabaseError& error) {
  const TableView answer = manager.ExecuteSelect(connection, CapacityQuery(unitKey), error);
  return ToInteger(DecodedCapacity(host, decoder, answer));
}

}  // namespace qorcred
