#include "trace/trace_text.h"

#include <array>
#include <charconv>
#include <cstdint>

#include "frame/control_characters.h"
#include "frame/date.h"
#include "frame/sql_text.h"

namespace qorcred::trace {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

std::string Digits(double number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return {text.data(), end};
}

std::string SpelledDate(Date date) {
  if (IsInCalendar(date.serial)) {
    std::string text = DateText(date);
    const auto read = ParseDate(text);
    if (read.has_value() && *read == date) return "#" + text + "#";
  }
  return "#=" + Digits(date.serial) + "#";
}

std::string SpelledArray(const StringArray& texts) {
  std::string list = "{";
  for (const std::string& text : texts) {
    if (list.size() > 1) list += ", ";
    list += SpelledText(text);
  }
  return list + "}";
}

}  // namespace

std::string SpelledText(std::string_view text) {
  std::string spelled;
  spelled.reserve(text.size() + 2);
  spelled += '"';
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    switch (character) {
      case '"':
        spelled += "\"\"";
        break;
      case '\\':
        spelled += "\\\\";
        break;
      case '\n':
        spelled += "\\n";
        break;
      case '\t':
        spelled += "\\t";
        break;
      default:
        if (IsAsciiControl(code)) {
          spelled += "\\x";
          spelled += kDigits[code / 16];
          spelled += kDigits[code % 16];
        } else {
          spelled += character;
        }
    }
  }
  spelled += '"';
  return spelled;
}

std::string SpelledBytes(std::string_view bytes) {
  std::string spelled = "0x";
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    spelled += kDigits[code / 16];
    spelled += kDigits[code % 16];
  }
  return spelled;
}

std::string SpelledFailure(const RuntimeError& failure) {
  return Concat(" ! ", static_cast<int>(failure.number()), " ", SpelledText(failure.description()));
}

std::string SpelledValue(const Value& value, const ObjectNames& names) {
  switch (value.type()) {
    case ValueType::kEmpty:
      return "Empty";
    case ValueType::kNull:
      return "Null";
    case ValueType::kMissing:
      return "-";
    case ValueType::kBoolean:
      return *value.As<bool>() ? "True" : "False";
    case ValueType::kInteger:
      return std::to_string(*value.As<std::int16_t>()) + "%";
    case ValueType::kLong:
      return std::to_string(*value.As<std::int32_t>());
    case ValueType::kDouble:
      return Digits(*value.As<double>()) + "#";
    case ValueType::kDate:
      return SpelledDate(*value.As<Date>());
    case ValueType::kString:
      return SpelledText(*value.As<std::string>());
    case ValueType::kStringArray:
      return SpelledArray(*value.As<StringArray>());
    case ValueType::kObject: {
      const ObjectRef& object = *value.As<ObjectRef>();
      return object == nullptr ? "Nothing" : names(object);
    }
  }
  return {};
}

}  // namespace qorcred::trace
