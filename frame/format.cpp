#include "frame/format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/date_names.h"
#include "frame/number_text.h"
#include "frame/object.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr std::string_view kHalfDay = "AM/PM";

bool IsNumberPicture(std::string_view picture) noexcept {
  return !picture.empty() && picture.find_first_not_of('0') == std::string_view::npos;
}

void AppendPadded(std::string& text, int number, std::size_t width) {
  const std::string digits = NumberText(number);
  if (digits.size() < width) text.append(width - digits.size(), '0');
  text += digits;
}

std::string FormatNumber(double number, std::size_t width) {
  const double rounded = std::round(std::fabs(number));
  std::array<char, 320> buffer;  // the largest double has 309 digits before the point
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded,
                                 std::chars_format::fixed, 0)
                       .ptr;
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  std::string text;
  if (number < 0.0 && rounded > 0.0) text += '-';
  if (digits.size() < width) text.append(width - digits.size(), '0');
  text.append(digits);
  return text;
}

/// Writes one date after a picture, part by part.
class DatePicture {
 public:
  DatePicture(Date date, std::string_view picture)
      : civil_(ToCivil(date)), weekday_(WeekdayOf(date)), picture_(picture) {
    for (std::size_t i = 0; i < picture.size() && !halfDays_; ++i) halfDays_ = HalfDayAt(i);
  }

  std::string Write() {
    for (std::size_t position = 0; position < picture_.size();) {
      if (HalfDayAt(position)) {
        text_ += civil_.hour < 12 ? "AM" : "PM";
        position += kHalfDay.size();
        afterHour_ = false;
      } else {
        position += WritePart(position);
      }
    }
    return std::move(text_);
  }

 private:
  static std::size_t WeekdayOf(Date date) {
    // Day zero was a Saturday, the last of the week.
    const std::int64_t days = DaysBetween(Date{}, date) - 1;
    return static_cast<std::size_t>((days % 7 + 7) % 7);
  }

  [[nodiscard]] bool HalfDayAt(std::size_t position) const {
    return SameMember(picture_.substr(position, kHalfDay.size()), kHalfDay);
  }

  /// The length of the run of one letter at `position`, at most `most`.
  [[nodiscard]] std::size_t RunAt(std::size_t position, std::size_t most) const {
    const char letter = LowerAscii(picture_[position]);
    std::size_t run = 1;
    while (run < most && position + run < picture_.size() &&
           LowerAscii(picture_[position + run]) == letter) {
      ++run;
    }
    return run;
  }

  /// Writes the part at `position` and returns the length of the picture that it took.
  std::size_t WritePart(std::size_t position) {
    const char letter = LowerAscii(picture_[position]);
    const bool afterHour = afterHour_;
    afterHour_ = letter == 'h';
    switch (letter) {
      case 'd':
        return WriteNamed(RunAt(position, 4), civil_.day, kDayNames[weekday_]);
      case 'm': {
        const std::size_t run = RunAt(position, 4);
        if (afterHour && run <= 2) return WriteNumber(run, civil_.minute);
        return WriteNamed(run, civil_.month,
                          kMonthNames[static_cast<std::size_t>(civil_.month - 1)]);
      }
      case 'y':
        return WriteYear(position);
      case 'h':
        return WriteNumber(RunAt(position, 2), Hour());
      case 'n':
        return WriteNumber(RunAt(position, 2), civil_.minute);
      case 's':
        return WriteNumber(RunAt(position, 2), civil_.second);
      default:
        // Separators keep the minutes that follow an hour apart from it.
        afterHour_ = afterHour;
        text_ += picture_[position];
        return 1;
    }
  }

  [[nodiscard]] int Hour() const {
    if (!halfDays_) return civil_.hour;
    return civil_.hour % 12 == 0 ? 12 : civil_.hour % 12;
  }

  std::size_t WriteNumber(std::size_t run, int number) {
    AppendPadded(text_, number, run);
    return run;
  }

  /// One or two letters are the number, three its short name, four its name.
  std::size_t WriteNamed(std::size_t run, int number, std::string_view name) {
    if (run <= 2) return WriteNumber(run, number);
    text_ += run == kShortNameLength ? name.substr(0, kShortNameLength) : name;
    return run;
  }

  std::size_t WriteYear(std::size_t position) {
    const std::size_t run = RunAt(position, 4);
    if (run == 4) return WriteNumber(4, civil_.year);
    if (run == 1) {
      text_ += picture_[position];
      return 1;
    }
    return WriteNumber(2, civil_.year % 100);
  }

  CivilTime civil_;
  std::size_t weekday_;
  std::string_view picture_;
  std::string text_;
  bool halfDays_ = false;
  bool afterHour_ = false;
};

std::string FormatText(const std::string& text, std::string_view picture) {
  const std::optional<Date> date = ParseDate(text);
  const TextNumber number = ReadNumber(text);
  const bool numeric = number.reading == NumberReading::kNumber;
  if (IsNumberPicture(picture)) {
    if (numeric) return FormatNumber(number.number, picture.size());
    return date ? FormatNumber(date->serial, picture.size()) : text;
  }
  if (date) return DatePicture(*date, picture).Write();
  if (!numeric || !IsInCalendar(number.number)) return text;
  return DatePicture(Date{number.number}, picture).Write();
}

}  // namespace

std::string Format(const Value& value, std::string_view picture) {
  if (value.Is(ValueType::kNull)) return {};
  if (picture.empty()) return ToText(value);
  if (const std::string* text = value.As<std::string>()) return FormatText(*text, picture);
  if (IsNumberPicture(picture)) return FormatNumber(ToDouble(value), picture.size());
  return DatePicture(ToDate(value), picture).Write();
}

}  // namespace qorcred
