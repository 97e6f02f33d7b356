#include "frame/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr int kSignificantDigits = 15;

/// Walks over a text, over blanks inside it where the reader asks for that. Gives '\0' at the end.
class Cursor {
 public:
  enum class Blanks : bool { kCount, kSkip };

  Cursor(std::string_view text, Blanks blanks) : text_(text), blanks_(blanks) { Skip(); }

  [[nodiscard]] char Peek() const noexcept { return AtEnd() ? '\0' : text_[position_]; }
  [[nodiscard]] bool AtEnd() const noexcept { return position_ == text_.size(); }
  void Next() noexcept {
    ++position_;
    Skip();
  }
  /// Steps over `letter` if it stands here.
  bool Take(char letter) noexcept {
    if (AtEnd() || text_[position_] != letter) return false;
    Next();
    return true;
  }

 private:
  void Skip() noexcept {
    if (blanks_ == Blanks::kCount) return;
    while (!AtEnd() && (Peek() == ' ' || Peek() == '\t' || Peek() == '\n')) ++position_;
  }

  std::string_view text_;
  Blanks blanks_;
  std::size_t position_ = 0;
};

/// Collects the digits of a decimal number as 0.DDD times a power of ten, however many they are.
class Decimal {
 public:
  void AddDigit(char digit) {
    anyDigit_ = true;
    if (digits_.empty() && digit == '0') {
      if (afterPoint_) --scale_;
      return;
    }
    if (!afterPoint_) ++scale_;
    if (digits_.size() < kKeptDigits) {
      digits_.push_back(digit);
    } else if (digit != '0') {
      digits_.back() = '1';  // no longer counts by itself, only as "a little more"
    }
  }
  void SetPoint() noexcept { afterPoint_ = true; }
  void SetExponent(std::int64_t exponent) noexcept { exponent_ = exponent; }

  [[nodiscard]] bool HasDigits() const noexcept { return anyDigit_; }
  [[nodiscard]] bool HasPoint() const noexcept { return afterPoint_; }

  /// The number with its sign; zero has none.
  [[nodiscard]] TextNumber Read(bool negative) const {
    if (digits_.empty()) return {NumberReading::kNumber, 0.0};
    const std::int64_t exponent = scale_ + exponent_;
    if (exponent > kLargestExponent) return {NumberReading::kTooLarge, 0.0};
    if (exponent < -kLargestExponent) return {NumberReading::kNumber, 0.0};
    if (digits_.size() <= kExactDigits && exponent == static_cast<std::int64_t>(digits_.size())) {
      return {NumberReading::kNumber, Whole(negative)};
    }

    const std::string text = (negative ? "-0." : "0.") + digits_ + "e" + std::to_string(exponent);
    TextNumber result{NumberReading::kNumber, 0.0};
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), result.number);
    if (error == std::errc::result_out_of_range) {
      return {exponent > 0 ? NumberReading::kTooLarge : NumberReading::kNumber, 0.0};
    }
    return result;
  }

 private:
  // As many a double holds without rounding.
  static constexpr std::size_t kExactDigits = 15;
  // No double needs more digits than these to be told from its neighbours.
  static constexpr std::size_t kKeptDigits = 800;
  // Far outside the range of a double on both sides.
  static constexpr std::int64_t kLargestExponent = 400;

  /// The digits as they stand: most numbers are whole.
  [[nodiscard]] double Whole(bool negative) const {
    std::int64_t number = 0;
    for (const char digit : digits_) {
      number = number * 10 + (digit - '0');
    }
    return static_cast<double>(negative ? -number : number);
  }

  std::string digits_;
  std::int64_t scale_ = 0;
  std::int64_t exponent_ = 0;
  bool anyDigit_ = false;
  bool afterPoint_ = false;
};

/// Reads the digits of an exponent with their sign; nothing when there are none.
std::optional<std::int64_t> ReadExponent(Cursor& cursor) {
  constexpr std::int64_t kEnough = 1'000'000'000'000;  // outweighs any text's own digits
  const bool negative = cursor.Peek() == '-';
  if (negative || cursor.Peek() == '+') cursor.Next();
  if (!IsDigit(cursor.Peek())) return std::nullopt;
  std::int64_t exponent = 0;
  for (; IsDigit(cursor.Peek()); cursor.Next()) {
    exponent = std::min(kEnough, exponent * 10 + (cursor.Peek() - '0'));
  }
  return negative ? -exponent : exponent;
}

enum class Grouping : bool { kNo, kCommas };

/// Reads digits, one point and an exponent. Returns false when an exponent's letter stands there
/// without digits behind it.
bool ReadDecimal(Cursor& cursor, Grouping grouping, Decimal& decimal) {
  for (;; cursor.Next()) {
    const char letter = cursor.Peek();
    if (IsDigit(letter)) {
      decimal.AddDigit(letter);
    } else if (letter == '.' && !decimal.HasPoint()) {
      decimal.SetPoint();
    } else if (letter != ',' || grouping == Grouping::kNo || decimal.HasPoint() ||
               !decimal.HasDigits()) {
      break;
    }
  }
  constexpr std::string_view kExponentLetters = "EeDd";
  if (!decimal.HasDigits() || cursor.AtEnd() ||
      kExponentLetters.find(cursor.Peek()) == std::string_view::npos) {
    return true;
  }
  cursor.Next();
  const std::optional<std::int64_t> exponent = ReadExponent(cursor);
  if (exponent) decimal.SetExponent(*exponent);
  return exponent.has_value();
}

int DigitValue(char letter) noexcept {
  if (IsDigit(letter)) return letter - '0';
  if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
  if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
  return std::numeric_limits<int>::max();
}

/// Reads an &H or &O form. Few digits make a signed 16-bit number, more of them or an "&" behind
/// make a signed 32-bit one. More than 32 bits are no number.
std::optional<double> ReadRadixForm(Cursor& cursor) {
  if (!cursor.Take('&')) return std::nullopt;
  const bool hexadecimal = cursor.Peek() == 'H' || cursor.Peek() == 'h';
  if (!hexadecimal && cursor.Peek() != 'O' && cursor.Peek() != 'o') return std::nullopt;
  cursor.Next();
  const int base = hexadecimal ? 16 : 8;
  const std::size_t shortDigits = hexadecimal ? 4 : 6;

  std::uint64_t bits = 0;
  std::size_t digits = 0;
  for (int digit = DigitValue(cursor.Peek()); digit < base; digit = DigitValue(cursor.Peek())) {
    bits = bits * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
    if (bits > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    ++digits;
    cursor.Next();
  }
  if (digits == 0) return std::nullopt;
  const bool marked32Bit = cursor.Take('&');
  if (!marked32Bit && digits <= shortDigits && bits <= std::numeric_limits<std::uint16_t>::max()) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits));
  }
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
}

/// What may stand around the digits of a number that fills a text.
struct Surroundings {
  bool negative = false;
  bool sign = false;
  bool bracket = false;
  bool currency = false;

  /// Takes a sign or a currency sign, each once.
  bool TakeMark(Cursor& cursor) noexcept {
    const char letter = cursor.Peek();
    if (letter == '$' && !currency) {
      currency = true;
    } else if ((letter == '+' || letter == '-') && !sign && !bracket) {
      sign = true;
      negative = letter == '-';
    } else {
      return false;
    }
    cursor.Next();
    return true;
  }
};

TextNumber ReadRadixText(std::string_view text) {
  Cursor cursor(text, Cursor::Blanks::kCount);
  const std::optional<double> number = ReadRadixForm(cursor);
  if (!number || !cursor.AtEnd()) return {};
  return {NumberReading::kNumber, *number};
}

}  // namespace

TextNumber ReadNumber(std::string_view text) {
  text = Trim(text);
  if (!text.empty() && text.front() == '&') return ReadRadixText(text);

  Cursor cursor(text, Cursor::Blanks::kCount);
  Surroundings around;
  for (;;) {
    if (around.TakeMark(cursor) || cursor.Take(' ')) continue;
    if (around.bracket || around.sign || !cursor.Take('(')) break;
    around.bracket = around.negative = true;
  }
  Decimal decimal;
  if (!ReadDecimal(cursor, Grouping::kCommas, decimal) || !decimal.HasDigits()) return {};
  bool open = around.bracket;
  for (;;) {
    if (around.TakeMark(cursor) || cursor.Take(' ')) continue;
    if (!open || !cursor.Take(')')) break;
    open = false;
  }
  if (open || !cursor.AtEnd()) return {};

  return decimal.Read(around.negative);
}

bool IsNumeric(std::string_view text) {
  return ReadNumber(text).reading == NumberReading::kNumber;
}

double Val(std::string_view text) {
  Cursor cursor(text, Cursor::Blanks::kSkip);
  if (cursor.Peek() == '&') return ReadRadixForm(cursor).value_or(0.0);

  const bool negative = cursor.Peek() == '-';
  if (negative || cursor.Peek() == '+') cursor.Next();
  Decimal decimal;
  // An exponent's letter without digits ends the number like any other letter.
  static_cast<void>(ReadDecimal(cursor, Grouping::kNo, decimal));
  const TextNumber result = decimal.Read(negative);
  if (result.reading == NumberReading::kTooLarge) throw RuntimeError(ErrorNumber::kOverflow);
  return result.number;
}

std::string NumberText(double number) {
  if (!std::isfinite(number)) throw RuntimeError(ErrorNumber::kOverflow);
  if (number == 0.0) return "0";  // also for minus zero
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                 std::chars_format::general, kSignificantDigits)
                       .ptr;
  std::string text(buffer.data(), end);
  const std::size_t exponent = text.find('e');
  if (exponent != std::string::npos) text[exponent] = 'E';
  return text;
}

}  // namespace qorcred
