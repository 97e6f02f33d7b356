// The one table of rules by which cells of a desktop database file become values of the store.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"
#include "host/desks/moving_in/settled_cell.h"
#include "host/dialect/catalog.h"
#include "host/files/desktop_file/desktop_table.h"

namespace qorhost {

/// What has to be told of a conversion.
struct CellRemark {
  Settlement settlement = Settlement::kKept;
  std::string_view kind;
  std::string reason;
};

struct ConvertedCell {
  qorcred::Value value;  ///< Null where it is refused; dates as canonical texts
  std::optional<CellRemark> remark;
};

/// Nothing is lost without a remark: numbers are whole and of 32 bits or refused, dates lie in the
/// calendar and are rounded to the second with a remark, texts stay what they are but for what is
/// no character. Null stays Null, but of Yes/No.
[[nodiscard]] ConvertedCell Converted(const DesktopCell& cell, dialect::ColumnType type);

/// A cell as a report shows it: on one line, cut where it is long.
[[nodiscard]] std::string ShownCell(const DesktopCell& cell);
/// The same of a value that is stored.
[[nodiscard]] std::string ShownStored(const qorcred::Value& value);

}  // namespace qorhost
