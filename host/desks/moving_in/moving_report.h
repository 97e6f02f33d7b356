// What is told of a file that is brought in.
#pragma once

#include <ostream>
#include <string_view>

#include "host/desks/moving_in/moving_plan.h"
#include "host/files/table.h"

namespace qorhost {

/// A row for each cell that was settled.
[[nodiscard]] Table SettledCells(const MovingPlan& plan);
/// A row for each table of the store.
[[nodiscard]] Table MovedTables(const MovingPlan& plan);

/// All of it to be read: the tables by numbers, each settled cell, what is left and what is
/// missing. Texts of the file stand in it on one line each, and steer nothing.
void PrintMovingReport(std::ostream& out, const MovingPlan& plan, std::string_view name);

}  // namespace qorhost
