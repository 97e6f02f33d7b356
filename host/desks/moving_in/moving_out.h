// Takes a building out of a store, as a folder that the import of a desktop database takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

struct MovedOutTable {
  std::string_view name;
  std::size_t rows = 0;
};

/// Writes a CSV file for each table of a building and schema.ini with the types of their columns,
/// into a folder that is not there yet or is empty: all of it or nothing. Null is nothing between
/// commas, an empty text is "", texts stand as they are. With a unit the rows of others are left
/// out. Of a trial nothing is written. Raises FileError: kExists for a folder that holds something,
/// kOccupied for what is none, kUnreachable with the system's reason.
std::vector<MovedOutTable> MoveOut(DeskSession& session, const std::filesystem::path& folder,
                                   std::optional<std::int32_t> unit, Trial trial);

}  // namespace qorhost
