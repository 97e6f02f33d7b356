// Brings an existing building in from a desktop database file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "host/desks/moving_in/moving_plan.h"
#include "host/desks/progress.h"
#include "host/files/desktop_file/desktop_reading.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// What is asked of a file.
struct MovingOrder {
  std::filesystem::path file;
  std::optional<std::int32_t> unit;  ///< this one alone
  DesktopReading reading;            ///< but the tables, which are those of a store
};

/// The file that the other application puts beside a database as long as it works with it; nothing
/// where none is there. What it has not written yet is not in the database.
[[nodiscard]] std::optional<std::filesystem::path> LockBeside(const std::filesystem::path& file);

/// Whether a name, where a store could be meant as well, is that of such a file: by its contents,
/// or by its ending, so that one which cannot be read is told so.
[[nodiscard]] bool NamesDesktopFile(const std::filesystem::path& file);

/// Reads the file and settles every row. Raises FileError where it cannot be read whole, and
/// RefusedError where it holds no building.
[[nodiscard]] MovingPlan PlanMoving(const MovingOrder& order);

/// Stores all rows that were not refused as one unit of work, with their identities, into a store
/// that has no units: all of them or none. Raises RefusedError for a store that has units,
/// CancelledError when the handler says no, and what the session raises.
void BringIn(SqlSession& session, const MovingPlan& plan, std::string_view fileName,
             const Progress& progress = {});

}  // namespace qorhost
