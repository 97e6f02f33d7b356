#include "host/desks/shown_value.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

using qorcred::Value;

/// Always with its time: a date alone would be read as the whole day.
std::string DateShown(qorcred::Date date) {
  constexpr std::string_view kNoSeconds = ":00";
  std::string text = dialect::CanonicalDate(date);
  if (text.ends_with(kNoSeconds)) {
    text.resize(text.size() - kNoSeconds.size());
  }
  return text;
}

}  // namespace

std::string ShownText(const Value& value) {
  if (const bool* flag = value.As<bool>()) {
    return *flag ? "yes" : "no";
  }
  if (const auto* date = value.As<qorcred::Date>()) {
    return DateShown(*date);
  }
  if (const auto* names = value.As<qorcred::StringArray>()) {
    return fmt::format("{}", fmt::join(*names, ", "));
  }
  return qorcred::TextOrEmpty(value);
}

std::string ShownDay(qorcred::Date date) {
  const std::string text = dialect::CanonicalDate(date);
  return text.substr(0, text.find(' '));
}

Value ShownCell(Value value) {
  const bool isWritten = value.As<bool>() != nullptr || value.As<qorcred::Date>() != nullptr ||
                         value.As<qorcred::StringArray>() != nullptr;
  return isWritten ? Value(ShownText(value)) : std::move(value);
}

}  // namespace qorhost
