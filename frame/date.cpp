#include "frame/date.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "frame/convert.h"
#include "frame/date_names.h"
#include "frame/object.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kSecondsPerHour = 3600;
constexpr std::int64_t kSecondsPerMinute = 60;

// Days are counted like the serial: 0 is 30 December 1899.
constexpr std::int64_t kFirstDay = -657434;  // 1 January 100
constexpr std::int64_t kLastDay = 2958465;   // 31 December 9999
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

[[noreturn]] void RaiseOutsideCalendar() {
  throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
}

std::int64_t FloorDivide(std::int64_t dividend, std::int64_t divisor) noexcept {
  const std::int64_t quotient = dividend / divisor;
  return dividend % divisor < 0 ? quotient - 1 : quotient;
}

/// The day number of a date in the Gregorian calendar. Years are counted from March, so that the
/// leap day is a year's last and the days before a month follow one formula (153 days in every
/// five months).
std::int64_t DayNumber(std::int64_t year, int month, std::int64_t day) noexcept {
  const std::int64_t marchYear = month > 2 ? year : year - 1;
  const std::int64_t marchMonth = month > 2 ? month - 3 : month + 9;
  const std::int64_t before = 365 * marchYear + FloorDivide(marchYear, 4) -
                              FloorDivide(marchYear, 100) + FloorDivide(marchYear, 400);
  constexpr std::int64_t kDayZero = 693899;  // 30 December 1899, counted from 1 March of year 0
  return before + (153 * marchMonth + 2) / 5 + day - 1 - kDayZero;
}

int DaysInMonth(int year, int month) noexcept {
  const std::int64_t first = DayNumber(year, month, 1);
  const std::int64_t next = month == 12 ? DayNumber(year + 1, 1, 1) : DayNumber(year, month + 1, 1);
  return static_cast<int>(next - first);
}

/// A serial taken apart: the day, and how far that day has gone (0 up to, not including, 1).
/// Before day zero the serial's fraction still counts forward: -1.25 is day -1 at 6 o'clock.
struct DayAndTime {
  std::int64_t day = 0;
  double time = 0.0;
};

DayAndTime TakeApart(Date date) {
  if (!IsInCalendar(date.serial)) RaiseOutsideCalendar();
  const double day = std::trunc(date.serial);
  return {static_cast<std::int64_t>(day), std::fabs(date.serial - day)};
}

Date PutTogether(std::int64_t day, double time) {
  if (day < kFirstDay || day > kLastDay) RaiseOutsideCalendar();
  const auto serial = static_cast<double>(day);
  return Date{day < 0 ? serial - time : serial + time};
}

/// Seconds since midnight of day zero, rounded to the nearest one, but never past the last day.
std::int64_t SecondsSinceDayZero(Date date) {
  const DayAndTime parts = TakeApart(date);
  const auto seconds =
      static_cast<std::int64_t>(std::llround(parts.time * static_cast<double>(kSecondsPerDay)));
  return std::min(parts.day * kSecondsPerDay + seconds, (kLastDay + 1) * kSecondsPerDay - 1);
}

std::int64_t RoundedDay(Date date) {
  return FloorDivide(SecondsSinceDayZero(date), kSecondsPerDay);
}

void AppendNumber(std::string& text, int number, int width) {
  std::array<char, 12> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  const auto digits = static_cast<int>(end - buffer.data());
  if (digits < width) text.append(static_cast<std::size_t>(width - digits), '0');
  text.append(buffer.data(), end);
}

void AppendTime(std::string& text, const CivilTime& civil) {
  AppendNumber(text, civil.hour % 12 == 0 ? 12 : civil.hour % 12, 1);
  text += ':';
  AppendNumber(text, civil.minute, 2);
  text += ':';
  AppendNumber(text, civil.second, 2);
  text += civil.hour < 12 ? " AM" : " PM";
}

/// Reads a date text from left to right. Every Read... gives nothing, or false, on a misfit.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : rest_(text) {}

  std::optional<CivilTime> Read() {
    CivilTime civil;
    if (rest_.find(':') < rest_.find_first_of("/- T")) {
      if (!ReadTime(civil) || !rest_.empty()) return std::nullopt;
      return civil;
    }
    if (!ReadDay(civil)) return std::nullopt;
    if (rest_.empty()) return civil;
    if (!TakeBlanks() && !Take('T')) return std::nullopt;
    if (!ReadTime(civil) || !rest_.empty()) return std::nullopt;
    return civil;
  }

 private:
  struct Number {
    int value = 0;
    std::size_t digits = 0;
  };

  bool Take(char letter) {
    if (rest_.empty() || rest_.front() != letter) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool TakeBlanks() {
    const std::size_t blanks = std::min(rest_.find_first_not_of(' '), rest_.size());
    rest_.remove_prefix(blanks);
    return blanks > 0;
  }

  /// At least one digit and at most that many, which no further digit follows.
  std::optional<Number> ReadDigits(std::size_t most) {
    Number number;
    while (number.digits < rest_.size() && IsDigit(rest_[number.digits])) {
      if (number.digits == most) return std::nullopt;
      number.value = number.value * 10 + (rest_[number.digits] - '0');
      ++number.digits;
    }
    if (number.digits == 0) return std::nullopt;
    rest_.remove_prefix(number.digits);
    return number;
  }

  bool ReadDay(CivilTime& civil) {
    const std::optional<Number> first = ReadDigits(4);
    if (!first) return false;
    std::optional<Number> year;
    std::optional<Number> month;
    std::optional<Number> day;
    if (Take('/')) {
      month = first;
      day = ReadDigits(2);
      if (!Take('/')) return false;
      year = ReadDigits(4);
    } else if (Take('-')) {
      if (first->digits != 4) return false;
      year = first;
      month = ReadDigits(2);
      if (!Take('-')) return false;
      day = ReadDigits(2);
    } else {
      day = first;
      if (!TakeBlanks()) return false;
      month = ReadMonthName();
      if (!TakeBlanks()) return false;
      year = ReadDigits(4);
    }
    if (!year || !month || !day || month->digits > 2 || day->digits > 2) return false;
    return SetDay(civil, FullYear(*year), month->value, day->value);
  }

  std::optional<Number> ReadMonthName() {
    const std::size_t end = std::min(rest_.find(' '), rest_.size());
    const std::string_view word = rest_.substr(0, end);
    for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
      if (SameMember(word, kMonthNames[i]) ||
          SameMember(word, kMonthNames[i].substr(0, kShortNameLength))) {
        rest_.remove_prefix(end);
        return Number{static_cast<int>(i) + 1, 2};
      }
    }
    return std::nullopt;
  }

  /// A year of two digits lies between 1930 and 2029; one of a single digit is none.
  static int FullYear(Number year) {
    if (year.digits != 2) return year.value;
    constexpr int kPivot = 30;
    return year.value + (year.value < kPivot ? 2000 : 1900);
  }

  static bool SetDay(CivilTime& civil, int year, int month, int day) {
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12) return false;
    if (day < 1 || day > DaysInMonth(year, month)) return false;
    civil.year = year;
    civil.month = month;
    civil.day = day;
    return true;
  }

  bool ReadTime(CivilTime& civil) {
    const std::optional<Number> hour = ReadDigits(2);
    if (!hour || !Take(':')) return false;
    const std::optional<Number> minute = ReadDigits(2);
    if (!minute) return false;
    std::optional<Number> second = Number{};
    if (Take(':')) second = ReadDigits(2);
    if (!second || minute->value > 59 || second->value > 59) return false;
    civil.minute = minute->value;
    civil.second = second->value;
    return SetHour(civil, hour->value);
  }

  /// The hour by the 24-hour clock, or by the 12-hour one when AM or PM follows.
  bool SetHour(CivilTime& civil, int hour) {
    TakeBlanks();
    const bool morning = SameMember(rest_, "AM");
    if (!morning && !SameMember(rest_, "PM")) {
      civil.hour = hour;
      return hour <= 23;
    }
    rest_ = {};
    civil.hour = hour % 12 + (morning ? 0 : 12);
    return hour >= 1 && hour <= 12;
  }

  std::string_view rest_;
};

}  // namespace

bool IsInCalendar(double serial) noexcept {
  // The first day's time of day reaches below its number. A NaN fails both comparisons.
  return serial > static_cast<double>(kFirstDay - 1) && serial < static_cast<double>(kLastDay + 1);
}

CivilTime ToCivil(Date date) {
  const std::int64_t seconds = SecondsSinceDayZero(date);
  const std::int64_t day = FloorDivide(seconds, kSecondsPerDay);
  const std::int64_t ofDay = seconds - day * kSecondsPerDay;

  // A first guess from the mean length of a year is at most one year off.
  constexpr double kDaysPerYear = 365.2425;
  int year = 1900 + static_cast<int>(std::floor(static_cast<double>(day) / kDaysPerYear));
  while (DayNumber(year, 1, 1) > day) --year;
  while (DayNumber(year + 1, 1, 1) <= day) ++year;
  int month = 12;
  while (DayNumber(year, month, 1) > day) --month;

  return {year,
          month,
          static_cast<int>(day - DayNumber(year, month, 1)) + 1,
          static_cast<int>(ofDay / kSecondsPerHour),
          static_cast<int>(ofDay % kSecondsPerHour / kSecondsPerMinute),
          static_cast<int>(ofDay % kSecondsPerMinute)};
}

Date FromCivil(const CivilTime& civil) {
  const std::int64_t months = std::int64_t{civil.month} - 1;
  const std::int64_t year = civil.year + FloorDivide(months, 12);
  const auto month = static_cast<int>(months - FloorDivide(months, 12) * 12) + 1;
  const std::int64_t seconds =
      civil.hour * kSecondsPerHour + civil.minute * kSecondsPerMinute + civil.second;
  const std::int64_t carried = FloorDivide(seconds, kSecondsPerDay);
  const double time =
      static_cast<double>(seconds - carried * kSecondsPerDay) / static_cast<double>(kSecondsPerDay);
  return PutTogether(DayNumber(year, month, civil.day) + carried, time);
}

Date DayOf(Date date) {
  return PutTogether(RoundedDay(date), 0.0);
}

Date AddDays(Date date, double days) {
  constexpr double kWholeCalendar = 4'000'000.0;
  if (!(std::fabs(days) < kWholeCalendar)) RaiseOutsideCalendar();
  const DayAndTime parts = TakeApart(date);
  return PutTogether(parts.day + RoundToLong(days), parts.time);
}

std::int64_t DaysBetween(Date from, Date to) {
  return RoundedDay(to) - RoundedDay(from);
}

std::int64_t MinutesBetween(Date from, Date to) {
  return FloorDivide(SecondsSinceDayZero(to), kSecondsPerMinute) -
         FloorDivide(SecondsSinceDayZero(from), kSecondsPerMinute);
}

std::int64_t SecondsBetween(Date from, Date to) {
  return SecondsSinceDayZero(to) - SecondsSinceDayZero(from);
}

std::string DateText(Date date) {
  const CivilTime civil = ToCivil(date);
  constexpr CivilTime kDayZero;
  const bool dayZero =
      civil.year == kDayZero.year && civil.month == kDayZero.month && civil.day == kDayZero.day;
  const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0;
  std::string text;
  if (!dayZero) {
    AppendNumber(text, civil.month, 1);
    text += '/';
    AppendNumber(text, civil.day, 1);
    text += '/';
    AppendNumber(text, civil.year, 1);
    if (midnight) return text;
    text += ' ';
  }
  AppendTime(text, civil);
  return text;
}

std::optional<Date> ParseDate(std::string_view text) {
  const std::optional<CivilTime> civil = DateReader(Trim(text)).Read();
  if (!civil) return std::nullopt;
  return FromCivil(*civil);
}

}  // namespace qorcred
