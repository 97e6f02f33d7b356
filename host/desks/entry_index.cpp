#include "host/desks/entry_index.h"

#include "frame/text.h"

namespace qorhost {

bool EntryIndex::IgnoringCase::operator()(std::string_view one, std::string_view other) const {
  return qorcred::CompareIgnoringCase(one, other) < 0;
}

EntryIndex::EntryIndex(const ListModel& list, std::int32_t placeholders) {
  for (std::int32_t index = placeholders; index < list.count(); ++index) {
    places_.emplace(std::string(qorcred::Trim(list.Text(index))), index);
  }
}

std::vector<std::int32_t> EntryIndex::Find(std::string_view text) const {
  const std::string_view wanted = qorcred::Trim(text);
  std::vector<std::int32_t> places;
  std::vector<std::int32_t> exact;
  const auto [first, last] = places_.equal_range(wanted);
  for (auto entry = first; entry != last; ++entry) {
    places.push_back(entry->second);
    if (entry->first == wanted) {
      exact.push_back(entry->second);
    }
  }
  return exact.empty() ? places : exact;
}

}  // namespace qorhost
