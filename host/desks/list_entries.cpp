#include "host/desks/list_entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <vector>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/cli/console.h"
#include "host/cli/display_text.h"

namespace qorhost {

namespace {

using qorcred::Trim;

std::optional<std::int32_t> WholeNumber(std::string_view text) {
  std::int32_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return number;
}

std::vector<std::int32_t> EntriesWithText(const ListModel& list, std::string_view text) {
  std::vector<std::int32_t> found;
  for (std::int32_t index = 0; index < list.count(); ++index) {
    if (qorcred::CompareIgnoringCase(Trim(list.Text(index)), text) == 0) {
      found.push_back(index);
    }
  }
  return found;
}

/// "12, 57, 90", at most ten of them.
std::string NumbersOf(const ListModel& list, const std::vector<std::int32_t>& entries) {
  constexpr std::size_t kMost = 10;
  std::string numbers;
  for (std::size_t at = 0; at < std::min(entries.size(), kMost); ++at) {
    numbers += (at == 0 ? "" : ", ") + std::to_string(list.ItemData(entries[at]));
  }
  return entries.size() > kMost ? numbers + ", ..." : numbers;
}

}  // namespace

std::int32_t FindEntry(const ListModel& list, std::string_view given, std::string_view kind,
                       std::int32_t placeholders) {
  const std::string_view wanted = Trim(given);
  if (const auto number = WholeNumber(wanted)) {
    for (std::int32_t index = placeholders; index < list.count(); ++index) {
      if (list.ItemData(index) == *number) {
        return index;
      }
    }
  }
  const std::vector<std::int32_t> entries = EntriesWithText(list, wanted);
  if (entries.empty()) {
    throw UsageError(
        fmt::format("there is no {} '{}' on the screen of this unit", kind, Displayable(wanted)));
  }
  if (entries.size() > 1) {
    throw UsageError(fmt::format("{} {}s are called '{}': give the id instead ({})", entries.size(),
                                 kind, Displayable(wanted), NumbersOf(list, entries)));
  }
  return entries.front();
}

std::int32_t FindDoor(const ListModel& doors, std::string_view given) {
  const std::string_view wanted = Trim(given);
  if (qorcred::CompareIgnoringCase(wanted, "none") == 0) {
    return 0;
  }
  const auto number = WholeNumber(wanted);
  if (number && *number >= 0 && *number < doors.count()) {
    return *number;
  }
  const std::vector<std::int32_t> entries = EntriesWithText(doors, wanted);
  if (entries.empty()) {
    throw UsageError(
        fmt::format("this unit has no door '{}': 'qorhost doors' lists them", Displayable(wanted)));
  }
  if (entries.size() > 1) {
    throw UsageError(fmt::format("{} doors are called '{}': give the door's number instead",
                                 entries.size(), Displayable(wanted)));
  }
  return entries.front();
}

GivenDate ReadDate(std::string_view option, std::string_view given) {
  const auto date = qorcred::ParseDate(given);
  // Below a day's serial there is only a time.
  if (!date || (date->serial >= 0 && date->serial < 1)) {
    throw UsageError(
        fmt::format("{} '{}' is no date: write it as 2026-12-31, 12/31/2026 or 31 Dec 2026, with "
                    "a time as in '2026-12-31 18:00'",
                    option, Displayable(given)));
  }
  return {*date, given.find(':') != std::string_view::npos};
}

void ChooseDate(PickerModel& picker, std::string_view option, std::string_view given, bool isEnd) {
  const GivenDate date = ReadDate(option, given);
  qorcred::CivilTime time = qorcred::ToCivil(date.date);
  if (isEnd && !date.hasTime) {
    time.hour = 23;
    time.minute = 59;
    time.second = 59;
  }
  try {
    picker.Choose(qorcred::FromCivil(time));
  } catch (const qorcred::RuntimeError&) {
    throw UsageError(
        fmt::format("{} '{}' lies outside the years that the screen offers", option, given));
  }
}

const std::string& TypedText(std::string_view option, const std::string& text) {
  if (!IsTypable(text)) {
    throw UsageError(
        fmt::format("{} '{}' cannot be typed into a box: it has control characters or "
                    "bytes that are not UTF-8",
                    option, Displayable(text)));
  }
  return text;
}

std::int32_t ReadLong(std::string_view what, std::string_view given) {
  const auto number = WholeNumber(given);
  if (!number) {
    throw UsageError(
        fmt::format("{} '{}' is no whole number of 32 bits", what, Displayable(given)));
  }
  return *number;
}

}  // namespace qorhost
