#include "host/dialect/canonical_date.h"

#include <algorithm>
#include <cmath>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorhost::dialect {

namespace {

constexpr std::string_view kPicture = "0000-00-00 00:00:00";

// 1 January 100, and what still rounds to a second of 31 December 9999.
constexpr double kFirstSerial = -657434.0;
constexpr double kEndSerial = 2958465.99999;

int NumberAt(std::string_view text, std::size_t position, std::size_t length) {
  int number = 0;
  for (const char digit : text.substr(position, length)) {
    number = number * 10 + (digit - '0');
  }
  return number;
}

/// By hand: every row that is written has such a date.
void PutNumber(std::string& text, std::size_t position, std::size_t length, int number) {
  for (std::size_t at = position + length; at > position; number /= 10) {
    text[--at] = static_cast<char>('0' + number % 10);
  }
}

bool FollowsPicture(std::string_view text) {
  return text.size() == kPicture.size() &&
         std::equal(text.begin(), text.end(), kPicture.begin(), [](char found, char wanted) {
           return wanted == '0' ? qorcred::IsDigit(found) : found == wanted;
         });
}

/// Whether the parts are in their ranges, whichever month it is. Nearly all dates are so, and every
/// row that is read has one.
bool IsOfAnyMonth(const qorcred::CivilTime& civil) {
  constexpr int kShortestMonth = 28;
  return civil.month >= 1 && civil.month <= 12 && civil.day >= 1 && civil.day <= kShortestMonth &&
         civil.hour < 24 && civil.minute < 60 && civil.second < 60;
}

}  // namespace

std::string CanonicalDate(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  std::string text(kPicture);
  PutNumber(text, 0, 4, civil.year);
  PutNumber(text, 5, 2, civil.month);
  PutNumber(text, 8, 2, civil.day);
  PutNumber(text, 11, 2, civil.hour);
  PutNumber(text, 14, 2, civil.minute);
  PutNumber(text, 17, 2, civil.second);
  return text;
}

std::optional<qorcred::Date> FromCanonicalDate(std::string_view text) {
  if (!FollowsPicture(text)) {
    return std::nullopt;
  }
  const qorcred::CivilTime civil{NumberAt(text, 0, 4),  NumberAt(text, 5, 2),
                                 NumberAt(text, 8, 2),  NumberAt(text, 11, 2),
                                 NumberAt(text, 14, 2), NumberAt(text, 17, 2)};
  try {
    const qorcred::Date date = qorcred::FromCivil(civil);
    // Parts outside their range would have carried over into another date.
    return IsOfAnyMonth(civil) || qorcred::ToCivil(date) == civil ? std::optional(date)
                                                                  : std::nullopt;
  } catch (const qorcred::RuntimeError&) {
    return std::nullopt;
  }
}

std::optional<qorcred::Date> DateFromSerial(double serial) {
  if (!std::isfinite(serial) || serial < kFirstSerial || serial >= kEndSerial) {
    return std::nullopt;
  }
  return qorcred::Date{serial};
}

}  // namespace qorhost::dialect
