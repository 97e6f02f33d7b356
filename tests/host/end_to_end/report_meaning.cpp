#include "tests/host/end_to_end/report_meaning.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "frame/date.h"

namespace qortest {

namespace {

using qorcred::Value;

struct CasePair {
  char32_t small;
  char32_t capital;
};

// The letters beside ASCII that the tests' rows hold; all others have one case.
constexpr std::array kCasePairs{CasePair{U'ä', U'Ä'}, CasePair{U'ö', U'Ö'}, CasePair{U'é', U'É'},
                                CasePair{U'ø', U'Ø'}, CasePair{U'я', U'Я'}, CasePair{U'ж', U'Ж'},
                                CasePair{U'ω', U'Ω'}};

constexpr char32_t kAnyRun = U'%';
constexpr char32_t kAnyOne = U'_';

// The rows are well-formed UTF-8.
std::u32string Points(std::string_view text) {
  std::u32string points;
  for (const char byte : text) {
    const auto bits = static_cast<unsigned char>(byte);
    if (bits < 0x80U) {
      points += bits;
    } else if (bits >= 0xC0U) {
      points += bits & (bits >= 0xF0U ? 0x07U : bits >= 0xE0U ? 0x0FU : 0x1FU);
    } else {
      points.back() = points.back() << 6U | (bits & 0x3FU);
    }
  }
  return points;
}

std::string Bytes(std::u32string_view points) {
  std::string text;
  for (const char32_t point : points) {
    const auto add = [&text](char32_t bits) { text += static_cast<char>(bits); };
    if (point < 0x80U) {
      add(point);
    } else if (point < 0x800U) {
      add(0xC0U | point >> 6U);
      add(0x80U | (point & 0x3FU));
    } else if (point < 0x10000U) {
      add(0xE0U | point >> 12U);
      add(0x80U | (point >> 6U & 0x3FU));
      add(0x80U | (point & 0x3FU));
    } else {
      add(0xF0U | point >> 18U);
      add(0x80U | (point >> 12U & 0x3FU));
      add(0x80U | (point >> 6U & 0x3FU));
      add(0x80U | (point & 0x3FU));
    }
  }
  return text;
}

char32_t Small(char32_t point) {
  if (point >= U'A' && point <= U'Z') return point + (U'a' - U'A');
  for (const CasePair& pair : kCasePairs) {
    if (point == pair.capital) return pair.small;
  }
  return point;
}

char32_t Swapped(char32_t point) {
  if (point >= U'a' && point <= U'z') return point - (U'a' - U'A');
  for (const CasePair& pair : kCasePairs) {
    if (point == pair.small) return pair.capital;
  }
  return Small(point);
}

// Where the part of a pattern ends that begins at `at`: one character, or a set in brackets.
std::size_t EndOfPart(std::u32string_view pattern, std::size_t at) {
  return pattern[at] == U'[' ? pattern.find(U']', at) + 1 : at + 1;
}

// Whether one character is what a part other than % asks for. The sets of the tests have no ranges.
bool IsAskedFor(char32_t point, std::u32string_view part) {
  if (part.front() == U'[') {
    return part.substr(1, part.size() - 2).find(point) != std::u32string_view::npos;
  }
  return part.front() == kAnyOne || part.front() == point;
}

// Row by row through the table of "do the first m parts and n characters match".
bool Matches(std::u32string_view text, std::u32string_view pattern) {
  std::vector<bool> matched(text.size() + 1, false);
  matched[0] = true;
  for (std::size_t at = 0; at < pattern.size(); at = EndOfPart(pattern, at)) {
    const std::u32string_view part = pattern.substr(at, EndOfPart(pattern, at) - at);
    const bool isRun = part.front() == kAnyRun;
    std::vector<bool> next(text.size() + 1, false);
    next[0] = matched[0] && isRun;
    for (std::size_t end = 1; end <= text.size(); ++end) {
      next[end] = isRun ? next[end - 1] || matched[end]
                        : matched[end - 1] && IsAskedFor(text[end - 1], part);
    }
    matched = std::move(next);
  }
  return matched[text.size()];
}

// A cell as a pattern sees it.
std::optional<std::u32string> TextIn(const Value& cell) {
  if (const auto* text = cell.As<std::string>()) return Plain(*text);
  if (const auto* number = cell.As<std::int32_t>()) return Plain(std::to_string(*number));
  return std::nullopt;
}

}  // namespace

Truth Not(Truth one) {
  return one ? Truth(!*one) : Truth();
}

Truth Or(Truth one, Truth other) {
  if (Holds(one) || Holds(other)) return true;
  return one && other ? Truth(false) : Truth();
}

std::u32string Plain(std::string_view text) {
  std::u32string points = Points(text);
  std::transform(points.begin(), points.end(), points.begin(), Small);
  return points;
}

std::string OtherCase(std::string_view text) {
  std::u32string points = Points(text);
  std::transform(points.begin(), points.end(), points.begin(), Swapped);
  return Bytes(points);
}

Truth EqualTexts(const Value& cell, std::u32string_view text) {
  const std::optional<std::u32string> own = TextIn(cell);
  return own ? Truth(*own == text) : Truth();
}

Truth MatchesText(const Value& cell, std::u32string_view pattern) {
  const std::optional<std::u32string> own = TextIn(cell);
  return own ? Truth(Matches(*own, pattern)) : Truth();
}

std::optional<int> OrderOfNumbers(const Value& cell, double number) {
  const std::optional<double> own = NumberIn(cell);
  if (!own) return std::nullopt;
  return *own < number ? -1 : *own > number ? 1 : 0;
}

bool IsNull(const Value& cell) {
  return cell.Is(qorcred::ValueType::kNull);
}

std::optional<double> NumberIn(const Value& cell) {
  if (const auto* flag = cell.As<bool>()) return *flag ? -1.0 : 0.0;
  if (const auto* whole = cell.As<std::int32_t>()) return *whole;
  if (const auto* real = cell.As<double>()) return *real;
  const auto* text = cell.As<std::string>();
  if (text == nullptr || text->empty() ||
      text->find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  return std::stod(*text);
}

std::int64_t DayNumber(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  return (std::int64_t{civil.year} * 12 + civil.month) * 31 + civil.day;
}

std::int64_t Moment(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  return ((DayNumber(date) * 24 + civil.hour) * 60 + civil.minute) * 60 + civil.second;
}

}  // namespace qortest
