#include "host/desks/sheet_dates.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "frame/date.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"

namespace qorhost {

namespace {

constexpr std::size_t kYearDigits = 4;

/// "15.1.2026 18:00": three numbers with one and the same character between them, and what stands
/// behind a blank.
struct ThreeNumbers {
  std::array<std::string_view, 3> numbers;
  char between = 0;
  std::string_view time;  ///< with the blank in front of it
};

std::string_view TakeDigits(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
  const std::string_view digits = rest.substr(0, end);
  rest.remove_prefix(end);
  return digits;
}

/// Takes the character between two numbers, perhaps with blanks behind it ("15. 1. 2026").
char TakeSeparator(std::string_view& rest) {
  const char separator = rest.empty() ? '\0' : rest.front();
  if (separator != '.' && separator != '/' && separator != '-') {
    return 0;
  }
  rest.remove_prefix(1);
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  return separator;
}

std::optional<ThreeNumbers> ThreeNumbersIn(std::string_view cell) {
  ThreeNumbers found;
  std::string_view rest = qorcred::Trim(cell);
  for (std::size_t at = 0; at < found.numbers.size(); ++at) {
    if (at > 0) {
      const char separator = TakeSeparator(rest);
      if (separator == 0 || (at > 1 && separator != found.between)) {
        return std::nullopt;
      }
      found.between = separator;
    }
    found.numbers.at(at) = TakeDigits(rest);
    if (found.numbers.at(at).empty() || found.numbers.at(at).size() > kYearDigits) {
      return std::nullopt;
    }
  }
  if (!rest.empty() && rest.front() != ' ' && rest.front() != 'T') {
    return std::nullopt;
  }
  found.time = rest;
  return found;
}

/// 2026-12-31 has one order in every sheet.
bool HasItsOwnOrder(const ThreeNumbers& found) {
  return found.between == '-' && found.numbers[0].size() == kYearDigits;
}

/// Nothing when a number has more or fewer digits than what it is.
std::optional<qorcred::Date> DateIn(const ThreeNumbers& found, DateOrder order) {
  constexpr std::size_t kTwoDigits = 2;
  const auto [first, second, third] = found.numbers;
  const auto [year, month, day] = order == DateOrder::kDayFirst ? std::array{third, second, first}
                                  : order == DateOrder::kMonthFirst
                                      ? std::array{third, first, second}
                                      : std::array{first, second, third};
  const bool isYear = year.size() == kTwoDigits || year.size() == kYearDigits;
  if (!isYear || month.size() > kTwoDigits || day.size() > kTwoDigits) {
    return std::nullopt;
  }
  return qorcred::ParseDate(fmt::format("{}/{}/{}", month, day, year));
}

std::string_view OrderInWords(DateOrder order) {
  return order == DateOrder::kDayFirst     ? "day, month, year"
         : order == DateOrder::kMonthFirst ? "month, day, year"
                                           : "year, month, day";
}

/// Of forms that need no order.
void RequireDate(std::string_view field, std::string_view cell) {
  if (!SaysNone(cell) && !qorcred::ParseDate(cell)) {
    throw InputFault(field, cell,
                     "{field} '{value}' is no date: write it as 2026-12-31 or 31 Dec 2026, with a "
                     "time as in '2026-12-31 18:00'");
  }
}

}  // namespace

std::string DateInCell(std::string_view field, std::string_view cell, const SheetDates& dates) {
  if (dates.order == DateOrder::kAsTyped) {
    return std::string(cell);
  }
  const std::optional<ThreeNumbers> found = ThreeNumbersIn(cell);
  if (!found || HasItsOwnOrder(*found)) {
    RequireDate(field, cell);
    return std::string(cell);
  }
  if (dates.order == DateOrder::kUnsaid) {
    throw InputFault(field, cell,
                     fmt::format("{{field}} '{{value}}' does not tell in which order day, month "
                                 "and year stand: {}",
                                 InReason(dates.howToSay)));
  }
  const std::optional<qorcred::Date> date = DateIn(*found, dates.order);
  if (!date) {
    throw InputFault(field, cell,
                     fmt::format("{{field}} '{{value}}' is no date in the order {}: write it so, "
                                 "or as 2026-12-31",
                                 OrderInWords(dates.order)));
  }
  const qorcred::CivilTime day = qorcred::ToCivil(*date);
  return fmt::format("{:04}-{:02}-{:02}{}", day.year, day.month, day.day, found->time);
}

}  // namespace qorhost
