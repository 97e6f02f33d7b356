#include "host/desks/list_entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/name_words.h"
#include "host/desks/whole_number.h"

namespace qorhost {

namespace {

using qorcred::Trim;

// Who is found as by TenantsNamed().
constexpr std::string_view kTenantKind = "tenant";

/// "12, 57, 90", at most ten of them.
std::string NumbersOf(const ListModel& list, const std::vector<std::int32_t>& entries) {
  constexpr std::size_t kMost = 10;
  std::vector<std::int32_t> numbers;
  for (std::size_t at = 0; at < std::min(entries.size(), kMost); ++at) {
    numbers.push_back(list.ItemData(entries[at]));
  }
  return fmt::format("{}{}", fmt::join(numbers, ", "), entries.size() > kMost ? ", ..." : "");
}

/// The entries whose words go best with those that are given, as people look for names: in whatever
/// order, cut short, without accents and letter case.
std::vector<std::int32_t> EntriesWithWords(const ListModel& list, std::string_view text,
                                           std::int32_t placeholders) {
  std::vector<Words> names;
  for (std::int32_t index = placeholders; index < list.count(); ++index) {
    names.push_back(WordsOf(list.Text(index)));
  }
  std::vector<std::int32_t> found;
  for (const std::size_t place : BestMatches(WordsOf(text), names)) {
    found.push_back(placeholders + static_cast<std::int32_t>(place));
  }
  return found;
}

}  // namespace

bool SaysNone(std::string_view given) {
  return qorcred::CompareIgnoringCase(Trim(given), kNoneWord) == 0;
}

std::vector<std::int32_t> EntriesWithText(const ListModel& list, std::string_view text,
                                          std::int32_t placeholders) {
  const std::string_view wanted = Trim(text);
  std::vector<std::int32_t> found;
  for (std::int32_t index = placeholders; index < list.count(); ++index) {
    if (qorcred::CompareIgnoringCase(Trim(list.Text(index)), wanted) == 0) {
      found.push_back(index);
    }
  }
  return found;
}

std::int32_t FindEntry(const ListModel& list, std::string_view field, std::string_view given,
                       std::string_view kind, std::int32_t placeholders) {
  const std::string_view wanted = Trim(given);
  const auto number = WholeNumber(wanted);
  if (number) {
    for (std::int32_t index = placeholders; index < list.count(); ++index) {
      if (list.ItemData(index) == *number) {
        return index;
      }
    }
  }
  std::vector<std::int32_t> entries = EntriesWithText(list, wanted, 0);
  if (entries.empty() && kind == kTenantKind && !number) {
    entries = EntriesWithWords(list, wanted, placeholders);
  }
  if (entries.empty()) {
    throw InputFault(
        field, wanted,
        fmt::format("{{field}}: there is no {} '{{value}}' on the screen of this unit", kind));
  }
  if (entries.size() > 1) {
    throw InputFault(
        field, wanted,
        fmt::format("{{field}}: {} {}s are called '{{value}}': give the id instead ({})",
                    entries.size(), kind, NumbersOf(list, entries)));
  }
  return entries.front();
}

std::int32_t FindDoor(const ListModel& doors, std::string_view field, std::string_view given) {
  const std::string_view wanted = Trim(given);
  if (SaysNone(wanted)) {
    return 0;
  }
  const auto number = WholeNumber(wanted);
  if (number && *number >= 0 && *number < doors.count()) {
    return *number;
  }
  const std::vector<std::int32_t> entries = EntriesWithText(doors, wanted, 0);
  if (entries.empty()) {
    throw InputFault(field, wanted, "{field}: this unit has no door '{value}'",
                     InputFault::Kind::kSeeList);
  }
  if (entries.size() > 1) {
    throw InputFault(
        field, wanted,
        fmt::format("{{field}}: {} doors are called '{{value}}': give the door's number instead",
                    entries.size()));
  }
  return entries.front();
}

}  // namespace qorhost
