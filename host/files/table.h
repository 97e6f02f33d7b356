// Rows with titles, for printing and for files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"

namespace qorhost {

/// One column: `title` heads it for people, `key` names it for programs.
struct TableColumn {
  std::string title;
  std::string key;
};

struct Table {
  std::vector<TableColumn> columns;
  std::vector<std::vector<qorcred::Value>> rows;
  std::string_view nullText = "";  ///< what people are shown for Null
};

/// Which columns have numbers and nothing else: they stand to the right.
[[nodiscard]] std::vector<bool> NumberColumns(const Table& table);

/// A count as a cell.
[[nodiscard]] inline qorcred::Value CountCell(std::size_t count) {
  return {static_cast<double>(count)};
}

}  // namespace qorhost
