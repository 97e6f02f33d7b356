// The descriptions of operations and what the tests saw of them, in one form that compares.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "contract/contract.h"
#include "tests/support/surface_record.h"

namespace qortest {

/// All classes that are described.
[[nodiscard]] const std::vector<qorcred::contract::Class>& DescribedClasses();

/// The operation of that name; null when none is described.
[[nodiscard]] const qorcred::contract::Operation* FindOperation(const qorcred::contract::Class& of,
                                                                std::string_view name);

/// The texts between ", ".
[[nodiscard]] std::vector<std::string> Items(std::string_view list);

/// What touching something comes to: one line each, such as `screen cboactivate.listindex get`,
/// `qordbi.clsdbmanager executeselect(vvbb)`, `table schedules.unitkey read`, `argument lngrid` for
/// one that comes back changed. Small letters,
/// because names compare so.
using Surface = std::set<std::string>;

/// What the description of an operation names, without what the operations touch that it runs.
[[nodiscard]] Surface DescribedSurface(const qorcred::contract::Operation& operation);

/// The same from one touch. Messages give nothing here. Adds to `refused` what is said of a
/// statement that cannot be read.
[[nodiscard]] Surface TouchedSurface(const Touch& touch, std::vector<std::string>& refused);

/// Whether `text` is the message `described`, whatever stands in the places of its {words}.
[[nodiscard]] bool IsMessage(std::string_view text, std::string_view described);

}  // namespace qortest
