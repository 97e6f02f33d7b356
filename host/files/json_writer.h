// Rows and facts as JSON.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/table.h"

namespace qorhost {

/// An array of objects with numbers, true/false, null, dates as "2026-01-31T14:05:09" and texts.
/// Keys that come twice get _2, _3, ...
void PrintJson(std::ostream& out, const Table& table);

/// One object, its members in the order given.
void PrintJsonObject(std::ostream& out,
                     const std::vector<std::pair<std::string, qorcred::Value>>& members);

/// The text of a JSON value with every character in it that could steer a terminal as \u and its
/// number. Ends of lines stay.
[[nodiscard]] std::string EscapedJson(std::string_view json);

}  // namespace qorhost
