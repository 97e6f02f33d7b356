// A list's entries by what they are called.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/screens/list_model.h"

namespace qorhost {

/// Finds entries in logarithmic time. Letter case and blanks around do not count, except that they
/// choose between several: a file may hold names that a report wrote, letter for letter. What a
/// person types is found by FindEntry(), by its number first. Holds a copy: the list may go.
class EntryIndex {
 public:
  /// Leaves the first `placeholders` entries out.
  EntryIndex(const ListModel& list, std::int32_t placeholders);

  /// The places in the list of the entries that are called so.
  [[nodiscard]] std::vector<std::int32_t> Find(std::string_view text) const;

 private:
  struct IgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view one, std::string_view other) const;
  };

  std::multimap<std::string, std::int32_t, IgnoringCase> places_;
};

}  // namespace qorhost
