// The names of the unit's doors on the credential screen.
#include <array>

#include "credentials/cls_credential.h"
#include "frame/convert.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

struct DoorLabel {
  std::string_view label;
  std::size_t limit;  // UTF-16 units of a shortened name
};

constexpr std::array<DoorLabel, 4> kDoorLabels{
    {{"lblDoor1", 12}, {"lblDoor2", 12}, {"lblDoor3", 12}, {"lblDoor4", 14}}};

}  // namespace

void clsCredential::pbRetrieveDoorDetails(const ObjectRef& objConn, std::int32_t lngUnitKey) {
  Trap(host_, "pbRetrieveDoorDetails", [&] {
    const Screen screen = RequireScreen();
    const TableView doors = Manager().ExecuteSelect(
        objConn,
        Concat("Select UNITKEY, DOORNAME from DOORS where UNITKEY = ", lngUnitKey,
               " order by DOORID"),
        error_);
    if (doors.HasNoRows()) return;
    std::int32_t row = 0;
    for (const DoorLabel& door : kDoorLabels) {
      // The length of the first name decides for every label: hosts lay the labels out by it.
      const std::size_t firstLength = Utf16Length(TextOrEmpty(doors.Cell(0, 1)));
      const std::string name = TextOrEmpty(doors.Cell(row++, 1));
      screen.Any(door.label)
          .SetCaption(firstLength > door.limit ? LeftUtf16(name, door.limit) : name);
    }
  });
}

}  // namespace qorcred
