#include "host/unit/unit_code.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>

#include "frame/date.h"
#include "frame/schema.h"
#include "frame/text.h"
#include "frame/utf8.h"

namespace qorhost {

namespace {

using qorcred::IsDigits;
using qorcred::unit_place::Place;
using namespace qorcred::unit_place;  // the places

struct Field {
  Place place;
  const char* name;
};

constexpr Field kTexts[] = {{kPhone, "the phone number"},
                            {kExtension, "the extension"},
                            {kCfPhone, "the call-forward phone number"},
                            {kCfExtension, "the call-forward extension"},
                            {kDisplayName, "the display name"}};
constexpr Field kFlags[] = {{kActive, "active"},
                            {kStartDateUsed, "start date in use"},
                            {kEndDateUsed, "end date in use"},
                            {kIsDndChecked, "do-not-disturb on"},
                            {kIsCfChecked, "call forwarding on"}};
constexpr Field kNumbers[] = {{kDndSchedule, "do-not-disturb schedule"},
                              {kTimeDelay, "time delay"},
                              {kCfSchedule, "call-forward schedule"},
                              {kCfTimeDelay, "call-forward time delay"}};

struct DateFields {
  Field used;
  Field date;
  Field time;
};

constexpr DateFields kDates[] = {
    {{kStartDateUsed, "start date in use"}, {kStartDate, "start date"}, {kStartTime, "start time"}},
    {{kEndDateUsed, "end date in use"}, {kEndDate, "end date"}, {kEndTime, "end time"}}};

std::string_view WithoutLeadingZeros(std::string_view digits) {
  const std::size_t first = digits.find_first_not_of('0');
  return first == std::string_view::npos ? digits.substr(digits.size() - 1) : digits.substr(first);
}

std::string FaultInCode(std::string_view code) {
  if (!IsDigits(code)) return "the directory code must be a number of digits";
  if (WithoutLeadingZeros(code).size() > 15) return "the directory code has more than 15 digits";
  return {};
}

std::string FaultInNumber(const Field& field, std::string_view number) {
  if (number.empty()) return {};
  if (!IsDigits(number)) return fmt::format("the {} must be a number of digits", field.name);
  std::int32_t value = 0;
  const std::string_view digits = WithoutLeadingZeros(number);
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (read.ec != std::errc()) {
    return fmt::format("the {} is above {}", field.name, std::numeric_limits<std::int32_t>::max());
  }
  return {};
}

int TwoDigits(std::string_view text, std::size_t position) {
  return (text[position] - '0') * 10 + (text[position + 1] - '0');
}

bool IsDay(std::string_view date) {
  if (date.size() != 6 || !IsDigits(date)) return false;
  const qorcred::CivilTime day{
      2000 + TwoDigits(date, 0), TwoDigits(date, 2), TwoDigits(date, 4), 0, 0, 0};
  // A day that does not exist comes back as another one.
  return qorcred::ToCivil(qorcred::FromCivil(day)) == day;
}

bool IsTime(std::string_view time) {
  return time.size() == 4 && IsDigits(time) && TwoDigits(time, 0) < 24 && TwoDigits(time, 2) < 60;
}

std::string FaultInDate(const DateFields& date, const UnitCode& code) {
  const std::string& day = code[date.date.place];
  const std::string& time = code[date.time.place];
  if (day.empty() && code[date.used.place] == "1") {
    return fmt::format("the {} is in use but empty", date.date.name);
  }
  if (!day.empty() && !IsDay(day)) {
    return fmt::format("the {} must be a day as YYMMDD", date.date.name);
  }
  if (!time.empty() && !IsTime(time)) {
    return fmt::format("the {} must be a time as hhmm", date.time.name);
  }
  return {};
}

std::string FaultInMode(std::string_view mode) {
  if (mode.empty() || (mode.size() == 1 && mode[0] >= '0' && mode[0] <= '3')) return {};
  return "the display mode must be 0, 1, 2 or 3";
}

}  // namespace

// Texts are pasted into statements as they are, so some cannot get through unharmed.
std::string FaultInText(std::string_view name, std::string_view text) {
  if (!qorcred::IsUtf8(text)) return fmt::format("{} is not valid UTF-8", name);
  if (qorcred::Utf16Length(text) > kLongestUnitText) {
    return fmt::format("{} has more than {} characters", name, kLongestUnitText);
  }
  if (text.find('\0') != std::string_view::npos) {
    return fmt::format("{} holds a NUL character", name);
  }
  if (qorcred::Contains(text, "'")) {
    return fmt::format("{} holds an apostrophe, which would end the text in a statement", name);
  }
  for (const std::string_view hole : {", ,", "= ,"}) {
    if (qorcred::Contains(text, hole)) {
      return fmt::format("{} holds \"{}\", which a statement takes for a missing value", name,
                         hole);
    }
  }
  if (text == qorcred::kLastModifiedText) {
    return fmt::format("{} is \"{}\", which a statement takes for the time", name, text);
  }
  return {};
}

std::string FaultIn(const UnitCode& code) {
  if (std::string fault = FaultInCode(code[kCode]); !fault.empty()) return fault;
  for (const Field& text : kTexts) {
    if (std::string fault = FaultInText(text.name, code[text.place]); !fault.empty()) return fault;
  }
  for (const Field& flag : kFlags) {
    if (code[flag.place] != "0" && code[flag.place] != "1") {
      return fmt::format("the field \"{}\" must be 0 or 1", flag.name);
    }
  }
  for (const DateFields& date : kDates) {
    if (std::string fault = FaultInDate(date, code); !fault.empty()) return fault;
  }
  for (const Field& number : kNumbers) {
    if (std::string fault = FaultInNumber(number, code[number.place]); !fault.empty()) return fault;
  }
  return FaultInMode(code[kDisplayMode]);
}

void MakeCanonical(UnitCode& code) {
  for (std::size_t unused = 0; unused < kCode; ++unused) code.fields[unused].clear();
  code[kCode] = WithoutLeadingZeros(code[kCode]);
  for (const Field& number : kNumbers) {
    std::string& digits = code[number.place];
    if (!digits.empty()) digits = WithoutLeadingZeros(digits);
  }
  for (const Place delay : {kTimeDelay, kCfTimeDelay}) {
    if (code[delay].empty()) code[delay] = qorcred::kDelayWithoutExtension;
  }
  for (const DateFields& date : kDates) {
    std::string& time = code[date.time.place];
    if (code[date.used.place] != "1") {
      code[date.date.place].clear();
      time.clear();
    } else if (time.empty()) {
      time = "0000";
    }
  }
  if (code[kDisplayMode].empty()) code[kDisplayMode] = "0";
}

std::int64_t NumberOf(const UnitCode& code) {
  const std::string& digits = code[kCode];
  std::int64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

qorcred::StringArray DetailsOf(const UnitCode& code) {
  qorcred::StringArray details(code.fields.begin(), code.fields.end());
  for (const Place schedule : {kDndSchedule, kCfSchedule}) {
    if (details[schedule].empty()) details[schedule] = "Null";
  }
  return details;
}

}  // namespace qorhost
