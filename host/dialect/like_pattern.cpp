#include "host/dialect/like_pattern.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "frame/runtime_error.h"
#include "host/dialect/folding.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kLongestPattern = 1024;

// Parts of a pattern that are no characters, above every code point and every invalid byte.
constexpr char32_t kAnyRun = 0x200000;
constexpr char32_t kAnyOne = kAnyRun + 1;
constexpr char32_t kFirstSet = kAnyOne + 1;

[[noreturn]] void Fail(const char* what) {
  throw qorcred::RuntimeError(qorcred::ErrorNumber::kInvalidProcedureCall, what);
}

// Reads what stands between two brackets.
CharacterSet ReadSet(std::u32string_view content) {
  CharacterSet set;
  set.negated = !content.empty() && content.front() == U'!';
  content.remove_prefix(set.negated ? 1 : 0);
  if (content.empty()) {
    Fail("the pattern of LIKE has an empty set of characters");
  }
  if (content.front() == U'^' && content.size() > 1) {
    Fail(
        "the pattern of LIKE has a set that begins with '^': write '[!' for all but its "
        "characters");
  }
  for (std::size_t index = 0; index < content.size();) {
    const bool isRange = index + 2 < content.size() && content[index + 1] == U'-';
    if (content[index] == U'-' && index > 0 && index + 1 < content.size()) {
      Fail("the pattern of LIKE has a '-' between no two characters: write it at the set's end");
    }
    const CharacterSet::Range range{content[index], content[index + (isRange ? 2 : 0)]};
    if (range.last < range.first) {
      Fail("the pattern of LIKE has a set whose range runs backwards");
    }
    set.ranges.push_back(range);
    index += isRange ? 3 : 1;
  }
  return set;
}

bool IsSingle(const CharacterSet& set) {
  return !set.negated && set.ranges.size() == 1 && set.ranges[0].first == set.ranges[0].last;
}

bool Holds(const CharacterSet& set, char32_t point) {
  const bool found = std::any_of(set.ranges.begin(), set.ranges.end(), [point](const auto& range) {
    return range.first <= point && point <= range.last;
  });
  return found != set.negated;
}

bool IsCharacter(char32_t part) noexcept {
  return part < kAnyRun;
}

// Where `part`, which holds characters alone, first stands in `text`; npos when nowhere. Knuth,
// Morris and Pratt's search, so that repetitive texts cost no more than others.
std::size_t FindPlain(std::u32string_view text, std::u32string_view part) {
  std::vector<std::size_t> fallback(part.size(), 0);
  for (std::size_t index = 1, matched = 0; index < part.size(); ++index) {
    while (matched > 0 && part[index] != part[matched]) {
      matched = fallback[matched - 1];
    }
    matched += part[index] == part[matched] ? 1 : 0;
    fallback[index] = matched;
  }
  for (std::size_t index = 0, matched = 0; index < text.size(); ++index) {
    while (matched > 0 && text[index] != part[matched]) {
      matched = fallback[matched - 1];
    }
    matched += text[index] == part[matched] ? 1 : 0;
    if (matched == part.size()) {
      return index + 1 - matched;
    }
  }
  return std::u32string_view::npos;
}

// One text against one pattern.
class Matcher {
 public:
  Matcher(std::u32string_view text, const LikePattern& pattern)
      : text_(text), parts_(pattern.parts), sets_(pattern.sets) {}

  bool Matches() {
    constexpr auto kNowhere = std::u32string_view::npos;
    std::size_t run = parts_.find(kAnyRun);
    if (run == kNowhere) {
      return text_.size() == parts_.size() && MatchesAt(0, parts_);
    }
    // The part before the first % stands at the start; each further part as early as it can; the
    // part after the last % at the end.
    if (text_.size() < run || !MatchesAt(0, parts_.substr(0, run))) {
      return false;
    }
    text_.remove_prefix(run);
    parts_.remove_prefix(run + 1);
    for (run = parts_.find(kAnyRun); run != kNowhere; run = parts_.find(kAnyRun)) {
      const std::u32string_view part = parts_.substr(0, run);
      if (!part.empty()) {
        const std::size_t position = Find(part);
        if (position == kNowhere) {
          return false;
        }
        text_.remove_prefix(position + part.size());
      }
      parts_.remove_prefix(run + 1);
    }
    return text_.size() >= parts_.size() && MatchesAt(text_.size() - parts_.size(), parts_);
  }

 private:
  [[nodiscard]] bool MatchesAt(std::size_t position, std::u32string_view part) const {
    return std::equal(part.begin(), part.end(),
                      text_.begin() + static_cast<std::ptrdiff_t>(position),
                      [this](char32_t wanted, char32_t found) {
                        return wanted == found || wanted == kAnyOne ||
                               (wanted >= kFirstSet && Holds(sets_[wanted - kFirstSet], found));
                      });
  }

  [[nodiscard]] std::size_t Find(std::u32string_view part) const {
    if (std::all_of(part.begin(), part.end(), IsCharacter)) {
      return FindPlain(text_, part);
    }
    for (std::size_t position = 0; position + part.size() <= text_.size(); ++position) {
      if (MatchesAt(position, part)) {
        return position;
      }
    }
    return std::u32string_view::npos;
  }

  std::u32string_view text_;
  std::u32string_view parts_;
  const std::vector<CharacterSet>& sets_;
};

}  // namespace

LikePattern ReadPattern(std::string_view text) {
  const std::u32string folded = Folded(text);
  if (folded.size() > kLongestPattern) {
    Fail("the pattern of LIKE is too long");
  }
  LikePattern pattern;
  for (std::size_t index = 0; index < folded.size(); ++index) {
    if (folded[index] == U'%') {
      pattern.parts += kAnyRun;
    } else if (folded[index] == U'_') {
      pattern.parts += kAnyOne;
    } else if (folded[index] != U'[') {
      pattern.parts += folded[index];
    } else {
      const std::size_t end = folded.find(U']', index);
      if (end == std::u32string::npos) {
        Fail(
            "the pattern of LIKE has a '[' that is not closed: write '[[]' for the character "
            "itself");
      }
      CharacterSet set = ReadSet(std::u32string_view(folded).substr(index + 1, end - index - 1));
      if (IsSingle(set)) {
        pattern.parts += set.ranges[0].first;
      } else {
        pattern.parts += kFirstSet + static_cast<char32_t>(pattern.sets.size());
        pattern.sets.push_back(std::move(set));
      }
      index = end;
    }
  }
  return pattern;
}

bool MatchesPattern(std::u32string_view text, const LikePattern& pattern) {
  return Matcher(text, pattern).Matches();
}

}  // namespace qorhost::dialect
