#include "frame/schedules.h"

#include "frame/row_state.h"
#include "frame/sql_text.h"

namespace qorcred {

std::string StoredSchedulesQuery(std::int32_t unitKey) {
  return Concat(
      "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and "
      " modified <> ",
      std::int32_t{row_state::kDeleted}, " and UnitKey = ", unitKey, "  Order by ScheduleName ");
}

void PutFixedSchedulesFirst(const TableView& schedules,
                            const std::array<FixedSchedule, 2>& inOrder) {
  // Without rows the query's table has a single column.
  if (schedules.UpperColumn() == 0) {
    schedules.ReDim(0, 1, 0, 1);
  } else {
    schedules.InsertRow(0);
    schedules.InsertRow(0);
  }
  for (std::int32_t row = 0; row < 2; ++row) {
    const FixedSchedule& schedule = inOrder[static_cast<std::size_t>(row)];
    schedules.SetCell(row, 0, schedule.id);
    schedules.SetCell(row, 1, std::string(schedule.name));
  }
}

}  // namespace qorcred
