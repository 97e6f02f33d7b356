// Dates in the cells of a spreadsheet.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qorhost {

/// In which order day, month and year stand in a date such as 03/04/2026 or 3.4.2026.
enum class DateOrder : std::uint8_t {
  kAsTyped,  ///< as a person types dates elsewhere: the month first, between slashes alone
  kUnsaid,   ///< nobody has said it: such dates are refused
  kDayFirst,
  kMonthFirst,
  kYearFirst,
};

/// How the dates of a sheet are to be read.
struct SheetDates {
  DateOrder order = DateOrder::kAsTyped;
  std::string howToSay{};  ///< of kUnsaid: how the order is said, a sentence without its full stop
};

/// The date in a cell as ReadDate() takes it. Three numbers with points, slashes or hyphens between
/// them are read in the order of the sheet, years of two digits as from 1930 to 2029; 2026-12-31
/// and 31 Dec 2026 are the same in every sheet, a time may stand behind any of them, and "none" is
/// none. Raises InputFault for what is no date in the order, and for an order that nobody has
/// said.
[[nodiscard]] std::string DateInCell(std::string_view field, std::string_view cell,
                                     const SheetDates& dates);

}  // namespace qorhost
