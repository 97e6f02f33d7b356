#include "host/desks/near_words.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "frame/text.h"

namespace qorhost {

namespace {

/// Words of commands and fields are spelt in ASCII.
std::string Lower(std::string_view word) {
  std::string lower(word);
  std::transform(lower.begin(), lower.end(), lower.begin(), qorcred::LowerAscii);
  return lower;
}

/// How many letters have to be changed, added, left out or exchanged with the next one to come from
/// one word to the other.
std::size_t Distance(const std::string& one, const std::string& other) {
  using Counts = std::vector<std::size_t>;
  Counts beforeLast;
  Counts last(other.size() + 1);
  for (std::size_t at = 0; at < last.size(); ++at) {
    last[at] = at;
  }
  for (std::size_t i = 1; i <= one.size(); ++i) {
    Counts row(other.size() + 1, i);
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const bool same = one[i - 1] == other[j - 1];
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
      }
    }
    beforeLast = std::move(last);
    last = std::move(row);
  }
  return last.back();
}

}  // namespace

bool IsNearly(std::string_view one, std::string_view other) {
  if (one.size() > other.size()) {
    std::swap(one, other);
  }
  if (other.size() - one.size() > 1) {
    return false;
  }
  const auto [first, second] = std::mismatch(one.begin(), one.end(), other.begin());
  const auto at = static_cast<std::size_t>(first - one.begin());
  if (one.size() < other.size()) {
    return one.substr(at) == other.substr(at + 1);
  }
  if (at + 1 >= one.size() || one.substr(at + 1) == other.substr(at + 1)) {
    return true;
  }
  return one[at] == other[at + 1] && one[at + 1] == other[at] &&
         one.substr(at + 2) == other.substr(at + 2);
}

std::string MostLike(std::string_view given, const std::vector<std::string>& known) {
  constexpr std::size_t kLongest = 40;  // beyond it is no word
  if (given.size() > kLongest) {
    return {};
  }
  const std::string meant = Lower(given);
  const auto goesOn = [&meant](const std::string& word) { return Lower(word).starts_with(meant); };
  std::string best;
  std::size_t least = std::max<std::size_t>(1, meant.size() / 3) + 1;
  for (const std::string& word : known) {
    const std::size_t distance = Distance(meant, Lower(word));
    // Of two that are as like, the one that only goes on.
    if (distance < least || (distance == least && !best.empty() && goesOn(word) && !goesOn(best))) {
      least = distance;
      best = word;
    }
  }
  return best;
}

}  // namespace qorhost
