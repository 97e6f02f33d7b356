#include "tests/support/transcript_text.h"

#include "frame/control_characters.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/sql_text.h"

namespace qortest {

using qorcred::Value;
using qorcred::ValueType;

std::string QuotedText(std::string_view text) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted += '"';
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    if (character == '"') {
      quoted += "\"\"";
    } else if (character == '\n') {
      quoted += "\\n";
    } else if (character == '\t') {
      quoted += "\\t";
    } else if (qorcred::IsAsciiControl(code)) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      quoted += "\\x";
      quoted += kDigits[code / 16];
      quoted += kDigits[code % 16];
    } else {
      quoted += character;
    }
  }
  quoted += '"';
  return quoted;
}

std::string TranscriptText(const Value& value) {
  switch (value.type()) {
    case ValueType::kEmpty:
      return "Empty";
    case ValueType::kNull:
      return "Null";
    case ValueType::kMissing:
      return "-";
    case ValueType::kString:
      return QuotedText(*value.As<std::string>());
    case ValueType::kDate:
      return "#" + qorcred::DateText(*value.As<qorcred::Date>()) + "#";
    case ValueType::kObject:
      return *value.As<qorcred::ObjectRef>() ? "<object>" : "Nothing";
    case ValueType::kStringArray: {
      std::string list = "{";
      for (const std::string& text : *value.As<qorcred::StringArray>()) {
        if (list.size() > 1) {
          list += ", ";
        }
        list += QuotedText(text);
      }
      return list + "}";
    }
    default:
      return qorcred::ToText(value);
  }
}

std::string ArgumentList(std::span<const Value> values) {
  std::string list;
  for (const Value& value : values) {
    if (!value.Is(ValueType::kObject)) {
      list += " " + TranscriptText(value);
    }
  }
  return list;
}

std::string FailureSuffix(const qorcred::RuntimeError& failure) {
  return qorcred::Concat(" ! ", static_cast<int>(failure.number()), " ",
                         QuotedText(failure.description()));
}

}  // namespace qortest
