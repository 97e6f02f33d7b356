// Rows for people, as an aligned table, and for programs, as JSON.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"

namespace qorhost {

/// One column: `title` heads it in the table, `key` names it in JSON.
struct TableColumn {
  std::string title;
  std::string key;
};

struct Table {
  std::vector<TableColumn> columns;
  std::vector<std::vector<qorcred::Value>> rows;
  std::string_view nullText = "";  ///< what the table shows for Null
};

/// An aligned table, numbers to the right, and the number of rows. Texts from outside are made
/// harmless.
void PrintTable(std::ostream& out, const Table& table);

/// An array of objects with numbers, true/false, null, dates as "2026-01-31T14:05:09" and texts.
/// Keys that come twice get _2, _3, ...
void PrintJson(std::ostream& out, const Table& table);

/// One of the two.
void PrintRows(std::ostream& out, const Table& table, bool asJson);

/// One object, its members in the order given.
void PrintJsonObject(std::ostream& out,
                     const std::vector<std::pair<std::string, qorcred::Value>>& members);

}  // namespace qorhost
