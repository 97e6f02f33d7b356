#include "host/dialect/decimal_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace qorhost::dialect {

namespace {

constexpr int kShownDigits = 15;
constexpr std::size_t kPlaces = 2;
constexpr std::size_t kGroup = 3;

// A magnitude: digits with the point behind the first `point` of them, which may lie outside.
struct Decimal {
  std::string digits;
  int point = 0;
};

Decimal DecimalOf(double number) {
  std::array<char, 32> buffer;  // for "d.dddddddddddddde-ddd"
  const char* const end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                    std::chars_format::scientific, kShownDigits - 1)
          .ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const std::size_t mark = text.find('e');
  Decimal decimal;
  decimal.digits = std::string(text.substr(0, 1)).append(text.substr(2, mark - 2));
  int exponent = 0;
  std::from_chars(buffer.data() + mark + 2, end, exponent);
  decimal.point = (text[mark + 1] == '-' ? -exponent : exponent) + 1;
  return decimal;
}

bool IsZero(const Decimal& decimal) {
  return decimal.digits.find_first_not_of('0') == std::string::npos;
}

// Keeps the first `count` digits, or adds zeros up to them.
void RoundTo(Decimal& decimal, int count) {
  const auto kept = static_cast<std::size_t>(std::max(count, 0));
  const bool isUp = count >= 0 && kept < decimal.digits.size() && decimal.digits[kept] >= '5';
  decimal.digits.resize(kept, '0');
  if (!isUp) {
    return;
  }
  const std::size_t last = decimal.digits.find_last_not_of('9');
  if (last == std::string::npos) {
    decimal.digits.assign(kept + 1, '0').front() = '1';
    ++decimal.point;
  } else {
    ++decimal.digits[last];
    std::fill(decimal.digits.begin() + static_cast<std::ptrdiff_t>(last) + 1, decimal.digits.end(),
              '0');
  }
}

}  // namespace

std::string DecimalText(double number, DecimalStyle style) {
  Decimal decimal = DecimalOf(number);
  decimal.point += number == 0.0 ? 0 : style.shift;
  RoundTo(decimal, decimal.point + static_cast<int>(kPlaces));
  std::string text = decimal.digits;
  if (text.size() <= kPlaces) {
    text.insert(0, kPlaces + 1 - text.size(), '0');
  }
  const std::size_t point = text.size() - kPlaces;
  text.insert(point, 1, '.');
  for (std::size_t end = point; style.grouped && end > kGroup;) {
    end -= kGroup;
    text.insert(end, 1, ',');
  }
  return number < 0.0 && !IsZero(decimal) ? "-" + text : text;
}

std::string ScientificText(double number) {
  Decimal decimal = DecimalOf(number);
  RoundTo(decimal, static_cast<int>(kPlaces) + 1);
  const int exponent = decimal.point - 1;
  return fmt::format("{}{}.{}E{}{:02}", number < 0.0 ? "-" : "", decimal.digits.substr(0, 1),
                     decimal.digits.substr(1, kPlaces), exponent < 0 ? '-' : '+',
                     std::abs(exponent));
}

}  // namespace qorhost::dialect
